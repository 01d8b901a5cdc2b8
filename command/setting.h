// One parameter of the effect, or of a render element in it, as the user sets it.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "plugin/entry.h"

class IParamBlock2;

namespace command {

struct Setting {
    const parameters::Row* row = nullptr;
    // Booleans as 0 or 1; texts in UTF-8; a list for a table of texts.
    std::variant<int, float, std::string, std::vector<std::string>> value = 0;
};

// "NAME=VALUE" or "#ID=VALUE" of a parameter in `rows`; a name is found without regard to case, and
// a number that has a label may be given by it. `option` is what the user wrote it behind, for
// messages. Throws UsageError.
Setting ParseSetting(std::string_view text, std::span<const parameters::Row> rows,
                     std::string_view option = "--set");

// False when the block has no such parameter.
bool Apply(const Setting& setting, IParamBlock2& block);

// "Bool", "Int" and so on, as listings name a type.
std::string_view TypeName(parameters::Type type);
// What the parameter takes: "0 to 2000", or its numbers with their labels ("0 = PSD, 1 = PSB");
// empty for any value of the type.
std::string AllowedValues(const parameters::Row& row);

}  // namespace command

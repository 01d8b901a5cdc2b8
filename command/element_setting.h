// One setting of one render element in the document, as the user sets it.
#pragma once

#include <string>
#include <string_view>

#include "command/setting.h"

namespace command {

struct ElementSetting {
    // The element's name; "*" stands for any run of characters in it.
    std::string element;
    Setting setting;
};

// "NAME:SETTING=VALUE". The name may hold colons. Throws UsageError.
ElementSetting ParseElementSetting(std::string_view text);

// Without regard to the case of A to Z.
bool IsFor(const ElementSetting& setting, std::string_view elementName);

}  // namespace command

// The command line.
#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace command {

struct SaveArguments {
    std::string input;
    // Empty: INPUT with the document's suffix.
    std::string output;
    // "NAME=VALUE" each.
    std::vector<std::string> settings;
    std::string frames;
    std::string beauty;
    // Nothing for off.
    std::optional<float> gamma = 2.2F;
    bool fastDeflate = false;
    // auto, bar, lines or none.
    std::string progress = "auto";
    bool quiet = false;
};

struct InfoArguments {
    std::string input;
    bool json = false;
};

enum class ListingForm { Text, Json, Markdown };

struct ParamsArguments {
    ListingForm form = ListingForm::Text;
};

// Help or the version, ready to print.
struct TextArguments {
    std::string text;
};

using Arguments = std::variant<SaveArguments, InfoArguments, ParamsArguments, TextArguments>;

// `arguments` without the program's name. Throws UsageError.
Arguments ParseArguments(const std::vector<std::string>& arguments);

}  // namespace command

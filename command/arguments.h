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
    // "NAME:SETTING=VALUE" each.
    std::vector<std::string> elementSettings;
    // Turn on what the input has.
    bool all = false;
    // Scene file; empty for none.
    std::string scene;
    // auto, none or vray.
    std::string renderer = "auto";
    // A .cube file; empty for none.
    std::string lut;
    // Image file of the shadow pass; empty for none.
    std::string shadow;
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
    // Those of a render element in place of the effect's own.
    bool ofElements = false;
};

// Help or the version, ready to print.
struct TextArguments {
    std::string text;
};

using Arguments = std::variant<SaveArguments, InfoArguments, ParamsArguments, TextArguments>;

// `arguments` without the program's name. Throws UsageError.
Arguments ParseArguments(const std::vector<std::string>& arguments);

}  // namespace command

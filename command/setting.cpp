#include "command/setting.h"

#include <iparamb2.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <utility>

#include "command/ascii_case.h"
#include "command/failure.h"
#include "command/nearest_names.h"
#include "command/number_text.h"
#include "host/text.h"

namespace command {
namespace {

using parameters::Row;
using parameters::Type;

struct BoolWord {
    std::string_view word;
    int value;
};

constexpr BoolWord boolWords[] = {{"true", 1},  {"on", 1},  {"yes", 1}, {"1", 1},
                                  {"false", 0}, {"off", 0}, {"no", 0},  {"0", 0}};

// The whole text, or nothing.
template <class Number>
std::optional<Number> WholeNumber(std::string_view text) {
    Number value{};
    const char* last = text.data() + text.size();
    const auto [end, fault] = std::from_chars(text.data(), last, value);
    if (fault != std::errc() || end != last) return std::nullopt;
    return value;
}

// What lists the parameters that the option sets.
std::string_view ListingFor(std::string_view option) {
    return option == "--element" ? "\"veltrane params --elements\"" : "\"veltrane params\"";
}

const Row& FindRow(std::string_view name, std::span<const Row> rows, const std::string& option) {
    if (name.starts_with('#')) {
        const auto id = WholeNumber<int>(name.substr(1));
        const auto row = std::find_if(rows.begin(), rows.end(),
                                      [&](const Row& each) { return id && each.id == *id; });
        if (row != rows.end()) return *row;
        throw UsageError(option + ": there is no parameter " + std::string(name) + "; " +
                         std::string(ListingFor(option)) + " lists them all with their ids");
    }
    const auto row = std::find_if(rows.begin(), rows.end(), [&](const Row& each) {
        return EqualIgnoringCase(each.name, name);
    });
    if (row != rows.end()) return *row;
    std::vector<std::string> names;
    names.reserve(rows.size());
    for (const Row& each : rows)
        names.emplace_back(each.name);
    throw UsageError(option + ": there is no parameter \"" + std::string(name) +
                     "\"; the nearest are " + Joined(NearestNames(name, std::move(names))) +
                     ", and " + std::string(ListingFor(option)) + " lists them all");
}

class ValueReader {
  public:
    ValueReader(const Row& parameter, std::string_view given, std::string optionName)
        : row(parameter), text(given), option(std::move(optionName)) {}

    decltype(Setting::value) Read() const {
        switch (row.type) {
            case Type::Bool:
                return ReadBool();
            case Type::Int:
                return ReadInt();
            case Type::Float:
            case Type::Fraction:
                return ReadFloat();
            case Type::String:
            case Type::Filename:
                return std::string(text);
            case Type::StringTable:
                return ReadList();
            case Type::Reference:
            case Type::ReferenceTable:
            case Type::NodeTable:
                break;
        }
        throw UsageError(
            option + " " + std::string(row.name) +
            ": this parameter holds objects of a scene and takes no value" +
            (row.type == Type::NodeTable ? "; a scene file (--scene) can give it" : ""));
    }

  private:
    [[noreturn]] void Complain(std::string_view wanted) const {
        const std::string allowed = AllowedValues(row);
        throw UsageError(option + " " + std::string(row.name) + ": \"" + std::string(text) +
                         "\" is not " + std::string(wanted) +
                         (allowed.empty() ? "" : "; it takes " + allowed));
    }

    void CheckRange(double value) const {
        if (row.HasRange() && (value < row.low || value > row.high)) Complain("in range");
    }

    int ReadBool() const {
        for (const BoolWord& each : boolWords) {
            if (EqualIgnoringCase(each.word, text)) return each.value;
        }
        Complain("one of true, false, on, off, yes, no, 1, 0");
    }

    int ReadInt() const {
        for (const parameters::Choice& each : row.choices) {
            if (EqualIgnoringCase(each.label, text)) return each.value;
        }
        const auto value = WholeNumber<int>(text);
        if (!value)
            Complain(row.choices.empty() ? "a whole number of 32 bits" : "one of its values");
        CheckRange(*value);
        const bool listed =
            row.choices.empty() ||
            std::any_of(row.choices.begin(), row.choices.end(),
                        [&](const parameters::Choice& each) { return each.value == *value; });
        if (!listed) Complain("one of its values");
        return *value;
    }

    float ReadFloat() const {
        const auto value = WholeNumber<float>(text);
        if (!value || !std::isfinite(*value)) Complain("a number");
        CheckRange(double{*value});
        return *value;
    }

    std::vector<std::string> ReadList() const {
        std::vector<std::string> entries;
        for (std::size_t start = 0; start < text.size();) {
            const std::size_t comma = std::min(text.find(',', start), text.size());
            entries.emplace_back(text.substr(start, comma - start));
            start = comma + 1;
        }
        return entries;
    }

    const Row& row;
    std::string_view text;
    std::string option;
};

struct Writer {
    IParamBlock2& block;
    ParamID id;

    bool operator()(int value) const { return block.SetValue(id, 0, value) != 0; }
    bool operator()(float value) const { return block.SetValue(id, 0, value) != 0; }
    bool operator()(const std::string& text) const {
        return block.SetValue(id, 0, host::FromUtf8(text).data()) != 0;
    }
    bool operator()(const std::vector<std::string>& entries) const {
        block.SetCount(id, static_cast<int>(entries.size()));
        for (std::size_t i = 0; i < entries.size(); ++i) {
            const MSTR entry = host::FromUtf8(entries[i]);
            if (!block.SetValue(id, 0, entry.data(), static_cast<int>(i))) return false;
        }
        return true;
    }
};

}  // namespace

Setting ParseSetting(std::string_view text, std::span<const Row> rows, std::string_view option) {
    const std::string optionName(option);
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos || equals == 0) {
        throw UsageError(optionName + " " + std::string(text) +
                         ": expected NAME=VALUE, such as bitDepth=8");
    }
    const Row& row = FindRow(text.substr(0, equals), rows, optionName);
    return {&row, ValueReader(row, text.substr(equals + 1), optionName).Read()};
}

bool Apply(const Setting& setting, IParamBlock2& block) {
    return std::visit(Writer{block, setting.row->id}, setting.value);
}

std::string_view TypeName(Type type) {
    switch (type) {
        case Type::Bool:
            return "Bool";
        case Type::Int:
            return "Int";
        case Type::Float:
            return "Float";
        case Type::Fraction:
            return "Fraction";
        case Type::String:
            return "String";
        case Type::Filename:
            return "Filename";
        case Type::Reference:
            return "Reference";
        case Type::ReferenceTable:
            return "ReferenceTable";
        case Type::NodeTable:
            return "NodeTable";
        case Type::StringTable:
            return "StringTable";
    }
    return "";
}

std::string AllowedValues(const Row& row) {
    if (row.HasRange()) return NumberText(row.low) + " to " + NumberText(row.high);
    std::string text;
    for (const parameters::Choice& choice : row.choices) {
        if (!text.empty()) text += ", ";
        text += std::to_string(choice.value);
        if (choice.label != std::to_string(choice.value)) text += " = " + std::string(choice.label);
    }
    return text;
}

}  // namespace command

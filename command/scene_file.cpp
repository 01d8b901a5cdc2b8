#include "command/scene_file.h"

#include <algorithm>
#include <limits>
#include <span>
#include <utility>

#include "command/ascii_case.h"
#include "host/scene_text_reader.h"

namespace command {
namespace {

using host::JsonValue;
using parameters::Row;
using parameters::Type;

int ReadInt(const JsonValue& value, const Row& row) {
    if (value.IsText()) {
        for (const parameters::Choice& each : row.choices) {
            if (EqualIgnoringCase(each.label, value.Text())) return each.value;
        }
        if (!row.choices.empty()) value.Complain("must be one of " + AllowedValues(row));
    }
    using Limits = std::numeric_limits<int>;
    const double low = row.HasRange() ? row.low : double{Limits::min()};
    const double high = row.HasRange() ? row.high : double{Limits::max()};
    const auto number =
        static_cast<int>(value.Whole(static_cast<long long>(low), static_cast<long long>(high)));
    const bool listed = row.choices.empty() || std::any_of(row.choices.begin(), row.choices.end(),
                                                           [&](const parameters::Choice& each) {
                                                               return each.value == number;
                                                           });
    if (!listed) value.Complain("must be one of " + AllowedValues(row));
    return number;
}

float ReadFloat(const JsonValue& value, const Row& row) {
    constexpr double most = std::numeric_limits<float>::max();
    return static_cast<float>(
        value.Number(row.HasRange() ? row.low : -most, row.HasRange() ? row.high : most));
}

std::vector<std::string> ReadTexts(const JsonValue& list) {
    std::vector<std::string> texts;
    list.ForEach([&](const JsonValue& value) { texts.push_back(value.Text()); });
    return texts;
}

decltype(Setting::value) ReadParameter(const JsonValue& value, const Row& row) {
    switch (row.type) {
        case Type::Bool:
            return value.Bool() ? 1 : 0;
        case Type::Int:
            return ReadInt(value, row);
        case Type::Float:
        case Type::Fraction:
            return ReadFloat(value, row);
        case Type::String:
        case Type::Filename:
            return value.Text();
        case Type::StringTable:
            return ReadTexts(value);
        case Type::NodeTable:
        case Type::Reference:
        case Type::ReferenceTable:
            break;
    }
    value.Complain("this parameter holds objects of the application and takes no value");
}

const Row& FindRow(const std::string& name, const JsonValue& value, std::span<const Row> rows) {
    const auto row =
        std::find_if(rows.begin(), rows.end(), [&](const Row& each) { return each.name == name; });
    if (row != rows.end()) return *row;
    std::vector<std::string> names;
    names.reserve(rows.size());
    for (const Row& each : rows)
        names.emplace_back(each.name);
    value.Complain("there is no such parameter" + host::NearestTo(name, std::move(names)));
}

class EffectReader {
  public:
    explicit EffectReader(SceneDescription& description) : scene(description) {}

    void Read(const JsonValue& effect, const host::FindNodes& findNodes) {
        effect.Read({
            {"parameters", [&](const JsonValue& members) { ReadParameters(members, findNodes); }},
            {"elements", [&](const JsonValue& members) { ReadElementSettings(members); }},
        });
    }

  private:
    void ReadParameters(const JsonValue& members, const host::FindNodes& findNodes) {
        members.ForEachMember([&](const std::string& name, const JsonValue& value) {
            const Row& row = FindRow(name, value, plugin::EffectParameters());
            if (row.type == Type::NodeTable) {
                scene.nodeTables.push_back({&row, findNodes(value)});
            } else {
                scene.parameters.push_back({&row, ReadParameter(value, row)});
            }
        });
    }

    void ReadElementSettings(const JsonValue& members) {
        members.ForEachMember([&](const std::string& element, const JsonValue& settings) {
            settings.ForEachMember([&](const std::string& name, const JsonValue& value) {
                const Row& row = FindRow(name, value, plugin::LayerParameters());
                scene.elementSettings.push_back({element, {&row, ReadParameter(value, row)}});
            });
        });
    }

    SceneDescription& scene;
};

// `read` reads with a reader of the section "effect".
template <class Read>
SceneDescription ReadWithSettings(Read read) {
    SceneDescription scene;
    EffectReader reader(scene);
    static_cast<host::SceneDescription&>(scene) =
        read([&](const JsonValue& effect, const host::FindNodes& findNodes) {
            reader.Read(effect, findNodes);
        });
    return scene;
}

}  // namespace

SceneDescription ReadSceneFile(const std::string& path) {
    return ReadWithSettings(
        [&](const host::ReadEffectSettings& read) { return host::ReadSceneFile(path, read); });
}

SceneDescription ParseScene(const std::string& path, std::string_view text) {
    return ReadWithSettings(
        [&](const host::ReadEffectSettings& read) { return host::ParseScene(path, text, read); });
}

}  // namespace command

#include "command/scene_file.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <memory>
#include <span>
#include <system_error>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "command/ascii_case.h"
#include "command/element_class_names.h"
#include "command/failure.h"
#include "command/json_value.h"
#include "command/library_errors.h"
#include "command/native_path.h"
#include "command/nearest_names.h"

namespace command {
namespace {

using parameters::Row;
using parameters::Type;
using Indices = std::vector<std::size_t>;

constexpr int newestVersion = 1;
// The host's frame rates, and the ids that it gives to nodes.
constexpr int highestFrameRate = 4800;
constexpr int highestNodeID = 65533;
constexpr int highestNumber = 65535;
// Names that a message may be chosen from.
constexpr std::size_t mostCandidates = 10'000;
constexpr std::size_t mostCompared = 100;

struct KindName {
    std::string_view name;
    NodeKind kind;
};

constexpr KindName kindNames[] = {{"object", NodeKind::Object},
                                  {"camera", NodeKind::Camera},
                                  {"light", NodeKind::Light},
                                  {"helper", NodeKind::Helper}};

// "; the nearest are a, b", or nothing when there are no names.
std::string Nearest(const std::string& wanted, std::vector<std::string> names) {
    if (names.empty()) return "";
    return "; the nearest are " +
           Joined(NearestNames(std::string_view(wanted).substr(0, mostCompared), std::move(names)));
}

class SceneReader {
  public:
    explicit SceneReader(const std::string& path) { scene.path = path; }

    SceneDescription Read(std::string_view text) {
        const nlohmann::json json = ParseJson(scene.path, text);
        const JsonValue whole(scene.path, json);
        ReadVersion(whole);
        whole.Read({
            {"veltrane", [](const JsonValue&) {}, true},
            {"nodes", [&](const JsonValue& value) { ReadNodes(value); }},
            {"layers", [&](const JsonValue& value) { ReadLayers(value, std::nullopt); }},
            {"selectionSets", [&](const JsonValue& value) { ReadSets(value); }},
            {"elements", [&](const JsonValue& value) { ReadElements(value); }},
            {"render", [&](const JsonValue& value) { ReadRender(value); }},
            {"effect", [&](const JsonValue& value) { ReadEffect(value); }},
        });
        return std::move(scene);
    }

  private:
    // Before all else: another version may have other keys.
    static void ReadVersion(const JsonValue& whole) {
        whole.ForEachMember([](const std::string& key, const JsonValue& value) {
            if (key != "veltrane") return;
            if (value.Whole(0, std::numeric_limits<int>::max()) == newestVersion) return;
            value.Complain("this version of scene files is not known; this program reads version " +
                           std::to_string(newestVersion));
        });
    }

    // A name that no other of its kind has.
    static std::string NewName(const JsonValue& value, std::unordered_set<std::string>& taken) {
        const std::string& name = value.Name();
        if (!taken.insert(name).second) {
            value.Complain("the name \"" + name + "\" stands twice");
        }
        return name;
    }

    void ReadNodes(const JsonValue& list) {
        scene.nodes.reserve(list.Size());
        list.ForEach([&](const JsonValue& value) { ReadNode(value); });
        std::size_t index = 0;
        list.ForEach([&](const JsonValue& value) { ReadParent(value, index++); });
        CheckParents(list);
    }

    void ReadNode(const JsonValue& value) {
        SceneNode node;
        value.Read({
            {"name",
             [&](const JsonValue& name) {
                 node.name = name.Name();
                 if (!nodeOf.emplace(node.name, scene.nodes.size()).second) {
                     name.Complain("the name \"" + node.name + "\" stands twice");
                 }
             },
             true},
            {"id",
             [&](const JsonValue& id) {
                 node.id = static_cast<int>(id.Whole(0, highestNodeID));
                 if (!nodeIDs.insert(*node.id).second) {
                     id.Complain("the id " + std::to_string(*node.id) + " stands twice");
                 }
             }},
            {"type", [&](const JsonValue& type) { node.kind = ReadKind(type); }},
            {"objectID",
             [&](const JsonValue& id) {
                 node.objectID = static_cast<int>(id.Whole(0, highestNumber));
             }},
            {"hidden", [&](const JsonValue& hidden) { node.hidden = hidden.Bool(); }},
            {"parent", [](const JsonValue&) {}},
            {"groupHead", [&](const JsonValue& head) { node.groupHead = head.Bool(); }},
            {"groupMember", [&](const JsonValue& member) { node.groupMember = member.Bool(); }},
            {"properties", [&](const JsonValue& text) { node.properties = text.Text(); }},
            {"transform", [&](const JsonValue& rows) { node.transform = ReadTransform(rows); }},
            {"view",
             [&](const JsonValue& view) {
                 node.view = ReadLens(view);
                 if (node.kind != NodeKind::Camera) {
                     view.Complain("the node \"" + node.name + "\" is no camera");
                 }
             }},
        });
        scene.nodes.push_back(std::move(node));
    }

    static NodeKind ReadKind(const JsonValue& value) {
        const std::string& name = value.Text();
        std::vector<std::string> names;
        for (const KindName& each : kindNames) {
            if (each.name == name) return each.kind;
            names.emplace_back(each.name);
        }
        value.Complain("must be one of " + Joined(names));
    }

    static std::array<double, 16> ReadTransform(const JsonValue& rows) {
        constexpr double most = std::numeric_limits<float>::max();
        std::array<double, 16> matrix{};
        std::size_t count = 0;
        if (rows.Size() != 4) rows.Complain("must be four rows of four numbers");
        rows.ForEach([&](const JsonValue& row) {
            if (row.Size() != 4) row.Complain("must be four numbers");
            row.ForEach([&](const JsonValue& each) { matrix[count++] = each.Number(-most, most); });
        });
        if (matrix[12] != 0.0 || matrix[13] != 0.0 || matrix[14] != 0.0 || matrix[15] != 1.0) {
            rows.Complain("the last row must be 0, 0, 0, 1");
        }
        return matrix;
    }

    static CameraLens ReadLens(const JsonValue& value) {
        constexpr double most = std::numeric_limits<float>::max();
        CameraLens lens;
        value.Read({
            {"fov",
             [&](const JsonValue& angle) {
                 const auto degrees = static_cast<float>(angle.Number(-most, most));
                 if (!(degrees > 0.0F && degrees < 180.0F)) {
                     angle.Complain("must be above 0 and below 180");
                 }
                 lens.fieldOfView = angle.Number(-most, most);
             }},
            {"width",
             [&](const JsonValue& width) {
                 lens.width = width.Number(0.0, most);
                 if (static_cast<float>(lens.width) == 0.0F) width.Complain("must be above 0");
             }},
            {"near", [&](const JsonValue& range) { lens.nearRange = range.Number(0.0, most); }},
            {"far", [&](const JsonValue& range) { lens.farRange = range.Number(0.0, most); }},
        });
        if (lens.fieldOfView > 0.0 && lens.width > 0.0) {
            value.Complain(
                "has fov, which is a perspective's, and width, which is a parallel "
                "projection's; leave one of them");
        }
        if (lens.farRange > 0.0 && lens.farRange < lens.nearRange) {
            value.Complain("has far below near");
        }
        return lens;
    }

    void ReadParent(const JsonValue& value, std::size_t index) {
        value.ForEachMember([&](const std::string& key, const JsonValue& parent) {
            if (key == "parent") scene.nodes[index].parent = NodeNamed(parent);
        });
    }

    void CheckParents(const JsonValue& list) const {
        // Nodes from which a root was reached, or which lie on the way that is walked.
        enum class Mark : std::uint8_t { New, Walked, Done };
        std::vector<Mark> marks(scene.nodes.size(), Mark::New);
        const auto walk = [&](std::size_t from) {
            Indices way;
            std::optional<std::size_t> each = from;
            for (; each && marks[*each] == Mark::New; each = scene.nodes[*each].parent) {
                marks[*each] = Mark::Walked;
                way.push_back(*each);
            }
            const bool circle = each && marks[*each] == Mark::Walked;
            for (const std::size_t node : way)
                marks[node] = Mark::Done;
            return circle;
        };
        std::size_t index = 0;
        list.ForEach([&](const JsonValue& value) {
            const SceneNode& node = scene.nodes[index];
            if (walk(index)) {
                value.Complain("the parents of \"" + node.name + "\" run in a circle");
            }
            if (node.groupMember) {
                const SceneNode* parent = node.parent ? &scene.nodes[*node.parent] : nullptr;
                if (!parent || (!parent->groupHead && !parent->groupMember)) {
                    value.Complain("\"" + node.name +
                                   "\" is a member of a group, but its parent is neither a "
                                   "group's head nor a member of one");
                }
            }
            ++index;
        });
    }

    std::size_t NodeNamed(const JsonValue& value) const {
        const std::string& name = value.Text();
        const auto found = nodeOf.find(name);
        if (found != nodeOf.end()) return found->second;
        std::vector<std::string> names;
        for (const SceneNode& node : scene.nodes) {
            if (names.size() == mostCandidates) break;
            if (node.name.size() <= mostCompared) names.push_back(node.name);
        }
        value.Complain("there is no node \"" + name.substr(0, mostCompared) + "\"" +
                       Nearest(name, std::move(names)));
    }

    // Each node once.
    Indices NodesNamed(const JsonValue& list) const {
        Indices nodes;
        nodes.reserve(list.Size());
        std::unordered_set<std::size_t> taken;
        list.ForEach([&](const JsonValue& value) {
            nodes.push_back(NodeNamed(value));
            if (!taken.insert(nodes.back()).second) {
                value.Complain("the node \"" + scene.nodes[nodes.back()].name + "\" stands twice");
            }
        });
        return nodes;
    }

    void ReadLayers(const JsonValue& list, std::optional<std::size_t> parent) {
        list.ForEach([&](const JsonValue& value) { ReadLayer(value, parent); });
    }

    void ReadLayer(const JsonValue& value, std::optional<std::size_t> parent) {
        const std::size_t index = scene.layers.size();
        scene.layers.emplace_back().parent = parent;
        const auto layer = [this, index]() -> SceneLayerDescription& {
            return scene.layers[index];
        };
        value.Read({
            {"name", [&](const JsonValue& name) { layer().name = NewName(name, layerNames); },
             true},
            {"hidden", [&](const JsonValue& hidden) { layer().hidden = hidden.Bool(); }},
            {"nodes",
             [&](const JsonValue& nodes) {
                 layer().nodes = NodesNamed(nodes);
                 EnterLayer(nodes, index);
             }},
            {"children", [&](const JsonValue& children) { ReadLayers(children, index); }},
        });
    }

    void EnterLayer(const JsonValue& list, std::size_t layer) {
        std::size_t count = 0;
        list.ForEach([&](const JsonValue& value) {
            const std::size_t node = scene.layers[layer].nodes[count++];
            const auto [entry, isNew] = layerOf.emplace(node, layer);
            if (!isNew) {
                value.Complain("the node \"" + scene.nodes[node].name + "\" is in the layer \"" +
                               scene.layers[entry->second].name + "\" already");
            }
        });
    }

    void ReadSets(const JsonValue& list) {
        list.ForEach([&](const JsonValue& value) {
            SceneSet set;
            value.Read({
                {"name", [&](const JsonValue& name) { set.name = NewName(name, setNames); }, true},
                {"nodes", [&](const JsonValue& nodes) { set.nodes = NodesNamed(nodes); }, true},
            });
            scene.selectionSets.push_back(std::move(set));
        });
    }

    void ReadElements(const JsonValue& list) {
        list.ForEach([&](const JsonValue& value) {
            SceneElement element;
            value.Read({
                {"name", [&](const JsonValue& name) { element.name = NewName(name, elementNames); },
                 true},
                {"class", [&](const JsonValue& name) { element.elementClass = ReadClass(name); }},
                {"enabled", [&](const JsonValue& on) { element.enabled = on.Bool(); }},
                {"multiMatte",
                 [&](const JsonValue& mattes) { element.multiMatte = ReadMattes(mattes); }},
            });
            scene.elements.push_back(std::move(element));
        });
    }

    static Class_ID ReadClass(const JsonValue& value) {
        const std::string& name = value.Name();
        if (const auto found = ElementClassOf(name)) return *found;
        value.Complain("there is no class of render elements \"" + name.substr(0, mostCompared) +
                       "\"" + Nearest(name, ElementClassNames()));
    }

    std::array<SceneMatte, 3> ReadMattes(const JsonValue& value) const {
        std::array<SceneMatte, 3> mattes;
        value.Read({
            {"red", [&](const JsonValue& matte) { mattes[0] = ReadMatte(matte); }},
            {"green", [&](const JsonValue& matte) { mattes[1] = ReadMatte(matte); }},
            {"blue", [&](const JsonValue& matte) { mattes[2] = ReadMatte(matte); }},
        });
        return mattes;
    }

    SceneMatte ReadMatte(const JsonValue& value) const {
        SceneMatte matte;
        value.Read({
            {"id",
             [&](const JsonValue& id) { matte.id = static_cast<int>(id.Whole(0, highestNumber)); }},
            {"material", [&](const JsonValue& on) { matte.isMaterial = on.Bool(); }},
            {"nodes", [&](const JsonValue& nodes) { matte.nodes = NodesNamed(nodes); }},
            {"include", [&](const JsonValue& on) { matte.include = on.Bool(); }},
        });
        return matte;
    }

    void ReadRender(const JsonValue& value) {
        value.Read({
            {"hidden", [&](const JsonValue& on) { scene.render.hidden = on.Bool(); }},
            {"camera",
             [&](const JsonValue& camera) {
                 const std::size_t node = NodeNamed(camera);
                 if (scene.nodes[node].kind != NodeKind::Camera) {
                     camera.Complain("the node \"" + scene.nodes[node].name + "\" is no camera");
                 }
                 scene.render.camera = node;
             }},
            {"frameRate",
             [&](const JsonValue& rate) {
                 scene.render.frameRate = static_cast<int>(rate.Whole(1, highestFrameRate));
             }},
        });
    }

    void ReadEffect(const JsonValue& value) {
        value.Read({
            {"parameters", [&](const JsonValue& members) { ReadParameters(members); }},
            {"elements", [&](const JsonValue& members) { ReadElementSettings(members); }},
        });
    }

    void ReadParameters(const JsonValue& members) {
        members.ForEachMember([&](const std::string& name, const JsonValue& value) {
            scene.parameters.push_back(ReadSetting(name, value, plugin::EffectParameters()));
        });
    }

    void ReadElementSettings(const JsonValue& members) {
        members.ForEachMember([&](const std::string& element, const JsonValue& settings) {
            settings.ForEachMember([&](const std::string& name, const JsonValue& value) {
                scene.elementSettings.push_back(
                    {element, ReadSetting(name, value, plugin::LayerParameters())});
            });
        });
    }

    Setting ReadSetting(const std::string& name, const JsonValue& value,
                        std::span<const Row> rows) const {
        const auto row = std::find_if(rows.begin(), rows.end(),
                                      [&](const Row& each) { return each.name == name; });
        if (row != rows.end()) return {&*row, ReadParameter(value, *row)};
        std::vector<std::string> names;
        names.reserve(rows.size());
        for (const Row& each : rows)
            names.emplace_back(each.name);
        value.Complain("there is no such parameter" + Nearest(name, std::move(names)));
    }

    decltype(Setting::value) ReadParameter(const JsonValue& value, const Row& row) const {
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
                return NamesOf(NodesNamed(value));
            case Type::Reference:
            case Type::ReferenceTable:
                break;
        }
        value.Complain("this parameter holds objects of the application and takes no value");
    }

    static int ReadInt(const JsonValue& value, const Row& row) {
        if (value.IsText()) {
            for (const parameters::Choice& each : row.choices) {
                if (EqualIgnoringCase(each.label, value.Text())) return each.value;
            }
            if (!row.choices.empty()) value.Complain("must be one of " + AllowedValues(row));
        }
        using Limits = std::numeric_limits<int>;
        const double low = row.HasRange() ? row.low : double{Limits::min()};
        const double high = row.HasRange() ? row.high : double{Limits::max()};
        const auto number = static_cast<int>(
            value.Whole(static_cast<long long>(low), static_cast<long long>(high)));
        const bool listed =
            row.choices.empty() ||
            std::any_of(row.choices.begin(), row.choices.end(),
                        [&](const parameters::Choice& each) { return each.value == number; });
        if (!listed) value.Complain("must be one of " + AllowedValues(row));
        return number;
    }

    static float ReadFloat(const JsonValue& value, const Row& row) {
        constexpr double most = std::numeric_limits<float>::max();
        return static_cast<float>(
            value.Number(row.HasRange() ? row.low : -most, row.HasRange() ? row.high : most));
    }

    static std::vector<std::string> ReadTexts(const JsonValue& list) {
        std::vector<std::string> texts;
        list.ForEach([&](const JsonValue& value) { texts.push_back(value.Text()); });
        return texts;
    }

    std::vector<std::string> NamesOf(const Indices& nodes) const {
        std::vector<std::string> names;
        names.reserve(nodes.size());
        for (const std::size_t node : nodes)
            names.push_back(scene.nodes[node].name);
        return names;
    }

    SceneDescription scene;
    std::unordered_map<std::string, std::size_t> nodeOf;
    std::unordered_map<std::size_t, std::size_t> layerOf;
    std::unordered_set<int> nodeIDs;
    std::unordered_set<std::string> layerNames;
    std::unordered_set<std::string> setNames;
    std::unordered_set<std::string> elementNames;
};

std::FILE* OpenToRead(const std::string& path) {
#ifdef _WIN32
    return _wfopen(Native(path).c_str(), L"rb");
#else
    return std::fopen(path.c_str(), "rb");
#endif
}

[[noreturn]] void FailToRead(const std::string& path, const char* what, int reason) {
    throw InputError(path + ": cannot be " + what + " (" + std::generic_category().message(reason) +
                     ")");
}

// Stops one byte after what is taken, so that a file that is too large is seen as such.
std::string ReadText(const std::string& path) {
    std::error_code fault;
    if (std::filesystem::is_directory(Native(path), fault)) {
        throw InputError(path + ": a folder, not a scene file; give a file in it");
    }
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(OpenToRead(path), std::fclose);
    if (!file && errno == ENOENT) throw InputError(path + ": no such file; check the path");
    if (!file) FailToRead(path, "opened", errno);
    std::string text;
    std::array<char, 65536> block{};
    while (text.size() <= mostSceneBytes) {
        const std::size_t count = std::fread(block.data(), 1, block.size(), file.get());
        if (count == 0) break;
        text.append(block.data(), count);
    }
    if (std::ferror(file.get()) != 0) FailToRead(path, "read", errno);
    return text;
}

}  // namespace

SceneDescription ReadSceneFile(const std::string& path) {
    return Guarded(path, [&] { return ParseScene(path, ReadText(path)); });
}

SceneDescription ParseScene(const std::string& path, std::string_view text) {
    if (text.size() > mostSceneBytes) {
        throw InputError(path + ": larger than 64 MB, which no scene file is");
    }
    return SceneReader(path).Read(text);
}

}  // namespace command

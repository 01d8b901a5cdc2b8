#include "host/scene_text_reader.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <memory>
#include <new>
#include <optional>
#include <stdexcept>
#include <system_error>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "host/element_class_names.h"
#include "host/input_error.h"
#include "host/nearest_names.h"
#include "host/printable.h"
#include "host/scene_object_reader.h"
#include "host/time_type_names.h"

namespace host {
namespace {

using Indices = std::vector<std::size_t>;

// The application's frame rates.
constexpr int highestFrameRate = 4800;
// Names that a message may be chosen from.
constexpr std::size_t mostCandidates = 10'000;
constexpr std::size_t mostCompared = 100;

struct KindName {
    std::string_view name;
    NodeKind kind;
};

constexpr KindName kindNames[] = {{"object", NodeKind::Geometry},
                                  {"camera", NodeKind::Camera},
                                  {"light", NodeKind::Light},
                                  {"helper", NodeKind::PointHelper}};

// Which thing of a kind a name or a handle stands for.
class Registry {
  public:
    // `kind` is what messages call one.
    explicit Registry(const char* kind) : kind_(kind) {}

    // Names that stand more than once must all be of things with handles.
    void Enter(const JsonValue& value, const std::string& name, Handle handle, std::size_t place) {
        const auto [entry, isNew] = byName_.try_emplace(name, Named{place, handle != 0, false});
        Named& named = entry->second;
        if (!isNew && (handle == 0 || !named.allHaveHandles)) {
            value.Complain("the name " + Quoted(name) + " stands twice");
        }
        named.isRepeated = !isNew;
        if (handle != 0) byHandle_.emplace(handle, place);
    }

    // `nameOf` gives the name of the thing at a place, and `where` tells where it must be, for a
    // message.
    template <class NameOf>
    std::size_t Find(const JsonValue& value, std::size_t count, NameOf nameOf,
                     const char* where = "") const {
        if (value.IsNumber()) {
            const Handle handle = ReadHandle(value);
            const auto found = byHandle_.find(handle);
            if (found != byHandle_.end()) return found->second;
            value.Complain("there is no " + kind_ + " with the handle " + std::to_string(handle) +
                           where);
        }
        const std::string name = ReadExactText(value);
        const auto found = byName_.find(name);
        if (found == byName_.end()) {
            std::vector<std::string> names;
            for (std::size_t i = 0; i < std::min(count, mostCandidates); ++i) {
                const std::string& each = nameOf(i);
                if (!each.empty() && each.size() <= mostCompared) names.push_back(each);
            }
            value.Complain("there is no " + kind_ + " " + Quoted(name) + where +
                           NearestTo(name, std::move(names)));
        }
        if (found->second.isRepeated) {
            value.Complain("there is more than one " + kind_ + " " + Quoted(name) +
                           "; give the handle of the one that is meant");
        }
        return found->second.place;
    }

  private:
    struct Named {
        std::size_t place;
        bool allHaveHandles;
        bool isRepeated;
    };

    std::string kind_;
    std::unordered_map<std::string, Named> byName_;
    std::unordered_map<Handle, std::size_t> byHandle_;
};

class SceneReader {
  public:
    explicit SceneReader(const std::string& path) { scene.path = path; }

    SceneDescription Read(std::string_view text, const ReadEffectSettings& readEffectSettings) {
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
            {"objects", Newer([&](const JsonValue& value) { ReadSavedObjects(value); })},
            {"effects", Newer([&](const JsonValue& value) { ReadEffects(value); })},
            {"effect",
             [&](const JsonValue& value) {
                 if (!readEffectSettings) {
                     value.Complain(
                         "settings by name are for \"veltrane save --scene\"; take the section out "
                         "to have the rest of the scene");
                 }
                 readEffectSettings(value, [&](const JsonValue& list) { return NodesNamed(list); });
             }},
        });
        return std::move(scene);
    }

  private:
    using Reading = std::function<void(const JsonValue&)>;

    // Before all else: another version may have other keys.
    void ReadVersion(const JsonValue& whole) {
        whole.ForEachMember([&](const std::string& key, const JsonValue& value) {
            if (key != "veltrane") return;
            version = value.Whole(0, std::numeric_limits<int>::max());
            if (version >= 1 && version <= newestSceneVersion) return;
            value.Complain(
                "this version of scene files is not known; this program reads version 1 to " +
                std::to_string(newestSceneVersion));
        });
    }

    // A key of version 2.
    Reading Newer(Reading read) const {
        if (version >= 2) return read;
        return [](const JsonValue& value) {
            value.Complain("is a key of version 2, and \"veltrane\" says that this is version 1");
        };
    }

    // Version 1 has names that people write.
    std::string ReadName(const JsonValue& value) const {
        return version >= 2 ? ReadExactText(value) : value.Name();
    }

    std::string ReadText(const JsonValue& value) const {
        return version >= 2 ? ReadExactText(value) : value.Text();
    }

    // Each once in the file.
    JsonValue::Member HandleOf(Handle& handle) {
        return {"handle", Newer([&](const JsonValue& value) {
                    handle = ReadHandle(value);
                    EnterHandle(value, handle);
                })};
    }

    void EnterHandle(const JsonValue& value, Handle handle) {
        if (!handles.insert(handle).second) {
            value.Complain("the handle " + std::to_string(handle) + " stands twice");
        }
    }

    JsonValue::Member AppDataOf(std::vector<SavedAppData>& appData) const {
        return {"appData",
                Newer([&](const JsonValue& list) { appData = host::ReadAppData(list); })};
    }

    void ReadNodes(const JsonValue& list) {
        scene.nodes.reserve(list.Size());
        list.ForEach([&](const JsonValue& value) { ReadNode(value); });
        std::size_t index = 0;
        list.ForEach([&](const JsonValue& value) { ReadParent(value, index++); });
        CheckParents(list);
        ReadAllChildren(list);
    }

    void ReadNode(const JsonValue& value) {
        SceneNode node;
        value.Read({
            HandleOf(node.handle),
            {"name",
             [&](const JsonValue& name) {
                 node.name = ReadName(name);
                 nodes.Enter(name, node.name, node.handle, scene.nodes.size());
             },
             true},
            {"id",
             [&](const JsonValue& id) {
                 node.id = static_cast<int>(id.Whole(0, highestRenderID));
                 if (!nodeIDs.insert(*node.id).second) {
                     id.Complain("the id " + std::to_string(*node.id) + " stands twice");
                 }
             }},
            {"type", [&](const JsonValue& type) { node.kind = ReadKind(type); }},
            {"objectID",
             [&](const JsonValue& id) {
                 node.objectID = static_cast<int>(id.Whole(0, highestObjectID));
             }},
            {"hidden", [&](const JsonValue& hidden) { node.hidden = hidden.Bool(); }},
            {"parent", [](const JsonValue&) {}},
            {"children", Newer([](const JsonValue&) {})},
            {"groupHead", [&](const JsonValue& head) { node.groupHead = head.Bool(); }},
            {"groupMember", [&](const JsonValue& member) { node.groupMember = member.Bool(); }},
            {"properties", [&](const JsonValue& text) { node.properties = ReadText(text); }},
            {"transform", [&](const JsonValue& rows) { node.transform = ReadTransform(rows); }},
            {"view",
             [&](const JsonValue& view) {
                 node.view = ReadLens(view);
                 if (node.kind != NodeKind::Camera) {
                     view.Complain("the node " + Quoted(node.name) + " is no camera");
                 }
             }},
            AppDataOf(node.appData),
        });
        scene.nodes.push_back(std::move(node));
    }

    // Of a table of names the row that the text names.
    template <class Rows>
    static const auto& ReadChoice(const JsonValue& value, const Rows& rows) {
        const std::string& name = value.Text();
        std::vector<std::string> names;
        for (const auto& each : rows) {
            if (each.name == name) return each;
            names.emplace_back(each.name);
        }
        value.Complain("must be one of " + Joined(names));
    }

    static NodeKind ReadKind(const JsonValue& value) { return ReadChoice(value, kindNames).kind; }

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

    void ReadAllChildren(const JsonValue& list) {
        std::vector<std::size_t> counts(scene.nodes.size());
        for (const SceneNode& node : scene.nodes) {
            if (node.parent) ++counts[*node.parent];
        }
        std::size_t index = 0;
        list.ForEach([&](const JsonValue& value) {
            value.ForEachMember([&](const std::string& key, const JsonValue& children) {
                if (key == "children") ReadChildren(children, index, counts[index]);
            });
            ++index;
        });
    }

    void ReadChildren(const JsonValue& list, std::size_t parent, std::size_t count) {
        Indices children = NodesNamed(list);
        std::size_t at = 0;
        list.ForEach([&](const JsonValue& value) {
            const SceneNode& child = scene.nodes[children[at++]];
            if (child.parent != parent) {
                value.Complain("the parent of " + Quoted(child.name) + " is not this node");
            }
        });
        if (children.size() != count) {
            list.Complain("has " + std::to_string(children.size()) +
                          " of the nodes whose parent this is, which are " + std::to_string(count));
        }
        scene.nodes[parent].children = std::move(children);
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
                value.Complain("the parents of " + Quoted(node.name) + " run in a circle");
            }
            // The application's own groups are as they are.
            if (node.groupMember && node.handle == 0) {
                const SceneNode* parent = node.parent ? &scene.nodes[*node.parent] : nullptr;
                if (!parent || (!parent->groupHead && !parent->groupMember)) {
                    value.Complain(Quoted(node.name) +
                                   " is a member of a group, but its parent is neither a "
                                   "group's head nor a member of one");
                }
            }
            ++index;
        });
    }

    std::size_t NodeNamed(const JsonValue& value) const {
        // Version 1 has no handles.
        if (version < 2) value.Text();
        return nodes.Find(value, scene.nodes.size(),
                          [&](std::size_t i) -> const std::string& { return scene.nodes[i].name; });
    }

    // Each node once.
    Indices NodesNamed(const JsonValue& list) const {
        Indices found;
        found.reserve(list.Size());
        std::unordered_set<std::size_t> taken;
        list.ForEach([&](const JsonValue& value) {
            found.push_back(NodeNamed(value));
            if (!taken.insert(found.back()).second) {
                value.Complain("the node " + Quoted(scene.nodes[found.back()].name) +
                               " stands twice");
            }
        });
        return found;
    }

    void ReadLayers(const JsonValue& list, std::optional<std::size_t> parent) {
        list.ForEach([&](const JsonValue& value) { ReadLayer(value, parent); });
    }

    void ReadLayer(const JsonValue& value, std::optional<std::size_t> parent) {
        const std::size_t index = scene.layers.size();
        scene.layers.emplace_back().parent = parent;
        // The list grows while children are read.
        SceneLayerDescription layer;
        value.Read({
            HandleOf(layer.handle),
            {"name",
             [&](const JsonValue& name) {
                 scene.layers[index].name = ReadName(name);
                 layers.Enter(name, scene.layers[index].name, layer.handle, index);
             },
             true},
            {"hidden",
             [&](const JsonValue& hidden) { scene.layers[index].hidden = hidden.Bool(); }},
            {"parent", Newer([&](const JsonValue& name) {
                 if (parent) name.Complain("this layer stands in its parent already");
                 scene.layers[index].parent = LayerBefore(name, index);
             })},
            {"nodes",
             [&](const JsonValue& list) {
                 scene.layers[index].nodes = NodesNamed(list);
                 EnterLayer(list, index);
             }},
            AppDataOf(layer.appData),
            {"children", [&](const JsonValue& children) { ReadLayers(children, index); }},
        });
        scene.layers[index].handle = layer.handle;
        scene.layers[index].appData = std::move(layer.appData);
    }

    // So no circle can be made.
    std::size_t LayerBefore(const JsonValue& value, std::size_t index) const {
        const auto nameOf = [&](std::size_t i) -> const std::string& {
            return scene.layers[i].name;
        };
        const std::size_t found = layers.Find(value, index, nameOf, " before this one");
        if (found == index) value.Complain("a layer can't be its own parent");
        return found;
    }

    void EnterLayer(const JsonValue& list, std::size_t layer) {
        std::size_t count = 0;
        list.ForEach([&](const JsonValue& value) {
            const std::size_t node = scene.layers[layer].nodes[count++];
            const auto [entry, isNew] = layerOf.emplace(node, layer);
            if (!isNew) {
                value.Complain("the node " + Quoted(scene.nodes[node].name) + " is in the layer " +
                               Quoted(scene.layers[entry->second].name) + " already");
            }
        });
    }

    void ReadSets(const JsonValue& list) {
        if (list.Size() > mostSelectionSets) {
            list.Complain("there are more than " + std::to_string(mostSelectionSets) +
                          " selection sets");
        }
        list.ForEach([&](const JsonValue& value) {
            SceneSet set;
            value.Read({
                {"name",
                 [&](const JsonValue& name) {
                     set.name = ReadName(name);
                     sets.Enter(name, set.name, 0, scene.selectionSets.size());
                 },
                 true},
                {"nodes", [&](const JsonValue& names) { set.nodes = NodesNamed(names); }, true},
            });
            scene.selectionSets.push_back(std::move(set));
        });
    }

    void ReadElements(const JsonValue& list) {
        list.ForEach([&](const JsonValue& value) {
            SceneElement element;
            value.Read({
                HandleOf(element.handle),
                {"name",
                 [&](const JsonValue& name) {
                     element.name = ReadName(name);
                     elements.Enter(name, element.name, element.handle, scene.elements.size());
                 },
                 true},
                {"class", [&](const JsonValue& name) { element.elementClass = ReadClass(name); }},
                {"enabled", [&](const JsonValue& on) { element.enabled = on.Bool(); }},
                {"draft", Newer([&](const JsonValue& on) { element.draft = on.Bool(); })},
                {"multiMatte",
                 [&](const JsonValue& mattes) { element.multiMatte = ReadMattes(mattes); }},
                {"parameters", Newer([&](const JsonValue& numbers) {
                     element.parameters = ReadNumbers(numbers);
                 })},
                AppDataOf(element.appData),
            });
            if (element.handle != 0 && !element.elementClass) {
                value.Complain("has a handle, and so needs a class");
            }
            scene.elements.push_back(std::move(element));
        });
    }

    Class_ID ReadClass(const JsonValue& value) const {
        if (version >= 2 && !value.IsText()) return ReadClassID(value);
        const std::string& name = value.Name();
        if (const auto found = ElementClassOf(name)) return *found;
        value.Complain("there is no class of render elements " + Quoted(name) +
                       NearestTo(name, ElementClassNames()));
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
             [&](const JsonValue& id) {
                 matte.id = static_cast<int>(id.Whole(0, highestObjectID));
             }},
            {"material", [&](const JsonValue& on) { matte.isMaterial = on.Bool(); }},
            {"nodes", [&](const JsonValue& list) { matte.nodes = NodesNamed(list); }},
            {"include", [&](const JsonValue& on) { matte.include = on.Bool(); }},
        });
        return matte;
    }

    static std::vector<SceneNumber> ReadNumbers(const JsonValue& list) {
        std::vector<SceneNumber> numbers;
        std::unordered_set<ParamID> ids;
        list.ForEach([&](const JsonValue& value) {
            SceneNumber& number = numbers.emplace_back();
            value.Read({
                {"id",
                 [&](const JsonValue& id) {
                     number.id = ReadNumber<ParamID>(id);
                     if (!ids.insert(number.id).second) {
                         id.Complain("the parameter " + std::to_string(number.id) +
                                     " stands twice");
                     }
                 },
                 true},
                {"value", [&](const JsonValue& each) { number.value = ReadNumber<int>(each); },
                 true},
            });
        });
        return numbers;
    }

    static SceneRenderer ReadRenderer(const JsonValue& value) {
        SceneRenderer renderer;
        value.Read({
            {"class", [&](const JsonValue& id) { renderer.rendererClass = ReadClassID(id); }},
            {"parameters", [&](const JsonValue& list) { renderer.parameters = ReadNumbers(list); }},
            {"sampler",
             [&](const JsonValue& number) { renderer.sampler = ReadNumber<int>(number); }},
        });
        return renderer;
    }

    void ReadRender(const JsonValue& value) {
        SceneRender& render = scene.render;
        const auto side = [](std::optional<int>& pixels) {
            return [&pixels](const JsonValue& number) {
                pixels = static_cast<int>(number.Whole(1, longestSide));
            };
        };
        value.Read({
            {"hidden", [&](const JsonValue& on) { render.hidden = on.Bool(); }},
            {"camera",
             [&](const JsonValue& camera) {
                 const std::size_t node = NodeNamed(camera);
                 if (scene.nodes[node].kind != NodeKind::Camera) {
                     camera.Complain("the node " + Quoted(scene.nodes[node].name) +
                                     " is no camera");
                 }
                 render.camera = node;
             }},
            {"frameRate",
             [&](const JsonValue& rate) {
                 render.frameRate = static_cast<int>(rate.Whole(1, highestFrameRate));
             }},
            {"width", Newer(side(render.width))},
            {"height", Newer(side(render.height))},
            {"output", Newer([&](const JsonValue& path) { render.output = ReadExactText(path); })},
            {"saveFile", Newer([&](const JsonValue& on) { render.saveFile = on.Bool(); })},
            {"timeType", Newer([&](const JsonValue& name) {
                 render.timeType = ReadChoice(name, timeTypeNames).type;
             })},
            {"numberBase",
             Newer([&](const JsonValue& base) { render.numberBase = ReadNumber<int>(base); })},
            {"effects", Newer([&](const JsonValue& on) { render.effects = on.Bool(); })},
            {"draft", Newer([&](const JsonValue& on) { render.draft = on.Bool(); })},
            {"renderer",
             Newer([&](const JsonValue& renderer) { render.renderer = ReadRenderer(renderer); })},
        });
    }

    void ReadSavedObjects(const JsonValue& list) {
        scene.objects = ReadObjects(list);
        std::size_t index = 0;
        list.ForEach([&](const JsonValue& value) {
            const SavedObject& object = scene.objects[index++];
            EnterHandle(value, object.handle);
            if (object.superClass == RENDER_EFFECT_CLASS_ID) effects.insert(object.handle);
        });
    }

    void ReadEffects(const JsonValue& list) {
        list.ForEach([&](const JsonValue& value) {
            const Handle handle = ReadHandle(value);
            if (effects.erase(handle) == 0) {
                const auto& taken = scene.effects;
                const bool isTaken = std::find(taken.begin(), taken.end(), handle) != taken.end();
                value.Complain(isTaken ? "the effect stands twice"
                                       : "there is no effect with the handle " +
                                             std::to_string(handle) + " among the objects");
            }
            scene.effects.push_back(handle);
        });
    }

    SceneDescription scene;
    long long version = 0;
    Registry nodes{"node"};
    Registry layers{"layer"};
    Registry sets{"selection set"};
    Registry elements{"render element"};
    std::unordered_set<Handle> handles;
    // Those that `effects` hasn't named yet.
    std::unordered_set<Handle> effects;
    std::unordered_map<std::size_t, std::size_t> layerOf;
    std::unordered_set<int> nodeIDs;
};

std::filesystem::path NativePath(const std::string& path) {
    return {std::u8string(path.begin(), path.end())};
}

std::FILE* OpenToRead(const std::string& path) {
#ifdef _WIN32
    return _wfopen(NativePath(path).c_str(), L"rb");
#else
    return std::fopen(path.c_str(), "rb");
#endif
}

[[noreturn]] void FailToRead(const std::string& path, const char* what, int reason) {
    throw InputError(path + ": cannot be " + what + " (" + std::generic_category().message(reason) +
                     ")");
}

// Stops one byte after what is taken, so that a file that is too large is seen as such.
std::string ReadWhole(const std::string& path) {
    std::error_code fault;
    if (std::filesystem::is_directory(NativePath(path), fault)) {
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

[[noreturn]] void FailOfMemory(const std::string& path) {
    throw InputError(path + ": not enough memory to read it; close other programs");
}

// What isn't the file's fault.
template <class Read>
SceneDescription Guarded(const std::string& path, Read read) {
    try {
        return read();
    } catch (const std::bad_alloc&) {
        FailOfMemory(path);
    } catch (const std::length_error&) {
        FailOfMemory(path);
    }
}

}  // namespace

std::string NearestTo(std::string_view wanted, std::vector<std::string> names) {
    for (std::string& name : names)
        name = Printable(name);
    if (names.empty()) return "";
    return "; the nearest are " +
           Joined(NearestNames(wanted.substr(0, mostCompared), std::move(names)));
}

SceneDescription ReadSceneFile(const std::string& path,
                               const ReadEffectSettings& readEffectSettings) {
    return Guarded(path, [&] { return ParseScene(path, ReadWhole(path), readEffectSettings); });
}

SceneDescription ParseScene(const std::string& path, std::string_view text,
                            const ReadEffectSettings& readEffectSettings) {
    if (text.size() > mostSceneBytes) {
        throw InputError(path + ": larger than 64 MB, which no scene file is");
    }
    return SceneReader(path).Read(text, readEffectSettings);
}

}  // namespace host

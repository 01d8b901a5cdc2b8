#include "host/scene_text_writer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <string_view>
#include <variant>

#include "host/element_class_names.h"
#include "host/exact_text.h"
#include "host/input_error.h"
#include "host/json_writer.h"
#include "host/saved_value_types.h"
#include "host/scene_object_reader.h"
#include "host/scene_text_reader.h"
#include "host/time_type_names.h"

namespace host {
namespace {

using Indices = std::vector<std::size_t>;

constexpr std::array<std::string_view, 4> typeNames{"object", "camera", "light", "helper"};
constexpr std::array<std::string_view, 3> colorNames{"red", "green", "blue"};

std::string Hex(std::string_view bytes) {
    static constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    text.reserve(2 * bytes.size());
    for (const char each : bytes) {
        const auto byte = static_cast<unsigned char>(each);
        text += digits[byte >> 4];
        text += digits[byte & 15U];
    }
    return text;
}

std::string Hex(const std::vector<std::uint8_t>& bytes) {
    return Hex(std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
}

// Units of UTF-16, high byte first.
std::string UnitsOf(const MSTR& text) {
    std::string bytes;
    for (const MCHAR* unit = text.data(); *unit; ++unit) {
        const auto value = static_cast<unsigned>(*unit);
        bytes += static_cast<char>(value >> 8);
        bytes += static_cast<char>(value & 0xffU);
    }
    return Hex(bytes);
}

class SceneWriter {
  public:
    explicit SceneWriter(const SceneDescription& description) : scene(description) {}

    std::string Write() {
        CheckCounts();
        json.OpenObject(Lines);
        json.Key("veltrane").Whole(newestSceneVersion);
        WriteList("nodes", scene.nodes, [&](const SceneNode& node) { WriteNode(node); });
        WriteList("layers", scene.layers,
                  [&](const SceneLayerDescription& layer) { WriteLayer(layer); });
        WriteList("selectionSets", scene.selectionSets,
                  [&](const SceneSet& set) { WriteSet(set); });
        WriteList("elements", scene.elements,
                  [&](const SceneElement& element) { WriteElement(element); });
        WriteRender();
        WriteList("objects", scene.objects,
                  [&](const SavedObject& object) { WriteObject(object); });
        if (!scene.effects.empty()) {
            json.Key("effects").OpenList(Line);
            for (const Handle effect : scene.effects)
                json.Whole(effect);
            json.Close();
        }
        json.Close();
        if (json.DeepestLevel() > mostJsonLevels) {
            throw InputError(scene.path + ": the scene's objects lie in each other too deep");
        }
        std::string text = json.Take();
        if (text.size() > mostSceneBytes) {
            throw InputError(scene.path + ": the scene is larger than 64 MB, which no file may be");
        }
        return text;
    }

  private:
    static constexpr JsonLayout Line = JsonLayout::Line;
    static constexpr JsonLayout Lines = JsonLayout::Lines;

    void CheckCounts() const {
        const auto effects = static_cast<std::size_t>(std::count_if(
            scene.objects.begin(), scene.objects.end(),
            [](const SavedObject& object) { return object.superClass == RENDER_EFFECT_CLASS_ID; }));
        const auto check = [&](std::size_t count, std::size_t most, const char* what) {
            if (count <= most) return;
            throw InputError(scene.path + ": the scene has more than " + std::to_string(most) +
                             " " + what + ", which no file may have");
        };
        check(scene.objects.size(), mostObjects, "objects");
        check(effects, mostEffects, "effects");
        check(scene.selectionSets.size(), mostSelectionSets, "selection sets");
    }

    template <class List, class Write>
    void WriteList(std::string_view key, const List& list, Write write) {
        if (list.empty()) return;
        json.Key(key).OpenList(Lines);
        for (const auto& each : list)
            write(each);
        json.Close();
    }

    void WriteText(const std::string& text) {
        if (!HasLoneSurrogate(text)) return json.Text(text);
        json.OpenObject(Line).Key("utf16").Text(UnitsOf(FromExactText(text)));
        json.Close();
    }

    void WriteHandle(Handle handle) {
        if (handle != 0) json.Key("handle").Whole(handle);
    }

    void WriteSwitch(std::string_view key, bool on) {
        if (on) json.Key(key).Bool(true);
    }

    // What names the node: its handle, if it has one.
    void WriteNodeName(std::size_t place) {
        const SceneNode& node = scene.nodes[place];
        if (node.handle != 0) return json.Whole(node.handle);
        WriteText(node.name);
    }

    void WriteNodes(const Indices& nodes, std::string_view key = "nodes") {
        json.Key(key).OpenList(Line);
        for (const std::size_t node : nodes)
            WriteNodeName(node);
        json.Close();
    }

    void WriteClassID(const Class_ID& id) {
        json.OpenList(Line);
        json.Whole(id.PartA());
        json.Whole(id.PartB());
        json.Close();
    }

    void WriteAppData(const std::vector<SavedAppData>& appData) {
        if (appData.empty()) return;
        json.Key("appData").OpenList(Lines);
        for (const SavedAppData& each : appData) {
            json.OpenObject(Line);
            json.Key("class");
            WriteClassID(each.owner);
            json.Key("superClass").Whole(each.ownerSuperClass);
            json.Key("subID").Whole(each.subID);
            json.Key("data").Text(Hex(each.bytes));
            json.Close();
        }
        json.Close();
    }

    void WriteNode(const SceneNode& node) {
        json.OpenObject(Line);
        WriteHandle(node.handle);
        json.Key("name");
        WriteText(node.name);
        if (node.id) json.Key("id").Whole(*node.id);
        if (node.kind != NodeKind::Geometry) {
            json.Key("type").Text(typeNames[static_cast<std::size_t>(node.kind)]);
        }
        if (node.objectID != 0) json.Key("objectID").Whole(node.objectID);
        WriteSwitch("hidden", node.hidden);
        if (node.parent) {
            json.Key("parent");
            WriteNodeName(*node.parent);
        }
        if (!node.children.empty()) WriteNodes(node.children, "children");
        WriteSwitch("groupHead", node.groupHead);
        WriteSwitch("groupMember", node.groupMember);
        if (!node.properties.empty()) {
            json.Key("properties");
            WriteText(node.properties);
        }
        if (node.transform) WriteTransform(*node.transform);
        if (node.view) WriteLens(*node.view);
        WriteAppData(node.appData);
        json.Close();
    }

    // The application keeps floats.
    void WriteTransform(const std::array<double, 16>& transform) {
        json.Key("transform").OpenList(Line);
        for (std::size_t row = 0; row < 4; ++row) {
            json.OpenList(Line);
            for (std::size_t column = 0; column < 4; ++column)
                json.Real(static_cast<float>(transform[4 * row + column]));
            json.Close();
        }
        json.Close();
    }

    void WriteLens(const CameraLens& lens) {
        json.Key("view").OpenObject(Line);
        const auto write = [&](std::string_view key, double value) {
            if (value != 0.0) json.Key(key).Real(value);
        };
        write("fov", lens.fieldOfView);
        write("width", lens.width);
        write("near", lens.nearRange);
        write("far", lens.farRange);
        json.Close();
    }

    // Not as a parent's child: layers may lie in each other deeper than JSON may.
    void WriteLayer(const SceneLayerDescription& layer) {
        json.OpenObject(Line);
        WriteHandle(layer.handle);
        json.Key("name");
        WriteText(layer.name);
        WriteSwitch("hidden", layer.hidden);
        if (layer.parent) {
            const SceneLayerDescription& parent = scene.layers[*layer.parent];
            json.Key("parent");
            if (parent.handle != 0) {
                json.Whole(parent.handle);
            } else {
                WriteText(parent.name);
            }
        }
        if (!layer.nodes.empty()) WriteNodes(layer.nodes);
        WriteAppData(layer.appData);
        json.Close();
    }

    void WriteSet(const SceneSet& set) {
        json.OpenObject(Line).Key("name");
        WriteText(set.name);
        WriteNodes(set.nodes);
        json.Close();
    }

    void WriteElement(const SceneElement& element) {
        json.OpenObject(Line);
        WriteHandle(element.handle);
        json.Key("name");
        WriteText(element.name);
        if (element.elementClass) {
            json.Key("class");
            const std::string_view name = ElementClassName(*element.elementClass);
            if (name.empty()) {
                WriteClassID(*element.elementClass);
            } else {
                json.Text(name);
            }
        }
        if (!element.enabled) json.Key("enabled").Bool(false);
        WriteSwitch("draft", element.draft);
        if (element.multiMatte) WriteMattes(*element.multiMatte);
        if (element.parameters) WriteNumbers(*element.parameters);
        WriteAppData(element.appData);
        json.Close();
    }

    void WriteMattes(const std::array<SceneMatte, 3>& mattes) {
        json.Key("multiMatte").OpenObject(Line);
        for (std::size_t i = 0; i < mattes.size(); ++i) {
            const SceneMatte& matte = mattes[i];
            json.Key(colorNames[i]).OpenObject(Line);
            if (matte.id) json.Key("id").Whole(*matte.id);
            WriteSwitch("material", matte.isMaterial);
            if (!matte.nodes.empty()) WriteNodes(matte.nodes);
            if (!matte.include) json.Key("include").Bool(false);
            json.Close();
        }
        json.Close();
    }

    void WriteNumbers(const std::vector<SceneNumber>& numbers) {
        json.Key("parameters").OpenList(Line);
        for (const SceneNumber& number : numbers) {
            json.OpenObject(Line);
            json.Key("id").Whole(number.id);
            json.Key("value").Whole(number.value);
            json.Close();
        }
        json.Close();
    }

    void WriteRenderer(const SceneRenderer& renderer) {
        json.Key("renderer").OpenObject(Line);
        if (renderer.rendererClass != Class_ID()) {
            json.Key("class");
            WriteClassID(renderer.rendererClass);
        }
        if (!renderer.parameters.empty()) WriteNumbers(renderer.parameters);
        if (renderer.sampler) json.Key("sampler").Whole(*renderer.sampler);
        json.Close();
    }

    void WriteRender() {
        const SceneRender& render = scene.render;
        json.Key("render").OpenObject(Lines);
        if (render.hidden) json.Key("hidden").Bool(*render.hidden);
        if (render.camera) {
            json.Key("camera");
            WriteNodeName(*render.camera);
        }
        if (render.frameRate) json.Key("frameRate").Whole(*render.frameRate);
        if (render.width) json.Key("width").Whole(*render.width);
        if (render.height) json.Key("height").Whole(*render.height);
        if (render.output) {
            json.Key("output");
            WriteText(*render.output);
        }
        if (render.saveFile) json.Key("saveFile").Bool(*render.saveFile);
        if (render.timeType) {
            json.Key("timeType")
                .Text(timeTypeNames.at(static_cast<std::size_t>(*render.timeType)).name);
        }
        if (render.numberBase) json.Key("numberBase").Whole(*render.numberBase);
        if (render.effects) json.Key("effects").Bool(*render.effects);
        if (render.draft) json.Key("draft").Bool(*render.draft);
        if (render.renderer) WriteRenderer(*render.renderer);
        json.Close();
    }

    void WriteObject(const SavedObject& object) {
        json.OpenObject(Lines);
        WriteHandle(object.handle);
        json.Key("superClass").Whole(object.superClass);
        json.Key("class");
        WriteClassID(object.classID);
        if (!object.chunks.empty()) WriteChunks(object.chunks);
        WriteAppData(object.appData);
        if (!object.references.empty()) {
            json.Key("references").OpenList(Lines);
            for (const auto& reference : object.references)
                std::visit([&](const auto& each) { WriteReference(each); }, reference);
            json.Close();
        }
        json.Close();
    }

    void WriteChunks(const std::vector<SavedChunk>& chunks) {
        json.Key("chunks").OpenList(Lines);
        for (const SavedChunk& chunk : chunks) {
            json.OpenObject(chunk.chunks.empty() ? Line : Lines);
            json.Key("id").Whole(chunk.id);
            if (!chunk.bytes.empty()) json.Key("data").Text(Hex(chunk.bytes));
            if (!chunk.chunks.empty()) WriteChunks(chunk.chunks);
            json.Close();
        }
        json.Close();
    }

    void WriteReference(const SavedReference& reference) {
        if (reference.target == 0) return json.Null();
        json.Whole(reference.target);
    }

    void WriteReference(const SavedBlock& block) {
        json.OpenObject(Lines).Key("block").OpenObject(Lines);
        json.Key("id").Whole(block.id);
        json.Key("version").Whole(block.version);
        json.Key("parameters").OpenList(Lines);
        for (const SavedParameter& parameter : block.parameters)
            WriteParameter(parameter);
        json.Close().Close().Close();
    }

    void WriteParameter(const SavedParameter& parameter) {
        const auto type = static_cast<ParamType2>(parameter.type & ~TYPE_TAB);
        const bool isTable = type != parameter.type;
        json.OpenObject(Line);
        json.Key("id").Whole(parameter.id);
        json.Key("type").Text(NameOfParameterType(type));
        json.Key(isTable ? "values" : "value");
        if (isTable) json.OpenList(Line);
        for (const SavedValue& value : parameter.values) {
            const auto* number = std::get_if<int>(&value);
            if (type == TYPE_BOOL && number && (*number == 0 || *number == 1)) {
                json.Bool(*number == 1);
            } else {
                std::visit([&](const auto& each) { WriteValue(each); }, value);
            }
        }
        if (isTable) json.Close();
        json.Close();
    }

    void WriteValue(int value) { json.Whole(value); }
    void WriteValue(float value) {
        if (std::isfinite(value)) return json.Real(value);
        // JSON has no form for these.
        json.Text(std::isnan(value) ? "nan" : value > 0.0F ? "inf" : "-inf");
    }
    void WriteValue(const MSTR& value) { WriteText(ToExactText(value.data())); }
    void WriteValue(const SavedReference& value) { WriteReference(value); }

    const SceneDescription& scene;
    JsonWriter json;
};

}  // namespace

std::string WriteScene(const SceneDescription& description) {
    return SceneWriter(description).Write();
}

}  // namespace host

#include "host/build_scene.h"

#include <algorithm>
#include <array>
#include <exception>
#include <map>
#include <memory>
#include <string>

#include <elementclasses.h>
#include <multimatte.h>

#include "host/application.h"
#include "host/exact_text.h"
#include "host/host_renderer.h"
#include "host/input_error.h"
#include "host/scene_transform.h"

namespace host {
namespace {

using Indices = std::vector<std::size_t>;
using Nodes = std::vector<Node*>;

Nodes NodesOf(const Indices& indices, const Nodes& nodes) {
    Nodes chosen;
    chosen.reserve(indices.size());
    for (const std::size_t index : indices)
        chosen.push_back(nodes[index]);
    return chosen;
}

void DescribeNode(const SceneNode& description, Node& node) {
    if (description.id) node.SetRenderID(static_cast<USHORT>(*description.id));
    node.SetObjectID(static_cast<UWORD>(description.objectID));
    node.SetHidden(description.hidden);
    node.SetGroupHead(description.groupHead);
    node.SetGroupMember(description.groupMember);
    node.SetUserProperties(FromExactText(description.properties));
    node.SetKind(description.kind);
    if (description.transform) node.SetTransform(HostTransform(*description.transform));
    if (description.view) node.SetLens(description.view);
    LoadAppData(description.appData, node);
}

Owned<Renderer> MakeRenderer(const SceneRenderer& description) {
    if (description.rendererClass == Class_ID()) return nullptr;
    auto renderer = std::make_unique<HostRenderer>(description.rendererClass);
    if (IParamBlock2* block = renderer->GetParamBlock(VRAY_BLOCK)) {
        for (const SceneNumber& number : description.parameters)
            block->SetValue(number.id, 0, number.value);
    }
    if (description.sampler) {
        renderer->properties.Set(VRAY_SAMPLER_PROPERTY, ScriptInt(*description.sampler));
    }
    return Owned<Renderer>(renderer.release());
}

void ChangeRenderSettings(const SceneRender& description, const Nodes& nodes) {
    Settings& settings = App().settings;
    RenderSettings& render = settings.render;
    if (description.hidden) render.hidden = *description.hidden;
    if (description.camera) {
        render.camera = std::make_shared<TargetReference>(nodes[*description.camera]);
    }
    if (description.frameRate) settings.frameRate = *description.frameRate;
    if (description.width) render.width = *description.width;
    if (description.height) render.height = *description.height;
    if (description.output) render.output.SetName(FromExactText(*description.output));
    if (description.saveFile) render.saveFile = *description.saveFile ? TRUE : FALSE;
    if (description.timeType) render.timeType = *description.timeType;
    if (description.numberBase) render.fileNumberBase = *description.numberBase;
    if (description.effects) render.effects = *description.effects;
    if (description.draft) render.current = *description.draft ? RS_Draft : RS_Production;
    if (description.renderer) App().renderer = MakeRenderer(*description.renderer);
}

class Builder {
  public:
    explicit Builder(const SceneDescription& sceneDescription) : description(sceneDescription) {}

    BuiltScene Build(ElementsToBuild which) {
        AddNodes();
        AddLayers();
        // Effects find the sets when they are made.
        for (const SceneSet& set : description.selectionSets)
            App().scene.AddSelectionSet(FromExactText(set.name), NodesOf(set.nodes, built.nodes));
        AddElements(which);
        AddEffects();
        ChangeRenderSettings(description.render, built.nodes);
        return std::move(built);
    }

    // In the order in which the one refers to the other.
    void TakeBack() {
        if (wasEmpty) {
            for (RenderElementManager& manager : App().elements)
                manager.TakeAll();
            App().scene.Clear();
            return;
        }
        for (std::size_t i = built.elements.size(); i-- > 0;) {
            if (built.elements[i]) ManagerOf(description.elements[i]).Remove(built.elements[i]);
        }
        for (const SceneSet& set : description.selectionSets)
            App().scene.RemoveSelectionSet(FromExactText(set.name));
        for (std::size_t i = built.layers.size(); i-- > 0;)
            App().scene.Remove(*built.layers[i]);
        for (std::size_t i = built.nodes.size(); i-- > 0;)
            App().scene.Remove(*built.nodes[i]);
    }

  private:
    static RenderElementManager& ManagerOf(const SceneElement& element) {
        return App().elements.at(element.draft ? RS_Draft : RS_Production);
    }

    void AddNodes() {
        for (const SceneNode& each : description.nodes) {
            Node& node = App().scene.AddNode(FromExactText(each.name));
            DescribeNode(each, node);
            handles.Enter(each.handle, &node);
            built.nodes.push_back(&node);
        }
        HangNodes();
    }

    // From the top down: whether a node may hang somewhere is seen at once while nothing hangs
    // below it.
    void HangNodes() {
        std::vector<Indices> children(built.nodes.size());
        Indices waiting;
        for (std::size_t i = 0; i < built.nodes.size(); ++i) {
            const auto parent = description.nodes[i].parent;
            (parent ? children[*parent] : waiting).push_back(i);
        }
        for (std::size_t at = 0; at < waiting.size(); ++at) {
            const std::size_t parent = waiting[at];
            const Indices& given = description.nodes[parent].children;
            for (const std::size_t child : given.empty() ? children[parent] : given) {
                built.nodes[child]->SetParent(built.nodes[parent]);
                waiting.push_back(child);
            }
        }
    }

    void AddLayers() {
        for (const SceneLayerDescription& each : description.layers) {
            SceneLayer* parent = each.parent ? built.layers[*each.parent] : nullptr;
            SceneLayer& layer = App().scene.AddLayer(FromExactText(each.name), parent);
            layer.SetHidden(each.hidden);
            for (const std::size_t node : each.nodes)
                built.nodes[node]->SetLayer(&layer);
            LoadAppData(each.appData, layer);
            handles.Enter(each.handle, &layer);
            built.layers.push_back(&layer);
        }
    }

    void AddElements(ElementsToBuild which) {
        for (const SceneElement& each : description.elements) {
            built.elements.push_back(nullptr);
            if (which == ElementsToBuild::WithHandles && each.handle == 0) continue;
            const Class_ID id = each.elementClass.value_or(PassClassID(PassKind::OtherColor));
            RenderElement& element = ManagerOf(each).Add(id, FromExactText(each.name));
            DescribeElement(each, built.nodes, element);
            LoadAppData(each.appData, element);
            handles.Enter(each.handle, &element);
            built.elements.back() = &element;
        }
    }

    void AddEffects() {
        LoadObjects(description.objects, handles, App().classes);
        for (const Handle handle : description.effects) {
            auto* effect = static_cast<Effect*>(handles.Target(handle));
            App().effects.emplace_back(effect);
            built.effects.push_back(effect);
        }
        DestroyUnreferred(description.objects, description.effects, handles);
    }

    static bool IsEmpty() {
        const Scene& scene = App().scene;
        return scene.NumNodes() == 0 && scene.Layers().empty() && scene.SelectionSets().empty() &&
               std::all_of(
                   App().elements.begin(), App().elements.end(),
                   [](RenderElementManager& manager) { return manager.NumRenderElements() == 0; });
    }

    const SceneDescription& description;
    // Then all that is there is to be taken back, however much that is.
    const bool wasEmpty = IsEmpty();
    BuiltScene built;
    Handles handles;
};

std::vector<KnownTarget> KnownTargets(const SceneDescription& description) {
    std::vector<KnownTarget> known;
    const auto add = [&](const auto& list, SceneTarget kind) {
        for (const auto& each : list) {
            if (each.handle != 0) known.push_back({each.handle, kind});
        }
    };
    add(description.nodes, SceneTarget::Node);
    add(description.layers, SceneTarget::Layer);
    add(description.elements, SceneTarget::RenderElement);
    return known;
}

}  // namespace

void CheckScene(const SceneDescription& description, const ClassDirectory& classes) {
    const auto faults = CheckObjects(description.objects, KnownTargets(description), classes);
    if (faults.empty()) return;
    throw InputError(description.path + ": objects[" + std::to_string(faults[0].index) +
                     "]: " + faults[0].text);
}

BuiltScene BuildScene(const SceneDescription& description, ElementsToBuild elements) {
    Builder builder(description);
    try {
        return builder.Build(elements);
    } catch (const std::exception& fault) {
        builder.TakeBack();
        throw InputError(description.path + ": " + fault.what());
    }
}

void DescribeElement(const SceneElement& description, const std::vector<Node*>& nodes,
                     RenderElement& element) {
    element.SetEnabled(description.enabled);
    if (description.parameters) {
        std::map<ParamID, int> parameters;
        for (const SceneNumber& number : *description.parameters)
            parameters[number.id] = number.value;
        element.SetParameters(parameters);
    }
    if (!description.multiMatte) return;
    int number = 0;
    for (const SceneMatte& matte : *description.multiMatte) {
        MultiMatteComponent component;
        component.idOn = matte.id.has_value();
        component.id = matte.id.value_or(0);
        component.isMaterial = matte.isMaterial;
        component.include = matte.include;
        for (INode* node : NodesOf(matte.nodes, nodes))
            component.nodes.Append(1, &node);
        element.SetMultiMatte(number++, component);
    }
}

}  // namespace host

#include "host/capture_scene.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <stdexcept>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include <multimatte.h>
#include <tab.h>

#include "host/application.h"
#include "host/exact_text.h"
#include "host/host_renderer.h"
#include "host/input_error.h"
#include "host/scene_transform.h"

namespace host {
namespace {

class Capture {
  public:
    SceneDescription Take() {
        TakeNodes();
        TakeLayers();
        for (const SelectionSet& set : App().scene.SelectionSets()) {
            SceneSet& taken = scene.selectionSets.emplace_back();
            taken.name = ToExactText(set.name);
            for (const Node* node : set.nodes)
                taken.nodes.push_back(placeOf.at(node));
        }
        TakeElements(RS_Production);
        TakeElements(RS_Draft);
        TakeRender();
        TakeEffects();
        return std::move(scene);
    }

  private:
    void TakeNodes() {
        Scene& from = App().scene;
        for (int i = 0; i < from.NumNodes(); ++i)
            placeOf.emplace(from.GetNode(i), placeOf.size());
        for (int i = 0; i < from.NumNodes(); ++i)
            TakeNode(*from.GetNode(i));
    }

    void TakeNode(Node& node) {
        SceneNode& taken = scene.nodes.emplace_back();
        taken.handle = handles.Of(&node);
        taken.name = ToExactText(node.GetName());
        const int id = node.GetRenderID();
        if (id <= highestRenderID && renderIDs.insert(id).second) taken.id = id;
        taken.kind = node.Kind();
        taken.objectID = node.ObjectID();
        taken.hidden = node.IsHidden();
        taken.parent = PlaceOf(node.GetParentNode());
        for (int i = 0; i < node.NumberOfChildren(); ++i)
            taken.children.push_back(placeOf.at(node.GetChildNode(i)));
        if (std::is_sorted(taken.children.begin(), taken.children.end())) taken.children.clear();
        taken.groupHead = node.IsGroupHead() != 0;
        taken.groupMember = node.IsGroupMember() != 0;
        taken.properties = ToExactText(node.UserProperties());
        const auto transform = FileTransform(node.GetNodeTM(0));
        const bool isFinite = std::all_of(transform.begin(), transform.end(),
                                          [](double value) { return std::isfinite(value); });
        if (node.IsPlaced() && isFinite) taken.transform = transform;
        if (node.Kind() == NodeKind::Camera) taken.view = node.Lens();
        taken.appData = SaveAppData(node);
    }

    // Nothing for the root.
    std::optional<std::size_t> PlaceOf(const INode* node) const {
        const auto found = placeOf.find(node);
        return found == placeOf.end() ? std::nullopt : std::optional(found->second);
    }

    void TakeLayers() {
        std::vector<SceneLayer*> waiting;
        const auto& sorted = App().scene.Layers();
        std::copy_if(sorted.rbegin(), sorted.rend(), std::back_inserter(waiting),
                     [](const SceneLayer* layer) { return !layer->GetParentLayer(); });
        std::unordered_map<const SceneLayer*, std::size_t> places;
        while (!waiting.empty()) {
            SceneLayer& layer = *waiting.back();
            waiting.pop_back();
            places.emplace(&layer, scene.layers.size());
            TakeLayer(layer);
            if (const SceneLayer* parent = layer.GetParentLayer()) {
                scene.layers.back().parent = places.at(parent);
            }
            for (int i = layer.GetNumOfChildLayers(); i-- > 0;)
                waiting.push_back(layer.GetChildLayer(i));
        }
    }

    void TakeLayer(SceneLayer& layer) {
        SceneLayerDescription& taken = scene.layers.emplace_back();
        taken.handle = handles.Of(&layer);
        taken.name = ToExactText(layer.GetName());
        taken.hidden = layer.IsHidden();
        Tab<INode*> nodes;
        layer.Nodes(nodes);
        // Each node is in the layer once.
        for (int i = 0; i < nodes.Count(); ++i) {
            if (const auto place = PlaceOf(nodes[i])) taken.nodes.push_back(*place);
        }
        taken.appData = SaveAppData(layer);
    }

    void TakeElements(RenderSettingID settings) {
        RenderElementManager& manager = App().elements.at(static_cast<std::size_t>(settings));
        for (int i = 0; i < manager.NumRenderElements(); ++i) {
            RenderElement& element = *manager.GetRenderElement(i);
            SceneElement& taken = scene.elements.emplace_back();
            taken.handle = handles.Of(&element);
            taken.name = ToExactText(element.ElementName());
            taken.elementClass = element.ClassID();
            taken.enabled = element.IsEnabled() != 0;
            taken.draft = settings == RS_Draft;
            taken.multiMatte = MattesOf(element);
            const auto parameters = element.Parameters();
            if (parameters != RenderElement::ParametersOfNew(element.ClassID())) {
                taken.parameters.emplace();
                for (const auto& [id, value] : parameters)
                    taken.parameters->push_back({id, value});
            }
            taken.appData = SaveAppData(element);
        }
    }

    std::optional<std::array<SceneMatte, 3>> MattesOf(RenderElement& element) const {
        auto* mattes = static_cast<IMultiMatte*>(element.GetInterface(MULTI_MATTE_INTERFACE));
        if (!mattes) return std::nullopt;
        std::array<SceneMatte, 3> taken;
        int number = 0;
        for (SceneMatte& matte : taken) {
            MultiMatteComponent component;
            mattes->GetComponent(number++, component);
            const bool hasNumber = component.id >= 0 && component.id <= highestObjectID;
            if (component.idOn && hasNumber) matte.id = component.id;
            matte.isMaterial = component.isMaterial;
            matte.include = component.include;
            std::unordered_set<std::size_t> places;
            for (int i = 0; i < component.nodes.Count(); ++i) {
                const auto place = PlaceOf(component.nodes[i]);
                if (place && places.insert(*place).second) matte.nodes.push_back(*place);
            }
        }
        return taken;
    }

    void TakeRender() {
        const Settings& settings = App().settings;
        const RenderSettings& render = settings.render;
        scene.render.hidden = render.hidden;
        scene.render.frameRate = settings.frameRate;
        const auto side = [](int pixels) {
            return pixels >= 1 && pixels <= longestSide ? std::optional(pixels) : std::nullopt;
        };
        scene.render.width = side(render.width);
        scene.render.height = side(render.height);
        scene.render.output = ToExactText(render.output.Name());
        scene.render.saveFile = render.saveFile != 0;
        const bool isTimeType =
            render.timeType >= REND_TIMESINGLE && render.timeType <= REND_TIMEPICKUP;
        if (isTimeType) scene.render.timeType = render.timeType;
        scene.render.numberBase = render.fileNumberBase;
        scene.render.effects = render.effects;
        scene.render.draft = render.current == RS_Draft;
        TakeRenderer();
        const auto camera =
            render.camera ? PlaceOf(static_cast<INode*>(render.camera->Get())) : std::nullopt;
        if (camera && scene.nodes[*camera].kind == NodeKind::Camera) scene.render.camera = camera;
    }

    void TakeRenderer() {
        SceneRenderer& taken = scene.render.renderer.emplace();
        auto* renderer = dynamic_cast<HostRenderer*>(App().renderer.get());
        if (!renderer) return;
        taken.rendererClass = renderer->ClassID();
        if (IParamBlock2* block = renderer->GetParamBlock(VRAY_BLOCK)) {
            const ParamBlockDesc2& desc = *block->GetDesc();
            for (int i = 0; i < desc.Count(); ++i) {
                const ParamID id = desc.GetParamDefByIndex(i).ID;
                taken.parameters.push_back({id, block->GetInt(id)});
            }
        }
        const auto sampler = renderer->properties.Evaluate(VRAY_SAMPLER_PROPERTY);
        if (sampler && sampler->type == TYPE_INT) taken.sampler = sampler->i;
    }

    void TakeEffects() {
        std::vector<ReferenceTarget*> effects;
        for (const auto& effect : App().effects)
            effects.push_back(effect.get());
        scene.objects = SaveObjects(effects, handles);
        for (const ReferenceTarget* effect : effects)
            scene.effects.push_back(handles.Find(effect));
    }

    SceneDescription scene;
    Handles handles;
    std::unordered_map<const INode*, std::size_t> placeOf;
    std::unordered_set<int> renderIDs;
};

}  // namespace

SceneDescription CaptureScene() {
    try {
        return Capture().Take();
    } catch (const std::runtime_error& fault) {
        throw InputError(fault.what());
    }
}

}  // namespace host

#include "effect/sync_render_elements.h"

#include <maxapi.h>
#include <renderelements.h>

#include <unordered_set>
#include <vector>

#include "effect/psd_output.h"
#include "effect/psd_output_layer.h"
#include "effect/reset_layer.h"
#include "effect/sort_layers.h"
#include "plugin/parameters.h"

namespace effect {
namespace {

std::vector<IRenderElement*> ElementsOf(IRenderElementMgr& manager) {
    std::vector<IRenderElement*> elements;
    for (int i = 0; i < manager.NumRenderElements(); ++i) {
        if (IRenderElement* element = manager.GetRenderElement(i)) elements.push_back(element);
    }
    return elements;
}

bool RemoveStaleLayers(PSDOutput& effect, int list, const std::vector<IRenderElement*>& elements) {
    const std::unordered_set<IRenderElement*> present(elements.begin(), elements.end());
    bool changed = false;
    for (int i = effect.LayerCount(list) - 1; i >= 0; --i) {
        const PSDOutputLayer* layer = effect.Layer(list, i);
        IRenderElement* element = layer ? layer->Element() : nullptr;
        if (element && present.contains(element)) continue;
        effect.pblock->Delete(PSDOutput::LayerList(list), i, 1);
        GetCOREInterface()->SetSaveRequired();
        changed = true;
    }
    return changed;
}

std::unordered_set<IRenderElement*> ElementsWithLayer(const PSDOutput& effect, int list) {
    std::unordered_set<IRenderElement*> elements;
    for (int i = 0; i < effect.LayerCount(list); ++i) {
        const PSDOutputLayer* layer = effect.Layer(list, i);
        if (layer) elements.insert(layer->Element());
    }
    return elements;
}

// False when the host can't make one, or the list takes none.
bool AddLayer(PSDOutput& effect, int list, IRenderElement* element) {
    auto* layer = static_cast<PSDOutputLayer*>(
        GetCOREInterface()->CreateInstance(REF_TARGET_CLASS_ID, psdOutputLayerClassID));
    if (!layer) return false;
    layer->pblock->SetValue("renderElement"_layerParam, 0, element);
    ResetLayer(effect, *layer);
    ReferenceTarget* entry = layer;
    if (effect.pblock->Append(PSDOutput::LayerList(list), 1, &entry) >= 0) return true;
    layer->DeleteThis();
    return false;
}

}  // namespace

int LayerListOf(const RenderGlobalContext& gc) {
    IRenderElementMgr* second = GetCOREInterface()->GetRenderElementMgr(RS_Draft);
    return second && gc.GetRenderElementMgr() == second ? PSDOutput::secondaryLayers
                                                        : PSDOutput::productionLayers;
}

bool SyncRenderElements(PSDOutput& effect, int list) {
    IRenderElementMgr* manager = GetCOREInterface()->GetCurRenderElementMgr();
    if (!manager || !effect.pblock || PSDOutput::LayerList(list) < 0) return false;
    const bool wasEmpty = effect.LayerCount(list) == 0;
    const std::vector<IRenderElement*> elements = ElementsOf(*manager);
    bool changed = RemoveStaleLayers(effect, list, elements);
    std::unordered_set<IRenderElement*> known = ElementsWithLayer(effect, list);
    for (IRenderElement* element : elements) {
        if (known.contains(element) || !AddLayer(effect, list, element)) continue;
        known.insert(element);
        changed = true;
    }
    if (wasEmpty && effect.LayerCount(list) > 0) {
        SortLayers(effect, list);
        changed = true;
    }
    if (effect.pblock->GetInt("autoSort"_param)) {
        SortLayers(effect, list);
        changed = true;
    }
    return changed;
}

}  // namespace effect

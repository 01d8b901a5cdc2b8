#include "plugin/block_changes.h"

#include <hold.h>

#include <span>

#include "effect/psd_output.h"
#include "effect/sync_render_elements.h"
#include "plugin/parameters.h"

namespace plugin {
namespace {

EffectPanel* openPanel = nullptr;

// The panel may close while it asks the user, so each action looks for it again.
template <void (EffectPanel::*show)()>
void Show(effect::PSDOutput& effect) {
    if (EffectPanel* panel = PanelOf(effect)) (panel->*show)();
}

void InvalidateUI(const effect::PSDOutput& effect, ParamID id) {
    if (!effect.pblock) return;
    ParamBlockDesc2* desc = effect.pblock->GetDesc();
    desc->cd->InvalidateUI(desc, id);
}

void InvalidateNewerModes(effect::PSDOutput& effect) {
    InvalidateUI(effect, "usePS7Extensions"_param);
}

// Makes and sorts layers, and so changes further parameters, but never autoSort itself. A step that
// is taken back or done again brings the list itself, and what were sorted here before that would
// stay in the step; the panel's next tick sorts what no step brings.
void SyncWhenSorted(effect::PSDOutput& effect) {
    if (!effect.pblock || !effect.pblock->GetInt("autoSort"_param)) return;
    if (theHold.RestoreOrRedoing()) return Show<&EffectPanel::NoteElementChange>(effect);
    effect::SyncRenderElements(effect, effect::PSDOutput::productionLayers);
}

// A list that an undo or a redo brings may lack the layers of elements that came since.
void SyncAfterRestore(effect::PSDOutput& effect) {
    if (theHold.RestoreOrRedoing()) Show<&EffectPanel::NoteElementChange>(effect);
}

struct Consequence {
    ParamID id;
    void (*action)(effect::PSDOutput&);
};

// Those of one parameter are done in their order.
constexpr Consequence consequences[] = {
    {"filename"_param, Show<&EffectPanel::UpdateFileNameField>},
    {"filename"_param, Show<&EffectPanel::UpdateFormatEnabling>},
    {"matchRenderOutputFilename"_param, Show<&EffectPanel::UpdateFileNameField>},
    {"matchRenderOutputFilename"_param, Show<&EffectPanel::UpdateFormatEnabling>},
    {"fileFormat"_param, Show<&EffectPanel::UpdateFileNameField>},
    {"fileFormat"_param, Show<&EffectPanel::UpdateFormatEnabling>},
    {"layersProduction"_param, Show<&EffectPanel::RedrawRenderElements>},
    {"layersProduction"_param, SyncAfterRestore},
    {"layersSecondary"_param, Show<&EffectPanel::RedrawRenderElements>},
    {"renderSetting"_param, Show<&EffectPanel::UpdateLayerControls>},
    {"outputNodeIDs"_param, Show<&EffectPanel::RefreshObjectIDControls>},
    {"outputNodeIDsAs"_param, Show<&EffectPanel::RefreshObjectIDControls>},
    {"outputMtlIDs"_param, Show<&EffectPanel::RefreshMaterialIDControls>},
    {"outputMtlIDsAs"_param, Show<&EffectPanel::RefreshMaterialIDControls>},
    {"createRenderElementLayers"_param, Show<&EffectPanel::EnableRenderElementControls>},
    {"outputObjects"_param, Show<&EffectPanel::RefreshObjectControls>},
    {"outputObjectsAs"_param, Show<&EffectPanel::RefreshObjectControls>},
    {"usePS7Extensions"_param, Show<&EffectPanel::FillBlendingModes>},
    {"bitDepth"_param, Show<&EffectPanel::FillBlendingModes>},
    {"bitDepth"_param, Show<&EffectPanel::UpdateDepthControls>},
    {"bitDepth"_param, Show<&EffectPanel::EnableNonClampedColorControl>},
    {"bitDepth"_param, Show<&EffectPanel::UpdateLayerControls>},
    {"bitDepth"_param, InvalidateNewerModes},
    {"bitDepth"_param, Show<&EffectPanel::OfferFrameBufferChange>},
    {"outputSceneLayers"_param, Show<&EffectPanel::RefreshSceneLayerControls>},
    {"outputSceneLayersAs"_param, Show<&EffectPanel::RefreshSceneLayerControls>},
    {"gammaCorrectRender"_param, Show<&EffectPanel::UpdateLayerControls>},
    {"gammaCorrectConfig"_param, Show<&EffectPanel::UpdateLayerControls>},
    {"createRenderElementsLayerSet"_param, Show<&EffectPanel::EnableLayerSetMaskControl>},
    {"outputNamedSelectionSets"_param, Show<&EffectPanel::RefreshSelectionSetControls>},
    {"outputNamedSelectionSetsAs"_param, Show<&EffectPanel::RefreshSelectionSetControls>},
    {"namedSelectionSetsList"_param, Show<&EffectPanel::RedrawSelectionSets>},
    {"autoSort"_param, SyncWhenSorted},
    {"autoSort"_param, Show<&EffectPanel::UpdateLayerControls>},
};

// The buttons go by the rows that the host shows.
constexpr Consequence lastConsequences[] = {
    {"objectList"_param, Show<&EffectPanel::RefreshObjectControls>},
};

// False when the effect didn't live through it: the user is asked, and may delete it meanwhile.
bool Act(std::span<const Consequence> all, effect::PSDOutput& effect, ParamID id) {
    for (const Consequence& consequence : all) {
        if (consequence.id != id) continue;
        consequence.action(effect);
        if (!effect::PSDOutput::IsLiving(&effect)) return false;
    }
    return true;
}

}  // namespace

void PanelOpened(EffectPanel& panel) {
    openPanel = &panel;
}

void PanelClosed(const EffectPanel& panel) {
    if (openPanel == &panel) openPanel = nullptr;
}

EffectPanel* OpenPanel() {
    return openPanel;
}

EffectPanel* PanelOf(const effect::PSDOutput& effect) {
    return openPanel && openPanel->Shows(effect) ? openPanel : nullptr;
}

void ParameterChanged(effect::PSDOutput& effect, ParamID id) {
    if (!Act(consequences, effect, id)) return;
    InvalidateUI(effect, id);
    Act(lastConsequences, effect, id);
}

}  // namespace plugin

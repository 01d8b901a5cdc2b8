// What the effect's rollups do beyond what the host binds by itself: the one procedure of all of
// their dialogs.
#pragma once

#include <iparamm2.h>
#include <ref.h>

#include "plugin/block_changes.h"
#include "ui/win32/elements_rollup.h"
#include "ui/win32/gbuffer_rollup.h"
#include "ui/win32/main_rollup.h"
#include "ui/win32/objects_rollup.h"
#include "ui/win32/scene_data_rollup.h"
#include "ui/win32/scene_layers_rollup.h"
#include "ui/win32/selection_sets_rollup.h"

namespace ui {

// While the rollup of the render elements is open this hears of every change in the scene, maybe
// deep inside the host, and so only notes that an element changed.
class PSDOutputParamMapUserDlgProc final : public ParamMap2UserDlgProc,
                                           public GlobalReferenceMaker,
                                           public plugin::EffectPanel {
  public:
    INT_PTR DlgProc(TimeValue t, IParamMap2* map, HWND hWnd, UINT msg, WPARAM wParam,
                    LPARAM lParam) override;
    // It isn't on the heap.
    void DeleteThis() override {}
    void SetThing(ReferenceTarget* thing) override;
    // The present instant: what is shown is of one time.
    Interval GetValidity() override;

    RefResult NotifyRefChanged(const Interval& changeInt, RefTargetHandle hTarget, PartID& partID,
                               RefMessage message, BOOL propagate) override;

    bool Shows(const effect::PSDOutput& effect) override;
    void UpdateFileNameField() override;
    void UpdateFormatEnabling() override;
    void UpdateDepthControls() override;
    void EnableNonClampedColorControl() override;
    void OfferFrameBufferChange() override;
    void RedrawRenderElements() override;
    void RefreshRenderElementRows() override;
    void NoteElementChange() override;
    void UpdateLayerControls() override;
    void FillBlendingModes() override;
    void EnableRenderElementControls() override;
    void EnableLayerSetMaskControl() override;
    void RefreshObjectIDControls() override;
    void RefreshMaterialIDControls() override;
    void RefreshObjectControls() override;
    std::optional<MSTR> TypedIDList(const effect::PSDOutput& effect, ParamID list) override;
    void RefreshSceneLayerControls() override;
    void RedrawSceneLayers() override;
    void RefreshSelectionSetControls() override;
    void RedrawSelectionSets() override;

  private:
    Rollup* RollupOf(MapID map);
    void Opened(IParamMap2& map, Rollup& rollup);
    void Closed(Rollup& rollup);
    bool IsAnyOpen();
    void StartTyping(Rollup& rollup);
    void EndTyping();

    MainRollup main;
    ElementsRollup elements;
    ObjectsRollup objects;
    SceneLayersRollup sceneLayers;
    GBufferRollup gbuffer;
    SelectionSetsRollup selectionSets;
    SceneDataRollup sceneData;
    // Where a text is being typed, and the host's keyboard commands are off; null for nowhere.
    const Rollup* typing = nullptr;
};

// The one instance.
PSDOutputParamMapUserDlgProc& DialogProcedure();

}  // namespace ui

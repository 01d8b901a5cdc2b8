// What follows from a change of a parameter of the effect: which controls show something else.
#pragma once

#include <iparamb2_types.h>
#include <strclass.h>

#include <optional>

namespace effect {
class PSDOutput;
}

namespace plugin {

// The effect's rollups while they are open, as far as changes of the block reach them. Each call
// reads the block anew; one for a rollup that isn't open does nothing.
class EffectPanel {
  public:
    // Whether it is this effect's settings that the rollups show.
    virtual bool Shows(const effect::PSDOutput& effect) = 0;

    // The name of the file, and whether its format can be chosen.
    virtual void UpdateFileNameField() = 0;
    virtual void UpdateFormatEnabling() = 0;
    // What depends on the document's depth.
    virtual void UpdateDepthControls() = 0;
    virtual void EnableNonClampedColorControl() = 0;
    // Asks the user whether V-Ray's frame buffer shall have the document's depth.
    virtual void OfferFrameBufferChange() = 0;

    // The list of render elements: its rows are drawn, or made, anew.
    virtual void RedrawRenderElements() = 0;
    virtual void RefreshRenderElementRows() = 0;
    // The next tick brings the list up to date.
    virtual void NoteElementChange() = 0;
    // The settings of the layer that is selected there.
    virtual void UpdateLayerControls() = 0;
    virtual void FillBlendingModes() = 0;
    virtual void EnableRenderElementControls() = 0;
    virtual void EnableLayerSetMaskControl() = 0;

    virtual void RefreshObjectIDControls() = 0;
    virtual void RefreshMaterialIDControls() = 0;
    virtual void RefreshObjectControls() = 0;
    // All that the edit of a list of IDs (nodeIDList, mtlIDList) shows. Nothing while its rollup
    // isn't there or not visible, or shows another effect.
    virtual std::optional<MSTR> TypedIDList(const effect::PSDOutput& effect, ParamID list) = 0;
    virtual void RefreshSceneLayerControls() = 0;
    virtual void RedrawSceneLayers() = 0;
    virtual void RefreshSelectionSetControls() = 0;
    virtual void RedrawSelectionSets() = 0;

  protected:
    ~EffectPanel() = default;
};

// The one panel that is open; it must be closed before it is destroyed. Another that opens takes
// its place, and closing one that isn't the open one does nothing.
void PanelOpened(EffectPanel& panel);
void PanelClosed(const EffectPanel& panel);
// Null when none is.
EffectPanel* OpenPanel();
// Null, too, when it shows another effect.
EffectPanel* PanelOf(const effect::PSDOutput& effect);

// Without an open panel that shows the effect only that happens which needs none: the list of
// render elements is brought up to date when it is to be kept sorted from now on. Then the host
// shows the parameter anew, and at last the panel what depends on that. The effect may be gone
// afterwards.
void ParameterChanged(effect::PSDOutput& effect, ParamID id);

}  // namespace plugin

// The rollup "Render Elements Output": the list of render elements, and the settings of the one
// that is selected.
#pragma once

#include "ui/rollup_timers.h"
#include "ui/win32/rollup.h"

namespace effect {
class PSDOutputLayer;
}

namespace ui {

class ElementsRollup final : public Rollup {
  public:
    // Nothing while the rollup is closed.
    void Redraw();
    // Layers came, went or changed their places; the next tick brings rows and pane up to date.
    void OrderChanged();
    void RefreshRenderElementRows();
    void UpdateLayerControls();
    void FillBlendingModes();
    void EnableControls();
    void EnableLayerSetMaskControl();

    // A render element changed somewhere: the next tick brings the list up to date.
    void NoteElementChange() { elementsDirty = true; }

    void Command(int control, int code) override;
    void Entered(int control) override;
    LRESULT Notify(NMHDR& notification) override;
    bool ContextMenu(HWND control) override;
    void Tick(UINT_PTR timer) override;
    void ColorsChanged() override;

  protected:
    void Opened() override;
    void Closing() override;
    void OtherEffect() override;

  private:
    HWND List() const;
    int Selected() const;
    int RowOf(const effect::PSDOutputLayer* layer) const;
    // Of the layer that the pane shows; rows may have changed their order since it was shown.
    int ShownRow() const { return RowOf(chosen); }
    void SelectChosen();
    void Choose(const effect::PSDOutputLayer* layer);
    void Show(ListTick changed);
    void Sort();
    void Move(int delta);
    void Rename();
    void SaveTypedName();
    void Press(WORD key);
    void TrackMenu(int row, POINT at);
    void ShowName(const MSTR& name);
    void ShowBlendMode(int mode);

    bool elementsDirty = false;
    // Of rows and layers, or the selection is gone.
    bool orderDirty = false;
    // The layer of the row that the user selected, null for none. As rows are made anew or change
    // their order, the selection goes with it. Only compared: it may be destroyed.
    const effect::PSDOutputLayer* chosen = nullptr;
    // What the field of the name was given at last, and for which layer. Only compared, too.
    MSTR shownName;
    const effect::PSDOutputLayer* named = nullptr;
    // Whose row is being renamed. Only compared, too.
    const effect::PSDOutputLayer* renamed = nullptr;
    // Controls are being written: what they notify of is no wish of the user's.
    bool showing = false;
};

}  // namespace ui

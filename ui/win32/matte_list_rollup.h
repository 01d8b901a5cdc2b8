// What the rollups of scene layers and of named selection sets share: a list whose rows become
// mattes as their check boxes say, and a menu that switches all of them.
#pragma once

#include <functional>

#include "ui/win32/list_control.h"
#include "ui/win32/rollup.h"

namespace ui {

class MatteListRollup : public Rollup {
  public:
    LRESULT Notify(NMHDR& notification) override;
    bool ContextMenu(HWND control) override;
    void Measure(MEASUREITEMSTRUCT& item) override;
    void Draw(const DRAWITEMSTRUCT& item) override;
    void ColorsChanged() override { ColorList(List()); }

  protected:
    explicit MatteListRollup(const ListView& listKind) : kind(listKind) {}

    HWND List() const { return Control(kind.control); }
    // The list without rows yet, the bar below it, the rollup's buttons, and the combo of what a
    // row becomes.
    void SetUpControls(int outputAs);
    void Fill(int rows) { FillList(List(), kind, rows); }
    void Closing() override { DropListPictures(List()); }

  private:
    virtual MSTR RowText(int row) = 0;
    // State image of the check box.
    virtual int RowImage(int row) = 0;
    // `x` in pixels from the list's left edge. True when the row was switched.
    virtual bool Click(const RowHit& hit, int x) = 0;
    virtual RowMenu Menu() = 0;
    virtual void ChooseMenu(int item, const std::function<void()>& redraw) = 0;

    void Switch(const RowHit& hit, int x);
    void TrackMenu(POINT at);

    const ListView& kind;
};

}  // namespace ui

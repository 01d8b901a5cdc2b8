// The rollup "Selection Sets Output": which of the scene's named selection sets become mattes.
#pragma once

#include <notify.h>

#include "ui/selection_set_rows.h"
#include "ui/win32/rollup.h"

namespace ui {

class SelectionSetsRollup final : public Rollup {
  public:
    // Nothing while the rollup is closed.
    void RefreshControls();
    // The effect's list of sets changed.
    void Redraw();

    void Command(int control, int code) override;
    LRESULT Notify(NMHDR& notification) override;
    void Measure(MEASUREITEMSTRUCT& item) override;
    void Draw(const DRAWITEMSTRUCT& item) override;

  protected:
    void Opened() override;
    void Closing() override;
    void OtherEffect() override;

  private:
    static void Hear(void* rollup, NotifyInfo* info);
    HWND List() const;
    void RefreshSelectionSetRows();
    // Makes and draws the rows anew.
    void Update();
    // `x` in pixels from the list's left edge.
    void Click(int row, int column, int x);

    SelectionSetRows rows;
};

}  // namespace ui

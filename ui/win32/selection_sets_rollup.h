// The rollup "Selection Sets Output": which of the scene's named selection sets become mattes.
#pragma once

#include <notify.h>

#include "ui/selection_set_rows.h"
#include "ui/win32/matte_list_rollup.h"

namespace ui {

class SelectionSetsRollup final : public MatteListRollup {
  public:
    SelectionSetsRollup() : MatteListRollup(selectionSetList) {}

    // Nothing while the rollup is closed.
    void RefreshControls();
    // The effect's list of sets changed.
    void Redraw();

    void Command(int control, int code) override;

  protected:
    void Opened() override;
    void Closing() override;
    void OtherEffect() override;

  private:
    static void Hear(void* rollup, NotifyInfo* info);
    MSTR RowText(int row) override { return rows.Text(row); }
    int RowImage(int row) override { return rows.CheckImage(Effect(), row); }
    bool Click(const RowHit& hit, int x) override;
    RowMenu Menu() override { return rows.Menu(); }
    void ChooseMenu(int item, const std::function<void()>& redraw) override;
    void RefreshSelectionSetRows();
    // Makes and draws the rows anew.
    void Update();

    SelectionSetRows rows;
};

}  // namespace ui

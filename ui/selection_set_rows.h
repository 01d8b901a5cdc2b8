// The list of named selection sets: which of them go into the document.
#pragma once

#include <strclass.h>

#include <functional>

#include "effect/selection_set_list.h"
#include "ui/menu_item.h"

class IParamBlock2;

namespace effect {
class PSDOutput;
}

namespace ui {

// Row i is the scene's named selection set i.
class SelectionSetRows {
  public:
    int Count() const;
    // Empty for a row out of range.
    MSTR Text(int row) const;
    // State image of the check box.
    int CheckImage(const effect::PSDOutput& effect, int row);
    // To be told of each change of the effect's list of sets, and when another effect is shown: the
    // names in the list are read once for all rows.
    void ListChanged() { listed_ = nullptr; }

    // A click: it counts in the first column, where the check boxes are, `x` being in pixels from
    // the list's left edge. Switches the set, which the user can undo. False when it doesn't count.
    bool Click(const effect::PSDOutput& effect, int row, int column, int x);

    // As of the scene layers, by enableAllItem and disableAllItem. `redraw` is called after each
    // write to the list of sets; one write may switch many.
    RowMenu Menu() const;
    void ChooseMenu(const effect::PSDOutput& effect, int item, const std::function<void()>& redraw);

  private:
    bool IsOn(IParamBlock2& pblock, const MSTR& name);

    effect::SetNames names_;
    // Whose list `names_` is of; null when it is to be read anew.
    const IParamBlock2* listed_ = nullptr;
    int count_ = 0;
};

}  // namespace ui

// What clicks on a row of the list of render elements do. Rows without a layer ignore them.
#pragma once

#include <maxtypes.h>

#include <cstdint>

#include "ui/menu_item.h"

namespace effect {
class PSDOutput;
}

namespace ui {

struct RowHit {
    // Each -1 for none.
    int row;
    int column;
    // The system's bits of what lies under the mouse: 2 the picture, 4 the text, 8 the check box.
    std::uint32_t flags;
};

// A click or double click: in the first column its check box switches the element's output, in the
// second the layer's visibility is switched. True when something was.
bool ClickElement(const effect::PSDOutput& effect, const RowHit& hit);

// The context menu, by the ids of its items.
constexpr int saveAsDefaultItem = 1;
constexpr int resetToDefaultItem = 2;
bool HasElementMenu(const effect::PSDOutput& effect, int row);
RowMenu ElementMenu();
// Any other id does nothing. True when the layer's settings may have changed.
bool ChooseElementMenu(effect::PSDOutput& effect, int row, int item);

// Whether a change of an item, in the system's bits, is one of what is selected, upon which the
// pane shows another layer.
bool IsSelectionChange(std::uint32_t changed, std::uint32_t oldState, std::uint32_t newState);

}  // namespace ui

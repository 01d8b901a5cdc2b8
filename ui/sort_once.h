// The button that sorts the render elements now, and the click on a column's header.
#pragma once

namespace effect {
class PSDOutput;
}

namespace ui {

// Sorts the layers. The row that the layer of `row`, which is selected, stands at then; -1 when
// there was none.
int SortOnce(effect::PSDOutput& effect, int row);

}  // namespace ui

// What the list of render elements shows, cell by cell.
#pragma once

#include <strclass.h>

namespace effect {
class PSDOutput;
class PSDOutputLayer;
}  // namespace effect

namespace ui {

// Row i is the layer i of the list that a render goes by; null for a row without a layer, as -1 is.
effect::PSDOutputLayer* LayerOfRow(const effect::PSDOutput& effect, int row);

// As many as there are layers: null entries of the list make no row.
int ElementRowCount(const effect::PSDOutput& effect);

// In the order of elementColumns.
enum ElementColumn : int {
    elementNameColumn,
    elementVisibleColumn,
    elementModeColumn,
    elementMiscColumn,
};

// "<deleted>" names a layer without an element, and a row without a layer, whose other cells are
// empty.
MSTR ElementCell(const effect::PSDOutput& effect, int row, int column);

// State image of the check box.
int ElementCheckImage(const effect::PSDOutput& effect, int row);

}  // namespace ui

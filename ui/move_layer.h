// How a render element's layer changes places with its neighbour.
#pragma once

namespace effect {
class PSDOutput;
}

namespace ui {

// `delta` is -1 for up and 1 for down. The row that the layer stands at then: `row` itself when
// there is no layer, or nothing above or below to change places with.
int MoveLayer(effect::PSDOutput& effect, int row, int delta);

// Whether the row that MoveLayer answered is to be selected, and focused, then. The first row isn't
// after a move down, which never ends there.
constexpr bool SelectsMovedRow(int delta, int answer) {
    return delta < 0 || answer > 0;
}

}  // namespace ui

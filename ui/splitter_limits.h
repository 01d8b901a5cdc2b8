// The bar below a list with which the user makes the list higher or lower.
#pragma once

#include <algorithm>

#include "ui/list_height.h"

namespace ui {

struct SplitterPlace {
    int left;
    int top;
    int width;
    int height;
};

// Below a list, in the same pixels as its edges.
constexpr SplitterPlace SplitterBelow(int listLeft, int listRight, int listBottom) {
    constexpr int inset = 30;
    return {listLeft + inset, listBottom, std::max(listRight - listLeft - 2 * inset, 0), 6};
}

// A drag that is under way. All in pixels from one edge; y grows downwards.
class SplitterDrag {
  public:
    // The button went down at `mouse`. The list's bottom stays within the panel, `panelBottom`
    // being the end of what is seen of it, but for a list that is too near to it to have its least
    // height.
    constexpr SplitterDrag(int listTop, int listBottom, int panelBottom, int mouse)
        : bottom_(listBottom),
          grip_(mouse - listBottom),
          highest_(listTop + lowestList),
          lowest_(std::max(std::min(listTop + highestList, panelBottom), highest_)) {}

    // Where the list's bottom is with the mouse at `mouse`.
    constexpr int Bottom(int mouse) const { return std::clamp(mouse - grip_, highest_, lowest_); }
    // What the list gains when the button comes up at `mouse`. Nothing for a click that moves
    // nothing, wherever the list's bottom may be.
    constexpr int Difference(int mouse) const {
        return mouse - grip_ == bottom_ ? 0 : Bottom(mouse) - bottom_;
    }

  private:
    int bottom_;
    // From the list's bottom to the mouse.
    int grip_;
    // Where the bottom may be.
    int highest_;
    int lowest_;
};

}  // namespace ui

// The pictures in front of the items of the combos that choose what a matte becomes
// (OutputAsGroups).
#pragma once

#include <array>
#include <cstddef>

namespace ui {

// The pictures lie side by side in the icon strip. Pixels.
constexpr int outputPictureWidth = 27;
constexpr int outputPictureHeight = 18;
// The least height of an item.
constexpr int lowestOutputItem = 20;

// The picture of an item, for one that is disabled or highlighted the other look of it; -1 for a
// number that is no item, as that of a combo with no selection.
constexpr int OutputPicture(int item, bool disabled, bool highlighted) {
    constexpr std::array pictures{0, 2, 1, 0};
    constexpr int otherLook = 3;
    if (item < 0 || item >= static_cast<int>(pictures.size())) return -1;
    const int picture = pictures[static_cast<std::size_t>(item)];
    return disabled || highlighted ? picture + otherLook : picture;
}

// The left edge of a picture in the strip.
constexpr int OutputPictureLeft(int picture) {
    return picture * outputPictureWidth;
}

}  // namespace ui

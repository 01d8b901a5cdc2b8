// An item of a context menu.
#pragma once

#include <strclass.h>

#include <array>

namespace ui {

struct MenuItem {
    // What the menu answers when the item is chosen; 0 is no item.
    int id;
    MSTR text;
};

// Of the menus that switch all rows of a list.
constexpr int enableAllItem = 1;
constexpr int disableAllItem = 2;

// Each list has a menu of two.
using RowMenu = std::array<MenuItem, 2>;

}  // namespace ui

// The buttons around the list of objects: which of them the user can press.
#pragma once

#include <span>

class IParamBlock2;

namespace ui {

struct ObjectsGroup {
    bool addSelectedEnabled = false;
    bool addObjectsEnabled = false;
    // The user picks objects just now.
    bool addObjectsChecked = false;
    bool removeEnabled = false;
    // There is a place to go to for each of the selected rows.
    bool upEnabled = false;
    bool downEnabled = false;
};

// `selectedRows`: those of the list, in any order.
ObjectsGroup RefreshObjectsGroup(IParamBlock2& pblock, bool picking,
                                 std::span<const int> selectedRows);

}  // namespace ui

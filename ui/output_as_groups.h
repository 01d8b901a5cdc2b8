// The five kinds of mattes that the user switches on, and what they become.
#pragma once

#include <iparamb2_types.h>

#include <span>

class IParamBlock2;

namespace ui {

struct OutputAsGroup {
    MapID map;
    // Whether there are such mattes, and what they become: parameters.
    ParamID output;
    ParamID outputAs;
    // Controls of the map's dialog: what they become with its label, and the button that puts them
    // into a layer set.
    int label;
    int combo;
    int folder;
};

// Object IDs, material IDs, objects, scene layers, selection sets.
std::span<const OutputAsGroup> OutputAsGroups();
// Null for a parameter that switches no such mattes on.
const OutputAsGroup* OutputAsGroupOf(ParamID output);

struct OutputAsControls {
    // The label and the combo.
    bool enabled = false;
    // Channels can't be put into a layer set.
    bool folderShown = false;
};

OutputAsControls ShowOutputAs(IParamBlock2& pblock, const OutputAsGroup& group);

}  // namespace ui

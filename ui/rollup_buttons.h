// The look of the rollups' own buttons.
#pragma once

#include <maxtypes.h>

#include <span>

#include <iparamb2_types.h>

namespace ui {

struct RollupButton {
    int control;
    MapID map;
    // A picture of the host's, by its name; null for a button with a text.
    const MCHAR* picture;
    const MCHAR* toolTip;
    // Stays in until it is clicked again.
    bool isCheckButton = false;
};

// Of the pictures, in pixels at a scale of 1.0.
inline constexpr int buttonPictureSize = 16;
// What ICustButton::Execute is told to make a button flat.
inline constexpr int flatButton = 40960;

// In the order of the rollups.
std::span<const RollupButton> RollupButtons();

}  // namespace ui

// Places on the header picture that act like buttons.
#pragma once

#include <ipoint2.h>
#include <maxtypes.h>

namespace ui {

// Pixels.
struct ZoneRectangle {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
};

enum class HotZone { None, About, Help };

// A point on any of a rectangle's four sides isn't in it.
HotZone HotZoneAt(IPoint2 point, const ZoneRectangle& about, const ZoneRectangle& help);

struct HotZoneAnswer {
    // The hand is shown, and the message goes no further.
    bool handled = false;
    // What a click opens.
    HotZone opens = HotZone::None;
};

// `message` is the system's number of what happens with the mouse over `zone`.
HotZoneAnswer OnHotZoneMessage(UINT message, HotZone zone);

}  // namespace ui

#include "ui/hot_zones.h"

namespace ui {
namespace {

// The system's WM_SETCURSOR, WM_MOUSEMOVE and WM_LBUTTONUP.
constexpr UINT setCursor = 32;
constexpr UINT mouseMove = 512;
constexpr UINT leftButtonUp = 514;

bool IsStrictlyInside(IPoint2 point, const ZoneRectangle& zone) {
    return point.x > zone.left && point.x < zone.right && point.y > zone.top &&
           point.y < zone.bottom;
}

}  // namespace

HotZone HotZoneAt(IPoint2 point, const ZoneRectangle& about, const ZoneRectangle& help) {
    if (IsStrictlyInside(point, about)) return HotZone::About;
    return IsStrictlyInside(point, help) ? HotZone::Help : HotZone::None;
}

HotZoneAnswer OnHotZoneMessage(UINT message, HotZone zone) {
    const bool isMouse = message >= mouseMove && message <= leftButtonUp;
    if (zone == HotZone::None || (message != setCursor && !isMouse)) return {};
    return {.handled = true, .opens = message == leftButtonUp ? zone : HotZone::None};
}

}  // namespace ui

// Where a window goes that is to be in the middle of another. winutil.h's CenterWindow puts it
// there.
#pragma once

#include <windows.h>

namespace host {

// The left upper corner for a window of `size` in the middle of `around`, moved into `limits` where
// it would reach out of it. Of a window that is larger than the limits, the left upper part is
// seen. All in one system of coordinates, of which a second monitor's may be below 0.
POINT CenteredPlace(SIZE size, const RECT& around, const RECT& limits);

}  // namespace host

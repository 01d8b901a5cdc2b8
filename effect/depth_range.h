// Between which depths the depth image runs from white to black.
#pragma once

#include <bitmap.h>

namespace effect {

// A depth and the pixel that it was seen in first, rows from the top.
struct DepthPlace {
    float z = 0.0F;
    int x = -1;
    int y = -1;
};

struct DepthRange {
    DepthPlace min;
    DepthPlace max;
    // Some fragment counted; otherwise nothing else of the range means anything.
    bool isThere = false;
};

// Over the fragments that show at least `coverageThreshold` (0 to 1) of a pixel, where transparency
// lessens what shows but not that of the object with `opaqueRenderID` (65535 for none). A depth
// that isn't finite, or is that of a background (1e29 or above on either side), counts nowhere.
DepthRange ScanDepthRange(Bitmap* bitmap, float coverageThreshold, UWORD opaqueRenderID);

// Moves the far end back by that part of the range's extent.
void ExtendToBack(DepthRange& range, float part);

}  // namespace effect

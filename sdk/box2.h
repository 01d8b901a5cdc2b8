// A rectangle of pixels, both ends included.
#pragma once

#include <algorithm>
#include <limits>

#include "ipoint2.h"

class Box2 {
  public:
    int left = std::numeric_limits<int>::max();
    int top = std::numeric_limits<int>::max();
    int right = std::numeric_limits<int>::min();
    int bottom = std::numeric_limits<int>::min();

    // True until a point was added.
    bool IsEmpty() const { return left > right || top > bottom; }
    Box2& operator+=(const IPoint2& point) {
        left = std::min(left, point.x);
        top = std::min(top, point.y);
        right = std::max(right, point.x);
        bottom = std::max(bottom, point.y);
        return *this;
    }
};

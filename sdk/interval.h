// A span of time over which a value holds.
#pragma once

#include <limits>

#include "maxtypes.h"

class Interval {
  public:
    constexpr Interval() = default;
    constexpr Interval(TimeValue start, TimeValue end) : start_(start), end_(end) {}
    constexpr TimeValue Start() const { return start_; }
    constexpr TimeValue End() const { return end_; }

  private:
    TimeValue start_ = 0;
    TimeValue end_ = 0;
};

constexpr TimeValue TIME_NegInfinity = std::numeric_limits<TimeValue>::min();
constexpr TimeValue TIME_PosInfinity = std::numeric_limits<TimeValue>::max();
constexpr Interval FOREVER{TIME_NegInfinity, TIME_PosInfinity};

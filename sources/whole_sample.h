// From a real number to an integer sample.
#pragma once

#include <limits>

namespace sources {

// Truncated and capped at the sample's largest value; 0 for what is negative or not a number.
template <class Sample>
Sample WholeSample(double value) {
    constexpr double full = std::numeric_limits<Sample>::max();
    const double capped = value < full ? value : full;
    return value > 0.0 ? static_cast<Sample>(capped) : Sample{0};
}

}  // namespace sources

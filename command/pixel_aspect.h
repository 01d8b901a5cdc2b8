// The width of a pixel over its height, as a document can have it.
#pragma once

#include <cmath>

namespace command {

// Files exist whose ratio is 0 or not a number.
inline float SoundAspect(float aspect) {
    return std::isfinite(aspect) && aspect > 0.0F ? aspect : 1.0F;
}

}  // namespace command

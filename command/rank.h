// One rank of a pixel: an object or a material, and how much of the pixel it covers.
#pragma once

#include <cstdint>

namespace command {

// What covers a pixel and is no object that anything is known of. Not 65535, which stands for the
// background.
constexpr std::uint16_t unknownObject = 65534;
constexpr std::uint16_t noObject = 65535;
constexpr std::uint16_t noMaterial = 0;
// So many materials have a number of their own in the G-Buffer, 1 to 255, and so many objects.
constexpr std::uint16_t mostMaterials = 255;
constexpr std::uint16_t mostObjects = 65534;

struct Rank {
    // Of an object 0 to 65534, or noObject; of a material 1 to 255, or noMaterial.
    std::uint16_t index = 0;
    // 1 covers the pixel. Whatever the file says: it may be above 1, below 0 or NaN.
    float coverage = 0.0F;
};

// Whether the rank covers anything.
constexpr bool Covers(const Rank& rank, std::uint16_t none) {
    return rank.coverage > 0.0F && rank.index != none;
}

}  // namespace command

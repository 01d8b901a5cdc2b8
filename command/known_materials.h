// Which materials an object is made of, learnt from the pixels that leave no doubt.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "command/rank.h"

namespace command {

class KnownMaterials {
  public:
    // Of one pixel, the objects and the materials in it. Where there is one object, all materials
    // are its own; where there is one material, it belongs to all objects. Other pixels teach
    // nothing.
    void Learn(std::span<const Rank> objects, std::span<const Rank> materials);

    bool Belong(std::uint16_t object, std::uint16_t material) const {
        return object < materialsOf.size() && material <= mostMaterials &&
               (materialsOf[object][material / 64] >> (material % 64) & 1) != 0;
    }

  private:
    void Add(std::uint16_t object, std::uint16_t material);

    // A bit a material; by the object's index, as far as objects were seen.
    std::vector<std::array<std::uint64_t, mostMaterials / 64 + 1>> materialsOf;
};

}  // namespace command

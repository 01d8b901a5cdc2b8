// Render files tell a pixel's objects and its materials apart from each other; the G-Buffer's
// fragments have both. This finds the fragments, so that nothing of either is lost.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "command/rank.h"

namespace command {

struct JoinedFragment {
    // unknownObject for what only a material is known of.
    std::uint16_t object = unknownObject;
    // noMaterial for what only an object is known of.
    std::uint8_t material = noMaterial;
    // 1 to 255, which covers the pixel.
    std::uint8_t coverage = 0;

    friend bool operator==(const JoinedFragment&, const JoinedFragment&) = default;
};

// `coverage` in units of a fragment, 0 to 255; 0 for what is below 0 or NaN.
constexpr int CoverageUnits(double coverage) {
    if (!(coverage > 0.0)) return 0;
    // Truncated, this is the nearest.
    const double units = coverage * 255.0 + 0.5;
    return coverage >= 1.0 ? 255 : static_cast<int>(units);
}

class RankJoin {
  public:
    // Pixels of no more ranks than these are joined without taking memory.
    RankJoin(std::size_t objectRanks, std::size_t materialRanks);

    // One pixel. Ranks come in any order; the coverages of ranks of one index are added, and the
    // sum rounded to units. For each object and each material the fragments then sum to that very
    // number of units; those of the pixel may pass 255, as the file's coverages may. Objects of
    // most coverage come first, and materials that no object is left for last. Valid until the next
    // call.
    std::span<const JoinedFragment> Join(std::span<const Rank> objects,
                                         std::span<const Rank> materials);

  private:
    // An object or a material with what of it no fragment has yet.
    struct Share {
        std::uint16_t index;
        double coverage;
        int units;
    };
    using Shares = std::vector<Share>;
    struct Placed {
        // Of the object in objectShares; behind the last for unknownObject.
        std::size_t place;
        JoinedFragment fragment;
    };

    static void AddUp(std::span<const Rank> ranks, std::uint16_t none, Shares& shares);
    void JoinLargest();
    void AddRest();
    void Match(std::size_t object, std::size_t material);

    Shares objectShares;
    Shares materialShares;
    std::vector<Placed> placed;
    std::vector<JoinedFragment> fragments;
};

}  // namespace command

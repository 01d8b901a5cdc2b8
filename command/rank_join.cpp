#include "command/rank_join.h"

#include <algorithm>
#include <tuple>

namespace command {
RankJoin::RankJoin(std::size_t objectRanks, std::size_t materialRanks) {
    objectShares.reserve(objectRanks);
    materialShares.reserve(materialRanks);
    // Every match uses up an object or a material, so there are no more fragments than ranks.
    placed.reserve(objectRanks + materialRanks);
    fragments.reserve(objectRanks + materialRanks);
}

std::span<const JoinedFragment> RankJoin::Join(std::span<const Rank> objects,
                                               std::span<const Rank> materials) {
    placed.clear();
    AddUp(objects, noObject, objectShares);
    AddUp(materials, noMaterial, materialShares);
    JoinLargest();
    AddRest();

    std::sort(placed.begin(), placed.end(), [](const Placed& left, const Placed& right) {
        return std::tuple(left.place, -left.fragment.coverage, left.fragment.material) <
               std::tuple(right.place, -right.fragment.coverage, right.fragment.material);
    });
    fragments.clear();
    for (const Placed& each : placed)
        fragments.push_back(each.fragment);
    return fragments;
}

// One share an index, largest first.
void RankJoin::AddUp(std::span<const Rank> ranks, std::uint16_t none, Shares& shares) {
    shares.clear();
    for (const Rank& rank : ranks) {
        if (!Covers(rank, none)) continue;
        const auto share = std::find_if(shares.begin(), shares.end(), [&](const Share& each) {
            return each.index == rank.index;
        });
        if (share == shares.end()) {
            shares.push_back({rank.index, double{rank.coverage}, 0});
        } else {
            share->coverage += double{rank.coverage};
        }
    }
    for (Share& share : shares)
        share.units = CoverageUnits(share.coverage);
    std::erase_if(shares, [](const Share& share) { return share.units == 0; });
    std::sort(shares.begin(), shares.end(), [](const Share& left, const Share& right) {
        return std::tuple(-left.coverage, left.index) < std::tuple(-right.coverage, right.index);
    });
}

void RankJoin::JoinLargest() {
    const auto largest = [](const Shares& shares) {
        return std::max_element(
            shares.begin(), shares.end(),
            [](const Share& left, const Share& right) { return left.units < right.units; });
    };
    for (;;) {
        const auto object = largest(objectShares);
        const auto material = largest(materialShares);
        if (object == objectShares.end() || material == materialShares.end()) return;
        if (object->units == 0 || material->units == 0) return;
        Match(static_cast<std::size_t>(object - objectShares.begin()),
              static_cast<std::size_t>(material - materialShares.begin()));
    }
}

void RankJoin::AddRest() {
    for (std::size_t o = 0; o < objectShares.size(); ++o) {
        const Share& share = objectShares[o];
        if (share.units == 0) continue;
        placed.push_back({o, {share.index, noMaterial, static_cast<std::uint8_t>(share.units)}});
    }
    for (const Share& share : materialShares) {
        if (share.units == 0) continue;
        placed.push_back({objectShares.size(),
                          {unknownObject, static_cast<std::uint8_t>(share.index),
                           static_cast<std::uint8_t>(share.units)}});
    }
}

void RankJoin::Match(std::size_t object, std::size_t material) {
    Share& objectShare = objectShares[object];
    Share& materialShare = materialShares[material];
    const int units = std::min(objectShare.units, materialShare.units);
    objectShare.units -= units;
    materialShare.units -= units;
    placed.push_back({object,
                      {objectShare.index, static_cast<std::uint8_t>(materialShare.index),
                       static_cast<std::uint8_t>(units)}});
}

}  // namespace command

#include "command/rank_join.h"

#include <algorithm>
#include <bit>
#include <tuple>

namespace command {
namespace {

// A pixel of more objects or materials than this is joined by size alone.
constexpr std::size_t mostWeighed = 64;

}  // namespace

RankJoin::RankJoin(std::size_t objectRanks, std::size_t materialRanks,
                   const KnownMaterials* knownMaterials)
    : known(knownMaterials) {
    objectShares.reserve(objectRanks);
    materialShares.reserve(materialRanks);
    belonging.reserve(mostWeighed);
    // Every match uses up an object or a material, so there are no more fragments than ranks.
    placed.reserve(objectRanks + materialRanks);
    fragments.reserve(objectRanks + materialRanks);
}

std::span<const JoinedFragment> RankJoin::Join(std::span<const Rank> objects,
                                               std::span<const Rank> materials) {
    placed.clear();
    AddUp(objects, noObject, objectShares);
    AddUp(materials, noMaterial, materialShares);
    if (known && objectShares.size() <= mostWeighed && materialShares.size() <= mostWeighed) {
        JoinKnown();
    }
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

// Makes the pairs that are known to belong together. A share that only one other can take comes
// first, so that another that has a choice doesn't take it away.
void RankJoin::JoinKnown() {
    belonging.clear();
    for (const Share& object : objectShares) {
        std::uint64_t bits = 0;
        for (std::size_t m = 0; m < materialShares.size(); ++m) {
            const bool belong = known->Belong(object.index, materialShares[m].index);
            bits |= std::uint64_t{belong} << m;
        }
        belonging.push_back(bits);
    }
    for (;;) {
        std::uint64_t oneObject = 0;
        std::uint64_t severalObjects = 0;
        for (const std::uint64_t bits : belonging) {
            severalObjects |= oneObject & bits;
            oneObject |= bits;
        }
        if (oneObject == 0) return;
        oneObject &= ~severalObjects;

        struct {
            bool forced = false;
            int units = 0;
            std::size_t object = 0;
            std::size_t material = 0;
        } best;
        for (std::size_t o = 0; o < objectShares.size(); ++o) {
            const bool oneMaterial = std::has_single_bit(belonging[o]);
            for (std::uint64_t bits = belonging[o]; bits != 0; bits &= bits - 1) {
                const auto m = static_cast<std::size_t>(std::countr_zero(bits));
                const bool forced = oneMaterial || (oneObject >> m & 1) != 0;
                const int units = std::min(objectShares[o].units, materialShares[m].units);
                if (std::tuple(forced, units) > std::tuple(best.forced, best.units)) {
                    best = {forced, units, o, m};
                }
            }
        }
        Match(best.object, best.material);
        if (objectShares[best.object].units == 0) belonging[best.object] = 0;
        if (materialShares[best.material].units == 0) {
            for (std::uint64_t& bits : belonging)
                bits &= ~(std::uint64_t{1} << best.material);
        }
    }
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

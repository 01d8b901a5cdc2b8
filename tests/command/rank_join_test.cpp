#include "command/rank_join.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <random>
#include <vector>

namespace command {

void PrintTo(const JoinedFragment& fragment, std::ostream* out) {
    *out << "{" << fragment.object << ", " << int{fragment.material} << ", "
         << int{fragment.coverage} << "}";
}

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Ranks = std::vector<Rank>;
using Fragments = std::vector<JoinedFragment>;

Fragments Join(const Ranks& objects, const Ranks& materials) {
    RankJoin join(objects.size(), materials.size());
    const auto fragments = join.Join(objects, materials);
    return {fragments.begin(), fragments.end()};
}

JoinedFragment Fragment(int object, int material, int coverage) {
    return {static_cast<std::uint16_t>(object), static_cast<std::uint8_t>(material),
            static_cast<std::uint8_t>(coverage)};
}

TEST(RankJoin, APixelOfOneObjectAndOneMaterialIsOneFragment) {
    EXPECT_THAT(Join({{7, 1.0F}}, {{3, 1.0F}}), ElementsAre(Fragment(7, 3, 255)));
}

TEST(RankJoin, LargestObjectsTakeLargestMaterials) {
    EXPECT_THAT(Join({{1, 0.2F}, {2, 0.8F}}, {{5, 0.2F}, {6, 0.8F}}),
                ElementsAre(Fragment(2, 6, 204), Fragment(1, 5, 51)));
}

TEST(RankJoin, AnObjectOfTwoMaterialsIsTwoFragments) {
    EXPECT_THAT(Join({{1, 1.0F}}, {{5, 0.2F}, {6, 0.8F}}),
                ElementsAre(Fragment(1, 6, 204), Fragment(1, 5, 51)));
}

TEST(RankJoin, WhatNoMaterialIsLeftForHasNone) {
    EXPECT_THAT(Join({{1, 1.0F}}, {{5, 0.2F}}),
                ElementsAre(Fragment(1, noMaterial, 204), Fragment(1, 5, 51)));
    EXPECT_THAT(Join({{1, 1.0F}}, {}), ElementsAre(Fragment(1, noMaterial, 255)));
}

TEST(RankJoin, WhatNoObjectIsLeftForHasAnUnknownOneAndComesLast) {
    EXPECT_THAT(Join({{1, 0.2F}}, {{5, 1.0F}}),
                ElementsAre(Fragment(1, 5, 51), Fragment(unknownObject, 5, 204)));
    EXPECT_THAT(Join({}, {{5, 1.0F}}), ElementsAre(Fragment(unknownObject, 5, 255)));
}

TEST(RankJoin, RanksOfOneIndexAreAddedBeforeTheyAreRounded) {
    // Each is 0.4 of a unit.
    const float little = 0.4F / 255.0F;
    EXPECT_THAT(Join({{1, little}, {1, little}, {1, little}}, {}),
                ElementsAre(Fragment(1, noMaterial, 1)));
    EXPECT_THAT(Join({{1, little}}, {}), IsEmpty());
}

TEST(RankJoin, TheSumOfOneIndexIsHeldAtOne) {
    EXPECT_THAT(Join({{1, 1.0F}, {1, 1.0F}}, {{5, 2.0F}}), ElementsAre(Fragment(1, 5, 255)));
    EXPECT_THAT(Join({{1, std::numeric_limits<float>::infinity()}}, {}),
                ElementsAre(Fragment(1, noMaterial, 255)));
}

TEST(RankJoin, APixelMayPassTheWholeRatherThanBendAnObject) {
    // Both halves round up to 128.
    EXPECT_THAT(Join({{1, 0.5F}, {2, 0.5F}}, {{5, 1.0F}}),
                ElementsAre(Fragment(1, 5, 128), Fragment(2, 5, 127), Fragment(2, noMaterial, 1)));
    EXPECT_THAT(Join({{1, 1.0F}, {2, 1.0F}}, {}),
                ElementsAre(Fragment(1, noMaterial, 255), Fragment(2, noMaterial, 255)));
}

TEST(RankJoin, RanksWithoutIdOrCoverageAreSkipped) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_THAT(Join({{noObject, 1.0F}, {1, 0.0F}, {2, -1.0F}, {3, nan}},
                     {{noMaterial, 1.0F}, {1, 0.0F}, {2, -1.0F}, {3, nan}}),
                IsEmpty());
    EXPECT_THAT(Join({{4, 1.0F}, {4, nan}}, {}), ElementsAre(Fragment(4, noMaterial, 255)));
}

TEST(RankJoin, ObjectZeroIsAnObject) {
    EXPECT_THAT(Join({{0, 1.0F}}, {}), ElementsAre(Fragment(0, noMaterial, 255)));
}

TEST(RankJoin, MoreRanksThanPromisedAreJoinedToo) {
    RankJoin join(1, 1);
    Ranks objects;
    Ranks materials;
    for (std::uint16_t i = 1; i <= 100; ++i) {
        objects.push_back({i, 0.01F});
        materials.push_back({i, 0.01F});
    }
    const auto fragments = join.Join(objects, materials);
    ASSERT_EQ(fragments.size(), 100U);
    for (std::size_t i = 0; i < fragments.size(); ++i) {
        EXPECT_EQ(fragments[i], Fragment(static_cast<int>(i) + 1, static_cast<int>(i) + 1, 3));
    }
}

// Adds what the ranks say the slow way.
std::map<int, int> UnitsOf(const Ranks& ranks, int none) {
    std::map<int, double> sums;
    for (const Rank& rank : ranks) {
        if (rank.index != none && rank.coverage > 0.0F) {
            sums[rank.index] += static_cast<double>(rank.coverage);
        }
    }
    std::map<int, int> units;
    for (const auto& [index, sum] : sums) {
        const int rounded = static_cast<int>(std::floor(std::min(sum, 1.0) * 255.0 + 0.5));
        if (rounded > 0) units[index] = rounded;
    }
    return units;
}

Ranks RandomRanks(std::mt19937& random, int lowestIndex, int indices) {
    const auto below = [&](int count) {
        return static_cast<int>(random() % static_cast<unsigned>(count));
    };
    Ranks ranks(static_cast<std::size_t>(below(9)));
    for (Rank& rank : ranks) {
        rank.index = static_cast<std::uint16_t>(lowestIndex + below(indices));
        rank.coverage = static_cast<float>(below(1000)) / 800.0F - 0.1F;
        if (below(20) == 0) rank.coverage = std::numeric_limits<float>::quiet_NaN();
        if (below(4) == 0) rank.coverage = static_cast<float>(below(256)) / 255.0F;
        if (below(4) == 0) rank.coverage /= 100.0F;
    }
    return ranks;
}

class RankJoinOfRandomPixels : public testing::TestWithParam<unsigned> {};

TEST_P(RankJoinOfRandomPixels, LosesAndInventsNothing) {
    std::mt19937 random(GetParam());
    RankJoin join(8, 8);
    for (int pixel = 0; pixel < 2000; ++pixel) {
        const Ranks objects = RandomRanks(random, 0, 6);
        const Ranks materials = RandomRanks(random, 0, 5);
        std::map<int, int> ofObject;
        std::map<int, int> ofMaterial;
        bool unknownSeen = false;
        bool bareObject = false;
        const auto fragments = join.Join(objects, materials);
        for (const JoinedFragment& fragment : fragments) {
            ASSERT_GT(fragment.coverage, 0);
            if (fragment.object == unknownObject) {
                unknownSeen = true;
                ASSERT_NE(fragment.material, noMaterial);
            } else {
                ASSERT_FALSE(unknownSeen) << "unknown objects come last";
                ofObject[fragment.object] += fragment.coverage;
            }
            if (fragment.material == noMaterial) bareObject = true;
            if (fragment.material != noMaterial) ofMaterial[fragment.material] += fragment.coverage;
        }
        ASSERT_EQ(ofObject, UnitsOf(objects, noObject));
        ASSERT_EQ(ofMaterial, UnitsOf(materials, noMaterial));
        // Nothing is left on both sides, and no pair is made twice.
        ASSERT_FALSE(unknownSeen && bareObject);
        ASSERT_LE(fragments.size(), ofObject.size() + ofMaterial.size());
        int before = 256;
        for (std::size_t i = 0; i < fragments.size(); ++i) {
            if (fragments[i].object == unknownObject) break;
            const int units = ofObject[fragments[i].object];
            ASSERT_LE(units, before) << "objects come by their coverage";
            before = units;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RankJoinOfRandomPixels, testing::Range(0U, 40U));

}  // namespace
}  // namespace command

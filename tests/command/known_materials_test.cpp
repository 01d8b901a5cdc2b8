#include "command/known_materials.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace command {
namespace {

using Ranks = std::vector<Rank>;

TEST(KnownMaterials, OfOneObjectAllMaterialsAreItsOwn) {
    KnownMaterials known;
    known.Learn(Ranks{{7, 0.5F}, {7, 0.5F}}, Ranks{{3, 0.5F}, {255, 0.5F}});
    EXPECT_TRUE(known.Belong(7, 3));
    EXPECT_TRUE(known.Belong(7, 255));
    EXPECT_FALSE(known.Belong(7, 4));
    EXPECT_FALSE(known.Belong(3, 3));
}

TEST(KnownMaterials, OneMaterialBelongsToAllObjects) {
    KnownMaterials known;
    known.Learn(Ranks{{0, 0.5F}, {65534, 0.5F}}, Ranks{{3, 1.0F}});
    EXPECT_TRUE(known.Belong(0, 3));
    EXPECT_TRUE(known.Belong(65534, 3));
}

TEST(KnownMaterials, SeveralOfBothTeachNothing) {
    KnownMaterials known;
    known.Learn(Ranks{{1, 0.5F}, {2, 0.5F}}, Ranks{{3, 0.5F}, {4, 0.5F}});
    for (const std::uint16_t object : {std::uint16_t{1}, std::uint16_t{2}}) {
        EXPECT_FALSE(known.Belong(object, 3));
        EXPECT_FALSE(known.Belong(object, 4));
    }
}

TEST(KnownMaterials, RanksThatCoverNothingTeachNothing) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    KnownMaterials known;
    known.Learn(Ranks{{1, 1.0F}, {2, 0.0F}, {noObject, 1.0F}},
                Ranks{{3, 1.0F}, {4, nan}, {noMaterial, 1.0F}});
    EXPECT_TRUE(known.Belong(1, 3));
    EXPECT_FALSE(known.Belong(2, 3));
    EXPECT_FALSE(known.Belong(1, 4));
    EXPECT_FALSE(known.Belong(1, noMaterial));
    EXPECT_FALSE(known.Belong(noObject, 3));
}

TEST(KnownMaterials, AnIndexBeyondTheLastIsNotKept) {
    KnownMaterials known;
    known.Learn(Ranks{{1, 1.0F}}, Ranks{{256, 1.0F}});
    EXPECT_FALSE(known.Belong(1, 256));
    EXPECT_FALSE(known.Belong(1, 0));
}

}  // namespace
}  // namespace command

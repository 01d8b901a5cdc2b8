#include "effect/corrections_table.h"

#include <gtest/gtest.h>

namespace {

// Only the number of points counts, so that the axes behind the first may stay empty.
psdfile::CubeLUT TableOf(std::size_t points) {
    psdfile::CubeLUT table;
    table.lut3D.resize(points);
    return table;
}

TEST(CorrectionsTable, FitsALayerWith2To255Points) {
    EXPECT_FALSE(effect::FitsColorLookup(TableOf(0)));
    EXPECT_FALSE(effect::FitsColorLookup(TableOf(1)));
    EXPECT_TRUE(effect::FitsColorLookup(TableOf(2)));
    EXPECT_TRUE(effect::FitsColorLookup(TableOf(255)));
    EXPECT_FALSE(effect::FitsColorLookup(TableOf(256)));
}

TEST(CorrectionsTable, FitsNoLayerWhenItIs1D) {
    psdfile::CubeLUT table;
    table.lut1D.resize(16);
    EXPECT_FALSE(effect::FitsColorLookup(table));
}

TEST(CorrectionsTable, FitsNoLayerWhenItStartsFromOtherColoursThan0To1) {
    for (std::size_t i = 0; i < 3; ++i) {
        psdfile::CubeLUT table = TableOf(2);
        table.domainMin[i] = -0.5;
        EXPECT_FALSE(effect::FitsColorLookup(table));
        table = TableOf(2);
        table.domainMax[i] = 2.0;
        EXPECT_FALSE(effect::FitsColorLookup(table));
    }
}

}  // namespace

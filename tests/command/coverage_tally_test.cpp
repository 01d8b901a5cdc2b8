#include "command/coverage_tally.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace command {
namespace {

using testing::ElementsAre;
using Entry = CoverageTally::Entry;

TEST(CoverageTally, AddsUpRowsAndSamples) {
    const std::vector<std::uint32_t> ids{7, 7, 9, 7, 9};
    const std::vector<float> coverages{1.0F, 0.5F, 0.25F, 0.25F, 0.5F};
    CoverageTally tally;
    tally.AddRow({ids, coverages});
    tally.AddRow({ids, coverages});
    tally.Add(9, 0.5F);
    EXPECT_EQ(tally.Size(), 2U);
    EXPECT_THAT(tally.Largest(), ElementsAre(Entry{7, 3.5}, Entry{9, 2.0}));
}

TEST(CoverageTally, KeepsTheLargestAndOfEqualOnesTheSmallerId) {
    CoverageTally tally;
    for (const std::uint32_t id : {5U, 3U, 4U, 0xffffffffU})
        tally.Add(id, 0.5F);
    tally.Add(4, 0.25F);
    EXPECT_THAT(tally.Largest(2), ElementsAre(Entry{4, 0.75}, Entry{3, 0.5}));
    EXPECT_THAT(tally.Largest(0), ElementsAre());
    EXPECT_EQ(tally.Largest().back(), (Entry{0xffffffffU, 0.5}));
}

TEST(CoverageTally, WhatCoversNothingOrIsNoIdDoesntCount) {
    const std::vector<std::uint32_t> ids{0, 1, 2, 3, 4};
    const std::vector<float> coverages{1.0F, 0.0F, -1.0F, std::numeric_limits<float>::quiet_NaN(),
                                       2.0F};
    CoverageTally tally;
    tally.AddRow({ids, coverages});
    tally.Add(0, 1.0F);
    tally.Add(5, std::numeric_limits<float>::quiet_NaN());
    EXPECT_THAT(tally.Largest(), ElementsAre(Entry{4, 1.0}));
}

}  // namespace
}  // namespace command

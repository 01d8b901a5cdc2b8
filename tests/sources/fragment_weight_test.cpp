#include "sources/fragment_weight.h"

#include <gmock/gmock.h>

#include "tests/sources/fake_gbuffer.h"

namespace {

using sources::WeightChannels;
using testing::ElementsAre;

constexpr DWORD weightAndTransparency = BMM_CHAN_WEIGHT | BMM_CHAN_TRANSP;

class FragmentWeight : public testing::Test {
  protected:
    // A reader that stands at the fragment.
    GBufReader* At(const FakeFragment& fragment) {
        rows = {{{fragment}}};
        reader.StartLine(0);
        reader.StartPixel(0);
        reader.StartNextLayer();
        return &reader;
    }

    std::vector<std::vector<FakePixel>> rows;
    FakeReader reader{rows};
};

TEST_F(FragmentWeight, ComesFromWeightsThenFromCoverage) {
    using sources::WeightChannelsOf;
    EXPECT_EQ(WeightChannelsOf(weightAndTransparency), WeightChannels::weightAndTransparency);
    EXPECT_EQ(WeightChannelsOf(weightAndTransparency | BMM_CHAN_COVERAGE),
              WeightChannels::weightAndTransparency);
    EXPECT_EQ(WeightChannelsOf(BMM_CHAN_COVERAGE | BMM_CHAN_Z), WeightChannels::coverage);
    EXPECT_EQ(WeightChannelsOf(BMM_CHAN_COVERAGE | BMM_CHAN_WEIGHT), WeightChannels::coverage);
    EXPECT_EQ(WeightChannelsOf(BMM_CHAN_COVERAGE | BMM_CHAN_TRANSP), WeightChannels::coverage);
    EXPECT_EQ(WeightChannelsOf(BMM_CHAN_TRANSP), WeightChannels::none);
    EXPECT_EQ(WeightChannelsOf(0), WeightChannels::none);
}

TEST_F(FragmentWeight, IsTheSumOfWeightsTimesOpacity) {
    const FakeFragment fragment{.transparency = Color24{55, 155, 255},
                                .weight = Color24{10, 20, 30}};
    const sources::FragmentWeight weight =
        sources::ReadFragmentWeight(At(fragment), WeightChannels::weightAndTransparency);
    EXPECT_THAT(weight.component, ElementsAre(10, 20, 30));
    EXPECT_EQ(weight.total, 200 * 10 + 100 * 20);
    EXPECT_EQ(
        sources::ReadFullOrFragmentWeight(At(fragment), WeightChannels::weightAndTransparency),
        4000);
}

TEST_F(FragmentWeight, OfAFullOpaqueFragmentIs195075) {
    const FakeFragment fragment{
        .coverage = UBYTE{255}, .transparency = Color24{0, 0, 0}, .weight = Color24{255, 255, 255}};
    for (const auto channels : {WeightChannels::weightAndTransparency, WeightChannels::coverage}) {
        EXPECT_EQ(sources::ReadFragmentWeight(At(fragment), channels).total, 195075);
        EXPECT_EQ(sources::ReadFullOrFragmentWeight(At(fragment), channels), 195075);
    }
    EXPECT_EQ(sources::fullWeight / sources::weightPerLevel, 255);
}

TEST_F(FragmentWeight, IsTheCoverageForEachComponent) {
    const FakeFragment fragment{.coverage = UBYTE{7}, .weight = Color24{1, 1, 1}};
    const auto weight = sources::ReadFragmentWeight(At(fragment), WeightChannels::coverage);
    EXPECT_THAT(weight.component, ElementsAre(7, 7, 7));
    EXPECT_EQ(weight.total, 7 * 765);
}

TEST_F(FragmentWeight, WithoutAnyChannelIsNothingOrAllAsTheCallerLikes) {
    const FakeFragment fragment{.coverage = UBYTE{7}};
    const auto weight = sources::ReadFragmentWeight(At(fragment), WeightChannels::none);
    EXPECT_THAT(weight.component, ElementsAre(0, 0, 0));
    EXPECT_EQ(weight.total, 0);
    EXPECT_EQ(sources::ReadFullOrFragmentWeight(At(fragment), WeightChannels::none), 195075);
}

TEST_F(FragmentWeight, OfAFragmentThatCantBeReadIs0) {
    const FakeFragment noWeight{.transparency = Color24{0, 0, 0}};
    const FakeFragment noTransparency{.weight = Color24{255, 255, 255}};
    for (const FakeFragment& fragment : {FakeFragment{}, noWeight, noTransparency}) {
        for (const auto channels :
             {WeightChannels::weightAndTransparency, WeightChannels::coverage}) {
            const auto weight = sources::ReadFragmentWeight(At(fragment), channels);
            EXPECT_EQ(weight.total, 0);
            EXPECT_THAT(weight.component, ElementsAre(0, 0, 0));
            EXPECT_EQ(sources::ReadFullOrFragmentWeight(At(fragment), channels), 0);
        }
    }
}

TEST_F(FragmentWeight, OfAnOpaqueFragmentDoesntLookAtItsTransparency) {
    const FakeFragment fragment{.transparency = Color24{255, 255, 255},
                                .weight = Color24{10, 20, 30}};
    const auto channels = WeightChannels::weightAndTransparency;
    EXPECT_EQ(sources::ReadFullOrFragmentWeight(At(fragment), channels, false), 0);
    EXPECT_EQ(sources::ReadFullOrFragmentWeight(At(fragment), channels, true), 255 * 60);
}

}  // namespace

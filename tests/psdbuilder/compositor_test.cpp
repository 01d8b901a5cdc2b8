#include "psdbuilder/compositor.h"

#include <gmock/gmock.h>

#include <cmath>

#include "tests/psdbuilder/listed_source.h"

namespace {

using psdbuilder::Compositor;
using psdbuilder::CompositorToPSDChannel;
using testing::ElementsAre;

constexpr int red = 0;
constexpr int green = 1;
constexpr int blue = 2;
constexpr int alpha = 3;
constexpr int luminance = 4;

template <class Sample>
std::vector<Sample> CopyOfRow(const Sample* row, std::size_t width) {
    return {row, row + width};
}

class CompositorChannel : public testing::Test {
  protected:
    // A layer of one colour in all three channels.
    void Add(const psdfile::PSDChannelImageDataSourcePtr& color,
             const psdfile::PSDChannelImageDataSourcePtr& layerAlpha) {
        psdbuilder::AddCompositorLayer(stack->layers, color, color, color, layerAlpha, nullptr);
    }
    std::vector<std::uint8_t> Row8(int channel, int width) {
        return CopyOfRow(CompositorToPSDChannel(stack, channel, width).GetRow8(0),
                         static_cast<std::size_t>(width));
    }
    std::vector<std::uint16_t> Row16(int channel, int width) {
        return CopyOfRow(CompositorToPSDChannel(stack, channel, width).GetRow16(0),
                         static_cast<std::size_t>(width));
    }
    std::vector<float> Row32(int channel, int width) {
        return CopyOfRow(CompositorToPSDChannel(stack, channel, width).GetRow32(0),
                         static_cast<std::size_t>(width));
    }

    boost::shared_ptr<Compositor> stack = boost::make_shared<Compositor>();
};

TEST_F(CompositorChannel, OfOneLayerIsThatLayersOwn) {
    psdbuilder::AddCompositorLayer(stack->layers, Listed8({1, 2}), Listed8({3, 4}), Listed8({5, 6}),
                                   Listed8({0, 8}), Listed8({9, 10}));
    EXPECT_THAT(Row8(red, 2), ElementsAre(1, 2));
    EXPECT_THAT(Row8(green, 2), ElementsAre(3, 4));
    EXPECT_THAT(Row8(blue, 2), ElementsAre(5, 6));
    EXPECT_THAT(Row8(alpha, 2), ElementsAre(0, 8));
}

TEST_F(CompositorChannel, OfOneLayerIsThatLayersOwnAtEveryDepth) {
    Add(Listed16({40000, 1}), Listed16({0, 65535}));
    EXPECT_THAT(Row16(blue, 2), ElementsAre(40000, 1));
    EXPECT_THAT(Row16(alpha, 2), ElementsAre(0, 65535));
    stack->layers.clear();
    Add(Listed32({-2.0F, 7.5F}), Listed32({0.0F, 3.0F}));
    EXPECT_THAT(Row32(red, 2), ElementsAre(-2.0F, 7.5F));
    EXPECT_THAT(Row32(alpha, 2), ElementsAre(0.0F, 3.0F));
}

TEST_F(CompositorChannel, LuminanceIsAlphaAndAnUnknownChannelIsRed) {
    psdbuilder::AddCompositorLayer(stack->layers, Listed8({1}), Listed8({2}), Listed8({3}),
                                   Listed8({4}), nullptr);
    EXPECT_THAT(Row8(luminance, 1), ElementsAre(4));
    EXPECT_THAT(Row8(5, 1), ElementsAre(1));
    EXPECT_THAT(Row8(-1, 1), ElementsAre(1));
}

TEST_F(CompositorChannel, TwoOpaqueLayersAddUp) {
    Add(Listed32({0.2F}), Listed32({1.0F}));
    Add(Listed32({0.8F}), Listed32({1.0F}));
    EXPECT_THAT(Row32(red, 1), ElementsAre(testing::FloatEq(1.0F)));
    stack->layers.clear();
    Add(Listed8({51, 200}), Listed8({255, 255}));
    Add(Listed8({102, 100}), Listed8({255, 255}));
    // 153 / 255 * 256 is 153.6; 300 is capped.
    EXPECT_THAT(Row8(red, 2), ElementsAre(153, 255));
}

TEST_F(CompositorChannel, BothColoursAreWeightedByTheirOwnAlpha) {
    // (0.5 * 0.5 + 0.25 * 0.5) / 0.75
    Add(Listed32({0.25F}), Listed32({0.5F}));
    Add(Listed32({0.5F}), Listed32({0.5F}));
    EXPECT_THAT(Row32(red, 1), ElementsAre(0.5F));
    EXPECT_THAT(Row32(alpha, 1), ElementsAre(0.75F));
}

TEST_F(CompositorChannel, FractionsOf8BitsAreCutDownTo256Steps) {
    // a1 0.2, a2 0.4, c1 0.8, c2 0.6: (0.24 + 0.16) / 0.52 * 256 is 196.9; 0.52 * 256 is 133.1.
    Add(Listed8({204}), Listed8({51}));
    Add(Listed8({153}), Listed8({102}));
    EXPECT_THAT(Row8(red, 1), ElementsAre(196));
    EXPECT_THAT(Row8(alpha, 1), ElementsAre(133));
}

TEST_F(CompositorChannel, FractionsOf16BitsAreCutDownTo65536Steps) {
    // The same: 0.4 / 0.52 * 65536 is 50412.3; 0.52 * 65536 is 34078.7.
    Add(Listed16({52428}), Listed16({13107}));
    Add(Listed16({39321}), Listed16({26214}));
    EXPECT_THAT(Row16(green, 1), ElementsAre(50412));
    EXPECT_THAT(Row16(alpha, 1), ElementsAre(34078));
}

TEST_F(CompositorChannel, AThirdLayerMeetsTheAlphaOfTheTwoBelow) {
    // After two layers alpha is 0.75 and the colour 0.5; then (1 * 0.5 + 0.5 * 0.75) / 0.875.
    Add(Listed32({0.25F}), Listed32({0.5F}));
    Add(Listed32({0.5F}), Listed32({0.5F}));
    Add(Listed32({1.0F}), Listed32({0.5F}));
    EXPECT_THAT(Row32(red, 1), ElementsAre(1.0F));
    EXPECT_THAT(Row32(alpha, 1), ElementsAre(0.875F));
}

TEST_F(CompositorChannel, FloatColoursArentClampedAndFloatAlphaIs) {
    Add(Listed32({3.0F, -1.0F}), Listed32({1.0F, 1.0F}));
    Add(Listed32({4.0F, -1.0F}), Listed32({1.0F, -3.0F}));
    EXPECT_THAT(Row32(red, 2), ElementsAre(7.0F, 2.0F));
    // 1 - 3 + 3, and of 0.5 and 3: 0.5 + 3 - 1.5.
    EXPECT_THAT(Row32(alpha, 2), ElementsAre(1.0F, 1.0F));
    stack->layers.clear();
    Add(Listed32({0.0F, 0.0F}), Listed32({0.5F, 0.5F}));
    Add(Listed32({0.0F, 0.0F}), Listed32({3.0F, -3.0F}));
    EXPECT_THAT(Row32(alpha, 2), ElementsAre(1.0F, 0.0F));
}

TEST_F(CompositorChannel, WhereNothingCoversIntegersAre0AndFloatsNotANumber) {
    Add(Listed8({77}), Listed8({0}));
    Add(Listed8({99}), Listed8({0}));
    EXPECT_THAT(Row8(red, 1), ElementsAre(0));
    EXPECT_THAT(Row8(alpha, 1), ElementsAre(0));
    stack->layers.clear();
    Add(Listed16({777}), Listed16({0}));
    Add(Listed16({999}), Listed16({0}));
    EXPECT_THAT(Row16(red, 1), ElementsAre(0));
    stack->layers.clear();
    Add(Listed32({0.5F}), Listed32({0.0F}));
    Add(Listed32({0.5F}), Listed32({0.0F}));
    Add(Listed32({0.5F}), Listed32({1.0F}));
    EXPECT_TRUE(std::isnan(Row32(red, 1)[0])) << "carried through";
    EXPECT_THAT(Row32(alpha, 1), ElementsAre(1.0F));
}

TEST_F(CompositorChannel, OfAnEmptyStackIs0) {
    EXPECT_THAT(Row8(red, 2), ElementsAre(0, 0));
    EXPECT_THAT(Row16(alpha, 2), ElementsAre(0, 0));
    EXPECT_THAT(Row32(blue, 2), ElementsAre(0.0F, 0.0F));
}

TEST_F(CompositorChannel, WithoutAStackIs0) {
    stack.reset();
    EXPECT_THAT(Row8(alpha, 1), ElementsAre(0));
    EXPECT_THAT(Row32(red, 1), ElementsAre(0.0F));
}

TEST_F(CompositorChannel, ALayerWithoutDataLeavesWhatWasGathered) {
    Add(Listed8({10}), Listed8({51}));
    Add(nullptr, nullptr);
    Add(Listed16({1}), Listed16({1}));
    Add(Listed8({200}), nullptr);
    EXPECT_THAT(Row8(red, 1), ElementsAre(10));
    EXPECT_THAT(Row8(alpha, 1), ElementsAre(51));
    // One that has alpha only still covers.
    Add(nullptr, Listed8({255}));
    EXPECT_THAT(Row8(red, 1), ElementsAre(10));
    EXPECT_THAT(Row8(alpha, 1), ElementsAre(255));
}

TEST_F(CompositorChannel, BeginsWithZerosWhereTheLowestLayerHasNoData) {
    Add(nullptr, nullptr);
    Add(Listed8({80}), Listed8({255}));
    EXPECT_THAT(Row8(red, 1), ElementsAre(80));  // 80 / 255 * 256 is 80.3
    EXPECT_THAT(Row8(alpha, 1), ElementsAre(255));
}

TEST_F(CompositorChannel, GivesEveryRowAnewAndTheSameOneAgain) {
    auto color = Listed8({10});
    Add(color, Listed8({255}));
    Add(Listed8({0}), Listed8({0}));
    CompositorToPSDChannel channel(stack, red, 1);
    const std::uint8_t first = channel.GetRow8(0)[0];
    color->row8 = {200};
    EXPECT_EQ(channel.GetRow8(1)[0], 200);
    color->row8 = {10};
    EXPECT_EQ(channel.GetRow8(0)[0], first);
}

TEST_F(CompositorChannel, AsksNobodyBeforeARowIsAskedForAndColoursOnlyForColours) {
    auto color = Listed8({1});
    auto cover = Listed8({1});
    auto mask = Listed8({0});
    psdbuilder::AddCompositorLayer(stack->layers, color, nullptr, nullptr, cover, mask);
    CompositorToPSDChannel channel(stack, alpha, 1);
    EXPECT_EQ(cover->asked, 0);
    channel.GetRow8(0);
    EXPECT_EQ(cover->asked, 1);
    EXPECT_EQ(color->asked, 0);
    CompositorToPSDChannel(stack, red, 1).GetRow8(0);
    EXPECT_EQ(color->asked, 1);
    EXPECT_EQ(cover->asked, 2);
    EXPECT_EQ(mask->asked, 0) << "masks have no part in it";
}

TEST_F(CompositorChannel, AsksEverySourceForTheSameRow) {
    std::vector<boost::shared_ptr<ListedSource>> listed;
    for (int i = 0; i < 4; ++i) {
        listed.push_back(Listed8({1}));
        listed.back()->row16 = {1};
        listed.back()->row32 = {1.0F};
    }
    Add(listed[0], listed[1]);
    Add(listed[2], listed[3]);
    CompositorToPSDChannel channel(stack, red, 1);
    const auto expectRow = [&listed](std::uint32_t row) {
        for (const auto& source : listed)
            EXPECT_EQ(source->lastRow, row);
    };
    channel.GetRow8(5);
    expectRow(5);
    channel.GetRow16(6);
    expectRow(6);
    channel.GetRow32(7);
    expectRow(7);
}

TEST_F(CompositorChannel, KeepsTheStackAlive) {
    Add(Listed8({33}), Listed8({255}));
    CompositorToPSDChannel channel(stack, red, 1);
    stack.reset();
    EXPECT_EQ(channel.GetRow8(0)[0], 33);
    EXPECT_FALSE(channel.IsSolid());
}

TEST_F(CompositorChannel, HasARowAlsoWithoutWidth) {
    Add(Listed8({1}), Listed8({1}));
    EXPECT_NE(CompositorToPSDChannel(stack, red, 0).GetRow8(0), nullptr);
}

// Everything that 8 bits can meet, against the rule in wide arithmetic.
TEST_F(CompositorChannel, FollowsTheRuleForAllAlphasOf8Bits) {
    std::vector<std::uint8_t> a1, a2, c1, c2;
    for (int i = 0; i < 256; ++i) {
        for (int j = 0; j < 256; ++j) {
            a1.push_back(static_cast<std::uint8_t>(i));
            a2.push_back(static_cast<std::uint8_t>(j));
            c1.push_back(static_cast<std::uint8_t>(i * 7 + j));
            c2.push_back(static_cast<std::uint8_t>(j * 3 + i * 5));
        }
    }
    Add(Listed8(c1), Listed8(a1));
    Add(Listed8(c2), Listed8(a2));
    const std::vector<std::uint8_t> colors = Row8(red, 65536);
    const std::vector<std::uint8_t> alphas = Row8(alpha, 65536);
    for (std::size_t i = 1; i < colors.size(); ++i) {
        const double both = a1[i] / 255.0 + a2[i] / 255.0 - a1[i] / 255.0 * (a2[i] / 255.0);
        const double mean = (c2[i] / 255.0 * a2[i] + c1[i] / 255.0 * a1[i]) / 255.0 / both;
        const auto near = [](std::uint8_t sample, double fraction) {
            const double scaled = std::min(fraction * 256.0, 255.5);
            return sample >= std::floor(scaled - 1e-3) && sample <= std::floor(scaled + 1e-3);
        };
        ASSERT_TRUE(near(colors[i], mean)) << i << ": " << int{colors[i]} << " for " << mean;
        ASSERT_TRUE(near(alphas[i], both)) << i << ": " << int{alphas[i]} << " for " << both;
    }
}

}  // namespace

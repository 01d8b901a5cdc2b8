#include "command/deep_samples.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace command {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr float farAway = std::numeric_limits<float>::infinity();
const float notANumber = std::nanf("");

DeepSample Volume(float z, float zBack, float alpha, float red, std::uint32_t id = 0) {
    DeepSample sample{z, zBack, alpha, {red, 0.0F, 0.0F}, {}};
    sample.ids[0] = id;
    return sample;
}

DeepSample Point(float z, float alpha, float red, std::uint32_t id = 0) {
    return Volume(z, z, alpha, red, id);
}

std::vector<DeepSample> Tidied(std::vector<DeepSample> samples) {
    DeepTidier tidier;
    EXPECT_TRUE(tidier.Tidy(samples));
    return samples;
}

MATCHER_P5(Is, z, zBack, alpha, red, id, "") {
    constexpr float error = 1e-6F;
    return arg.z == z && arg.zBack == zBack && std::abs(arg.alpha - alpha) < error &&
           std::abs(arg.color[0] - red) < error && arg.ids[0] == static_cast<std::uint32_t>(id);
}

std::vector<float> Numbers(const std::vector<DeepSample>& samples) {
    std::vector<float> numbers;
    for (const DeepSample& sample : samples) {
        numbers.insert(numbers.end(), {sample.z, sample.zBack, sample.alpha, sample.color[0],
                                       sample.color[1], sample.color[2]});
    }
    return numbers;
}

TEST(DeepSamples, TidyOnesKeepEveryBit) {
    // What touches doesn't overlap; a point may stand at a volume's front or back.
    const std::vector<DeepSample> samples{Volume(1.0F, 2.0F, 0.3F, 0.1F), Point(2.0F, 0.7F, 3.1F),
                                          Volume(2.0F, 2.5F, 0.1F, 0.0F), Point(7.0F, 1.0F, -0.5F)};
    EXPECT_EQ(Numbers(Tidied(samples)), Numbers(samples));
    EXPECT_THAT(Tidied({}), IsEmpty());
}

TEST(DeepSamples, AreSortedFromFrontToBack) {
    EXPECT_THAT(Tidied({Point(3.0F, 0.3F, 3.0F), Volume(1.0F, 2.0F, 0.1F, 1.0F),
                        Point(1.0F, 0.2F, 2.0F), Point(-4.0F, 0.4F, 4.0F)}),
                ElementsAre(Is(-4.0F, -4.0F, 0.4F, 4.0F, 0), Is(1.0F, 1.0F, 0.2F, 2.0F, 0),
                            Is(1.0F, 2.0F, 0.1F, 1.0F, 0), Is(3.0F, 3.0F, 0.3F, 3.0F, 0)));
}

TEST(DeepSamples, APointInAVolumeSplitsIt) {
    // Halves of a volume of 0.75 let half through each: 0.5 * 0.5 = 1 - 0.75. Colour goes with
    // opacity: 0.6 * 0.5 / 0.75.
    EXPECT_THAT(Tidied({Volume(0.0F, 4.0F, 0.75F, 0.6F), Point(2.0F, 0.25F, 0.1F)}),
                ElementsAre(Is(0.0F, 2.0F, 0.5F, 0.4F, 0), Is(2.0F, 2.0F, 0.25F, 0.1F, 0),
                            Is(2.0F, 4.0F, 0.5F, 0.4F, 0)));
}

TEST(DeepSamples, AnOpaqueVolumeIsOpaqueInEveryPiece) {
    EXPECT_THAT(Tidied({Volume(0.0F, 4.0F, 1.0F, 0.6F), Point(1.0F, 0.25F, 0.1F)}),
                ElementsAre(Is(0.0F, 1.0F, 1.0F, 0.6F, 0), Is(1.0F, 1.0F, 0.25F, 0.1F, 0),
                            Is(1.0F, 4.0F, 1.0F, 0.6F, 0)));
}

TEST(DeepSamples, AVolumeWithoutOpacityDividesItsColourByLength) {
    EXPECT_THAT(Tidied({Volume(0.0F, 4.0F, 0.0F, 0.8F), Point(1.0F, 0.25F, 0.1F)}),
                ElementsAre(Is(0.0F, 1.0F, 0.0F, 0.2F, 0), Is(1.0F, 1.0F, 0.25F, 0.1F, 0),
                            Is(1.0F, 4.0F, 0.0F, 0.6F, 0)));
}

TEST(DeepSamples, PointsAtOneDepthAreMerged) {
    // 1 - 0.5 * 0.5 = 0.75. Equal opacities: the mean of the unpremultiplied colours, 0.8 and 0.4,
    // times 0.75.
    EXPECT_THAT(Tidied({Point(1.0F, 0.5F, 0.4F), Point(1.0F, 0.5F, 0.2F)}),
                ElementsAre(Is(1.0F, 1.0F, 0.75F, 0.45F, 0)));
    // Depths of opacity 1 : 2, since 0.75 is 0.5 twice; whole, 1 - 0.5 * 0.25. The colours 0.8 and
    // 0.2 weigh 1/3 and 2/3: 0.4 * 0.875.
    EXPECT_THAT(Tidied({Point(1.0F, 0.5F, 0.4F), Point(1.0F, 0.75F, 0.15F)}),
                ElementsAre(Is(1.0F, 1.0F, 0.875F, 0.35F, 0)));
}

TEST(DeepSamples, OpaquePointsAtOneDepthGiveTheMean) {
    EXPECT_THAT(Tidied({Point(1.0F, 1.0F, 0.3F), Point(1.0F, 1.0F, 0.6F), Point(1.0F, 1.0F, 0.9F)}),
                ElementsAre(Is(1.0F, 1.0F, 1.0F, 0.6F, 0)));
    // Among what is opaque nothing else is seen.
    EXPECT_THAT(Tidied({Point(1.0F, 0.5F, 0.4F), Point(1.0F, 1.0F, 0.2F)}),
                ElementsAre(Is(1.0F, 1.0F, 1.0F, 0.2F, 0)));
}

TEST(DeepSamples, LightWithoutOpacityIsAdded) {
    EXPECT_THAT(Tidied({Point(1.0F, 0.0F, 0.4F), Point(1.0F, 0.0F, 0.2F)}),
                ElementsAre(Is(1.0F, 1.0F, 0.0F, 0.6F, 0)));
}

TEST(DeepSamples, OverlappingVolumesAreSplitAndMerged) {
    // 0 to 2 has the first one's front half, 2 to 4 its other half and the second one's front half,
    // 4 to 6 the rest. Halves of 0.75 are 0.5; two of these together 0.75. Unpremultiplied the
    // colours are 0.8 and 0.4, their mean 0.6.
    EXPECT_THAT(Tidied({Volume(2.0F, 6.0F, 0.75F, 0.3F), Volume(0.0F, 4.0F, 0.75F, 0.6F)}),
                ElementsAre(Is(0.0F, 2.0F, 0.5F, 0.4F, 0), Is(2.0F, 4.0F, 0.75F, 0.45F, 0),
                            Is(4.0F, 6.0F, 0.5F, 0.2F, 0)));
}

TEST(DeepSamples, OneIdInsideAnotherKeepsBothApart) {
    // 1 to 2 has a half of id 7, of opacity 0.5, and all of id 9 with 0.75: depths 1 : 2, together
    // 1 - 0.5 * 0.25 = 0.875. Shares 0.875/3 and 1.75/3; the second one is seen through 1 less the
    // first share.
    const auto samples =
        Tidied({Volume(0.0F, 2.0F, 0.75F, 0.6F, 7), Volume(1.0F, 2.0F, 0.75F, 0.15F, 9)});
    const float first = 0.875F / 3;
    const float second = 1.75F / 3 / (1 - first);
    ASSERT_EQ(samples.size(), 3U);
    EXPECT_THAT(samples[0], Is(0.0F, 1.0F, 0.5F, 0.4F, 7));
    EXPECT_THAT(samples[1], Is(1.0F, 2.0F, first, first * 0.8F, 7));
    EXPECT_THAT(samples[2], Is(1.0F, 2.0F, second, second * 0.2F, 9));
    // The same as of one merged sample.
    const auto merged = Flatten(std::span(samples).subspan(1));
    EXPECT_NEAR(merged[3], 0.875F, 1e-6F);
    EXPECT_NEAR(merged[0], 0.35F, 1e-6F);
}

TEST(DeepSamples, SamplesOfOneIdAreMergedAroundAnother) {
    const auto samples = Tidied(
        {Point(1.0F, 0.5F, 0.1F, 7), Point(1.0F, 0.5F, 0.1F, 9), Point(1.0F, 0.5F, 0.1F, 7)});
    // Two thirds and one third of 0.875.
    const float first = 1.75F / 3;
    const float second = 0.875F / 3 / (1 - first);
    EXPECT_THAT(samples, ElementsAre(Is(1.0F, 1.0F, first, first * 0.2F, 7),
                                     Is(1.0F, 1.0F, second, second * 0.2F, 9)));
}

TEST(DeepSamples, OpaqueIdsAtOneDepthShareIt) {
    const auto samples = Tidied(
        {Point(1.0F, 1.0F, 0.2F, 7), Point(1.0F, 1.0F, 0.4F, 9), Point(1.0F, 0.5F, 0.4F, 11)});
    EXPECT_THAT(samples, ElementsAre(Is(1.0F, 1.0F, 0.5F, 0.1F, 7), Is(1.0F, 1.0F, 1.0F, 0.4F, 9)));
    EXPECT_EQ(Flatten(samples)[3], 1.0F);
}

TEST(DeepSamples, AnyIdKeepsThemApart) {
    std::vector<DeepSample> samples{Point(1.0F, 0.5F, 0.1F), Point(1.0F, 0.5F, 0.1F)};
    samples[1].ids[mostDeepIds - 1] = 1;
    EXPECT_EQ(Tidied(samples).size(), 2U);
}

TEST(DeepSamples, AlphaIsClamped) {
    EXPECT_THAT(
        Tidied({Point(1.0F, 1.5F, 0.1F), Point(2.0F, -0.5F, 0.1F), Point(3.0F, notANumber, 0.1F)}),
        ElementsAre(Is(1.0F, 1.0F, 1.0F, 0.1F, 0), Is(2.0F, 2.0F, 0.0F, 0.1F, 0),
                    Is(3.0F, 3.0F, 0.0F, 0.1F, 0)));
}

TEST(DeepSamples, DepthsThatMakeNoSenseMakePoints) {
    EXPECT_THAT(Tidied({Volume(1.0F, 0.5F, 0.5F, 0.1F), Volume(2.0F, farAway, 0.5F, 0.1F),
                        Volume(3.0F, notANumber, 0.5F, 0.1F), Volume(notANumber, 9.0F, 0.5F, 0.1F),
                        Volume(-farAway, 9.0F, 0.5F, 0.1F), Point(farAway, 0.5F, 0.1F)}),
                ElementsAre(Is(-farAway, -farAway, 0.5F, 0.1F, 0), Is(1.0F, 1.0F, 0.5F, 0.1F, 0),
                            Is(2.0F, 2.0F, 0.5F, 0.1F, 0), Is(3.0F, 3.0F, 0.5F, 0.1F, 0),
                            Is(farAway, farAway, 0.5F, 0.1F, 0)));
}

TEST(DeepSamples, AVolumeAsLongAsFloatsReachIsSplit) {
    constexpr float largest = std::numeric_limits<float>::max();
    EXPECT_THAT(Tidied({Volume(-largest, largest, 0.75F, 0.6F), Point(0.0F, 0.25F, 0.1F)}),
                ElementsAre(Is(-largest, 0.0F, 0.5F, 0.4F, 0), Is(0.0F, 0.0F, 0.25F, 0.1F, 0),
                            Is(0.0F, largest, 0.5F, 0.4F, 0)));
}

// Everything that overlaps in every way: the flat picture of the tidy samples is that of their
// optical depths.
TEST(DeepSamples, NoOpacityIsLostOrGained) {
    std::vector<DeepSample> samples;
    double through = 1.0;
    for (int i = 0; i < 40; ++i) {
        const auto z = static_cast<float>((i * 7) % 20);
        const auto length = static_cast<float>((i * 5) % 11);
        const float alpha = static_cast<float>(i % 9) * 0.02F;
        samples.push_back(Volume(z, z + length, alpha, alpha, static_cast<std::uint32_t>(i % 3)));
        through *= 1.0 - double{alpha};
    }
    const auto tidy = Tidied(samples);
    for (std::size_t i = 1; i < tidy.size(); ++i) {
        const bool sameRoom = tidy[i - 1].z == tidy[i].z && tidy[i - 1].zBack == tidy[i].zBack;
        EXPECT_TRUE(tidy[i - 1].zBack <= tidy[i].z || sameRoom);
        EXPECT_FALSE(sameRoom && tidy[i - 1].ids == tidy[i].ids);
    }
    // White all over, so that colour is opacity.
    EXPECT_NEAR(Flatten(tidy)[3], 1.0 - through, 1e-5);
    EXPECT_NEAR(Flatten(tidy)[0], 1.0 - through, 1e-5);
}

TEST(DeepSamples, PixelsOfTooManyPiecesAreRefused) {
    std::vector<DeepSample> samples;
    for (int i = 0; i < 5000; ++i) {
        samples.push_back(Volume(static_cast<float>(i), static_cast<float>(20000 - i), 0.1F, 0.1F));
    }
    DeepTidier tidier;
    EXPECT_FALSE(tidier.Tidy(samples));
    // The next pixel doesn't feel it.
    std::vector<DeepSample> good{Volume(0.0F, 4.0F, 0.75F, 0.6F), Point(2.0F, 0.25F, 0.1F)};
    EXPECT_TRUE(tidier.Tidy(good));
    EXPECT_EQ(good.size(), 3U);
}

TEST(DeepSamples, AreLaidOverOneAnother) {
    // 0.4, and half of what is behind: 0.6 of opacity 0.5, of which a half; then a quarter.
    const std::vector<DeepSample> samples{Point(1.0F, 0.5F, 0.4F), Point(2.0F, 0.5F, 0.6F),
                                          Point(3.0F, 1.0F, 0.8F), Point(4.0F, 1.0F, 100.0F)};
    EXPECT_THAT(Flatten(samples), ElementsAre(0.4F + 0.3F + 0.2F, 0.0F, 0.0F, 1.0F));
    EXPECT_THAT(Flatten({}), ElementsAre(0.0F, 0.0F, 0.0F, 0.0F));
}

}  // namespace
}  // namespace command

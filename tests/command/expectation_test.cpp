#include "command/expectation.h"

#include <gtest/gtest.h>

#include "command/beauty.h"
#include "tests/command/descriptions.h"

namespace command {
namespace {

using descriptions::Channels;
using descriptions::Joined;

Expectation Of(Description file) {
    file.parts[0].displayWindow = file.parts[0].dataWindow = {0, 0, 9, 4};
    return Expect(file, PlanPasses(file, ChooseBeauty(file)));
}

TEST(Expectation, OfAPictureAloneIsItsLayerWithMaskAndTheMergedImage) {
    const Expectation expected = Of(
        descriptions::File(descriptions::Part{Channels({"R", "G", "B", "A"}, SampleType::Half)}));
    EXPECT_EQ(expected.elements, 0U);
    EXPECT_EQ(expected.pixels, 50U);
    EXPECT_EQ(expected.memory, 50U * 4 * 2);
    EXPECT_EQ(expected.channels, 9U);
    EXPECT_EQ(expected.DocumentBytes(8), 450U);
    EXPECT_EQ(expected.DocumentBytes(16), 900U);
    EXPECT_EQ(expected.DocumentBytes(32), 1800U);
}

TEST(Expectation, CountsEachPassInItsOwnType) {
    const Expectation expected = Of(descriptions::File(descriptions::Part{
        Joined(Joined(Channels({"R", "G", "B", "A"}, SampleType::Half),
                      Channels({"diffuse.R", "diffuse.G", "diffuse.B"}, SampleType::Half)),
               Channels({"mist.Z"}, SampleType::Float))}));
    EXPECT_EQ(expected.elements, 2U);
    EXPECT_EQ(expected.memory, 50U * (8 + 6 + 4));
    EXPECT_EQ(expected.channels, 9U + 2 * 4);
}

TEST(Expectation, CountsTheNamesOfManifestsAndTheirFragments) {
    const Expectation expected = Of(descriptions::File(descriptions::Part{
        Joined(Channels({"R", "G", "B", "A"}, SampleType::Half),
               Channels({"CryptoObject00.R", "CryptoObject00.G", "CryptoObject00.B",
                         "CryptoObject00.A"})),
        "",
        {{"cryptomatte/1234567/name", "CryptoObject"},
         {"cryptomatte/1234567/hash", "MurmurHash3_32"},
         {"cryptomatte/1234567/conversion", "uint32_to_float32"},
         {"cryptomatte/1234567/manifest", R"({"a": "11111111", "b": "22222222"})"}}}));
    EXPECT_EQ(expected.objects, 2U);
    EXPECT_EQ(expected.memory, 50U * (8 + 2 + 15));
    // A matte each, and the layer of IDs.
    EXPECT_EQ(expected.channels, 9U + 3 * 4);
}

TEST(Expectation, DepthIsALayersMaskAndFragments) {
    const Expectation expected = Of(descriptions::File(
        descriptions::Part{Joined(Channels({"R", "G", "B", "A"}, SampleType::Half),
                                  Channels({"depth.Z"}, SampleType::Float))}));
    EXPECT_TRUE(expected.depthImage);
    // Fragments of 14 bytes, one and a half a pixel, and their count.
    EXPECT_EQ(expected.memory, 50U * (8 + 4 + 2 + 21));
    EXPECT_EQ(expected.channels, 9U + 4 + 1);
}

}  // namespace
}  // namespace command

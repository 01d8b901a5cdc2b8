#include "command/deep_channels.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "command/beauty.h"
#include "command/failure.h"
#include "command/layer_names.h"
#include "tests/command/fault_text.h"

namespace command {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

Description DeepFile(const std::vector<Channel>& channels) {
    Description file;
    file.path = "a.exr";
    file.parts.push_back({.deep = true});
    file.layers = SortIntoLayers(channels, 0, {});
    return file;
}

DeepChannels ChosenDeep(const Description& file, const std::string& wanted = {}) {
    return ChooseDeepChannels(file, ChooseBeauty(file, wanted));
}

std::string DeepChannelsComplaint(const Description& file, const std::string& wanted = {}) {
    return FaultText<InputError>([&] { ChosenDeep(file, wanted); });
}

TEST(DeepChannels, AreFoundBesideTheColours) {
    const DeepChannels channels =
        ChosenDeep(DeepFile({{"A"}, {"B"}, {"G"}, {"R"}, {"Z"}, {"ZBack"}}));
    EXPECT_EQ(channels.part, 0U);
    EXPECT_EQ(channels.red + channels.green + channels.blue + channels.alpha, "RGBA");
    EXPECT_EQ(channels.z, "Z");
    EXPECT_EQ(channels.zBack, "ZBack");
    EXPECT_THAT(channels.ids, IsEmpty());
}

TEST(DeepChannels, WithoutABackOrAlphaThereIsNone) {
    const DeepChannels channels = ChosenDeep(DeepFile({{"B"}, {"G"}, {"R"}, {"z"}}));
    EXPECT_EQ(channels.alpha, "");
    EXPECT_EQ(channels.z, "z");
    EXPECT_EQ(channels.zBack, "");
}

TEST(DeepChannels, ALayersOwnDepthAndAlphaGoBeforeTheParts) {
    const Description file = DeepFile({{"A"},
                                       {"Z"},
                                       {"in.A"},
                                       {"in.B"},
                                       {"in.G"},
                                       {"in.R"},
                                       {"in.Z"},
                                       {"out.B"},
                                       {"out.G"},
                                       {"out.R"}});
    EXPECT_EQ(ChosenDeep(file, "in").z, "in.Z");
    EXPECT_EQ(ChosenDeep(file, "in").alpha, "in.A");
    EXPECT_EQ(ChosenDeep(file, "out").z, "Z");
    EXPECT_EQ(ChosenDeep(file, "out").alpha, "A");
}

TEST(DeepChannels, TheZOfCoordinatesIsNoDepth) {
    const Description file = DeepFile({{"N.X"}, {"N.Y"}, {"N.Z"}, {"Z"}});
    EXPECT_EQ(ChosenDeep(file, "N").z, "Z");
    EXPECT_EQ(ChosenDeep(file, "N").blue, "N.Z");
}

TEST(DeepChannels, UnsignedChannelsAndThoseOfKnownNamesAreIds) {
    const Description file = DeepFile({{"B"},
                                       {"G"},
                                       {"R"},
                                       {"Z"},
                                       {"count", {}, SampleType::Unsigned32},
                                       {"materialID", {}, SampleType::Float},
                                       {"other", {}, SampleType::Float},
                                       {"x.objectId", {}, SampleType::Half}});
    EXPECT_THAT(ChosenDeep(file).ids, ElementsAre("count", "materialID", "x.objectId"));
}

TEST(DeepChannels, MoreIdsThanASampleHoldsAreLeftOut) {
    std::vector<Channel> channels{{"B"}, {"G"}, {"R"}, {"Z"}};
    for (int i = 0; i < 20; ++i)
        channels.push_back({"n" + std::to_string(i), {}, SampleType::Unsigned32});
    EXPECT_EQ(ChosenDeep(DeepFile(channels)).ids.size(), mostDeepIds);
}

TEST(DeepChannels, ColoursMayBeUnsigned) {
    constexpr SampleType type = SampleType::Unsigned32;
    EXPECT_THAT(
        ChosenDeep(DeepFile({{"B", {}, type}, {"G", {}, type}, {"R", {}, type}, {"Z"}})).ids,
        IsEmpty());
}

TEST(DeepChannels, WithoutADepthTheyAreRefused) {
    EXPECT_EQ(
        DeepChannelsComplaint(DeepFile({{"B"}, {"G"}, {"R"}})),
        "a.exr: layer \"RGB\" is deep and has no depth channel Z; render it with one or flat");
}

TEST(DeepChannels, DepthAndIdsAreNoPicture) {
    const Description file =
        DeepFile({{"B"}, {"G"}, {"R"}, {"Z"}, {"objectID", {}, SampleType::Unsigned32}});
    const std::string rest =
        "\" says where deep samples are or of what, which is no picture; choose another with "
        "--beauty";
    EXPECT_EQ(DeepChannelsComplaint(file, "Z"), "a.exr: layer \"Z" + rest);
    EXPECT_EQ(DeepChannelsComplaint(file, "objectID"), "a.exr: layer \"objectID" + rest);
}

}  // namespace
}  // namespace command

#include "command/deep_numbers.h"

#include <gtest/gtest.h>

#include "tests/command/descriptions.h"

namespace command {
namespace {

using descriptions::Channels;

Description File(SampleType objectType, SampleType materialType) {
    return descriptions::File(descriptions::Part{
        .channels =
            descriptions::Joined(Channels({"A", "B", "G", "R", "Z"}),
                                 descriptions::Joined(Channels({"objectID"}, objectType),
                                                      Channels({"materialID"}, materialType))),
        .deep = true});
}

DeepPass Pass() {
    DeepPass pass;
    pass.channels.ids = {"materialID", "objectID"};
    pass.materialID = 0;
    pass.objectID = 1;
    return pass;
}

TEST(DeepNumbers, IntegersAreTakenAsTheyAre) {
    const DeepNumbers numbers(File(SampleType::Unsigned32, SampleType::Unsigned32), 0, Pass());
    DeepSample sample{.z = 5.0F, .alpha = 0.5F, .color = {0.25F, 0.5F, 1.0F}};
    sample.ids = {3, 70000};
    const DeepFragment fragment = numbers.FragmentOf(sample);
    EXPECT_EQ(fragment.objectID, 70000U);
    EXPECT_EQ(fragment.materialID, 3U);
    EXPECT_EQ(fragment.z, 5.0F);
    EXPECT_EQ(fragment.alpha, 0.5F);
    EXPECT_EQ(fragment.color, sample.color);
}

TEST(DeepNumbers, FloatsAreTheNumbersThatTheirBitsStandFor) {
    for (const SampleType type : {SampleType::Float, SampleType::Half}) {
        const DeepNumbers numbers(File(SampleType::Unsigned32, type), 0, Pass());
        DeepSample sample;
        sample.ids = {std::bit_cast<std::uint32_t>(12.0F), 9};
        const DeepFragment fragment = numbers.FragmentOf(sample);
        EXPECT_EQ(fragment.materialID, 12U);
        EXPECT_EQ(fragment.objectID, 9U);
    }
}

TEST(DeepNumbers, WhatTheFileDoesntNumberIsNone) {
    DeepPass pass = Pass();
    pass.materialID.reset();
    const DeepNumbers numbers(File(SampleType::Unsigned32, SampleType::Unsigned32), 0, pass);
    DeepSample sample;
    sample.ids = {3, 4};
    EXPECT_EQ(numbers.FragmentOf(sample).materialID, 0U);
    EXPECT_EQ(numbers.FragmentOf(sample).objectID, 4U);
}

TEST(DeepNumbers, ChannelsOfOtherPartsDontCount) {
    const auto part = [](const std::string& name, SampleType type) {
        return descriptions::Part{
            .channels = Channels({"objectID", "materialID"}, type), .name = name, .deep = true};
    };
    const Description file = descriptions::File(
        std::vector{part("a", SampleType::Float), part("b", SampleType::Unsigned32)});
    DeepSample sample;
    sample.ids = {3, 4};
    EXPECT_EQ(DeepNumbers(file, 1, Pass()).FragmentOf(sample).objectID, 4U);
}

}  // namespace
}  // namespace command

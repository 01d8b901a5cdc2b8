#include "command/layer_names.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace command {
namespace {

using testing::ElementsAre;

std::vector<std::string> LayersOf(const std::vector<std::string>& channels,
                                  const std::string& part = {}) {
    std::vector<Channel> list;
    list.reserve(channels.size());
    for (const std::string& name : channels)
        list.push_back({name});
    std::vector<std::string> layers;
    for (const Layer& layer : SortIntoLayers(list, 0, part)) {
        std::string text = layer.name + (layer.plain ? "*" : "") + ":";
        for (const Channel& channel : layer.channels)
            text += " " + channel.suffix;
        layers.push_back(text);
    }
    return layers;
}

TEST(LayerNames, TheLastComponentIsTheChannel) {
    EXPECT_THAT(LayersOf({"ViewLayer.Combined.A", "ViewLayer.Combined.R", "ViewLayer.Depth.Z"}),
                ElementsAre("ViewLayer.Combined: A R", "ViewLayer.Depth: Z"));
}

TEST(LayerNames, ColoursWithoutALayerMakeOneCalledByThem) {
    EXPECT_THAT(LayersOf({"A", "B", "G", "R"}), ElementsAre("RGBA*: A B G R"));
    EXPECT_THAT(LayersOf({"a", "b", "g", "r"}), ElementsAre("rgba*: a b g r"));
    EXPECT_THAT(LayersOf({"blue", "green", "red"}), ElementsAre("red green blue*: blue green red"));
    EXPECT_THAT(LayersOf({"A", "Y"}), ElementsAre("YA*: A Y"));
    EXPECT_THAT(LayersOf({"BY", "RY", "Y"}), ElementsAre("Y RY BY*: BY RY Y"));
}

TEST(LayerNames, OtherChannelsWithoutALayerAreOneEach) {
    EXPECT_THAT(LayersOf({"B", "G", "R", "Z", "objectID"}),
                ElementsAre("RGB*: B G R", "Z: Z", "objectID: objectID"));
}

TEST(LayerNames, InAFileOfSeveralPartsColoursAreCalledByTheirPart) {
    EXPECT_THAT(LayersOf({"B", "G", "R", "Z"}, "beauty"), ElementsAre("beauty*: B G R", "Z: Z"));
}

TEST(LayerNames, ADotAtTheEndsIsNoReasonToFail) {
    EXPECT_THAT(LayersOf({".R", "R."}), ElementsAre("R*: R", "R: "));
    EXPECT_THAT(LayersOf({"."}), ElementsAre(": "));
}

TEST(LayerNames, DoublesGetTheirPartInFront) {
    const std::vector<Part> parts{{.name = "left"}, {.name = "right"}, {.name = "depth"}};
    std::vector<Layer> layers{
        {"diffuse", false, 0, {}}, {"diffuse", false, 1, {}}, {"depth", false, 2, {}}};
    QualifyDoubles(layers, parts);
    EXPECT_EQ(layers[0].name, "left.diffuse");
    EXPECT_EQ(layers[1].name, "right.diffuse");
    EXPECT_EQ(layers[2].name, "depth");
}

TEST(ColorComponent, KnowsTheSuffixesOfRenderers) {
    EXPECT_EQ(ColorComponent("R"), Component::Red);
    EXPECT_EQ(ColorComponent("Green"), Component::Green);
    EXPECT_EQ(ColorComponent("b"), Component::Blue);
    EXPECT_EQ(ColorComponent("ALPHA"), Component::Alpha);
    EXPECT_EQ(ColorComponent("Y"), Component::Luminance);
    EXPECT_EQ(ColorComponent("X"), std::nullopt);
    EXPECT_EQ(ColorComponent(""), std::nullopt);
}

}  // namespace
}  // namespace command

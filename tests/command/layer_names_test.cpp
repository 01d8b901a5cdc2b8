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

TEST(LayerNames, AVectorWithoutALayerIsOneLayer) {
    EXPECT_THAT(LayersOf({"X", "Y", "Z"}), ElementsAre("XYZ*: X Y Z"));
    EXPECT_THAT(LayersOf({"W", "X", "Y", "Z"}), ElementsAre("XYZW*: W X Y Z"));
    EXPECT_THAT(LayersOf({"x", "y"}), ElementsAre("xy*: x y"));
    EXPECT_THAT(LayersOf({"U", "V"}), ElementsAre("UV*: U V"));
    EXPECT_THAT(LayersOf({"X", "Y", "Z"}, "normals"), ElementsAre("normals*: X Y Z"));
    EXPECT_THAT(LayersOf({"B", "G", "R", "X", "Y"}, "beauty"),
                ElementsAre("beauty*: B G R", "XY*: X Y"));
}

TEST(LayerNames, AVectorNeedsItsFirstTwoAxes) {
    EXPECT_THAT(LayersOf({"W", "X", "Z"}), ElementsAre("W: W", "X: X", "Z: Z"));
    EXPECT_THAT(LayersOf({"Y", "Z"}), ElementsAre("Y*: Y", "Z: Z"));
    EXPECT_THAT(LayersOf({"V"}), ElementsAre("V: V"));
}

TEST(LayerNames, AxesBehindAStemMakeALayerCalledByIt) {
    EXPECT_THAT(LayersOf({"A", "B", "G", "NX", "NY", "NZ", "R", "Z", "velX", "velY"}),
                ElementsAre("RGBA*: A B G R", "N: X Y Z", "Z: Z", "vel: X Y"));
    // Another channel's end is no axis.
    EXPECT_THAT(
        LayersOf({"NX", "NZ", "index", "indey", "density_Y"}),
        ElementsAre("NX: NX", "NZ: NZ", "index: index", "indey: indey", "density_Y: density_Y"));
}

TEST(LayerNames, ViewsAndBlanksAreOfTheName) {
    EXPECT_THAT(
        LayersOf({"View Layer.001.Shadow Catcher.left.R", "View Layer.001.Depth.left.Z"}),
        ElementsAre("View Layer.001.Shadow Catcher.left: R", "View Layer.001.Depth.left: Z"));
}

TEST(LayerNames, OneChannelWithoutASuffixIsALayer) {
    EXPECT_THAT(LayersOf({"B", "G", "ID", "R", "cputime", "materialID", "objectID"}),
                ElementsAre("RGB*: B G R", "ID: ID", "cputime: cputime", "materialID: materialID",
                            "objectID: objectID"));
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

TEST(AxisOf, KnowsVectorsAndTextureCoordinates) {
    EXPECT_EQ(AxisOf("X"), 0U);
    EXPECT_EQ(AxisOf("y"), 1U);
    EXPECT_EQ(AxisOf("Z"), 2U);
    EXPECT_EQ(AxisOf("W"), 3U);
    EXPECT_EQ(AxisOf("U"), 0U);
    EXPECT_EQ(AxisOf("v"), 1U);
    EXPECT_EQ(AxisOf("R"), std::nullopt);
    EXPECT_EQ(AxisOf(""), std::nullopt);
    EXPECT_EQ(AxisOf("XY"), std::nullopt);
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

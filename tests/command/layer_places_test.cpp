#include "command/layer_places.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/command/descriptions.h"

namespace command {
namespace {

using descriptions::Channels;
using testing::ElementsAre;

// "VIEWLAYER|PASS|VIEW" of every layer.
std::vector<std::string> PlacesOf(const Description& file) {
    std::vector<std::string> texts;
    const LayerPlaces places(file);
    for (const LayerPlace& each : places.All())
        texts.push_back(each.viewLayer + "|" + each.pass + "|" + each.view);
    return texts;
}

std::vector<std::string> PlacesOfChannels(const std::vector<std::string>& channels) {
    return PlacesOf(descriptions::File({.channels = Channels(channels)}));
}

const std::vector<std::string> twoViews{"left", "right"};

TEST(LayerPlaces, ViewLayersStandInFront) {
    EXPECT_THAT(PlacesOfChannels({"Back.Combined.R", "Back.Depth.Z", "Front.DiffDir.R"}),
                ElementsAre("Back|Combined|", "Back|Depth|", "Front|DiffDir|"));
}

TEST(LayerPlaces, TheNameOfAViewLayerMayHoldBlanksAndDots) {
    EXPECT_THAT(PlacesOfChannels({"View Layer.001.Combined.R", "View Layer.001.my value.X",
                                  "View Layer.Combined.R", "View Layer.my.value.X"}),
                ElementsAre("View Layer.001|Combined|", "View Layer.001|my value|",
                            "View Layer|Combined|", "View Layer|my.value|"));
}

TEST(LayerPlaces, ANameOfNoKnownPassIsNoViewLayer) {
    EXPECT_THAT(PlacesOfChannels({"R", "G", "B", "effects.dust.R", "diffuse_direct.R"}),
                ElementsAre("|RGB|", "|effects.dust|", "|diffuse_direct|"));
}

TEST(LayerPlaces, CryptomattesTellAViewLayerToo) {
    EXPECT_THAT(PlacesOfChannels({"Set.CryptoObject00.r", "Set.own.R"}),
                ElementsAre("Set|CryptoObject00|", "Set|own|"));
}

TEST(LayerPlaces, ViewsStandBehind) {
    EXPECT_THAT(PlacesOfChannels({"V.Combined.left.R", "V.Combined.right.R", "V.Mist.right.Z"}),
                ElementsAre("V|Combined|left", "V|Combined|right", "V|Mist|right"));
}

TEST(LayerPlaces, TheFileSaysWhichViewsItHas) {
    const Description file = descriptions::File(
        {.channels = Channels({"R", "G", "B", "N.X", "N.far.X", "far.R", "N.left.X"}),
         .attributes = {{"multiView", std::vector<std::string>{"near", "far"}}}});
    EXPECT_THAT(PlacesOf(file),
                ElementsAre("|RGB|near", "|N|near", "|N|far", "||far", "|N.left|near"));
}

TEST(LayerPlaces, APartMayBeOfAView) {
    const Description file = descriptions::File(
        {{.channels = Channels({"R", "G", "B"}),
          .name = "rgba.left",
          .attributes = {{"view", std::string("left")}, {"multiView", twoViews}}},
         {.channels = Channels({"depth.Z"}),
          .name = "data",
          .attributes = {{"view", std::string("right")}}}});
    EXPECT_THAT(PlacesOf(file), ElementsAre("|rgba|left", "|depth|right"));
}

TEST(LayerPlaces, APartOfOneChannelIsCalledByThePart) {
    const Description file = descriptions::File({{.channels = Channels({"R", "G"}), .name = "rgb"},
                                                 {.channels = Channels({"Z"}), .name = "mist"},
                                                 {.channels = Channels({"AO.Y"}), .name = "x"}});
    EXPECT_THAT(PlacesOf(file), ElementsAre("|rgb|", "|mist|", "|AO|"));
}

TEST(LayerPlaces, TellsOfNamesWithoutALayer) {
    const LayerPlaces places(
        descriptions::File({.channels = Channels({"Front.Combined.R", "Front.Combined.G"})}));
    EXPECT_EQ(places.PlaceOf("Front.CryptoObject"), (LayerPlace{"Front", "CryptoObject", ""}));
    EXPECT_EQ(places.PlaceOf("crypto_object"), (LayerPlace{"", "crypto_object", ""}));
    EXPECT_EQ(places.PlaceOf("."), (LayerPlace{"", ".", ""}));
    EXPECT_EQ(places.PlaceOf(""), (LayerPlace{"", "", ""}));
}

}  // namespace
}  // namespace command

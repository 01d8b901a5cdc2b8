#include "command/beauty.h"

#include <gtest/gtest.h>

#include "command/failure.h"
#include "command/layer_names.h"
#include "tests/command/fault_text.h"

namespace command {
namespace {

struct PartChannels {
    std::string name;
    std::vector<std::string> channels;
    bool deep = false;
};

Description FileOfParts(const std::vector<PartChannels>& parts) {
    Description file;
    file.path = "a.exr";
    for (const PartChannels& each : parts) {
        std::vector<Channel> channels;
        for (const std::string& name : each.channels)
            channels.push_back({name});
        for (Layer& layer :
             SortIntoLayers(channels, file.parts.size(), parts.size() > 1 ? each.name : "")) {
            file.layers.push_back(layer);
        }
        file.parts.push_back({.name = each.name, .deep = each.deep});
    }
    QualifyDoubles(file.layers, file.parts);
    return file;
}

Description File(const std::vector<std::string>& channels) {
    return FileOfParts({{"", channels}});
}

// "LAYER: red green blue alpha".
std::string Chosen(const Description& file, const std::string& wanted = {}) {
    const Beauty beauty = ChooseBeauty(file, wanted);
    return file.layers[beauty.layer].name + ": " + beauty.red + " " + beauty.green + " " +
           beauty.blue + " " + beauty.alpha;
}

std::string BeautyComplaint(const Description& file, const std::string& wanted = {}) {
    return FaultText<InputError>([&] { ChooseBeauty(file, wanted); });
}

TEST(Beauty, ColoursWithoutALayerNameGoFirst) {
    const Description file = File({"A", "B", "G", "R", "Combined.B", "Combined.G", "Combined.R"});
    EXPECT_EQ(Chosen(file), "RGBA: R G B A");
    EXPECT_EQ(ChooseBeauty(file).why, "its channels have no layer name");
}

TEST(Beauty, SuffixesMayBeOfAnyCaseOrSpeltOut) {
    EXPECT_EQ(Chosen(File({"a", "b", "g", "r"})), "rgba: r g b a");
    EXPECT_EQ(Chosen(File({"x.alpha", "x.blue", "x.green", "x.red"})),
              "x: x.red x.green x.blue x.alpha");
}

TEST(Beauty, TheFirstViewLayersCombinedComesBeforeTheComposite) {
    const Description file =
        File({"Composite.Combined.B", "Composite.Combined.G", "Composite.Combined.R",
              "Front.Combined.B", "Front.Combined.G", "Front.Combined.R", "Front.DiffCol.B",
              "Front.DiffCol.G", "Front.DiffCol.R"});
    EXPECT_EQ(Chosen(file), "Front.Combined: Front.Combined.R Front.Combined.G Front.Combined.B ");
    EXPECT_EQ(ChooseBeauty(file).why, "the renderer calls its picture so");
}

TEST(Beauty, TheCompositeIsTakenWhereItIsAlone) {
    EXPECT_EQ(
        Chosen(File({"A.AO.B", "A.AO.G", "A.AO.R", "Composite.Combined.B", "Composite.Combined.G",
                     "Composite.Combined.R"})),
        "Composite.Combined: Composite.Combined.R Composite.Combined.G Composite.Combined.B ");
}

TEST(Beauty, LightGroupsOfItAreNotIt) {
    EXPECT_EQ(Chosen(File({"V.Combined_fill.B", "V.Combined_fill.G", "V.Combined_fill.R",
                           "V.Combined.B", "V.Combined.G", "V.Combined.R"})),
              "V.Combined: V.Combined.R V.Combined.G V.Combined.B ");
}

TEST(Beauty, TheLeftViewOfAStereoPictureIsTaken) {
    EXPECT_EQ(Chosen(File({"V.Combined.left.B", "V.Combined.left.G", "V.Combined.left.R",
                           "V.Combined.right.B", "V.Combined.right.G", "V.Combined.right.R"})),
              "V.Combined.left: V.Combined.left.R V.Combined.left.G V.Combined.left.B ");
}

TEST(Beauty, ANamedBeautyComesBeforeTheFirstLayer) {
    EXPECT_EQ(
        Chosen(File({"albedo.B", "albedo.G", "albedo.R", "Beauty.B", "Beauty.G", "Beauty.R"})),
        "Beauty: Beauty.R Beauty.G Beauty.B ");
}

TEST(Beauty, OtherwiseItIsTheFirstLayerWithColoursThatIsNoCryptomatte) {
    const Description file = File({"crypto_object.B", "crypto_object.G", "crypto_object.R",
                                   "diffuse.B", "diffuse.G", "diffuse.R", "Z"});
    EXPECT_EQ(Chosen(file), "diffuse: diffuse.R diffuse.G diffuse.B ");
    EXPECT_EQ(ChooseBeauty(file).why, "it is the first layer with colours");
}

TEST(Beauty, APartOfTheRightNameGoesBeforeAnEarlierOne) {
    EXPECT_EQ(Chosen(FileOfParts({{"albedo", {"B", "G", "R"}}, {"beauty", {"A", "B", "G", "R"}}})),
              "beauty: R G B A");
    EXPECT_EQ(Chosen(FileOfParts({{"one", {"B", "G", "R"}}, {"two", {"B", "G", "R"}}})),
              "one: R G B ");
}

TEST(Beauty, AFlatPartGoesBeforeADeepOneThatFitsAsWell) {
    EXPECT_EQ(
        Chosen(FileOfParts({{"deep", {"A", "B", "G", "R", "Z"}, true}, {"flat", {"B", "G", "R"}}})),
        "flat: R G B ");
    EXPECT_EQ(Chosen(FileOfParts({{"", {"A", "B", "G", "R", "Z"}, true}})), "RGBA: R G B A");
}

TEST(Beauty, ADeepPartThatFitsBetterGoesBeforeAFlatOne) {
    EXPECT_EQ(Chosen(FileOfParts(
                  {{"flat", {"x.B", "x.G", "x.R"}}, {"beauty", {"A", "B", "G", "R", "Z"}, true}})),
              "beauty: R G B A");
}

TEST(Beauty, GreyIsOneChannelThreeTimes) {
    EXPECT_EQ(Chosen(File({"Y"})), "Y: Y Y Y ");
    EXPECT_EQ(Chosen(File({"A", "Y"})), "YA: Y Y Y A");
    EXPECT_EQ(Chosen(File({"Z"})), "Z: Z Z Z ");
    EXPECT_EQ(Chosen(File({"A"})), "A: A A A ");
    EXPECT_TRUE(ChooseBeauty(File({"Y"})).IsGrey());
    EXPECT_FALSE(ChooseBeauty(File({"Y"})).lumaChroma);
}

TEST(Beauty, LuminanceAndChromaAreToldApart) {
    const Beauty beauty = ChooseBeauty(File({"BY", "RY", "Y"}));
    EXPECT_TRUE(beauty.lumaChroma);
    EXPECT_EQ(beauty.alpha, "");
}

TEST(Beauty, TwoColoursLackTheThird) {
    EXPECT_EQ(Chosen(File({"G", "R"})), "RG: R G  ");
}

TEST(Beauty, ALayerIsWantedByItsWholeNameOrATailOfIt) {
    const Description file =
        File({"V.Combined.B", "V.Combined.G", "V.Combined.R", "V.AO.B", "V.AO.G", "V.AO.R",
              "V.Depth.Z", "V.Normal.X", "V.Normal.Y", "V.Normal.Z"});
    EXPECT_EQ(Chosen(file, "V.AO"), "V.AO: V.AO.R V.AO.G V.AO.B ");
    EXPECT_EQ(Chosen(file, "AO"), "V.AO: V.AO.R V.AO.G V.AO.B ");
    EXPECT_EQ(Chosen(file, "v.ao"), "V.AO: V.AO.R V.AO.G V.AO.B ");
    EXPECT_EQ(Chosen(file, "ao"), "V.AO: V.AO.R V.AO.G V.AO.B ");
    EXPECT_EQ(Chosen(file, "Depth"), "V.Depth: V.Depth.Z V.Depth.Z V.Depth.Z ");
    EXPECT_EQ(Chosen(file, "Normal"), "V.Normal: V.Normal.X V.Normal.Y V.Normal.Z ");
    EXPECT_EQ(ChooseBeauty(file, "AO").why, "--beauty names it");
}

TEST(Beauty, CaseDecidesBetweenNamesThatDifferByIt) {
    const Description file = File({"ao.B", "ao.G", "ao.R", "AO.B", "AO.G", "AO.R"});
    EXPECT_EQ(Chosen(file, "ao"), "ao: ao.R ao.G ao.B ");
    EXPECT_EQ(Chosen(file, "AO"), "AO: AO.R AO.G AO.B ");
    EXPECT_EQ(BeautyComplaint(file, "Ao"),
              "a.exr: --beauty Ao fits several layers: ao, AO; give one of these names");
}

TEST(Beauty, ATailThatFitsSeveralLayersIsRefused) {
    EXPECT_EQ(BeautyComplaint(File({"A.C.R", "B.C.R"}), "C"),
              "a.exr: --beauty C fits several layers: A.C, B.C; give one of these names");
}

TEST(Beauty, HalfAComponentIsNoTail) {
    EXPECT_EQ(BeautyComplaint(File({"V.Combined.R"}), "bined"),
              "a.exr: there is no layer \"bined\"; the layers are V.Combined");
}

TEST(Beauty, AnUnknownLayerTellsThoseThatAreThere) {
    std::vector<std::string> channels;
    for (int i = 10; i < 24; ++i)
        channels.push_back("L" + std::to_string(i) + ".R");
    EXPECT_EQ(BeautyComplaint(File(channels), "x"),
              "a.exr: there is no layer \"x\"; the layers are L10, L11, L12, L13, L14, L15, L16, "
              "L17, L18, L19, L20, L21 and 2 more");
}

TEST(Beauty, ALayerWithoutColoursCantBeWanted) {
    EXPECT_EQ(BeautyComplaint(File({"m.one", "m.two", "m.three"}), "m"),
              "a.exr: layer \"m\" has no colour channels; choose another with --beauty: m");
}

TEST(Beauty, AFileWithoutAPictureSaysSo) {
    EXPECT_EQ(BeautyComplaint(File({"Z", "N.X", "N.Y", "N.Z"})),
              "a.exr: no layer looks like the picture; choose one with --beauty: Z, N");
    EXPECT_EQ(BeautyComplaint(File(std::vector<std::string>())), "a.exr: the file has no channels");
}

}  // namespace
}  // namespace command

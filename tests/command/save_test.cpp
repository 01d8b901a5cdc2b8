// Whole runs over render files: what stands in the documents, and what the user is told.
#include "command/save.h"

#include <gmock/gmock.h>

#include <map>

#include "command/cryptomatte_id.h"
#include "command/failure.h"
#include "command/run.h"
#include "command/temporary_folder.h"
#include "tests/command/captured_streams.h"
#include "tests/command/document_layers.h"
#include "tests/command/pass_samples.h"
#include "tests/command/temporary_place.h"
#include "tests/command/test_folder.h"
#include "tests/documents/section_walker.h"

namespace command {
namespace {

using document_layers::LayersOf;
using document_layers::Named;
using document_layers::Samples;
using document_layers::Words;
using pass_samples::Always;
using pass_samples::cubeID;
using pass_samples::floorID;
using pass_samples::Only;
using pass_samples::Sample;
using pass_samples::sphereID;
using psdfile::WalkedDocument;
using psdfile::WalkedLayer;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

class SaveTest : public FolderTest {
  protected:
    // Saves a.exr in the host's linear light and 8 bits.
    int Save(Words words, const std::string& input = "a.exr") {
        words.insert(words.begin(),
                     {"save", PathOf(input), "--gamma", gamma, "--set", "bitDepth=8"});
        const CapturedStream outStream;
        const CapturedStream errStream;
        const int status = command::Run(words, outStream.Get(), errStream.Get());
        out = outStream.Text();
        err = errStream.Text();
        return status;
    }
    WalkedDocument Document(const std::string& name = "a.psd") const {
        return psdfile::WalkDocument(Bytes(name), false);
    }
    std::string Scene(const std::string& members) const {
        return Write("scene.json", R"({"veltrane": 1, )" + members + "}");
    }

    std::string gamma = "off";
    std::string out;
    std::string err;
};

Sample Still() {
    return Sample(4, 1).Picture(1.0);
}

// The left half of the frame is of the first id, the right one of the second.
pass_samples::Ranks Halves(std::uint32_t left, std::uint32_t right) {
    return Only([=](int x, int) { return x < 2 ? left : right; });
}

Sample TwoObjects() {
    return Still().Matte("CryptoObject", {{"Cube", cubeID}, {"Sphere", sphereID}},
                         Halves(cubeID, sphereID));
}

TEST_F(SaveTest, ElementsAreLayersUnderTheirNames) {
    Write("a.exr", Still().Color("DiffDir", 1, 0, 0.2).Color("Other", 0, 1, 0).Bytes());
    ASSERT_EQ(Save({"--element", "Other:visible=false"}), exitSaved) << err;
    EXPECT_EQ(err, "");
    const WalkedDocument document = Document();
    EXPECT_THAT(LayersOf(document),
                testing::UnorderedElementsAre("Render", testing::StartsWith("DiffDir"), "Other*"));
    EXPECT_EQ(Samples(document, "DiffDir", 0), (std::vector<int>(4, 255)));
    EXPECT_EQ(Samples(document, "DiffDir", 2), (std::vector<int>(4, 51)));
}

TEST_F(SaveTest, AllMakesMattesOfObjectsAndMaterials) {
    Write("a.exr",
          TwoObjects().Matte("CryptoMaterial", {{"Glass", floorID}}, Halves(floorID, 0)).Bytes());
    ASSERT_EQ(Save({}), exitSaved) << err;
    EXPECT_THAT(LayersOf(Document()), ElementsAre("Render"));
    ASSERT_EQ(Save({"--all"}), exitSaved) << err;
    EXPECT_EQ(err, "");
    const WalkedDocument document = Document();
    const Words layers = LayersOf(document);
    EXPECT_THAT(layers, testing::IsSupersetOf(
                            {"Material IDs", "Glass", "Objects", "Cube", "Sphere", "Render"}));
    EXPECT_EQ(Samples(document, "Cube", -1), (std::vector<int>{255, 255, 0, 0}));
    EXPECT_EQ(Samples(document, "Sphere", -1), (std::vector<int>{0, 0, 255, 255}));
    EXPECT_EQ(Samples(document, "Glass", -1), (std::vector<int>{255, 255, 0, 0}));
}

TEST_F(SaveTest, TheScenesLayersAndSelectionSetsAreMattes) {
    Write("a.exr", TwoObjects().Bytes());
    const std::string scene = Scene(R"("nodes": [{"name": "Cube"}, {"name": "Sphere"}],
        "layers": [{"name": "Furniture", "nodes": ["Cube"]},
                   {"name": "Hidden", "hidden": true, "nodes": ["Sphere"]}],
        "selectionSets": [{"name": "Round", "nodes": ["Sphere"]},
                          {"name": "Both", "nodes": ["Sphere", "Cube"]}])");
    ASSERT_EQ(Save({"--all", "--scene", scene}), exitSaved) << err;
    const WalkedDocument document = Document();
    EXPECT_EQ(Samples(document, "Furniture", -1), (std::vector<int>{255, 255, 0, 0}));
    EXPECT_EQ(Samples(document, "Round", -1), (std::vector<int>{0, 0, 255, 255}));
    EXPECT_EQ(Samples(document, "Both", -1), (std::vector<int>{255, 255, 255, 255}));
    EXPECT_THAT(LayersOf(document), testing::Not(testing::Contains(StartsWith("Hidden"))));
    ASSERT_EQ(Save({"--all", "--scene", scene, "--set", "outputNamedSelectionSets=no"}), exitSaved);
    EXPECT_THAT(LayersOf(Document()), testing::Not(testing::Contains("Round")));
}

TEST_F(SaveTest, IntegerIdsAreMattesByTheirNumbers) {
    Write("a.exr", Still()
                       .Unsigned("objectID", [](int x, int) { return x; })
                       .Unsigned("materialID", [](int x, int) { return x == 3 ? 9 : 0; })
                       .Bytes());
    ASSERT_EQ(Save({"--all"}), exitSaved) << err;
    const WalkedDocument document = Document();
    EXPECT_EQ(Samples(document, "Object ID: 2", -1), (std::vector<int>{0, 0, 255, 0}));
    EXPECT_EQ(Samples(document, "Material ID: 9", -1), (std::vector<int>{0, 0, 0, 255}));
    EXPECT_THAT(LayersOf(document), testing::IsSupersetOf({"Object ID: 1", "Object ID: 3"}));
}

TEST_F(SaveTest, ADeepFileHasMattesToo) {
    Sample sample = Sample(2, 1);
    for (const char* channel : {"R", "G", "B", "A", "Z"})
        sample.Half(channel, Always(1));
    sample.Unsigned("objectID", [](int x, int) { return 5 + x; });
    sample.GetPart().deep = true;
    Write("a.exr", sample.Bytes());
    ASSERT_EQ(Save({"--all"}), exitSaved) << err;
    const WalkedDocument document = Document();
    EXPECT_EQ(Samples(document, "Object ID: 5", -1), (std::vector<int>{255, 0}));
    EXPECT_EQ(Samples(document, "Object ID: 6", -1), (std::vector<int>{0, 255}));
}

// The picture's own channels and the frame buffer's are the same pixels; the renderer shows in its
// elements, whose alpha is the picture's.
TEST_F(SaveTest, VRaysFilesAreRecognised) {
    Write("a.exr", Sample(4, 1)
                       .Half("R", Always(0.2))
                       .Half("G", Always(0.2))
                       .Half("B", Always(0.2))
                       .Half("A", [](int x, int) { return x < 2 ? 1.0 : 0.2; })
                       .Color("VRayReflection", 0.2, 0.2, 0.2)
                       .Color("unheard of", 0, 0.2, 0)
                       .Bytes());
    const auto alphaOfReflection = [&](const std::string& renderer) {
        EXPECT_EQ(Save({"--renderer", renderer, "--element", "VRayReflection:transparency=true"}),
                  exitSaved)
            << err;
        EXPECT_EQ(err, "");
        const WalkedDocument document = Document();
        EXPECT_EQ(Samples(document, "Render", 0), (std::vector<int>(4, 51))) << renderer;
        EXPECT_EQ(Samples(document, "unheard of", 1), (std::vector<int>(4, 51))) << renderer;
        EXPECT_EQ(document.layers.size(), 3U) << renderer;
        return Samples(document, "VRayReflection", -1);
    };
    EXPECT_EQ(alphaOfReflection("none"), (std::vector<int>(4, 255)));
    EXPECT_EQ(alphaOfReflection("vray"), (std::vector<int>{255, 255, 51, 51}));
    EXPECT_EQ(alphaOfReflection("auto"), (std::vector<int>{255, 255, 51, 51}));
}

TEST_F(SaveTest, VRaysPassesOfAnotherRendererAreLayersToo) {
    Write("a.exr", Still().Color("Emit", 1, 0, 0).Color("mine", 0, 1, 0).Bytes());
    ASSERT_EQ(Save({"--renderer", "vray"}), exitSaved) << err;
    EXPECT_EQ(Samples(Document(), "Emit", 0), (std::vector<int>(4, 255)));
    EXPECT_EQ(Samples(Document(), "mine", 1), (std::vector<int>(4, 255)));
    EXPECT_EQ(Document().layers.size(), 3U);
}

TEST_F(SaveTest, AnElementOfVRaysThatIsOffDoesntShowThePixelsOfAnother) {
    Write("a.exr",
          Still().Color("VRayReflection", 1, 0, 0).Color("VRayReflection_2", 0, 1, 0).Bytes());
    const std::string scene =
        Scene(R"("elements": [{"name": "VRayReflection", "enabled": false}])");
    ASSERT_EQ(Save({"--scene", scene}), exitSaved) << err;
    const WalkedDocument document = Document();
    EXPECT_EQ(document.layers.size(), 2U);
    EXPECT_EQ(Samples(document, "VRayReflection_2", 1), (std::vector<int>(4, 255)));
}

TEST_F(SaveTest, AnElementMissingInALaterFrameIsMissingInItsDocument) {
    for (const char* renderer : {"none", "vray"}) {
        Write("s.0001.exr",
              Still().Color("VRayReflection", 1, 0, 0).Color("VRayReflection_2", 0, 1, 0).Bytes());
        Write("s.0002.exr", Still().Color("VRayReflection", 1, 0, 0).Bytes());
        Write("s.0003.exr", Still().Color("VRayReflection_2", 0, 1, 0).Bytes());
        ASSERT_EQ(Save({"--frames", "1-3", "--renderer", renderer}, "s.####.exr"), exitSaved)
            << err;
        EXPECT_EQ(Document("s.0001.psd").layers.size(), 3U) << renderer;
        EXPECT_THAT(LayersOf(Document("s.0002.psd")),
                    testing::UnorderedElementsAre("Render", StartsWith("VRayReflection")));
        EXPECT_EQ(Document("s.0003.psd").layers.size(), 2U) << renderer;
        EXPECT_EQ(Samples(Document("s.0003.psd"), "VRayReflection_2", 1),
                  (std::vector<int>(4, 255)));
    }
}

TEST_F(SaveTest, ObjectsOfEarlierFramesHaveNoPixelsLater) {
    Write("s1.exr", TwoObjects().Bytes());
    Write("s2.exr",
          Still().Matte("CryptoObject", {{"Sphere", sphereID}}, Halves(sphereID, 0)).Bytes());
    ASSERT_EQ(Save({"--frames", "1-2", "--all"}, "s#.exr"), exitSaved) << err;
    const WalkedDocument second = Document("s0002.psd");
    EXPECT_EQ(Samples(second, "Sphere", -1), (std::vector<int>{255, 255, 0, 0}));
    EXPECT_THAT(LayersOf(second), testing::Contains(StartsWith("Cube")))
        << "in an animation each document has the same layers";
}

TEST_F(SaveTest, ASceneMayNameWhatTheUserOverrules) {
    Write("a.exr", TwoObjects().Bytes());
    const std::string scene = Scene(R"("nodes": [{"name": "Cube"}],
        "effect": {"parameters": {"outputObjects": true, "objectList": ["Cube"],
                                  "objectsLayerSetName": "mine",
                                  "renderOutputLayerName": "picture"}})");
    ASSERT_EQ(Save({"--scene", scene, "--set", "renderOutputLayerName=user"}), exitSaved) << err;
    EXPECT_EQ(err, "");
    EXPECT_THAT(LayersOf(Document()), testing::UnorderedElementsAre("mine", "Cube", "user"));
}

TEST_F(SaveTest, TheScenesParametersWithoutEffectAreToldToo) {
    Write("a.exr", Still().Bytes());
    const std::string scene =
        Scene(R"("effect": {"parameters": {"legacyGammaAll": true, "usePS7Extensions": false}})");
    EXPECT_EQ(Save({"--scene", scene}), exitSaved);
    EXPECT_EQ(err, "veltrane: warning: " + scene +
                       ": effect.parameters.legacyGammaAll: it is kept for old scenes and changes "
                       "no document\n");
}

TEST_F(SaveTest, AWrongElementNameFailsTheFrameAndAWrongSettingTheRun) {
    Write("a.exr", Still().Color("DiffDir", 1, 1, 1).Bytes());
    EXPECT_EQ(Save({"--element", "DiffDri:visible=false"}), exitNotSaved);
    EXPECT_EQ(err, "veltrane: error: " + PathOf("a.exr") +
                       ": there is no render element \"DiffDri\"; the nearest are DiffDir\n");
    EXPECT_FALSE(Exists("a.psd"));
    EXPECT_EQ(Save({"--element", "DiffDir:visible=perhaps"}), exitUsage);
    EXPECT_EQ(err,
              "veltrane: error: --element visible: \"perhaps\" is not one of true, false, on, "
              "off, yes, no, 1, 0\n");
}

TEST_F(SaveTest, ASceneFileThatCantBeReadSavesNothing) {
    Write("a.exr", Still().Bytes());
    EXPECT_EQ(Save({"--scene", PathOf("no.json")}), exitNotSaved);
    EXPECT_EQ(err, "veltrane: error: " + PathOf("no.json") + ": no such file; check the path\n");
    EXPECT_FALSE(Exists("a.psd"));
}

TEST_F(SaveTest, WhatAPictureWithoutAlphaDoesntCoverIsTransparent) {
    Sample sample = Sample(4, 1).Half("R", Always(1)).Half("G", Always(1)).Half("B", Always(1));
    sample.GetPart().data = {1, 0, 2, 0};
    Write("a.exr", sample.Bytes());
    ASSERT_EQ(Save({"--set", "outputRenderAs=0"}), exitSaved) << err;
    EXPECT_EQ(Samples(Document(), "Render", -1), (std::vector<int>{0, 255, 255, 0}));
}

TEST_F(SaveTest, EveryRunStartsAnew) {
    Write("a.exr", TwoObjects().Bytes());
    ASSERT_EQ(Save({"--all"}), exitSaved) << err;
    const std::string first = Bytes("a.psd");
    Write("b.exr", Still().Color("x", 1, 1, 1).Bytes());
    ASSERT_EQ(Save({"--renderer", "vray"}, "b.exr"), exitSaved) << err;
    ASSERT_EQ(Save({"--all"}), exitSaved) << err;
    EXPECT_EQ(Bytes("a.psd"), first);
}

TEST_F(SaveTest, PassesOfAnotherViewLayerAreHidden) {
    Write("a.exr", Sample(4, 1)
                       .Color("ViewLayer.Combined", 1, 1, 1)
                       .Color("ViewLayer.Emit", 1, 0, 0)
                       .Color("Back.Combined", 0, 0, 1)
                       .Color("Back.Emit", 0, 1, 0)
                       .Bytes());
    ASSERT_EQ(Save({"--beauty", "ViewLayer.Combined"}), exitSaved) << err;
    const WalkedDocument document = Document();
    std::vector<bool> hidden;
    for (const WalkedLayer& layer : document.layers) {
        if (layer.name == "Emit") hidden.push_back((layer.flags & 2) != 0);
    }
    EXPECT_THAT(hidden, testing::UnorderedElementsAre(true, false));
}

TEST_F(SaveTest, MoreChannelsThanReadersTakeAreAWarning) {
    std::map<std::string, std::uint32_t> names;
    for (int i = 0; i < 60; ++i)
        names["o" + std::to_string(i)] = 0x11000000U + static_cast<std::uint32_t>(i);
    Sample still(60, 1);
    still.Picture(1.0).Matte("CryptoObject", {names.begin(), names.end()},
                             Only([](int x, int) { return 0x11000000U + unsigned(x); }));
    Write("a.exr", still.Bytes());
    ASSERT_EQ(Save({"--all", "--set", "outputObjectsAs=0"}), exitSaved) << err;
    EXPECT_THAT(err, HasSubstr("a.psd: it has 64 channels, and readers take 56 at most; make "
                               "mattes layers in place of channels, such as --set "
                               "outputObjectsAs=1\n"));
    ASSERT_EQ(Save({"--all"}), exitSaved);
    EXPECT_EQ(err, "");
}

TEST_F(SaveTest, IdsThatNoManifestNamesAreMattesByTheirDigits) {
    Write("a.exr",
          Still().Matte("CryptoObject", {{"Cube", cubeID}}, Halves(cubeID, sphereID)).Bytes());
    ASSERT_EQ(Save({"--all"}), exitSaved) << err;
    EXPECT_THAT(err, HasSubstr(": 1 ids of Cryptomatte have no name in its manifest; their mattes "
                               "are called by the ids\n"));
    EXPECT_THAT(LayersOf(Document()), testing::IsSupersetOf({"Cube", HexText(sphereID).c_str()}));
}

TEST_F(SaveTest, MaterialNumbersWithoutRoomAreAWarning) {
    Write("a.exr",
          Still().Float("IndexMA.X", [](int x, int) { return x < 2 ? 3.0 : 300.0; }).Bytes());
    ASSERT_EQ(Save({"--all"}), exitSaved) << err;
    EXPECT_THAT(err, HasSubstr(": material IDs above 255 have no matte; the largest is 300\n"));
}

TEST_F(SaveTest, AWildcardThatFitsNothingIsAWarning) {
    Write("a.exr", Still().Color("Other", 0, 1, 0).Bytes());
    ASSERT_EQ(Save({"--element", "Zz*:visible=false"}), exitSaved) << err;
    EXPECT_THAT(err, HasSubstr(": no render element fits \"Zz*\"\n"));
}

// A look of one dimension that turns light into dark, and the table of its layer.
constexpr const char* negative = "LUT_1D_SIZE 2\n1 1 1\n0 0 0\n";

TEST_F(SaveTest, ALookIsALayerOnTopAndThePixelsAreWithoutIt) {
    Write("a.exr", Sample(2, 1).Picture(0.2).Half("A", Always(1)).Bytes());
    const std::string look = Write("look.cube", negative);
    ASSERT_EQ(Save({"--lut", look}), exitSaved) << err;
    EXPECT_EQ(err, "");
    const WalkedDocument document = Document();
    EXPECT_THAT(LayersOf(document), ElementsAre("Color Corrections", "Render"));
    EXPECT_EQ(Samples(document, "Render", 0), (std::vector<int>{51, 51}));
    EXPECT_EQ(Named(document, "Color Corrections").blocks.count("clrL"), 1U);
}

TEST_F(SaveTest, ALookMayBeInThePixels) {
    Write("a.exr",
          Sample(2, 1).Picture(0.2).Half("A", Always(1)).Color("DiffDir", 0.4, 0.4, 0.4).Bytes());
    const std::string look = Write("look.cube", negative);
    ASSERT_EQ(Save({"--lut", look, "--set", "colorCorrectConfig=0"}), exitSaved) << err;
    EXPECT_EQ(err, "");
    EXPECT_EQ(Samples(Document(), "Render", 0), (std::vector<int>{204, 204}));
    EXPECT_EQ(Samples(Document(), "DiffDir", 0), (std::vector<int>{102, 102}));
    ASSERT_EQ(Save({"--lut", look, "--set", "colorCorrectConfig=2"}), exitSaved) << err;
    EXPECT_EQ(Samples(Document(), "Render", 0), (std::vector<int>{204, 204}));
    EXPECT_EQ(Samples(Document(), "DiffDir", 0), (std::vector<int>{153, 153}));
}

TEST_F(SaveTest, ALookInThePixelsSeesColorsAboveOne) {
    Write("a.exr", Sample(1, 1).Picture(3.0).Half("A", Always(1)).Bytes());
    const std::string look =
        Write("look.cube", "DOMAIN_MAX 4 4 4\nLUT_1D_SIZE 2\n0 0 0\n0.8 0.8 0.8\n");
    ASSERT_EQ(Save({"--lut", look, "--set", "colorCorrectConfig=0"}), exitSaved) << err;
    EXPECT_EQ(Samples(Document(), "Render", 0), std::vector<int>{153});
}

TEST_F(SaveTest, ALookThatCantBeHandedOverIsInThePixelsWithAWarning) {
    Write("a.0001.exr", Sample(1, 1).Picture(0.2).Half("A", Always(1)).Bytes());
    Write("a.0002.exr", Sample(1, 1).Picture(0.4).Half("A", Always(1)).Bytes());
    const std::string look = Write("look.cube", negative);
    const TemporaryPlace nowhere("/nowhere");
    ASSERT_EQ(Save({"--lut", look, "--frames", "1-2"}, "a.####.exr"), exitSaved) << err;
    EXPECT_EQ(err, "veltrane: warning: " + PathOf("a.0001.psd") + ": the look of " + look +
                       " is in the pixels and no layer: no folder for its table could be made in " +
                       TemporaryFolder().Fault() + "; set " + TemporaryPlace::variable +
                       " to a folder that can be written\n");
    EXPECT_THAT(LayersOf(Document("a.0002.psd")), ElementsAre("Render"));
    EXPECT_EQ(Samples(Document("a.0002.psd"), "Render", 0), std::vector<int>{153});
}

TEST_F(SaveTest, SettingsThatALookDoesNotGoWithAreToldOf) {
    Write("a.exr", Sample(1, 1).Picture(0.2).Half("A", Always(1)).Bytes());
    const std::string look = Write("look.cube", negative);
    ASSERT_EQ(Save({"--lut", look, "--set", "vrayColorCorrections=off"}), exitSaved) << err;
    EXPECT_EQ(err, "veltrane: warning: --lut " + look +
                       ": the document is without it, since vrayColorCorrections is off\n");
    EXPECT_EQ(Samples(Document(), "Render", 0), std::vector<int>{51});
}

TEST_F(SaveTest, ALookForShownColorsIsALayerOverTheGammaInThePixels) {
    Write("a.exr", Sample(1, 1).Picture(0.2).Half("A", Always(1)).Bytes());
    const std::string look = Write("look.cube", negative);
    gamma = "2.2";
    ASSERT_EQ(Save({"--lut", look, "--set", "gammaCorrectConfig=2"}), exitSaved) << err;
    EXPECT_EQ(err, "");
    EXPECT_THAT(LayersOf(Document()), testing::UnorderedElementsAre("Color Corrections", "Render"));
    EXPECT_EQ(Samples(Document(), "Render", 0), std::vector<int>{123});
}

TEST_F(SaveTest, ALookInThePixelsTakesPassesAsTheyAre) {
    Write("a.exr", Sample(1, 1)
                       .Picture(0.125)
                       .Half("A", Always(0.25))
                       .Color("DiffCol", 0.25, 0.25, 0.25)
                       .Bytes());
    const std::string look = Write("look.cube", negative);
    ASSERT_EQ(Save({"--lut", look, "--set", "colorCorrectConfig=2"}), exitSaved) << err;
    EXPECT_EQ(Samples(Document(), "DiffCol", 0), std::vector<int>{191});
    // The picture's colours are 0.5 where they cover.
    EXPECT_EQ(Samples(Document(), "Render", 0), std::vector<int>{32});
}

TEST_F(SaveTest, ALookThatCantBeReadSavesNothing) {
    Write("a.exr", Still().Bytes());
    EXPECT_EQ(Save({"--lut", PathOf("no.cube")}), exitNotSaved);
    EXPECT_EQ(err, "veltrane: error: " + PathOf("no.cube") + ": no such file; check the path\n");
    EXPECT_FALSE(Exists("a.psd"));
}

TEST_F(SaveTest, ALookCostsNoLayerAndChangesNoOther) {
    Write("a.exr", TwoObjects()
                       .Half("A", [](int x, int) { return x * 0.25; })
                       .Color("DiffCol", 0.25, 0.5, 0.5)
                       .Color("DiffDir", 0.5, 0.25, 0.5)
                       .Color("Alpha", 0.75, 0.25, 0.5)
                       .Attribute("cycles.ViewLayer.samples", "32")
                       .Bytes());
    const std::string look = Write("look.cube", negative);
    ASSERT_EQ(Save({"--all", "--renderer", "none"}), exitSaved) << err;
    const std::string without = Bytes("a.psd");
    ASSERT_EQ(Save({"--all", "--lut", look, "--set", "vrayColorCorrections=off"}), exitSaved);
    EXPECT_EQ(Bytes("a.psd"), without);
}

class ShadowTest : public SaveTest {
  protected:
    // The alpha is 0, a quarter and so on.
    std::string Shadow(const std::string& name, int width = 4) const {
        return Write(
            name,
            Sample(width, 1).Picture(0).Half("A", [](int x, int) { return x * 0.25; }).Bytes());
    }
};

TEST_F(ShadowTest, TheAlphaOfAnImageIsTheMaskOfABlackFill) {
    Write("a.exr", Still().Bytes());
    ASSERT_EQ(Save({"--shadow", Shadow("s.exr")}), exitSaved) << err;
    EXPECT_EQ(err, "");
    const WalkedDocument document = Document();
    EXPECT_THAT(LayersOf(document), ElementsAre("Render", "Shadows"));
    EXPECT_EQ(Samples(document, "Shadows", -2), (std::vector<int>{0, 64, 128, 191}));
    ASSERT_EQ(Save({"--shadow", PathOf("s.exr"), "--set", "shadowPassLayerStyle=1"}), exitSaved);
    EXPECT_EQ(Samples(Document(), "Shadows", -1), (std::vector<int>{0, 64, 128, 191}));
}

TEST_F(ShadowTest, EachFrameOfASequenceHasItsOwn) {
    for (const char* name : {"a.0008.exr", "a.0009.exr"})
        Write(name, Still().Bytes());
    Shadow("s.0008.exr");
    Write("s.0009.exr", Sample(4, 1).Picture(0).Half("A", Always(1)).Bytes());
    ASSERT_EQ(Save({"--shadow", PathOf("s.####.exr"), "--frames", "8-9"}, "a.####.exr"), exitSaved)
        << err;
    EXPECT_EQ(Samples(Document("a.0008.psd"), "Shadows", -2), (std::vector<int>{0, 64, 128, 191}));
    EXPECT_EQ(Samples(Document("a.0009.psd"), "Shadows", -2), (std::vector<int>(4, 255)));
}

TEST_F(ShadowTest, OneThatIsMissingIsAnErrorOfItsFrameAlone) {
    for (const char* name : {"a.0008.exr", "a.0009.exr"})
        Write(name, Still().Bytes());
    Shadow("s.0009.exr");
    EXPECT_EQ(Save({"--shadow", PathOf("s.####.exr"), "--frames", "8-9"}, "a.####.exr"),
              exitNotSaved);
    EXPECT_EQ(err, "veltrane: error: " + PathOf("s.0008.exr") + ": no such file; check the path; " +
                       PathOf("a.0008.psd") + " is saved without its shadow layer\n");
    EXPECT_THAT(LayersOf(Document("a.0008.psd")), ElementsAre("Render"));
    EXPECT_THAT(LayersOf(Document("a.0009.psd")), ElementsAre("Render", "Shadows"));
    EXPECT_THAT(out, HasSubstr("saved " + PathOf("a.0009.psd")));
}

TEST_F(ShadowTest, OneOfAnotherSizeOrNoImageIsToldSo) {
    Write("a.exr", Still().Bytes());
    EXPECT_EQ(Save({"--shadow", Shadow("s.exr", 3)}), exitNotSaved);
    EXPECT_EQ(err, "veltrane: error: " + PathOf("s.exr") +
                       ": its size is 3x1 and the frame's 4x1; render it in the frame's size; " +
                       PathOf("a.psd") + " is saved without its shadow layer\n");
    EXPECT_EQ(Save({"--shadow", Write("s.txt", "text")}), exitNotSaved);
    EXPECT_THAT(err, HasSubstr(PathOf("s.txt") + ": not an image that can be read; give an "));
}

TEST_F(ShadowTest, OneWithoutAlphaIsBlackAllOverAndToldSo) {
    Write("a.exr", Still().Bytes());
    const std::string shadow = Write("s.exr", Sample(4, 1).Color("x", 0, 0, 0).Bytes());
    ASSERT_EQ(Save({"--shadow", shadow}), exitSaved) << err;
    EXPECT_EQ(err, "veltrane: warning: " + shadow +
                       ": it has no alpha, so it counts as opaque everywhere; give an image with "
                       "the shadow in its alpha\n");
    EXPECT_EQ(Samples(Document(), "Shadows", -2), (std::vector<int>(4, 255)));
}

TEST_F(ShadowTest, IsNamedOnce) {
    EXPECT_EQ(Save({"--shadow", "s.exr", "--set", "shadowPassSource=t.exr"}), exitUsage);
    EXPECT_EQ(err,
              "veltrane: error: --shadow and --set shadowPassSource both name the shadow pass; "
              "leave one of them\n");
}

}  // namespace
}  // namespace command

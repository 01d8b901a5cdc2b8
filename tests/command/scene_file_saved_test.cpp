// Scenes that the application saved, of every version of the effect's block, through the command:
// what their documents become.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "command/run.h"
#include "command/save.h"
#include "command/session.h"
#include "host/application.h"
#include "host/build_scene.h"
#include "host/capture_scene.h"
#include "host/scene_text_reader.h"
#include "host/scene_text_writer.h"
#include "plugin/entry.h"
#include "tests/command/captured_streams.h"
#include "tests/command/document_layers.h"
#include "tests/command/pass_samples.h"
#include "tests/command/test_folder.h"
#include "tests/host/scene_equality.h"
#include "tests/host/scene_page.h"

namespace command {
namespace {

using document_layers::LayersOf;
using document_layers::Named;
using document_layers::Samples;
using document_layers::Words;
using pass_samples::Sample;
using psdfile::WalkedDocument;
using testing::Contains;
using testing::ElementsAre;

class SavedSceneTest : public FolderTest {
  protected:
    int Save(const std::string& scene, Words words = {}) {
        words.insert(words.begin(), {"save", PathOf("a.exr"), "--gamma", "off", "--scene", scene});
        const CapturedStream outStream;
        const CapturedStream errStream;
        const int status = command::Run(words, outStream.Get(), errStream.Get());
        err = errStream.Text();
        return status;
    }
    WalkedDocument Saved(const std::string& version, const Words& words = {}) {
        Write("a.exr", Frame().Bytes());
        EXPECT_EQ(
            Save(VELTRANE_SOURCE_DIR "/tests/command/files/scene_of_version_" + version + ".json",
                 words),
            exitSaved)
            << err;
        EXPECT_EQ(err, "");
        return psdfile::WalkDocument(Bytes("a.psd"), false);
    }
    // The left half is Cube's, the right one Sphere's.
    static Sample Frame() {
        return Sample(4, 1)
            .Picture(1.0)
            .Color("DiffDir", 1, 0, 0.2)
            .Color("Other", 0, 1, 0)
            .Matte("CryptoObject",
                   {{"Cube", pass_samples::cubeID}, {"Sphere", pass_samples::sphereID}},
                   pass_samples::Only([](int x, int) {
                       return x < 2 ? pass_samples::cubeID : pass_samples::sphereID;
                   }));
    }

    std::string err;
};

TEST_F(SavedSceneTest, OfVersion101HasTheDepthThatWasSavedThen) {
    const WalkedDocument document = Saved("101", {"-o", PathOf("a.psd")});
    EXPECT_EQ(document.depth, 8);
    // Layers of a colour became cut-outs of the render, and all mattes are hidden.
    EXPECT_THAT(LayersOf(document),
                ElementsAre("Render", "Other*", "DiffDir", "Left*", "One*", "Object ID: 2*"));
    EXPECT_EQ(Samples(document, "Left", 0), (std::vector<int>{255, 255, 0, 0}));
    EXPECT_EQ(Samples(document, "Left", -1), (std::vector<int>{255, 255, 0, 0}));
    EXPECT_EQ(Samples(document, "Object ID: 2", -1), (std::vector<int>{0, 0, 255, 255}));
}

TEST_F(SavedSceneTest, OfVersion1HasNothingThatCameAfterIt) {
    const WalkedDocument document = Saved("1");
    EXPECT_EQ(document.depth, 16);
    EXPECT_THAT(LayersOf(document), ElementsAre("Render", "Other*", "DiffDir", "Left*", "Both*",
                                                "One*", "Object ID: 2*"));
}

TEST_F(SavedSceneTest, OfVersion2KeepsItsSetsAndCurvesAndHidesMattes) {
    EXPECT_THAT(LayersOf(Saved("2")),
                ElementsAre("Render", "Render Elements", "Curves", "Other*", "DiffDir", "Left*",
                            "Both*", "One*", "Object ID: 2*"));
}

TEST_F(SavedSceneTest, OfVersion3ShowsMattesAndKeepsItsOrder) {
    EXPECT_THAT(LayersOf(Saved("3")),
                ElementsAre("Render", "Render Elements", "Curves", "Other*", "DiffDir", "Left",
                            "Both", "One", "Object ID: 2"));
}

TEST_F(SavedSceneTest, OfVersion4IsSortedAsItSays) {
    EXPECT_THAT(LayersOf(Saved("4")), ElementsAre("Render", "Render Elements", "Curves", "DiffDir",
                                                  "Other*", "Left", "Both", "One", "Object ID: 2"));
}

TEST_F(SavedSceneTest, ElementsHaveTheirSavedSettings) {
    const WalkedDocument document = Saved("4");
    EXPECT_EQ(Named(document, "Other").blendKey, "scrn");
    EXPECT_EQ(Named(document, "DiffDir").blendKey, "lddg");
    const WalkedDocument changed = Saved("4", {"--element", "Other:blendingMode=Normal"});
    EXPECT_EQ(Named(changed, "Other").blendKey, "norm");
    EXPECT_THAT(LayersOf(changed), Contains("Other*"));
}

TEST_F(SavedSceneTest, SettingsByNameStandAboveIt) {
    const WalkedDocument document =
        Saved("101", {"-o", PathOf("a.psd"), "--set", "bitDepth=16", "--set", "outputNodeIDs=false",
                      "--set", "matteLayersVisible=true"});
    EXPECT_EQ(document.depth, 16);
    EXPECT_THAT(LayersOf(document), ElementsAre("Render", "Other*", "DiffDir", "Left"));
}

TEST_F(SavedSceneTest, ALayerThatAFrameLacksIsThereInTheNext) {
    Write("s.0001.exr", Frame().Bytes());
    Write("s.0002.exr", Sample(4, 1).Picture(1.0).Color("Sparks", 1, 0, 0).Bytes());
    const CapturedStream outStream;
    const CapturedStream errStream;
    ASSERT_EQ(
        command::Run({"save", PathOf("s.####.exr"), "--frames", "1-2", "--gamma", "off", "--scene",
                      VELTRANE_SOURCE_DIR "/tests/command/files/scene_of_version_3.json"},
                     outStream.Get(), errStream.Get()),
        exitSaved)
        << errStream.Text();
    const WalkedDocument second = psdfile::WalkDocument(Bytes("s.0002.psd"), false);
    EXPECT_EQ(Named(second, "Sparks").blendKey, "lddg");
    EXPECT_THAT(LayersOf(second), testing::Not(Contains("Other*")));
}

// The library in a new application.
void Start() {
    host::ResetApplication();
    plugin::Attach();
    for (int i = 0; i < LibNumberClasses(); ++i)
        host::App().classes.Add(LibClassDesc(i));
}

host::SceneDescription LoadedAndTaken(const host::SceneDescription& scene) {
    Start();
    host::CheckScene(scene, host::App().classes);
    host::BuildScene(scene);
    host::SceneDescription taken = host::CaptureScene();
    host::ResetApplication();
    return taken;
}

// What files didn't have when the effect's older versions were saved.
host::SceneRender AsFarAsOlderFilesGo(host::SceneRender render) {
    render.timeType.reset();
    render.numberBase.reset();
    render.effects.reset();
    render.draft.reset();
    render.renderer.reset();
    return render;
}

TEST(SavedScene, OfEveryVersionIsSavedAgainAsOneOfTheNewest) {
    for (const char* version : {"101", "1", "2", "3", "4"}) {
        const host::SceneDescription old = host::ReadSceneFile(
            std::string(VELTRANE_SOURCE_DIR "/tests/command/files/scene_of_version_") + version +
            ".json");
        const host::SceneDescription taken = LoadedAndTaken(old);
        EXPECT_TRUE(taken.nodes == old.nodes) << version;
        EXPECT_TRUE(taken.layers == old.layers) << version;
        EXPECT_TRUE(taken.selectionSets == old.selectionSets) << version;
        EXPECT_TRUE(taken.elements == old.elements) << version;
        EXPECT_TRUE(AsFarAsOlderFilesGo(taken.render) == old.render) << version;
        ASSERT_EQ(taken.objects.size(), 4U);
        const auto& block = std::get<host::SavedBlock>(taken.objects[3].references[0]);
        EXPECT_EQ(block.version, 4U) << version;
        EXPECT_GT(block.parameters.size(), 100U);

        const std::string written = host::WriteScene(taken);
        const host::SceneDescription read = host::ParseScene("a.json", written);
        EXPECT_TRUE(read == taken) << version;
        EXPECT_TRUE(LoadedAndTaken(read) == taken) << version;
        EXPECT_EQ(host::WriteScene(read), written) << version;
    }
}

TEST(SavedScene, EveryParameterThatTheFileHasComesBack) {
    const host::SceneDescription scene =
        host::ReadSceneFile(VELTRANE_SOURCE_DIR "/tests/command/files/scene_of_version_4.json");
    const host::SceneDescription taken = LoadedAndTaken(scene);
    for (std::size_t i = 0; i < scene.objects.size(); ++i) {
        const auto& before = std::get<host::SavedBlock>(scene.objects[i].references[0]).parameters;
        const auto& after = std::get<host::SavedBlock>(taken.objects[i].references[0]).parameters;
        EXPECT_EQ(taken.objects[i].references[1].index(), scene.objects[i].references[1].index());
        for (host::SavedParameter parameter : before) {
            // Layers of a colour are cut-outs of the render in every version.
            if (parameter.id == Session::IdOf("outputMtlIDsAs") && i == 3) parameter.values = {5};
            EXPECT_NE(std::find(after.begin(), after.end(), parameter), after.end())
                << i << " " << parameter.id;
        }
    }
}

TEST(SavedScene, OfThePageIsLoadedWithAllThatItHas) {
    host::SceneDescription scene = host::ParseScene("a.json", scene_page::Example(1));
    // What its effect wrote is none of this effect's chunks but the one that switches it off.
    scene.objects[1].chunks[0].chunks.clear();
    const host::SceneDescription taken = LoadedAndTaken(scene);
    EXPECT_TRUE(taken.objects[1].chunks == scene.objects[1].chunks);
    EXPECT_TRUE(taken.nodes == scene.nodes);
    EXPECT_TRUE(taken.layers == scene.layers);
    EXPECT_TRUE(taken.elements == scene.elements);
    EXPECT_TRUE(LoadedAndTaken(taken) == taken);
}

}  // namespace
}  // namespace command

#include "host/scene_text_writer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/input_error.h"
#include "host/scene_text_reader.h"
#include "tests/host/fault_text.h"
#include "tests/host/full_scene.h"
#include "tests/host/scene_equality.h"
#include "tests/host/scene_page.h"

namespace host {
namespace {

TEST(SceneTextWriter, WritesThePageAsItStandsThere) {
    const std::string page = scene_page::Example(1);
    EXPECT_EQ(WriteScene(ParseScene("a.json", page)), page);
}

TEST(SceneTextWriter, WhatIsWrittenReadsBackTheSame) {
    const SceneDescription scene = FullScene();
    const std::string text = WriteScene(scene);
    const SceneDescription read = ParseScene("a.json", text);
    EXPECT_TRUE(read.nodes == scene.nodes);
    EXPECT_TRUE(read.layers == scene.layers);
    EXPECT_TRUE(read.selectionSets == scene.selectionSets);
    EXPECT_TRUE(read.elements == scene.elements);
    EXPECT_TRUE(read.render == scene.render);
    EXPECT_TRUE(read.objects == scene.objects);
    EXPECT_EQ(read.effects, scene.effects);
    EXPECT_EQ(WriteScene(read), text);
}

TEST(SceneTextWriter, WhatPeopleWroteReadsBackTheSame) {
    const auto ignore = [](const JsonValue&, const FindNodes&) {};
    for (const std::string& text :
         {scene_page::Example(0),
          scene_page::FileText(VELTRANE_SOURCE_DIR "/examples/still.scene.json")}) {
        const SceneDescription scene = ParseScene("a.json", text, ignore);
        const std::string written = WriteScene(scene);
        EXPECT_TRUE(ParseScene("b.json", written) == scene);
        EXPECT_EQ(WriteScene(ParseScene("b.json", written)), written);
    }
}

TEST(SceneTextWriter, AnEmptySceneIsAFileToo) {
    EXPECT_EQ(WriteScene({}), "{\n  \"veltrane\": 2,\n  \"render\": {}\n}\n");
}

TEST(SceneTextWriter, LayersMayLieInEachOtherAsDeepAsTheyLike) {
    SceneDescription scene;
    for (std::size_t i = 0; i < 1000; ++i) {
        SceneLayerDescription& layer = scene.layers.emplace_back();
        layer.name = std::to_string(i);
        if (i > 0) layer.parent = i - 1;
    }
    EXPECT_TRUE(ParseScene("a.json", WriteScene(scene)) == scene);
}

TEST(SceneTextWriter, WhatNoFileCanHoldIsRefused) {
    SceneDescription scene;
    scene.path = "a.json";
    SavedChunk chunk;
    for (int i = 0; i < 130; ++i)
        chunk = SavedChunk{1, {}, {chunk}};
    scene.objects = {SavedSampleObject(1)};
    scene.objects[0].chunks = {chunk};
    EXPECT_EQ(FaultText<InputError>([&] { WriteScene(scene); }),
              "a.json: the scene's objects lie in each other too deep");
    scene.objects.clear();
    scene.nodes.emplace_back().properties = std::string(mostSceneBytes, 'x');
    EXPECT_EQ(FaultText<InputError>([&] { WriteScene(scene); }),
              "a.json: the scene is larger than 64 MB, which no file may be");
}

TEST(SceneTextWriter, WhatWouldNotBeReadIsNotWritten) {
    SceneDescription scene;
    scene.path = "a.json";
    for (Handle handle = 1; handle <= 250; ++handle) {
        SavedObject& effect = scene.objects.emplace_back();
        effect.handle = handle;
        effect.superClass = RENDER_EFFECT_CLASS_ID;
    }
    EXPECT_EQ(ParseScene("a.json", WriteScene(scene)).objects.size(), 250U);
    scene.objects.push_back(scene.objects[0]);
    EXPECT_EQ(FaultText<InputError>([&] { WriteScene(scene); }),
              "a.json: the scene has more than 250 effects, which no file may have");
    scene.objects.assign(50'001, SavedSampleObject(1));
    EXPECT_EQ(FaultText<InputError>([&] { WriteScene(scene); }),
              "a.json: the scene has more than 50000 objects, which no file may have");
    scene.objects.clear();
    scene.selectionSets.resize(50'001);
    EXPECT_EQ(FaultText<InputError>([&] { WriteScene(scene); }),
              "a.json: the scene has more than 50000 selection sets, which no file may have");
}

}  // namespace
}  // namespace host

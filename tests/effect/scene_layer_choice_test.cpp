#include "effect/scene_layer_choice.h"

#include <hold.h>
#include <maxheap.h>

#include <cstring>

#include "tests/effect/effect_fixture.h"
#include "tests/host/sample_objects.h"

namespace {

class SceneLayerChoice : public testing::Test {
  protected:
    // A chunk of the effect's class under the number 7.
    void AddChunk(const void* bytes, std::size_t length) {
        void* data = MAX_malloc(length);
        std::memcpy(data, bytes, length);
        layer.AddAppDataChunk(Class_ID(0x70068609, 0x1d5d297), 4240, 7, static_cast<DWORD>(length),
                              data);
    }
    const AppDataChunk* Chunk() {
        return layer.GetAppDataChunk(Class_ID(0x70068609, 0x1d5d297), 4240, 7);
    }

    SampleTarget layer;
};

TEST_F(SceneLayerChoice, OfALayerThatWasNeverTouchedIsOn) {
    EXPECT_TRUE(effect::IsSceneLayerOn(&layer, 7));
    EXPECT_TRUE(effect::IsSceneLayerOn(nullptr, 7));
}

TEST_F(SceneLayerChoice, IsKeptOnTheLayerAsFourBytes) {
    effect::SetSceneLayerOn(&layer, 7, false);
    EXPECT_FALSE(effect::IsSceneLayerOn(&layer, 7));
    ASSERT_NE(Chunk(), nullptr);
    ASSERT_EQ(Chunk()->length, 4U);
    EXPECT_EQ(std::memcmp(Chunk()->data, "\0\0\0\0", 4), 0);
    effect::SetSceneLayerOn(&layer, 7, true);
    EXPECT_TRUE(effect::IsSceneLayerOn(&layer, 7));
    const std::int32_t one = 1;
    EXPECT_EQ(std::memcmp(Chunk()->data, &one, 4), 0);
}

TEST_F(SceneLayerChoice, OfAnotherEffectIsItsOwn) {
    effect::SetSceneLayerOn(&layer, 7, false);
    EXPECT_TRUE(effect::IsSceneLayerOn(&layer, 8));
    effect::SetSceneLayerOn(&layer, 8, true);
    EXPECT_FALSE(effect::IsSceneLayerOn(&layer, 7));
}

TEST_F(SceneLayerChoice, AnyOtherValueThan0IsOn) {
    const std::int32_t value = -5;
    AddChunk(&value, sizeof value);
    EXPECT_TRUE(effect::IsSceneLayerOn(&layer, 7));
}

TEST_F(SceneLayerChoice, AChunkThatIsTooShortSaysNothing) {
    AddChunk("\0\0\0", 3);
    EXPECT_TRUE(effect::IsSceneLayerOn(&layer, 7));
}

TEST_F(SceneLayerChoice, OfNoLayerCantBeSet) {
    effect::SetSceneLayerOn(nullptr, 7, false);
    EXPECT_TRUE(effect::IsSceneLayerOn(nullptr, 7));
}

class ChoiceInAScene : public EffectTest {
  protected:
    static DWORD NumberOf(const effect::PSDOutput& output) {
        return static_cast<DWORD>(output.pblock->GetInt("sceneLayerAppDataChunkId"_param));
    }
};

TEST_F(ChoiceInAScene, ComesBackWithALayerWhoseDeletionIsUndone) {
    const DWORD number = NumberOf(*effect);
    effect::SetSceneLayerOn(&Host().scene.AddLayer(_M("Layer")), number, false);
    Host().undo.Clear();
    theHold.Begin();
    Host().scene.Remove(*Host().scene.FindLayer(_M("Layer")));
    theHold.Accept(_M("Delete Layer"));
    ASSERT_EQ(Host().scene.FindLayer(_M("Layer")), nullptr);
    ASSERT_TRUE(Host().undo.Undo());
    ASSERT_NE(Host().scene.FindLayer(_M("Layer")), nullptr);
    EXPECT_FALSE(effect::IsSceneLayerOn(Host().scene.FindLayer(_M("Layer")), number));
}

TEST_F(ChoiceInAScene, IsEachEffectsOwn) {
    const host::Owned<effect::PSDOutput> other(
        static_cast<effect::PSDOutput*>(LibClassDesc(0)->Create()));
    host::SceneLayer& layer = Host().scene.AddLayer(_M("Layer"));
    effect::SetSceneLayerOn(&layer, NumberOf(*effect), false);
    EXPECT_FALSE(effect::IsSceneLayerOn(&layer, NumberOf(*effect)));
    EXPECT_TRUE(effect::IsSceneLayerOn(&layer, NumberOf(*other)));
}

}  // namespace

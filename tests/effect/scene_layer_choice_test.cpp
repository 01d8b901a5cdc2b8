#include "effect/scene_layer_choice.h"

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

}  // namespace

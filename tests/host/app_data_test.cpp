// Data that others keep on an object.
#include <gtest/gtest.h>
#include <maxheap.h>

#include <cstdint>
#include <cstring>
#include <vector>

#include "host/saved_objects.h"
#include "tests/host/sample_objects.h"

namespace {

constexpr Class_ID EFFECT{1, 2};
constexpr SClass_ID SUPER = 3;

void* Number(int value) {
    void* data = MAX_malloc(sizeof(value));
    std::memcpy(data, &value, sizeof(value));
    return data;
}

int NumberOf(const AppDataChunk* chunk) {
    int value = 0;
    std::memcpy(&value, chunk->data, sizeof(value));
    return value;
}

TEST(AppData, AChunkIsFoundByItsThreeIds) {
    SampleTarget target;
    target.AddAppDataChunk(EFFECT, SUPER, 4, sizeof(int), Number(10));
    target.AddAppDataChunk(EFFECT, SUPER, 5, sizeof(int), Number(20));
    AppDataChunk* chunk = target.GetAppDataChunk(EFFECT, SUPER, 4);
    ASSERT_TRUE(chunk);
    EXPECT_EQ(NumberOf(chunk), 10);
    EXPECT_EQ(chunk->length, sizeof(int));
    EXPECT_EQ(chunk->classID, EFFECT);
    EXPECT_EQ(chunk->superClassID, SUPER);
    EXPECT_EQ(chunk->subID, 4U);
    EXPECT_EQ(NumberOf(target.GetAppDataChunk(EFFECT, SUPER, 5)), 20);
    EXPECT_EQ(target.GetAppDataChunk(EFFECT, SUPER, 6), nullptr);
    EXPECT_EQ(target.GetAppDataChunk(EFFECT, 4, 4), nullptr);
    EXPECT_EQ(target.GetAppDataChunk(Class_ID(1, 3), SUPER, 4), nullptr);
}

TEST(AppData, AChunkStaysWhereItIsWhenOthersComeAndGo) {
    SampleTarget target;
    target.AddAppDataChunk(EFFECT, SUPER, 0, sizeof(int), Number(10));
    target.AddAppDataChunk(EFFECT, SUPER, 1, sizeof(int), Number(11));
    AppDataChunk* chunk = target.GetAppDataChunk(EFFECT, SUPER, 1);
    target.RemoveAppDataChunk(EFFECT, SUPER, 0);
    for (DWORD id = 2; id < 100; ++id) {
        target.AddAppDataChunk(EFFECT, SUPER, id, sizeof(int), Number(0));
    }
    EXPECT_EQ(target.GetAppDataChunk(EFFECT, SUPER, 1), chunk);
    EXPECT_EQ(NumberOf(chunk), 11);
}

TEST(AppData, ARemovedChunkIsGone) {
    SampleTarget target;
    target.AddAppDataChunk(EFFECT, SUPER, 4, sizeof(int), Number(10));
    EXPECT_TRUE(target.RemoveAppDataChunk(EFFECT, SUPER, 4));
    EXPECT_EQ(target.GetAppDataChunk(EFFECT, SUPER, 4), nullptr);
    EXPECT_FALSE(target.RemoveAppDataChunk(EFFECT, SUPER, 4));
}

TEST(AppData, AChunkTakesThePlaceOfOneOfTheSameIds) {
    SampleTarget target;
    target.AddAppDataChunk(EFFECT, SUPER, 4, sizeof(int), Number(10));
    target.AddAppDataChunk(EFFECT, SUPER, 4, 0, nullptr);
    ASSERT_TRUE(target.GetAppDataChunk(EFFECT, SUPER, 4));
    EXPECT_EQ(target.GetAppDataChunk(EFFECT, SUPER, 4)->data, nullptr);
    EXPECT_TRUE(target.RemoveAppDataChunk(EFFECT, SUPER, 4));
    EXPECT_FALSE(target.RemoveAppDataChunk(EFFECT, SUPER, 4));
}

TEST(AppData, ComesBackFromAFileByteForByte) {
    SampleTarget target;
    target.AddAppDataChunk(EFFECT, SUPER, 4, sizeof(int), Number(0x01020304));
    target.AddAppDataChunk(EFFECT, 9, 4, 0, nullptr);
    const std::vector<host::SavedAppData> saved = host::SaveAppData(target);
    ASSERT_EQ(saved.size(), 2U);
    EXPECT_EQ(saved[0].owner, EFFECT);
    EXPECT_EQ(saved[0].ownerSuperClass, SUPER);
    EXPECT_EQ(saved[0].subID, 4U);
    EXPECT_EQ(saved[0].bytes, (std::vector<std::uint8_t>{4, 3, 2, 1}));
    EXPECT_TRUE(saved[1].bytes.empty());
    SampleTarget loaded;
    loaded.AddAppDataChunk(EFFECT, SUPER, 4, sizeof(int), Number(7));
    loaded.AddAppDataChunk(EFFECT, SUPER, 5, sizeof(int), Number(8));
    host::LoadAppData(saved, loaded);
    ASSERT_EQ(loaded.GetAppDataChunk(EFFECT, SUPER, 4)->length, sizeof(int));
    EXPECT_EQ(NumberOf(loaded.GetAppDataChunk(EFFECT, SUPER, 4)), 0x01020304);
    EXPECT_EQ(NumberOf(loaded.GetAppDataChunk(EFFECT, SUPER, 5)), 8) << "others stay";
    ASSERT_TRUE(loaded.GetAppDataChunk(EFFECT, 9, 4));
    EXPECT_EQ(loaded.GetAppDataChunk(EFFECT, 9, 4)->length, 0U);
}

}  // namespace

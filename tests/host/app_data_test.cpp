// Data that others keep on an object.
#include <gtest/gtest.h>
#include <maxheap.h>

#include <cstring>

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

}  // namespace

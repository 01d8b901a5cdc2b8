// Copies of objects with all that they refer to.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <maxheap.h>

#include <cstring>

#include "host/text.h"
#include "tests/host/sample_objects.h"
#include "tests/host/saved_sample.h"

namespace {

constexpr Class_ID KEEPER{1, 2};

class Cloning : public testing::Test {
  protected:
    void SetUp() override {
        host::ResetApplication();
        ASSERT_TRUE(host::App().classes.Add(&desc));
    }
    void TearDown() override {
        host::ResetApplication();
        EXPECT_EQ(desc.living, 0);
    }

    SavedSampleDesc desc;
    DefaultRemapDir remap;
};

TEST_F(Cloning, AMapKnowsWhomItHasCopied) {
    SampleTarget one;
    SampleTarget copy;
    SampleTarget later;
    EXPECT_EQ(remap.FindMapping(&one), nullptr);
    remap.AddEntry(&one, &copy);
    remap.AddEntry(&one, &later);
    EXPECT_EQ(remap.FindMapping(&one), &copy);
    EXPECT_EQ(remap.CloneRef(&one), &copy);
    EXPECT_EQ(remap.CloneRef(nullptr), nullptr);
}

TEST_F(Cloning, WhatCannotBeCopiedGivesNull) {
    SampleTarget target;
    EXPECT_EQ(remap.CloneRef(&target), nullptr);
    EXPECT_EQ(remap.FindMapping(&target), nullptr);
}

TEST_F(Cloning, ACopyHasTheBlocksValuesAndTheOwnersReference) {
    host::Node& node = host::App().scene.AddNode(_M("a"));
    SavedSample* sample = MakeSample();
    sample->block->SetValue(SAMPLE_INT, 0, 12);
    sample->block->SetValue(SAMPLE_OWNERS_TARGET, 0, static_cast<ReferenceTarget*>(&node));
    auto* copy = static_cast<SavedSample*>(remap.CloneRef(sample));
    EXPECT_EQ(desc.living, 2);
    ASSERT_NE(copy->block, sample->block);
    EXPECT_EQ(copy->block->GetOwner(), copy);
    EXPECT_EQ(copy->block->GetInt(SAMPLE_INT), 12);
    EXPECT_EQ(copy->target, &node);
    EXPECT_EQ(copy->block->GetReferenceTarget(SAMPLE_OWNERS_TARGET), &node);
    EXPECT_EQ(remap.CloneRef(sample), copy);
    sample->DeleteThis();
    EXPECT_EQ(copy->block->GetInt(SAMPLE_INT), 12);
    copy->DeleteThis();
}

TEST_F(Cloning, TheBlockThatTheConstructorMadeGoesWithItsTargets) {
    desc.onMake = [this](SavedSample& made) {
        desc.onMake = nullptr;
        ReferenceTarget* own = MakeSample();
        made.block->Append(SAMPLE_TARGETS, 1, &own);
    };
    SavedSample* sample = MakeSample();
    sample->block->SetCount(SAMPLE_TARGETS, 0);
    ASSERT_EQ(desc.living, 1);
    desc.onMake = [this](SavedSample& made) {
        desc.onMake = nullptr;
        ReferenceTarget* own = MakeSample();
        made.block->Append(SAMPLE_TARGETS, 1, &own);
    };
    auto* copy = static_cast<SavedSample*>(remap.CloneRef(sample));
    EXPECT_EQ(desc.living, 2);
    EXPECT_EQ(copy->block->Count(SAMPLE_TARGETS), 0);
    sample->DeleteThis();
    copy->DeleteThis();
}

TEST_F(Cloning, TheCopyOfATargetWithoutAnOwnerGoesWithItsLastReference) {
    SavedSample* outer = MakeSample();
    ReferenceTarget* inner = MakeSample();
    outer->block->Append(SAMPLE_TARGETS, 1, &inner);
    {
        const host::TargetReference copy(remap.CloneRef(outer));
        EXPECT_EQ(desc.living, 4);
    }
    EXPECT_EQ(desc.living, 2);
    outer->DeleteThis();
}

TEST_F(Cloning, TheCopyOfATargetWithAnOwnerIsTheCallers) {
    auto* sample = new SavedSample(desc);
    host::Owned<SavedSample> copy(static_cast<SavedSample*>(remap.CloneRef(sample)));
    { const host::TargetReference reference(copy.get()); }
    EXPECT_EQ(desc.living, 2);
    copy.reset();
    sample->DeleteThis();
}

TEST_F(Cloning, ChainsAreCopiedWhole) {
    SavedSample* first = MakeSample();
    SavedSample* last = first;
    for (int depth = 0; depth < 20; ++depth) {
        SavedSample* next = MakeSample();
        next->block->SetValue(SAMPLE_INT, 0, depth);
        ReferenceTarget* entry = next;
        last->block->Append(SAMPLE_TARGETS, 1, &entry);
        last = next;
    }
    auto* copy = static_cast<SavedSample*>(remap.CloneRef(first));
    EXPECT_EQ(desc.living, 42);
    auto* at = copy;
    for (int depth = 0; depth < 20; ++depth) {
        at = static_cast<SavedSample*>(at->block->GetReferenceTarget(SAMPLE_TARGETS));
        ASSERT_TRUE(at);
        EXPECT_EQ(at->block->GetInt(SAMPLE_INT), depth);
    }
    first->DeleteThis();
    EXPECT_EQ(desc.living, 21);
    copy->DeleteThis();
}

TEST_F(Cloning, ACopyHasTheFlagsAndTheDataThatOthersKeep) {
    SavedSample* sample = MakeSample();
    sample->SetAFlag(0x5);
    void* data = MAX_malloc(3);
    std::memcpy(data, "abc", 3);
    sample->AddAppDataChunk(KEEPER, 3, 4, 3, data);
    sample->AddAppDataChunk(KEEPER, 3, 5, 0, nullptr);
    void* more = MAX_malloc(1);
    std::memcpy(more, "d", 1);
    sample->AddAppDataChunk(KEEPER, 3, 6, 1, more);
    auto* copy = static_cast<SavedSample*>(remap.CloneRef(sample));
    sample->DeleteThis();
    EXPECT_EQ(copy->AllAFlags(), 0x5U);
    AppDataChunk* chunk = copy->GetAppDataChunk(KEEPER, 3, 4);
    ASSERT_TRUE(chunk);
    ASSERT_EQ(chunk->length, 3U);
    EXPECT_EQ(std::memcmp(chunk->data, "abc", 3), 0);
    chunk = copy->GetAppDataChunk(KEEPER, 3, 5);
    ASSERT_TRUE(chunk);
    EXPECT_EQ(chunk->length, 0U);
    ASSERT_TRUE(copy->GetAppDataChunk(KEEPER, 3, 6)) << "one of no bytes ends nothing";
    copy->DeleteThis();
}

TEST_F(Cloning, BaseCloneReplacesWhatTheCopyHad) {
    SampleTarget from;
    SampleTarget to;
    to.SetAFlag(0x8);
    to.AddAppDataChunk(KEEPER, 3, 4, 0, nullptr);
    from.SetAFlag(0x1);
    from.BaseClone(&from, &to, remap);
    EXPECT_EQ(to.AllAFlags(), 0x1U);
    EXPECT_EQ(to.GetAppDataChunk(KEEPER, 3, 4), nullptr);
    EXPECT_EQ(remap.FindMapping(&from), &to);
    to.BaseClone(&to, &to, remap);
    EXPECT_EQ(to.AllAFlags(), 0x1U);
}

}  // namespace

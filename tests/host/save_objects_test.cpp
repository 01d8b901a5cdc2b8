// Objects as a file holds them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <maxheap.h>

#include <cstring>
#include <stdexcept>

#include "tests/host/sample_effect.h"
#include "tests/host/sample_objects.h"
#include "tests/host/saved_sample.h"

namespace {

using host::SavedReference;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class SaveObjectsTest : public testing::Test {
  protected:
    void SetUp() override {
        host::ResetApplication();
        ASSERT_TRUE(host::App().classes.Add(&desc));
    }
    void TearDown() override {
        root.reset();
        host::ResetApplication();
        EXPECT_EQ(desc.living, 0);
    }
    std::vector<host::SavedObject> Save() { return host::SaveObjects({root.get()}, handles); }
    std::string Fault() {
        try {
            Save();
        } catch (const std::runtime_error& error) {
            return error.what();
        }
        return "none";
    }
    SavedSample* AddBelow(SavedSample& above) {
        SavedSample* made = MakeSample();
        ReferenceTarget* entry = made;
        above.block->Append(SAMPLE_TARGETS, 1, &entry);
        return made;
    }

    SavedSampleDesc desc;
    host::Owned<SavedSample> root{new SavedSample(desc)};
    host::Handles handles;
};

const host::SavedParameter& ParameterOf(const host::SavedObject& object, ParamID id) {
    for (const auto& parameter : std::get<host::SavedBlock>(object.references[0]).parameters) {
        if (parameter.id == id) return parameter;
    }
    throw std::out_of_range("no such parameter");
}

TEST_F(SaveObjectsTest, AnObjectIsSavedWithAllThatItHas) {
    root->block->SetValue(SAMPLE_INT, 0, 12);
    root->data = {1, 2, 3};
    void* kept = MAX_malloc(2);
    std::memcpy(kept, "xy", 2);
    root->AddAppDataChunk(Class_ID(1, 2), 3, 4, 2, kept);
    const std::vector<host::SavedObject> saved = Save();
    ASSERT_THAT(saved, SizeIs(1));
    EXPECT_EQ(saved[0].handle, 1U);
    EXPECT_EQ(saved[0].superClass, REF_TARGET_CLASS_ID);
    EXPECT_EQ(saved[0].classID, Class_ID(7, 8));
    ASSERT_THAT(saved[0].chunks, SizeIs(1));
    EXPECT_EQ(saved[0].chunks[0].id, 0x20);
    EXPECT_THAT(saved[0].chunks[0].bytes, ElementsAre(1, 2, 3));
    ASSERT_THAT(saved[0].appData, SizeIs(1));
    EXPECT_EQ(saved[0].appData[0].owner, Class_ID(1, 2));
    EXPECT_EQ(saved[0].appData[0].ownerSuperClass, 3U);
    EXPECT_EQ(saved[0].appData[0].subID, 4U);
    EXPECT_THAT(saved[0].appData[0].bytes, ElementsAre('x', 'y'));
    ASSERT_THAT(saved[0].references, SizeIs(2));
    EXPECT_EQ(std::get<int>(ParameterOf(saved[0], SAMPLE_INT).values[0]), 12);
    EXPECT_EQ(std::get<SavedReference>(saved[0].references[1]).target, 0U);
    EXPECT_EQ(handles.Find(root.get()), 1U);
}

TEST_F(SaveObjectsTest, TargetsComeBeforeThoseThatReferToThemAndOnce) {
    SavedSample* below = AddBelow(*root);
    SavedSample* lowest = AddBelow(*below);
    ReferenceTarget* again = lowest;
    root->block->Append(SAMPLE_TARGETS, 1, &again);
    root->ReplaceReference(1, below);
    const std::vector<host::SavedObject> saved = Save();
    ASSERT_THAT(saved, SizeIs(3));
    EXPECT_EQ(saved[0].handle, handles.Find(lowest));
    EXPECT_EQ(saved[1].handle, handles.Find(below));
    EXPECT_EQ(saved[2].handle, handles.Find(root.get()));
    const auto& entries = ParameterOf(saved[2], SAMPLE_TARGETS).values;
    ASSERT_THAT(entries, SizeIs(2));
    EXPECT_EQ(std::get<SavedReference>(entries[0]).target, handles.Find(below));
    EXPECT_EQ(std::get<SavedReference>(entries[1]).target, handles.Find(lowest));
    EXPECT_EQ(std::get<SavedReference>(saved[2].references[1]).target, handles.Find(below));
}

TEST_F(SaveObjectsTest, WhatHasAHandleIsInTheFileAlready) {
    SavedSample* below = AddBelow(*root);
    AddBelow(*below);
    handles.Enter(40, below);
    const std::vector<host::SavedObject> saved = Save();
    ASSERT_THAT(saved, SizeIs(1));
    EXPECT_EQ(std::get<SavedReference>(ParameterOf(saved[0], SAMPLE_TARGETS).values[0]).target,
              40U);
    EXPECT_THAT(host::SaveObjects({root.get()}, handles), IsEmpty());
}

TEST_F(SaveObjectsTest, RootsMayRepeatAndBeNull) {
    EXPECT_THAT(host::SaveObjects({nullptr, root.get(), root.get()}, handles), SizeIs(1));
}

TEST_F(SaveObjectsTest, ObjectsOfTheSceneAreNamedByHandle) {
    host::Node& node = host::App().scene.AddNode(_M("a"));
    host::SceneLayer& layer = host::App().scene.AddLayer(_M("b"));
    host::RenderElement& element =
        host::App().elements[RS_Production].Add(VRAY_OPTIONS_ELEMENT, _M("c"));
    handles.Enter(50, &node);
    handles.Enter(51, &layer);
    handles.Enter(52, &element);
    host::Node& outside = host::App().scene.AddNode(_M("d"));
    ReferenceTarget* targets[] = {&layer, &element, &outside};
    root->block->Append(SAMPLE_TARGETS, 3, targets);
    root->ReplaceReference(1, &node);
    const std::vector<host::SavedObject> saved = Save();
    ASSERT_THAT(saved, SizeIs(1));
    const auto& entries = ParameterOf(saved[0], SAMPLE_TARGETS).values;
    EXPECT_EQ(std::get<SavedReference>(entries[0]).target, 51U);
    EXPECT_EQ(std::get<SavedReference>(entries[1]).target, 52U);
    EXPECT_EQ(std::get<SavedReference>(entries[2]).target, 0U) << "it isn't in the file";
    EXPECT_EQ(std::get<SavedReference>(saved[0].references[1]).target, 50U);
}

TEST_F(SaveObjectsTest, AnObjectThatCannotSaveItselfEndsIt) {
    desc.onSave = [](SavedSample&, ISave*) { return IO_ERROR; };
    EXPECT_EQ(Fault(),
              "an object of the class (0x00000007, 0x00000008) of the super class 512 couldn't "
              "save itself");
}

TEST_F(SaveObjectsTest, ChunksThatAreNotInPairsEndIt) {
    const std::string fault =
        "an object of the class (0x00000007, 0x00000008) of the super class 512 couldn't save "
        "itself: its chunks don't begin and end in pairs";
    desc.onSave = [](SavedSample&, ISave* isave) {
        isave->BeginChunk(1);
        return IO_OK;
    };
    EXPECT_EQ(Fault(), fault);
    desc.onSave = [](SavedSample&, ISave* isave) {
        isave->BeginChunk(1);
        isave->EndChunk();
        isave->EndChunk();
        return IO_OK;
    };
    EXPECT_EQ(Fault(), fault);
}

TEST_F(SaveObjectsTest, ObjectsWithoutAPlaceInFilesEndIt) {
    SampleTarget stranger;
    root->ReplaceReference(1, &stranger);
    EXPECT_EQ(Fault(),
              "a file can't hold an object of the class (0xffffffff, 0xffffffff) of the super "
              "class 0");
}

TEST_F(SaveObjectsTest, BlocksOfOthersEndIt) {
    SavedSampleDesc otherDesc(nullptr, Class_ID(7, 9));
    SampleOwner other(otherDesc);
    root->ReplaceReference(1, other.block);
    EXPECT_EQ(Fault(), "a file can't hold a reference to the parameter block of another object");
}

TEST_F(SaveObjectsTest, ChainsOfSixtyFourAreSavedAndNoLongerOnes) {
    SavedSample* last = root.get();
    for (int count = 1; count < 64; ++count)
        last = AddBelow(*last);
    EXPECT_THAT(Save(), SizeIs(64));
    AddBelow(*last);
    handles = {};
    const std::string fault =
        "a file can't hold objects that refer to each other in a chain of more than 64";
    EXPECT_EQ(Fault(), fault);
    // The lower half is known when the chain is walked from its top.
    ReferenceTarget* middle = root.get();
    for (int count = 0; count < 32; ++count)
        middle = static_cast<SavedSample*>(middle)->block->GetReferenceTarget(SAMPLE_TARGETS);
    handles = {};
    EXPECT_THROW(host::SaveObjects({middle, root.get()}, handles), std::runtime_error);
}

}  // namespace

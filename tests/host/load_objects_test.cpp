// Living objects from a file's values.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "host/text.h"
#include "tests/host/sample_objects.h"
#include "tests/host/saved_sample.h"

namespace {

using host::SavedReference;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

host::SavedParameter TargetTable(std::vector<host::Handle> handles) {
    host::SavedParameter table{SAMPLE_TARGETS, TYPE_REFTARG_TAB, {}};
    for (host::Handle handle : handles)
        table.values.emplace_back(SavedReference{handle});
    return table;
}

class LoadObjectsTest : public testing::Test {
  protected:
    void SetUp() override {
        host::ResetApplication();
        ASSERT_TRUE(host::App().classes.Add(&desc));
    }
    void TearDown() override {
        host::ResetApplication();
        EXPECT_EQ(desc.living, 0);
    }
    void Load() {
        ASSERT_THAT(host::CheckObjects(objects, known, host::App().classes), IsEmpty());
        host::LoadObjects(objects, handles, host::App().classes);
    }
    std::string Fault() {
        try {
            host::LoadObjects(objects, handles, host::App().classes);
        } catch (const std::runtime_error& error) {
            return error.what();
        }
        return "none";
    }
    SavedSample* Loaded(host::Handle handle) {
        return static_cast<SavedSample*>(handles.Target(handle));
    }
    void Destroy(const std::vector<host::Handle>& kept = {}) {
        host::DestroyUnreferred(objects, kept, handles);
    }

    SavedSampleDesc desc;
    std::vector<host::SavedObject> objects;
    std::vector<host::KnownTarget> known;
    host::Handles handles;
};

TEST_F(LoadObjectsTest, AnObjectComesBackWithAllThatItHad) {
    host::Node& node = host::App().scene.AddNode(_M("a"));
    handles.Enter(50, &node);
    known = {{50, host::SceneTarget::Node}};
    host::SavedObject saved = SavedSampleObject(1);
    saved.chunks = {{0x20, {1, 2, 3}, {}}};
    saved.appData = {{Class_ID(1, 2), 3, 4, {'x', 'y'}}, {Class_ID(1, 2), 3, 5, {}}};
    saved.references[1] = SavedReference{50};
    SampleBlockOf(saved).parameters = {{SAMPLE_INT, TYPE_INT, {12}},
                                       {SAMPLE_NODE, TYPE_INODE, {SavedReference{50}}}};
    objects = {saved};
    Load();
    SavedSample* loaded = Loaded(1);
    ASSERT_TRUE(loaded);
    EXPECT_EQ(desc.lastLoading, TRUE);
    EXPECT_EQ(loaded->block->GetInt(SAMPLE_INT), 12);
    EXPECT_EQ(loaded->block->GetINode(SAMPLE_NODE), &node);
    EXPECT_EQ(loaded->block->GetReferenceTarget(SAMPLE_OWNERS_TARGET), &node);
    EXPECT_EQ(host::ToUtf8(loaded->block->GetStr(SAMPLE_STRING)), "text");
    EXPECT_THAT(loaded->data, ElementsAre(1, 2, 3));
    AppDataChunk* chunk = loaded->GetAppDataChunk(Class_ID(1, 2), 3, 4);
    ASSERT_TRUE(chunk);
    EXPECT_EQ(chunk->length, 2U);
    EXPECT_EQ(static_cast<char*>(chunk->data)[1], 'y');
    ASSERT_TRUE(loaded->GetAppDataChunk(Class_ID(1, 2), 3, 5));
    EXPECT_EQ(loaded->GetAppDataChunk(Class_ID(1, 2), 3, 5)->length, 0U);
    Destroy();
}

TEST_F(LoadObjectsTest, WhatIsSavedAgainIsTheSame) {
    host::Node& node = host::App().scene.AddNode(_M("a"));
    host::Owned<SavedSample> root(new SavedSample(desc));
    ReferenceTarget* below[] = {MakeSample(), nullptr, MakeSample()};
    const MCHAR* texts[] = {_M("one"), _M("")};
    root->block->Append(SAMPLE_TARGETS, 3, below);
    root->block->Append(SAMPLE_STRINGS, 2, texts);
    root->block->SetValue(SAMPLE_NODE, 0, static_cast<ReferenceTarget*>(&node));
    root->block->SetValue(SAMPLE_OWNERS_TARGET, 0, below[2]);
    root->block->SetValue(SAMPLE_RANGED_FLOAT, 0, 300.5F);
    static_cast<SavedSample*>(below[0])->data = {9};
    host::Handles first;
    first.Enter(50, &node);
    objects = host::SaveObjects({root.get()}, first);
    handles.Enter(50, &node);
    known = {{50, host::SceneTarget::Node}};
    Load();
    SavedSample* loaded = Loaded(first.Find(root.get()));
    ASSERT_TRUE(loaded);
    ASSERT_EQ(loaded->block->Count(SAMPLE_TARGETS), 3);
    EXPECT_EQ(loaded->block->GetReferenceTarget(SAMPLE_TARGETS, 0, 1), nullptr);
    EXPECT_EQ(loaded->target, loaded->block->GetReferenceTarget(SAMPLE_TARGETS, 0, 2));
    EXPECT_EQ(loaded->block->GetFloat(SAMPLE_RANGED_FLOAT), 300.5F);
    EXPECT_EQ(host::ToUtf8(loaded->block->GetStr(SAMPLE_STRINGS)), "one");
    EXPECT_EQ(loaded->block->GetINode(SAMPLE_NODE), &node);
    EXPECT_THAT(Loaded(first.Find(below[0]))->data, ElementsAre(9));
    Destroy();
    EXPECT_EQ(desc.living, 3);
}

TEST_F(LoadObjectsTest, TheOrderInTheFileDoesNotMatter) {
    host::SavedObject upper = SavedSampleObject(8);
    upper.references[1] = SavedReference{3};
    SampleBlockOf(upper).parameters = {TargetTable({3, 3})};
    objects = {upper, SavedSampleObject(3)};
    Load();
    EXPECT_EQ(Loaded(8)->target, Loaded(3));
    EXPECT_EQ(Loaded(8)->block->GetReferenceTarget(SAMPLE_TARGETS, 0, 1), Loaded(3));
    Destroy();
}

TEST_F(LoadObjectsTest, TargetsLiveByTheirReferences) {
    host::SavedObject upper = SavedSampleObject(8);
    SampleBlockOf(upper).parameters = {TargetTable({3})};
    objects = {SavedSampleObject(3), upper};
    Load();
    EXPECT_EQ(desc.living, 2);
    Loaded(8)->block->Delete(SAMPLE_TARGETS, 0, 1);
    EXPECT_EQ(desc.living, 1);
    Loaded(8)->DeleteThis();
}

TEST_F(LoadObjectsTest, BlocksThatTheClassDoesNotHaveAreLeftOutWithReferencesTooMany) {
    host::SavedObject saved = SavedSampleObject(1);
    SampleBlockOf(saved).parameters = {{SAMPLE_INT, TYPE_INT, {12}}};
    saved.references.emplace_back(host::SavedBlock{99, 1, {{SAMPLE_INT, TYPE_INT, {13}}}});
    saved.references.emplace_back(SavedReference{3});
    objects = {saved, SavedSampleObject(3)};
    Load();
    EXPECT_EQ(Loaded(1)->block->GetInt(SAMPLE_INT), 12);
    Destroy();
}

TEST_F(LoadObjectsTest, ABlockOfAnotherPlaceGoesIntoTheBlockOfItsId) {
    host::SavedObject saved = SavedSampleObject(1);
    saved.references = {SavedReference{}, SavedReference{},
                        host::SavedBlock{3, 1, {{SAMPLE_INT, TYPE_INT, {12}}}},
                        host::SavedBlock{3, 1, {{SAMPLE_INT, TYPE_INT, {13}}}}};
    objects = {saved};
    Load();
    EXPECT_EQ(Loaded(1)->block->GetInt(SAMPLE_INT), 12) << "the first, and only once";
    Destroy();
}

TEST_F(LoadObjectsTest, AnObjectThatTakesABlockElsewhereGetsOne) {
    class Two : public SavedSample {
      public:
        using SavedSample::SavedSample;
        int NumParamBlocks() override { return 2; }
        IParamBlock2* GetParamBlock(int number) override {
            return number == 0 ? block : dynamic_cast<IParamBlock2*>(target);
        }
    };
    class TwoDesc : public SavedSampleDesc {
      public:
        void* Create(BOOL) override { return new Two(*this); }
    };
    host::SavedObject saved = SavedSampleObject(1);
    saved.references[1] = host::SavedBlock{3, 101, {{SAMPLE_INT, TYPE_INT, {13}}}};
    objects = {saved};
    Load();
    EXPECT_EQ(Loaded(1)->target, nullptr) << "it is none of its blocks";
    EXPECT_EQ(Loaded(1)->block->GetInt(SAMPLE_INT), 5);
    Destroy();

    TwoDesc two;
    host::ClassDirectory classes;
    classes.Add(&two);
    handles = {};
    host::LoadObjects(objects, handles, classes);
    auto* second = dynamic_cast<IParamBlock2*>(Loaded(1)->target);
    ASSERT_TRUE(second);
    EXPECT_EQ(second->GetInt(SAMPLE_INT), 13);
    EXPECT_EQ(second->GetOwner(), Loaded(1));
    Destroy();
    EXPECT_EQ(two.living, 0);
}

TEST_F(LoadObjectsTest, TheConstructorsBlockStaysWhenTheFileHasNone) {
    host::SavedObject saved = SavedSampleObject(1);
    saved.references = {SavedReference{0}};
    objects = {saved};
    Load();
    ASSERT_TRUE(Loaded(1)->block);
    EXPECT_EQ(Loaded(1)->block->GetInt(SAMPLE_INT), 5);
    Destroy();
}

// Post-load callbacks

class PostLoadStep : public PostLoadCallback {
  public:
    explicit PostLoadStep(std::function<void(ILoad*)> does) : does_(std::move(does)) { ++living; }
    ~PostLoadStep() override { --living; }
    void proc(ILoad* iload) override {
        does_(iload);
        delete this;
    }
    static inline int living = 0;

  private:
    std::function<void(ILoad*)> does_;
};

TEST_F(LoadObjectsTest, CallbacksComeInOrderWhenAllIsLoaded) {
    std::vector<int> journal;
    std::vector<DWORD> versions;
    desc.onLoad = [&](SavedSample& sample, ILoad* iload) {
        const int number = sample.block->GetInt(SAMPLE_INT);
        journal.push_back(number);
        iload->RegisterPostLoadCallback(new PostLoadStep([&, number](ILoad* later) {
            journal.push_back(number + 100);
            for (host::Handle handle : {1U, 2U}) {
                BaseInterface* info =
                    Loaded(handle)->block->GetInterface(IPARAMBLOCK2POSTLOADINFO_ID);
                ASSERT_TRUE(info);
                versions.push_back(static_cast<IParamBlock2PostLoadInfo*>(info)->GetVersion());
            }
            if (number == 1) {
                later->RegisterPostLoadCallback(
                    new PostLoadStep([&](ILoad*) { journal.push_back(200); }));
            }
        }));
        return IO_OK;
    };
    objects = {SavedSampleObject(1), SavedSampleObject(2)};
    SampleBlockOf(objects[0]) = {3, 101, {{SAMPLE_INT, TYPE_INT, {1}}}};
    SampleBlockOf(objects[1]) = {3, 2, {{SAMPLE_INT, TYPE_INT, {2}}}};
    Load();
    EXPECT_THAT(journal, ElementsAre(1, 2, 101, 102, 200));
    EXPECT_THAT(versions, ElementsAre(101U, 2U, 101U, 2U));
    EXPECT_EQ(Loaded(1)->block->GetInterface(IPARAMBLOCK2POSTLOADINFO_ID), nullptr);
    EXPECT_EQ(Loaded(2)->block->GetInterface(IPARAMBLOCK2POSTLOADINFO_ID), nullptr);
    EXPECT_EQ(PostLoadStep::living, 0);
    Destroy();
}

TEST_F(LoadObjectsTest, LoadSeesTheReferences) {
    ReferenceTarget* seen = nullptr;
    desc.onLoad = [&](SavedSample& sample, ILoad*) {
        if (sample.target) seen = sample.target;
        return IO_OK;
    };
    objects = {SavedSampleObject(1), SavedSampleObject(2)};
    objects[0].references[1] = SavedReference{2};
    Load();
    EXPECT_EQ(seen, Loaded(2));
    Destroy();
}

// All or nothing

TEST_F(LoadObjectsTest, OneThatCannotLoadItselfEndsAll) {
    SampleTarget old;
    handles.Enter(50, &old);
    known = {{50, host::SceneTarget::Layer}};
    bool called = false;
    desc.onLoad = [&](SavedSample& sample, ILoad* iload) {
        iload->RegisterPostLoadCallback(new PostLoadStep([&](ILoad*) { called = true; }));
        return sample.block->GetInt(SAMPLE_INT) == 13 ? IO_ERROR : IO_OK;
    };
    for (host::Handle handle : {1U, 2U, 3U})
        objects.push_back(SavedSampleObject(handle));
    SampleBlockOf(objects[0]).parameters = {TargetTable({2, 50})};
    objects[1].references[1] = SavedReference{3};
    SampleBlockOf(objects[2]).parameters = {{SAMPLE_INT, TYPE_INT, {13}}};
    EXPECT_EQ(Fault(), "the object 3 of the class (0x00000007, 0x00000008) couldn't load itself");
    EXPECT_EQ(desc.living, 0);
    EXPECT_EQ(PostLoadStep::living, 0);
    EXPECT_FALSE(called);
    EXPECT_EQ(handles.Target(1), nullptr);
    EXPECT_EQ(handles.Target(50), &old);
}

TEST_F(LoadObjectsTest, AReferenceThatTheObjectRefusesEndsAll) {
    class Picky : public SavedSample {
      public:
        using SavedSample::SavedSample;
        void SetReference(int which, RefTargetHandle t) override {
            if (which == 0) block = dynamic_cast<IParamBlock2*>(t);
        }
    };
    class PickyDesc : public SavedSampleDesc {
      public:
        void* Create(BOOL) override { return new Picky(*this); }
    };
    PickyDesc picky;
    host::ClassDirectory classes;
    classes.Add(&picky);
    objects = {SavedSampleObject(1), SavedSampleObject(2)};
    objects[0].references[1] = SavedReference{2};
    try {
        host::LoadObjects(objects, handles, classes);
        FAIL();
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(),
                     "the object 1 of the class (0x00000007, 0x00000008) doesn't take the object 2 "
                     "as its reference 1");
    }
    EXPECT_EQ(picky.living, 0);
}

TEST_F(LoadObjectsTest, AClassThatMakesNoObjectEndsAll) {
    objects = {SavedSampleObject(1)};
    desc.makesNone = true;
    EXPECT_EQ(Fault(), "the object 1 of the class (0x00000007, 0x00000008) can't be made");
}

TEST_F(LoadObjectsTest, AHandleThatIsTakenEndsAll) {
    SampleTarget old;
    handles.Enter(2, &old);
    objects = {SavedSampleObject(1), SavedSampleObject(2)};
    EXPECT_EQ(Fault(),
              "the object 2 of the class (0x00000007, 0x00000008) has a handle that is taken");
    EXPECT_EQ(desc.living, 0);
    EXPECT_EQ(handles.Target(2), &old);
}

// What nobody refers to

TEST_F(LoadObjectsTest, WhatNobodyRefersToGoesUnlessItIsKept) {
    for (host::Handle handle : {1U, 2U, 3U, 4U, 5U})
        objects.push_back(SavedSampleObject(handle));
    // 1 is kept and has 2; 3 has 4, and has 2 too; 5 stands alone.
    SampleBlockOf(objects[0]).parameters = {TargetTable({2})};
    SampleBlockOf(objects[2]).parameters = {TargetTable({4, 2})};
    Load();
    Destroy({1});
    EXPECT_EQ(desc.living, 2);
    EXPECT_EQ(Loaded(1)->block->GetReferenceTarget(SAMPLE_TARGETS), Loaded(2));
    Loaded(1)->DeleteThis();
}

TEST_F(LoadObjectsTest, ALongTableIsLoadedAndGoesQuickly) {
    host::Node& node = host::App().scene.AddNode(_M("a"));
    handles.Enter(50, &node);
    known = {{50, host::SceneTarget::Node}};
    objects = {SavedSampleObject(1)};
    host::SavedParameter table{SAMPLE_NODES, TYPE_INODE_TAB, {}};
    table.values.assign(200000, SavedReference{50});
    SampleBlockOf(objects[0]).parameters = {table};
    Load();
    EXPECT_EQ(Loaded(1)->block->Count(SAMPLE_NODES), 200000);
    Destroy();
}

}  // namespace

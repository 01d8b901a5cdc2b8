// Targets that nobody owns: they go with the last reference to them.
#include "host/target_lifetime.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <hold.h>
#include <maxapi.h>

#include <memory>

#include "host/application.h"
#include "host/param_block.h"
#include "tests/host/sample_block.h"
#include "tests/host/sample_objects.h"

namespace {

using testing::ElementsAre;

int living = 0;

// As an effect's own targets are: with a block, and a reference to an object of the scene.
class Setting : public SampleOwner {
  public:
    explicit Setting(ClassDesc2& desc) : SampleOwner(desc) { ++living; }

  protected:
    ~Setting() override { --living; }
};

class SettingDesc : public SampleClassDesc {
  public:
    SettingDesc() : SampleClassDesc(nullptr) {}
    void* Create(BOOL) override { return new Setting(*this); }
};

class TargetLifetimeTest : public testing::Test {
  protected:
    void SetUp() override {
        host::ResetApplication();
        living = 0;
        ASSERT_TRUE(host::App().classes.Add(&desc));
    }
    void TearDown() override {
        owner.reset();
        host::ResetApplication();
        EXPECT_EQ(living, 0);
    }
    static ReferenceTarget* Make() {
        return static_cast<ReferenceTarget*>(
            GetCOREInterface()->CreateInstance(REF_TARGET_CLASS_ID, Class_ID(7, 8)));
    }
    host::ParamBlock& Block() { return owner->Block(); }
    int Append(ReferenceTarget* target) { return Block().Append(SAMPLE_TARGETS, 1, &target, 0); }
    template <class Change>
    static void Held(const Change& change) {
        theHold.Begin();
        change();
        theHold.Accept(_M("Change"));
    }
    host::UndoStack& Steps() { return host::App().undo; }

    SettingDesc desc;
    std::unique_ptr<SampleOwner> owner = std::make_unique<SampleOwner>(desc);
};

TEST_F(TargetLifetimeTest, ATargetIsTheMakersUntilSomeoneRefersToIt) {
    ReferenceTarget* target = Make();
    ASSERT_TRUE(target);
    EXPECT_EQ(living, 1);
    target->DeleteThis();
    EXPECT_EQ(living, 0);
    EXPECT_EQ(GetCOREInterface()->CreateInstance(REF_TARGET_CLASS_ID, Class_ID(7, 9)), nullptr);
}

TEST_F(TargetLifetimeTest, ItGoesWhenItsEntryIsDeleted) {
    Append(Make());
    Append(Make());
    EXPECT_EQ(living, 2);
    Block().Delete(SAMPLE_TARGETS, 0, 1);
    EXPECT_EQ(living, 1);
    Block().SetCount(SAMPLE_TARGETS, 0);
    EXPECT_EQ(living, 0);
}

TEST_F(TargetLifetimeTest, ItGoesWhenItsEntryIsReplaced) {
    Append(Make());
    Block().SetValue(SAMPLE_TARGETS, 0, Make(), 0);
    EXPECT_EQ(living, 1);
    Block().SetValue(SAMPLE_TARGETS, 0, static_cast<ReferenceTarget*>(nullptr), 0);
    EXPECT_EQ(living, 0);
}

TEST_F(TargetLifetimeTest, ItGoesWithTheBlock) {
    Append(Make());
    owner.reset();
    EXPECT_EQ(living, 0);
}

TEST_F(TargetLifetimeTest, ItStaysWhileAnotherRefersToIt) {
    ReferenceTarget* target = Make();
    SampleTarget other;
    other.ReplaceReference(0, target);
    Append(target);
    Append(target);
    Block().Delete(SAMPLE_TARGETS, 0, 2);
    EXPECT_EQ(living, 1);
    other.DeleteReference(0);
    EXPECT_EQ(living, 0);
}

TEST_F(TargetLifetimeTest, ASortKeepsAll) {
    Append(Make());
    Append(Make());
    Block().Sort(SAMPLE_TARGETS, [](const void*, const void*) { return 0; });
    EXPECT_EQ(living, 2);
}

TEST_F(TargetLifetimeTest, AStepThatCanBringItBackKeepsIt) {
    Append(Make());
    ReferenceTarget* target = Block().GetReferenceTarget(SAMPLE_TARGETS, 0, 0);
    Held([&] { Block().Delete(SAMPLE_TARGETS, 0, 1); });
    EXPECT_EQ(living, 1);
    ASSERT_TRUE(Steps().Undo());
    ASSERT_EQ(Block().GetReferenceTarget(SAMPLE_TARGETS, 0, 0), target);
    EXPECT_EQ(static_cast<Setting*>(target)->Block().GetInt(SAMPLE_INT, 0, 0), 5);
    ASSERT_TRUE(Steps().Redo());
    EXPECT_EQ(living, 1);
    Steps().Clear();
    EXPECT_EQ(living, 0);
}

TEST_F(TargetLifetimeTest, ATargetWhoseComingIsTakenBackGoesWithWhatCouldBeDoneAgain) {
    Held([&] { Append(Make()); });
    ASSERT_TRUE(Steps().Undo());
    EXPECT_EQ(Block().Count(SAMPLE_TARGETS), 0);
    EXPECT_EQ(living, 1);
    ASSERT_TRUE(Steps().Redo());
    EXPECT_EQ(Block().Count(SAMPLE_TARGETS), 1);
    ASSERT_TRUE(Steps().Undo());
    Held([&] { Block().SetValue(SAMPLE_INT, 0, 8, 0); });
    EXPECT_EQ(living, 0) << "the step can't be done again any more";
}

TEST_F(TargetLifetimeTest, ACancelledComingEndsIt) {
    theHold.Begin();
    Append(Make());
    theHold.Cancel();
    EXPECT_EQ(Block().Count(SAMPLE_TARGETS), 0);
    EXPECT_EQ(living, 0);
}

TEST_F(TargetLifetimeTest, ACancelledDeletionBringsItBack) {
    Append(Make());
    theHold.Begin();
    Block().Delete(SAMPLE_TARGETS, 0, 1);
    theHold.Cancel();
    EXPECT_EQ(living, 1);
    EXPECT_EQ(Block().Count(SAMPLE_TARGETS), 1);
}

TEST_F(TargetLifetimeTest, StepsOfItsOwnBlockSurviveItsComingAndGoing) {
    Append(Make());
    auto* target = static_cast<Setting*>(Block().GetReferenceTarget(SAMPLE_TARGETS, 0, 0));
    Held([&] { target->Block().SetValue(SAMPLE_INT, 0, 8, 0); });
    Held([&] { Block().Delete(SAMPLE_TARGETS, 0, 1); });
    ASSERT_TRUE(Steps().Undo());
    ASSERT_TRUE(Steps().Undo());
    EXPECT_EQ(target->Block().GetInt(SAMPLE_INT, 0, 0), 5);
    ASSERT_TRUE(Steps().Redo());
    EXPECT_EQ(target->Block().GetInt(SAMPLE_INT, 0, 0), 8);
    Block().Delete(SAMPLE_TARGETS, 0, 1);
    EXPECT_EQ(living, 0) << "no step brings it back";
    EXPECT_TRUE(Steps().Redo());
    EXPECT_TRUE(Steps().Undo());
    EXPECT_TRUE(Steps().Undo());
    EXPECT_EQ(Block().GetReferenceTarget(SAMPLE_TARGETS, 0, 0), nullptr);
}

TEST_F(TargetLifetimeTest, ItMayBeDestroyedByHandAsWell) {
    Append(Make());
    Block().GetReferenceTarget(SAMPLE_TARGETS, 0, 0)->DeleteThis();
    EXPECT_EQ(living, 0);
    EXPECT_EQ(Block().GetReferenceTarget(SAMPLE_TARGETS, 0, 0), nullptr);
    EXPECT_EQ(Block().Count(SAMPLE_TARGETS), 1);
}

TEST_F(TargetLifetimeTest, ATargetThatCannotComeInStaysTheMakers) {
    ReferenceTarget* target = Make();
    // It refers to the owner already: a circle.
    ASSERT_EQ(target->ReplaceReference(1, owner.get()), REF_SUCCEED);
    EXPECT_EQ(Append(target), -1);
    EXPECT_EQ(living, 1);
    ReferenceTarget* fresh = Make();
    ReferenceTarget* both[] = {fresh, target};
    EXPECT_EQ(Block().Append(SAMPLE_TARGETS, 2, both, 0), -1);
    EXPECT_EQ(living, 2) << "the first was in the table for a moment";
    fresh->DeleteThis();
    target->DeleteThis();
}

TEST_F(TargetLifetimeTest, ObjectsOfTheSceneStay) {
    host::Node& node = host::App().scene.AddNode(_M("a"));
    host::RenderElement& element = host::App().elements[RS_Production].Add(Class_ID(4, 0), _M("b"));
    Append(&node);
    Append(&element);
    Block().SetCount(SAMPLE_TARGETS, 0);
    EXPECT_EQ(host::App().scene.FindNode(_M("a")), &node);
    EXPECT_EQ(host::App().elements[RS_Production].GetRenderElement(0), &element);
}

TEST_F(TargetLifetimeTest, AnElementThatGoesLeavesTheTargetThatRefersToItWithNull) {
    host::RenderElementManager& elements = host::App().elements[RS_Production];
    host::RenderElement& element = elements.Add(Class_ID(4, 0), _M("b"));
    Append(Make());
    auto* target = static_cast<Setting*>(Block().GetReferenceTarget(SAMPLE_TARGETS, 0, 0));
    target->Block().SetValue(SAMPLE_OWNERS_TARGET, 0, &element, 0);
    elements.Remove(&element);
    EXPECT_EQ(living, 1);
    EXPECT_EQ(target->target, nullptr);
    EXPECT_EQ(target->Block().GetReferenceTarget(SAMPLE_OWNERS_TARGET, 0, 0), nullptr);
}

TEST_F(TargetLifetimeTest, AMakerMayDropItWhileItTellsAChange) {
    Append(Make());
    auto* target = static_cast<Setting*>(Block().GetReferenceTarget(SAMPLE_TARGETS, 0, 0));
    owner->onChange = [&] {
        if (Block().Count(SAMPLE_TARGETS) > 0) {
            Block().SetCount(SAMPLE_TARGETS, 0);
        }
    };
    target->NotifyDependents(FOREVER, PART_ALL, REFMSG_CHANGE);
    EXPECT_EQ(living, 0);
    owner->onChange = nullptr;
}

TEST_F(TargetLifetimeTest, TargetsThatAreLockedStayWithoutAReference) {
    ReferenceTarget* target = Make();
    Append(target);
    target->SetAFlag(0x8000000);
    Block().SetValue(SAMPLE_TARGETS, 0, static_cast<ReferenceTarget*>(nullptr), 0);
    EXPECT_EQ(living, 1);
    Block().SetValue(SAMPLE_TARGETS, 0, target, 0);
    target->ClearAFlag(0x8000000);
    EXPECT_EQ(living, 1);
    Block().SetValue(SAMPLE_TARGETS, 0, static_cast<ReferenceTarget*>(nullptr), 0);
    EXPECT_EQ(living, 0) << "and goes with the last once it isn't";
}

}  // namespace

// What undo does with parameters.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <hold.h>

#include <memory>

#include "host/application.h"
#include "host/param_block.h"
#include "tests/host/sample_block.h"
#include "tests/host/sample_objects.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ParamBlockUndo : public testing::Test {
  protected:
    void SetUp() override { host::ResetApplication(); }
    void TearDown() override { host::ResetApplication(); }
    host::ParamBlock& Block() { return owner->Block(); }
    std::vector<ReferenceTarget*> Targets() {
        std::vector<ReferenceTarget*> targets(
            static_cast<std::size_t>(Block().Count(SAMPLE_TARGETS)));
        for (std::size_t i = 0; i < targets.size(); ++i) {
            targets[i] = Block().GetReferenceTarget(SAMPLE_TARGETS, 0, static_cast<int>(i));
        }
        return targets;
    }
    template <class Change>
    void Held(const Change& change) {
        theHold.Begin();
        change();
        theHold.Accept(_M("Change"));
        owner->changes.clear();
        accessor.changes.clear();
    }
    static bool Undo() { return host::App().undo.Undo(); }
    static bool Redo() { return host::App().undo.Redo(); }

    SampleTarget a, b, c;
    SampleAccessor accessor;
    SampleClassDesc desc{&accessor};
    std::unique_ptr<SampleOwner> owner = std::make_unique<SampleOwner>(desc);
};

TEST_F(ParamBlockUndo, ValuesComeBackAndGoAgainAndTheOwnerIsTold) {
    Held([&] {
        Block().SetValue(SAMPLE_INT, 0, 7, 0);
        Block().SetValue(SAMPLE_FLOAT, 0, 2.5F, 0);
        Block().SetValue(SAMPLE_STRING, 0, _M("new"), 0);
        Block().SetValue(SAMPLE_TARGET, 0, &a, 0);
    });
    ASSERT_TRUE(Undo());
    EXPECT_EQ(Block().GetInt(SAMPLE_INT, 0, 0), 5);
    EXPECT_EQ(Block().GetFloat(SAMPLE_FLOAT, 0, 0), 1.5F);
    EXPECT_EQ(MSTR(Block().GetStr(SAMPLE_STRING, 0, 0)), MSTR(_M("text")));
    EXPECT_EQ(Block().GetReferenceTarget(SAMPLE_TARGET, 0, 0), nullptr);
    EXPECT_THAT(owner->changes,
                ElementsAre(ParameterChange{SAMPLE_TARGET, -1}, ParameterChange{SAMPLE_STRING, -1},
                            ParameterChange{SAMPLE_FLOAT, -1}, ParameterChange{SAMPLE_INT, -1}));
    ASSERT_TRUE(Redo());
    EXPECT_EQ(Block().GetInt(SAMPLE_INT, 0, 0), 7);
    EXPECT_EQ(Block().GetFloat(SAMPLE_FLOAT, 0, 0), 2.5F);
    EXPECT_EQ(MSTR(Block().GetStr(SAMPLE_STRING, 0, 0)), MSTR(_M("new")));
    EXPECT_EQ(Block().GetReferenceTarget(SAMPLE_TARGET, 0, 0), &a);
    ASSERT_TRUE(Undo());
    EXPECT_EQ(Block().GetInt(SAMPLE_INT, 0, 0), 5);
}

TEST_F(ParamBlockUndo, SeveralSettingsOfOneParameterAreTakenBackInTurn) {
    Held([&] {
        Block().SetValue(SAMPLE_INT, 0, 7, 0);
        Block().SetValue(SAMPLE_INT, 0, 8, 0);
    });
    Undo();
    EXPECT_EQ(Block().GetInt(SAMPLE_INT, 0, 0), 5);
    Redo();
    EXPECT_EQ(Block().GetInt(SAMPLE_INT, 0, 0), 8);
}

TEST_F(ParamBlockUndo, WithoutAHoldNothingCanBeUndone) {
    Block().SetValue(SAMPLE_INT, 0, 7, 0);
    EXPECT_FALSE(Undo());
}

TEST_F(ParamBlockUndo, AWriteThatFailsLeavesNoStep) {
    Held([&] {
        Block().SetValue(SAMPLE_INT, 0, _M("no"), 0);
        Block().SetValue(SAMPLE_TARGET, 0, owner.get(), 0);
    });
    EXPECT_FALSE(Undo());
}

TEST_F(ParamBlockUndo, CancelPutsValuesBack) {
    theHold.Begin();
    Block().SetValue(SAMPLE_INT, 0, 7, 0);
    theHold.Cancel();
    EXPECT_EQ(Block().GetInt(SAMPLE_INT, 0, 0), 5);
    EXPECT_FALSE(Undo());
}

TEST_F(ParamBlockUndo, ChangesOfATableInARowAreTakenBackAndDoneAgainAtOnce) {
    ReferenceTarget* targets[] = {&a, &b, &c};
    Block().Append(SAMPLE_TARGETS, 3, targets, 0);
    Held([&] {
        Block().Delete(SAMPLE_TARGETS, 2, 1);
        Block().Delete(SAMPLE_TARGETS, 0, 1);
        Block().Append(SAMPLE_TARGETS, 1, targets, 0);
    });
    EXPECT_THAT(Targets(), ElementsAre(&b, &a));
    EXPECT_TRUE(Undo());
    EXPECT_THAT(Targets(), ElementsAre(&a, &b, &c));
    EXPECT_EQ(owner->changes.size(), 1U);
    EXPECT_TRUE(Redo());
    EXPECT_THAT(Targets(), ElementsAre(&b, &a));
}

TEST_F(ParamBlockUndo, ACancelledPartOfAHoldTakesBackItsOwnChangesOfATable) {
    ReferenceTarget* targets[] = {&a, &b};
    theHold.Begin();
    Block().Append(SAMPLE_TARGETS, 1, targets, 0);
    theHold.Begin();
    Block().Append(SAMPLE_TARGETS, 1, targets + 1, 0);
    theHold.Cancel();
    EXPECT_THAT(Targets(), ElementsAre(&a));
    theHold.Accept(_M("Change"));
    EXPECT_TRUE(Undo());
    EXPECT_THAT(Targets(), ElementsAre());
}

TEST_F(ParamBlockUndo, WhatComesBackPassesNoAccessor) {
    Held([&] { Block().SetValue(SAMPLE_INT, 0, 7, 0); });
    accessor.onSet = [](PB2Value& v, ParamID, int) { v.i = 99; };
    Undo();
    EXPECT_EQ(Block().GetInt(SAMPLE_INT, 0, 0), 5);
}

TEST_F(ParamBlockUndo, TablesGetTheirShapeBack) {
    ReferenceTarget* targets[] = {&a, &b, &c};
    Held([&] { Block().Append(SAMPLE_TARGETS, 3, targets, 0); });
    Held([&] { Block().Delete(SAMPLE_TARGETS, 1, 1); });
    Held([&] { Block().SetCount(SAMPLE_TARGETS, 4); });
    Held([&] { Block().SetValue(SAMPLE_TARGETS, 0, &b, 3); });
    EXPECT_THAT(Targets(), ElementsAre(&a, &c, nullptr, &b));
    Undo();
    EXPECT_THAT(Targets(), ElementsAre(&a, &c, nullptr, nullptr));
    EXPECT_THAT(owner->changes, ElementsAre(ParameterChange{SAMPLE_TARGETS, 3}));
    EXPECT_THAT(accessor.changes, IsEmpty());
    Undo();
    EXPECT_THAT(Targets(), ElementsAre(&a, &c));
    EXPECT_THAT(accessor.changes, ElementsAre(TabChange{tab_setcount, SAMPLE_TARGETS, 2, 2}));
    Undo();
    EXPECT_THAT(Targets(), ElementsAre(&a, &b, &c));
    Undo();
    EXPECT_THAT(Targets(), IsEmpty());
    while (Redo()) {
    }
    EXPECT_THAT(Targets(), ElementsAre(&a, &c, nullptr, &b));
}

TEST_F(ParamBlockUndo, ASortIsTakenBack) {
    SampleTarget large(2);
    ReferenceTarget* targets[] = {&large, &a};
    Block().Append(SAMPLE_TARGETS, 2, targets, 0);
    Held([&] {
        Block().Sort(SAMPLE_TARGETS, [](const void* left, const void* right) {
            return (*static_cast<ReferenceTarget* const*>(left))->NumRefs() -
                   (*static_cast<ReferenceTarget* const*>(right))->NumRefs();
        });
    });
    EXPECT_THAT(Targets(), ElementsAre(&a, &large));
    Undo();
    EXPECT_THAT(Targets(), ElementsAre(&large, &a));
    EXPECT_THAT(accessor.changes, ElementsAre(TabChange{tab_sort, SAMPLE_TARGETS, 0, 2}));
    EXPECT_THAT(owner->changes, ElementsAre(ParameterChange{SAMPLE_TARGETS, -1}));
}

TEST_F(ParamBlockUndo, TextTablesGetTheirTextsBack) {
    const MCHAR* texts[] = {_M("x"), _M("y")};
    Block().Append(SAMPLE_STRINGS, 2, texts, 0);
    Held([&] { Block().Delete(SAMPLE_STRINGS, 0, 1); });
    Undo();
    EXPECT_EQ(Block().Count(SAMPLE_STRINGS), 2);
    EXPECT_EQ(MSTR(Block().GetStr(SAMPLE_STRINGS, 0, 0)), MSTR(_M("x")));
    EXPECT_EQ(MSTR(Block().GetStr(SAMPLE_STRINGS, 0, 1)), MSTR(_M("y")));
}

TEST_F(ParamBlockUndo, AnOwnersReferenceComesBack) {
    Block().SetValue(SAMPLE_OWNERS_TARGET, 0, &a, 0);
    Held([&] { Block().SetValue(SAMPLE_OWNERS_TARGET, 0, &b, 0); });
    Undo();
    EXPECT_EQ(owner->target, &a);
    Redo();
    EXPECT_EQ(owner->target, &b);
}

TEST_F(ParamBlockUndo, EntriesThatComeBackAreReferencesAgain) {
    ReferenceTarget* targets[] = {&a};
    Block().Append(SAMPLE_TARGETS, 1, targets, 0);
    Held([&] { Block().Delete(SAMPLE_TARGETS, 0, 1); });
    Undo();
    owner->changes.clear();
    a.NotifyDependents(FOREVER, PART_ALL, REFMSG_CHANGE);
    EXPECT_THAT(owner->changes, ElementsAre(ParameterChange{SAMPLE_TARGETS, 0}));
}

TEST_F(ParamBlockUndo, ATargetThatWasDestroyedMeanwhileComesBackAsNull) {
    auto gone = std::make_unique<SampleTarget>();
    ReferenceTarget* targets[] = {&a, gone.get()};
    Block().Append(SAMPLE_TARGETS, 2, targets, 0);
    Held([&] { Block().Delete(SAMPLE_TARGETS, 0, 2); });
    gone.reset();
    Undo();
    EXPECT_THAT(Targets(), ElementsAre(&a, nullptr));
}

TEST_F(ParamBlockUndo, StepsOfABlockThatIsGoneDoNothing) {
    Held([&] { Block().SetValue(SAMPLE_INT, 0, 7, 0); });
    owner.reset();
    EXPECT_TRUE(Undo());
    EXPECT_TRUE(Redo());
}

TEST_F(ParamBlockUndo, EntriesDeletedByTheAccessorComeBackInTheSameStep) {
    const MCHAR* texts[] = {_M("x"), _M("y")};
    accessor.onTabChanged = [&](tab_changes code, ParamID id, int) {
        if (code == tab_append) {
            Block().Delete(id, 0, 1);
        }
    };
    Held([&] { Block().Append(SAMPLE_STRINGS, 2, texts, 0); });
    EXPECT_EQ(Block().Count(SAMPLE_STRINGS), 1);
    Undo();
    EXPECT_EQ(Block().Count(SAMPLE_STRINGS), 0);
    Redo();
    EXPECT_EQ(Block().Count(SAMPLE_STRINGS), 1);
    EXPECT_EQ(MSTR(Block().GetStr(SAMPLE_STRINGS, 0, 0)), MSTR(_M("y")));
}

}  // namespace

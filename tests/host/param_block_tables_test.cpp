// Tables of a parameter block: their shape, what accessors hear of it, and targets that go.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "host/application.h"
#include "host/param_block.h"
#include "tests/host/sample_block.h"
#include "tests/host/sample_objects.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ParamBlockTables : public testing::Test {
  protected:
    void SetUp() override { host::ResetApplication(); }
    void TearDown() override { host::ResetApplication(); }
    host::ParamBlock& Block() { return owner.Block(); }
    std::vector<ReferenceTarget*> Targets() {
        std::vector<ReferenceTarget*> targets(
            static_cast<std::size_t>(Block().Count(SAMPLE_TARGETS)));
        for (std::size_t i = 0; i < targets.size(); ++i) {
            targets[i] = Block().GetReferenceTarget(SAMPLE_TARGETS, 0, static_cast<int>(i));
        }
        return targets;
    }
    std::vector<MSTR> Texts() {
        std::vector<MSTR> texts(static_cast<std::size_t>(Block().Count(SAMPLE_STRINGS)));
        for (std::size_t i = 0; i < texts.size(); ++i) {
            texts[i] = MSTR(Block().GetStr(SAMPLE_STRINGS, 0, static_cast<int>(i)));
        }
        return texts;
    }
    int AppendTargets(std::vector<ReferenceTarget*> targets) {
        return Block().Append(SAMPLE_TARGETS, static_cast<int>(targets.size()), targets.data(), 0);
    }
    int AppendTexts(std::vector<const MCHAR*> texts) {
        return Block().Append(SAMPLE_STRINGS, static_cast<int>(texts.size()), texts.data(), 0);
    }
    void Forget() {
        accessor.changes.clear();
        owner.changes.clear();
    }

    SampleTarget a, b, c;
    SampleAccessor accessor;
    SampleClassDesc desc{&accessor};
    SampleOwner owner{desc};
};

TEST_F(ParamBlockTables, AppendAddsAtTheEnd) {
    EXPECT_EQ(AppendTargets({&a, nullptr}), 0);
    EXPECT_EQ(AppendTargets({&c}), 2);
    EXPECT_THAT(Targets(), ElementsAre(&a, nullptr, &c));
    EXPECT_EQ(AppendTexts({_M("x"), nullptr}), 0);
    EXPECT_THAT(Texts(), ElementsAre(MSTR(_M("x")), MSTR()));
    EXPECT_THAT(accessor.changes, ElementsAre(TabChange{tab_append, SAMPLE_TARGETS, 0, 2},
                                              TabChange{tab_append, SAMPLE_TARGETS, 2, 1},
                                              TabChange{tab_append, SAMPLE_STRINGS, 0, 2}));
    EXPECT_THAT(owner.changes, ElementsAre(ParameterChange{SAMPLE_TARGETS, -1},
                                           ParameterChange{SAMPLE_TARGETS, -1},
                                           ParameterChange{SAMPLE_STRINGS, -1}));
}

TEST_F(ParamBlockTables, AppendWithoutValuesAddsEmptyEntries) {
    EXPECT_EQ(Block().Append(SAMPLE_TARGETS, 2, static_cast<ReferenceTarget**>(nullptr), 0), 0);
    EXPECT_THAT(Targets(), ElementsAre(nullptr, nullptr));
}

TEST_F(ParamBlockTables, AppendToWhatIsNoSuchTableFails) {
    ReferenceTarget* targets[] = {&a};
    const MCHAR* texts[] = {_M("x")};
    EXPECT_EQ(Block().Append(SAMPLE_STRINGS, 1, targets, 0), -1);
    EXPECT_EQ(Block().Append(SAMPLE_TARGETS, 1, texts, 0), -1);
    EXPECT_EQ(Block().Append(SAMPLE_TARGET, 1, targets, 0), -1);
    EXPECT_EQ(Block().Append(1000, 1, targets, 0), -1);
    EXPECT_EQ(Block().Append(SAMPLE_TARGETS, 0, targets, 0), -1);
    EXPECT_EQ(Block().Append(SAMPLE_TARGETS, -1, targets, 0), -1);
    EXPECT_EQ(Block().Append(SAMPLE_FIXED_STRINGS, 1, texts, 0), -1);
    EXPECT_THAT(accessor.changes, IsEmpty());
    EXPECT_THAT(owner.changes, IsEmpty());
}

TEST_F(ParamBlockTables, ANodeTableTakesOnlyNodes) {
    SampleNode node;
    ReferenceTarget* mixed[] = {&node, &a};
    EXPECT_EQ(Block().Append(SAMPLE_NODES, 2, mixed, 0), -1);
    EXPECT_EQ(Block().Count(SAMPLE_NODES), 0);
    EXPECT_EQ(Block().Append(SAMPLE_NODES, 1, mixed, 0), 0);
    EXPECT_FALSE(Block().SetValue(SAMPLE_NODES, 0, &a, 0));
    Block().DeleteAllRefsFromMe();
}

TEST_F(ParamBlockTables, InsertPutsEntriesBefore) {
    AppendTargets({&a, &b});
    Forget();
    ReferenceTarget* targets[] = {&c};
    EXPECT_EQ(Block().Insert(SAMPLE_TARGETS, 1, 1, targets), 1);
    EXPECT_THAT(Targets(), ElementsAre(&a, &c, &b));
    EXPECT_THAT(accessor.changes, ElementsAre(TabChange{tab_insert, SAMPLE_TARGETS, 1, 1}));
    EXPECT_EQ(Block().Insert(SAMPLE_TARGETS, 4, 1, targets), -1);
    EXPECT_EQ(Block().Insert(SAMPLE_TARGETS, -1, 1, targets), -1);
    const MCHAR* texts[] = {_M("x")};
    EXPECT_EQ(Block().Insert(SAMPLE_STRINGS, 0, 1, texts), 0);
    EXPECT_THAT(Texts(), ElementsAre(MSTR(_M("x"))));
}

TEST_F(ParamBlockTables, DeleteTakesEntriesAway) {
    AppendTargets({&a, &b, &c});
    AppendTexts({_M("x"), _M("y"), _M("z")});
    Forget();
    EXPECT_EQ(Block().Delete(SAMPLE_TARGETS, 1, 1), 2);
    EXPECT_THAT(Targets(), ElementsAre(&a, &c));
    EXPECT_EQ(Block().Delete(SAMPLE_STRINGS, 1, 100), 1);
    EXPECT_THAT(Texts(), ElementsAre(MSTR(_M("x"))));
    EXPECT_THAT(accessor.changes, ElementsAre(TabChange{tab_delete, SAMPLE_TARGETS, 1, 1},
                                              TabChange{tab_delete, SAMPLE_STRINGS, 1, 2}));
    EXPECT_THAT(owner.changes, ElementsAre(ParameterChange{SAMPLE_TARGETS, -1},
                                           ParameterChange{SAMPLE_STRINGS, -1}));
}

TEST_F(ParamBlockTables, DeleteOfWhatIsNotThereFails) {
    AppendTargets({&a});
    Forget();
    EXPECT_EQ(Block().Delete(SAMPLE_TARGETS, 1, 1), -1);
    EXPECT_EQ(Block().Delete(SAMPLE_TARGETS, -1, 1), -1);
    EXPECT_EQ(Block().Delete(SAMPLE_TARGETS, 0, 0), -1);
    EXPECT_EQ(Block().Delete(SAMPLE_TARGET, 0, 1), -1);
    EXPECT_EQ(Block().Delete(SAMPLE_FIXED_STRINGS, 0, 1), -1);
    EXPECT_THAT(accessor.changes, IsEmpty());
}

TEST_F(ParamBlockTables, SetCountAddsEmptyEntriesAndCutsTheEnd) {
    AppendTargets({&a});
    Forget();
    Block().SetCount(SAMPLE_TARGETS, 3);
    EXPECT_THAT(Targets(), ElementsAre(&a, nullptr, nullptr));
    Block().SetCount(SAMPLE_TARGETS, 0);
    EXPECT_THAT(Targets(), IsEmpty());
    Block().SetCount(SAMPLE_TARGETS, 0);
    Block().SetCount(SAMPLE_TARGETS, -1);
    EXPECT_THAT(accessor.changes, ElementsAre(TabChange{tab_setcount, SAMPLE_TARGETS, 1, 2},
                                              TabChange{tab_setcount, SAMPLE_TARGETS, 0, 3}));
    Block().SetCount(SAMPLE_STRINGS, 1);
    EXPECT_THAT(Texts(), ElementsAre(MSTR()));
}

TEST_F(ParamBlockTables, OneThatIsNotVariableKeepsItsSize) {
    Block().SetCount(SAMPLE_FIXED_STRINGS, 5);
    EXPECT_EQ(Block().Count(SAMPLE_FIXED_STRINGS), 2);
}

// By the number of references that a target has room for; null comes last.
int CompareRooms(const void* left, const void* right) {
    const auto rooms = [](const void* entry) {
        ReferenceTarget* target = *static_cast<ReferenceTarget* const*>(entry);
        return target ? target->NumRefs() : 100;
    };
    return rooms(left) - rooms(right);
}

TEST_F(ParamBlockTables, SortOrdersTheEntriesAndKeepsEqualOnes) {
    SampleTarget small(1);
    SampleTarget equal(1);
    SampleTarget large(3);
    AppendTargets({&large, nullptr, &small, &equal});
    Forget();
    Block().Sort(SAMPLE_TARGETS, CompareRooms);
    EXPECT_THAT(Targets(), ElementsAre(&small, &equal, &large, nullptr));
    EXPECT_THAT(accessor.changes, ElementsAre(TabChange{tab_sort, SAMPLE_TARGETS, 0, 4}));
    EXPECT_THAT(owner.changes, ElementsAre(ParameterChange{SAMPLE_TARGETS, -1}));
}

TEST_F(ParamBlockTables, WhatIsNoTableOfTargetsIsNotSorted) {
    AppendTargets({&b, &a});
    Forget();
    Block().Sort(SAMPLE_STRINGS, CompareRooms);
    Block().Sort(SAMPLE_TARGET, CompareRooms);
    Block().Sort(999, CompareRooms);
    Block().Sort(SAMPLE_TARGETS, nullptr);
    EXPECT_THAT(Targets(), ElementsAre(&b, &a));
    EXPECT_THAT(accessor.changes, IsEmpty());
}

TEST_F(ParamBlockTables, AnEntryThatIsTakenAwayIsNoReferenceAnyMore) {
    AppendTargets({&a, &b});
    Block().Delete(SAMPLE_TARGETS, 0, 1);
    Forget();
    a.NotifyDependents(FOREVER, PART_ALL, REFMSG_CHANGE);
    EXPECT_THAT(owner.changes, IsEmpty());
    b.NotifyDependents(FOREVER, PART_ALL, REFMSG_CHANGE);
    EXPECT_THAT(owner.changes, ElementsAre(ParameterChange{SAMPLE_TARGETS, 0}));
}

TEST_F(ParamBlockTables, AnEntryWhoseTargetGoesIsNullAndTheAccessorHearsOfIt) {
    auto gone = std::make_unique<SampleTarget>();
    AppendTargets({&a, gone.get(), &c});
    Forget();
    accessor.onTabChanged = [&](tab_changes, ParamID, int tabIndex) {
        EXPECT_EQ(Block().GetReferenceTarget(SAMPLE_TARGETS, 0, tabIndex), nullptr);
    };
    gone.reset();
    EXPECT_THAT(Targets(), ElementsAre(&a, nullptr, &c));
    EXPECT_THAT(accessor.changes, ElementsAre(TabChange{tab_ref_deleted, SAMPLE_TARGETS, 1, 1}));
    EXPECT_THAT(owner.changes, ElementsAre(ParameterChange{SAMPLE_TARGETS, 1}));
}

TEST_F(ParamBlockTables, TheAccessorMayDeleteTheEntriesWhoseTargetGoes) {
    auto gone = std::make_unique<SampleTarget>();
    AppendTargets({gone.get(), &a, gone.get(), gone.get(), &b});
    Forget();
    accessor.onTabChanged = [&](tab_changes code, ParamID id, int tabIndex) {
        if (code == tab_ref_deleted && tabIndex >= 1) {
            Block().Delete(id, tabIndex, 1);
        }
    };
    gone.reset();
    EXPECT_THAT(Targets(), ElementsAre(nullptr, &a, &b));
    b.NotifyDependents(FOREVER, PART_ALL, REFMSG_CHANGE);
    EXPECT_EQ(owner.changes.back(), (ParameterChange{SAMPLE_TARGETS, 2}));
}

TEST_F(ParamBlockTables, ASingleTargetThatGoesIsNullWithoutATableChange) {
    auto gone = std::make_unique<SampleTarget>();
    Block().SetValue(SAMPLE_TARGET, 0, gone.get(), 0);
    Forget();
    gone.reset();
    EXPECT_EQ(Block().GetReferenceTarget(SAMPLE_TARGET, 0, 0), nullptr);
    EXPECT_THAT(accessor.changes, IsEmpty());
    EXPECT_THAT(owner.changes, ElementsAre(ParameterChange{SAMPLE_TARGET, -1}));
    EXPECT_EQ(owner.messages.back(), REFMSG_CHANGE) << "the block itself is not deleted";
}

}  // namespace

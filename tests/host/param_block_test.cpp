#include "host/param_block.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "host/application.h"
#include "tests/host/sample_block.h"
#include "tests/host/sample_objects.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ParamBlockTest : public testing::Test {
  protected:
    void SetUp() override { host::ResetApplication(); }
    void TearDown() override { host::ResetApplication(); }
    IParamBlock2& Block() { return *owner.block; }
    MSTR Text(ParamID id, int tabIndex = 0) { return MSTR(Block().GetStr(id, 0, tabIndex)); }

    SampleAccessor accessor;
    SampleClassDesc desc{&accessor};
    SampleOwner owner{desc};
};

TEST_F(ParamBlockTest, ABlockStartsWithItsDefaults) {
    EXPECT_EQ(Block().GetInt(SAMPLE_INT), 5);
    EXPECT_EQ(Block().GetInt(SAMPLE_BOOL), 1);
    EXPECT_EQ(Block().GetFloat(SAMPLE_FLOAT), 1.5F);
    EXPECT_EQ(Block().GetFloat(SAMPLE_FRACTION), 0.05F);
    EXPECT_EQ(Text(SAMPLE_STRING), MSTR(_M("text")));
    EXPECT_EQ(Text(SAMPLE_FILENAME), MSTR());
    EXPECT_EQ(Block().GetReferenceTarget(SAMPLE_TARGET), nullptr);
    EXPECT_EQ(Block().Count(SAMPLE_TARGETS), 0);
    EXPECT_EQ(Block().Count(SAMPLE_FIXED_STRINGS), 2);
    EXPECT_EQ(Text(SAMPLE_FIXED_STRINGS, 1), MSTR(_M("x")));
    EXPECT_THAT(owner.changes, IsEmpty());
}

TEST_F(ParamBlockTest, ValuesAreClampedToTheirRange) {
    EXPECT_TRUE(Block().SetValue(SAMPLE_RANGED_INT, 0, 11));
    EXPECT_EQ(Block().GetInt(SAMPLE_RANGED_INT), 10);
    EXPECT_TRUE(Block().SetValue(SAMPLE_RANGED_INT, 0, -1));
    EXPECT_EQ(Block().GetInt(SAMPLE_RANGED_INT), 1);
    EXPECT_TRUE(Block().SetValue(SAMPLE_RANGED_FLOAT, 0, 0.5F));
    EXPECT_EQ(Block().GetFloat(SAMPLE_RANGED_FLOAT), 1.0F);
    EXPECT_TRUE(Block().SetValue(SAMPLE_RANGED_FLOAT, 0, std::numeric_limits<float>::infinity()));
    EXPECT_EQ(Block().GetFloat(SAMPLE_RANGED_FLOAT), 10000.0F);
}

TEST_F(ParamBlockTest, AnyNumberButZeroIsTrue) {
    for (const int v : {1, -1, 2, std::numeric_limits<int>::min()}) {
        Block().SetValue(SAMPLE_BOOL, 0, 0);
        EXPECT_EQ(Block().GetInt(SAMPLE_BOOL), 0);
        Block().SetValue(SAMPLE_BOOL, 0, v);
        EXPECT_EQ(Block().GetInt(SAMPLE_BOOL), 1);
    }
    Block().SetValue(SAMPLE_BOOL, 0, 0.0F);
    EXPECT_EQ(Block().GetInt(SAMPLE_BOOL), 0);
    Block().SetValue(SAMPLE_BOOL, 0, 0.25F);
    EXPECT_EQ(Block().GetInt(SAMPLE_BOOL), 1);
}

TEST_F(ParamBlockTest, NumbersConvert) {
    EXPECT_TRUE(Block().SetValue(SAMPLE_FLOAT, 0, 3));
    EXPECT_EQ(Block().GetFloat(SAMPLE_FLOAT), 3.0F);
    EXPECT_TRUE(Block().SetValue(SAMPLE_INT, 0, 2.9F));
    EXPECT_EQ(Block().GetInt(SAMPLE_INT), 2);
    EXPECT_TRUE(Block().SetValue(SAMPLE_INT, 0, -2.9F));
    EXPECT_EQ(Block().GetInt(SAMPLE_INT), -2);
    EXPECT_TRUE(Block().SetValue(SAMPLE_INT, 0, 1e30F));
    EXPECT_EQ(Block().GetInt(SAMPLE_INT), std::numeric_limits<int>::max());
    EXPECT_TRUE(Block().SetValue(SAMPLE_INT, 0, -std::numeric_limits<float>::infinity()));
    EXPECT_EQ(Block().GetInt(SAMPLE_INT), std::numeric_limits<int>::min());
    EXPECT_TRUE(Block().SetValue(SAMPLE_INT, 0, 16777217));
    EXPECT_EQ(Block().GetInt(SAMPLE_INT), 16777217) << "an int never goes through a float";
}

TEST_F(ParamBlockTest, ReadsConvertNumbersToo) {
    Block().SetValue(SAMPLE_FLOAT, 0, 2.75F);
    EXPECT_EQ(Block().GetInt(SAMPLE_FLOAT), 2);
    EXPECT_EQ(Block().GetFloat(SAMPLE_INT), 5.0F);
}

TEST_F(ParamBlockTest, NaNIsRefused) {
    const float notANumber = std::numeric_limits<float>::quiet_NaN();
    for (const ParamID id : {SAMPLE_FLOAT, SAMPLE_RANGED_FLOAT, SAMPLE_INT, SAMPLE_BOOL}) {
        EXPECT_FALSE(Block().SetValue(id, 0, notANumber));
    }
    accessor.onSet = [&](PB2Value& v, ParamID, int) { v.f = notANumber; };
    EXPECT_FALSE(Block().SetValue(SAMPLE_FLOAT, 0, 2.0F));
    EXPECT_EQ(Block().GetFloat(SAMPLE_FLOAT), 1.5F);
    EXPECT_THAT(owner.changes, IsEmpty());
}

TEST_F(ParamBlockTest, OtherTypesDoNotConvert) {
    SampleTarget target;
    EXPECT_FALSE(Block().SetValue(SAMPLE_STRING, 0, 1));
    EXPECT_FALSE(Block().SetValue(SAMPLE_STRING, 0, 1.0F));
    EXPECT_FALSE(Block().SetValue(SAMPLE_STRING, 0, &target));
    EXPECT_FALSE(Block().SetValue(SAMPLE_INT, 0, _M("1")));
    EXPECT_FALSE(Block().SetValue(SAMPLE_INT, 0, &target));
    EXPECT_FALSE(Block().SetValue(SAMPLE_TARGET, 0, 1));
    EXPECT_FALSE(Block().SetValue(SAMPLE_TARGET, 0, _M("1")));
    EXPECT_EQ(Block().GetInt(SAMPLE_STRING), 0);
    EXPECT_EQ(Block().GetFloat(SAMPLE_STRING), 0.0F);
    EXPECT_EQ(Block().GetStr(SAMPLE_INT), nullptr);
    EXPECT_EQ(Block().GetReferenceTarget(SAMPLE_INT), nullptr);
    EXPECT_THAT(owner.changes, IsEmpty());
}

TEST_F(ParamBlockTest, WhatIsNotThereReadsAsNothingAndRefusesWrites) {
    SampleTarget target;
    constexpr ParamID MISSING = 1000;
    EXPECT_EQ(Block().GetInt(MISSING), 0);
    EXPECT_EQ(Block().GetFloat(MISSING), 0.0F);
    EXPECT_EQ(Block().GetStr(MISSING), nullptr);
    EXPECT_EQ(Block().GetReferenceTarget(MISSING), nullptr);
    EXPECT_FALSE(Block().SetValue(MISSING, 0, 1));
    EXPECT_FALSE(Block().SetValue(MISSING, 0, 1.0F));
    EXPECT_FALSE(Block().SetValue(MISSING, 0, _M("")));
    EXPECT_FALSE(Block().SetValue(MISSING, 0, &target));
    for (const int index : {-1, 1}) {
        EXPECT_EQ(Block().GetInt(SAMPLE_INT, 0, index), 0);
        EXPECT_FALSE(Block().SetValue(SAMPLE_INT, 0, 1, index));
        EXPECT_EQ(Block().GetStr(SAMPLE_STRING, 0, index), nullptr);
    }
    EXPECT_EQ(Block().GetStr(SAMPLE_FIXED_STRINGS, 0, 2), nullptr);
    EXPECT_EQ(Block().Count(SAMPLE_INT), 0);
}

TEST_F(ParamBlockTest, TextIsCopied) {
    MCHAR text[] = {_M('a'), _M('b'), 0};
    EXPECT_TRUE(Block().SetValue(SAMPLE_STRING, 0, text));
    text[0] = _M('x');
    EXPECT_EQ(Text(SAMPLE_STRING), MSTR(_M("ab")));
    EXPECT_TRUE(Block().SetValue(SAMPLE_STRING, 0, static_cast<const MCHAR*>(nullptr)));
    EXPECT_EQ(Text(SAMPLE_STRING), MSTR());
}

TEST_F(ParamBlockTest, AnInodeParameterTakesOnlyNodes) {
    SampleNode node;
    SampleTarget target;
    EXPECT_TRUE(Block().SetValue(SAMPLE_NODE, 0, &node));
    EXPECT_EQ(Block().GetReferenceTarget(SAMPLE_NODE), &node);
    EXPECT_FALSE(Block().SetValue(SAMPLE_NODE, 0, &target));
    EXPECT_EQ(Block().GetReferenceTarget(SAMPLE_NODE), &node);
    EXPECT_TRUE(Block().SetValue(SAMPLE_NODE, 0, static_cast<ReferenceTarget*>(nullptr)));
    EXPECT_EQ(Block().GetReferenceTarget(SAMPLE_NODE), nullptr);
}

TEST_F(ParamBlockTest, GetINodeGivesNodesAlone) {
    SampleNode node;
    SampleTarget target;
    Block().SetValue(SAMPLE_NODE, 0, &node);
    Block().SetValue(SAMPLE_TARGET, 0, &target);
    EXPECT_EQ(Block().GetINode(SAMPLE_NODE, 0, 0), &node);
    EXPECT_EQ(Block().GetINode(SAMPLE_TARGET, 0, 0), nullptr);
    EXPECT_EQ(Block().GetINode(SAMPLE_INT, 0, 0), nullptr);
    EXPECT_EQ(Block().GetINode(SAMPLE_NODES, 0, 0), nullptr);
}

TEST_F(ParamBlockTest, AnOwnersReferenceIsStoredInTheOwner) {
    SampleTarget target;
    EXPECT_TRUE(Block().SetValue(SAMPLE_OWNERS_TARGET, 0, &target));
    EXPECT_EQ(owner.target, &target);
    EXPECT_EQ(Block().GetReferenceTarget(SAMPLE_OWNERS_TARGET), &target);
    owner.messages.clear();
    target.NotifyDependents(FOREVER, PART_ALL, REFMSG_CHANGE);
    EXPECT_EQ(owner.messages.size(), 1U) << "the target's dependent is the owner, not the block";
    owner.DeleteReference(1);
    EXPECT_EQ(Block().GetReferenceTarget(SAMPLE_OWNERS_TARGET), nullptr);
}

// Telling of changes

TEST_F(ParamBlockTest, AChangeTellsTheOwnerWhichParameterItWas) {
    Block().SetValue(SAMPLE_INT, 0, 7);
    Block().SetValue(SAMPLE_FIXED_STRINGS, 0, _M("y"), 1);
    EXPECT_THAT(owner.changes, ElementsAre(ParameterChange{SAMPLE_INT, -1},
                                           ParameterChange{SAMPLE_FIXED_STRINGS, 1}));
    int tabIndex = 5;
    EXPECT_EQ(Block().LastNotifyParamID(tabIndex), -1) << "outside of a message";
    EXPECT_EQ(tabIndex, -1);
}

TEST_F(ParamBlockTest, AChangeIsToldToNobodyWhileNotificationsAreOff) {
    Block().EnableNotifications(FALSE);
    EXPECT_TRUE(Block().SetValue(SAMPLE_INT, 0, 7));
    EXPECT_EQ(Block().GetInt(SAMPLE_INT), 7);
    EXPECT_THAT(owner.changes, IsEmpty());
    Block().EnableNotifications(FALSE);
    Block().EnableNotifications(TRUE);
    EXPECT_TRUE(Block().SetValue(SAMPLE_INT, 0, 8));
    EXPECT_THAT(owner.changes, ElementsAre(ParameterChange{SAMPLE_INT, -1}));
}

TEST_F(ParamBlockTest, AChangeInsideAMessageKeepsTheOuterOnesParameter) {
    std::vector<ParamID> after;
    owner.onChange = [&] {
        int tabIndex = 0;
        if (Block().LastNotifyParamID(tabIndex) == SAMPLE_INT) {
            Block().SetValue(SAMPLE_BOOL, 0, 0);
            after.push_back(Block().LastNotifyParamID(tabIndex));
        }
    };
    Block().SetValue(SAMPLE_INT, 0, 7);
    EXPECT_THAT(after, ElementsAre(ParamID{SAMPLE_INT}));
    EXPECT_EQ(owner.changes.size(), 2U);
}

TEST_F(ParamBlockTest, AChangeOfATargetReachesTheOwnerAsOneOfTheParameter) {
    SampleTarget first;
    SampleTarget second;
    ReferenceTarget* targets[] = {&first, &second};
    Block().Append(SAMPLE_TARGETS, 2, targets);
    Block().SetValue(SAMPLE_TARGET, 0, &first);
    owner.changes.clear();
    second.NotifyDependents(FOREVER, PART_ALL, REFMSG_CHANGE);
    first.NotifyDependents(FOREVER, PART_ALL, REFMSG_CHANGE);
    EXPECT_THAT(owner.changes, ElementsAre(ParameterChange{SAMPLE_TARGETS, 1},
                                           ParameterChange{SAMPLE_TARGET, -1}));
}

TEST_F(ParamBlockTest, TheOwnerCanNotBePutIntoItsOwnBlock) {
    EXPECT_FALSE(Block().SetValue(SAMPLE_TARGET, 0, &owner));
    EXPECT_EQ(Block().GetReferenceTarget(SAMPLE_TARGET), nullptr);
    ReferenceTarget* targets[] = {nullptr, &owner};
    EXPECT_EQ(Block().Append(SAMPLE_TARGETS, 2, targets), -1);
    EXPECT_EQ(Block().Count(SAMPLE_TARGETS), 0);
    EXPECT_THAT(owner.changes, IsEmpty());
}

// Accessors

TEST_F(ParamBlockTest, SetPassesTheValueThroughTheAccessorBeforeItIsClamped) {
    accessor.onSet = [](PB2Value& v, ParamID id, int) {
        if (id == SAMPLE_RANGED_INT) {
            EXPECT_EQ(v.i, 100);
            v.i = 50;
        }
    };
    EXPECT_TRUE(Block().SetValue(SAMPLE_RANGED_INT, 0, 100));
    EXPECT_EQ(Block().GetInt(SAMPLE_RANGED_INT), 10);
    EXPECT_EQ(accessor.lastOwner, &owner);
}

TEST_F(ParamBlockTest, SetBooleansAreTrueOrFalseWhateverTheAccessorMakesOfThem) {
    accessor.onSet = [](PB2Value& v, ParamID, int) { v.i = 8; };
    Block().SetValue(SAMPLE_BOOL, 0, 0);
    EXPECT_EQ(Block().GetInt(SAMPLE_BOOL), 1);
}

TEST_F(ParamBlockTest, GetChangesWhatIsReadAndNotWhatIsStored) {
    accessor.onGet = [](PB2Value& v, ParamID id, int) {
        if (id == SAMPLE_INT) {
            v.i += 100;
        } else if (id == SAMPLE_FLOAT) {
            v.f *= 2.0F;
        }
    };
    EXPECT_EQ(Block().GetInt(SAMPLE_INT), 105);
    EXPECT_EQ(Block().GetInt(SAMPLE_INT), 105);
    EXPECT_EQ(Block().GetFloat(SAMPLE_FLOAT), 3.0F);
    accessor.onGet = nullptr;
    EXPECT_EQ(Block().GetInt(SAMPLE_INT), 5);
}

TEST_F(ParamBlockTest, AnAccessorMayReplaceATextOnItsWayInAndOut) {
    const auto replace = [](PB2Value& v, ParamID, int) {
        const MSTR longer = MSTR(v.s) + _M("+");
        MAX_free(v.s);
        v.s = SampleHeapText(longer.data());
    };
    accessor.onSet = replace;
    EXPECT_TRUE(Block().SetValue(SAMPLE_STRING, 0, _M("a")));
    EXPECT_EQ(Text(SAMPLE_STRING), MSTR(_M("a+")));
    accessor.onGet = replace;
    EXPECT_EQ(Text(SAMPLE_STRING), MSTR(_M("a++")));
    EXPECT_EQ(Text(SAMPLE_STRING), MSTR(_M("a++")));
}

TEST_F(ParamBlockTest, AnAccessorMayTakeATextAway) {
    const auto take = [](PB2Value& v, ParamID, int) {
        MAX_free(v.s);
        v.s = nullptr;
    };
    accessor.onGet = take;
    EXPECT_EQ(Text(SAMPLE_STRING), MSTR()) << "never null";
    accessor.onGet = nullptr;
    accessor.onSet = take;
    EXPECT_TRUE(Block().SetValue(SAMPLE_STRING, 0, _M("a")));
    EXPECT_EQ(Text(SAMPLE_STRING), MSTR());
}

TEST_F(ParamBlockTest, ANullTextReachesTheAccessorAsNull) {
    bool null = false;
    accessor.onSet = [&](PB2Value& v, ParamID, int) { null = v.s == nullptr; };
    Block().SetValue(SAMPLE_STRING, 0, static_cast<const MCHAR*>(nullptr));
    EXPECT_TRUE(null);
}

TEST_F(ParamBlockTest, AnAccessorMayChangeATarget) {
    SampleTarget target;
    SampleTarget other;
    accessor.onSet = [&](PB2Value& v, ParamID, int) { v.r = &other; };
    EXPECT_TRUE(Block().SetValue(SAMPLE_TARGET, 0, &target));
    accessor.onSet = nullptr;
    EXPECT_EQ(Block().GetReferenceTarget(SAMPLE_TARGET), &other);
    accessor.onGet = [&](PB2Value& v, ParamID, int) { v.r = &target; };
    EXPECT_EQ(Block().GetReferenceTarget(SAMPLE_TARGET), &target);
}

TEST_F(ParamBlockTest, AnAccessorMaySetOtherParameters) {
    accessor.onSet = [&](PB2Value&, ParamID id, int) {
        if (id == SAMPLE_INT) {
            Block().SetValue(SAMPLE_BOOL, 0, 0);
        }
    };
    Block().SetValue(SAMPLE_INT, 0, 7);
    EXPECT_EQ(Block().GetInt(SAMPLE_BOOL), 0);
    EXPECT_THAT(owner.changes,
                ElementsAre(ParameterChange{SAMPLE_BOOL, -1}, ParameterChange{SAMPLE_INT, -1}));
}

TEST_F(ParamBlockTest, AnAccessorThatShortensTheTableMakesTheWriteFail) {
    const MCHAR* texts[] = {_M("a"), _M("b")};
    Block().Append(SAMPLE_STRINGS, 2, texts);
    accessor.onSet = [&](PB2Value&, ParamID id, int) { Block().SetCount(id, 0); };
    EXPECT_FALSE(Block().SetValue(SAMPLE_STRINGS, 0, _M("c"), 1));
    EXPECT_EQ(Block().Count(SAMPLE_STRINGS), 0);
}

TEST_F(ParamBlockTest, EveryEntryOfATableIsSeenByTheAccessor) {
    std::vector<int> seen;
    accessor.onSet = [&](PB2Value&, ParamID, int tabIndex) { seen.push_back(tabIndex); };
    const MCHAR* texts[] = {_M("a"), _M("b")};
    Block().Append(SAMPLE_STRINGS, 2, texts);
    Block().SetValue(SAMPLE_STRINGS, 0, _M("c"), 1);
    EXPECT_THAT(seen, ElementsAre(0, 1, 1));
}

}  // namespace

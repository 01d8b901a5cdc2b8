// What of a parameter block files and copies hold.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>

#include "host/text.h"
#include "tests/host/sample_objects.h"
#include "tests/host/saved_sample.h"

namespace {

using host::SavedReference;
using host::SavedValue;
using testing::ElementsAre;

std::string SavedText(const SavedValue& value) {
    return host::ToUtf8(std::get<MSTR>(value));
}

class ParamBlockSaving : public testing::Test {
  protected:
    void SetUp() override {
        host::ResetApplication();
        ASSERT_TRUE(host::App().classes.Add(&desc));
        owner = std::make_unique<SampleOwner>(desc);
    }
    void TearDown() override {
        owner.reset();
        host::ResetApplication();
        EXPECT_EQ(desc.living, 0);
    }
    host::ParamBlock& Block() { return owner->Block(); }
    host::SavedParameter Saved(ParamID id) {
        for (const host::SavedParameter& parameter : Block().SaveValues(handles).parameters) {
            if (parameter.id == id) return parameter;
        }
        ADD_FAILURE() << "no parameter " << id;
        return {};
    }
    // Loads a file's block of this one parameter.
    void Load(ParamID id, ParamType2 type, std::vector<SavedValue> values) {
        Block().LoadValues({3, 1, {{id, type, std::move(values)}}}, handles);
        Block().LoadIsOver();
    }
    std::string Read(ParamID id, int tabIndex = 0) {
        return host::ToUtf8(Block().GetStr(id, 0, tabIndex));
    }
    void AppendTexts(std::vector<const MCHAR*> texts) {
        Block().Append(SAMPLE_STRINGS, static_cast<int>(texts.size()), texts.data(), 0);
    }

    SampleAccessor accessor;
    SavedSampleDesc desc{&accessor};
    std::unique_ptr<SampleOwner> owner;
    host::Handles handles;
};

TEST_F(ParamBlockSaving, SavesIdVersionAndAllParametersInOrder) {
    const host::SavedBlock saved = Block().SaveValues(handles);
    EXPECT_EQ(saved.id, 3);
    EXPECT_EQ(saved.version, 2U);
    std::vector<ParamID> ids;
    for (const host::SavedParameter& parameter : saved.parameters)
        ids.push_back(parameter.id);
    EXPECT_THAT(ids, ElementsAre(SAMPLE_INT, SAMPLE_RANGED_INT, SAMPLE_BOOL, SAMPLE_FLOAT,
                                 SAMPLE_RANGED_FLOAT, SAMPLE_FRACTION, SAMPLE_STRING,
                                 SAMPLE_FILENAME, SAMPLE_NODE, SAMPLE_TARGET, SAMPLE_TARGETS,
                                 SAMPLE_NODES, SAMPLE_STRINGS, SAMPLE_FIXED_STRINGS))
        << "without the owner's reference";
}

TEST_F(ParamBlockSaving, SavesValuesUnderTheirTypes) {
    SampleNode node;
    handles.Enter(70, &node);
    Block().SetValue(SAMPLE_INT, 0, 12, 0);
    Block().SetValue(SAMPLE_STRING, 0, _M("hello"), 0);
    Block().SetValue(SAMPLE_NODE, 0, static_cast<ReferenceTarget*>(&node), 0);
    AppendTexts({_M("a"), _M("")});
    EXPECT_EQ(Saved(SAMPLE_INT).type, TYPE_INT);
    EXPECT_EQ(std::get<int>(Saved(SAMPLE_INT).values.at(0)), 12);
    EXPECT_EQ(Saved(SAMPLE_BOOL).type, TYPE_BOOL);
    EXPECT_EQ(std::get<int>(Saved(SAMPLE_BOOL).values.at(0)), 1);
    EXPECT_EQ(Saved(SAMPLE_FRACTION).type, TYPE_PCNT_FRAC);
    EXPECT_EQ(std::get<float>(Saved(SAMPLE_FRACTION).values.at(0)), 0.05F);
    EXPECT_EQ(SavedText(Saved(SAMPLE_STRING).values.at(0)), "hello");
    EXPECT_EQ(std::get<SavedReference>(Saved(SAMPLE_NODE).values.at(0)).target, 70U);
    EXPECT_EQ(Saved(SAMPLE_STRINGS).type, TYPE_STRING_TAB);
    ASSERT_EQ(Saved(SAMPLE_STRINGS).values.size(), 2U);
    EXPECT_EQ(SavedText(Saved(SAMPLE_STRINGS).values[0]), "a");
    EXPECT_EQ(SavedText(Saved(SAMPLE_STRINGS).values[1]), "");
    EXPECT_TRUE(Saved(SAMPLE_TARGETS).values.empty());
    Block().DeleteAllRefsFromMe();
}

TEST_F(ParamBlockSaving, SavesNoTargetForNullAndForOneWithoutAHandle) {
    SampleNode node;
    Block().SetValue(SAMPLE_NODE, 0, static_cast<ReferenceTarget*>(&node), 0);
    EXPECT_EQ(std::get<SavedReference>(Saved(SAMPLE_NODE).values.at(0)).target, 0U);
    EXPECT_EQ(std::get<SavedReference>(Saved(SAMPLE_TARGET).values.at(0)).target, 0U);
    Block().DeleteAllRefsFromMe();
}

TEST_F(ParamBlockSaving, GoesPastAccessorsBothWays) {
    accessor.onGet = [](PB2Value& v, ParamID id, int) {
        if (id == SAMPLE_INT) v.i = 1000;
    };
    accessor.onSet = [](PB2Value& v, ParamID id, int) {
        if (id == SAMPLE_INT) v.i = 2000;
    };
    EXPECT_EQ(std::get<int>(Saved(SAMPLE_INT).values.at(0)), 5);
    Load(SAMPLE_INT, TYPE_INT, {8});
    Load(SAMPLE_STRINGS, TYPE_STRING_TAB, {MSTR(_M("a"))});
    EXPECT_EQ(std::get<int>(Saved(SAMPLE_INT).values.at(0)), 8);
    EXPECT_TRUE(accessor.changes.empty());
    EXPECT_TRUE(owner->messages.empty()) << "nobody is told";
}

TEST_F(ParamBlockSaving, ClampsWhatItLoads) {
    Load(SAMPLE_RANGED_INT, TYPE_INT, {11});
    EXPECT_EQ(Block().GetInt(SAMPLE_RANGED_INT, 0, 0), 10);
    Load(SAMPLE_RANGED_INT, TYPE_INT, {-3});
    EXPECT_EQ(Block().GetInt(SAMPLE_RANGED_INT, 0, 0), 1);
    Load(SAMPLE_RANGED_FLOAT, TYPE_FLOAT, {0.5F});
    EXPECT_EQ(Block().GetFloat(SAMPLE_RANGED_FLOAT, 0, 0), 1.0F);
    Load(SAMPLE_RANGED_FLOAT, TYPE_FLOAT, {std::numeric_limits<float>::infinity()});
    EXPECT_EQ(Block().GetFloat(SAMPLE_RANGED_FLOAT, 0, 0), 10000.0F);
    Load(SAMPLE_BOOL, TYPE_BOOL, {7});
    EXPECT_EQ(std::get<int>(Saved(SAMPLE_BOOL).values.at(0)), 1);
}

TEST_F(ParamBlockSaving, ConvertsNumbersAsWritesDo) {
    Load(SAMPLE_INT, TYPE_FLOAT, {-3.9F});
    EXPECT_EQ(Block().GetInt(SAMPLE_INT, 0, 0), -3);
    Load(SAMPLE_INT, TYPE_FLOAT, {1e20F});
    EXPECT_EQ(Block().GetInt(SAMPLE_INT, 0, 0), std::numeric_limits<int>::max());
    Load(SAMPLE_FLOAT, TYPE_INT, {3});
    EXPECT_EQ(Block().GetFloat(SAMPLE_FLOAT, 0, 0), 3.0F);
    Load(SAMPLE_BOOL, TYPE_FLOAT, {0.0F});
    EXPECT_EQ(Block().GetInt(SAMPLE_BOOL, 0, 0), 0);
    Load(SAMPLE_BOOL, TYPE_FLOAT, {0.25F});
    EXPECT_EQ(Block().GetInt(SAMPLE_BOOL, 0, 0), 1);
}

TEST_F(ParamBlockSaving, KeepsWhatItHasForAValueOfAnotherKind) {
    Load(SAMPLE_INT, TYPE_STRING, {MSTR(_M("8"))});
    EXPECT_EQ(Block().GetInt(SAMPLE_INT, 0, 0), 5);
    Load(SAMPLE_STRING, TYPE_INT, {8});
    EXPECT_EQ(Read(SAMPLE_STRING), "text");
    Load(SAMPLE_FLOAT, TYPE_FLOAT, {std::nanf("")});
    EXPECT_EQ(Block().GetFloat(SAMPLE_FLOAT, 0, 0), 1.5F);
    SampleTarget notANode;
    handles.Enter(9, &notANode);
    Load(SAMPLE_NODE, TYPE_INODE, {SavedReference{9}});
    EXPECT_EQ(Block().GetReferenceTarget(SAMPLE_NODE, 0, 0), nullptr);
}

TEST_F(ParamBlockSaving, LeavesOutWhatTheClassDoesNotHave) {
    SampleTarget target;
    handles.Enter(9, &target);
    Load(99, TYPE_INT, {8});
    Load(SAMPLE_OWNERS_TARGET, TYPE_REFTARG, {SavedReference{9}});
    EXPECT_EQ(Block().Count(99), 0);
    EXPECT_EQ(owner->target, nullptr);
}

TEST_F(ParamBlockSaving, KeepsWhatTheFileDoesNotHave) {
    Block().SetValue(SAMPLE_INT, 0, 9, 0);
    AppendTexts({_M("a")});
    Load(SAMPLE_BOOL, TYPE_BOOL, {0});
    EXPECT_EQ(Block().GetInt(SAMPLE_INT, 0, 0), 9);
    EXPECT_EQ(Block().Count(SAMPLE_STRINGS), 1);
    Load(SAMPLE_INT, TYPE_INT, {});
    EXPECT_EQ(Block().GetInt(SAMPLE_INT, 0, 0), 9);
}

TEST_F(ParamBlockSaving, GivesTablesTheFilesSizeUnlessItIsFixed) {
    AppendTexts({_M("a"), _M("b"), _M("c")});
    Load(SAMPLE_STRINGS, TYPE_STRING_TAB, {MSTR(_M("z"))});
    ASSERT_EQ(Block().Count(SAMPLE_STRINGS), 1);
    EXPECT_EQ(Read(SAMPLE_STRINGS, 0), "z");
    Load(SAMPLE_STRINGS, TYPE_STRING_TAB, {});
    EXPECT_EQ(Block().Count(SAMPLE_STRINGS), 0);
    Load(SAMPLE_FIXED_STRINGS, TYPE_STRING_TAB, {MSTR(_M("p"))});
    ASSERT_EQ(Block().Count(SAMPLE_FIXED_STRINGS), 2);
    EXPECT_EQ(Read(SAMPLE_FIXED_STRINGS, 0), "p");
    EXPECT_EQ(Read(SAMPLE_FIXED_STRINGS, 1), "x");
    Load(SAMPLE_FIXED_STRINGS, TYPE_STRING_TAB, {MSTR(_M("p")), MSTR(_M("q")), MSTR(_M("r"))});
    ASSERT_EQ(Block().Count(SAMPLE_FIXED_STRINGS), 2);
    EXPECT_EQ(Read(SAMPLE_FIXED_STRINGS, 1), "q");
}

TEST_F(ParamBlockSaving, RefersToTheTargetsOfTheFileAndDropsThoseThatItHad) {
    ReferenceTarget* dropped = MakeSample();
    SavedSample* loaded = MakeSample();
    handles.Enter(9, loaded);
    Block().Append(SAMPLE_TARGETS, 1, &dropped, 0);
    ASSERT_EQ(desc.living, 2);
    owner->changes.clear();
    Load(SAMPLE_TARGETS, TYPE_REFTARG_TAB, {SavedReference{0}, SavedReference{9}});
    EXPECT_EQ(desc.living, 1);
    ASSERT_EQ(Block().Count(SAMPLE_TARGETS), 2);
    EXPECT_EQ(Block().GetReferenceTarget(SAMPLE_TARGETS, 0, 0), nullptr);
    EXPECT_EQ(Block().GetReferenceTarget(SAMPLE_TARGETS, 0, 1), loaded);
    loaded->NotifyDependents(FOREVER, PART_ALL, REFMSG_CHANGE);
    EXPECT_THAT(owner->changes, ElementsAre(ParameterChange{SAMPLE_TARGETS, 1}));
}

TEST_F(ParamBlockSaving, TellsTheFilesVersionUntilLoadingIsOver) {
    EXPECT_EQ(Block().GetInterface(IPARAMBLOCK2POSTLOADINFO_ID), nullptr);
    Block().LoadValues({3, 101, {}}, handles);
    BaseInterface* found = Block().GetInterface(IPARAMBLOCK2POSTLOADINFO_ID);
    ASSERT_TRUE(found);
    EXPECT_EQ(static_cast<IParamBlock2PostLoadInfo*>(found)->GetVersion(), 101U);
    EXPECT_EQ(Block().GetInterface(Interface_ID(1, 2)), nullptr);
    Block().LoadIsOver();
    EXPECT_EQ(Block().GetInterface(IPARAMBLOCK2POSTLOADINFO_ID), nullptr);
}

// Copies

class ParamBlockCloning : public ParamBlockSaving {
  protected:
    host::ParamBlock& Clone() {
        copy = static_cast<host::ParamBlock*>(Block().Clone(remap));
        return *copy;
    }

    DefaultRemapDir remap;
    host::ParamBlock* copy = nullptr;
};

TEST_F(ParamBlockCloning, CopiesValuesPastAccessors) {
    accessor.onGet = [](PB2Value& v, ParamID id, int) {
        if (id == SAMPLE_RANGED_INT) v.i = 1000;
    };
    Block().SetValue(SAMPLE_INT, 0, 12, 0);
    Block().SetValue(SAMPLE_STRING, 0, _M("hello"), 0);
    AppendTexts({_M("a"), _M("b")});
    accessor.changes.clear();
    host::Owned<host::ParamBlock> cloned(&Clone());
    accessor.onGet = nullptr;
    EXPECT_EQ(cloned->GetDesc(), Block().GetDesc());
    EXPECT_EQ(cloned->GetInt(SAMPLE_INT, 0, 0), 12);
    EXPECT_EQ(cloned->GetInt(SAMPLE_RANGED_INT, 0, 0), 5);
    EXPECT_EQ(host::ToUtf8(cloned->GetStr(SAMPLE_STRING, 0, 0)), "hello");
    ASSERT_EQ(cloned->Count(SAMPLE_STRINGS), 2);
    EXPECT_EQ(host::ToUtf8(cloned->GetStr(SAMPLE_STRINGS, 0, 1)), "b");
    EXPECT_TRUE(accessor.changes.empty());
    cloned->SetValue(SAMPLE_INT, 0, 13, 0);
    EXPECT_EQ(Block().GetInt(SAMPLE_INT, 0, 0), 12) << "from then on each has its own";
}

TEST_F(ParamBlockCloning, CopiesTargetsOnceAndKeepsTheirPlaces) {
    ReferenceTarget* sample = MakeSample();
    SampleTarget cannotBeCopied;
    ReferenceTarget* targets[] = {sample, nullptr, sample, &cannotBeCopied};
    Block().Append(SAMPLE_TARGETS, 4, targets, 0);
    Block().SetValue(SAMPLE_TARGET, 0, sample, 0);
    ASSERT_EQ(desc.living, 1);
    {
        const host::Owned<host::ParamBlock> cloned(&Clone());
        EXPECT_EQ(desc.living, 2);
        ReferenceTarget* copied = cloned->GetReferenceTarget(SAMPLE_TARGETS, 0, 0);
        ASSERT_TRUE(copied);
        EXPECT_NE(copied, sample);
        EXPECT_EQ(copied, remap.FindMapping(sample));
        ASSERT_EQ(cloned->Count(SAMPLE_TARGETS), 4);
        EXPECT_EQ(cloned->GetReferenceTarget(SAMPLE_TARGETS, 0, 1), nullptr);
        EXPECT_EQ(cloned->GetReferenceTarget(SAMPLE_TARGETS, 0, 2), copied);
        EXPECT_EQ(cloned->GetReferenceTarget(SAMPLE_TARGETS, 0, 3), nullptr);
        EXPECT_EQ(cloned->GetReferenceTarget(SAMPLE_TARGET, 0, 0), copied);
    }
    EXPECT_EQ(desc.living, 1) << "the copy goes with its last reference";
    Block().DeleteAllRefsFromMe();
}

TEST_F(ParamBlockCloning, StandsForTheSameObjectsOfTheScene) {
    host::Node& node = host::App().scene.AddNode(_M("a"));
    host::SceneLayer& layer = host::App().scene.AddLayer(_M("b"));
    host::RenderElement& element = host::App().elements[RS_Production].Add(Class_ID(4, 0), _M("c"));
    ReferenceTarget* targets[] = {&layer, &element};
    Block().SetValue(SAMPLE_NODE, 0, static_cast<ReferenceTarget*>(&node), 0);
    Block().Append(SAMPLE_TARGETS, 2, targets, 0);
    const host::Owned<host::ParamBlock> cloned(&Clone());
    EXPECT_EQ(cloned->GetINode(SAMPLE_NODE, 0, 0), &node);
    EXPECT_EQ(cloned->GetReferenceTarget(SAMPLE_TARGETS, 0, 0), &layer);
    EXPECT_EQ(cloned->GetReferenceTarget(SAMPLE_TARGETS, 0, 1), &element);
}

TEST_F(ParamBlockCloning, BelongsToTheFirstWhoHasItAsABlock) {
    host::ParamBlock& cloned = Clone();
    EXPECT_EQ(cloned.GetOwner(), nullptr);
    {
        const host::TargetReference step(&cloned);
        SampleTarget stranger;
        stranger.ReplaceReference(0, &cloned);
        EXPECT_EQ(cloned.GetOwner(), nullptr) << "neither has it as one of its blocks";
    }
    SampleOwner other(desc);
    ASSERT_EQ(other.ReplaceReference(0, &cloned), REF_SUCCEED);
    EXPECT_EQ(cloned.GetOwner(), &other);
    SampleOwner third(desc);
    const host::TargetReference watch(&cloned);
    ASSERT_EQ(third.ReplaceReference(1, &cloned), REF_SUCCEED);
    EXPECT_EQ(cloned.GetOwner(), &other);
    accessor.lastOwner = nullptr;
    cloned.GetInt(SAMPLE_INT, 0, 0);
    EXPECT_EQ(accessor.lastOwner, &other);
    other.DeleteReference(0);
    EXPECT_EQ(watch.Get(), nullptr) << "a block goes with its owner's reference";
    EXPECT_EQ(third.target, nullptr);
}

TEST_F(ParamBlockCloning, TellsItsOwnerOfChanges) {
    SampleOwner other(desc);
    other.ReplaceReference(0, &Clone());
    other.changes.clear();
    other.block->SetValue(SAMPLE_INT, 0, 9, 0);
    EXPECT_THAT(other.changes, ElementsAre(ParameterChange{SAMPLE_INT, -1}));
    EXPECT_TRUE(owner->changes.empty());
}

TEST_F(ParamBlockCloning, LeavesTheOwnersReferencesToTheOwner) {
    SampleNode node;
    Block().SetValue(SAMPLE_OWNERS_TARGET, 0, static_cast<ReferenceTarget*>(&node), 0);
    ASSERT_EQ(owner->target, &node);
    SampleOwner other(desc);
    other.ReplaceReference(0, &Clone());
    EXPECT_EQ(other.target, nullptr);
    EXPECT_EQ(other.block->GetReferenceTarget(SAMPLE_OWNERS_TARGET), nullptr);
    other.block->SetValue(SAMPLE_OWNERS_TARGET, 0, static_cast<ReferenceTarget*>(&node));
    EXPECT_EQ(other.target, &node);
    other.DeleteReference(1);
    owner->DeleteReference(1);
}

TEST_F(ParamBlockCloning, HasNoVersionOfAFile) {
    Block().LoadValues({3, 101, {}}, handles);
    const host::Owned<host::ParamBlock> cloned(&Clone());
    EXPECT_EQ(cloned->GetInterface(IPARAMBLOCK2POSTLOADINFO_ID), nullptr);
    Block().LoadIsOver();
}

}  // namespace

#include "plugin/post_load_migration.h"

#include <map>

#include "host/saved_objects.h"
#include "tests/effect/effect_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// By id.
using Values = std::map<int, int>;

// What each version didn't have, turned on.
const Values allOn = {{78, 1}, {80, 1}, {81, 1},  {58, 1},  {60, 1},  {61, 1}, {67, 1},
                      {82, 1}, {86, 1}, {127, 1}, {126, 3}, {129, 3}, {130, 1}};

class PostLoadMigration : public EffectTest {
  protected:
    PostLoadMigration() {
        for (int i = 0; i < LibNumberClasses(); ++i)
            Host().classes.Add(LibClassDesc(i));
        Host().invalidateUI = [this](ParamBlockDesc2&, ParamID id, int) { changed.push_back(id); };
    }
    ~PostLoadMigration() override { Host().invalidateUI = nullptr; }

    // The effect of a file whose block has these values and no others.
    void Load(DWORD version, const Values& values) {
        host::SavedBlock block{0, version, {}};
        for (const auto& [id, value] : values) {
            const auto parameter = static_cast<ParamID>(id);
            block.parameters.push_back(
                {parameter, effect->pblock->GetDesc()->GetParamDef(parameter).type, {value}});
        }
        const std::vector<host::SavedObject> objects = {{.handle = 1,
                                                         .superClass = 4240,
                                                         .classID = {0x70068609, 0x1d5d297},
                                                         .chunks = {},
                                                         .appData = {},
                                                         .references = {block}}};
        ASSERT_THAT(host::CheckObjects(objects, {}, Host().classes), IsEmpty());
        host::Handles handles;
        changed.clear();
        host::LoadObjects(objects, handles, Host().classes);
        loaded.reset(dynamic_cast<effect::PSDOutput*>(handles.Target(1)));
        ASSERT_NE(loaded, nullptr);
    }
    int Get(int id) { return loaded->pblock->GetInt(static_cast<ParamID>(id)); }
    // Those of `ids` that are on, or aren't 0.
    std::vector<int> On(const std::vector<int>& ids) {
        std::vector<int> on;
        for (const int id : ids) {
            if (Get(id)) on.push_back(id);
        }
        return on;
    }

    host::Owned<effect::PSDOutput> loaded;
    // The parameters that were set, in their order.
    std::vector<int> changed;
};

const std::vector<int> offBeforeVersion2 = {78, 80, 81, 58, 60, 61, 67, 82, 86};

TEST_F(PostLoadMigration, AFormerVersionGetsItsDepthFromParameter44) {
    for (const DWORD version : {101U, 102U, 0xffffffffU}) {
        Load(version, {{44, 8}});
        EXPECT_EQ(Get(46), 8) << version;
        Load(version, {{44, 16}});
        EXPECT_EQ(Get(46), 16) << version;
        Load(version, {});
        EXPECT_EQ(Get(46), 8) << version << ": what parameter 44 starts with";
    }
}

TEST_F(PostLoadMigration, ADepthThatNoFormerVersionHadBecomes16) {
    for (const int depth : {0, 32, -1}) {
        Load(101, {{44, depth}});
        EXPECT_EQ(Get(46), 16) << depth;
    }
}

TEST_F(PostLoadMigration, Parameter44IsAnsweredFromThePresentAgainAfterwards) {
    Load(101, {{44, 8}});
    loaded->pblock->SetValue("bitDepth"_param, 0, 32);
    EXPECT_EQ(Get(44), 16);
}

TEST_F(PostLoadMigration, AFormerVersionHadAFilenameOfItsOwn) {
    Load(101, {{53, 1}});
    EXPECT_EQ(Get(53), FALSE);
    Load(101, {});
    EXPECT_EQ(Get(53), FALSE);
    for (const DWORD version : {1U, 2U, 3U, 4U, 100U}) {
        Load(version, {{44, 8}, {46, 32}, {53, 1}});
        EXPECT_EQ(Get(53), TRUE) << version;
        EXPECT_EQ(Get(46), 32) << version;
    }
}

TEST_F(PostLoadMigration, LayersOfColorBecomeCutOutsInEveryVersion) {
    for (const DWORD version : {101U, 1U, 2U, 3U, 4U}) {
        Load(version, {{50, 2}, {23, 3}, {24, 2}, {29, 3}, {73, 2}});
        for (const int id : {50, 23, 24, 29})
            EXPECT_EQ(Get(id), 5) << "parameter " << id << " of version " << version;
        EXPECT_EQ(Get(73), 2) << "selection sets never had them";
        for (const int value : {0, 1, 4, 5}) {
            Load(version, {{50, value}, {23, value}, {24, value}, {29, value}});
            for (const int id : {50, 23, 24, 29})
                EXPECT_EQ(Get(id), value) << "parameter " << id << " of version " << version;
        }
    }
}

TEST_F(PostLoadMigration, BeforeVersion2AllThatItBroughtIsOff) {
    for (const DWORD version : {101U, 0U, 1U}) {
        Load(version, allOn);
        EXPECT_THAT(On(offBeforeVersion2), IsEmpty()) << version;
        EXPECT_THAT(On({127, 126, 129, 130}), IsEmpty()) << version;
    }
}

TEST_F(PostLoadMigration, Version2KeepsWhatItHadAndLosesWhatCameAfterIt) {
    Load(2, allOn);
    EXPECT_EQ(On(offBeforeVersion2), offBeforeVersion2);
    EXPECT_THAT(On({127, 126, 129, 130}), IsEmpty());
    Load(2, {});
    EXPECT_THAT(On({127, 126, 129, 130}), IsEmpty()) << "and not a new effect's defaults";
}

TEST_F(PostLoadMigration, Version3OnlyLosesSorting) {
    Load(3, allOn);
    EXPECT_EQ(On(offBeforeVersion2), offBeforeVersion2);
    EXPECT_EQ(Get(127), 1);
    EXPECT_EQ(Get(126), 3);
    EXPECT_EQ(Get(129), 3);
    EXPECT_EQ(Get(130), 0);
    EXPECT_THAT(changed, ElementsAre(51, 130)) << "after the number that each new effect draws";
}

TEST_F(PostLoadMigration, Version4StaysAsItIs) {
    for (const DWORD version : {4U, 5U, 99U, 100U}) {
        Load(version, allOn);
        for (const auto& [id, value] : allOn)
            EXPECT_EQ(Get(id), value) << "parameter " << id << " of version " << version;
        EXPECT_THAT(changed, ElementsAre(51)) << version;
    }
}

TEST_F(PostLoadMigration, GammaBeforeVersion3IsThatOfParameter55) {
    for (const DWORD version : {101U, 1U, 2U}) {
        Load(version, {{55, 1}});
        EXPECT_EQ(Get(129), 2) << version;
        EXPECT_EQ(Get(126), 0) << version;
        Load(version, {{55, 0}});
        EXPECT_EQ(Get(129), 0) << version;
    }
    Load(3, {{55, 1}});
    EXPECT_EQ(Get(129), 3);
}

TEST_F(PostLoadMigration, StepsComeInTheirOrder) {
    Load(101, {{50, 2}, {23, 2}, {24, 2}, {29, 2}});
    // The depth shows parameter 35 anew before itself.
    EXPECT_THAT(changed, ElementsAre(51, 35, 46, 53, 50, 23, 24, 29, 78, 80, 81, 58, 60, 61, 67, 82,
                                     86, 127, 129, 126, 130));
}

TEST_F(PostLoadMigration, ABlockThatDoesntSayItsVersionStaysAsItIs) {
    Set("autoSort"_param, TRUE);
    Set("outputNodeIDsAs"_param, 2);
    plugin::MakePostLoadCallback(*effect)->proc(nullptr);
    EXPECT_EQ(effect->pblock->GetInt("autoSort"_param), TRUE);
    EXPECT_EQ(effect->pblock->GetInt("outputNodeIDsAs"_param), 2);
}

TEST_F(PostLoadMigration, AnEffectWithoutItsBlockHasNothingToBringUpToDate) {
    effect->DeleteReference(0);
    plugin::MakePostLoadCallback(*effect)->proc(nullptr);
    EXPECT_EQ(effect->pblock, nullptr);
}

}  // namespace

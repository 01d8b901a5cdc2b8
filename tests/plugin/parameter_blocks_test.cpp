#include "plugin/parameter_blocks.h"

#include "plugin/parameter_accessor.h"
#include "plugin/parameters.h"
#include "tests/effect/effect_fixture.h"

namespace {

using parameters::Row;

class SomeClass : public ClassDesc2 {
  public:
    int IsPublic() override { return 0; }
    void* Create(BOOL) override { return nullptr; }
    const MCHAR* ClassName() override { return _M(""); }
    SClass_ID SuperClassID() override { return REF_TARGET_CLASS_ID; }
    Class_ID ClassID() override { return {}; }
    const MCHAR* Category() override { return _M(""); }
};

class ParameterBlocks : public testing::Test {
  protected:
    ParameterBlocks() { host::ResetApplication(); }

    SomeClass owner;
    std::unique_ptr<ParamBlockDesc2> effectBlock =
        plugin::MakeEffectBlockDesc(owner, &plugin::EffectAccessor());
    SomeClass layerOwner;
    std::unique_ptr<ParamBlockDesc2> layerBlock = plugin::MakeLayerBlockDesc(layerOwner);
};

TEST_F(ParameterBlocks, AreAddedToTheirClasses) {
    EXPECT_EQ(owner.GetParamBlockDescByID(0), effectBlock.get());
    EXPECT_EQ(layerOwner.GetParamBlockDescByID(0), layerBlock.get());
    EXPECT_EQ(effectBlock->cd, &owner);
    EXPECT_EQ(layerBlock->cd, &layerOwner);
}

TEST_F(ParameterBlocks, HaveTheirNumbers) {
    EXPECT_EQ(effectBlock->ID, 0);
    EXPECT_EQ(host::ToUtf8(effectBlock->int_name), "params");
    EXPECT_EQ(effectBlock->flags, P_AUTO_CONSTRUCT | P_AUTO_UI | P_MULTIMAP | P_VERSION);
    EXPECT_EQ(effectBlock->Version(), 4U);
    EXPECT_EQ(effectBlock->ref_no, 0);
    EXPECT_EQ(layerBlock->ID, 0);
    EXPECT_EQ(host::ToUtf8(layerBlock->int_name), "params");
    EXPECT_EQ(layerBlock->flags, P_AUTO_CONSTRUCT | P_VERSION);
    EXPECT_EQ(layerBlock->Version(), 1U);
    EXPECT_EQ(layerBlock->ref_no, 0);
}

TEST_F(ParameterBlocks, OfTheEffectHasItsRollupsInOrder) {
    const struct {
        MapID map;
        int dialogTemplate;
        int title;
        bool closed;
    } rollups[] = {{0, 4712, 4, false},  {1, 4714, 24, true}, {5, 122, 49, true},
                   {7, 28676, 55, true}, {2, 123, 23, true},  {6, 4715, 53, true},
                   {4, 4716, 39, true}};
    ASSERT_EQ(effectBlock->map_specs.size(), std::size(rollups));
    for (std::size_t i = 0; i < std::size(rollups); ++i) {
        const ParamBlockDesc2::map_spec& map = effectBlock->map_specs[i];
        EXPECT_EQ(map.map_id, rollups[i].map);
        EXPECT_EQ(map.dlg_template, rollups[i].dialogTemplate);
        EXPECT_EQ(map.title, rollups[i].title);
        EXPECT_EQ(map.test_flags, 0);
        EXPECT_EQ(map.rollup_flags != 0, rollups[i].closed) << "map " << map.map_id;
    }
    EXPECT_TRUE(layerBlock->map_specs.empty());
}

TEST_F(ParameterBlocks, HoldTheRowsInOrder) {
    ASSERT_EQ(effectBlock->Count(), std::size(parameters::effectRows));
    for (int i = 0; i < effectBlock->Count(); ++i) {
        EXPECT_EQ(effectBlock->GetParamDefByIndex(i).ID,
                  parameters::effectRows[static_cast<std::size_t>(i)].id);
    }
    ASSERT_EQ(layerBlock->Count(), std::size(parameters::layerRows));
    for (int i = 0; i < layerBlock->Count(); ++i) {
        EXPECT_EQ(layerBlock->GetParamDefByIndex(i).ID,
                  parameters::layerRows[static_cast<std::size_t>(i)].id);
    }
}

TEST_F(ParameterBlocks, HideInternalParametersFromScriptsAndNameTheOthers) {
    for (const Row& row : parameters::effectRows) {
        EXPECT_EQ(host::ToUtf8(effectBlock->GetParamDef(row.id).int_name),
                  parameters::IsInternal(row.id) ? "" : std::string(row.name));
    }
    for (const Row& row : parameters::layerRows) {
        EXPECT_EQ(host::ToUtf8(layerBlock->GetParamDef(row.id).int_name), row.name);
    }
}

TEST_F(ParameterBlocks, LeaveFreeIDsOut) {
    for (const int id : {1, 4, 5, 7, 14, 31, 32, 33, 125, 131}) {
        EXPECT_EQ(effectBlock->IDtoIndex(id), -1) << id;
    }
    EXPECT_EQ(layerBlock->IDtoIndex(13), -1);
}

TEST_F(ParameterBlocks, HaveTheTypesAndFlagsOfTheRows) {
    const struct {
        ParamID id;
        ParamType2 type;
        int flags;
    } samples[] = {
        {2, TYPE_REFTARG_TAB, P_VARIABLE_SIZE},
        {3, TYPE_REFTARG_TAB, P_VARIABLE_SIZE},
        {25, TYPE_BOOL, 0},
        {6, TYPE_INT, 0},
        {0, TYPE_FILENAME, 0},
        {19, TYPE_STRING, 0},
        {30, TYPE_INODE_TAB, P_VARIABLE_SIZE},
        {45, TYPE_FLOAT, 0},
        {75, TYPE_STRING_TAB, P_VARIABLE_SIZE},
        {76, TYPE_FILENAME, 0},
        {83, TYPE_PCNT_FRAC, 0},
    };
    for (const auto& sample : samples) {
        EXPECT_EQ(effectBlock->GetParamDef(sample.id).type, sample.type) << sample.id;
        EXPECT_EQ(effectBlock->GetParamDef(sample.id).flags, sample.flags) << sample.id;
        EXPECT_EQ(effectBlock->GetParamDef(sample.id).tab_size, 0) << sample.id;
    }
    const ParamDef& element = layerBlock->GetParamDef("renderElement"_layerParam);
    EXPECT_EQ(element.type, TYPE_REFTARG);
    EXPECT_EQ(element.flags, P_OWNERS_REF);
    EXPECT_EQ(element.refno, 1);
}

TEST_F(ParameterBlocks, HaveTheAccessorWhereTheRowsSaySoAndNoneInTheLayers) {
    for (const Row& row : parameters::effectRows) {
        EXPECT_EQ(effectBlock->GetParamDef(row.id).accessor,
                  row.accessor ? &plugin::EffectAccessor() : nullptr)
            << row.name;
    }
    for (const Row& row : parameters::layerRows) {
        EXPECT_EQ(layerBlock->GetParamDef(row.id).accessor, nullptr) << row.name;
    }
    SomeClass bare;
    const auto without = plugin::MakeEffectBlockDesc(bare, nullptr);
    EXPECT_EQ(without->GetParamDef("filename"_param).accessor, nullptr);
}

TEST_F(ParameterBlocks, SayThatFilenameIsARenderOutput) {
    EXPECT_EQ(effectBlock->GetParamDef("filename"_param).assetTypeID, 8);
    EXPECT_EQ(effectBlock->GetParamDef("shadowPassSource"_param).assetTypeID, 0);
}

// The values of a new effect, and how they take others.
class BlockValues : public EffectTest {
  protected:
    IParamBlock2& Block() { return *effect->pblock; }
};

TEST_F(BlockValues, AreTheDefaultsAtFirst) {
    for (const Row& row : parameters::effectRows) {
        switch (row.type) {
            case parameters::Type::Bool:
            case parameters::Type::Int:
                if (row.id == "sceneLayerAppDataChunkId"_param ||
                    row.id == "legacyBitDepth"_param) {
                    continue;
                }
                EXPECT_EQ(Block().GetInt(row.id), static_cast<int>(row.number)) << row.name;
                break;
            case parameters::Type::Float:
            case parameters::Type::Fraction:
                EXPECT_EQ(Block().GetFloat(row.id), static_cast<float>(row.number)) << row.name;
                break;
            case parameters::Type::String:
            case parameters::Type::Filename:
                EXPECT_EQ(host::ToUtf8(Block().GetStr(row.id)), row.text) << row.name;
                break;
            default:
                EXPECT_EQ(Block().Count(row.id), 0) << row.name;
                break;
        }
    }
}

TEST_F(BlockValues, AreKeptInTheirRange) {
    for (const auto& [value, expected] : {std::pair{0.5F, 1.0F},
                                          {-3.0F, 1.0F},
                                          {1.0F, 1.0F},
                                          {150.5F, 150.5F},
                                          {10000.0F, 10000.0F},
                                          {10001.0F, 10000.0F}}) {
        Block().SetValue("resolution"_param, 0, value);
        EXPECT_EQ(Block().GetFloat("resolution"_param), expected) << value;
    }
    for (const auto& [value, expected] : {std::pair{-1, 0}, {0, 0}, {2000, 2000}, {5000, 2000}}) {
        Block().SetValue("renderOrder"_param, 0, value);
        EXPECT_EQ(Block().GetInt("renderOrder"_param), expected) << value;
    }
}

}  // namespace

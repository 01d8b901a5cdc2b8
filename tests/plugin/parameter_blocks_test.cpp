#include "plugin/parameter_blocks.h"

#include <algorithm>
#include <map>
#include <optional>

#include "plugin/entry.h"
#include "plugin/parameter_accessor.h"
#include "plugin/parameters.h"
#include "plugin/string_table.h"
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

struct BoundControl {
    ParamID id;
    MapID map;
    ControlType2 type;
    std::vector<int> ids;
    std::vector<int> values{};
    std::vector<int> texts{};
    float step = 0.0F;
};

std::vector<BoundControl> BoundControls() {
    const std::vector<int> kinds{0, 5, 1, 4};
    const std::vector<int> kindTexts{25, 48, 26, 38};
    return {
        {25, 0, TYPE_SINGLECHEKBOX, {1080}},
        {36, 0, TYPE_SINGLECHEKBOX, {1129}},
        {26, 1, TYPE_SINGLECHEKBOX, {1088}},
        {6, 1, TYPE_RADIO, {1049, 1050}, {0, 1}},
        {15, 6, TYPE_SINGLECHEKBOX, {1055}},
        {16, 6, TYPE_SINGLECHEKBOX, {1054}},
        {17, 6, TYPE_SINGLECHEKBOX, {1053}},
        {18, 2, TYPE_SINGLECHEKBOX, {1039}},
        {38, 2, TYPE_CHECKBUTTON, {1010}},
        {23, 2, TYPE_INT_COMBOBOX, {1105}, kinds, kindTexts},
        {19, 2, TYPE_EDITBOX, {1075}},
        {20, 2, TYPE_SINGLECHEKBOX, {1040}},
        {39, 2, TYPE_CHECKBUTTON, {1009}},
        {24, 2, TYPE_INT_COMBOBOX, {1106}, kinds, kindTexts},
        {21, 2, TYPE_EDITBOX, {1076}},
        {28, 2, TYPE_SINGLECHEKBOX, {1041}},
        {40, 2, TYPE_CHECKBUTTON, {1007}},
        {29, 2, TYPE_INT_COMBOBOX, {1109}, kinds, kindTexts},
        {30, 2, TYPE_NODELISTBOX, {1094, 0, 0, 0}},
        {34, 6, TYPE_SINGLECHEKBOX, {1060}},
        {41, 4, TYPE_SINGLECHEKBOX, {1130}},
        {42, 4, TYPE_SINGLECHEKBOX, {1131}},
        {43, 4, TYPE_EDITBOX, {1133}},
        {45, 0, TYPE_SPINNER, {1144, 1145}, {}, {}, 1.0F},
        {46, 0, TYPE_RADIO, {1107, 1108, 1110}, {8, 16, 32}},
        {47, 0, TYPE_INT_COMBOBOX, {1143}, {0, 1, 2, 3, 4}, {43, 44, 45, 46, 47}},
        {48, 5, TYPE_SINGLECHEKBOX, {1149}},
        {49, 5, TYPE_CHECKBUTTON, {1150}},
        {50, 5, TYPE_INT_COMBOBOX, {1152}, kinds, kindTexts},
        {53, 0, TYPE_SINGLECHEKBOX, {1156}},
        {52, 6, TYPE_SINGLECHEKBOX, {1061}},
        {58, 1, TYPE_CHECKBUTTON, {1184}},
        {60, 1, TYPE_SINGLECHEKBOX, {1186}},
        {71, 7, TYPE_SINGLECHEKBOX, {1187}},
        {72, 7, TYPE_CHECKBUTTON, {1189}},
        {73, 7, TYPE_INT_COMBOBOX, {1190}, kinds, kindTexts},
        {124, 0, TYPE_INT_COMBOBOX, {1195}, {0, 1}, {60, 61}},
        {130, 1, TYPE_CHECKBUTTON, {1079}},
    };
}

TEST_F(ParameterBlocks, BindTheControlsOfTheRows) {
    std::vector<ParamID> bound;
    for (const BoundControl& expected : BoundControls()) {
        bound.push_back(expected.id);
        const std::optional<ParamControl>& control = effectBlock->GetParamDef(expected.id).control;
        ASSERT_TRUE(control.has_value()) << expected.id;
        EXPECT_EQ(control->map, expected.map) << expected.id;
        EXPECT_EQ(control->type, expected.type) << expected.id;
        EXPECT_EQ(control->ids, expected.ids) << expected.id;
        EXPECT_EQ(control->values, expected.values) << expected.id;
        EXPECT_EQ(control->texts, expected.texts) << expected.id;
        EXPECT_EQ(control->step, expected.step) << expected.id;
    }
    // What the effect shows by itself, and the advanced options, the host doesn't bind.
    for (const Row& row : parameters::effectRows) {
        EXPECT_EQ(effectBlock->GetParamDef(row.id).control.has_value(),
                  std::ranges::find(bound, row.id) != bound.end())
            << row.name;
    }
    for (const Row& row : parameters::layerRows)
        EXPECT_FALSE(layerBlock->GetParamDef(row.id).control.has_value()) << row.name;
}

TEST_F(ParameterBlocks, NameTheLabelsOfBoundCombosAmongTheStrings) {
    plugin::Attach();
    for (const Row& row : parameters::effectRows) {
        if (!row.control.IsBoundByHost() || row.control.kind != parameters::ControlKind::Combo)
            continue;
        for (const parameters::Choice& choice : row.choices) {
            const MCHAR* text = plugin::GetString(choice.text);
            ASSERT_NE(text, nullptr) << row.name << ": " << choice.label;
            EXPECT_EQ(host::ToUtf8(text), choice.label) << row.name;
        }
    }
}

TEST_F(ParameterBlocks, EnableTheControlsThatTheRowsList) {
    const std::map<ParamID, std::vector<ParamID>> enables{
        {26, {6, 58, 60}},
        {18, {23, 19, 31, 38}},
        {20, {24, 21, 32, 39}},
        {28, {29, 30, 33, 40}},
        {42, {43}},
        {48, {49, 50}},
        {53, {124}},
        {71, {72, 73}},
    };
    for (const Row& row : parameters::effectRows) {
        const auto expected = enables.find(row.id);
        EXPECT_EQ(effectBlock->GetParamDef(row.id).enables,
                  expected == enables.end() ? std::vector<ParamID>{} : expected->second)
            << row.name;
    }
    for (const Row& row : parameters::layerRows)
        EXPECT_TRUE(layerBlock->GetParamDef(row.id).enables.empty()) << row.name;
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

#include <gtest/gtest.h>
#include <iparamb2.h>

#include "tests/host/sample_block.h"

namespace {

class DlgProc {};

TEST(ParamBlockDesc, TheDefinitionsAreWhatWasSaid) {
    SampleAccessor accessor;
    SampleClassDesc desc(&accessor);
    EXPECT_EQ(desc.block.ID, 3);
    EXPECT_EQ(desc.block.int_name, MSTR(_M("sample")));
    EXPECT_EQ(desc.block.Version(), 2U);
    EXPECT_EQ(desc.block.ref_no, 0);
    EXPECT_EQ(desc.block.Count(), 15);
    const ParamDef& ranged = desc.block.GetParamDef(SAMPLE_RANGED_INT);
    EXPECT_EQ(ranged.int_name, MSTR(_M("rangedInt")));
    EXPECT_EQ(ranged.type, TYPE_INT);
    EXPECT_EQ(ranged.def.i, 5);
    EXPECT_TRUE(ranged.has_range);
    EXPECT_EQ(ranged.range_low.i, 1);
    EXPECT_EQ(ranged.range_high.i, 10);
    EXPECT_EQ(ranged.accessor, &accessor);
    const ParamDef& rangedFloat = desc.block.GetParamDef(SAMPLE_RANGED_FLOAT);
    EXPECT_EQ(rangedFloat.def.f, 72.0F);
    EXPECT_EQ(rangedFloat.range_low.f, 1.0F);
    EXPECT_EQ(rangedFloat.range_high.f, 10000.0F);
    EXPECT_EQ(desc.block.GetParamDef(SAMPLE_STRING).def_text, MSTR(_M("text")));
    EXPECT_EQ(desc.block.GetParamDef(SAMPLE_FILENAME).assetTypeID, 8);
    EXPECT_EQ(desc.block.GetParamDef(SAMPLE_OWNERS_TARGET).refno, 1);
    EXPECT_EQ(desc.block.GetParamDef(SAMPLE_OWNERS_TARGET).flags, P_OWNERS_REF);
    EXPECT_EQ(desc.block.GetParamDef(SAMPLE_FIXED_STRINGS).tab_size, 2);
    EXPECT_FALSE(desc.block.GetParamDef(SAMPLE_INT).has_range);
}

TEST(ParamBlockDesc, AnIdThatIsNotThereHasNoIndex) {
    SampleClassDesc desc(nullptr);
    EXPECT_EQ(desc.block.IDtoIndex(SAMPLE_INT), 0);
    EXPECT_EQ(desc.block.IDtoIndex(SAMPLE_FIXED_STRINGS), 14);
    EXPECT_EQ(desc.block.IDtoIndex(100), -1);
}

TEST(ParamBlockDesc, MapsAreReadInTheirOrder) {
    SampleClassDesc owner(nullptr);
    DlgProc proc;
    auto* dlgProc = reinterpret_cast<ParamMap2UserDlgProc*>(&proc);
    const ParamBlockDesc2 desc(0, _M("params"), 0, &owner,
                               P_AUTO_CONSTRUCT | P_AUTO_UI | P_MULTIMAP | P_VERSION, 4, 7, 2,  //
                               0, 4712, 4, 0, 0, dlgProc,                                       //
                               5, 122, 49, 3, 1, dlgProc, p_end);
    EXPECT_EQ(desc.Version(), 4U);
    EXPECT_EQ(desc.ref_no, 7);
    ASSERT_EQ(desc.map_specs.size(), 2U);
    EXPECT_EQ(desc.map_specs[0].dlg_template, 4712);
    EXPECT_EQ(desc.map_specs[1].map_id, 5);
    EXPECT_EQ(desc.map_specs[1].dlg_template, 122);
    EXPECT_EQ(desc.map_specs[1].title, 49);
    EXPECT_EQ(desc.map_specs[1].test_flags, 3);
    EXPECT_EQ(desc.map_specs[1].rollup_flags, 1);
    EXPECT_EQ(desc.map_specs[1].dlgProc, dlgProc);
}

TEST(ParamBlockDesc, AMapsProcedureCanBePutInLater) {
    SampleClassDesc owner(nullptr);
    DlgProc proc;
    auto* dlgProc = reinterpret_cast<ParamMap2UserDlgProc*>(&proc);
    ParamMap2UserDlgProc* none = nullptr;
    ParamBlockDesc2 desc(0, _M("params"), 0, &owner, P_AUTO_UI | P_MULTIMAP, 2,  //
                         0, 4712, 4, 0, 0, none,                                 //
                         5, 122, 49, 3, 1, none, p_end);
    EXPECT_TRUE(desc.SetUserDlgProc(5, dlgProc));
    EXPECT_FALSE(desc.SetUserDlgProc(3, dlgProc));
    EXPECT_EQ(desc.GetUserDlgProc(5), dlgProc);
    EXPECT_EQ(desc.GetUserDlgProc(0), nullptr);
    EXPECT_EQ(desc.GetUserDlgProc(3), nullptr);
}

using Numbers = std::vector<int>;

TEST(ParamBlockDesc, AParametersControlIsReadByItsKind) {
    SampleClassDesc owner(nullptr);
    ParamBlockDesc2& desc = owner.block;
    EXPECT_FALSE(desc.GetParamDef(SAMPLE_INT).control);
    const auto control = [&] { return *desc.GetParamDef(SAMPLE_INT).control; };
    for (const ControlType2 kind : {TYPE_SINGLECHEKBOX, TYPE_CHECKBUTTON, TYPE_EDITBOX}) {
        desc.ParamOption(SAMPLE_INT, p_ui, 5, kind, 1149, p_end);
        EXPECT_EQ(control().map, 5);
        EXPECT_EQ(control().type, kind);
        EXPECT_EQ(control().ids, Numbers{1149});
    }
    desc.ParamOption(SAMPLE_INT, p_ui, 0, TYPE_RADIO, 3, 1107, 1108, 1110, p_vals, 8, 16, 32,
                     p_end);
    EXPECT_EQ(control().ids, (Numbers{1107, 1108, 1110}));
    EXPECT_EQ(control().values, (Numbers{8, 16, 32}));
    desc.ParamOption(SAMPLE_INT, p_ui, 0, TYPE_SPINNER, EDITTYPE_POS_FLOAT, 1144, 1145, 0.5, p_end);
    EXPECT_EQ(control().ids, (Numbers{1144, 1145}));
    EXPECT_EQ(control().step, 0.5F);
    desc.ParamOption(SAMPLE_INT, p_ui, 0, TYPE_INT_COMBOBOX, 1195, 2, 60, 61, p_vals, 4, 7, p_end);
    EXPECT_EQ(control().ids, Numbers{1195});
    EXPECT_EQ(control().texts, (Numbers{60, 61}));
    EXPECT_EQ(control().values, (Numbers{4, 7}));
    desc.ParamOption(SAMPLE_INT, p_ui, 2, TYPE_NODELISTBOX, 1094, 1, 2, 3, p_end);
    EXPECT_EQ(control().ids, (Numbers{1094, 1, 2, 3}));
}

TEST(ParamBlockDesc, AParameterListsThoseItEnables) {
    SampleClassDesc owner(nullptr);
    owner.block.ParamOption(SAMPLE_INT, p_enable_ctrls, 3, 23, 19, 31, p_end);
    EXPECT_EQ(owner.block.GetParamDef(SAMPLE_INT).enables, (std::vector<ParamID>{23, 19, 31}));
}

TEST(ParamBlockDesc, WithoutFlagsNothingStandsBeforeTheEnd) {
    const ParamBlockDesc2 desc(1, _M("plain"), 0, nullptr, 0, p_end);
    EXPECT_EQ(desc.Version(), 0U);
    EXPECT_EQ(desc.ref_no, -1);
    EXPECT_TRUE(desc.map_specs.empty());
}

TEST(ParamBlockDesc, AnOptionChangesAParameterThatIsThere) {
    SampleClassDesc desc(nullptr);
    SampleAccessor accessor;
    desc.block.ParamOption(SAMPLE_INT, p_range, -3, 3, p_end);
    desc.block.ParamOption(SAMPLE_INT, p_accessor, &accessor, p_end);
    EXPECT_TRUE(desc.block.GetParamDef(SAMPLE_INT).has_range);
    EXPECT_EQ(desc.block.GetParamDef(SAMPLE_INT).range_low.i, -3);
    EXPECT_EQ(desc.block.GetParamDef(SAMPLE_INT).accessor, &accessor);
}

TEST(ParamBlockDesc, TheClassListsItsDescriptors) {
    SampleClassDesc desc(nullptr);
    EXPECT_EQ(desc.NumParamBlockDescs(), 1);
    EXPECT_EQ(desc.GetParamBlockDesc(0), &desc.block);
    EXPECT_EQ(desc.GetParamBlockDesc(1), nullptr);
    EXPECT_EQ(desc.GetParamBlockDesc(-1), nullptr);
    EXPECT_EQ(desc.GetParamBlockDescByID(3), &desc.block);
    EXPECT_EQ(desc.GetParamBlockDescByID(0), nullptr);
}

TEST(MakeAutoParamBlocks, ABlockIsMadeAsTheOwnersReference) {
    SampleClassDesc desc(nullptr);
    SampleOwner owner(desc);
    ASSERT_TRUE(owner.block);
    EXPECT_EQ(owner.block->GetOwner(), &owner);
    EXPECT_EQ(owner.block->GetDesc(), &desc.block);
}

TEST(MakeAutoParamBlocks, OnlyBlocksThatAreConstructedByThemselvesAreMade) {
    SampleClassDesc desc(nullptr);
    const ParamBlockDesc2 other(4, _M("other"), 0, &desc, P_VERSION, 1, p_end);
    SampleOwner owner(desc);
    EXPECT_EQ(owner.block->GetDesc(), &desc.block);
}

TEST(MakeAutoParamBlocks, ABlockDiesWithItsOwnersReference) {
    SampleClassDesc desc(nullptr);
    SampleOwner owner(desc);
    host::TargetReference watch(owner.block);
    owner.DeleteReference(0);
    EXPECT_EQ(watch.Get(), nullptr);
    EXPECT_EQ(owner.block, nullptr);
}

TEST(MakeAutoParamBlocks, ABlockMayBeDeletedByItself) {
    SampleClassDesc desc(nullptr);
    SampleOwner owner(desc);
    owner.block->DeleteThis();
    EXPECT_TRUE(owner.block == nullptr);
    EXPECT_EQ(owner.messages, std::vector<RefMessage>{REFMSG_TARGET_DELETED});
}

}  // namespace

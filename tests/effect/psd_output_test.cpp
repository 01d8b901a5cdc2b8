#include "effect/psd_output.h"

#include "effect/psd_output_layer.h"
#include "tests/effect/effect_fixture.h"

namespace {

class PSDOutput : public EffectTest {};

TEST_F(PSDOutput, IsTheRenderEffectOfItsDescriptor) {
    EXPECT_EQ(effect->ClassID(), Class_ID(0x70068609, 0x1d5d297));
    EXPECT_EQ(effect->SuperClassID(), 4240U);
    EXPECT_EQ(effect->ClassID(), LibClassDesc(0)->ClassID());
    EXPECT_EQ(effect->SuperClassID(), LibClassDesc(0)->SuperClassID());
}

TEST_F(PSDOutput, HasItsBlockAsFirstReferenceAndAnEmptySecondOne) {
    EXPECT_EQ(effect->NumRefs(), 2);
    EXPECT_EQ(effect->NumParamBlocks(), 2);
    ASSERT_NE(effect->pblock, nullptr);
    EXPECT_EQ(effect->GetReference(0), effect->pblock);
    EXPECT_EQ(effect->GetReference(1), nullptr);
    EXPECT_EQ(effect->GetReference(2), nullptr);
    EXPECT_EQ(effect->GetParamBlock(0), effect->pblock);
    EXPECT_EQ(effect->GetParamBlock(1), nullptr);
    EXPECT_EQ(effect->GetParamBlock(2), nullptr);
    EXPECT_EQ(effect->GetParamBlock(-1), nullptr);
    EXPECT_EQ(effect->pblock->GetOwner(), effect);
}

TEST_F(PSDOutput, FindsItsBlocksByID) {
    EXPECT_EQ(effect->GetParamBlockByID(0), effect->pblock);
    EXPECT_EQ(effect->GetParamBlockByID(1), nullptr);
}

TEST_F(PSDOutput, WithoutItsBlockFindsNone) {
    effect->DeleteReference(0);
    EXPECT_EQ(effect->pblock, nullptr);
    EXPECT_EQ(effect->GetParamBlockByID(0), nullptr);
}

TEST_F(PSDOutput, ListsItsLayersByNumberOfListAndIndex) {
    const host::Owned<effect::PSDOutputLayer> first(
        static_cast<effect::PSDOutputLayer*>(LibClassDesc(1)->Create()));
    host::Owned<effect::PSDOutputLayer> second(
        static_cast<effect::PSDOutputLayer*>(LibClassDesc(1)->Create()));
    ReferenceTarget* production[] = {second.get(), first.get()};
    ReferenceTarget* secondary[] = {first.get()};
    effect->pblock->Append("layersProduction"_param, 2, production);
    effect->pblock->Append("layersSecondary"_param, 1, secondary);
    EXPECT_EQ(effect::PSDOutput::LayerList(0), 2);
    EXPECT_EQ(effect::PSDOutput::LayerList(1), 3);
    EXPECT_EQ(effect::PSDOutput::LayerList(2), -1);
    EXPECT_EQ(effect::PSDOutput::LayerList(-1), -1);
    EXPECT_EQ(effect->LayerCount(0), 2);
    EXPECT_EQ(effect->LayerCount(1), 1);
    EXPECT_EQ(effect->LayerCount(2), 0);
    EXPECT_EQ(effect->LayerCount(-1), 0);
    EXPECT_EQ(effect->Layer(0, 1), first.get());
    EXPECT_EQ(effect->Layer(1, 0), first.get());
    EXPECT_EQ(effect->Layer(0, 2), nullptr);
    EXPECT_EQ(effect->Layer(0, -1), nullptr);
    EXPECT_EQ(effect->Layer(2, 0), nullptr);
    second.reset();
    EXPECT_EQ(effect->LayerCount(0), 2) << "the first entry stays behind";
    EXPECT_EQ(effect->Layer(0, 0), nullptr);
}

TEST_F(PSDOutput, IsActiveUntilItIsSwitchedOff) {
    EXPECT_TRUE(effect->Active(0));
    effect->SetAFlag(A_ATMOS_DISABLED);
    EXPECT_FALSE(effect->Active(0));
}

TEST_F(PSDOutput, DrawsItsNumberForSceneLayersFromAHundredOn) {
    std::vector<int> numbers;
    for (std::uint64_t seed = 0; seed < 50; ++seed) {
        Host().settings.randomSeed = seed;
        Host().randomsMade = 0;
        const host::Owned<effect::PSDOutput> other(
            static_cast<effect::PSDOutput*>(LibClassDesc(0)->Create()));
        numbers.push_back(other->pblock->GetInt("sceneLayerAppDataChunkId"_param));
        EXPECT_GE(numbers.back(), 100);
    }
    std::sort(numbers.begin(), numbers.end());
    EXPECT_EQ(std::unique(numbers.begin(), numbers.end()), numbers.end());
}

TEST_F(PSDOutput, HasSettingsOfItsOwn) {
    const host::Owned<effect::PSDOutput> other(
        static_cast<effect::PSDOutput*>(LibClassDesc(0)->Create()));
    Set("bitDepth"_param, 8);
    EXPECT_EQ(other->pblock->GetInt("bitDepth"_param), 16);
}

TEST_F(PSDOutput, LeavesNoFileDialogAtItsOwnFieldWhenItGoes) {
    SetFilename(File("a.psd"));
    const ParamDef& definition = effect->pblock->GetDesc()->GetParamDef("filename"_param);
    EXPECT_EQ(definition.init_file, effect->filenameField);
    Host().effects.clear();
    EXPECT_EQ(definition.init_file, nullptr);
}

TEST_F(PSDOutput, LeavesTheFileDialogOfAnotherWhenItGoes) {
    SetFilename(File("a.psd"));
    const host::Owned<effect::PSDOutput> other(
        static_cast<effect::PSDOutput*>(LibClassDesc(0)->Create()));
    other->pblock->SetValue("filename"_param, 0, Text(File("b.psd")).data());
    Host().effects.clear();
    EXPECT_EQ(other->pblock->GetDesc()->GetParamDef("filename"_param).init_file,
              other->filenameField);
}

}  // namespace

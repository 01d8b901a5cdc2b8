#include "effect/psd_output.h"

#include <elementclasses.h>
#include <ioapi.h>
#include <random.h>

#include <memory>
#include <new>

#include "effect/psd_output_layer.h"
#include "effect/scene_layer_choice.h"
#include "plugin/library_services.h"
#include "tests/effect/effect_fixture.h"
#include "tests/host/sample_objects.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Writes down which targets are destroyed.
class Farewells final : public GlobalReferenceMaker {
  public:
    Farewells() { RegisterGlobalReference(this); }
    ~Farewells() override { UnRegisterGlobalReference(this); }

    RefResult NotifyRefChanged(const Interval&, RefTargetHandle hTarget, PartID&,
                               RefMessage message, BOOL) override {
        if (message == REFMSG_TARGET_DELETED) gone.push_back(hTarget);
        return REF_SUCCEED;
    }

    std::vector<ReferenceTarget*> gone;
};

class PSDOutput : public EffectTest {
  protected:
    static ClassDesc2& Descriptor() { return static_cast<ClassDesc2&>(*LibClassDesc(0)); }
    static host::Owned<effect::PSDOutput> NewEffect() {
        return host::Owned<effect::PSDOutput>(
            static_cast<effect::PSDOutput*>(LibClassDesc(0)->Create()));
    }
    host::Owned<effect::PSDOutput> Copy() {
        DefaultRemapDir remap;
        return host::Owned<effect::PSDOutput>(
            static_cast<effect::PSDOutput*>(effect->Clone(remap)));
    }
    // The codes that `listener` is registered for, in the order in which it was.
    static std::vector<int> CodesOf(const void* listener) {
        std::vector<int> codes;
        for (const auto& registration : Host().notifications.Registrations()) {
            if (registration.param != listener) continue;
            EXPECT_EQ(registration.proc, &effect::OnEffectNotification);
            codes.push_back(registration.code);
        }
        return codes;
    }
};

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

TEST_F(PSDOutput, ALayerWithoutItsBlockIsNone) {
    const host::Owned<effect::PSDOutputLayer> layer(
        static_cast<effect::PSDOutputLayer*>(LibClassDesc(1)->Create()));
    ReferenceTarget* entry = layer.get();
    effect->pblock->Append("layersProduction"_param, 1, &entry);
    ASSERT_EQ(effect->Layer(0, 0), layer.get());
    layer->DeleteReference(0);
    EXPECT_EQ(effect->LayerCount(0), 1);
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

TEST_F(PSDOutput, DrawsThatNumberFromTheHostsRandomNumbers) {
    Host().settings.randomSeed = 7;
    Host().randomsMade = 0;
    Random random;
    const std::uint32_t drawn = random.get();
    Host().randomsMade = 0;
    const auto other = NewEffect();
    EXPECT_EQ(other->pblock->GetInt("sceneLayerAppDataChunkId"_param),
              static_cast<int>(drawn % (Random::s_rand_max - 99) + 100));
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

TEST_F(PSDOutput, HasTheNameOfItsClassFromTheStringTable) {
    MSTR name;
    effect->GetClassName(name);
    EXPECT_EQ(name, MSTR(_M("veltrane")));
}

TEST_F(PSDOutput, ShowsItsBlockAsItsOnlyTrack) {
    EXPECT_EQ(effect->NumSubs(), 1);
    EXPECT_EQ(effect->SubAnim(0), effect->pblock);
    EXPECT_EQ(effect->SubAnim(1), nullptr);
    EXPECT_EQ(effect->SubAnim(-1), nullptr);
    EXPECT_EQ(effect->SubAnimName(0), MSTR(_M("params")));
    EXPECT_EQ(effect->SubAnimName(1), MSTR());
}

TEST_F(PSDOutput, TakesNothingButABlockAsAReference) {
    SampleTarget target;
    IParamBlock2* block = effect->pblock;
    EXPECT_EQ(effect->ReplaceReference(0, &target), REF_FAIL);
    EXPECT_EQ(effect->ReplaceReference(1, &target), REF_FAIL);
    EXPECT_EQ(effect->pblock, block);
    EXPECT_EQ(effect->GetReference(1), nullptr);
}

TEST_F(PSDOutput, KeepsASecondBlockOfAnOldScene) {
    const auto other = NewEffect();
    EXPECT_EQ(effect->ReplaceReference(1, other->pblock), REF_SUCCEED);
    EXPECT_EQ(effect->GetReference(1), other->pblock);
    EXPECT_EQ(effect->GetParamBlock(1), other->pblock);
    EXPECT_EQ(effect->GetParamBlockByID(0), effect->pblock) << "the first of that id";
    effect->DeleteReference(0);
    EXPECT_EQ(effect->GetParamBlockByID(0), other->pblock);
    EXPECT_EQ(effect->SubAnim(0), nullptr);
    effect->DeleteReference(1);
}

// Registrations

TEST_F(PSDOutput, RegistersForSevenNotificationsInTheirOrder) {
    EXPECT_THAT(CodesOf(effect), ElementsAre(20, 21, 202, 203, 184, 188, 185));
}

TEST_F(PSDOutput, LeavesThoseAroundTheEditOfASetTwiceWhenItGoes) {
    const void* gone = effect;
    Host().effects.clear();
    EXPECT_THAT(CodesOf(gone), ElementsAre(202, 203, 202, 203));
}

TEST_F(PSDOutput, LeavesNoRegistrationOfARenderThatNeverEnded) {
    const void* gone = effect;
    effect->RenderBegin(0, 0);
    effect->RenderBegin(0, 0);
    EXPECT_THAT(CodesOf(gone), ElementsAre(20, 21, 202, 203, 184, 188, 185, 22, 23, 22, 23));
    Host().effects.clear();
    EXPECT_THAT(CodesOf(gone), ElementsAre(202, 203, 202, 203));
}

TEST_F(PSDOutput, IsLivingUntilItIsDestroyed) {
    const void* gone = effect;
    EXPECT_TRUE(effect::PSDOutput::IsLiving(gone));
    EXPECT_FALSE(effect::PSDOutput::IsLiving(nullptr));
    EXPECT_FALSE(effect::PSDOutput::IsLiving(&gone));
    Host().effects.clear();
    EXPECT_FALSE(effect::PSDOutput::IsLiving(gone));
}

// Copies

TEST_F(PSDOutput, ACopyHasTheSettingsAndTheNumberForSceneLayers) {
    Set("bitDepth"_param, 32);
    SetText("backgroundLayerName"_param, _M("Sky"));
    const int number = effect->pblock->GetInt("sceneLayerAppDataChunkId"_param);
    const auto copy = Copy();
    ASSERT_NE(copy->pblock, nullptr);
    EXPECT_NE(copy->pblock, effect->pblock);
    EXPECT_EQ(copy->pblock->GetOwner(), copy.get());
    EXPECT_EQ(copy->GetReference(1), nullptr);
    EXPECT_EQ(copy->pblock->GetInt("bitDepth"_param), 32);
    EXPECT_EQ(MSTR(copy->pblock->GetStr("backgroundLayerName"_param)), MSTR(_M("Sky")));
    EXPECT_EQ(copy->pblock->GetInt("sceneLayerAppDataChunkId"_param), number);
    Set("bitDepth"_param, 8);
    EXPECT_EQ(copy->pblock->GetInt("bitDepth"_param), 32) << "from then on they are its own";
}

TEST_F(PSDOutput, ACopyHasACopyOfTheSecondBlockOfAnOldScene) {
    const auto other = NewEffect();
    other->pblock->SetValue("bitDepth"_param, 0, 32);
    effect->ReplaceReference(1, other->pblock);
    Set("bitDepth"_param, 8);
    const auto copy = Copy();
    IParamBlock2* second = copy->GetParamBlock(1);
    ASSERT_NE(second, nullptr);
    EXPECT_NE(second, other->pblock);
    EXPECT_EQ(second->GetInt("bitDepth"_param), 32);
    EXPECT_EQ(copy->GetParamBlock(0)->GetInt("bitDepth"_param), 8);
    effect->DeleteReference(1);
}

TEST_F(PSDOutput, ACopyHasTheSelectionSetsOfItsOriginalAndNoOthers) {
    Host().scene.AddSelectionSet(_M("A"), {});
    Host().scene.AddSelectionSet(_M("B"), {});
    effect->pblock->Delete("namedSelectionSetsList"_param, 0, 1);
    const auto copy = Copy();
    ASSERT_EQ(copy->pblock->Count("namedSelectionSetsList"_param), 1);
    EXPECT_EQ(MSTR(copy->pblock->GetStr("namedSelectionSetsList"_param, 0, 0)), MSTR(_M("B")));
}

TEST_F(PSDOutput, ACopyHasLayersOfItsOwnForTheSameRenderElements) {
    host::RenderElement& element =
        Host().elements[RS_Production].Add(SPECULAR_ELEMENT, _M("Specular"));
    Host().classes.Add(LibClassDesc(1));
    auto* layer = static_cast<effect::PSDOutputLayer*>(
        GetCOREInterface()->CreateInstance(REF_TARGET_CLASS_ID, effect::psdOutputLayerClassID));
    layer->pblock->SetValue("renderElement"_layerParam, 0, &element);
    layer->pblock->SetValue("blendingMode"_layerParam, 0, 16);
    ReferenceTarget* entry = layer;
    effect->pblock->Append("layersProduction"_param, 1, &entry);

    auto copy = Copy();
    ASSERT_EQ(copy->LayerCount(0), 1);
    effect::PSDOutputLayer* copied = copy->Layer(0, 0);
    ASSERT_NE(copied, nullptr);
    EXPECT_NE(copied, layer);
    EXPECT_EQ(copied->Element(), &element);
    EXPECT_EQ(copied->pblock->GetInt("blendingMode"_layerParam), 16);
    copied->pblock->SetValue("blendingMode"_layerParam, 0, 3);
    EXPECT_EQ(layer->pblock->GetInt("blendingMode"_layerParam), 16);
    Farewells farewells;
    copy.reset();
    EXPECT_THAT(farewells.gone, testing::Contains(copied)) << "its layers go with it";
    EXPECT_THAT(farewells.gone, testing::Not(testing::Contains(layer)));
    EXPECT_EQ(effect->Layer(0, 0), layer);
}

TEST_F(PSDOutput, ACopyIsSwitchedOffAsItsOriginalAndHasItsAppData) {
    effect->SetAFlag(A_ATMOS_DISABLED);
    effect::SetSceneLayerOn(effect, 5, false);
    const auto copy = Copy();
    EXPECT_FALSE(copy->Active(0));
    EXPECT_FALSE(effect::IsSceneLayerOn(copy.get(), 5));
}

TEST_F(PSDOutput, ACopyIsRegisteredAsAnyNewEffect) {
    const auto copy = Copy();
    EXPECT_THAT(CodesOf(copy.get()), ElementsAre(20, 21, 202, 203, 184, 188, 185));
    EXPECT_TRUE(effect::PSDOutput::IsLiving(copy.get()));
}

TEST_F(PSDOutput, ACopyIsEnteredAsSuch) {
    DefaultRemapDir remap;
    const host::Owned<effect::PSDOutput> copy(
        static_cast<effect::PSDOutput*>(effect->Clone(remap)));
    EXPECT_EQ(remap.FindMapping(effect), copy.get());
    EXPECT_EQ(remap.FindMapping(effect->pblock), copy->pblock);
}

// Files

class RecordingSave final : public ISave {
  public:
    void BeginChunk(USHORT id) override { chunks.push_back(id); }
    void EndChunk() override {}
    IOResult Write(const void*, ULONG bytes, ULONG* written) override {
        *written = bytes;
        return IO_OK;
    }
    std::vector<USHORT> chunks;
};

class RecordingLoad final : public ILoad {
  public:
    IOResult OpenChunk() override { return IO_END; }
    USHORT CurChunkID() override { return 0; }
    ULONG CurChunkLength() override { return 0; }
    IOResult CloseChunk() override { return IO_OK; }
    IOResult Read(void*, ULONG, ULONG*) override { return IO_ERROR; }
    void RegisterPostLoadCallback(PostLoadCallback* callback) override {
        callbacks.emplace_back(callback);
    }
    std::vector<std::unique_ptr<PostLoadCallback>> callbacks;
};

TEST_F(PSDOutput, SavesNothingBesideWhatEveryEffectDoes) {
    RecordingSave file;
    EXPECT_EQ(effect->Save(&file), IO_OK);
    EXPECT_THAT(file.chunks, IsEmpty());
    effect->SetAFlag(A_ATMOS_DISABLED);
    EXPECT_EQ(effect->Save(&file), IO_OK);
    EXPECT_THAT(file.chunks, ElementsAre(0x0100)) << "that it is switched off";
}

TEST_F(PSDOutput, LoadedHasDataOfVersion0AndWaitsForTheWholeFile) {
    EXPECT_EQ(effect->dataVersion, 256);
    RecordingLoad file;
    EXPECT_EQ(effect->Load(&file), IO_OK);
    EXPECT_EQ(effect->dataVersion, 0);
    EXPECT_EQ(file.callbacks.size(), 1U);
}

// Changes of the block. Services are plain functions; theirs is this.

struct ToldChanges {
    effect::PSDOutput* effect = nullptr;
    std::vector<ParamID> ids;
};
ToldChanges told;

class PSDOutputChanges : public PSDOutput {
  protected:
    PSDOutputChanges() {
        services.parameterChanged = [](effect::PSDOutput& changed, ParamID id) {
            told.effect = &changed;
            told.ids.push_back(id);
        };
        own.reset(new effect::PSDOutput(Descriptor(), services));
        told = {};
    }
    ~PSDOutputChanges() override {
        own.reset();
        told = {};
    }

    effect::LibraryServices services = plugin::Services();
    host::Owned<effect::PSDOutput> own;
};

TEST_F(PSDOutputChanges, AreToldToTheLibraryWithTheParameter) {
    own->pblock->SetValue("bitDepth"_param, 0, 8);
    own->pblock->SetValue("filename"_param, 0, Text(File("a.psd")).data());
    EXPECT_THAT(told.ids, ElementsAre(46, 0));
    EXPECT_EQ(told.effect, own.get());
    EXPECT_EQ(effect::PSDOutput::lastChanged, 0);
    own->pblock->SetValue("autoSort"_param, 0, FALSE);
    EXPECT_EQ(effect::PSDOutput::lastChanged, 130);
}

TEST_F(PSDOutputChanges, OfALayerAreThoseOfItsTable) {
    const host::Owned<effect::PSDOutputLayer> layer(
        static_cast<effect::PSDOutputLayer*>(LibClassDesc(1)->Create()));
    ReferenceTarget* entry = layer.get();
    own->pblock->Append("layersSecondary"_param, 1, &entry);
    told.ids.clear();
    layer->pblock->SetValue("visible"_layerParam, 0, FALSE);
    EXPECT_THAT(told.ids, ElementsAre(3));
}

TEST_F(PSDOutputChanges, OfOtherMessagesAndTargetsAreNone) {
    SampleTarget target;
    PartID part = PART_ALL;
    EXPECT_EQ(own->NotifyRefChanged(FOREVER, &target, part, 80, TRUE), REF_SUCCEED);
    EXPECT_EQ(own->NotifyRefChanged(FOREVER, nullptr, part, 80, TRUE), REF_SUCCEED);
    for (const RefMessage message : {79U, 81U, 83U, 259U})
        EXPECT_EQ(own->NotifyRefChanged(FOREVER, own->pblock, part, message, TRUE), REF_SUCCEED);
    EXPECT_EQ(own->NotifyRefChanged(FOREVER, own->pblock, part, 80, TRUE), REF_SUCCEED)
        << "of no parameter";
    EXPECT_THAT(told.ids, IsEmpty());
}

TEST_F(PSDOutputChanges, WithoutMemoryAreLeftAlone) {
    own.reset();
    services.parameterChanged = [](effect::PSDOutput&, ParamID) { throw std::bad_alloc(); };
    own.reset(new effect::PSDOutput(Descriptor(), services));
    EXPECT_TRUE(own->pblock->SetValue("bitDepth"_param, 0, 8));
    EXPECT_EQ(own->pblock->GetInt("bitDepth"_param), 8);
}

TEST_F(PSDOutputChanges, WithoutTextsNamesAreEmpty) {
    services.getString = [](int) -> const MCHAR* { return nullptr; };
    MSTR name(_M("x"));
    own->GetClassName(name);
    EXPECT_EQ(name, MSTR());
    EXPECT_EQ(own->SubAnimName(0), MSTR());
}

TEST_F(PSDOutputChanges, AFileIsGivenUpWithoutMemoryForItsMigration) {
    services.makePostLoadCallback = [](effect::PSDOutput&) -> PostLoadCallback* {
        throw std::bad_alloc();
    };
    RecordingLoad file;
    EXPECT_EQ(own->Load(&file), IO_ERROR);
    EXPECT_THAT(file.callbacks, IsEmpty());
}

TEST_F(PSDOutputChanges, AFileOfNoMigrationIsLoadedWithoutOne) {
    services.makePostLoadCallback = [](effect::PSDOutput&) -> PostLoadCallback* { return nullptr; };
    RecordingLoad file;
    EXPECT_EQ(own->Load(&file), IO_OK);
    EXPECT_THAT(file.callbacks, IsEmpty());
}

}  // namespace

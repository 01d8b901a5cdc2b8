// Effects that are saved, loaded and copied by the host, with their layers.
#include <array>
#include <stdexcept>

#include "effect/psd_output_layer.h"
#include "effect/sync_render_elements.h"
#include "host/saved_objects.h"
#include "host/target_reference.h"
#include "tests/effect/effect_fixture.h"
#include "tests/plugin/older_blocks.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr Class_ID someElement{4, 0};

std::string Describe(const host::SavedValue& value) {
    if (const int* number = std::get_if<int>(&value)) return std::to_string(*number);
    if (const float* fraction = std::get_if<float>(&value)) return std::to_string(*fraction) + "f";
    if (const auto* text = std::get_if<MSTR>(&value)) return '"' + host::ToUtf8(text->data()) + '"';
    return "@" + std::to_string(std::get<host::SavedReference>(value).target);
}

// One line a parameter.
std::vector<std::string> Describe(const host::SavedBlock& block) {
    std::vector<std::string> lines;
    for (const host::SavedParameter& parameter : block.parameters) {
        std::string line = std::to_string(parameter.id) + ":";
        for (const host::SavedValue& value : parameter.values)
            line.append(" ").append(Describe(value));
        lines.push_back(line);
    }
    return lines;
}

std::vector<std::string> Describe(const host::SavedObject& object) {
    std::vector<std::string> lines{"object " + std::to_string(object.handle)};
    for (const auto& reference : object.references) {
        if (const auto* target = std::get_if<host::SavedReference>(&reference)) {
            lines.push_back(Describe(host::SavedValue(*target)));
        } else {
            const auto more = Describe(std::get<host::SavedBlock>(reference));
            lines.insert(lines.end(), more.begin(), more.end());
        }
    }
    return lines;
}

const host::SavedBlock& BlockOf(const host::SavedObject& object) {
    return std::get<host::SavedBlock>(object.references.at(0));
}

class EffectPersistence : public EffectTest {
  protected:
    EffectPersistence() {
        for (int i = 0; i < LibNumberClasses(); ++i)
            Host().classes.Add(LibClassDesc(i));
        for (const MCHAR* name : {_M("Diffuse"), _M("Shadow"), _M("Light")})
            elements.push_back(&Host().elements[RS_Production].Add(someElement, name));
        node = &Host().scene.AddNode(_M("Box"));
        effect::SyncRenderElements(*effect, effect::PSDOutput::productionLayers);
        // What a user could change, changed: all parameters of the effect and of one layer.
        FillTexts();
        for (const parameters::Row& row : parameters::effectRows)
            SetUnlikeDefault(*effect->pblock, row);
        for (const parameters::Row& row : parameters::layerRows)
            SetUnlikeDefault(*effect->Layer(0, 1)->pblock, row);
    }

    void FillTexts() {
        const MCHAR* sets[] = {_M("hero"), _M("")};
        ReferenceTarget* nodes[] = {node, nullptr};
        ReferenceTarget* second = effect->Layer(0, 2);
        effect->pblock->Append("namedSelectionSetsList"_param, 2, sets);
        effect->pblock->Append("objectList"_param, 2, nodes);
        effect->pblock->Append("layersSecondary"_param, 1, &second);
    }
    static void SetUnlikeDefault(IParamBlock2& block, const parameters::Row& row) {
        if (row.IsTable() || row.type == parameters::Type::Reference) return;
        const host::SavedValue value = UnlikeDefault(row);
        if (const int* number = std::get_if<int>(&value)) {
            block.SetValue(row.id, 0, *number);
        } else if (const float* fraction = std::get_if<float>(&value)) {
            block.SetValue(row.id, 0, *fraction);
        } else {
            block.SetValue(row.id, 0, std::get<MSTR>(value).data());
        }
    }

    // To something else again.
    static void Change(IParamBlock2& block, const parameters::Row& row) {
        if (row.IsTable() || row.type == parameters::Type::Reference) return;
        const host::SavedValue value = UnlikeDefault(row);
        if (std::holds_alternative<int>(value)) {
            block.SetValue(row.id, 0, block.GetInt(row.id) + 1);
        } else if (std::holds_alternative<float>(value)) {
            block.SetValue(row.id, 0, block.GetFloat(row.id) + 1.0F);
        } else {
            block.SetValue(row.id, 0, _M("changed"));
        }
    }

    // Handles as every file of this scene has them.
    [[nodiscard]] host::Handles SceneHandles() const {
        host::Handles handles;
        handles.Enter(100, node);
        for (std::size_t i = 0; i < elements.size(); ++i)
            handles.Enter(static_cast<host::Handle>(101 + i), elements[i]);
        return handles;
    }
    std::vector<host::SavedObject> Save(effect::PSDOutput& saved) {
        host::Handles handles = SceneHandles();
        return host::SaveObjects({&saved}, handles);
    }
    host::Owned<effect::PSDOutput> Load(const std::vector<host::SavedObject>& objects) {
        const std::vector<host::KnownTarget> known{{100, host::SceneTarget::Node},
                                                   {101, host::SceneTarget::RenderElement},
                                                   {102, host::SceneTarget::RenderElement},
                                                   {103, host::SceneTarget::RenderElement}};
        for (const auto& fault : host::CheckObjects(objects, known, Host().classes))
            ADD_FAILURE() << fault.index << ": " << fault.text;
        host::Handles handles = SceneHandles();
        host::LoadObjects(objects, handles, Host().classes);
        const host::Handle root = objects.back().handle;
        host::DestroyUnreferred(objects, {root}, handles);
        return host::Owned<effect::PSDOutput>(
            static_cast<effect::PSDOutput*>(handles.Target(root)));
    }

    std::vector<host::RenderElement*> elements;
    host::Node* node = nullptr;
};

TEST_F(EffectPersistence, LoadedHasAllThatWasSavedOfBothBlocks) {
    const std::vector<host::SavedObject> saved = Save(*effect);
    ASSERT_THAT(saved, SizeIs(4)) << "three layers and the effect";
    const host::Owned<effect::PSDOutput> loaded = Load(saved);
    ASSERT_EQ(loaded->LayerCount(0), 3);
    EXPECT_NE(loaded->Layer(0, 0), effect->Layer(0, 0));
    const std::vector<host::SavedObject> again = Save(*loaded);
    ASSERT_THAT(again, SizeIs(4));
    for (std::size_t i = 0; i < saved.size(); ++i)
        EXPECT_EQ(Describe(again[i]), Describe(saved[i]));
}

TEST_F(EffectPersistence, WhatIsChangedAfterLoadingIsSavedAndLoadedAgain) {
    const std::vector<host::SavedObject> saved = Save(*effect);
    const host::Owned<effect::PSDOutput> loaded = Load(saved);
    for (const parameters::Row& row : parameters::effectRows)
        Change(*loaded->pblock, row);
    for (const parameters::Row& row : parameters::layerRows)
        Change(*loaded->Layer(0, 1)->pblock, row);
    const MCHAR* more = _M("more");
    loaded->pblock->Append("namedSelectionSetsList"_param, 1, &more);
    loaded->pblock->Delete("objectList"_param, 1, 1);
    const std::vector<host::SavedObject> changed = Save(*loaded);
    const host::Owned<effect::PSDOutput> last = Load(changed);
    const std::vector<host::SavedObject> again = Save(*last);
    ASSERT_THAT(again, SizeIs(changed.size()));
    for (std::size_t i = 0; i < changed.size(); ++i)
        EXPECT_EQ(Describe(again[i]), Describe(changed[i]));
    for (const std::size_t i : {1U, 3U})
        EXPECT_NE(Describe(again[i]), Describe(saved[i])) << i;
}

// That the description above is of more than defaults.
TEST_F(EffectPersistence, WhatIsSavedIsWhatTheUserSet) {
    const std::vector<host::SavedObject> saved = Save(*effect);
    const auto linesOf = [](const host::SavedObject& object, std::vector<ParamID> ids) {
        std::vector<std::string> lines;
        for (const host::SavedParameter& parameter : BlockOf(object).parameters) {
            if (std::find(ids.begin(), ids.end(), parameter.id) == ids.end()) continue;
            lines.push_back(Describe(host::SavedBlock{0, 0, {parameter}}).front());
        }
        return lines;
    };
    EXPECT_THAT(linesOf(saved[3], {2, 3, 30, 45, 46, 51, 59, 75, 83, 93}),
                ElementsAre("2: @1 @2 @3", "3: @3", "30: @100 @0", "45: 96.500000f", "46: 8",
                            "51: 7", R"(59: "own renderElementsLayerSetName")", R"(75: "hero" "")",
                            "83: 0.250000f", "93: 7"));
    EXPECT_THAT(linesOf(saved[1], {0, 1, 2, 3, 7}), ElementsAre("1: 0", "2: 0", "3: 26", "7: 1"))
        << "without the element, which is the layer's reference";
    EXPECT_EQ(std::get<host::SavedReference>(saved[1].references.at(1)).target, 102U);
    EXPECT_EQ(std::get<host::SavedReference>(saved[3].references.at(1)).target, 0U);
}

TEST_F(EffectPersistence, LoadedLayersStandForTheirElements) {
    const host::Owned<effect::PSDOutput> loaded = Load(Save(*effect));
    for (int i = 0; i < 3; ++i) {
        ASSERT_TRUE(loaded->Layer(0, i));
        EXPECT_EQ(loaded->Layer(0, i)->Element(), effect->Layer(0, i)->Element()) << i;
    }
    EXPECT_EQ(loaded->Layer(1, 0), loaded->Layer(0, 2));
    EXPECT_EQ(loaded->pblock->GetINode("objectList"_param, 0, 0), node);
}

TEST_F(EffectPersistence, LayersOfALoadedEffectGoWithIt) {
    host::Owned<effect::PSDOutput> loaded = Load(Save(*effect));
    // A block goes with its layer, which a reference of this test would keep.
    const host::TargetReference ofFirst(loaded->Layer(0, 0)->pblock);
    const host::TargetReference ofSecond(loaded->Layer(0, 1)->pblock);
    loaded->pblock->Delete("layersProduction"_param, 0, 1);
    EXPECT_EQ(ofFirst.Get(), nullptr);
    EXPECT_TRUE(ofSecond.Get());
    loaded.reset();
    EXPECT_EQ(ofSecond.Get(), nullptr);
}

TEST_F(EffectPersistence, TheLoadedEffectHearsOfItsBlock) {
    const host::Owned<effect::PSDOutput> loaded = Load(Save(*effect));
    EXPECT_EQ(loaded->pblock->GetOwner(), loaded.get());
    EXPECT_EQ(loaded->dataVersion, 0);
    loaded->pblock->SetValue("bitDepth"_param, 0, 32);
    EXPECT_EQ(effect::PSDOutput::lastChanged, "bitDepth"_param);
}

TEST_F(EffectPersistence, LayersThatNoListHasAreDroppedWithTheFile) {
    std::vector<host::SavedObject> saved = Save(*effect);
    auto& parameters = std::get<host::SavedBlock>(saved.back().references[0]).parameters;
    for (host::SavedParameter& parameter : parameters) {
        if (parameter.id == "layersProduction"_param) parameter.values.resize(1);
        if (parameter.id == "layersSecondary"_param) parameter.values.clear();
    }
    const host::Owned<effect::PSDOutput> loaded = Load(saved);
    EXPECT_EQ(loaded->LayerCount(0), 1);
    EXPECT_EQ(loaded->LayerCount(1), 0);
}

TEST_F(EffectPersistence, AFileThatPutsANodeWhereABlockMustBeIsGivenUp) {
    std::vector<host::SavedObject> saved = Save(*effect);
    saved.back().references[1] = host::SavedReference{100};
    host::Handles handles = SceneHandles();
    try {
        host::LoadObjects(saved, handles, Host().classes);
        FAIL();
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(),
                     "the object 4 of the class (0x70068609, 0x01d5d297) doesn't take the object "
                     "100 as its reference 1");
    }
    EXPECT_EQ(handles.Target(4), nullptr);
}

// Older versions

struct Migrated {
    DWORD version;
    int bitDepth;
    int matchRenderOutputFilename;
    int filterEmptyLayerSets;
    int matteLayersVisible;
    int gammaCorrectConfig;
    int colorCorrectConfig;
    int autoSort;
};

TEST_F(EffectPersistence, BlocksOfEveryVersionComeUpAsTheyShould) {
    // legacyGammaAll is set in all of them.
    constexpr Migrated all[] = {
        {101, 8, 0, 0, 0, 2, 0, 0}, {1, 8, 0, 0, 0, 2, 0, 0}, {2, 8, 0, 1, 0, 2, 0, 0},
        {3, 8, 0, 1, 0, 2, 2, 0},   {4, 8, 0, 1, 0, 2, 2, 0},
    };
    for (const Migrated& expected : all) {
        host::SavedObject saved;
        saved.handle = 1;
        saved.superClass = RENDER_EFFECT_CLASS_ID;
        saved.classID = effect::psdOutputClassID;
        saved.references = {EffectBlockOfVersion(expected.version), host::SavedReference{}};
        const host::Owned<effect::PSDOutput> loaded = Load({saved});
        SCOPED_TRACE(expected.version);
        const auto get = [&](ParamID id) { return loaded->pblock->GetInt(id); };
        EXPECT_EQ(get("bitDepth"_param), expected.bitDepth);
        EXPECT_EQ(get("matchRenderOutputFilename"_param), expected.matchRenderOutputFilename);
        EXPECT_EQ(get("filterEmptyLayerSets"_param), expected.filterEmptyLayerSets);
        EXPECT_EQ(get("matteLayersVisible"_param), expected.matteLayersVisible);
        EXPECT_EQ(get("gammaCorrectConfig"_param), expected.gammaCorrectConfig);
        EXPECT_EQ(get("colorCorrectConfig"_param), expected.colorCorrectConfig);
        EXPECT_EQ(get("autoSort"_param), expected.autoSort);
        const int kinds = expected.version == 4 ? 0 : 5;
        EXPECT_EQ(get("outputSceneLayersAs"_param), kinds);
        EXPECT_EQ(get("outputNodeIDsAs"_param), kinds);
        EXPECT_EQ(get("outputMtlIDsAs"_param), kinds);
        EXPECT_EQ(get("outputObjectsAs"_param), kinds);
        EXPECT_EQ(get("sceneLayerAppDataChunkId"_param), 7);
        EXPECT_EQ(host::ToUtf8(loaded->pblock->GetStr("customLayerSet1Name"_param)),
                  "own customLayerSet1Name");
        EXPECT_EQ(loaded->pblock->GetInterface(IPARAMBLOCK2POSTLOADINFO_ID), nullptr);
    }
}

// Copies

TEST_F(EffectPersistence, ACopyHasAllValuesAndTheNumberOfItsSceneLayers) {
    DefaultRemapDir remap;
    const host::Owned<effect::PSDOutput> copy(
        static_cast<effect::PSDOutput*>(effect->Clone(remap)));
    EXPECT_EQ(copy->pblock->GetOwner(), copy.get());
    EXPECT_EQ(copy->pblock->GetInt("sceneLayerAppDataChunkId"_param), 7);
    const std::vector<host::SavedObject> saved = Save(*effect);
    const std::vector<host::SavedObject> copied = Save(*copy);
    ASSERT_THAT(copied, SizeIs(4));
    for (std::size_t i = 0; i < saved.size(); ++i)
        EXPECT_EQ(Describe(copied[i]), Describe(saved[i]));
}

TEST_F(EffectPersistence, ACopyHasLayersOfItsOwnForTheSameElements) {
    DefaultRemapDir remap;
    host::Owned<effect::PSDOutput> copy(static_cast<effect::PSDOutput*>(effect->Clone(remap)));
    ASSERT_EQ(copy->LayerCount(0), 3);
    const host::TargetReference block(copy->Layer(0, 1)->pblock);
    for (int i = 0; i < 3; ++i) {
        EXPECT_NE(copy->Layer(0, i), effect->Layer(0, i)) << i;
        EXPECT_EQ(copy->Layer(0, i)->Element(), effect->Layer(0, i)->Element()) << i;
    }
    EXPECT_EQ(copy->Layer(1, 0), copy->Layer(0, 2)) << "one copy of each";
    copy->Layer(0, 1)->pblock->SetValue("enabled"_layerParam, 0, TRUE);
    EXPECT_EQ(effect->Layer(0, 1)->pblock->GetInt("enabled"_layerParam), FALSE);
    copy.reset();
    EXPECT_EQ(block.Get(), nullptr) << "its layers go with it";
    EXPECT_EQ(effect->LayerCount(0), 3);
    EXPECT_TRUE(effect->Layer(0, 1));
}

}  // namespace

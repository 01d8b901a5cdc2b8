#include "plugin/parameter_accessor.h"

#include <maxheap.h>

#include <cstring>
#include <optional>

#include "effect/psd_output_layer.h"
#include "plugin/class_descriptors.h"
#include "tests/effect/effect_fixture.h"
#include "tests/host/native_path.h"
#include "tests/plugin/recording_panel.h"

namespace {

class ParameterAccessor : public EffectTest {
  protected:
    IParamBlock2& Block() { return *effect->pblock; }
    std::string Filename() { return host::ToUtf8(Block().GetStr("filename"_param)); }
    std::string Output(const char* name) { return (File("output") / name).string(); }

    static host::Owned<effect::PSDOutputLayer> NewLayer(int blendingMode = 0) {
        host::Owned<effect::PSDOutputLayer> layer(
            static_cast<effect::PSDOutputLayer*>(plugin::ClassDescriptors()[1]->Create()));
        layer->pblock->SetValue("blendingMode"_layerParam, 0, blendingMode);
        return layer;
    }
    static int ModeOf(const host::Owned<effect::PSDOutputLayer>& layer) {
        return layer->pblock->GetInt("blendingMode"_layerParam);
    }
    void Append(ParamID list, effect::PSDOutputLayer* layer) {
        ReferenceTarget* target = layer;
        ASSERT_GE(Block().Append(list, 1, &target), 0);
    }

    // A text on its way through the accessor without a block.
    static PB2Value TextValue(const std::string& text) {
        const MSTR units = host::FromUtf8(text);
        const std::size_t bytes = (static_cast<std::size_t>(units.Length()) + 1) * sizeof(MCHAR);
        PB2Value v;
        v.s = static_cast<MCHAR*>(MAX_malloc(bytes));
        std::memcpy(v.s, units.data(), bytes);
        return v;
    }
    static std::string Take(PB2Value& v) {
        std::string text = host::ToUtf8(v.s);
        MAX_free(v.s);
        return text;
    }

    plugin::PSDOutputPBAccessor& accessor = plugin::EffectAccessor();
};

// filename

TEST_F(ParameterAccessor, FilenameSetToNothingIsUntitledInASceneThatWasNeverSaved) {
    SetText("filename"_param, MSTR());
    EXPECT_EQ(Filename(), Output("Untitled.psd"));
}

TEST_F(ParameterAccessor, FilenameSetToNothingIsThatOfTheScene) {
    Host().settings.sceneFileName = host::FromUtf8("shot 12.v3.max");
    SetText("filename"_param, MSTR());
    EXPECT_EQ(Filename(), Output("shot 12.v3.psd"));
}

TEST_F(ParameterAccessor, FilenameThatWasNeverSetIsNone) {
    EXPECT_EQ(Filename(), "");
    EXPECT_EQ(Block().GetDesc()->GetParamDef("filename"_param).init_file, nullptr);
}

TEST_F(ParameterAccessor, FilenameBecomesAbsolute) {
    SetText("filename"_param, _M("a/../shot.psd"));
    EXPECT_EQ(Filename(), (std::filesystem::current_path() / "shot.psd").string());
    SetText("filename"_param, _M("/renders/./shot.tif"));
    EXPECT_EQ(Filename(), NativePath("/renders/shot.tif"));
}

TEST_F(ParameterAccessor, FilenameThatNamesOnlyAFolderStaysAsGiven) {
    SetText("filename"_param, _M("renders/"));
    EXPECT_EQ(Filename(), "renders/");
    SetText("filename"_param, _M("/"));
    EXPECT_EQ(Filename(), "/");
}

TEST_F(ParameterAccessor, FilenameThatNamesNoFileStaysAsGiven) {
    const std::string name(300, 'x');
    SetText("filename"_param, host::FromUtf8(name));
    EXPECT_EQ(Filename(), name);
}

TEST_F(ParameterAccessor, FilenameStartsTheFileDialogThereAndForgetsTheShortForm) {
    effect->shortFilename = MSTR(_M("short"));
    SetText("filename"_param, _M("/renders/shot.psd"));
    EXPECT_TRUE(effect->shortFilename.isNull());
    EXPECT_EQ(Block().GetDesc()->GetParamDef("filename"_param).init_file, effect->filenameField);
    EXPECT_EQ(host::ToUtf8(effect->filenameField), NativePath("/renders/shot.psd"));
}

TEST_F(ParameterAccessor, FilenameIsNormalisedOnItsWayOutToo) {
    PB2Value v = TextValue("/renders/../shot.psd");
    Interval valid;
    effect->shortFilename = MSTR(_M("short"));
    accessor.Get(v, effect, "filename"_param, 0, 0, valid);
    EXPECT_EQ(Take(v), NativePath("/shot.psd"));
    EXPECT_TRUE(effect->shortFilename.isNull());
    EXPECT_EQ(host::ToUtf8(effect->filenameField), NativePath("/shot.psd"));
}

TEST_F(ParameterAccessor, FilenameTooLongForTheFieldOfTheDialogIsCutThereOnly) {
    const std::string name =
        NativePath(std::string("/").append(200, 'a').append("/").append(100, 'b'));
    SetText("filename"_param, host::FromUtf8(name));
    EXPECT_EQ(Filename(), name);
    EXPECT_EQ(host::ToUtf8(effect->filenameField), name.substr(0, 259));
}

TEST_F(ParameterAccessor, FilenameIsNormalisedWithoutAnOwner) {
    Interval valid;
    PB2Value v = TextValue("/renders/../shot.psd");
    accessor.Get(v, nullptr, "filename"_param, 0, 0, valid);
    EXPECT_EQ(Take(v), NativePath("/shot.psd"));
    v = TextValue("");
    accessor.Set(v, nullptr, "filename"_param, 0, 0);
    EXPECT_EQ(Take(v), Output("Untitled.psd"));
}

TEST_F(ParameterAccessor, AnOwnerOfAnotherClassCountsAsNone) {
    const auto layer = NewLayer();
    PB2Value v = TextValue("/renders/../shot.psd");
    accessor.Set(v, layer.get(), "filename"_param, 0, 0);
    EXPECT_EQ(Take(v), NativePath("/shot.psd"));
    Interval valid;
    v = {};
    v.i = 77;
    accessor.Get(v, layer.get(), "legacyBitDepth"_param, 0, 0, valid);
    EXPECT_EQ(v.i, 77);
    v.i = 32;
    accessor.Set(v, layer.get(), "bitDepth"_param, 0, 0);
    accessor.TabChanged(tab_ref_deleted, nullptr, layer.get(), "layersProduction"_param, 1, 1);
}

TEST_F(ParameterAccessor, FilenameIsNormalisedForWhoeverAsks) {
    effect->shortFilename = MSTR(_M("short"));
    EXPECT_EQ(host::ToUtf8(plugin::NormalizeFilename(*effect, _M("/renders/../shot.psd"))),
              NativePath("/shot.psd"));
    EXPECT_TRUE(effect->shortFilename.isNull());
    EXPECT_EQ(host::ToUtf8(effect->filenameField), NativePath("/shot.psd"));
    EXPECT_EQ(Filename(), "") << "the parameter stays";
    EXPECT_EQ(host::ToUtf8(plugin::NormalizeFilename(*effect, MSTR())), Output("Untitled.psd"));
    effect->DeleteReference(0);
    EXPECT_EQ(host::ToUtf8(plugin::NormalizeFilename(*effect, _M("/a/./b.psd"))),
              NativePath("/a/b.psd"));
}

TEST_F(ParameterAccessor, FilenameOfNullStaysNull) {
    Interval valid;
    PB2Value v;
    v.s = nullptr;
    accessor.Get(v, effect, "filename"_param, 0, 0, valid);
    EXPECT_EQ(v.s, nullptr);
    effect->shortFilename = MSTR(_M("short"));
    accessor.Set(v, effect, "filename"_param, 0, 0);
    EXPECT_EQ(v.s, nullptr);
    EXPECT_TRUE(effect->shortFilename.isNull()) << "the short form goes all the same";
}

// Answers from the present

TEST_F(ParameterAccessor, UsePS7ExtensionsReadsTrueWhateverWasSet) {
    EXPECT_EQ(Block().GetInt("usePS7Extensions"_param), TRUE);
    Set("usePS7Extensions"_param, FALSE);
    EXPECT_EQ(Block().GetInt("usePS7Extensions"_param), TRUE);
}

TEST_F(ParameterAccessor, LegacyBitDepthFollowsTheBitDepth) {
    for (const auto& [bitDepth, legacy] : {std::pair{8, 8}, {16, 16}, {32, 16}}) {
        Set("bitDepth"_param, bitDepth);
        EXPECT_EQ(Block().GetInt("legacyBitDepth"_param), legacy) << bitDepth;
        Set("legacyBitDepth"_param, 24 - legacy);
        EXPECT_EQ(Block().GetInt("legacyBitDepth"_param), legacy) << "whatever was set";
    }
}

TEST_F(ParameterAccessor, LongListsFromAScriptAreStoredUnchanged) {
    std::string list = "1";
    for (int id = 2; list.size() < 5000; ++id)
        list += ", " + std::to_string(id);
    for (const ParamID id : {"nodeIDList"_param, "mtlIDList"_param}) {
        SetText(id, host::FromUtf8(list));
        EXPECT_EQ(host::ToUtf8(Block().GetStr(id)), list);
    }
}

// Lists of IDs that the panel shows

// A panel whose edit fields show a text.
class TypedLists : public ParameterAccessor {
  protected:
    // What is stored when a map sets `given` while the field shows `typed`.
    std::string Stored(const std::string& typed, const std::string& given) {
        constexpr ParamID list = "nodeIDList"_param;
        return Stored(typed, given, list);
    }
    std::string Stored(const std::string& typed, const std::string& given, ParamID list) {
        panel.typedList = [&, list](const effect::PSDOutput& shown, ParamID id) {
            return &shown == effect && id == list ? std::optional(host::FromUtf8(typed))
                                                  : std::nullopt;
        };
        SetText(list, host::FromUtf8(given));
        panel.typedList = nullptr;
        return host::ToUtf8(Block().GetStr(list));
    }

    RecordingPanel panel;
    const std::string longList = std::string(200, '1').append(",").append(200, '2');
};

TEST_F(TypedLists, ALongListThatWasCutIsStoredWhole) {
    for (const ParamID list : {"nodeIDList"_param, "mtlIDList"_param}) {
        EXPECT_EQ(Stored(longList, longList.substr(0, 255), list), longList) << list;
        EXPECT_EQ(Stored(longList, "", list), longList) << list;
    }
}

TEST_F(TypedLists, AnotherListIsStoredAsItIs) {
    EXPECT_EQ(Stored(longList, "1, 3"), "1, 3");
    EXPECT_EQ(Stored(longList, longList.substr(0, 254) + "x"), longList.substr(0, 254) + "x");
}

TEST_F(TypedLists, OfTheSameLengthNothingIsReplaced) {
    EXPECT_EQ(Stored(longList, longList), longList);
}

TEST_F(TypedLists, AShortTextIsNeverTakenForACutOne) {
    const std::string shortList = longList.substr(0, 255);
    EXPECT_EQ(Stored(shortList, shortList.substr(0, 100)), shortList.substr(0, 100));
    const std::string list = longList.substr(0, 256);
    EXPECT_EQ(Stored(list, list.substr(0, 100)), list) << "256 units are enough";
}

TEST_F(TypedLists, TheFieldsTextIsTakenUpTo8192Units) {
    const std::string endless(9000, '7');
    EXPECT_EQ(Stored(endless, endless.substr(0, 255)), std::string(8192, '7'));
    EXPECT_EQ(Stored(endless.substr(0, 8192), endless.substr(0, 255)), std::string(8192, '7'));
    EXPECT_EQ(Stored(endless, std::string(8192, '7')), std::string(8192, '7'));
}

TEST_F(TypedLists, AShorterFieldThatTheValueGoesOnFromWins) {
    EXPECT_EQ(Stored(longList.substr(0, 300), longList), longList.substr(0, 300));
}

TEST_F(TypedLists, WithoutAVisibleRollupTheValueStays) {
    SetText("nodeIDList"_param, host::FromUtf8(longList.substr(0, 255)));
    EXPECT_EQ(host::ToUtf8(Block().GetStr("nodeIDList"_param)), longList.substr(0, 255));
}

TEST_F(TypedLists, OtherTextsAreNotAskedFor) {
    panel.typedList = [](const effect::PSDOutput&, ParamID id) -> std::optional<MSTR> {
        ADD_FAILURE() << id;
        return std::nullopt;
    };
    SetText("embedHelpersWildcard"_param, _M("a*"));
    PB2Value v;
    v.s = nullptr;
    accessor.Set(v, effect, "nodeIDList"_param, 0, 0);
    EXPECT_EQ(v.s, nullptr);
    v = TextValue("1");
    accessor.Set(v, nullptr, "nodeIDList"_param, 0, 0);
    EXPECT_EQ(Take(v), "1");
}

TEST_F(ParameterAccessor, MarkedSwitchesPassAsTheyAre) {
    constexpr ParamID switches[] = {25, 26, 48, 53, 18, 20, 28, 71};
    for (const ParamID id : switches) {
        for (const BOOL on : {FALSE, TRUE}) {
            Set(id, on);
            EXPECT_EQ(Block().GetInt(id), on) << id;
        }
    }
}

// 32 bits

TEST_F(ParameterAccessor, BitDepth32PreparesTheLayersOfBothLists) {
    const auto screen = NewLayer(7);
    const auto overlay = NewLayer(10);
    const auto multiply = NewLayer(3);
    Append("layersProduction"_param, screen.get());
    Append("layersProduction"_param, nullptr);
    Append("layersProduction"_param, overlay.get());
    Append("layersSecondary"_param, multiply.get());
    for (const int bitDepth : {8, 16}) {
        Set("bitDepth"_param, bitDepth);
        EXPECT_EQ(ModeOf(screen), 7) << bitDepth;
        EXPECT_EQ(ModeOf(overlay), 10);
    }
    Set("bitDepth"_param, 32);
    EXPECT_EQ(ModeOf(screen), 9);
    EXPECT_EQ(ModeOf(overlay), 0);
    EXPECT_EQ(ModeOf(multiply), 3);
    multiply->pblock->SetValue("blendingMode"_layerParam, 0, 12);
    Set("bitDepth"_param, 32);
    EXPECT_EQ(ModeOf(multiply), 0) << "also in the second list, and when it is 32 already";
}

TEST_F(ParameterAccessor, OtherNumbersThan32PrepareNothing) {
    const auto screen = NewLayer(7);
    Append("layersProduction"_param, screen.get());
    Set("renderSetting"_param, 32);
    Set("compression"_param, 32);
    EXPECT_EQ(ModeOf(screen), 7);
}

// Tables

TEST_F(ParameterAccessor, ALayerThatIsDeletedGoesFromItsTableButNotTheFirst) {
    for (const ParamID list : {"layersProduction"_param, "layersSecondary"_param}) {
        auto first = NewLayer();
        auto second = NewLayer();
        auto third = NewLayer();
        auto fourth = NewLayer();
        for (auto* layer : {first.get(), second.get(), third.get(), fourth.get()}) {
            Append(list, layer);
        }
        third.reset();
        EXPECT_EQ(Block().Count(list), 3) << "shorter by the one at index 2";
        EXPECT_EQ(Block().GetReferenceTarget(list, 0, 0), first.get());
        EXPECT_EQ(Block().GetReferenceTarget(list, 0, 1), second.get());
        EXPECT_EQ(Block().GetReferenceTarget(list, 0, 2), fourth.get());
        first.reset();
        EXPECT_EQ(Block().Count(list), 3) << "the first stays behind";
        EXPECT_EQ(Block().GetReferenceTarget(list, 0, 0), nullptr);
        EXPECT_EQ(Block().GetReferenceTarget(list, 0, 1), second.get());
        second.reset();
        EXPECT_EQ(Block().Count(list), 2);
        EXPECT_EQ(Block().GetReferenceTarget(list, 0, 1), fourth.get());
    }
}

TEST_F(ParameterAccessor, ANullAtTheHeadOfTheTableIsCopedWith) {
    auto gone = NewLayer();
    const auto screen = NewLayer(7);
    Append("layersProduction"_param, gone.get());
    Append("layersProduction"_param, screen.get());
    gone.reset();
    Set("bitDepth"_param, 32);
    EXPECT_EQ(ModeOf(screen), 9);
}

TEST_F(ParameterAccessor, OtherChangesOfATableLeaveIt) {
    const auto layer = NewLayer();
    for (int i = 0; i < 3; ++i)
        Append("layersProduction"_param, layer.get());
    for (const int code : {-1, 0, 1, 2, 4, 5, 6}) {
        accessor.TabChanged(static_cast<tab_changes>(code), nullptr, effect,
                            "layersProduction"_param, 1, 1);
        EXPECT_EQ(Block().Count("layersProduction"_param), 3) << code;
    }
    for (const int index : {0, -1}) {
        accessor.TabChanged(tab_ref_deleted, nullptr, effect, "layersProduction"_param, index, 1);
        EXPECT_EQ(Block().Count("layersProduction"_param), 3) << index;
    }
    accessor.TabChanged(tab_ref_deleted, nullptr, nullptr, "layersProduction"_param, 1, 1);
    EXPECT_EQ(Block().Count("layersProduction"_param), 3);
}

TEST_F(ParameterAccessor, ThePanelDrawsATableOfLayersThatChanged) {
    RecordingPanel panel;
    for (const ParamID list : {"layersProduction"_param, "layersSecondary"_param}) {
        for (const int code : {0, 1, 2, 4, 5}) {
            accessor.TabChanged(static_cast<tab_changes>(code), nullptr, effect, list, 0, 1);
            EXPECT_THAT(panel.Take(), testing::ElementsAre("draw elements")) << code;
        }
        for (const int code : {-1, 6, 100}) {
            accessor.TabChanged(static_cast<tab_changes>(code), nullptr, effect, list, 1, 1);
            EXPECT_THAT(panel.Take(), testing::IsEmpty()) << code;
        }
    }
    accessor.TabChanged(tab_append, nullptr, effect, "objectList"_param, 0, 1);
    accessor.TabChanged(tab_append, nullptr, nullptr, "layersProduction"_param, 0, 1);
    EXPECT_THAT(panel.Take(), testing::IsEmpty());
}

TEST_F(ParameterAccessor, ThePanelMakesItsRowsAnewWithoutALayerThatWasDeleted) {
    auto first = NewLayer();
    auto second = NewLayer();
    for (auto* layer : {first.get(), second.get()})
        Append("layersProduction"_param, layer);
    RecordingPanel panel;
    second.reset();
    const std::vector<std::string> shown = panel.Take();
    EXPECT_EQ(std::count(shown.begin(), shown.end(), "element rows"), 1);
    EXPECT_EQ(Block().Count("layersProduction"_param), 1);
    first.reset();
    EXPECT_THAT(panel.Take(), testing::Not(testing::Contains("element rows")))
        << "the first stays behind";
}

TEST_F(ParameterAccessor, TheStoredBitDepthIsWhatTheSceneHad) {
    for (const auto& [stored, depth] : {std::pair{8, 8}, {16, 16}, {32, 16}, {0, 16}}) {
        Set("legacyBitDepth"_param, stored);
        EXPECT_EQ(plugin::StoredBitDepth(Block()), depth) << stored;
        EXPECT_EQ(Block().GetInt("legacyBitDepth"_param), 16) << "by now";
    }
}

TEST_F(ParameterAccessor, AnOwnerWithoutItsBlockIsLeftAlone) {
    effect->DeleteReference(0);
    PB2Value v;
    v.i = 32;
    Interval valid;
    accessor.Set(v, effect, "bitDepth"_param, 0, 0);
    EXPECT_EQ(v.i, 32);
    accessor.Get(v, effect, "legacyBitDepth"_param, 0, 0, valid);
    EXPECT_EQ(v.i, 32);
    accessor.TabChanged(tab_ref_deleted, nullptr, effect, "layersProduction"_param, 1, 1);
    v = TextValue("/renders/../shot.psd");
    accessor.Set(v, effect, "filename"_param, 0, 0);
    EXPECT_EQ(Take(v), NativePath("/shot.psd"));
}

}  // namespace

#include "plugin/block_changes.h"

#include <elementclasses.h>
#include <hold.h>

#include <map>

#include "effect/psd_output_layer.h"
#include "effect/sync_render_elements.h"
#include "tests/effect/effect_fixture.h"
#include "tests/plugin/recording_panel.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

class BlockChanges : public EffectTest {
  protected:
    BlockChanges() {
        for (int i = 0; i < LibNumberClasses(); ++i)
            Host().classes.Add(LibClassDesc(i));
        Host().invalidateUI = [this](ParamBlockDesc2& desc, ParamID id, int) {
            EXPECT_EQ(&desc, effect->pblock->GetDesc());
            const std::string what = "show " + std::to_string(id);
            if (plugin::OpenPanel() == &panel) panel.Record(what);
            invalidated.push_back(what);
        };
    }
    ~BlockChanges() override { Host().invalidateUI = nullptr; }

    void Change(int id) { plugin::ParameterChanged(*effect, static_cast<ParamID>(id)); }
    std::vector<std::string> TakeInvalidated() { return std::exchange(invalidated, {}); }
    static host::RenderElement& Add(Class_ID id, const MCHAR* name) {
        return Host().elements[RS_Production].Add(id, name);
    }
    std::vector<std::string> Layers(int list = 0) {
        std::vector<std::string> names;
        for (int i = 0; i < effect->LayerCount(list); ++i)
            names.push_back(host::ToUtf8(effect->Layer(list, i)->ElementName()));
        return names;
    }

    RecordingPanel panel;
    std::vector<std::string> invalidated;
};

TEST_F(BlockChanges, ShowWhatDependsOnEachParameter) {
    const std::map<int, std::vector<std::string>> shownBy = {
        {0, {"file name", "format"}},
        {2, {"draw elements"}},
        {3, {"draw elements"}},
        {6, {"layer"}},
        {18, {"object IDs"}},
        {20, {"material IDs"}},
        {23, {"object IDs"}},
        {24, {"material IDs"}},
        {26, {"elements"}},
        {28, {"objects"}},
        {29, {"objects"}},
        {35, {"blending modes"}},
        {46, {"blending modes", "depth", "1061", "layer", "show 35", "frame buffer?"}},
        {48, {"scene layers"}},
        {50, {"scene layers"}},
        {53, {"file name", "format"}},
        {54, {"layer"}},
        {58, {"1186"}},
        {71, {"selection sets"}},
        {73, {"selection sets"}},
        {75, {"draw selection sets"}},
        {124, {"file name", "format"}},
        {129, {"layer"}},
        {130, {"layer"}},
    };
    for (int id = 0; id <= 140; ++id) {
        const auto row = shownBy.find(id);
        std::vector<std::string> expected;
        if (row != shownBy.end()) expected = row->second;
        expected.push_back("show " + std::to_string(id));
        // Its buttons go by the rows that the host shows.
        if (id == 30) expected.push_back("objects");
        Change(id);
        EXPECT_EQ(panel.Take(), expected) << id;
    }
}

TEST_F(BlockChanges, WithoutAPanelOnlyTheHostShowsTheParameterAnew) {
    plugin::PanelClosed(panel);
    for (int id = 0; id <= 140; ++id) {
        Change(id);
        const std::string last = "show " + std::to_string(id);
        if (id == 46) {
            EXPECT_THAT(TakeInvalidated(), ElementsAre("show 35", last));
        } else {
            EXPECT_THAT(TakeInvalidated(), ElementsAre(last));
        }
    }
    EXPECT_THAT(panel.Take(), IsEmpty());
}

TEST_F(BlockChanges, OfTheBlockItselfComeToThePanel) {
    Set("bitDepth"_param, 8);
    EXPECT_THAT(panel.Take(), ElementsAre("blending modes", "depth", "1061", "layer", "show 35",
                                          "frame buffer?", "show 46"));
}

TEST_F(BlockChanges, ThatSwitchSortingOnBringTheListUpToDateFirst) {
    Set("autoSort"_param, FALSE);
    Add(BACKGROUND_ELEMENT, _M("Back"));
    Add(SPECULAR_ELEMENT, _M("Spec"));
    panel.Take();
    TakeInvalidated();
    Set("autoSort"_param, TRUE);
    EXPECT_THAT(Layers(), ElementsAre("Spec", "Back"));
    EXPECT_THAT(Layers(1), IsEmpty());
    const std::vector<std::string> shown = panel.Take();
    ASSERT_GE(shown.size(), 2U);
    EXPECT_THAT(shown, Contains("draw elements")) << "of the table that was filled meanwhile";
    EXPECT_EQ(shown[shown.size() - 2], "layer");
    EXPECT_EQ(shown.back(), "show 130") << "not of the parameter that changed last";
    EXPECT_EQ(std::count(shown.begin(), shown.end(), "show 130"), 1);
}

TEST_F(BlockChanges, ThatSwitchSortingOnBringTheListUpToDateWithoutAPanelToo) {
    plugin::PanelClosed(panel);
    Set("autoSort"_param, FALSE);
    Add(SPECULAR_ELEMENT, _M("Spec"));
    EXPECT_THAT(Layers(), IsEmpty());
    Set("autoSort"_param, TRUE);
    EXPECT_THAT(Layers(), ElementsAre("Spec"));
}

TEST_F(BlockChanges, ThatSwitchSortingOnAreTakenBackAndDoneAgainAsTheyWere) {
    Set("autoSort"_param, FALSE);
    Add(SPECULAR_ELEMENT, _M("Spec"));
    Add(BACKGROUND_ELEMENT, _M("Back"));
    effect::SyncRenderElements(*effect, 0);
    const int last = effect->LayerCount(0) - 1;
    theHold.Begin();
    ReferenceTarget* spec = effect->pblock->GetReferenceTarget("layersProduction"_param, 0, 0);
    effect->pblock->SetValue("layersProduction"_param, 0,
                             effect->pblock->GetReferenceTarget("layersProduction"_param, 0, last),
                             0);
    effect->pblock->SetValue("layersProduction"_param, 0, spec, last);
    theHold.Accept(_M("Swap"));
    ASSERT_THAT(Layers(), ElementsAre("Back", "Spec")) << "the user's order";
    Add(DIFFUSE_ELEMENT, _M("Diff"));
    theHold.Begin();
    Set("autoSort"_param, TRUE);
    theHold.Accept(_M("Auto Sort"));
    const std::vector<std::string> sorted = Layers();
    ASSERT_EQ(sorted.size(), 3U);
    for (int round = 0; round < 3; ++round) {
        EXPECT_TRUE(Host().undo.Undo());
        EXPECT_THAT(Layers(), ElementsAre("Back", "Spec"));
        panel.Take();
        EXPECT_TRUE(Host().undo.Redo());
        EXPECT_EQ(Layers(), sorted);
        EXPECT_THAT(panel.Take(), Contains("element change")) << "what is new meanwhile";
    }
}

TEST_F(BlockChanges, ThatSwitchSortingOffLeaveTheListAlone) {
    Add(SPECULAR_ELEMENT, _M("Spec"));
    Set("autoSort"_param, FALSE);
    EXPECT_THAT(Layers(), IsEmpty());
    EXPECT_THAT(panel.Take(), ElementsAre("layer", "show 130"));
}

TEST_F(BlockChanges, OfAnEffectWithoutItsBlockAreShownByThePanelOnly) {
    effect->DeleteReference(0);
    panel.Take();
    TakeInvalidated();
    Change(130);
    Change(46);
    EXPECT_THAT(panel.Take(),
                ElementsAre("layer", "blending modes", "depth", "1061", "layer", "frame buffer?"));
    EXPECT_THAT(TakeInvalidated(), IsEmpty());
}

TEST_F(BlockChanges, GoOnWhenThePanelClosesAmongThem) {
    panel.onRecord = [this](const std::string& what) {
        if (what == "depth") plugin::PanelClosed(panel);
    };
    Change(46);
    EXPECT_THAT(panel.Take(), ElementsAre("blending modes", "depth"));
    EXPECT_THAT(TakeInvalidated(), ElementsAre("show 35", "show 46"));
}

TEST_F(BlockChanges, OfAnEffectThatThePanelDoesNotShowAreNoBusinessOfIt) {
    const host::Owned<effect::PSDOutput> other(
        static_cast<effect::PSDOutput*>(LibClassDesc(0)->Create()));
    panel.shownEffect = other.get();
    panel.Take();
    TakeInvalidated();
    Change(46);
    Change(30);
    EXPECT_THAT(panel.Take(), ElementsAre("show 35", "show 46", "show 30"));
    panel.shownEffect = effect;
    Change(58);
    EXPECT_THAT(panel.Take(), ElementsAre("1186", "show 58"));
}

TEST_F(BlockChanges, EndWhenTheEffectIsDeletedWhileTheUserIsAsked) {
    panel.onRecord = [](const std::string& what) {
        if (what == "frame buffer?") Host().effects.clear();
    };
    Change(46);
    EXPECT_EQ(panel.Take().back(), "frame buffer?");
    EXPECT_THAT(TakeInvalidated(), ElementsAre("show 35"));
}

TEST_F(BlockChanges, GoToThePanelThatOpenedLast) {
    {
        RecordingPanel second;
        EXPECT_EQ(plugin::OpenPanel(), &second);
        plugin::PanelClosed(panel);
        Change(58);
        EXPECT_THAT(second.Take(), ElementsAre("1186"));
        EXPECT_THAT(panel.Take(), IsEmpty());
    }
    EXPECT_EQ(plugin::OpenPanel(), nullptr);
}

}  // namespace

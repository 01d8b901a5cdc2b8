#include "ui/scene_layer_rows.h"

#include <hold.h>
#include <ilayer.h>

#include <string>
#include <vector>

#include "effect/scene_layer_choice.h"
#include "tests/effect/effect_fixture.h"
#include "tests/plugin/recording_panel.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SceneLayerRowsTest : public EffectTest {
  protected:
    static host::SceneLayer& Add(const MSTR& name, host::SceneLayer* parent = nullptr) {
        return Host().scene.AddLayer(name, parent);
    }
    std::vector<std::string> Texts() {
        std::vector<std::string> texts;
        for (int row = 0; row < rows.Count(); ++row)
            texts.push_back(host::ToUtf8(rows.Text(row)));
        return texts;
    }
    std::vector<int> Images() {
        std::vector<int> images;
        for (int row = 0; row < rows.Count(); ++row)
            images.push_back(rows.CheckImage(*effect, row));
        return images;
    }
    DWORD Number() {
        return static_cast<DWORD>(effect->pblock->GetInt("sceneLayerAppDataChunkId"_param));
    }
    bool IsOn(host::SceneLayer& layer) { return effect::IsSceneLayerOn(&layer, Number()); }

    ui::SceneLayerRows rows;
};

TEST_F(SceneLayerRowsTest, AreTheTreeOfLayers) {
    host::SceneLayer& house = Add(_M("House"));
    Add(_M("Roof"), &house);
    host::SceneLayer& floor = Add(_M("Floor"), &house);
    Add(_M("Tiles"), &floor);
    Add(_M("0"));
    rows.Refresh();
    EXPECT_THAT(Texts(), ElementsAre("Default", "House", "    Floor", "        Tiles", "    Roof"));
    rows.Refresh();
    EXPECT_EQ(rows.Count(), 5) << "made anew, not added";
}

TEST_F(SceneLayerRowsTest, StandByTheirNamesAsPeopleCount) {
    host::SceneLayer& parent = Add(_M("b"));
    for (const MCHAR* name : {_M("wall10"), _M("Wall2"), _M("wall1")}) {
        Add(name, &parent);
        Add(name);
    }
    Add(_M("A"));
    rows.Refresh();
    EXPECT_THAT(Texts(), ElementsAre("A", "b", "    wall1", "    Wall2", "    wall10", "wall1",
                                     "Wall2", "wall10"));
}

TEST_F(SceneLayerRowsTest, OfTheSceneThatHasNoneAreNone) {
    rows.Refresh();
    EXPECT_EQ(rows.Count(), 0);
    EXPECT_EQ(rows.Layer(0), nullptr);
    EXPECT_TRUE(rows.Text(0).isNull());
    EXPECT_FALSE(rows.Toggle(*effect, 0));
    EXPECT_FALSE(rows.Toggle(*effect, -1));
    EXPECT_EQ(rows.CheckImage(*effect, 0), 1);
    EXPECT_FALSE(Host().undo.CanUndo());
}

TEST_F(SceneLayerRowsTest, CallTheDefaultLayerDefaultAndNoOther) {
    host::SceneLayer& parent = Add(_M("00"));
    Add(_M("0"), &parent);
    Add(_M("Default0"));
    rows.Refresh();
    EXPECT_THAT(Texts(), ElementsAre("00", "    Default", "Default0"));
}

TEST_F(SceneLayerRowsTest, ShowANameAndAChoiceAsTheyAreAtTheMoment) {
    host::SceneLayer& layer = Add(_M("Wall"));
    rows.Refresh();
    EXPECT_THAT(Images(), ElementsAre(2)) << "a layer that was never touched is on";
    layer.SetName(_M("Floor"));
    effect::SetSceneLayerOn(&layer, Number(), false);
    EXPECT_THAT(Texts(), ElementsAre("Floor"));
    EXPECT_THAT(Images(), ElementsAre(1));
}

TEST_F(SceneLayerRowsTest, AreSwitchedByAClickWhichCanBeUndone) {
    host::SceneLayer& layer = Add(_M("a"));
    host::SceneLayer& other = Add(_M("b"));
    rows.Refresh();
    Host().undo.Clear();
    EXPECT_TRUE(rows.Toggle(*effect, 0));
    EXPECT_FALSE(IsOn(layer));
    EXPECT_TRUE(IsOn(other));
    EXPECT_EQ(Host().undo.UndoName(), MSTR(_M("Parameter Change")));
    EXPECT_TRUE(rows.Toggle(*effect, 0));
    EXPECT_TRUE(IsOn(layer));
    Host().undo.Undo();
    EXPECT_FALSE(IsOn(layer));
    Host().undo.Undo();
    EXPECT_TRUE(IsOn(layer));
}

TEST_F(SceneLayerRowsTest, AreSwitchedAllAtOnceWhichCanBeUndone) {
    host::SceneLayer& a = Add(_M("a"));
    host::SceneLayer& b = Add(_M("b"), &a);
    host::SceneLayer& c = Add(_M("c"));
    rows.Refresh();
    rows.Toggle(*effect, 1);
    Host().undo.Clear();
    int redraws = 0;
    const auto redraw = [&] { ++redraws; };
    ui::ChooseSceneLayerMenu(*effect, 2, redraw);
    EXPECT_EQ(redraws, 2) << "one is off already";
    EXPECT_FALSE(IsOn(a) || IsOn(b) || IsOn(c));
    EXPECT_EQ(Host().undo.UndoName(), MSTR(_M("Disable all layers")));
    ui::ChooseSceneLayerMenu(*effect, 1, redraw);
    EXPECT_EQ(redraws, 5);
    EXPECT_TRUE(IsOn(a) && IsOn(b) && IsOn(c));
    EXPECT_EQ(Host().undo.UndoName(), MSTR(_M("Enable all layers")));
    Host().undo.Undo();
    EXPECT_FALSE(IsOn(a) || IsOn(b) || IsOn(c));
    Host().undo.Undo();
    EXPECT_TRUE(IsOn(a) && !IsOn(b) && IsOn(c));
    EXPECT_FALSE(Host().undo.CanUndo());
}

TEST_F(SceneLayerRowsTest, AreDrawnAnewByThePanelWhenASwitchIsTakenBackOrDoneAgain) {
    Add(_M("a"));
    Add(_M("b"));
    rows.Refresh();
    Host().undo.Clear();
    RecordingPanel panel;
    rows.Toggle(*effect, 0);
    ui::ChooseSceneLayerMenu(*effect, 2, [] {});
    EXPECT_THAT(panel.Take(), IsEmpty()) << "whoever switches draws";
    for (int steps = 0; steps < 2; ++steps) {
        Host().undo.Undo();
        EXPECT_THAT(panel.Take(), ElementsAre("draw scene layers"));
    }
    for (int steps = 0; steps < 2; ++steps) {
        Host().undo.Redo();
        EXPECT_THAT(panel.Take(), ElementsAre("draw scene layers"));
    }
    ui::ChooseSceneLayerMenu(*effect, 2, [] {});
    EXPECT_EQ(Host().undo.UndoName(), MSTR(_M("Disable all layers")));
    Host().undo.Undo();
    EXPECT_FALSE(IsOn(*Host().scene.FindLayer(_M("a")))) << "a menu without effect is no step";
}

TEST_F(SceneLayerRowsTest, TellOfEachChangeOfALayerOfTheirs) {
    host::SceneLayer& layer = Add(_M("a"));
    rows.Refresh();
    int changes = 0;
    rows.onChange = [&changes] { ++changes; };
    layer.SetName(_M("b"));
    EXPECT_EQ(changes, 1);
    rows.Clear();
    layer.SetName(_M("c"));
    EXPECT_EQ(changes, 1);
}

TEST_F(SceneLayerRowsTest, AreLeftAloneWhenTheMenuIsLeftWithoutAChoice) {
    host::SceneLayer& layer = Add(_M("a"));
    Host().undo.Clear();
    for (const int item : {0, 3, -1})
        ui::ChooseSceneLayerMenu(*effect, item, [] { FAIL() << "nothing changes"; });
    EXPECT_TRUE(IsOn(layer));
    EXPECT_FALSE(Host().undo.CanUndo());
}

TEST_F(SceneLayerRowsTest, HaveAMenuOfTwo) {
    const ui::RowMenu menu = ui::SceneLayerMenu();
    EXPECT_EQ(menu[0].id, 1);
    EXPECT_EQ(menu[0].text, MSTR(_M("Enable output of all scene layers")));
    EXPECT_EQ(menu[1].id, 2);
    EXPECT_EQ(menu[1].text, MSTR(_M("Disable output of all scene layers")));
}

TEST_F(SceneLayerRowsTest, AboveOneThatIsDeletedFallByOne) {
    for (const MCHAR* name : {_M("a"), _M("b"), _M("c"), _M("d")})
        Add(name);
    rows.Refresh();
    host::SceneLayer* gone = Host().scene.FindLayer(_M("b"));
    EXPECT_EQ(rows.Delete(gone), 1);
    EXPECT_THAT(Texts(), ElementsAre("a", "c", "d"));
    EXPECT_EQ(rows.Layer(2), Host().scene.FindLayer(_M("d")));
    EXPECT_EQ(rows.Delete(gone), -1) << "it has no row any more";
    EXPECT_EQ(rows.Delete(nullptr), -1);
}

// As the rollup does on the host's notification.
struct Listener {
    ui::SceneLayerRows* rows;
    std::vector<int> deleted;
    static void Hear(void* param, NotifyInfo* info) {
        auto* listener = static_cast<Listener*>(param);
        listener->deleted.push_back(listener->rows->Delete(static_cast<ILayer*>(info->callParam)));
    }
};

TEST_F(SceneLayerRowsTest, OfALayerThatTheHostDeletesAreFound) {
    for (const MCHAR* name : {_M("a"), _M("b"), _M("c")})
        Add(name);
    rows.Refresh();
    Listener listener{&rows, {}};
    RegisterNotification(Listener::Hear, &listener, NOTIFY_LAYER_DELETED);
    Host().scene.Remove(*Host().scene.FindLayer(_M("c")));
    Host().scene.Remove(*Host().scene.FindLayer(_M("a")));
    UnRegisterNotification(Listener::Hear, &listener, NOTIFY_LAYER_DELETED);
    EXPECT_THAT(listener.deleted, ElementsAre(2, 0));
    EXPECT_THAT(Texts(), ElementsAre("b"));
}

TEST_F(SceneLayerRowsTest, OfLayersThatAreDestroyedUnheardAreEmpty) {
    Add(_M("a"));
    Add(_M("b"));
    rows.Refresh();
    Host().scene.Clear();
    EXPECT_THAT(Texts(), ElementsAre("", ""));
    EXPECT_THAT(Images(), ElementsAre(1, 1));
    EXPECT_FALSE(rows.Toggle(*effect, 0));
    rows.Refresh();
    EXPECT_THAT(Texts(), IsEmpty());
}

TEST_F(SceneLayerRowsTest, AreAnEffectsOwn) {
    Add(_M("a"));
    rows.Refresh();
    const host::Owned<effect::PSDOutput> other(
        static_cast<effect::PSDOutput*>(LibClassDesc(0)->Create()));
    rows.Toggle(*effect, 0);
    EXPECT_EQ(rows.CheckImage(*effect, 0), 1);
    EXPECT_EQ(rows.CheckImage(*other, 0), 2);
}

TEST_F(SceneLayerRowsTest, KeepTheRowOfALayerWhoseDeletionIsUndoneOnceTheyAreMadeAnew) {
    host::SceneLayer& layer = Add(_M("a"));
    rows.Refresh();
    rows.Toggle(*effect, 0);
    theHold.Begin();
    Host().scene.Remove(layer);
    theHold.Accept(_M("Delete Layer"));
    rows.Refresh();
    EXPECT_EQ(rows.Count(), 0);
    Host().undo.Undo();
    rows.Refresh();
    EXPECT_THAT(Texts(), ElementsAre("a"));
    EXPECT_THAT(Images(), ElementsAre(1));
}

}  // namespace

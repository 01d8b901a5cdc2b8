#include "ui/win32/scene_layers_rollup.h"

#include <hold.h>

#include "effect/scene_layer_choice.h"
#include "plugin/scene_file_state.h"
#include "tests/ui/win32/list_stage.h"

namespace {

using testing::ElementsAre;

constexpr MapID sceneLayersMap = 5;
constexpr UINT_PTR timer = 98918;

class SceneLayersRollupTest : public ListTest {
  protected:
    static host::SceneLayer& Add(const MSTR& name, host::SceneLayer* parent = nullptr) {
        return Host().scene.AddLayer(name, parent);
    }
    // With a tree of layers: Default, House, Floor in it, Tiles in that, Roof in House.
    void OpenWithHouse() {
        host::SceneLayer& house = Add(_M("House"));
        Add(_M("Roof"), &house);
        host::SceneLayer& floor = Add(_M("Floor"), &house);
        Add(_M("Tiles"), &floor);
        Add(_M("0"));
        Open();
        Host().undo.Clear();
    }
    HWND List() { return Control(sceneLayersMap, 1153); }
    std::vector<std::string> Names() { return ColumnOf(List(), 0); }
    std::vector<int> Parameters() {
        std::vector<int> parameters;
        for (int row = 0; row < RowsOf(List()); ++row) {
            LVITEMW item{};
            item.mask = LVIF_PARAM;
            item.iItem = row;
            ListView_GetItem(List(), &item);
            parameters.push_back(static_cast<int>(item.lParam));
        }
        return parameters;
    }
    DWORD Number() { return static_cast<DWORD>(Block().GetInt("sceneLayerAppDataChunkId"_param)); }
    bool IsOn(const MCHAR* name) {
        return effect::IsSceneLayerOn(Host().scene.FindLayer(name), Number());
    }
};

TEST_F(SceneLayersRollupTest, ShowsTheTreeOfLayers) {
    OpenWithHouse();
    EXPECT_THAT(Names(), ElementsAre("Default", "House", "    Floor", "        Tiles", "    Roof"));
    EXPECT_THAT(ChecksOf(List()), ElementsAre(2, 2, 2, 2, 2));
    EXPECT_THAT(Parameters(), ElementsAre(0, 1, 2, 3, 4));
}

TEST_F(SceneLayersRollupTest, SwitchesALayerWithTheCheckBoxOfItsRow) {
    OpenWithHouse();
    ClickAt(List(), CheckBoxPoint(List(), 3));
    EXPECT_FALSE(IsOn(_M("Tiles")));
    EXPECT_THAT(ChecksOf(List()), ElementsAre(2, 2, 2, 1, 2));
    EXPECT_EQ(UndoName(), "Parameter Change");
    ClickAt(List(), CheckBoxPoint(List(), 3));
    EXPECT_TRUE(IsOn(_M("Tiles")));
    Host().undo.Undo();
    EXPECT_THAT(ChecksOf(List()), ElementsAre(2, 2, 2, 1, 2));
    Host().undo.Undo();
    EXPECT_THAT(ChecksOf(List()), ElementsAre(2, 2, 2, 2, 2));
    EXPECT_FALSE(Host().undo.CanUndo());
}

TEST_F(SceneLayersRollupTest, SwitchesNothingBesidesTheCheckBoxes) {
    OpenWithHouse();
    ClickAt(List(), LabelPoint(List(), 1));
    ClickAt(List(), EmptyPoint(List()));
    DoubleClickAt(List(), LabelPoint(List(), 1));
    EXPECT_THAT(ChecksOf(List()), ElementsAre(2, 2, 2, 2, 2));
    EXPECT_FALSE(Host().undo.CanUndo());
}

TEST_F(SceneLayersRollupTest, SwitchesTheSelectedLayerWithTheSpaceBar) {
    OpenWithHouse();
    PressKey(List(), VK_SPACE);
    EXPECT_FALSE(Host().undo.CanUndo()) << "nothing is selected";
    ClickAt(List(), LabelPoint(List(), 2));
    PressKey(List(), VK_SPACE);
    EXPECT_THAT(ChecksOf(List()), ElementsAre(2, 2, 1, 2, 2));
    EXPECT_EQ(UndoName(), "Parameter Change");
}

TEST_F(SceneLayersRollupTest, SwitchesAllLayersWithItsMenu) {
    OpenWithHouse();
    ClickAt(List(), CheckBoxPoint(List(), 0));
    EXPECT_THAT(
        ChooseFromMenu(List(), LabelPoint(List(), 1), -1),
        ElementsAre("1 Enable output of all scene layers", "2 Disable output of all scene layers"));
    EXPECT_THAT(ChecksOf(List()), ElementsAre(1, 2, 2, 2, 2)) << "the menu was left";
    ChooseFromMenu(List(), LabelPoint(List(), 1), 1);
    EXPECT_THAT(ChecksOf(List()), ElementsAre(1, 1, 1, 1, 1));
    EXPECT_EQ(UndoName(), "Disable all layers");
    ChooseFromMenu(List(), CheckBoxPoint(List(), 4), 0);
    EXPECT_THAT(ChecksOf(List()), ElementsAre(2, 2, 2, 2, 2));
    EXPECT_EQ(UndoName(), "Enable all layers");
    Host().undo.Undo();
    Host().undo.Undo();
    EXPECT_THAT(ChecksOf(List()), ElementsAre(1, 2, 2, 2, 2));
}

TEST_F(SceneLayersRollupTest, IsDrawnAnewWhateverChangesItsLayers) {
    OpenWithHouse();
    // Nothing is drawn out of the panel's sight.
    IRollupWindow* rollups = place->GetRollupWindow();
    for (int i = 0; i < rollups->GetNumPanels(); ++i)
        rollups->SetPanelOpen(i, rollups->GetPanelDlg(i) == Dialog(sceneLayersMap));
    ClickAt(List(), CheckBoxPoint(List(), 3));
    const auto drawsAfter = [this](const std::function<void()>& change) {
        UpdateWindow(List());
        ValidateRect(List(), nullptr);
        change();
        return GetUpdateRect(List(), nullptr, FALSE) != FALSE;
    };
    EXPECT_FALSE(drawsAfter([] {}));
    EXPECT_TRUE(drawsAfter([] { Host().undo.Undo(); }));
    EXPECT_TRUE(drawsAfter([] { Host().undo.Redo(); }));
    EXPECT_TRUE(drawsAfter([] { Host().scene.FindLayer(_M("House"))->SetName(_M("Zoo")); }));
}

TEST_F(SceneLayersRollupTest, ShowsANewLayerWhenItsTimerTicks) {
    OpenWithHouse();
    Add(_M("Garden"));
    EXPECT_EQ(RowsOf(List()), 5) << "not inside the host's notification";
    Tick(sceneLayersMap, timer);
    EXPECT_THAT(Names(), ElementsAre("Default", "Garden", "House", "    Floor", "        Tiles",
                                     "    Roof"));
    EXPECT_THAT(Parameters(), ElementsAre(0, 1, 2, 3, 4, 5));
}

TEST_F(SceneLayersRollupTest, ShowsALayersNewPlaceWhenItsTimerTicks) {
    OpenWithHouse();
    Host().scene.FindLayer(_M("Tiles"))->SetParent(nullptr);
    Tick(sceneLayersMap, timer);
    EXPECT_THAT(Names(), ElementsAre("Default", "House", "    Floor", "    Roof", "Tiles"));
}

TEST_F(SceneLayersRollupTest, TicksByItself) {
    Open();
    Add(_M("Garden"));
    EXPECT_TRUE(PumpUntil([&] { return RowsOf(List()) == 1; }));
}

TEST_F(SceneLayersRollupTest, DoesNothingAtATickWithoutAChange) {
    OpenWithHouse();
    Host().scene.FindLayer(_M("House"))->SetName(_M("Zoo"));
    Tick(sceneLayersMap, timer);
    EXPECT_EQ(Names()[1], "Zoo") << "rows show what is there at the moment";
    EXPECT_EQ(Names()[4], "    Roof") << "but stay in their order";
    ClickAt(List(), LabelPoint(List(), 2));
    Tick(sceneLayersMap, timer);
    EXPECT_THAT(SelectedOf(List()), ElementsAre(2)) << "and aren't made anew";
}

TEST_F(SceneLayersRollupTest, TakesOutTheRowOfADeletedLayerAtOnce) {
    OpenWithHouse();
    Host().scene.Remove(*Host().scene.FindLayer(_M("Tiles")));
    EXPECT_THAT(Names(), ElementsAre("Default", "House", "    Floor", "    Roof"));
    EXPECT_THAT(Parameters(), ElementsAre(0, 1, 2, 3));
    ClickAt(List(), CheckBoxPoint(List(), 3));
    EXPECT_FALSE(IsOn(_M("Roof"))) << "the rows above it act on their own layers";
    EXPECT_TRUE(IsOn(_M("Floor")));
}

TEST_F(SceneLayersRollupTest, KeepsTheSelectedLayerWhenAnotherIsDeleted) {
    OpenWithHouse();
    ClickAt(List(), LabelPoint(List(), 4));
    Host().scene.Remove(*Host().scene.FindLayer(_M("Tiles")));
    EXPECT_THAT(SelectedOf(List()), ElementsAre(3));
    PressKey(List(), VK_SPACE);
    EXPECT_FALSE(IsOn(_M("Roof")));
}

TEST_F(SceneLayersRollupTest, BringsALayerBackWithItsChoiceWhenItsDeletionIsUndone) {
    OpenWithHouse();
    ClickAt(List(), CheckBoxPoint(List(), 3));
    theHold.Begin();
    Host().scene.Remove(*Host().scene.FindLayer(_M("Tiles")));
    theHold.Accept(_M("Delete Layer"));
    Host().undo.Undo();
    Tick(sceneLayersMap, timer);
    EXPECT_EQ(Names()[3], "        Tiles");
    EXPECT_THAT(ChecksOf(List()), ElementsAre(2, 2, 2, 1, 2));
}

TEST_F(SceneLayersRollupTest, MakesItsRowsAnewWithItsButton) {
    OpenWithHouse();
    Host().scene.FindLayer(_M("House"))->SetName(_M("Zoo"));
    Host().scene.FindLayer(_M("Roof"))->SetName(_M("Attic"));
    EXPECT_EQ(Names()[4], "    Attic");
    Press(sceneLayersMap, 1158);
    EXPECT_THAT(Names(), ElementsAre("Default", "Zoo", "    Attic", "    Floor", "        Tiles"));
}

TEST_F(SceneLayersRollupTest, HearsOfSceneFilesWhileItIsOpen) {
    const auto opening = [] {
        host::Broadcast(NOTIFY_FILE_PRE_OPEN_PROCESS, nullptr);
        const bool is = plugin::IsOpeningSceneFile();
        host::Broadcast(NOTIFY_FILE_POST_OPEN_PROCESS, nullptr);
        return is;
    };
    EXPECT_FALSE(opening());
    Open();
    EXPECT_TRUE(opening());
    Close();
    EXPECT_FALSE(opening());
}

TEST_F(SceneLayersRollupTest, ShowsAnotherEffectsChoice) {
    OpenWithHouse();
    ClickAt(List(), CheckBoxPoint(List(), 0));
    auto* other = static_cast<effect::PSDOutput*>(LibClassDesc(0)->Create());
    Host().effects.emplace_back(other);
    other->pblock->SetValue("outputSceneLayers"_param, 0, TRUE);
    dialogs->SetThing(other);
    EXPECT_THAT(ChecksOf(List()), ElementsAre(2, 2, 2, 2, 2));
    EXPECT_TRUE(IsEnabled(sceneLayersMap, 1151));
}

}  // namespace

#include "ui/win32/objects_rollup.h"

#include <algorithm>
#include <tuple>

#include "host/win32/pick_view.h"
#include "tests/ui/win32/modal_dialog.h"
#include "ui/resource.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr MapID objectsMap = 2;

// The three groups of the rollup.
struct MatteControls {
    int box;
    int label;
    int combo;
    int folder;
    ParamID output;
    ParamID outputAs;
};
constexpr MatteControls matteControls[] = {
    {IDC_OUTPUT_NODE_IDS, IDC_NODE_IDS_AS_LABEL, IDC_NODE_IDS_AS, IDC_NODE_IDS_GROUP,
     "outputNodeIDs"_param, "outputNodeIDsAs"_param},
    {IDC_OUTPUT_MATERIAL_IDS, IDC_MATERIAL_IDS_AS_LABEL, IDC_MATERIAL_IDS_AS,
     IDC_MATERIAL_IDS_GROUP, "outputMtlIDs"_param, "outputMtlIDsAs"_param},
    {IDC_OUTPUT_OBJECTS, IDC_OBJECTS_AS_LABEL, IDC_OBJECTS_AS, IDC_OBJECTS_GROUP,
     "outputObjects"_param, "outputObjectsAs"_param},
};

class ObjectsRollup : public PanelTest {
  protected:
    ObjectsRollup() {
        for (const char* name : {"Box", "Cone", "Disk", "Edge"})
            nodes.push_back(&Host().scene.AddNode(host::FromUtf8(name)));
        Host().undo.Clear();
    }
    ~ObjectsRollup() override { Close(); }

    int Value(ParamID id) { return Block().GetInt(id); }
    HWND Own(int id) { return Control(objectsMap, id); }
    bool Enabled(int id) { return IsEnabled(objectsMap, id); }
    void Press(int id) { PanelTest::Press(objectsMap, id); }

    void List(const std::vector<int>& numbers) {
        for (const int number : numbers) {
            ReferenceTarget* target = nodes[static_cast<std::size_t>(number)];
            Block().Append("objectList"_param, 1, &target);
        }
    }
    void SelectInScene(const std::vector<int>& numbers) {
        std::vector<host::Node*> selected;
        selected.reserve(numbers.size());
        for (const int number : numbers)
            selected.push_back(nodes[static_cast<std::size_t>(number)]);
        Host().selection.Set(selected);
    }
    std::vector<std::string> Listed() {
        std::vector<std::string> names;
        for (int i = 0; i < Block().Count("objectList"_param); ++i) {
            INode* node = Block().GetINode("objectList"_param, 0, i);
            names.push_back(node ? host::ToUtf8(node->GetName()) : "-");
        }
        return names;
    }
    // What the list box shows.
    std::vector<std::string> Rows() {
        std::vector<std::string> rows;
        const LRESULT count = SendMessageW(Own(IDC_OBJECT_LIST), LB_GETCOUNT, 0, 0);
        for (LRESULT row = 0; row < count; ++row) {
            MCHAR text[64] = {};
            SendMessageW(Own(IDC_OBJECT_LIST), LB_GETTEXT, static_cast<WPARAM>(row),
                         reinterpret_cast<LPARAM>(text));
            rows.push_back(host::ToUtf8(text));
        }
        return rows;
    }
    std::vector<int> SelectedRows() {
        std::vector<int> rows;
        const LRESULT count = SendMessageW(Own(IDC_OBJECT_LIST), LB_GETCOUNT, 0, 0);
        for (LRESULT row = 0; row < count; ++row) {
            if (SendMessageW(Own(IDC_OBJECT_LIST), LB_GETSEL, static_cast<WPARAM>(row), 0) > 0) {
                rows.push_back(static_cast<int>(row));
            }
        }
        return rows;
    }
    // With the mouse, and the control key for all but the first.
    void ClickRows(const std::vector<int>& rows) {
        BYTE keys[256] = {};
        GetKeyboardState(keys);
        const BYTE control = keys[VK_CONTROL];
        for (const int row : rows) {
            RECT area{};
            SendMessageW(Own(IDC_OBJECT_LIST), LB_GETITEMRECT, static_cast<WPARAM>(row),
                         reinterpret_cast<LPARAM>(&area));
            keys[VK_CONTROL] = row == rows.front() ? 0 : 0x80;
            SetKeyboardState(keys);
            const LPARAM point = MAKELPARAM(area.left + 5, area.top + 3);
            const WPARAM pressed = row == rows.front() ? 0 : MK_CONTROL;
            SendMessageW(Own(IDC_OBJECT_LIST), WM_LBUTTONDOWN, MK_LBUTTON | pressed, point);
            SendMessageW(Own(IDC_OBJECT_LIST), WM_LBUTTONUP, pressed, point);
        }
        keys[VK_CONTROL] = control;
        SetKeyboardState(keys);
    }
    // Of the buttons around the list: add selected, add objects, remove, up, down.
    std::string Buttons() {
        std::string shown;
        for (const int id : {IDC_ADD_SELECTED, IDC_ADD_OBJECTS, IDC_REMOVE_OBJECTS, IDC_OBJECTS_UP,
                             IDC_OBJECTS_DOWN}) {
            shown += Enabled(id) ? '+' : '-';
        }
        return shown;
    }
    // As pasted: one change, however long.
    void Paste(int id, const std::string& text) {
        SetFocus(Own(id));
        SendMessageW(Own(id), EM_SETSEL, 0, -1);
        SendMessageW(Own(id), EM_REPLACESEL, TRUE,
                     reinterpret_cast<LPARAM>(host::FromUtf8(text).data()));
    }
    std::string Stored(ParamID id) { return host::ToUtf8(Block().GetStr(id)); }

    std::vector<host::Node*> nodes;
};

TEST_F(ObjectsRollup, HasItsControlsUnderTheirTexts) {
    Open();
    const std::tuple<int, const char*, const char*> controls[] = {
        {IDC_OUTPUT_NODE_IDS, "Button", "Output Object IDs"},
        {IDC_NODE_IDS_AS_LABEL, "Static", "Create:"},
        {IDC_NODE_IDS_AS, "ComboBox", "Layers (Alpha Matte)"},
        {IDC_NODE_IDS_GROUP, "CustButton", "Layer Group"},
        {IDC_NODE_ID_LIST_LABEL, "Static", "Object IDs:"},
        {IDC_NODE_ID_LIST, "CustEdit", "1, 3 [Name], 5-8"},
        {IDC_OUTPUT_MATERIAL_IDS, "Button", "Output Material IDs"},
        {IDC_MATERIAL_IDS_AS_LABEL, "Static", "Create:"},
        {IDC_MATERIAL_IDS_AS, "ComboBox", "Layers (Alpha Matte)"},
        {IDC_MATERIAL_IDS_GROUP, "CustButton", "Layer Group"},
        {IDC_MATERIAL_ID_LIST_LABEL, "Static", "Material IDs:"},
        {IDC_MATERIAL_ID_LIST, "CustEdit", "1, 3 [Name], 5-8"},
        {IDC_OUTPUT_OBJECTS, "Button", "Output Objects"},
        {IDC_OBJECTS_AS_LABEL, "Static", "Create:"},
        {IDC_OBJECTS_AS, "ComboBox", "Layers (Alpha Matte)"},
        {IDC_OBJECTS_GROUP, "CustButton", "Layer Group"},
        {IDC_OBJECT_LIST, "ListBox", ""},
        {IDC_ADD_SELECTED, "CustButton", "Add Selected"},
        {IDC_ADD_OBJECTS, "CustButton", "Add Objects"},
        {IDC_REMOVE_OBJECTS, "CustButton", "Remove"},
        {IDC_OBJECTS_UP, "CustButton", "Up"},
        {IDC_OBJECTS_DOWN, "CustButton", "Down"},
    };
    for (const auto& [id, kind, text] : controls) {
        EXPECT_EQ(ClassOf(Own(id)), kind) << id;
        EXPECT_EQ(LabelOf(Own(id)), text) << id;
    }
}

TEST_F(ObjectsRollup, TheTabKeyGoesThroughAllThatCanBeUsed) {
    for (const MatteControls& each : matteControls)
        Set(each.output, TRUE);
    List({0, 1, 2});
    Open();
    SelectInScene({0});
    ClickRows({1});
    EXPECT_THAT(TabOrder(Dialog(objectsMap)),
                ElementsAre(IDC_OUTPUT_NODE_IDS, IDC_NODE_IDS_AS, IDC_NODE_IDS_GROUP,
                            IDC_NODE_ID_LIST, IDC_OUTPUT_MATERIAL_IDS, IDC_MATERIAL_IDS_AS,
                            IDC_MATERIAL_IDS_GROUP, IDC_MATERIAL_ID_LIST, IDC_OUTPUT_OBJECTS,
                            IDC_OBJECTS_AS, IDC_OBJECTS_GROUP, IDC_OBJECT_LIST, IDC_ADD_SELECTED,
                            IDC_ADD_OBJECTS, IDC_REMOVE_OBJECTS, IDC_OBJECTS_UP, IDC_OBJECTS_DOWN));
}

TEST_F(ObjectsRollup, EachBoxEnablesWhatItsMattesBecome) {
    Open();
    for (const MatteControls& each : matteControls) {
        EXPECT_FALSE(IsChecked(objectsMap, each.box));
        for (const int id : {each.label, each.combo, each.folder})
            EXPECT_FALSE(Enabled(id)) << id;
        Press(each.box);
        EXPECT_EQ(Value(each.output), TRUE) << each.box;
        EXPECT_EQ(UndoName(), "Parameter Change");
        for (const int id : {each.label, each.combo, each.folder})
            EXPECT_TRUE(Enabled(id)) << id;
        EXPECT_TRUE(Host().undo.Undo());
        EXPECT_FALSE(IsChecked(objectsMap, each.box));
        for (const int id : {each.label, each.combo, each.folder})
            EXPECT_FALSE(Enabled(id)) << id;
        Set(each.output, TRUE);
        EXPECT_TRUE(IsChecked(objectsMap, each.box));
        EXPECT_TRUE(Enabled(each.combo));
    }
}

TEST_F(ObjectsRollup, EachListIsEnabledWithItsBox) {
    Open();
    for (const auto& [box, list] : {std::pair{IDC_OUTPUT_NODE_IDS, IDC_NODE_ID_LIST},
                                    std::pair{IDC_OUTPUT_MATERIAL_IDS, IDC_MATERIAL_ID_LIST},
                                    std::pair{IDC_OUTPUT_OBJECTS, IDC_OBJECT_LIST}}) {
        EXPECT_FALSE(Enabled(list)) << list;
        Press(box);
        EXPECT_TRUE(Enabled(list)) << list;
    }
}

TEST_F(ObjectsRollup, EachComboOffersFourKindsAndChannelsAreNotGrouped) {
    Open();
    const std::pair<const char*, int> kinds[] = {{"Channels", 0},
                                                 {"Layers (Render Cut-out)", 5},
                                                 {"Layers (Alpha Matte)", 1},
                                                 {"Layers (Luminance Matte)", 4}};
    for (const MatteControls& each : matteControls) {
        Press(each.box);
        EXPECT_EQ(SendMessageW(Own(each.combo), CB_GETCOUNT, 0, 0), 4);
        for (int item = 0; item < 4; ++item) {
            Choose(objectsMap, each.combo, item);
            EXPECT_EQ(WindowText(Own(each.combo)), kinds[item].first);
            EXPECT_EQ(Value(each.outputAs), kinds[item].second);
            EXPECT_EQ(IsShown(objectsMap, each.folder), item != 0) << each.folder;
            EXPECT_TRUE(Enabled(each.folder));
        }
        EXPECT_TRUE(Host().undo.Undo());
        EXPECT_EQ(Value(each.outputAs), 1);
        EXPECT_EQ(WindowText(Own(each.combo)), "Layers (Alpha Matte)");
        Set(each.outputAs, 0);
        EXPECT_FALSE(IsShown(objectsMap, each.folder));
    }
}

TEST_F(ObjectsRollup, EachFolderButtonStaysIn) {
    Open();
    for (const auto& [box, button, id] :
         {std::tuple{IDC_OUTPUT_NODE_IDS, IDC_NODE_IDS_GROUP, "outputNodeIDsLayerSet"_param},
          std::tuple{IDC_OUTPUT_MATERIAL_IDS, IDC_MATERIAL_IDS_GROUP, "outputMtlIDsLayerSet"_param},
          std::tuple{IDC_OUTPUT_OBJECTS, IDC_OBJECTS_GROUP, "outputObjectsLayerSet"_param}}) {
        Press(box);
        EXPECT_TRUE(IsChecked(objectsMap, button));
        Press(button);
        EXPECT_EQ(Value(id), FALSE);
        EXPECT_FALSE(IsChecked(objectsMap, button));
        EXPECT_TRUE(Host().undo.Undo());
        EXPECT_EQ(Value(id), TRUE);
        EXPECT_TRUE(IsChecked(objectsMap, button));
    }
}

TEST_F(ObjectsRollup, ItemsOfTheCombosAreHighEnoughForTheirPictures) {
    Open();
    for (const MatteControls& each : matteControls)
        EXPECT_GE(SendMessageW(Own(each.combo), CB_GETITEMHEIGHT, 0, 0), 20) << each.combo;
}

TEST_F(ObjectsRollup, EachKeyInAListOfIDsIsStored) {
    Set("outputNodeIDs"_param, TRUE);
    Set("outputMtlIDs"_param, TRUE);
    Open();
    for (const auto& [edit, id] : {std::pair{IDC_NODE_ID_LIST, "nodeIDList"_param},
                                   std::pair{IDC_MATERIAL_ID_LIST, "mtlIDList"_param}}) {
        Type(Own(edit), "4");
        EXPECT_EQ(Stored(id), "4");
        for (const wchar_t unit : std::wstring(L", 7"))
            SendMessageW(Own(edit), WM_CHAR, unit, 1);
        EXPECT_EQ(Stored(id), "4, 7");
        EXPECT_EQ(UndoName(), "Parameter Change");
        EXPECT_TRUE(Host().undo.Undo());
        EXPECT_EQ(Stored(id), "4, ");
        EXPECT_EQ(TextOf(objectsMap, edit), "4, ");
    }
}

TEST_F(ObjectsRollup, ALongTypedListOfIDsKeepsAllOfIt) {
    Set("outputNodeIDs"_param, TRUE);
    Open();
    std::string list;
    for (int id = 100; list.size() < 400; ++id)
        list += std::to_string(id) + ", ";
    Type(Own(IDC_NODE_ID_LIST), list);
    EXPECT_EQ(Stored("nodeIDList"_param), list);
    EXPECT_TRUE(Host().undo.Undo());
    EXPECT_EQ(Stored("nodeIDList"_param), list.substr(0, list.size() - 1));
    SetFocus(window);
    EXPECT_EQ(Stored("nodeIDList"_param), list.substr(0, list.size() - 1));
}

TEST_F(ObjectsRollup, OfAListOfIDs8192UnitsAreStored) {
    Set("outputNodeIDs"_param, TRUE);
    Set("outputMtlIDs"_param, TRUE);
    Open();
    for (const auto& [edit, id] : {std::pair{IDC_NODE_ID_LIST, "nodeIDList"_param},
                                   std::pair{IDC_MATERIAL_ID_LIST, "mtlIDList"_param}}) {
        for (const std::size_t length : {255U, 256U, 8191U, 8192U, 9000U}) {
            std::string list;
            for (int number = 1000; list.size() < length; ++number)
                list += std::to_string(number) + ",";
            list.resize(length);
            Paste(edit, list);
            EXPECT_EQ(Stored(id), list.substr(0, 8192)) << length;
        }
    }
}

TEST_F(ObjectsRollup, AListFromAScriptIsStoredAsItIs) {
    const std::string list(600, '7');
    SetText("nodeIDList"_param, host::FromUtf8(list));
    EXPECT_EQ(Stored("nodeIDList"_param), list);
    Open();
    EXPECT_EQ(TextOf(objectsMap, IDC_NODE_ID_LIST), list);
    // Folded: what the edit shows isn't looked at.
    place->GetRollupWindow()->SetPanelOpen(4, FALSE);
    ASSERT_FALSE(IsWindowVisible(Dialog(objectsMap)));
    SetText("nodeIDList"_param, host::FromUtf8(list.substr(0, 300)));
    EXPECT_EQ(Stored("nodeIDList"_param), list.substr(0, 300));
}

TEST_F(ObjectsRollup, AddSelectedAddsTheScenesSelection) {
    Set("outputObjects"_param, TRUE);
    List({1});
    Open();
    EXPECT_EQ(Buttons(), "-+---");
    SelectInScene({2, 1, 0});
    EXPECT_EQ(Buttons(), "++---");
    Press(IDC_ADD_SELECTED);
    EXPECT_THAT(Listed(), ElementsAre("Cone", "Disk", "Box"));
    EXPECT_THAT(Rows(), ElementsAre("Cone", "Disk", "Box"));
    EXPECT_EQ(UndoName(), "Add Objects");
    EXPECT_TRUE(Host().undo.Undo());
    EXPECT_THAT(Listed(), ElementsAre("Cone"));
    EXPECT_THAT(Rows(), ElementsAre("Cone"));
    SelectInScene({});
    EXPECT_EQ(Buttons(), "-+---");
}

TEST_F(ObjectsRollup, AddSelectedWorksWithoutOutputToo) {
    Open();
    SelectInScene({0});
    EXPECT_EQ(Buttons(), "++---");
    Press(IDC_ADD_SELECTED);
    EXPECT_THAT(Listed(), ElementsAre("Box"));
}

TEST_F(ObjectsRollup, TheButtonsFollowTheRowsThatAreSelected) {
    Set("outputObjects"_param, TRUE);
    List({0, 1, 2});
    Open();
    EXPECT_EQ(Buttons(), "-+---");
    const std::pair<std::vector<int>, const char*> cases[] = {
        {{0}, "-++-+"}, {{1}, "-++++"}, {{2}, "-+++-"}, {{0, 1}, "-++-+"}, {{0, 2}, "-++--"}};
    for (const auto& [rows, buttons] : cases) {
        ClickRows(rows);
        EXPECT_THAT(SelectedRows(), testing::ElementsAreArray(rows));
        EXPECT_EQ(Buttons(), buttons) << rows.front() << ' ' << rows.size();
    }
    Press(IDC_OUTPUT_OBJECTS);
    EXPECT_EQ(Buttons(), "-+---");
    Press(IDC_OUTPUT_OBJECTS);
    EXPECT_EQ(Buttons(), "-++--");
}

TEST_F(ObjectsRollup, RemoveTakesTheSelectedRowsAway) {
    Set("outputObjects"_param, TRUE);
    List({0, 1, 2, 3});
    Open();
    Host().undo.Clear();
    ClickRows({0, 2});
    Press(IDC_REMOVE_OBJECTS);
    EXPECT_THAT(Listed(), ElementsAre("Cone", "Edge"));
    EXPECT_THAT(Rows(), ElementsAre("Cone", "Edge"));
    EXPECT_THAT(SelectedRows(), IsEmpty());
    EXPECT_EQ(Buttons(), "-+---");
    EXPECT_EQ(UndoName(), "Remove Objects");
    EXPECT_TRUE(Host().undo.Undo());
    EXPECT_THAT(Rows(), ElementsAre("Box", "Cone", "Disk", "Edge"));
    EXPECT_FALSE(Host().undo.CanUndo());
}

TEST_F(ObjectsRollup, UpAndDownMoveTheSelectedRowsWhichStaySelected) {
    Set("outputObjects"_param, TRUE);
    List({0, 1, 2, 3});
    Open();
    ClickRows({1, 2});
    Press(IDC_OBJECTS_DOWN);
    EXPECT_THAT(Listed(), ElementsAre("Box", "Edge", "Cone", "Disk"));
    EXPECT_THAT(Rows(), ElementsAre("Box", "Edge", "Cone", "Disk"));
    EXPECT_THAT(SelectedRows(), ElementsAre(2, 3));
    EXPECT_EQ(UndoName(), "Move Objects");
    EXPECT_EQ(Buttons(), "-+++-");
    Press(IDC_OBJECTS_UP);
    Press(IDC_OBJECTS_UP);
    EXPECT_THAT(Rows(), ElementsAre("Cone", "Disk", "Box", "Edge"));
    EXPECT_THAT(SelectedRows(), ElementsAre(0, 1));
    EXPECT_EQ(Buttons(), "-++-+");
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(Host().undo.Undo());
    EXPECT_THAT(Rows(), ElementsAre("Box", "Cone", "Disk", "Edge"));
}

TEST_F(ObjectsRollup, TheButtonsFollowTheListWhoeverChangesIt) {
    Set("outputObjects"_param, TRUE);
    List({0, 1});
    Open();
    SelectInScene({2});
    Press(IDC_ADD_SELECTED);
    ClickRows({1});
    ASSERT_EQ(Buttons(), "+++++");
    EXPECT_TRUE(Host().undo.Undo());
    EXPECT_THAT(SelectedRows(), ElementsAre(1));
    EXPECT_EQ(Buttons(), "++++-") << "it is the last";
    EXPECT_TRUE(Host().undo.Redo());
    EXPECT_EQ(Buttons(), "+++++");
    Block().Delete("objectList"_param, 0, 1);
    EXPECT_THAT(SelectedRows(), ElementsAre(0));
    EXPECT_EQ(Buttons(), "+++-+");
    Block().SetCount("objectList"_param, 0);
    EXPECT_EQ(Buttons(), "++---");
}

TEST_F(ObjectsRollup, AButtonKeepsTheKeyboardWhileItCanBePressedAgain) {
    Set("outputObjects"_param, TRUE);
    List({0, 1, 2, 3});
    Open();
    ClickRows({3});
    SetFocus(Own(IDC_OBJECTS_UP));
    PressKey(Own(IDC_OBJECTS_UP), VK_SPACE);
    EXPECT_THAT(SelectedRows(), ElementsAre(2));
    EXPECT_EQ(GetFocus(), Own(IDC_OBJECTS_UP));
}

TEST_F(ObjectsRollup, RemoveSelectsNoneOfTheOthersThoughTheyHaveTheSameName) {
    Set("outputObjects"_param, TRUE);
    nodes[1]->SetName(_M("Box"));
    List({0, 1});
    Open();
    ClickRows({0});
    Press(IDC_REMOVE_OBJECTS);
    ASSERT_EQ(Block().Count("objectList"_param), 1);
    EXPECT_THAT(SelectedRows(), IsEmpty());
    EXPECT_EQ(Buttons(), "-+---");
}

TEST_F(ObjectsRollup, ABlockThatTakesThePlaceOfTheShownOneIsLeftAlone) {
    List({0});
    Open();
    IParamMap2* map = Map(objectsMap);
    const auto replaceBlock = [this] {
        DefaultRemapDir remap;
        effect->ReplaceReference(0, remap.CloneRef(effect->pblock));
    };
    IParamBlock2* shown = effect->pblock;
    replaceBlock();
    ASSERT_NE(effect->pblock, shown);
    Set("outputObjects"_param, TRUE);
    EXPECT_FALSE(Enabled(IDC_OBJECTS_AS));
    SendMessageW(Dialog(objectsMap), WM_COMMAND, MAKEWPARAM(IDC_ADD_OBJECTS, BN_CLICKED),
                 reinterpret_cast<LPARAM>(Own(IDC_ADD_OBJECTS)));
    EXPECT_EQ(Host().pickMode.Callback(), nullptr);
    // Nor does it matter that the shown one is gone for good.
    if (map->GetParamBlock()) shown->DeleteThis();
    ASSERT_EQ(map->GetParamBlock(), nullptr);
    Set("outputObjects"_param, FALSE);
    SelectInScene({1});
    PanelTest::Press(0, IDC_RESOLUTION_300);
    EXPECT_EQ(Block().GetFloat("resolution"_param), 72.0F);
}

TEST_F(ObjectsRollup, ObjectsOfTheSameNameMoveToo) {
    Set("outputObjects"_param, TRUE);
    nodes[1]->SetName(_M("Box"));
    List({0, 1});
    Open();
    ClickRows({0});
    Press(IDC_OBJECTS_DOWN);
    EXPECT_EQ(Block().GetINode("objectList"_param, 0, 1), nodes[0]);
    EXPECT_THAT(SelectedRows(), ElementsAre(1));
}

TEST_F(ObjectsRollup, OpeningTakesObjectsThatAreGoneOutOfTheList) {
    List({0, 1, 2});
    Host().scene.Remove(*nodes[1]);
    ASSERT_THAT(Listed(), ElementsAre("Box", "-", "Disk"));
    Open();
    EXPECT_THAT(Listed(), ElementsAre("Box", "Disk"));
    EXPECT_THAT(Rows(), ElementsAre("Box", "Disk"));
    EXPECT_EQ(UndoName(), "Cleanup deleted objects");
}

// A view of the scene's objects, in which the user picks.
class ObjectPicking : public ObjectsRollup {
  protected:
    void Open() {
        ObjectsRollup::Open();
        view = host::CreatePickView(window, 1);
        MoveWindow(view, 0, 0, 200, 300, FALSE);
        ShowWindow(view, SW_SHOW);
        host::RefreshPickView(view);
    }
    HWND ViewList() const { return GetWindow(view, GW_CHILD); }
    void Point(UINT message, int row) const {
        RECT area{};
        SendMessageW(ViewList(), LB_GETITEMRECT, static_cast<WPARAM>(row),
                     reinterpret_cast<LPARAM>(&area));
        SendMessageW(ViewList(), message, 0, MAKELPARAM(area.left + 20, area.top + 3));
    }
    void Pick(int row) const {
        Point(WM_LBUTTONDOWN, row);
        Point(WM_LBUTTONUP, row);
    }
    bool IsPickable(int row) const {
        SetCursor(nullptr);
        Point(WM_MOUSEMOVE, row);
        return GetCursor() == LoadCursorW(nullptr, IDC_CROSS);
    }
    bool IsPicking() const { return Host().pickMode.Callback() != nullptr; }

    HWND view = nullptr;
};

TEST_F(ObjectPicking, PickedObjectsJoinTheListUntilTheUserHasEnough) {
    Set("outputObjects"_param, TRUE);
    List({2});
    Open();
    SelectInScene({0});
    ClickRows({0});
    EXPECT_EQ(Buttons(), "+++--");
    EXPECT_FALSE(IsChecked(objectsMap, IDC_ADD_OBJECTS));
    Press(IDC_ADD_OBJECTS);
    EXPECT_TRUE(IsPicking());
    EXPECT_TRUE(IsChecked(objectsMap, IDC_ADD_OBJECTS));
    EXPECT_EQ(Buttons(), "-----");
    EXPECT_TRUE(IsPickable(1));
    Pick(1);
    EXPECT_THAT(Listed(), ElementsAre("Disk", "Cone"));
    EXPECT_THAT(Rows(), ElementsAre("Disk", "Cone"));
    EXPECT_EQ(UndoName(), "Add Object");
    Pick(0);
    EXPECT_THAT(Rows(), ElementsAre("Disk", "Cone", "Box"));
    EXPECT_TRUE(IsPicking());
    PressKey(ViewList(), VK_ESCAPE);
    EXPECT_FALSE(IsPicking());
    EXPECT_FALSE(IsChecked(objectsMap, IDC_ADD_OBJECTS));
    EXPECT_EQ(Buttons(), "+++-+");
    EXPECT_TRUE(Host().undo.Undo());
    EXPECT_THAT(Rows(), ElementsAre("Disk", "Cone"));
}

TEST_F(ObjectPicking, AnObjectOfTheListIsNotPickedAgain) {
    List({1});
    Open();
    Press(IDC_ADD_OBJECTS);
    EXPECT_FALSE(IsPickable(1));
    Pick(1);
    EXPECT_THAT(Listed(), ElementsAre("Cone"));
    EXPECT_TRUE(IsPickable(0));
    Pick(0);
    EXPECT_FALSE(IsPickable(0));
    Pick(0);
    EXPECT_THAT(Listed(), ElementsAre("Cone", "Box"));
}

TEST_F(ObjectPicking, AClickOnTheButtonsCommandEndsTheModeToo) {
    Open();
    const auto command = [this] {
        SendMessageW(Dialog(objectsMap), WM_COMMAND, MAKEWPARAM(IDC_ADD_OBJECTS, BN_CLICKED),
                     reinterpret_cast<LPARAM>(Own(IDC_ADD_OBJECTS)));
    };
    command();
    EXPECT_TRUE(IsPicking());
    command();
    EXPECT_FALSE(IsPicking());
    EXPECT_FALSE(IsChecked(objectsMap, IDC_ADD_OBJECTS));
}

TEST_F(ObjectPicking, ARightClickInTheViewEndsTheMode) {
    Open();
    Press(IDC_ADD_OBJECTS);
    Point(WM_RBUTTONDOWN, 0);
    Point(WM_RBUTTONUP, 0);
    EXPECT_FALSE(IsPicking());
    EXPECT_FALSE(IsChecked(objectsMap, IDC_ADD_OBJECTS));
}

TEST_F(ObjectPicking, ThePanelClosesInTheMiddleOfAPick) {
    Open();
    Press(IDC_ADD_OBJECTS);
    EXPECT_TRUE(IsPicking());
    std::exchange(dialogs, nullptr)->DeleteThis();
    EXPECT_FALSE(IsPicking());
    Pick(0);
    EXPECT_THAT(Listed(), IsEmpty());
    Close();
    ObjectsRollup::Open();
    EXPECT_FALSE(IsChecked(objectsMap, IDC_ADD_OBJECTS));
    EXPECT_TRUE(Enabled(IDC_ADD_OBJECTS));
}

TEST_F(ObjectPicking, AnEffectThatGoesInTheMiddleOfAPickGetsNothing) {
    Open();
    Press(IDC_ADD_OBJECTS);
    Host().effects.clear();
    EXPECT_FALSE(IsPickable(0));
    Pick(0);
    PressKey(ViewList(), VK_ESCAPE);
    EXPECT_FALSE(IsPicking());
}

TEST_F(ObjectPicking, PicksGoToTheEffectThatIsShown) {
    Open();
    Press(IDC_ADD_OBJECTS);
    auto* other = static_cast<effect::PSDOutput*>(LibClassDesc(0)->Create());
    Host().effects.emplace_back(other);
    dialogs->SetThing(other);
    Pick(0);
    EXPECT_THAT(Listed(), IsEmpty());
    EXPECT_EQ(other->pblock->Count("objectList"_param), 1);
    EXPECT_THAT(Rows(), ElementsAre("Box"));
}

}  // namespace

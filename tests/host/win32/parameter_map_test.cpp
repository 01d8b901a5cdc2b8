#include "host/win32/parameter_map.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <hold.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "host/param_block.h"
#include "host/target_lifetime.h"
#include "host/text.h"
#include "host/win32/effect_rollups.h"
#include "tests/host/win32/control_stage.h"
#include "tests/host/win32/rollup_stage.h"
#include "tests/host/win32/sample_panel.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr UINT anyMessage = WM_APP + 7;

class ParameterMap : public testing::Test {
  protected:
    ParameterMap() { host::ResetApplication(); }
    ~ParameterMap() override {
        maps.clear();
        EXPECT_FALSE(theHold.Holding());
        effect.reset();
        host::ResetApplication();
    }

    host::ParameterMap& Open(int number) {
        const auto& spec = desc.block.map_specs[static_cast<std::size_t>(number)];
        maps.push_back(std::make_unique<host::ParameterMap>(*effect->block, spec, place));
        maps.back()->Open();
        maps.back()->SetOpen(true);
        return *maps.back();
    }
    IParamBlock2& Block() const { return *effect->block; }
    static HWND Control(host::ParameterMap& map, int id) { return GetDlgItem(map.GetHWnd(), id); }
    static std::wstring Text(host::ParameterMap& map, int id) { return TextOf(Control(map, id)); }
    static bool IsChecked(host::ParameterMap& map, int id) {
        return SendMessageW(Control(map, id), BM_GETCHECK, 0, 0) == BST_CHECKED;
    }
    static bool IsEnabled(host::ParameterMap& map, int id) {
        return IsWindowEnabled(Control(map, id)) != FALSE;
    }
    static void Click(host::ParameterMap& map, int id) {
        Mouse(Control(map, id), WM_LBUTTONDOWN);
        Mouse(Control(map, id), WM_LBUTTONUP);
    }
    // Over all that is there.
    static void Write(host::ParameterMap& map, int id, const std::wstring& text) {
        SetFocus(Control(map, id));
        SendMessageW(Control(map, id), EM_SETSEL, 0, -1);
        Type(Control(map, id), text.c_str());
    }
    static std::vector<std::wstring> Rows(host::ParameterMap& map) {
        HWND list = Control(map, SAMPLE_ID_NODES);
        std::vector<std::wstring> rows;
        for (LRESULT row = 0; row < SendMessageW(list, LB_GETCOUNT, 0, 0); ++row) {
            wchar_t text[64] = {};
            SendMessageW(list, LB_GETTEXT, static_cast<WPARAM>(row),
                         reinterpret_cast<LPARAM>(text));
            rows.emplace_back(text);
        }
        return rows;
    }
    // The names of what can be undone, the latest first; all of it is undone.
    static std::vector<std::string> UndoAll() {
        std::vector<std::string> names;
        while (host::App().undo.CanUndo()) {
            names.push_back(host::ToUtf8(host::App().undo.UndoName().data()));
            host::App().undo.Undo();
        }
        return names;
    }

    PanelClassDesc desc;
    host::Owned<PanelEffect> effect{new PanelEffect(desc)};
    RollupStage stage{900};
    host::EffectRollups place{stage.rollupWindow};
    std::vector<std::unique_ptr<host::ParameterMap>> maps;
};

TEST_F(ParameterMap, ControlsShowTheBlockBeforeTheProcedureStarts) {
    Block().SetValue(PANEL_FOLDER, 0, TRUE);
    std::vector<std::wstring> seen;
    desc.procedure.answer = [&](IParamMap2*, HWND dialog, UINT message, WPARAM, LPARAM) {
        if (message == WM_INITDIALOG) {
            for (int id : {SAMPLE_ID_NUMBER, SAMPLE_ID_TEXT, SAMPLE_ID_COMBO})
                seen.push_back(TextOf(GetDlgItem(dialog, id)));
        }
        return INT_PTR{FALSE};
    };
    host::ParameterMap& map = Open(0);
    EXPECT_THAT(seen, ElementsAre(L"72.0", L"text", L"Layers"));
    EXPECT_TRUE(IsChecked(map, SAMPLE_ID_ON));
    EXPECT_TRUE(IsChecked(map, SAMPLE_ID_FOLDER));
    EXPECT_FALSE(IsChecked(map, SAMPLE_ID_8_BITS));
    EXPECT_TRUE(IsChecked(map, SAMPLE_ID_16_BITS));
    EXPECT_FALSE(IsChecked(map, SAMPLE_ID_32_BITS));
    EXPECT_FALSE(host::App().undo.CanUndo());
}

TEST_F(ParameterMap, TellsWhatItIs) {
    host::ParameterMap& map = Open(1);
    EXPECT_EQ(map.GetMapID(), moreMap);
    EXPECT_EQ(map.GetParamBlock(), effect->block);
    EXPECT_EQ(map.GetIRollup(), stage.rollups);
    EXPECT_EQ(map.GetHWnd(), stage.rollups->GetPanelDlg(0));
    EXPECT_EQ(map.Procedure(), &desc.procedure);
    EXPECT_EQ(TextOf(stage.Title(0)), L"More");
    EXPECT_TRUE(map.IsOpen());
    map.SetOpen(false);
    EXPECT_FALSE(map.IsOpen());
}

TEST_F(ParameterMap, AComboHasTheLibrarysTextsWithTheirValues) {
    host::ParameterMap& map = Open(0);
    HWND combo = Control(map, SAMPLE_ID_COMBO);
    ASSERT_EQ(SendMessageW(combo, CB_GETCOUNT, 0, 0), 3);
    for (const auto& [item, text, value] :
         {std::tuple(0, L"Channels", 0), std::tuple(1, L"Layers", 5),
          std::tuple(2, L"Mattes", 1)}) {
        wchar_t shown[64] = {};
        SendMessageW(combo, CB_GETLBTEXT, static_cast<WPARAM>(item),
                     reinterpret_cast<LPARAM>(shown));
        EXPECT_STREQ(shown, text);
        EXPECT_EQ(SendMessageW(combo, CB_GETITEMDATA, static_cast<WPARAM>(item), 0), value);
    }
}

TEST_F(ParameterMap, ACheckBoxSetsItsParameterInOneStep) {
    host::ParameterMap& map = Open(0);
    Click(map, SAMPLE_ID_ON);
    EXPECT_EQ(Block().GetInt(PANEL_ON), FALSE);
    EXPECT_THAT(UndoAll(), ElementsAre("Parameter Change"));
    EXPECT_TRUE(IsChecked(map, SAMPLE_ID_ON));
    host::App().undo.Redo();
    EXPECT_FALSE(IsChecked(map, SAMPLE_ID_ON));
}

TEST_F(ParameterMap, ACheckButtonSetsItsParameterInOneStep) {
    host::ParameterMap& map = Open(0);
    Click(map, SAMPLE_ID_FOLDER);
    EXPECT_EQ(Block().GetInt(PANEL_FOLDER), TRUE);
    EXPECT_THAT(UndoAll(), ElementsAre("Parameter Change"));
    EXPECT_FALSE(IsChecked(map, SAMPLE_ID_FOLDER));
    host::App().undo.Redo();
    EXPECT_TRUE(IsChecked(map, SAMPLE_ID_FOLDER));
}

TEST_F(ParameterMap, ARadioSetsItsValueInOneStep) {
    host::ParameterMap& map = Open(0);
    Click(map, SAMPLE_ID_32_BITS);
    EXPECT_EQ(Block().GetInt(PANEL_DEPTH), 32);
    EXPECT_TRUE(IsChecked(map, SAMPLE_ID_32_BITS));
    EXPECT_FALSE(IsChecked(map, SAMPLE_ID_16_BITS));
    // It is on already.
    Click(map, SAMPLE_ID_32_BITS);
    EXPECT_THAT(UndoAll(), ElementsAre("Parameter Change"));
    EXPECT_TRUE(IsChecked(map, SAMPLE_ID_16_BITS));
    EXPECT_FALSE(IsChecked(map, SAMPLE_ID_32_BITS));
}

TEST_F(ParameterMap, AComboSetsTheItemsValueInOneStep) {
    host::ParameterMap& map = Open(0);
    HWND combo = Control(map, SAMPLE_ID_COMBO);
    SetFocus(combo);
    Key(combo, WM_KEYDOWN, VK_DOWN);
    EXPECT_EQ(Block().GetInt(PANEL_COMBO), 1);
    EXPECT_THAT(UndoAll(), ElementsAre("Parameter Change"));
    EXPECT_EQ(TextOf(combo), L"Layers");
}

TEST_F(ParameterMap, ATextIsGivenWithTheEnterKey) {
    host::ParameterMap& map = Open(0);
    Write(map, SAMPLE_ID_TEXT, L"new");
    EXPECT_EQ(MSTR(Block().GetStr(PANEL_TEXT)), MSTR(_M("text")));
    Key(Control(map, SAMPLE_ID_TEXT), WM_KEYDOWN, VK_RETURN);
    EXPECT_EQ(MSTR(Block().GetStr(PANEL_TEXT)), MSTR(_M("new")));
    // The same again changes nothing.
    Key(Control(map, SAMPLE_ID_TEXT), WM_KEYDOWN, VK_RETURN);
    EXPECT_THAT(UndoAll(), ElementsAre("Parameter Change"));
    EXPECT_EQ(Text(map, SAMPLE_ID_TEXT), L"text");
}

TEST_F(ParameterMap, ATextIsGivenWhenTheFocusLeaves) {
    host::ParameterMap& map = Open(0);
    Write(map, SAMPLE_ID_TEXT, L"new");
    SetFocus(Control(map, SAMPLE_ID_ON));
    EXPECT_EQ(MSTR(Block().GetStr(PANEL_TEXT)), MSTR(_M("new")));
    EXPECT_THAT(UndoAll(), ElementsAre("Parameter Change"));
}

TEST_F(ParameterMap, ATextIsGivenAtEachKeyWhereTheEditWasToldSo) {
    host::ParameterMap& map = Open(1);
    ICustEdit* edit = GetICustEdit(Control(map, SAMPLE_ID_LIVE_TEXT));
    edit->SetNotifyOnEachKey(TRUE);
    ReleaseICustEdit(edit);
    SetFocus(Control(map, SAMPLE_ID_LIVE_TEXT));
    Type(Control(map, SAMPLE_ID_LIVE_TEXT), L"1");
    EXPECT_EQ(MSTR(Block().GetStr(PANEL_LIVE_TEXT)), MSTR(_M("1")));
    Type(Control(map, SAMPLE_ID_LIVE_TEXT), L"-5");
    EXPECT_EQ(MSTR(Block().GetStr(PANEL_LIVE_TEXT)), MSTR(_M("1-5")));
    // The caret stays where the user types.
    EXPECT_EQ(SendMessageW(Control(map, SAMPLE_ID_LIVE_TEXT), EM_GETSEL, 0, 0), MAKELONG(3, 3));
    EXPECT_EQ(UndoAll().size(), 3U);
    EXPECT_EQ(Text(map, SAMPLE_ID_LIVE_TEXT), L"");
}

// Up is the upper half of the arrows.
void PressArrow(HWND arrows, bool up) {
    RECT client{};
    GetClientRect(arrows, &client);
    Mouse(arrows, WM_LBUTTONDOWN, 3, static_cast<int>(up ? 2 : client.bottom - 3));
}

TEST_F(ParameterMap, AnArrowStepsANumberInOneStep) {
    host::ParameterMap& map = Open(0);
    HWND arrows = Control(map, SAMPLE_ID_ARROWS);
    PressArrow(arrows, true);
    Mouse(arrows, WM_LBUTTONUP);
    EXPECT_EQ(Block().GetFloat(PANEL_NUMBER), 73.0F);
    EXPECT_THAT(UndoAll(), ElementsAre("Parameter Change"));
    EXPECT_EQ(Text(map, SAMPLE_ID_NUMBER), L"72.0");
}

TEST_F(ParameterMap, ADragOfTheArrowsIsOneStep) {
    host::ParameterMap& map = Open(0);
    HWND arrows = Control(map, SAMPLE_ID_ARROWS);
    PressArrow(arrows, true);
    for (int y : {-20, -30, -50})
        Mouse(arrows, WM_MOUSEMOVE, 3, y);
    const float dragged = Block().GetFloat(PANEL_NUMBER);
    EXPECT_GT(dragged, 110.0F);
    EXPECT_FALSE(host::App().undo.CanUndo());
    Mouse(arrows, WM_LBUTTONUP, 3, -50);
    EXPECT_EQ(Block().GetFloat(PANEL_NUMBER), dragged);
    EXPECT_THAT(UndoAll(), ElementsAre("Parameter Change"));
    EXPECT_EQ(Block().GetFloat(PANEL_NUMBER), 72.0F);
}

TEST_F(ParameterMap, ARightClickTakesADragBack) {
    host::ParameterMap& map = Open(0);
    HWND arrows = Control(map, SAMPLE_ID_ARROWS);
    PressArrow(arrows, true);
    Mouse(arrows, WM_MOUSEMOVE, 3, -50);
    EXPECT_NE(Block().GetFloat(PANEL_NUMBER), 72.0F);
    Mouse(arrows, WM_RBUTTONDOWN, 3, -50);
    EXPECT_EQ(Block().GetFloat(PANEL_NUMBER), 72.0F);
    EXPECT_EQ(Text(map, SAMPLE_ID_NUMBER), L"72.0");
    EXPECT_FALSE(theHold.Holding());
    EXPECT_FALSE(host::App().undo.CanUndo());
}

TEST_F(ParameterMap, ATypedNumberIsClampedAndShownAsStored) {
    host::ParameterMap& map = Open(0);
    Write(map, SAMPLE_ID_NUMBER, L"99999");
    Key(Control(map, SAMPLE_ID_NUMBER), WM_KEYDOWN, VK_RETURN);
    EXPECT_EQ(Block().GetFloat(PANEL_NUMBER), 10000.0F);
    EXPECT_EQ(Text(map, SAMPLE_ID_NUMBER), L"10000.0");
    Write(map, SAMPLE_ID_NUMBER, L"0.25");
    SetFocus(Control(map, SAMPLE_ID_ON));
    EXPECT_EQ(Block().GetFloat(PANEL_NUMBER), 1.0F);
    EXPECT_EQ(Text(map, SAMPLE_ID_NUMBER), L"1.0");
    EXPECT_THAT(UndoAll(), ElementsAre("Parameter Change", "Parameter Change"));
}

TEST_F(ParameterMap, WhatAnAccessorMakesOfAChangeIsShown) {
    host::ParameterMap& map = Open(0);
    desc.accessor.onSet = [](PB2Value& v, ParamID id, int) {
        if (id == PANEL_NUMBER) v.f = 300.0F;
        if (id == PANEL_TEXT) {
            MAX_free(v.s);
            v.s = SampleHeapText(_M("other"));
        }
    };
    Write(map, SAMPLE_ID_NUMBER, L"150");
    Key(Control(map, SAMPLE_ID_NUMBER), WM_KEYDOWN, VK_RETURN);
    EXPECT_EQ(Text(map, SAMPLE_ID_NUMBER), L"300.0");
    Write(map, SAMPLE_ID_TEXT, L"new");
    Key(Control(map, SAMPLE_ID_TEXT), WM_KEYDOWN, VK_RETURN);
    EXPECT_EQ(Text(map, SAMPLE_ID_TEXT), L"other");
}

TEST_F(ParameterMap, ALongTextComesTo255UnitsOnItsWayToTheBlock) {
    host::ParameterMap& map = Open(0);
    std::size_t given = 0;
    desc.accessor.onSet = [&](PB2Value& v, ParamID, int) {
        given = std::basic_string<MCHAR>(v.s).size();
    };
    const std::wstring text = std::wstring(254, L'a') + std::wstring(46, L'b');
    Write(map, SAMPLE_ID_TEXT, text);
    Key(Control(map, SAMPLE_ID_TEXT), WM_KEYDOWN, VK_RETURN);
    EXPECT_EQ(given, 255U);
    EXPECT_EQ(MSTR(Block().GetStr(PANEL_TEXT)), MSTR(text.substr(0, 255)));
    EXPECT_EQ(Text(map, SAMPLE_ID_TEXT), text.substr(0, 255));
}

TEST_F(ParameterMap, ALongTextThatTheAccessorCompletesStays) {
    host::ParameterMap& map = Open(0);
    const std::wstring text(300, L'a');
    int changes = 0;
    desc.accessor.onSet = [&](PB2Value& v, ParamID, int) {
        ++changes;
        MAX_free(v.s);
        v.s = SampleHeapText(Text(map, SAMPLE_ID_TEXT).c_str());
    };
    Write(map, SAMPLE_ID_TEXT, text);
    Key(Control(map, SAMPLE_ID_TEXT), WM_KEYDOWN, VK_RETURN);
    SetFocus(Control(map, SAMPLE_ID_ON));
    EXPECT_EQ(MSTR(Block().GetStr(PANEL_TEXT)), MSTR(text));
    EXPECT_EQ(Text(map, SAMPLE_ID_TEXT), text);
    EXPECT_EQ(changes, 1);
}

TEST_F(ParameterMap, ALongTextOfTheBlockIsShownWhole) {
    const std::wstring text(8000, L'a');
    Block().SetValue(PANEL_TEXT, 0, text.c_str());
    host::ParameterMap& map = Open(0);
    EXPECT_EQ(GetWindowTextLengthW(Control(map, SAMPLE_ID_TEXT)), 8000);
    SetFocus(Control(map, SAMPLE_ID_TEXT));
    SetFocus(Control(map, SAMPLE_ID_ON));
    EXPECT_EQ(MSTR(Block().GetStr(PANEL_TEXT)), MSTR(text));
}

TEST_F(ParameterMap, AChangeFromOutsideIsShown) {
    host::ParameterMap& map = Open(0);
    Block().SetValue(PANEL_ON, 0, FALSE);
    Block().SetValue(PANEL_FOLDER, 0, TRUE);
    Block().SetValue(PANEL_DEPTH, 0, 8);
    Block().SetValue(PANEL_NUMBER, 0, 300.0F);
    Block().SetValue(PANEL_TEXT, 0, _M("outside"));
    Block().SetValue(PANEL_COMBO, 0, 0);
    EXPECT_FALSE(IsChecked(map, SAMPLE_ID_ON));
    EXPECT_TRUE(IsChecked(map, SAMPLE_ID_FOLDER));
    EXPECT_TRUE(IsChecked(map, SAMPLE_ID_8_BITS));
    EXPECT_FALSE(IsChecked(map, SAMPLE_ID_16_BITS));
    EXPECT_EQ(Text(map, SAMPLE_ID_NUMBER), L"300.0");
    EXPECT_EQ(Text(map, SAMPLE_ID_TEXT), L"outside");
    EXPECT_EQ(Text(map, SAMPLE_ID_COMBO), L"Channels");
}

TEST_F(ParameterMap, AValueThatIsNoChoiceShowsNone) {
    host::ParameterMap& map = Open(0);
    Block().SetValue(PANEL_COMBO, 0, 77);
    Block().SetValue(PANEL_DEPTH, 0, 77);
    EXPECT_EQ(SendMessageW(Control(map, SAMPLE_ID_COMBO), CB_GETCURSEL, 0, 0), CB_ERR);
    for (int id : {SAMPLE_ID_8_BITS, SAMPLE_ID_16_BITS, SAMPLE_ID_32_BITS})
        EXPECT_FALSE(IsChecked(map, id));
}

TEST_F(ParameterMap, UpdateAndInvalidateShowTheBlockAnew) {
    host::ParameterMap& map = Open(0);
    const auto disturb = [&] {
        SendMessageW(Control(map, SAMPLE_ID_ON), BM_SETCHECK, BST_UNCHECKED, 0);
        SetWindowTextW(Control(map, SAMPLE_ID_TEXT), L"disturbed");
    };
    disturb();
    map.Invalidate(PANEL_TEXT, 0);
    EXPECT_EQ(Text(map, SAMPLE_ID_TEXT), L"text");
    EXPECT_FALSE(IsChecked(map, SAMPLE_ID_ON));
    disturb();
    map.UpdateUI(0);
    EXPECT_EQ(Text(map, SAMPLE_ID_TEXT), L"text");
    EXPECT_TRUE(IsChecked(map, SAMPLE_ID_ON));
    // No parameter has this id.
    map.Invalidate(99, 0);
}

TEST_F(ParameterMap, AListOfNodesFollowsItsTable) {
    host::Scene& scene = host::App().scene;
    std::vector<ReferenceTarget*> nodes;
    for (const MCHAR* name : {_M("Box"), _M("Cone"), _M("Tube"), _M("Vase")})
        nodes.push_back(&scene.AddNode(MSTR(name)));
    Block().Append(PANEL_NODES, 3, nodes.data());
    host::ParameterMap& map = Open(1);
    EXPECT_THAT(Rows(map), ElementsAre(L"Box", L"Cone", L"Tube"));
    HWND list = Control(map, SAMPLE_ID_NODES);
    SendMessageW(list, LB_SETSEL, TRUE, 2);

    Block().Append(PANEL_NODES, 1, &nodes[3]);
    EXPECT_THAT(Rows(map), ElementsAre(L"Box", L"Cone", L"Tube", L"Vase"));
    // Rows that stay keep their selection.
    EXPECT_GT(SendMessageW(list, LB_GETSEL, 2, 0), 0);
    Block().Delete(PANEL_NODES, 0, 1);
    EXPECT_THAT(Rows(map), ElementsAre(L"Cone", L"Tube", L"Vase"));
    EXPECT_GT(SendMessageW(list, LB_GETSEL, 1, 0), 0);
    static_cast<host::Node*>(nodes[1])->SetName(MSTR(_M("Renamed")));
    EXPECT_THAT(Rows(map), ElementsAre(L"Renamed", L"Tube", L"Vase"));
    static_cast<host::Node*>(nodes[3])->DeleteThis();
    EXPECT_THAT(Rows(map), ElementsAre(L"Renamed", L"Tube", L"<deleted>"));
    Block().SetCount(PANEL_NODES, 0);
    EXPECT_THAT(Rows(map), IsEmpty());
}

TEST_F(ParameterMap, AListOfNodesFollowsEachEntryAndTheOrderOfItsTable) {
    host::Scene& scene = host::App().scene;
    std::vector<ReferenceTarget*> nodes;
    for (const MCHAR* name : {_M("Box"), _M("Cone"), _M("Box"), _M("Vase")})
        nodes.push_back(&scene.AddNode(MSTR(name)));
    Block().Append(PANEL_NODES, 3, nodes.data());
    host::ParameterMap& map = Open(1);
    HWND list = Control(map, SAMPLE_ID_NODES);
    SendMessageW(list, LB_SETSEL, TRUE, 0);
    SendMessageW(list, LB_SETSEL, TRUE, 2);

    theHold.Begin();
    Block().SetValue(PANEL_NODES, 0, nodes[3], 1);
    theHold.Accept(_M("other"));
    EXPECT_THAT(Rows(map), ElementsAre(L"Box", L"Vase", L"Box"));
    EXPECT_GT(SendMessageW(list, LB_GETSEL, 0, 0), 0);
    EXPECT_EQ(SendMessageW(list, LB_GETSEL, 1, 0), 0);
    host::App().undo.Undo();
    EXPECT_THAT(Rows(map), ElementsAre(L"Box", L"Cone", L"Box"));

    // A node that is in two rows.
    Block().SetValue(PANEL_NODES, 0, nodes[0], 1);
    static_cast<host::Node*>(nodes[0])->SetName(MSTR(_M("Renamed")));
    EXPECT_THAT(Rows(map), ElementsAre(L"Renamed", L"Renamed", L"Box"));

    Block().Sort(PANEL_NODES, [](const void* left, const void* right) {
        auto name = [](const void* entry) {
            return MSTR(
                static_cast<INode*>(*static_cast<ReferenceTarget* const*>(entry))->GetName());
        };
        return std::wcscmp(name(left).data(), name(right).data());
    });
    EXPECT_THAT(Rows(map), ElementsAre(L"Box", L"Renamed", L"Renamed"));

    // What wasn't told, and one that is.
    Block().EnableNotifications(FALSE);
    Block().Append(PANEL_NODES, 1, &nodes[3]);
    Block().EnableNotifications(TRUE);
    Block().SetValue(PANEL_NODES, 0, nodes[1], 0);
    EXPECT_THAT(Rows(map), ElementsAre(L"Cone", L"Renamed", L"Renamed", L"Vase"));
}

TEST_F(ParameterMap, AParameterDisablesTheControlsOfOthersInWhicheverRollup) {
    host::ParameterMap& map = Open(0);
    host::ParameterMap& more = Open(1);
    EXPECT_TRUE(IsEnabled(map, SAMPLE_ID_TEXT));
    Click(map, SAMPLE_ID_ON);
    for (int id : {SAMPLE_ID_TEXT, SAMPLE_ID_NUMBER, SAMPLE_ID_ARROWS})
        EXPECT_FALSE(IsEnabled(map, id));
    EXPECT_FALSE(IsEnabled(more, SAMPLE_ID_OTHER));
    EXPECT_TRUE(IsEnabled(map, SAMPLE_ID_FOLDER));
    EXPECT_TRUE(IsEnabled(more, SAMPLE_ID_LIVE_TEXT));
    UndoAll();
    for (int id : {SAMPLE_ID_TEXT, SAMPLE_ID_NUMBER, SAMPLE_ID_ARROWS})
        EXPECT_TRUE(IsEnabled(map, id));
    EXPECT_TRUE(IsEnabled(more, SAMPLE_ID_OTHER));
}

TEST_F(ParameterMap, ControlsAreDisabledFromTheStart) {
    Block().SetValue(PANEL_ON, 0, FALSE);
    EXPECT_FALSE(IsEnabled(Open(0), SAMPLE_ID_TEXT));
}

TEST_F(ParameterMap, EnableAndTheParametersMustAgree) {
    host::ParameterMap& map = Open(0);
    map.Enable(PANEL_TEXT, FALSE, 0);
    EXPECT_FALSE(IsEnabled(map, SAMPLE_ID_TEXT));
    EXPECT_TRUE(IsEnabled(map, SAMPLE_ID_NUMBER));
    Block().SetValue(PANEL_ON, 0, FALSE);
    map.Enable(PANEL_TEXT, TRUE, 0);
    EXPECT_FALSE(IsEnabled(map, SAMPLE_ID_TEXT));
    Block().SetValue(PANEL_ON, 0, TRUE);
    EXPECT_TRUE(IsEnabled(map, SAMPLE_ID_TEXT));
    for (PanelParameter id : {PANEL_FOLDER, PANEL_DEPTH, PANEL_COMBO, PANEL_MISSING})
        map.Enable(id, FALSE, 0);
    for (int id : {SAMPLE_ID_FOLDER, SAMPLE_ID_8_BITS, SAMPLE_ID_32_BITS, SAMPLE_ID_COMBO})
        EXPECT_FALSE(IsEnabled(map, id));
}

TEST_F(ParameterMap, AControlThatAnotherDisabledStaysSo) {
    host::ParameterMap& map = Open(0);
    EnableWindow(Control(map, SAMPLE_ID_FOLDER), FALSE);
    Block().SetValue(PANEL_ON, 0, FALSE);
    Block().SetValue(PANEL_FOLDER, 0, TRUE);
    map.UpdateUI(0);
    EXPECT_FALSE(IsEnabled(map, SAMPLE_ID_FOLDER));
    EXPECT_TRUE(IsChecked(map, SAMPLE_ID_FOLDER));
}

TEST_F(ParameterMap, TheKeyboardLeavesAControlThatIsDisabled) {
    host::ParameterMap& map = Open(0);
    SetFocus(Control(map, SAMPLE_ID_TEXT));
    Block().SetValue(PANEL_ON, 0, FALSE);
    EXPECT_EQ(GetFocus(), Control(map, SAMPLE_ID_COMBO));
}

TEST_F(ParameterMap, TheProcedureGetsMessagesAfterTheMap) {
    host::App().settings.time = 480;
    host::ParameterMap& map = Open(0);
    EXPECT_EQ(desc.procedure.Count(mainMap, WM_INITDIALOG), 1);
    int valueThen = -1;
    desc.procedure.answer = [&](IParamMap2* given, HWND dialog, UINT message, WPARAM wParam,
                                LPARAM) {
        EXPECT_EQ(given, &map);
        EXPECT_EQ(dialog, map.GetHWnd());
        if (message == WM_COMMAND && LOWORD(wParam) == SAMPLE_ID_ON) {
            valueThen = Block().GetInt(PANEL_ON);
        }
        return INT_PTR{FALSE};
    };
    Click(map, SAMPLE_ID_ON);
    EXPECT_EQ(valueThen, FALSE);
    EXPECT_EQ(desc.procedure.time, 480);
    SendMessageW(map.GetHWnd(), anyMessage, 3, 0);
    EXPECT_EQ(desc.procedure.Count(mainMap, anyMessage), 1);
    EXPECT_EQ(desc.procedure.messages.back().wParam, 3U);
}

TEST_F(ParameterMap, TheProceduresAnswerIsTheMessagesResult) {
    host::ParameterMap& map = Open(0);
    NMHDR notice{Control(map, SAMPLE_ID_ON), SAMPLE_ID_ON, static_cast<UINT>(-12)};
    const auto notify = [&] {
        return SendMessageW(map.GetHWnd(), WM_NOTIFY, SAMPLE_ID_ON,
                            reinterpret_cast<LPARAM>(&notice));
    };
    EXPECT_EQ(notify(), 0);
    INT_PTR answer = 0x20;
    desc.procedure.answer = [&](IParamMap2*, HWND, UINT, WPARAM, LPARAM) { return answer; };
    EXPECT_EQ(notify(), 0x20);
    EXPECT_EQ(SendMessageW(map.GetHWnd(), WM_DRAWITEM, 0, 0), 0x20);
    EXPECT_EQ(SendMessageW(map.GetHWnd(), WM_SETCURSOR, 0, 0), 0x20);
    // Of these a dialog procedure's own answer is the result.
    answer = reinterpret_cast<INT_PTR>(GetStockObject(WHITE_BRUSH));
    HDC dc = CreateCompatibleDC(nullptr);
    EXPECT_EQ(SendMessageW(map.GetHWnd(), WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(dc),
                           reinterpret_cast<LPARAM>(Control(map, SAMPLE_ID_ON))),
              answer);
    DeleteDC(dc);
    answer = -1;
    EXPECT_EQ(SendMessageW(map.GetHWnd(), WM_COMPAREITEM, 0, 0), -1);
    answer = 0;
    EXPECT_EQ(notify(), 0);
}

TEST_F(ParameterMap, OwnerDrawnControlsAreMeasuredBeforeTheDialogStarts) {
    std::vector<UINT> early;
    int height = 31;
    desc.procedure.answer = [&](IParamMap2*, HWND, UINT message, WPARAM wParam, LPARAM lParam) {
        if (desc.procedure.Count(moreMap, WM_INITDIALOG) == 0) early.push_back(message);
        if (message != WM_MEASUREITEM || wParam != SAMPLE_ID_DRAWN) return INT_PTR{FALSE};
        reinterpret_cast<MEASUREITEMSTRUCT*>(lParam)->itemHeight = static_cast<UINT>(height);
        return INT_PTR{TRUE};
    };
    host::ParameterMap& map = Open(1);
    EXPECT_EQ(SendMessageW(Control(map, SAMPLE_ID_DRAWN), CB_GETITEMHEIGHT, 0, 0), 31);
    // Nothing else comes so early.
    EXPECT_FALSE(early.empty());
    EXPECT_EQ(static_cast<std::size_t>(
                  std::count(early.begin(), early.end(), static_cast<UINT>(WM_MEASUREITEM))),
              early.size());
}

TEST_F(ParameterMap, AMapWithoutAProcedureWorks) {
    desc.block.SetUserDlgProc(mainMap, nullptr);
    host::ParameterMap& map = Open(0);
    Click(map, SAMPLE_ID_FOLDER);
    EXPECT_EQ(Block().GetInt(PANEL_FOLDER), TRUE);
}

TEST_F(ParameterMap, WithoutItsTemplateThereIsNoWindow) {
    desc.block.map_specs[0].dlg_template = 999;
    host::ParameterMap& map = Open(0);
    EXPECT_EQ(map.GetHWnd(), nullptr);
    map.UpdateUI(0);
    map.Enable(PANEL_ON, FALSE, 0);
    map.GiveText();
    EXPECT_FALSE(map.IsOpen());
    maps.clear();
    EXPECT_EQ(desc.procedure.deletions, 1);
}

TEST_F(ParameterMap, TheProcedureHearsOfTheEndBeforeTheMapGoes) {
    HWND dialog = Open(0).GetHWnd();
    int deletionsThen = -1;
    desc.procedure.answer = [&](IParamMap2* map, HWND, UINT message, WPARAM, LPARAM) {
        if (message == WM_DESTROY) {
            deletionsThen = desc.procedure.deletions;
            EXPECT_EQ(map->GetHWnd(), dialog);
            EXPECT_EQ(map->GetParamBlock(), effect->block);
        }
        return INT_PTR{FALSE};
    };
    maps.clear();
    EXPECT_EQ(deletionsThen, 0);
    EXPECT_EQ(desc.procedure.deletions, 1);
    EXPECT_EQ(desc.procedure.Count(mainMap, WM_DESTROY), 1);
    EXPECT_FALSE(IsWindow(dialog));
    EXPECT_EQ(stage.rollups->GetNumPanels(), 0);
}

TEST_F(ParameterMap, AMapOutlivesItsWindow) {
    host::ParameterMap& map = Open(0);
    map.SetOpen(true);
    DestroyWindow(stage.window);
    EXPECT_EQ(map.GetHWnd(), nullptr);
    EXPECT_EQ(map.GetIRollup(), nullptr);
    EXPECT_EQ(desc.procedure.Count(mainMap, WM_DESTROY), 1);
    // As it was at last.
    EXPECT_TRUE(map.IsOpen());
    map.SetOpen(false);
    map.UpdateUI(0);
    map.Enable(PANEL_ON, FALSE, 0);
    map.GiveText();
    Block().SetValue(PANEL_ON, 0, FALSE);
    EXPECT_EQ(desc.procedure.deletions, 0);
}

TEST_F(ParameterMap, ADragThatIsCutOffIsTakenBack) {
    HWND arrows = Control(Open(0), SAMPLE_ID_ARROWS);
    PressArrow(arrows, true);
    Mouse(arrows, WM_MOUSEMOVE, 3, -50);
    EXPECT_TRUE(theHold.Holding());
    maps.clear();
    EXPECT_FALSE(theHold.Holding());
    EXPECT_EQ(Block().GetFloat(PANEL_NUMBER), 72.0F);
    EXPECT_FALSE(host::App().undo.CanUndo());
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(ParameterMap, GiveTextTakesWhatIsBeingTyped) {
    host::ParameterMap& map = Open(0);
    Write(map, SAMPLE_ID_TEXT, L"new");
    map.GiveText();
    EXPECT_EQ(MSTR(Block().GetStr(PANEL_TEXT)), MSTR(_M("new")));
    EXPECT_EQ(GetFocus(), stage.rollupWindow);
}

TEST_F(ParameterMap, AnotherBlockIsShownAndChanged) {
    const host::Owned<PanelEffect> other(new PanelEffect(desc));
    other->block->SetValue(PANEL_ON, 0, FALSE);
    other->block->SetValue(PANEL_TEXT, 0, _M("other"));
    host::ParameterMap& map = Open(0);
    map.SetParamBlock(other->block);
    EXPECT_EQ(map.GetParamBlock(), other->block);
    EXPECT_EQ(Text(map, SAMPLE_ID_TEXT), L"other");
    EXPECT_FALSE(IsEnabled(map, SAMPLE_ID_TEXT));
    Click(map, SAMPLE_ID_ON);
    EXPECT_EQ(other->block->GetInt(PANEL_ON), TRUE);
    // The former block isn't heard any more.
    Block().SetValue(PANEL_TEXT, 0, _M("former"));
    EXPECT_EQ(Text(map, SAMPLE_ID_TEXT), L"other");
    map.SetParamBlock(effect->block);
}

TEST_F(ParameterMap, ABlockThatIsDestroyedIsLetGo) {
    host::ParameterMap& map = Open(0);
    effect.reset();
    EXPECT_EQ(map.GetParamBlock(), nullptr);
    Click(map, SAMPLE_ID_ON);
    Write(map, SAMPLE_ID_TEXT, L"new");
    Key(Control(map, SAMPLE_ID_TEXT), WM_KEYDOWN, VK_RETURN);
    map.UpdateUI(0);
    map.Invalidate(PANEL_ON, 0);
    EXPECT_FALSE(host::App().undo.CanUndo());
    EXPECT_EQ(Text(map, SAMPLE_ID_TEXT), L"new");
}

class HearsOfAnEnd final : public GlobalReferenceMaker {
  public:
    explicit HearsOfAnEnd(ReferenceTarget* target) : target_(target) {
        RegisterGlobalReference(this);
    }
    ~HearsOfAnEnd() override { UnRegisterGlobalReference(this); }
    RefResult NotifyRefChanged(const Interval&, RefTargetHandle target, PartID&, RefMessage message,
                               BOOL) override {
        ended = ended || (target == target_ && message == REFMSG_TARGET_DELETED);
        return REF_SUCCEED;
    }
    bool ended = false;

  private:
    ReferenceTarget* target_;
};

TEST_F(ParameterMap, AMapLeavesNoReferenceToItsBlock) {
    // One that nobody owns goes with its last reference.
    auto* block = new host::ParamBlock(desc.block, nullptr);
    host::LiveByReferences(*block);
    const HearsOfAnEnd heard(block);
    host::ParameterMap& map = Open(0);
    map.SetParamBlock(block);
    EXPECT_FALSE(heard.ended);
    maps.clear();
    EXPECT_TRUE(heard.ended);
}

TEST_F(ParameterMap, TheProcedureMayCloseTheMap) {
    HWND dialog = Open(0).GetHWnd();
    desc.procedure.answer = [&](IParamMap2*, HWND, UINT message, WPARAM wParam, LPARAM) {
        if (message == WM_COMMAND && LOWORD(wParam) == SAMPLE_ID_FOLDER) maps.clear();
        return INT_PTR{FALSE};
    };
    Click(*maps.front(), SAMPLE_ID_FOLDER);
    EXPECT_FALSE(IsWindow(dialog));
    EXPECT_EQ(Block().GetInt(PANEL_FOLDER), TRUE);
}

TEST_F(ParameterMap, WhoHearsOfAChangeMayCloseTheMap) {
    for (int id : {SAMPLE_ID_ARROWS, SAMPLE_ID_ON, SAMPLE_ID_FOLDER, SAMPLE_ID_8_BITS}) {
        HWND dialog = Open(0).GetHWnd();
        effect->onChange = [&] { std::exchange(maps, {}).clear(); };
        HWND control = GetDlgItem(dialog, id);
        Mouse(control, WM_LBUTTONDOWN, 3, 2);
        Mouse(control, WM_LBUTTONUP, 3, 2);
        effect->onChange = nullptr;
        EXPECT_FALSE(IsWindow(dialog)) << id;
        EXPECT_FALSE(theHold.Holding()) << id;
    }
}

TEST_F(ParameterMap, AnEmptyPartOfTheDialogIsDragged) {
    host::ParameterMap& map = Open(1);
    SetWindowPos(stage.rollupWindow, nullptr, 0, 0, 500, 100, SWP_NOMOVE | SWP_NOZORDER);
    const LONG before = stage.Place(map.GetHWnd()).top;
    Mouse(map.GetHWnd(), WM_LBUTTONDOWN, 300, 60);
    Mouse(map.GetHWnd(), WM_MOUSEMOVE, 300, 40);
    Mouse(map.GetHWnd(), WM_LBUTTONUP, 300, 60);
    EXPECT_EQ(stage.Place(map.GetHWnd()).top, before - 20);
}

}  // namespace

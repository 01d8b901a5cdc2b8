#include "ui/win32/rollup_controls.h"

#include <tuple>

#include "host/win32/ui_scale.h"
#include "tests/host/win32/control_stage.h"
#include "tests/host/win32/tool_tip_text.h"
#include "tests/ui/win32/modal_dialog.h"
#include "ui/resource.h"
#include "ui/rollup_buttons.h"

namespace {

struct ButtonLook {
    MapID map;
    int control;
    // Empty for a button that shows its text.
    const wchar_t* picture;
    const wchar_t* toolTip;
    bool staysIn;
};
constexpr ButtonLook buttonLooks[] = {
    {0, 1008, L"Common/Settings", L"Advanced Options", false},
    {1, 1184, L"Common/Folder", L"Layer Group", true},
    {1, 1069, L"Common/UIComponents/ArrowUp", L"Move Up", false},
    {1, 1068, L"Common/UIComponents/ArrowDown", L"Move Down", false},
    {1, 1079, L"", L"Sort Render Elements automatically.", true},
    {2, 1007, L"Common/Folder", L"Layer Group", true},
    {2, 1010, L"Common/Folder", L"Layer Group", true},
    {2, 1009, L"Common/Folder", L"Layer Group", true},
    {2, 1006, L"Common/UIComponents/ArrowUp", L"Move Up", false},
    {2, 1008, L"Common/UIComponents/ArrowDown", L"Move Down", false},
    {5, 1150, L"Common/Folder", L"Layer Group", true},
    {5, 1158, L"MergeAnimation/UpdateList", L"Refresh Layers List", false},
    {7, 1189, L"Common/Folder", L"Layer Group", true},
};

class RollupControls : public PanelTest {
  protected:
    ~RollupControls() override { host::SetUIScaleFactor(std::nullopt); }

    // A button that looks as the rollup's is to look.
    static Picture Wanted(HWND button, const ButtonLook& look) {
        ControlStage stage;
        HWND model = stage.Add(CUSTBUTTONWINDOWCLASS, 1, L"", 0,
                               {0, 0, WidthOf(button), static_cast<LONG>(HeightOf(button))});
        SetWindowTextW(model, host::FromUtf8(WindowText(button)).data());
        SendMessageW(model, WM_SETFONT, static_cast<WPARAM>(SendMessageW(button, WM_GETFONT, 0, 0)),
                     FALSE);
        ICustButton* control = GetICustButton(model);
        control->SetType(look.staysIn ? CBT_CHECK : CBT_PUSH);
        control->Execute(40960);
        if (*look.picture) control->SetIconByName(MSTR(look.picture), 16, 16);
        ReleaseICustButton(control);
        return PictureOf(model);
    }
    static int HeightOf(HWND window) {
        const RECT area = PlaceOf(window);
        return static_cast<int>(area.bottom - area.top);
    }
};

TEST_F(RollupControls, ButtonsHaveTheirToolTips) {
    Open();
    for (const ButtonLook& look : buttonLooks)
        EXPECT_EQ(TipOf(Control(look.map, look.control)), look.toolTip) << look.control;
    EXPECT_EQ(std::size(buttonLooks), ui::RollupButtons().size());
}

TEST_F(RollupControls, ButtonsShowTheirPicturesFlatly) {
    for (const float scale : {1.0F, 1.5F}) {
        host::SetUIScaleFactor(scale);
        Open();
        for (const ButtonLook& look : buttonLooks) {
            HWND button = Control(look.map, look.control);
            EnableWindow(button, TRUE);
            SendMessageW(button, BM_SETCHECK, BST_UNCHECKED, 0);
            const Picture shown = PictureOf(button);
            const Picture wanted = Wanted(button, look);
            EXPECT_EQ(shown.width, wanted.width) << look.control;
            EXPECT_TRUE(shown.pixels == wanted.pixels) << look.control << " at " << scale;
        }
        Close();
    }
}

TEST_F(RollupControls, FoldersAndAutoSortStayInAndTheOthersComeOut) {
    Open();
    for (const ButtonLook& look : buttonLooks) {
        const bool isMove = look.map == 2 && !look.staysIn;
        // Modal, or without anything to move.
        if (look.map == 0 || isMove) continue;
        HWND button = Control(look.map, look.control);
        EnableWindow(button, TRUE);
        const bool before = IsChecked(look.map, look.control);
        Click(button);
        EXPECT_EQ(IsChecked(look.map, look.control), look.staysIn != before) << look.control;
    }
}

TEST_F(RollupControls, WindowsOfOtherClassesHaveNoText) {
    const ControlStage stage;
    HWND label = stage.Add(L"Static", 1, L"Text");
    EXPECT_EQ(ui::EditText(label), MSTR());
    EXPECT_EQ(ui::EditText(nullptr), MSTR());
    ui::SetEditText(label, MSTR(L"Other"));
    EXPECT_EQ(WindowText(label), "Text");
    ui::EnableControl(nullptr, false);
    ui::CheckButton(label, true);
    ui::NotifyOnEachKey(nullptr);
}

TEST_F(RollupControls, AnEditsTextIsReadAndSetWhole) {
    const ControlStage stage;
    HWND edit = stage.Add(CUSTEDITWINDOWCLASS, 1);
    const std::wstring text(9000, L'x');
    ui::SetEditText(edit, MSTR(text));
    EXPECT_EQ(ui::EditText(edit), MSTR(text));
    ui::SetEditText(edit, MSTR());
    EXPECT_EQ(ui::EditText(edit), MSTR());
}

}  // namespace

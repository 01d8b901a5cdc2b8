#include "host/win32/control_classes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "tests/host/win32/control_stage.h"
#include "tests/host/win32/leak_rounds.h"
#include "tests/host/win32/object_counts.h"

namespace {

using testing::ElementsAre;

struct TemplateItem {
    const wchar_t* className;
    int id;
    const wchar_t* text;
    DWORD style = 0;
};

// A dialog's template as a resource holds it: in units of 16 bits, each item at a multiple of 4
// bytes.
std::vector<WORD> DialogTemplate(const std::vector<TemplateItem>& items) {
    std::vector<WORD> units;
    const auto addText = [&](const wchar_t* text) {
        for (; *text; ++text)
            units.push_back(*text);
        units.push_back(0);
    };
    const auto addLong = [&](DWORD value) {
        units.push_back(LOWORD(value));
        units.push_back(HIWORD(value));
    };
    addLong(WS_POPUP);
    addLong(0);
    units.push_back(static_cast<WORD>(items.size()));
    for (const int place : {10, 10, 200, 100})
        units.push_back(static_cast<WORD>(place));
    units.insert(units.end(), {0, 0, 0});
    for (int row = 0; const TemplateItem& item : items) {
        if (units.size() % 2) units.push_back(0);
        addLong(WS_CHILD | WS_VISIBLE | WS_TABSTOP | item.style);
        addLong(0);
        for (const int place : {5, 5 + 15 * row++, 60, 12, item.id})
            units.push_back(static_cast<WORD>(place));
        addText(item.className);
        addText(item.text);
        units.push_back(0);
    }
    return units;
}

// A dialog that keeps what its controls tell it.
class Dialog {
  public:
    explicit Dialog(const std::vector<TemplateItem>& items) {
        const std::vector<WORD> units = DialogTemplate(items);
        // Of the aligned memory of a vector.
        window = CreateDialogIndirectParamW(GetModuleHandleW(nullptr),
                                            reinterpret_cast<const DLGTEMPLATE*>(units.data()),
                                            nullptr, &Procedure, reinterpret_cast<LPARAM>(this));
        ShowWindow(window, SW_SHOWNOACTIVATE);
    }
    Dialog(const Dialog&) = delete;
    Dialog& operator=(const Dialog&) = delete;
    ~Dialog() { DestroyWindow(window); }

    std::vector<std::string> Told() { return std::exchange(told, {}); }
    int FocusedId() const { return GetDlgCtrlID(GetFocus()); }

    HWND window = nullptr;
    std::vector<std::string> told;

  private:
    static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message == WM_INITDIALOG) {
            SetWindowLongPtrW(window, DWLP_USER, lParam);
            return FALSE;
        }
        auto* const dialog = reinterpret_cast<Dialog*>(GetWindowLongPtrW(window, DWLP_USER));
        const std::string notice = NoticeText(message, wParam);
        if (dialog && !notice.empty()) {
            dialog->told.push_back(notice);
        }
        return FALSE;
    }
};

TEST(ControlClasses, AreRegisteredOnceForAllModules) {
    EXPECT_TRUE(host::RegisterControlClasses());
    EXPECT_TRUE(host::RegisterControlClasses());
    for (const wchar_t* name : {CUSTBUTTONWINDOWCLASS, CUSTEDITWINDOWCLASS, SPINNERWINDOWCLASS}) {
        WNDCLASSEXW found{};
        found.cbSize = sizeof found;
        // A module that didn't register them.
        EXPECT_TRUE(GetClassInfoExW(GetModuleHandleW(L"kernel32.dll"), name, &found));
        EXPECT_TRUE(found.style & CS_GLOBALCLASS);
    }
}

TEST(ControlClasses, AreFoundByADialogsTemplate) {
    host::RegisterControlClasses();
    const Dialog dialog(
        {{L"CustButton", 1, L"Files..."}, {L"CustEdit", 2, L"Text"}, {L"SpinnerControl", 3, L""}});
    ASSERT_NE(dialog.window, nullptr);
    ICustButton* const button = GetICustButton(GetDlgItem(dialog.window, 1));
    ICustEdit* const edit = GetICustEdit(GetDlgItem(dialog.window, 2));
    host::Spinner* const spinner = host::GetSpinner(GetDlgItem(dialog.window, 3));
    EXPECT_NE(button, nullptr);
    EXPECT_NE(edit, nullptr);
    EXPECT_NE(spinner, nullptr);
    EXPECT_EQ(TextOf(GetDlgItem(dialog.window, 1)), L"Files...");
    ReleaseICustButton(button);
    ReleaseICustEdit(edit);
    host::ReleaseSpinner(spinner);
}

TEST(ControlClasses, TheTabKeyGoesThroughThem) {
    host::RegisterControlClasses();
    const Dialog dialog({{L"CustButton", 1, L"A"},
                         {L"CustEdit", 2, L"Text"},
                         {L"CustButton", 3, L"B", WS_DISABLED},
                         {L"CustButton", 4, L"C"}});
    SetFocus(GetDlgItem(dialog.window, 1));
    for (const int id : {2, 4, 1}) {
        DialogKey(dialog.window, VK_TAB);
        EXPECT_EQ(dialog.FocusedId(), id);
    }
    // As in every edit, all is selected by then.
    DialogKey(dialog.window, VK_TAB);
    EXPECT_EQ(SendMessageW(GetFocus(), EM_GETSEL, 0, 0), MAKELONG(0, 4));
}

TEST(ControlClasses, TheEnterKeyPressesTheButtonWithTheFocus) {
    host::RegisterControlClasses();
    Dialog dialog({{L"CustButton", 11, L"A"}, {L"CustButton", 12, L"B"}});
    SetFocus(GetDlgItem(dialog.window, 11));
    DialogKey(dialog.window, VK_TAB);
    dialog.Told();
    DialogKey(dialog.window, VK_RETURN);
    EXPECT_THAT(dialog.Told(), ElementsAre("clicked 12"));
}

TEST(ControlClasses, TheEnterKeyOfAnEditPressesNoButton) {
    host::RegisterControlClasses();
    Dialog dialog({{L"CustEdit", 11, L"A"}, {L"Button", IDOK, L"OK", BS_DEFPUSHBUTTON}});
    SetFocus(GetDlgItem(dialog.window, 11));
    dialog.Told();
    DialogKey(dialog.window, VK_RETURN);
    EXPECT_THAT(dialog.Told(), ElementsAre("given 11"));
}

TEST(ControlClasses, TheSpaceKeyClicksThroughADialog) {
    host::RegisterControlClasses();
    Dialog dialog({{L"CustButton", 11, L"A"}});
    SetFocus(GetDlgItem(dialog.window, 11));
    DialogKey(dialog.window, VK_SPACE);
    EXPECT_THAT(dialog.Told(), ElementsAre("clicked 11"));
}

TEST(ControlClasses, TheCountsSeeWhatIsThere) {
    // The system has a window of its own as long as there is another.
    const ControlStage stage;
    const ObjectCounts before = CountObjects();
    HBRUSH brush = CreateSolidBrush(RGB(1, 2, 3));
    EXPECT_EQ(CountObjects().gdi, before.gdi + 1);
    DeleteObject(brush);
    EXPECT_EQ(CountObjects(), before);
    stage.Add(CUSTBUTTONWINDOWCLASS, 1);
    EXPECT_EQ(CountObjects().windows, before.windows + 1);
    EXPECT_EQ(CountObjects().controls, before.controls + 1);
}

// A control's life, cut off in the middle. A `full` one takes a while: a tool tip is a window.
void LiveAndDie(const ControlStage& stage, const wchar_t* className, bool full) {
    HWND window = stage.Add(className, 5, L"Text");
    if (ICustButton* const button = GetICustButton(window)) {
        button->SetIconByName(MSTR(_M("Common/Settings")), 16, 16);
        button->SetTooltip(full, L"Tool tip");
        ReleaseICustButton(button);
    } else if (host::Spinner* const spinner = host::GetSpinner(window)) {
        stage.Add(CUSTEDITWINDOWCLASS, 4, L"1");
        spinner->LinkToEdit(4);
        spinner->SetTooltip(full, L"Tool tip");
        host::ReleaseSpinner(spinner);
    } else if (ICustEdit* const edit = GetICustEdit(window)) {
        edit->SetText(L"Other");
        edit->SetTooltip(full, L"Tool tip");
        ReleaseICustEdit(edit);
    }
    if (full) {
        HDC dc = CreateCompatibleDC(nullptr);
        SendMessageW(window, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(dc), PRF_CLIENT);
        DeleteDC(dc);
        Mouse(window, WM_MOUSEMOVE);
    }
    Mouse(window, WM_LBUTTONDOWN);
    Mouse(window, WM_MOUSEMOVE, 5, 30);
    SetFocus(window);
    DestroyWindow(window);
    DestroyWindow(GetDlgItem(stage.window, 4));
}

TEST(ControlClasses, AnyNumberOfEachLeavesNothingBehind) {
    const ControlStage stage;
    // The screen is what takes long.
    ShowWindow(stage.window, SW_HIDE);
    for (const wchar_t* name : {CUSTBUTTONWINDOWCLASS, CUSTEDITWINDOWCLASS, SPINNERWINDOWCLASS}) {
        // What the system keeps of the first.
        for (int i = 0; i < 3; ++i)
            LiveAndDie(stage, name, true);
        const ObjectCounts before = CountObjects();
        for (int i = 0; i < LeakRounds(); ++i)
            LiveAndDie(stage, name, i % 5 == 0);
        EXPECT_EQ(CountObjects(), before);
        EXPECT_EQ(GetCapture(), nullptr);
    }
}

TEST(ControlClasses, WhatWasGotAndNotReleasedIsCounted) {
    const int before = host::LivingControls();
    {
        const ControlStage stage;
        HWND window = stage.Add(CUSTBUTTONWINDOWCLASS, 5);
        EXPECT_EQ(host::LivingControls(), before + 1);
        ICustButton* const button = GetICustButton(window);
        EXPECT_EQ(GetICustButton(window), button);
        ReleaseICustButton(button);
        DestroyWindow(window);
        EXPECT_EQ(host::LivingControls(), before + 1);
        ReleaseICustButton(button);
        EXPECT_EQ(host::LivingControls(), before);
        stage.Add(CUSTEDITWINDOWCLASS, 5);
        stage.Add(SPINNERWINDOWCLASS, 6);
        EXPECT_EQ(host::LivingControls(), before + 2);
    }
    EXPECT_EQ(host::LivingControls(), before);
}

}  // namespace

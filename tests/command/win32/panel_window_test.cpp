#include "command/win32/panel_window.h"

#include <windows.h>

#include <commctrl.h>
#include <custcont.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <hold.h>
#include <iparamb2.h>

#include <array>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "command/session.h"
#include "command/win32/panel_menu.h"
#include "command/win32/program_folder.h"
#include "host/application.h"
#include "host/pick_mode.h"
#include "host/text.h"
#include "host/win32/rollup_window.h"
#include "tests/command/test_folder.h"
#include "tests/command/win32/panel_test_files.h"
#include "tests/command/win32/panel_user.h"
#include "ui/resource.h"

namespace command {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class PanelWindowTest : public FolderTest {
  protected:
    PanelWindowTest() {
        host::ResetApplication();
        scene.emplace(ProgramFolder() / "veltrane.dlv");
        scene->Open(Write("a.json", R"({"veltrane": 1, "nodes": [{"name": "Lamp"}]})"));
    }
    ~PanelWindowTest() override {
        SetKeys({});
        panel.reset();
        // What closing it left in the queue.
        PumpMessages();
        scene.reset();
        host::ResetApplication();
    }

    void Show() {
        panel = std::make_unique<PanelWindow>(*scene);
        ShowWindow(panel->Window(), SW_SHOW);
        PumpMessages();
    }
    void Command(int item) const {
        SendMessageW(panel->Window(), WM_COMMAND, static_cast<WPARAM>(item), 0);
    }
    bool IsOpen() const { return panel->Window() != nullptr; }
    std::string Said() const { return PanelText(panel->Status()); }

    IParamBlock2& Block() { return *scene->GetEffect().GetParamBlock(0); }
    int GetInt(std::string_view name) { return Block().GetInt(Session::IdOf(name)); }
    void SetInt(std::string_view name, int value) {
        Block().SetValue(Session::IdOf(name), 0, value);
    }
    float Resolution() { return Block().GetFloat(Session::IdOf("resolution")); }

    HWND Main() const {
        IRollupWindow* rollups = GetIRollup(panel->Rollups());
        HWND main = rollups->GetPanelDlg(0);
        ReleaseIRollup(rollups);
        return main;
    }
    // Into the field of the resolution, which keeps the focus.
    void TypeResolution(const char* text) {
        SetFocus(GetDlgItem(Main(), IDC_RESOLUTION));
        field = GetFocus();
        SendMessageW(field, EM_SETSEL, 0, -1);
        for (; *text; ++text)
            SendMessageW(field, WM_CHAR, static_cast<WPARAM>(*text), 1);
    }

    // These are held down, as the thread sees it.
    static void SetKeys(const std::vector<int>& keys) {
        std::array<BYTE, 256> state{};
        for (const int key : keys)
            state.at(static_cast<std::size_t>(key)) = 0x80;
        SetKeyboardState(state.data());
    }
    // In the queue, to whatever has the focus.
    static bool PressKey(WPARAM key, const std::vector<int>& with = {}) {
        SetKeys(with);
        PostMessageW(GetFocus(), WM_KEYDOWN, key, 1);
        return true;
    }

    std::optional<PanelScene> scene;
    std::unique_ptr<PanelWindow> panel;
    HWND field = nullptr;
};

TEST_F(PanelWindowTest, ShowingTheEffectIsNoChange) {
    // What is put back when the effect is shown.
    SetInt("unnamed37", 1);
    scene->TakeAsUnchanged();
    Show();
    EXPECT_EQ(GetInt("unnamed37"), 0);
    const ULONGLONG end = GetTickCount64() + 1500;
    PumpUntil([end] { return GetTickCount64() > end; });
    EXPECT_FALSE(scene->IsChanged());
    EXPECT_EQ(PanelText(panel->Window()), "a.json - veltrane");
    BoxUser user;
    SendMessageW(panel->Window(), WM_CLOSE, 0, 0);
    EXPECT_FALSE(IsOpen());
    EXPECT_THAT(user.texts, IsEmpty());
}

// What the user did before, what is answered, and what comes of it.
struct Leaving {
    enum Change { None, Typed, Clicked } change;
    int answer;
    bool leaves;
    bool saves;
};

class LeavingTest : public PanelWindowTest, public testing::WithParamInterface<Leaving> {};

TEST_P(LeavingTest, AsksOnlyAboutWhatWouldBeLost) {
    Show();
    const std::string before = Bytes("a.json");
    const Leaving& leaving = GetParam();
    if (leaving.change == Leaving::Clicked) SetInt("bitDepth", 32);
    if (leaving.change == Leaving::Typed) TypeResolution("300");
    BoxUser user({leaving.answer});
    SendMessageW(panel->Window(), WM_CLOSE, 0, 0);
    EXPECT_EQ(IsOpen(), !leaving.leaves);
    EXPECT_EQ(Bytes("a.json") != before, leaving.saves);
    if (leaving.change == Leaving::None) {
        EXPECT_THAT(user.texts, IsEmpty());
    } else {
        EXPECT_THAT(user.texts,
                    ElementsAre(HasSubstr("The scene has changed. Do you want to save it?")));
    }
    if (leaving.saves && leaving.change == Leaving::Typed) {
        scene->Open(PathOf("a.json"));
        EXPECT_EQ(Resolution(), 300.0F);
    }
}

INSTANTIATE_TEST_SUITE_P(Panel, LeavingTest,
                         testing::Values(Leaving{Leaving::None, IDCANCEL, true, false},
                                         Leaving{Leaving::Typed, IDYES, true, true},
                                         Leaving{Leaving::Typed, IDNO, true, false},
                                         Leaving{Leaving::Typed, IDCANCEL, false, false},
                                         Leaving{Leaving::Clicked, IDYES, true, true},
                                         Leaving{Leaving::Clicked, IDNO, true, false},
                                         Leaving{Leaving::Clicked, IDCANCEL, false, false}));

TEST_F(PanelWindowTest, TheSystemsEndAsksToo) {
    Show();
    EXPECT_TRUE(SendMessageW(panel->Window(), WM_QUERYENDSESSION, 0, 0));
    SetInt("bitDepth", 32);
    BoxUser user({IDCANCEL, IDNO});
    EXPECT_FALSE(SendMessageW(panel->Window(), WM_QUERYENDSESSION, 0, 0));
    EXPECT_TRUE(SendMessageW(panel->Window(), WM_QUERYENDSESSION, 0, 0));
    EXPECT_EQ(user.texts.size(), 2U);
}

TEST_F(PanelWindowTest, ANewSceneAsksAndForgetsTheRender) {
    Show();
    panel->UseRenderFile(Write("a.exr", RenderWithElements()));
    EXPECT_TRUE(scene->IsChanged());
    host::App().fileDialogs = {};
    {
        BoxUser user({IDCANCEL});
        Command(PanelItem::newScene);
        EXPECT_EQ(scene->File(), PathOf("a.json"));
    }
    BoxUser user({IDNO, IDOK});
    Command(PanelItem::newScene);
    EXPECT_EQ(scene->File(), "");
    EXPECT_EQ(PanelText(panel->Window()), "Untitled - veltrane");
    EXPECT_FALSE(scene->IsChanged());
    Command(PanelItem::renderNow);
    EXPECT_FALSE(panel->IsRendering());
    EXPECT_THAT(user.texts.back(), HasSubstr("Choose the render file first"));
}

TEST_F(PanelWindowTest, AnotherFileIsReplacedOnlyWhenTheUserSaysSo) {
    Show();
    Write("other.json", "precious");
    {
        BoxUser user({IDNO});
        EXPECT_FALSE(panel->SaveSceneAs(PathOf("other.json")));
        EXPECT_THAT(user.texts, ElementsAre(HasSubstr("other.json is there already")));
        EXPECT_EQ(Bytes("other.json"), "precious");
        EXPECT_EQ(scene->File(), PathOf("a.json"));
    }
    {
        BoxUser user({IDYES});
        EXPECT_TRUE(panel->SaveSceneAs(PathOf("other.json")));
        EXPECT_NE(Bytes("other.json"), "precious");
    }
    BoxUser user;
    EXPECT_TRUE(panel->SaveSceneAs(PathOf("other.json"))) << "its own by now";
    EXPECT_TRUE(panel->SaveSceneAs(PathOf("new.json")));
    EXPECT_THAT(user.texts, IsEmpty());
}

TEST_F(PanelWindowTest, KeysOfTheMenuWorkWhileAFieldIsTypedInto) {
    Show();
    bool saved = false;
    HWND afterTab = nullptr;
    std::vector<std::string> boxes;
    BoxUser box;
    LoopUser user({
        [&] {
            TypeResolution("150");
            return true;
        },
        [&] { return PressKey('S', {VK_CONTROL}); },
        [&] { return saved = Said() == "Saved " + PathOf("a.json"); },
        [&] { return GetFocus() == field; },
        // Of the field: the scene has no step to take back, and keeps what it has.
        [&] { return PressKey('Z', {VK_CONTROL}); },
        [&] { return PressKey(VK_ESCAPE); },
        [&] { return PressKey(VK_TAB); },
        [&] {
            afterTab = GetFocus();
            return afterTab != field;
        },
        [&] {
            PostMessageW(panel->Window(), WM_CLOSE, 0, 0);
            return true;
        },
    });
    EXPECT_EQ(panel->Run(), 0);
    EXPECT_TRUE(user.IsDone());
    EXPECT_TRUE(saved);
    EXPECT_NE(afterTab, nullptr);
    scene->Open(PathOf("a.json"));
    EXPECT_EQ(Resolution(), 150.0F);
}

TEST_F(PanelWindowTest, EscapeAndEnterGiveNoHalfTypedText) {
    Show();
    const float before = Resolution();
    TypeResolution("150");
    for (const int key : {IDCANCEL, IDOK})
        Command(key);
    EXPECT_EQ(Resolution(), before);
    EXPECT_EQ(GetFocus(), field);
}

TEST_F(PanelWindowTest, TheFocusIsAtTheFirstControlAndComesBack) {
    Show();
    SetFocus(panel->Window());
    EXPECT_TRUE(IsChild(panel->Rollups(), GetFocus()));
    TypeResolution("90");
    SendMessageW(panel->Window(), WM_ACTIVATE, WA_INACTIVE, 0);
    SetFocus(nullptr);
    SetFocus(panel->Window());
    EXPECT_EQ(GetFocus(), field);
}

TEST_F(PanelWindowTest, AStepOfUndoHasItsNameInTheMenu) {
    Show();
    theHold.Begin();
    SetInt("bitDepth", 8);
    theHold.Accept(L"Cut & Paste");
    SendMessageW(panel->Window(), WM_INITMENUPOPUP, 0, 0);
    wchar_t text[64] = {};
    GetMenuStringW(GetMenu(panel->Window()), PanelItem::undo, text, 64, MF_BYCOMMAND);
    EXPECT_EQ(host::ToUtf8(text), "&Undo Cut && Paste\tCtrl+Z");
    Command(PanelItem::undo);
    EXPECT_EQ(GetInt("bitDepth"), 16);
    SendMessageW(panel->Window(), WM_INITMENUPOPUP, 0, 0);
    GetMenuStringW(GetMenu(panel->Window()), PanelItem::undo, text, 64, MF_BYCOMMAND);
    EXPECT_EQ(host::ToUtf8(text), "&Undo\tCtrl+Z");
    GetMenuStringW(GetMenu(panel->Window()), PanelItem::redo, text, 64, MF_BYCOMMAND);
    EXPECT_EQ(host::ToUtf8(text), "&Redo Cut && Paste\tCtrl+Y");
}

TEST_F(PanelWindowTest, TheTitleMarksAChange) {
    Show();
    SetInt("bitDepth", 8);
    EXPECT_TRUE(PumpUntil([this] { return PanelText(panel->Window()) == "*a.json - veltrane"; }));
    Command(PanelItem::saveScene);
    EXPECT_EQ(PanelText(panel->Window()), "a.json - veltrane");
}

TEST_F(PanelWindowTest, ShowsItsRollupsAndNodesWholeOnTheScreen) {
    Show();
    const auto widthOf = [](HWND window) {
        RECT place{};
        GetWindowRect(window, &place);
        return static_cast<int>(place.right - place.left);
    };
    EXPECT_GE(widthOf(panel->Rollups()), host::RollupWindowWidth(panel->Rollups()));
    EXPECT_GE(widthOf(panel->Nodes()), 200);
    MoveWindow(panel->Window(), 0, 0, 10, 10, TRUE);
    EXPECT_GE(widthOf(panel->Rollups()), host::RollupWindowWidth(panel->Rollups()));
    EXPECT_GE(widthOf(panel->Nodes()), 100);
    RECT screen{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &screen, 0);
    RECT place{};
    GetWindowRect(panel->Window(), &place);
    EXPECT_LE(place.right, screen.right);
    EXPECT_LE(place.bottom, screen.bottom);
}

TEST_F(PanelWindowTest, HelpThatIsNotThereIsTold) {
    Show();
    BoxUser user({IDOK});
    Command(PanelItem::showHelp);
    EXPECT_THAT(user.texts, ElementsAre(HasSubstr("veltrane.chm: no such file")));
}

// What stands before the names of files that are dropped, as the system has it.
struct DropHeader {
    DWORD namesAt = sizeof(DropHeader);
    POINT point{};
    BOOL outsideClient = FALSE;
    BOOL wide = TRUE;
};

// The message that it is sent with takes it.
HDROP DroppedFiles(const std::vector<std::string>& paths) {
    std::wstring names;
    for (const std::string& path : paths)
        names.append(host::FromUtf8(path).data()).push_back(L'\0');
    names += L'\0';
    const std::size_t bytes = names.size() * sizeof(wchar_t);
    HGLOBAL memory = GlobalAlloc(GHND, sizeof(DropHeader) + bytes);
    auto* drop = static_cast<DropHeader*>(GlobalLock(memory));
    *drop = DropHeader();
    std::memcpy(static_cast<void*>(drop + 1), names.data(), bytes);
    GlobalUnlock(memory);
    return static_cast<HDROP>(memory);
}

TEST_F(PanelWindowTest, FilesThatAreDroppedAreOpenedTheSceneFirst) {
    Show();
    const std::string render = Write("a.exr", RenderWithElements());
    const std::string other = Write("\xd0\xb4.json", R"({"veltrane": 1, "nodes": []})");
    BoxUser user({IDCANCEL});
    SendMessageW(panel->Window(), WM_DROPFILES,
                 reinterpret_cast<WPARAM>(DroppedFiles({render, other})), 0);
    EXPECT_EQ(scene->File(), other);
    EXPECT_EQ(PanelScene::RenderOutput(), render);
    EXPECT_THAT(user.texts, IsEmpty());
    SendMessageW(panel->Window(), WM_DROPFILES,
                 reinterpret_cast<WPARAM>(DroppedFiles({PathOf("a.json")})), 0);
    EXPECT_EQ(scene->File(), other) << "the render file is a change";
    EXPECT_EQ(user.texts.size(), 1U);
}

// Renders

class PanelWindowRender : public PanelWindowTest {
  protected:
    PanelWindowRender() { scene->UseRenderFile(Write("a.exr", RenderWithElements())); }
    bool RenderEnds() {
        return PumpUntil([this] { return !panel->IsRendering(); });
    }
};

TEST_F(PanelWindowRender, ADocumentThatIsThereIsAskedAboutAndTold) {
    Show();
    Command(PanelItem::renderNow);
    EXPECT_TRUE(panel->IsRendering());
    ASSERT_TRUE(RenderEnds());
    EXPECT_THAT(Said(), StartsWith("Saved " + PathOf("a.psd") + " (4x2, 16 bits, PSD"));
    const std::string bytes = Bytes("a.psd");
    Write("a.psd", "old");
    {
        BoxUser user({IDNO});
        Command(PanelItem::renderNow);
        EXPECT_FALSE(panel->IsRendering());
        EXPECT_THAT(user.texts, ElementsAre(HasSubstr("a.psd ?")));
        EXPECT_EQ(Bytes("a.psd"), "old");
    }
    {
        BoxUser user({IDYES});
        user.onBox = [](HWND box) { CheckDlgButton(box, IDC_DO_NOT_ASK, BST_CHECKED); };
        Command(PanelItem::renderNow);
        ASSERT_TRUE(RenderEnds());
        EXPECT_EQ(user.texts.size(), 1U);
        EXPECT_EQ(Bytes("a.psd"), bytes);
    }
    BoxUser user;
    Command(PanelItem::renderNow);
    ASSERT_TRUE(RenderEnds());
    EXPECT_THAT(user.texts, IsEmpty()) << "not to be asked again";
}

TEST_F(PanelWindowRender, ANameThatIsBeingTypedInAListGoesIntoWhatIsSaved) {
    Show();
    IRollupWindow* rollups = GetIRollup(panel->Rollups());
    rollups->SetPanelOpen(1, TRUE);
    HWND list = GetDlgItem(rollups->GetPanelDlg(1), IDC_ELEMENT_LIST);
    ReleaseIRollup(rollups);
    ASSERT_GT(ListView_GetItemCount(list), 0);
    SetFocus(list);
    HWND name = ListView_EditLabel(list, 0);
    ASSERT_EQ(GetFocus(), name);
    SetWindowTextW(name, L"Typed");
    Command(PanelItem::saveScene);
    EXPECT_THAT(Bytes("a.json"), HasSubstr("Typed"));
    EXPECT_EQ(GetFocus(), list) << "its field is gone";
}

TEST_F(PanelWindowRender, TheNameOfASceneWithoutAFileBeginsAsItsRenders) {
    scene->New();
    scene->UseRenderFile(PathOf("a.exr"));
    panel = std::make_unique<PanelWindow>(*scene);
    std::vector<std::string> names;
    host::App().fileDialogs = [&](const host::FileDialog& asked) -> std::optional<MSTR> {
        // A new effect asks for its document.
        if (asked.title != MSTR(L"Save Scene As")) return std::nullopt;
        names.push_back(host::ToUtf8(asked.fileName.data()));
        return names.size() == 1 ? std::optional(host::FromUtf8(PathOf("b.json"))) : std::nullopt;
    };
    Command(PanelItem::saveScene);
    Command(PanelItem::saveSceneAs);
    EXPECT_THAT(names, ElementsAre(PathOf("a.json"), PathOf("b.json")));
}

TEST_F(PanelWindowRender, AFileThatIsGoneIsNamed) {
    Show();
    std::filesystem::remove(folder / "a.exr");
    BoxUser user({IDOK});
    Command(PanelItem::renderNow);
    EXPECT_THAT(user.texts, ElementsAre(HasSubstr(PathOf("a.exr") + ": no such file")));
}

TEST_F(PanelWindowRender, AFailedRenderTellsTheUsersFiles) {
    Show();
    Write("a.exr", RenderWithElements().substr(0, 300));
    BoxUser user({IDOK});
    Command(PanelItem::renderNow);
    ASSERT_TRUE(RenderEnds());
    EXPECT_THAT(user.texts, ElementsAre(HasSubstr(PathOf("a.exr"))));
    EXPECT_EQ(Said(), "The render of " + PathOf("a.exr") + " failed");
}

TEST_F(PanelWindowRender, ClosingAsksBeforeItStopsOne) {
    Show();
    scene->TakeAsUnchanged();
    Write("a.psd", "old");
    BoxUser user({IDYES, IDNO, IDYES});
    Command(PanelItem::renderNow);
    ASSERT_TRUE(panel->IsRendering());
    SendMessageW(panel->Window(), WM_CLOSE, 0, 0);
    EXPECT_TRUE(IsOpen());
    EXPECT_TRUE(panel->IsRendering());
    SendMessageW(panel->Window(), WM_CLOSE, 0, 0);
    EXPECT_FALSE(IsOpen());
    ASSERT_EQ(user.texts.size(), 3U);
    EXPECT_THAT(user.texts[1], HasSubstr("A render is running. Do you want to stop it?"));
    EXPECT_EQ(Bytes("a.psd"), "old");
}

TEST_F(PanelWindowRender, AStoppedOneLeavesTheDocument) {
    Show();
    Command(PanelItem::renderNow);
    Command(PanelItem::stopRender);
    EXPECT_FALSE(panel->IsRendering());
    EXPECT_FALSE(Exists("a.psd"));
    EXPECT_THAT(Said(), HasSubstr("Stopped"));
}

TEST_F(PanelWindowRender, OneThatEndsWhileADialogIsOpenWaitsForIt) {
    Show();
    Command(PanelItem::renderNow);
    EnableWindow(panel->Window(), FALSE);
    const ULONGLONG end = GetTickCount64() + 8000;
    PumpUntil([&] { return GetTickCount64() > end; });
    EXPECT_TRUE(panel->IsRendering());
    EXPECT_FALSE(Exists("a.psd"));
    EnableWindow(panel->Window(), TRUE);
    ASSERT_TRUE(RenderEnds());
    EXPECT_TRUE(Exists("a.psd"));
}

TEST_F(PanelWindowRender, OneThatEndsWhileTheMouseIsHeldWaitsForIt) {
    Show();
    Command(PanelItem::renderNow);
    SetCapture(panel->Rollups());
    const ULONGLONG end = GetTickCount64() + 6000;
    PumpUntil([&] { return GetTickCount64() > end; });
    EXPECT_TRUE(panel->IsRendering());
    ReleaseCapture();
    ASSERT_TRUE(RenderEnds());
    EXPECT_TRUE(Exists("a.psd"));
}

// Picking

class NoPick final : public PickModeCallback {
  public:
    BOOL HitTest(IObjParam*, HWND, ViewExp*, IPoint2, int) override { return FALSE; }
    BOOL Pick(IObjParam*, ViewExp*) override { return TRUE; }
};

TEST_F(PanelWindowTest, AModeOfPickingIsToldAndEndsWithARightClickAnywhere) {
    Show();
    NoPick callback;
    bool told = false;
    bool ended = false;
    LoopUser user({
        [&] {
            host::App().pickMode.Set(&callback);
            return true;
        },
        [&] { return told = Said().find("Escape ends it") != std::string::npos; },
        [&] {
            PostMessageW(Main(), WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(5, 5));
            PostMessageW(Main(), WM_RBUTTONUP, 0, MAKELPARAM(5, 5));
            return true;
        },
        [&] { return ended = host::App().pickMode.Callback() == nullptr; },
        [&] { return Said().find("Escape ends it") == std::string::npos; },
        [&] {
            PostMessageW(panel->Window(), WM_CLOSE, 0, 0);
            return true;
        },
    });
    BoxUser box({IDNO});
    EXPECT_EQ(panel->Run(), 0);
    EXPECT_TRUE(told);
    EXPECT_TRUE(ended);
}

}  // namespace
}  // namespace command

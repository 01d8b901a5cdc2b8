#include "command/win32/panel_window.h"

#include <commctrl.h>
#include <commdlg.h>
#include <custcont.h>
#include <shellapi.h>

#include <algorithm>
#include <exception>
#include <filesystem>
#include <utility>
#include <vector>

#include "command/failure.h"
#include "command/native_path.h"
#include "command/win32/panel_menu.h"
#include "command/win32/program_folder.h"
#include "host/application.h"
#include "host/text.h"
#include "host/win32/accelerators.h"
#include "host/win32/control_classes.h"
#include "host/win32/file_dialog.h"
#include "host/win32/message_box.h"
#include "host/win32/pick_view.h"
#include "host/win32/rollup_window.h"
#include "host/win32/ui_scale.h"

namespace command {
namespace {

constexpr const wchar_t* windowClass = L"VeltranePanel";
constexpr UINT_PTR renderTimer = 1;
constexpr UINT renderPeriod = 100;
constexpr UINT_PTR markTimer = 2;
constexpr UINT markPeriod = 1000;
// Looking for changes takes no more than one part in so many of the time.
constexpr ULONGLONG markShare = 50;

// Pixels at 96 dots per inch.
constexpr int nodesWidth = 240;
constexpr int leastNodesWidth = 120;
constexpr int firstHeight = 900;
constexpr int leastHeight = 300;

// Empty when the user cancels.
std::string AskOpenFileName(HWND owner, const wchar_t* title, const wchar_t* filter) {
    // The longest path that the system knows.
    std::vector<wchar_t> name(32768);
    OPENFILENAMEW ask{};
    ask.lStructSize = sizeof ask;
    ask.hwndOwner = owner;
    ask.lpstrTitle = title;
    ask.lpstrFilter = filter;
    ask.lpstrFile = name.data();
    ask.nMaxFile = static_cast<DWORD>(name.size());
    ask.Flags = OFN_FILEMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
    if (GetOpenFileNameW(&ask)) return host::ToUtf8(name.data());
    const DWORD fault = CommDlgExtendedError();
    if (fault == 0) return {};
    throw InputError("the dialog for files doesn't open (error " + std::to_string(fault) +
                     " of the common dialogs)");
}

bool IsSameFile(const std::string& one, const std::string& other) {
    std::error_code none;
    return std::filesystem::equivalent(Native(one), Native(other), none);
}

bool IsThere(const std::string& path) {
    std::error_code none;
    return std::filesystem::exists(Native(path), none);
}

// The nearest monitor's, without the taskbar.
RECT WorkArea(HWND window) {
    MONITORINFO info{};
    info.cbSize = sizeof info;
    GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &info);
    return info.rcWork;
}

BOOL CALLBACK TellColorChange(HWND child, LPARAM) {
    SendMessageW(child, WM_SYSCOLORCHANGE, 0, 0);
    return TRUE;
}

// A menu is open, a window is dragged, or the mouse is held on a control.
bool IsUserAtWork() {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    constexpr DWORD loops = GUI_INMENUMODE | GUI_INMOVESIZE | GUI_POPUPMENUMODE;
    return GetGUIThreadInfo(GetCurrentThreadId(), &info) &&
           ((info.flags & loops) != 0 || info.hwndCapture);
}

}  // namespace

struct PanelWindowProcedure {
    static LRESULT CALLBACK Receive(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message == WM_NCCREATE) {
            const auto& made = *reinterpret_cast<const CREATESTRUCTW*>(lParam);
            SetWindowLongPtrW(window, GWLP_USERDATA,
                              reinterpret_cast<LONG_PTR>(made.lpCreateParams));
        }
        auto* self = reinterpret_cast<PanelWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        if (!self || !self->window) return DefWindowProcW(window, message, wParam, lParam);
        // Nothing may be thrown through the system.
        try {
            return self->OnMessage(message, wParam, lParam);
        } catch (const std::exception& fault) {
            self->Fail(fault.what());
            return 0;
        }
    }
};

PanelWindow::PanelWindow(PanelScene& panelScene) : scene(panelScene) {
    if (!host::RegisterControlClasses() || !host::RegisterRollupWindowClass()) {
        throw InputError("the system has no window classes left");
    }
    HINSTANCE module = GetModuleHandleW(nullptr);
    WNDCLASSEXW info{};
    info.cbSize = sizeof info;
    info.lpfnWndProc = PanelWindowProcedure::Receive;
    info.hInstance = module;
    info.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    info.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    info.lpszClassName = windowClass;
    // Fails without harm for a class that is there.
    RegisterClassExW(&info);
    window = CreateWindowExW(WS_EX_ACCEPTFILES, windowClass, L"veltrane",
                             WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, CW_USEDEFAULT, CW_USEDEFAULT,
                             host::UIScaled(760), host::UIScaled(firstHeight), nullptr,
                             MakePanelMenu(), module, this);
    if (!window) throw InputError("the system can't make a window");
    host::App().settings.mainWindow = window;
    rollups = CreateWindowExW(WS_EX_CONTROLPARENT, ROLLUPWINDOWCLASS, L"",
                              WS_CHILD | WS_VISIBLE | WS_TABSTOP, 0, 0, 10, 10, window, nullptr,
                              module, nullptr);
    nodes = host::CreatePickView(window, 1);
    ShowWindow(nodes, SW_SHOW);
    status = CreateWindowExW(0, STATUSCLASSNAMEW, L"", WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP, 0, 0,
                             0, 0, window, nullptr, module, nullptr);
    place = std::make_unique<host::EffectRollups>(rollups);
    host::App().boxes.SetResponder(host::ShowMessageBox);
    host::App().fileDialogs = host::AskSaveFileName;
    ShowEffect();
    ShowTitle();
    SetFirstSize();
    Layout();
    SetTimer(window, markTimer, markPeriod, nullptr);
}

PanelWindow::~PanelWindow() {
    render.reset();
    HideEffect();
    host::App().settings.mainWindow = nullptr;
    host::App().boxes.SetResponder({});
    host::App().fileDialogs = {};
    if (HWND gone = std::exchange(window, nullptr)) DestroyWindow(gone);
}

// What showing an effect writes to it is none of the user's changes.
void PanelWindow::ShowEffect() {
    const bool wasChanged = scene.IsChanged();
    dialog = scene.GetEffect().CreateParamDialog(place.get());
    if (!wasChanged) scene.TakeAsUnchanged();
    if (GetActiveWindow() == window) FocusControl();
}

void PanelWindow::HideEffect() {
    if (SFXParamDlg* shown = std::exchange(dialog, nullptr)) shown->DeleteThis();
}

SIZE PanelWindow::Frame() const {
    RECT whole{};
    GetWindowRect(window, &whole);
    RECT client{};
    GetClientRect(window, &client);
    return {(whole.right - whole.left) - client.right, (whole.bottom - whole.top) - client.bottom};
}

// Wide enough for all that it shows, and on the screen.
void PanelWindow::SetFirstSize() {
    const RECT area = WorkArea(window);
    RECT now{};
    GetWindowRect(window, &now);
    const LONG wanted =
        static_cast<LONG>(host::RollupWindowWidth(rollups) + host::UIScaled(nodesWidth)) +
        Frame().cx;
    const LONG width = std::min(wanted, area.right - area.left);
    const LONG height =
        std::min(static_cast<LONG>(host::UIScaled(firstHeight)), area.bottom - area.top);
    SetWindowPos(window, nullptr, std::clamp(now.left, area.left, area.right - width),
                 std::clamp(now.top, area.top, area.bottom - height), width, height,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

void PanelWindow::LimitSize(MINMAXINFO& limits) const {
    const RECT area = WorkArea(window);
    const LONG wanted =
        static_cast<LONG>(host::RollupWindowWidth(rollups) + host::UIScaled(leastNodesWidth)) +
        Frame().cx;
    limits.ptMinTrackSize = {
        std::min(wanted, area.right - area.left),
        std::min(static_cast<LONG>(host::UIScaled(leastHeight)), area.bottom - area.top)};
}

void PanelWindow::Layout() {
    SendMessageW(status, WM_SIZE, 0, 0);
    RECT area{};
    GetClientRect(window, &area);
    RECT bar{};
    GetWindowRect(status, &bar);
    const int height = static_cast<int>(area.bottom - (bar.bottom - bar.top));
    const int wanted = host::RollupWindowWidth(rollups);
    const int width = std::min(wanted > 0 ? wanted : static_cast<int>(area.right) / 2,
                               static_cast<int>(area.right));
    MoveWindow(rollups, 0, 0, width, height, TRUE);
    MoveWindow(nodes, width, 0, static_cast<int>(area.right) - width, height, TRUE);
}

void PanelWindow::FocusControl() {
    const bool isGood = lastFocus && IsChild(window, lastFocus) && IsWindowVisible(lastFocus) &&
                        IsWindowEnabled(lastFocus);
    if (HWND control = isGood ? lastFocus : GetNextDlgTabItem(window, nullptr, FALSE)) {
        SetFocus(control);
    }
}

void PanelWindow::GiveText() {
    HWND focus = GetFocus();
    if (!focus || !IsChild(rollups, focus)) return;
    HWND around = GetParent(focus);
    SetFocus(rollups);
    // The field of a row's name goes with the focus.
    HWND control = IsWindow(focus) ? focus : around;
    if (IsWindow(control) && IsWindowVisible(control) && IsWindowEnabled(control)) {
        SetFocus(control);
    }
}

void PanelWindow::ShowTitle() {
    const std::string file = scene.File();
    const std::string name = file.empty() ? "Untitled" : Utf8(Native(file).filename());
    marked = scene.IsChanged();
    SetWindowTextW(window, host::FromUtf8((marked ? "*" : "") + name + " - veltrane").data());
}

// A large scene takes a while to look through.
void PanelWindow::ShowMark() {
    const ULONGLONG start = GetTickCount64();
    if (start < nextMark || !dialog) return;
    if (scene.IsChanged() != marked) ShowTitle();
    const ULONGLONG end = GetTickCount64();
    nextMark = end + markShare * (end - start);
}

void PanelWindow::Say(const std::string& text) {
    said = text;
    ShowStatus();
}

void PanelWindow::ShowStatus() {
    picking = host::App().pickMode.Callback() != nullptr;
    const std::string text =
        picking ? "Pick objects in the list at the right. A right click or Escape ends it." : said;
    SetWindowTextW(status, host::FromUtf8(text).data());
}

void PanelWindow::Fail(const std::string& text) {
    MessageBoxW(window, host::FromUtf8(text).data(), L"veltrane", MB_OK | MB_ICONERROR);
}

int PanelWindow::Ask(const std::string& text, UINT buttons) {
    return MessageBoxW(window, host::FromUtf8(text).data(), L"veltrane", buttons | MB_ICONQUESTION);
}

bool PanelWindow::SaveScene(const std::string& path) {
    try {
        scene.Save(path);
    } catch (const std::exception& fault) {
        Fail(fault.what());
        return false;
    }
    ShowTitle();
    Say("Saved " + path);
    return true;
}

bool PanelWindow::SaveSceneAs(const std::string& path) {
    const bool isAnother = scene.File().empty() || !IsSameFile(path, scene.File());
    if (isAnother && IsThere(path) &&
        Ask(path + " is there already. Do you want to replace it?", MB_YESNO | MB_DEFBUTTON2) !=
            IDYES) {
        return false;
    }
    return SaveScene(path);
}

// One without a file begins beside the render file, under its name.
std::string PanelWindow::NameForScene() const {
    const std::string output = PanelScene::RenderOutput();
    if (!scene.File().empty() || output.empty()) return scene.File();
    return Utf8(Native(output).replace_extension(".json"));
}

bool PanelWindow::AskToSave() {
    host::FileDialog ask;
    ask.title = MSTR(L"Save Scene As");
    ask.fileName = host::FromUtf8(NameForScene());
    ask.filters.Append(L"Scene (*.json)");
    ask.filters.Append(L"*.json");
    ask.parent = window;
    const std::optional<MSTR> chosen = host::App().fileDialogs(ask);
    return chosen && SaveSceneAs(host::ToUtf8(chosen->data()));
}

bool PanelWindow::MayLeaveScene() {
    GiveText();
    if (!scene.IsChanged()) return true;
    const int answer = Ask("The scene has changed. Do you want to save it?", MB_YESNOCANCEL);
    if (answer != IDYES) return answer == IDNO;
    return scene.File().empty() ? AskToSave() : SaveScene(scene.File());
}

bool PanelWindow::MayStopRender() {
    return !render ||
           Ask("A render is running. Do you want to stop it?", MB_YESNO | MB_DEFBUTTON2) == IDYES;
}

void PanelWindow::OpenScene(const std::string& path) {
    HideEffect();
    try {
        scene.Open(path);
        Say("Opened " + path);
    } catch (const std::exception& fault) {
        Fail(fault.what());
    }
    ShowEffect();
    ShowTitle();
}

void PanelWindow::UseRenderFile(const std::string& path) {
    try {
        scene.UseRenderFile(path);
        Say("Renders " + path);
    } catch (const std::exception& fault) {
        Fail(fault.what());
    }
    ShowTitle();
}

void PanelWindow::OpenInItsProgram(const std::string& path) {
    const auto result = reinterpret_cast<INT_PTR>(
        ShellExecuteW(window, L"open", Native(path).c_str(), nullptr, nullptr, SW_SHOWNORMAL));
    // What the system counts as good.
    constexpr INT_PTR good = 32;
    if (result <= good) Fail(path + ": no program of this system opens it");
}

void PanelWindow::ShowHelp() {
    const std::string help = Utf8(ProgramFolder() / "veltrane.chm");
    if (IsThere(help)) {
        OpenInItsProgram(help);
    } else {
        Fail(help + ": no such file; the package of the plug-in has it");
    }
}

void PanelWindow::StartRender() {
    const std::string input = PanelScene::RenderOutput();
    if (input.empty()) {
        Fail("Choose the render file first, which is the image that the renderer wrote.");
        return;
    }
    if (!IsThere(input)) {
        Fail(input + ": no such file; choose the render file that the document is made of");
        return;
    }
    const std::string document = scene.DocumentPath();
    if (document.empty()) {
        Fail("The document has no name. Type one, or switch on \"Match Render Output Filename\".");
        return;
    }
    if (!scene.MayRender()) return;
    const std::string& file = scene.File();
    render = std::make_unique<PanelRender>(PanelRenderFiles{
        Utf8(ProgramFolder() / "veltrane.exe"), input, document, file.empty() ? "Untitled" : file});
    Say("Rendering " + input + "...");
    SetTimer(window, renderTimer, renderPeriod, nullptr);
}

void PanelWindow::StopRender() {
    if (!render) return;
    KillTimer(window, renderTimer);
    render.reset();
    Say("Stopped the render; the document is as it was");
}

void PanelWindow::FollowRender() {
    if (!render) return;
    const bool atWork = render->Read();
    const std::string progress = render->Progress();
    if (atWork) {
        if (!progress.empty()) Say("Rendering " + render->Files().input + ": " + progress);
        return;
    }
    // What has ended can wait for the user to end what he does.
    if (IsWindowEnabled(window) && !IsUserAtWork()) EndRender();
}

void PanelWindow::EndRender() {
    KillTimer(window, renderTimer);
    const auto ended = std::exchange(render, nullptr);
    const PanelRender::Outcome outcome = ended->End();
    if (!outcome.saved) {
        Say("The render of " + ended->Files().input + " failed");
        Fail(outcome.told);
        return;
    }
    lastDocument = ended->Files().document;
    Say(outcome.said);
    if (!outcome.told.empty()) {
        MessageBoxW(window, host::FromUtf8(outcome.told).data(), L"veltrane",
                    MB_OK | MB_ICONWARNING);
    }
}

void PanelWindow::OnCommand(int command) {
    // What the system makes of keys that nobody wants.
    if (command == IDOK || command == IDCANCEL) return;
    GiveText();
    switch (command) {
        case PanelItem::newScene:
            if (!MayLeaveScene()) return;
            HideEffect();
            scene.New();
            ShowEffect();
            ShowTitle();
            return;
        case PanelItem::openScene: {
            if (!MayLeaveScene()) return;
            const std::string path =
                AskOpenFileName(window, L"Open Scene", L"Scene (*.json)\0*.json\0");
            if (!path.empty()) OpenScene(path);
            return;
        }
        case PanelItem::saveScene:
            scene.File().empty() ? AskToSave() : SaveScene(scene.File());
            return;
        case PanelItem::saveSceneAs:
            AskToSave();
            return;
        case PanelItem::chooseRenderFile: {
            const std::string path = AskOpenFileName(
                window, L"Choose Render File",
                L"Render (*.exr, *.png, *.tif, *.jpg)\0*.exr;*.png;*.tif;*.tiff;*.jpg;*.jpeg\0"
                L"All Files\0*.*\0");
            if (!path.empty()) UseRenderFile(path);
            return;
        }
        case PanelItem::renderNow:
            if (!render) StartRender();
            return;
        case PanelItem::stopRender:
            StopRender();
            return;
        case PanelItem::openDocument:
            if (!lastDocument.empty()) OpenInItsProgram(lastDocument);
            return;
        case PanelItem::leave:
            SendMessageW(window, WM_CLOSE, 0, 0);
            return;
        case PanelItem::undo:
            host::App().undo.Undo();
            return;
        case PanelItem::redo:
            host::App().undo.Redo();
            return;
        case PanelItem::showHelp:
            ShowHelp();
            return;
        case PanelItem::showAbout:
            MessageBoxW(window,
                        L"veltrane " VELTRANE_VERSION
                        "\n\nLayered documents of what a renderer left behind",
                        L"veltrane", MB_OK | MB_ICONINFORMATION);
            return;
        default:
            return;
    }
}

// A scene is opened before a render file is taken for it.
void PanelWindow::OnDrop(HDROP drop) {
    std::vector<std::string> scenes;
    std::vector<std::string> renders;
    const UINT count = DragQueryFileW(drop, 0xffffffff, nullptr, 0);
    for (UINT i = 0; i < count; ++i) {
        std::vector<wchar_t> name(DragQueryFileW(drop, i, nullptr, 0) + 1);
        DragQueryFileW(drop, i, name.data(), static_cast<UINT>(name.size()));
        const std::string path = host::ToUtf8(name.data());
        (IsSceneFile(path) ? scenes : renders).push_back(path);
    }
    DragFinish(drop);
    if (!scenes.empty()) {
        if (!MayLeaveScene()) return;
        OpenScene(scenes.back());
    }
    if (!renders.empty()) UseRenderFile(renders.back());
}

void PanelWindow::OnMenu() {
    HMENU menu = GetMenu(window);
    const auto enable = [menu](int item, bool on) {
        EnableMenuItem(menu, static_cast<UINT>(item), on ? MF_ENABLED : MF_GRAYED);
    };
    const host::UndoStack& steps = host::App().undo;
    NameSteps(menu, steps.UndoName().data(), steps.RedoName().data());
    enable(PanelItem::undo, steps.CanUndo());
    enable(PanelItem::redo, steps.CanRedo());
    enable(PanelItem::renderNow, !render);
    enable(PanelItem::stopRender, render != nullptr);
    enable(PanelItem::openDocument, !lastDocument.empty());
}

void PanelWindow::Close() {
    if (!MayStopRender() || !MayLeaveScene()) return;
    render.reset();
    HideEffect();
    DestroyWindow(std::exchange(window, nullptr));
    PostQuitMessage(0);
}

LRESULT PanelWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SIZE:
            Layout();
            return 0;
        case WM_GETMINMAXINFO:
            LimitSize(*reinterpret_cast<MINMAXINFO*>(lParam));
            return 0;
        case WM_COMMAND:
            if (lParam == 0) OnCommand(LOWORD(wParam));
            return 0;
        case WM_DROPFILES:
            OnDrop(reinterpret_cast<HDROP>(wParam));
            return 0;
        case WM_INITMENUPOPUP:
            OnMenu();
            return 0;
        case WM_ACTIVATE:
            if (LOWORD(wParam) == WA_INACTIVE && IsChild(window, GetFocus())) {
                lastFocus = GetFocus();
            }
            break;
        case WM_SETFOCUS:
            FocusControl();
            return 0;
        case WM_SYSCOLORCHANGE:
            EnumChildWindows(window, TellColorChange, 0);
            break;
        case WM_TIMER:
            if (wParam == renderTimer) FollowRender();
            if (wParam == markTimer) ShowMark();
            return 0;
        case WM_QUERYENDSESSION:
            return MayLeaveScene() ? TRUE : FALSE;
        case WM_ENDSESSION:
            // The process may be gone right after this.
            if (wParam) render.reset();
            return 0;
        case WM_CLOSE:
            Close();
            return 0;
        default:
            break;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

int PanelWindow::Run() {
    ShowWindow(window, SW_SHOW);
    HACCEL keys = MakePanelKeys();
    MSG message{};
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (picking != (host::App().pickMode.Callback() != nullptr)) ShowStatus();
        if (host::EndPickMode(message)) continue;
        const bool isEdits = !host::AcceleratorsEnabled() && IsKeyOfEdits(message);
        if (!isEdits && window && TranslateAcceleratorW(window, keys, &message)) continue;
        if (host::ScrollByWheel(message)) continue;
        if (window && IsDialogMessageW(window, &message)) continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    DestroyAcceleratorTable(keys);
    return static_cast<int>(message.wParam);
}

}  // namespace command

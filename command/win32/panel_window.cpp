#include "command/win32/panel_window.h"

#include <commctrl.h>
#include <commdlg.h>
#include <custcont.h>

#include <array>
#include <charconv>
#include <filesystem>
#include <utility>

#include "command/failure.h"
#include "command/native_path.h"
#include "host/application.h"
#include "host/documents.h"
#include "host/text.h"
#include "host/win32/accelerators.h"
#include "host/win32/control_classes.h"
#include "host/win32/file_dialog.h"
#include "host/win32/message_box.h"
#include "host/win32/pick_view.h"
#include "host/win32/rollup_window.h"

namespace command {
namespace {

constexpr const wchar_t* windowClass = L"VeltranePanel";
constexpr UINT_PTR renderTimer = 1;
constexpr UINT renderPeriod = 100;

enum Item : int {
    newScene = 100,
    openScene,
    saveScene,
    saveSceneAs,
    chooseRenderFile,
    renderNow,
    leave,
    undo,
    redo,
};

struct MenuRow {
    // Null for a line between items.
    const wchar_t* text;
    int item = 0;
    // 0 for none. With the control key.
    WORD key = 0;
};

constexpr MenuRow fileMenu[] = {
    {L"&New Scene\tCtrl+N", newScene, 'N'},
    {L"&Open Scene...\tCtrl+O", openScene, 'O'},
    {L"&Save Scene\tCtrl+S", saveScene, 'S'},
    {L"Save Scene &As...", saveSceneAs},
    {nullptr},
    {L"Choose Render &File...", chooseRenderFile},
    {L"&Render\tCtrl+R", renderNow, 'R'},
    {nullptr},
    {L"E&xit", leave},
};
constexpr MenuRow editMenu[] = {
    {L"&Undo\tCtrl+Z", undo, 'Z'},
    {L"&Redo\tCtrl+Y", redo, 'Y'},
};

template <std::size_t count>
HMENU MakeMenu(const MenuRow (&rows)[count]) {
    HMENU menu = CreatePopupMenu();
    for (const MenuRow& row : rows) {
        AppendMenuW(menu, row.text ? MF_STRING : MF_SEPARATOR, static_cast<UINT_PTR>(row.item),
                    row.text);
    }
    return menu;
}

HMENU MakeMenuBar() {
    HMENU bar = CreateMenu();
    AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(MakeMenu(fileMenu)), L"&File");
    AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(MakeMenu(editMenu)), L"&Edit");
    return bar;
}

HACCEL MakeKeys() {
    std::vector<ACCEL> keys;
    const auto add = [&](const auto& rows) {
        for (const MenuRow& row : rows) {
            if (row.key == 0) continue;
            keys.push_back({FCONTROL | FVIRTKEY, row.key, static_cast<WORD>(row.item)});
        }
    };
    add(fileMenu);
    add(editMenu);
    return CreateAcceleratorTableW(keys.data(), static_cast<int>(keys.size()));
}

// Empty when the user cancels.
std::string AskOpenFileName(HWND owner, const wchar_t* title, const wchar_t* filter) {
    std::array<wchar_t, 4096> name{};
    OPENFILENAMEW ask{};
    ask.lStructSize = sizeof ask;
    ask.hwndOwner = owner;
    ask.lpstrTitle = title;
    ask.lpstrFilter = filter;
    ask.lpstrFile = name.data();
    ask.nMaxFile = static_cast<DWORD>(name.size());
    ask.Flags = OFN_FILEMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
    return GetOpenFileNameW(&ask) ? host::ToUtf8(name.data()) : std::string();
}

std::filesystem::path FolderOfProgram() {
    std::array<wchar_t, 4096> name{};
    GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size()));
    return std::filesystem::path(name.data()).parent_path();
}

// The last number that the command told; nothing before the first.
std::string LastProgress(const std::string& output) {
    constexpr std::string_view mark = "PROGRESS: ";
    const std::size_t at = output.rfind(mark);
    if (at == std::string::npos) return {};
    const std::size_t start = at + mark.size();
    return output.substr(start, output.find_first_of("\r\n", start) - start);
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
        return self->OnMessage(message, wParam, lParam);
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
    window = CreateWindowExW(0, windowClass, L"veltrane", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
                             CW_USEDEFAULT, CW_USEDEFAULT, 760, 900, nullptr, MakeMenuBar(), module,
                             this);
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
    Layout();
}

PanelWindow::~PanelWindow() {
    render.reset();
    HideEffect();
    host::App().settings.mainWindow = nullptr;
    if (HWND gone = std::exchange(window, nullptr)) DestroyWindow(gone);
}

void PanelWindow::ShowEffect() {
    dialog = scene.GetEffect().CreateParamDialog(place.get());
}

void PanelWindow::HideEffect() {
    if (SFXParamDlg* shown = std::exchange(dialog, nullptr)) shown->DeleteThis();
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

void PanelWindow::ShowTitle() {
    const std::string file = scene.File();
    const std::string name = file.empty() ? "Untitled" : Utf8(Native(file).filename());
    SetWindowTextW(window, host::FromUtf8(name + " - veltrane").data());
}

void PanelWindow::Say(const std::string& text) {
    SetWindowTextW(status, host::FromUtf8(text).data());
}

void PanelWindow::Fail(const std::string& text) {
    MessageBoxW(window, host::FromUtf8(text).data(), L"veltrane", MB_OK | MB_ICONERROR);
}

bool PanelWindow::SaveScene(const std::string& path) {
    try {
        scene.Save(path);
    } catch (const InputError& fault) {
        Fail(fault.what());
        return false;
    }
    ShowTitle();
    Say("Saved " + path);
    return true;
}

void PanelWindow::AskToSave() {
    host::FileDialog ask;
    ask.title = MSTR(L"Save Scene As");
    ask.fileName = host::FromUtf8(scene.File());
    ask.filters.Append(L"Scene (*.json)");
    ask.filters.Append(L"*.json");
    ask.parent = window;
    if (const std::optional<MSTR> chosen = host::AskSaveFileName(ask)) {
        SaveScene(host::ToUtf8(chosen->data()));
    }
}

bool PanelWindow::MayLeaveScene() {
    if (!scene.IsChanged()) return true;
    const int answer = MessageBoxW(window, L"The scene has changed. Do you want to save it?",
                                   L"veltrane", MB_YESNOCANCEL | MB_ICONQUESTION);
    if (answer == IDYES) {
        if (scene.File().empty()) {
            AskToSave();
        } else {
            SaveScene(scene.File());
        }
        return !scene.IsChanged();
    }
    return answer == IDNO;
}

void PanelWindow::OpenScene(const std::string& path) {
    HideEffect();
    try {
        scene.Open(path);
        Say("Opened " + path);
    } catch (const InputError& fault) {
        Fail(fault.what());
    }
    ShowEffect();
    ShowTitle();
}

void PanelWindow::UseRenderFile(const std::string& path) {
    try {
        scene.UseRenderFile(path);
        Say("Renders " + path);
    } catch (const InputError& fault) {
        Fail(fault.what());
    }
}

void PanelWindow::StartRender() {
    const std::string input = scene.RenderFile();
    if (input.empty()) {
        Fail("Choose the render file first, which is the image that the renderer wrote.");
        return;
    }
    auto started = std::make_unique<Render>();
    if (started->folder.Path().empty()) {
        Fail(started->folder.Fault());
        return;
    }
    const std::string copy = started->folder.Path() + "\\scene.json";
    try {
        PanelScene::WriteCopy(copy);
        started->command = std::make_unique<ChildProcess>(
            std::vector<std::string>{Utf8(FolderOfProgram() / "veltrane.exe"), "save", input,
                                     "--scene", copy, "--progress", "lines"});
    } catch (const InputError& fault) {
        Fail(fault.what());
        return;
    }
    render = std::move(started);
    Say("Rendering " + input + "...");
    SetTimer(window, renderTimer, renderPeriod, nullptr);
}

void PanelWindow::FollowRender() {
    if (!render) return;
    if (!render->command->Read()) {
        EndRender();
        return;
    }
    const std::string progress = LastProgress(render->command->Output());
    if (!progress.empty()) Say("Rendering: " + progress);
}

void PanelWindow::EndRender() {
    KillTimer(window, renderTimer);
    const auto ended = std::exchange(render, nullptr);
    const std::string& told = ended->command->Errors();
    if (ended->command->ExitCode() == 0) {
        Say("Saved the document of " + scene.RenderFile());
        if (!told.empty()) {
            MessageBoxW(window, host::FromUtf8(told).data(), L"veltrane", MB_OK | MB_ICONWARNING);
        }
    } else {
        Say("The render failed");
        Fail(told.empty() ? "The render failed." : told);
    }
}

void PanelWindow::OnCommand(int command) {
    switch (command) {
        case newScene:
            if (!MayLeaveScene()) return;
            HideEffect();
            scene.New();
            ShowEffect();
            ShowTitle();
            return;
        case openScene: {
            if (!MayLeaveScene()) return;
            const std::string path =
                AskOpenFileName(window, L"Open Scene", L"Scene (*.json)\0*.json\0");
            if (!path.empty()) OpenScene(path);
            return;
        }
        case saveScene:
            scene.File().empty() ? AskToSave() : static_cast<void>(SaveScene(scene.File()));
            return;
        case saveSceneAs:
            AskToSave();
            return;
        case chooseRenderFile: {
            const std::string path = AskOpenFileName(
                window, L"Choose Render File",
                L"Render (*.exr, *.png, *.tif, *.jpg)\0*.exr;*.png;*.tif;*.tiff;*.jpg;*.jpeg\0"
                L"All Files\0*.*\0");
            if (!path.empty()) UseRenderFile(path);
            return;
        }
        case renderNow:
            if (!render) StartRender();
            return;
        case leave:
            SendMessageW(window, WM_CLOSE, 0, 0);
            return;
        case undo:
            host::App().undo.Undo();
            return;
        case redo:
            host::App().undo.Redo();
            return;
        default:
            return;
    }
}

LRESULT PanelWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SIZE:
            Layout();
            return 0;
        case WM_COMMAND:
            if (lParam == 0) OnCommand(LOWORD(wParam));
            return 0;
        case WM_INITMENUPOPUP: {
            HMENU menu = GetMenu(window);
            const auto enable = [menu](int item, bool on) {
                EnableMenuItem(menu, static_cast<UINT>(item), on ? MF_ENABLED : MF_GRAYED);
            };
            enable(undo, host::App().undo.CanUndo());
            enable(redo, host::App().undo.CanRedo());
            enable(renderNow, !render);
            return 0;
        }
        case WM_TIMER:
            if (wParam == renderTimer) FollowRender();
            return 0;
        case WM_CLOSE:
            if (!MayLeaveScene()) return 0;
            HideEffect();
            DestroyWindow(std::exchange(window, nullptr));
            PostQuitMessage(0);
            return 0;
        default:
            return DefWindowProcW(window, message, wParam, lParam);
    }
}

int PanelWindow::Run() {
    ShowWindow(window, SW_SHOW);
    HACCEL keys = MakeKeys();
    MSG message{};
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (host::EndPickMode(message)) continue;
        if (host::AcceleratorsEnabled() && window &&
            TranslateAcceleratorW(window, keys, &message)) {
            continue;
        }
        if (window && IsDialogMessageW(window, &message)) continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    DestroyAcceleratorTable(keys);
    return static_cast<int>(message.wParam);
}

}  // namespace command

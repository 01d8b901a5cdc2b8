// Pictures of the panel as a user sees it, for the documentation and for eyes that look for what
// is cut off:
//
//     panel_pictures LIBRARY SCENE RENDER FOLDER
//
// Writes FOLDER/NAME.bmp: the program's window, and one for each rollup and dialog.
#include <windows.h>

#include <commctrl.h>
#include <custcont.h>

#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

#include "command/native_path.h"
#include "command/process.h"
#include "command/win32/panel_scene.h"
#include "command/win32/panel_window.h"
#include "host/application.h"
#include "host/text.h"
#include "host/win32/rollup_window.h"
#include "plugin/entry.h"
#include "ui/win32/overwrite_dialog.h"

namespace {

// In the order of the rollups.
constexpr const char* rollupNames[] = {"main",    "elements", "scene-layers", "selection-sets",
                                       "objects", "gbuffer",  "scene-data"};

void Pump(DWORD milliseconds) {
    const ULONGLONG end = GetTickCount64() + milliseconds;
    while (GetTickCount64() < end) {
        MSG message{};
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
        Sleep(5);
    }
}

// Inside the window, without its scroll bar and title.
RECT InsideOf(HWND window) {
    RECT area{};
    GetClientRect(window, &area);
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&area), 2);
    return area;
}

// What the screen shows there.
void Capture(const RECT& area, const std::filesystem::path& file) {
    const auto width = static_cast<int>(area.right - area.left);
    const auto height = static_cast<int>(area.bottom - area.top);
    HDC screen = GetDC(nullptr);
    HDC memory = CreateCompatibleDC(screen);
    BITMAPINFO info{};
    info.bmiHeader = {sizeof(BITMAPINFOHEADER), width, height, 1, 24, BI_RGB, 0, 0, 0, 0, 0};
    void* pixels = nullptr;
    HBITMAP bitmap = CreateDIBSection(memory, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
    HGDIOBJ before = SelectObject(memory, bitmap);
    BitBlt(memory, 0, 0, width, height, screen, area.left, area.top, SRCCOPY);
    GdiFlush();
    const auto bytes = static_cast<DWORD>((width * 3 + 3) / 4 * 4 * height);
    BITMAPFILEHEADER header{};
    header.bfType = 0x4d42;
    header.bfOffBits = sizeof(BITMAPFILEHEADER) + sizeof(BITMAPINFOHEADER);
    header.bfSize = header.bfOffBits + bytes;
    std::ofstream stream(file, std::ios::binary);
    stream.write(reinterpret_cast<const char*>(&header), sizeof header);
    stream.write(reinterpret_cast<const char*>(&info.bmiHeader), sizeof info.bmiHeader);
    stream.write(static_cast<const char*>(pixels), static_cast<std::streamsize>(bytes));
    SelectObject(memory, before);
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
}

// The modal dialog of that title, which `open` opens: taken and closed while it is open.
struct DialogPicture {
    const wchar_t* title;
    int close;
    std::filesystem::path file;
};
DialogPicture* wanted = nullptr;

void CALLBACK TakeDialog(HWND, UINT, UINT_PTR timer, DWORD) {
    HWND dialog = FindWindowW(L"#32770", wanted->title);
    if (!dialog) return;
    KillTimer(nullptr, timer);
    Pump(300);
    Capture(InsideOf(dialog), wanted->file);
    PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(wanted->close), 0);
}

void CaptureDialog(DialogPicture picture, const std::function<void()>& open) {
    wanted = &picture;
    SetTimer(nullptr, 0, 200, TakeDialog);
    open();
    wanted = nullptr;
}

void CaptureRollups(HWND window, const std::filesystem::path& folder) {
    IRollupWindow* rollups = GetIRollup(window);
    for (int index = 0; index < rollups->GetNumPanels(); ++index) {
        for (int other = 0; other < rollups->GetNumPanels(); ++other)
            rollups->SetPanelOpen(other, other == index);
        HWND list = FindWindowExW(rollups->GetPanelDlg(index), nullptr, WC_LISTVIEWW, nullptr);
        if (list) {
            ListView_SetItemState(list, 0, LVIS_SELECTED | LVIS_FOCUSED,
                                  LVIS_SELECTED | LVIS_FOCUSED);
        }
        Pump(400);
        Capture(InsideOf(window), folder / (std::string(rollupNames[index]) + ".bmp"));
    }
    ReleaseIRollup(rollups);
}

// Of a size that a user may give it, with two rollups open.
void CaptureProgram(const command::PanelWindow& panel, const std::filesystem::path& folder) {
    const int scale = static_cast<int>(GetDpiForSystem());
    MoveWindow(panel.Window(), 0, 0, 620 * scale / 96, 780 * scale / 96, TRUE);
    IRollupWindow* rollups = GetIRollup(panel.Rollups());
    rollups->SetPanelOpen(1, TRUE);
    ReleaseIRollup(rollups);
    Pump(500);
    // Without the title, whose buttons are Wine's.
    RECT area = InsideOf(panel.Window());
    area.top -= GetSystemMetrics(SM_CYMENU);
    Capture(area, folder / "program.bmp");
}

// The sample's own scene has none.
void AddSelectionSets() {
    host::Scene& scene = host::App().scene;
    scene.AddSelectionSet(_M("Glass and gold"),
                          {scene.FindNode(_M("Glass sphere")), scene.FindNode(_M("Suzanne"))});
    scene.AddSelectionSet(_M("Props"), {scene.FindNode(_M("Ring")), scene.FindNode(_M("Veil"))});
}

}  // namespace

int main(int argc, char** argv) {
    const command::ProcessStreams streams;
    const std::vector<std::string> words = command::ProcessArguments(argc, argv);
    if (words.size() != 4) {
        std::fputs("usage: panel_pictures LIBRARY SCENE RENDER FOLDER\n", stderr);
        return 2;
    }
    try {
        plugin::Attach();
        const std::filesystem::path folder = command::Native(words[3]);
        command::PanelScene scene(command::Native(words[0]));
        scene.Open(words[1]);
        scene.UseRenderFile(words[2]);
        AddSelectionSets();
        command::PanelWindow panel(scene);
        ShowWindow(panel.Window(), SW_SHOW);
        CaptureProgram(panel, folder);
        MoveWindow(panel.Window(), 0, 0, GetSystemMetrics(SM_CXSCREEN),
                   GetSystemMetrics(SM_CYSCREEN), TRUE);
        Pump(500);
        CaptureRollups(panel.Rollups(), folder);
        IRollupWindow* rollups = GetIRollup(panel.Rollups());
        HWND main = rollups->GetPanelDlg(0);
        ReleaseIRollup(rollups);
        constexpr int advancedOptions = 1008;
        CaptureDialog({L"veltrane - Advanced Options", IDCANCEL, folder / "advanced.bmp"}, [main] {
            SendMessageW(main, WM_COMMAND, MAKEWPARAM(advancedOptions, BN_CLICKED),
                         reinterpret_cast<LPARAM>(GetDlgItem(main, advancedOptions)));
        });
        CaptureDialog({L"veltrane - File Exists", IDNO, folder / "file-exists.bmp"}, [&panel] {
            ui::ShowOverwriteDialog(
                panel.Window(),
                MSTR(L"Confirm overwriting:\n\nC:\\projects\\shot 010\\renders\\still.psd ?"));
        });
        return 0;
    } catch (const std::exception& fault) {
        std::fprintf(stderr, "%s\n", fault.what());
        return 1;
    }
}

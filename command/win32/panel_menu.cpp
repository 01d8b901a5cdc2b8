#include "command/win32/panel_menu.h"

#include <string>
#include <vector>

namespace command {
namespace {

struct MenuRow {
    // Null for a line between items.
    const wchar_t* text;
    int item = 0;
    // 0 for none.
    WORD key = 0;
    BYTE with = FCONTROL;
};

constexpr MenuRow fileMenu[] = {
    {L"&New Scene\tCtrl+N", PanelItem::newScene, 'N'},
    {L"&Open Scene...\tCtrl+O", PanelItem::openScene, 'O'},
    {L"&Save Scene\tCtrl+S", PanelItem::saveScene, 'S'},
    {L"Save Scene &As...\tCtrl+Shift+S", PanelItem::saveSceneAs, 'S', FCONTROL | FSHIFT},
    {nullptr},
    {L"Choose Render &File...", PanelItem::chooseRenderFile},
    {L"&Render\tCtrl+R", PanelItem::renderNow, 'R'},
    {L"S&top Render", PanelItem::stopRender},
    {L"Open &Document", PanelItem::openDocument},
    {nullptr},
    {L"E&xit", PanelItem::leave},
};
constexpr MenuRow editMenu[] = {
    {L"&Undo\tCtrl+Z", PanelItem::undo, 'Z'},
    {L"&Redo\tCtrl+Y", PanelItem::redo, 'Y'},
};
constexpr MenuRow helpMenu[] = {
    {L"veltrane &Help\tF1", PanelItem::showHelp, VK_F1, 0},
    {L"&About veltrane", PanelItem::showAbout},
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

// A single "&" marks a letter.
std::wstring StepText(const wchar_t* before, const wchar_t* name, const wchar_t* key) {
    std::wstring text = before;
    if (*name) text += L' ';
    for (const wchar_t* unit = name; *unit; ++unit)
        text.append(*unit == L'&' ? 2 : 1, *unit);
    return text + key;
}

}  // namespace

// The letters are none of the rollups', which the alt key finds before those of a menu.
HMENU MakePanelMenu() {
    HMENU bar = CreateMenu();
    AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(MakeMenu(fileMenu)), L"&File");
    AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(MakeMenu(editMenu)), L"E&dit");
    AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(MakeMenu(helpMenu)), L"&Help");
    return bar;
}

HACCEL MakePanelKeys() {
    std::vector<ACCEL> keys;
    const auto add = [&](const auto& rows) {
        for (const MenuRow& row : rows) {
            if (row.key == 0) continue;
            keys.push_back(
                {static_cast<BYTE>(row.with | FVIRTKEY), row.key, static_cast<WORD>(row.item)});
        }
    };
    add(fileMenu);
    add(editMenu);
    add(helpMenu);
    return CreateAcceleratorTableW(keys.data(), static_cast<int>(keys.size()));
}

void NameSteps(HMENU menu, const wchar_t* undoName, const wchar_t* redoName) {
    const auto name = [menu](int item, const std::wstring& text) {
        MENUITEMINFOW info{};
        info.cbSize = sizeof info;
        info.fMask = MIIM_STRING;
        info.dwTypeData = const_cast<wchar_t*>(text.c_str());
        SetMenuItemInfoW(menu, static_cast<UINT>(item), FALSE, &info);
    };
    name(PanelItem::undo, StepText(L"&Undo", undoName, L"\tCtrl+Z"));
    name(PanelItem::redo, StepText(L"&Redo", redoName, L"\tCtrl+Y"));
}

bool IsKeyOfEdits(const MSG& message) {
    return message.message == WM_KEYDOWN && (message.wParam == 'Z' || message.wParam == 'Y');
}

}  // namespace command

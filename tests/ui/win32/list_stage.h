// The panel's lists as a user sees them, and what a user does with them.
#pragma once

#include <stdexcept>

#include "tests/ui/win32/panel_stage.h"

// What a list shows, as text.
inline int RowsOf(HWND list) {
    return ListView_GetItemCount(list);
}
inline std::string CellOf(HWND list, int row, int column) {
    MCHAR text[512] = {};
    ListView_GetItemText(list, row, column, text, 512);
    return host::ToUtf8(text);
}
inline std::vector<std::string> ColumnOf(HWND list, int column) {
    std::vector<std::string> cells;
    cells.reserve(static_cast<std::size_t>(RowsOf(list)));
    for (int row = 0; row < RowsOf(list); ++row)
        cells.push_back(CellOf(list, row, column));
    return cells;
}
// The pictures of the check boxes, by their numbers.
inline std::vector<int> ChecksOf(HWND list) {
    std::vector<int> images;
    images.reserve(static_cast<std::size_t>(RowsOf(list)));
    for (int row = 0; row < RowsOf(list); ++row) {
        images.push_back(static_cast<int>(ListView_GetItemState(list, row, LVIS_STATEIMAGEMASK)) >>
                         12);
    }
    return images;
}
inline std::vector<int> SelectedOf(HWND list) {
    std::vector<int> rows;
    for (int row = ListView_GetNextItem(list, -1, LVNI_SELECTED); row >= 0;
         row = ListView_GetNextItem(list, row, LVNI_SELECTED))
        rows.push_back(row);
    return rows;
}

struct ShownColumn {
    std::string title;
    int width;
    friend bool operator==(const ShownColumn&, const ShownColumn&) = default;
};
inline void PrintTo(const ShownColumn& column, std::ostream* out) {
    *out << '"' << column.title << "\" " << column.width;
}
inline std::vector<ShownColumn> ColumnsOf(HWND list) {
    std::vector<ShownColumn> columns;
    const int count = Header_GetItemCount(ListView_GetHeader(list));
    for (int i = 0; i < count; ++i) {
        MCHAR title[128] = {};
        LVCOLUMNW info{};
        info.mask = LVCF_TEXT | LVCF_WIDTH;
        info.pszText = title;
        info.cchTextMax = 128;
        ListView_GetColumn(list, i, &info);
        columns.push_back({host::ToUtf8(title), info.cx});
    }
    return columns;
}

// A point of the row's first column where the list finds just this.
inline POINT PointOf(HWND list, int row, UINT found) {
    RECT area{};
    ListView_GetItemRect(list, row, &area, LVIR_BOUNDS);
    const int middle = static_cast<int>(area.top + area.bottom) / 2;
    const int width = ListView_GetColumnWidth(list, 0);
    for (int x = 0; x < width; ++x) {
        LVHITTESTINFO hit{};
        hit.pt = {area.left + x, middle};
        // The second of them, so that what rounding does at an edge does no harm.
        if (ListView_SubItemHitTest(list, &hit) == row && hit.flags == found) {
            return {hit.pt.x + 2, hit.pt.y};
        }
    }
    throw std::logic_error("the row has no such place");
}
inline POINT CheckBoxPoint(HWND list, int row) {
    return PointOf(list, row, LVHT_ONITEMSTATEICON);
}
inline POINT LabelPoint(HWND list, int row) {
    return PointOf(list, row, LVHT_ONITEMLABEL);
}
// In the middle of a cell.
inline POINT CellPoint(HWND list, int row, int column) {
    RECT area{};
    ListView_GetSubItemRect(list, row, column, LVIR_BOUNDS, &area);
    return {(area.left + area.right) / 2, (area.top + area.bottom) / 2};
}
// Below all rows.
inline POINT EmptyPoint(HWND list) {
    RECT area{};
    GetClientRect(list, &area);
    return {area.right / 2, area.bottom - 3};
}

inline BOOL CALLBACK FindMenuWindow(HWND window, LPARAM found) {
    MCHAR name[16] = {};
    GetClassNameW(window, name, 16);
    if (std::basic_string<MCHAR>(name) != L"#32768") return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}
// Of this thread; null when none is open.
inline HWND OpenMenu() {
    HWND found = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), FindMenuWindow, reinterpret_cast<LPARAM>(&found));
    return found;
}

class ListTest : public PanelTest {
  protected:
    static void ClickAt(HWND list, POINT at) { Click(list, at.x, at.y); }
    static void DoubleClickAt(HWND list, POINT at) { Click(list, at.x, at.y, true); }

    // A right click, and then from the menu the item of that index; -1 leaves the menu. What the
    // menu offered, each with its number; nothing when none opened. `meanwhile` happens while the
    // menu is up.
    static std::vector<std::string> ChooseFromMenu(HWND list, POINT at, int item,
                                                   const std::function<void()>& meanwhile = {}) {
        return ChooseFromMenuThat([&] { RightClick(list, at.x, at.y); }, list, item, meanwhile);
    }
    // The same with the keys that ask for the menu of the selected row.
    static std::vector<std::string> ChooseFromMenuKey(HWND list, int item) {
        return ChooseFromMenuThat([list] { SendMessageW(list, WM_KEYDOWN, VK_APPS, 1); }, list,
                                  item);
    }
    static std::vector<std::string> ChooseFromShiftF10(HWND list, int item) {
        const auto press = [list] {
            WhileDown(VK_SHIFT, [list] { SendMessageW(list, WM_SYSKEYDOWN, VK_F10, 1); });
        };
        return ChooseFromMenuThat(press, list, item);
    }
    static std::vector<std::string> ChooseFromMenuThat(
        const std::function<void()>& open, HWND list, int item,
        const std::function<void()>& meanwhile = {}) {
        std::vector<std::string> offered;
        const InModalLoop choice(OpenMenu, [&](HWND menuWindow) {
            constexpr UINT getMenu = 0x01E1;
            auto* menu = reinterpret_cast<HMENU>(SendMessageW(menuWindow, getMenu, 0, 0));
            for (int i = 0; i < GetMenuItemCount(menu); ++i) {
                MCHAR text[256] = {};
                GetMenuStringW(menu, static_cast<UINT>(i), text, 256, MF_BYPOSITION);
                offered.push_back(std::to_string(GetMenuItemID(menu, i)) + ' ' +
                                  host::ToUtf8(text));
            }
            if (meanwhile) meanwhile();
            if (!IsWindow(list)) {
                // As systems end the menu of a window that goes.
                EndMenu();
                return;
            }
            for (int i = 0; i <= item; ++i)
                PostMessageW(list, WM_KEYDOWN, VK_DOWN, 1);
            PostMessageW(list, WM_KEYDOWN, item < 0 ? VK_ESCAPE : VK_RETURN, 1);
        });
        open();
        PumpMessages();
        return offered;
    }

    // From the middle of the splitter, in pixels; each step is a move of the mouse.
    static void Drag(HWND splitter, const std::vector<int>& steps) {
        const auto at = [](int y) { return MAKELPARAM(10, y); };
        SendMessageW(splitter, WM_LBUTTONDOWN, MK_LBUTTON, at(3));
        for (const int y : steps)
            SendMessageW(splitter, WM_MOUSEMOVE, MK_LBUTTON, at(3 + y));
        SendMessageW(splitter, WM_LBUTTONUP, 0, at(3 + steps.back()));
    }
    static int HeightOf(HWND control) {
        RECT area{};
        GetWindowRect(control, &area);
        return static_cast<int>(area.bottom - area.top);
    }
    // In the client area of its parent.
    static RECT PlaceOf(HWND control) {
        RECT area{};
        GetWindowRect(control, &area);
        MapWindowPoints(nullptr, GetParent(control), reinterpret_cast<POINT*>(&area), 2);
        return area;
    }
};

#include "ui/win32/list_splitter.h"

#include <commctrl.h>
#include <custcont.h>
#include <windows.h>
#include <windowsx.h>

#include <memory>
#include <optional>

#include "ui/list_height.h"
#include "ui/resource.h"
#include "ui/splitter_limits.h"
#include "ui/win32/rollup_controls.h"

namespace ui {
namespace {

// What the splitter's window knows while it lives.
struct Splitter {
    IParamMap2& map;
    const ListView& kind;
    std::optional<SplitterDrag> drag{};
    // Where the bar that follows the mouse was drawn; nothing while none is.
    std::optional<RECT> drawn{};

    HWND Dialog() const { return map.GetHWnd(); }
    HWND List() const { return GetDlgItem(Dialog(), kind.control); }
};

int HeightOf(HWND window) {
    RECT area{};
    GetWindowRect(window, &area);
    return area.bottom - area.top;
}

void MoveBy(HWND dialog, int control, int down, int higher) {
    HWND window = GetDlgItem(dialog, control);
    if (!window) return;
    const RECT area = PlaceInDialog(window);
    SetWindowPos(window, nullptr, area.left, area.top + down, area.right - area.left,
                 area.bottom - area.top + higher, SWP_NOZORDER | SWP_NOACTIVATE);
}

void SetDialogHeight(const Splitter& splitter, int height) {
    HWND dialog = splitter.Dialog();
    IRollupWindow* rollups = splitter.map.GetIRollup();
    const int index = rollups ? rollups->GetPanelIndex(dialog) : -1;
    if (index >= 0) {
        rollups->SetPageDlgHeight(index, height);
        return;
    }
    RECT area{};
    GetWindowRect(dialog, &area);
    SetWindowPos(dialog, nullptr, 0, 0, area.right - area.left, height,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

// The list's new height, its rollup's with it.
void ApplyHeight(const Splitter& splitter, int height, bool relative) {
    HWND dialog = splitter.Dialog();
    const ListSize present{HeightOf(splitter.List()), HeightOf(dialog)};
    const std::optional<ListSize> size =
        ApplyListViewHeight(splitter.kind, present, height, relative);
    if (!size) return;
    const int higher = size->list - present.list;
    SetDialogHeight(splitter, size->dialog);
    MoveBy(dialog, splitter.kind.control, 0, higher);
    MoveBy(dialog, IDC_LIST_FRAME, 0, higher);
    MoveBy(dialog, IDC_LIST_SPLITTER, higher, 0);
    InvalidateRect(dialog, nullptr, TRUE);
}

// A second drawing at the same place takes the first away.
void DrawBar(const RECT& bar) {
    HDC screen = GetDC(nullptr);
    constexpr int width = 2;
    PatBlt(screen, bar.left, bar.top, bar.right - bar.left, width, DSTINVERT);
    ReleaseDC(nullptr, screen);
}

void EraseBar(Splitter& splitter) {
    if (splitter.drawn) DrawBar(*splitter.drawn);
    splitter.drawn.reset();
}

void DrawBarAt(Splitter& splitter, int bottom) {
    if (splitter.drawn && splitter.drawn->top == bottom) return;
    EraseBar(splitter);
    RECT bar{};
    GetWindowRect(splitter.List(), &bar);
    bar.top = bottom;
    DrawBar(bar);
    splitter.drawn = bar;
}

// Of a message of the mouse, in the screen's pixels.
int MouseHeight(HWND window, LPARAM place) {
    POINT mouse{GET_X_LPARAM(place), GET_Y_LPARAM(place)};
    ClientToScreen(window, &mouse);
    return mouse.y;
}

void StartDrag(Splitter& splitter, HWND window, int mouse) {
    RECT list{};
    GetWindowRect(splitter.List(), &list);
    RECT panel{};
    GetWindowRect(GetParent(splitter.Dialog()), &panel);
    splitter.drag.emplace(list.top, list.bottom, panel.bottom, mouse);
    SetCapture(window);
    DrawBarAt(splitter, list.bottom);
}

void EndDrag(Splitter& splitter, int mouse) {
    const int difference = splitter.drag->Difference(mouse);
    ReleaseCapture();
    if (difference != 0) ApplyHeight(splitter, difference, true);
}

LRESULT CALLBACK SplitterProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                   UINT_PTR id, DWORD_PTR data) {
    auto& splitter = *reinterpret_cast<Splitter*>(data);
    switch (message) {
        case WM_SETCURSOR:
            SetCursor(LoadCursorW(nullptr, IDC_SIZENS));
            return TRUE;
        case WM_LBUTTONDOWN:
            StartDrag(splitter, window, MouseHeight(window, lParam));
            return 0;
        case WM_MOUSEMOVE:
            if (splitter.drag) {
                DrawBarAt(splitter, splitter.drag->Bottom(MouseHeight(window, lParam)));
            }
            return 0;
        case WM_LBUTTONUP:
            if (splitter.drag) EndDrag(splitter, MouseHeight(window, lParam));
            return 0;
        case WM_CAPTURECHANGED:
            EraseBar(splitter);
            splitter.drag.reset();
            return 0;
        case WM_NCDESTROY:
            EraseBar(splitter);
            RemoveWindowSubclass(window, SplitterProcedure, id);
            delete &splitter;
            break;
        default:
            break;
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

void PlaceBelowList(HWND list, HWND window) {
    const RECT area = PlaceInDialog(list);
    const SplitterPlace place = SplitterBelow(area.left, area.right, area.bottom);
    SetWindowPos(window, nullptr, place.left, place.top, place.width, place.height,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace

void SetUpSplitter(IParamMap2& map, const ListView& kind) {
    HWND dialog = map.GetHWnd();
    HWND window = GetDlgItem(dialog, IDC_LIST_SPLITTER);
    HWND list = GetDlgItem(dialog, kind.control);
    if (!window || !list) return;
    auto splitter = std::make_unique<Splitter>(Splitter{map, kind});
    PlaceBelowList(list, window);
    if (const std::optional<int> height = StoredListHeight(kind)) {
        ApplyHeight(*splitter, *height, false);
    }
    const auto data = reinterpret_cast<DWORD_PTR>(splitter.get());
    if (SetWindowSubclass(window, SplitterProcedure, 1, data)) {
        static_cast<void>(splitter.release());
    }
}

}  // namespace ui

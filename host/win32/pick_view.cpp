#include "host/win32/pick_view.h"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>
#include <memory>
#include <new>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include <notify.h>
#include <ref.h>

#include "host/application.h"
#include "host/win32/control_object.h"

namespace host {
namespace {

constexpr const wchar_t* pickViewClassName = L"PickView";
constexpr UINT_PTR refreshTimer = 1;
constexpr UINT refreshMilliseconds = 200;
// Rows deeper in the scene than this aren't indented any further.
constexpr std::size_t deepestIndent = 20;

// Hears that a node came to show something else, or went.
class NodeChanges final : public GlobalReferenceMaker {
  public:
    NodeChanges() { RegisterGlobalReference(this); }
    ~NodeChanges() override { UnRegisterGlobalReference(this); }

    RefResult NotifyRefChanged(const Interval&, RefTargetHandle target, PartID&, RefMessage message,
                               BOOL) override {
        if (message == REFMSG_TARGET_DELETED || dynamic_cast<Node*>(target)) happened = true;
        return REF_SUCCEED;
    }

    bool happened = true;
};

struct SceneRow {
    Node* node;
    std::wstring text;
};

// Parents before their children, which are indented.
std::vector<SceneRow> RowsOfScene() {
    struct Place {
        INode* node;
        std::size_t depth;
    };
    std::vector<SceneRow> rows;
    std::vector<Place> waiting{{&App().scene.Root(), 0}};
    while (!waiting.empty()) {
        const auto [node, depth] = waiting.back();
        waiting.pop_back();
        if (!node->IsRootNode()) {
            const std::size_t indent = 2 * (std::min(depth, deepestIndent) - 1);
            rows.push_back(
                {static_cast<Node*>(node), std::wstring(indent, L' ') + node->GetName()});
        }
        for (int child = node->NumberOfChildren() - 1; child >= 0; --child)
            waiting.push_back({node->GetChildNode(child), depth + 1});
    }
    return rows;
}

class PickView final : public ControlObject {
  public:
    using ControlObject::ControlObject;

    void Refresh();
    // Null where no node of the scene is that the filter lets through.
    INode* NodeAt(IPoint2 point, PickNodeCallback* filter) const;
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

  private:
    struct Row {
        std::unique_ptr<TargetReference> node;
        std::wstring text;
    };

    static LRESULT CALLBACK OnListMessage(HWND list, UINT message, WPARAM wParam, LPARAM lParam,
                                          UINT_PTR id, DWORD_PTR view);
    static void OnSelectionChanged(void* view, NotifyInfo*) {
        static_cast<PickView*>(view)->ShowSelection();
    }

    ~PickView() override {
        if (font_) DeleteObject(font_);
    }
    void Create();
    void Destroy();
    LRESULT Tell(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return SendMessageW(list_, message, wParam, lParam);
    }
    Node* NodeOf(std::size_t row) const;
    void MakeRows(std::vector<SceneRow> rows);
    void ShowSelection();
    void TakeSelection();
    // What a pick mode does with the list's message; false for one that it leaves to the list.
    bool Pick(UINT message, WPARAM wParam, LPARAM lParam);
    bool PickKey(WPARAM key);

    HWND list_ = nullptr;
    HFONT font_ = nullptr;
    std::vector<Row> rows_;
    std::unique_ptr<NodeChanges> changes_;
    bool selecting_ = false;
};

LRESULT CALLBACK PickViewProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

ControlClass pickViewClass{
    .make = [](HWND window) -> ControlObject* { return new (std::nothrow) PickView(window); },
    .base = DefWindowProcW,
};

LRESULT CALLBACK PickViewProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return RunControl(pickViewClass, window, message, wParam, lParam);
}

PickView* PickViewOf(HWND window) {
    return static_cast<PickView*>(ControlOf(pickViewClass, window));
}

// The view is the list that stands in a pick view.
INode* NodeInView(HWND list, IPoint2 point, PickNodeCallback* filter) {
    const PickView* view = PickViewOf(GetParent(list));
    return view ? view->NodeAt(point, filter) : nullptr;
}

IPoint2 PointOf(LPARAM lParam) {
    return {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
}

void PickView::Create() {
    list_ = CreateWindowExW(WS_EX_CLIENTEDGE, L"LISTBOX", nullptr,
                            WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_VSCROLL | LBS_EXTENDEDSEL |
                                LBS_NOINTEGRALHEIGHT | LBS_NOTIFY,
                            0, 0, 0, 0, Window(), nullptr, GetModuleHandleW(nullptr), nullptr);
    // The system's own, which has the screen's scale.
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    font_ = CreateFontIndirectW(&metrics.lfMessageFont);
    Tell(WM_SETFONT, reinterpret_cast<WPARAM>(font_));
    SetWindowSubclass(list_, OnListMessage, 0, reinterpret_cast<DWORD_PTR>(this));
    changes_ = std::make_unique<NodeChanges>();
    RegisterNotification(OnSelectionChanged, this, NOTIFY_SELECTIONSET_CHANGED);
    SetTimer(Window(), refreshTimer, refreshMilliseconds, nullptr);
    Refresh();
}

void PickView::Destroy() {
    KillTimer(Window(), refreshTimer);
    UnRegisterNotification(OnSelectionChanged, this, NOTIFY_SELECTIONSET_CHANGED);
    changes_.reset();
    rows_.clear();
    // Nobody could pick any more.
    App().pickMode.Cancel();
}

Node* PickView::NodeOf(std::size_t row) const {
    auto* node = row < rows_.size() ? static_cast<Node*>(rows_[row].node->Get()) : nullptr;
    return node && node->IsInScene() ? node : nullptr;
}

// LB_ITEMFROMPOINT knows no rows above 65,535.
INode* PickView::NodeAt(IPoint2 point, PickNodeCallback* filter) const {
    RECT area{};
    GetClientRect(list_, &area);
    const LRESULT height = Tell(LB_GETITEMHEIGHT);
    const bool isInside = height > 0 && PtInRect(&area, POINT{point.x, point.y});
    Node* node = isInside
                     ? NodeOf(static_cast<std::size_t>(Tell(LB_GETTOPINDEX) + point.y / height))
                     : nullptr;
    return node && (!filter || filter->Filter(node)) ? node : nullptr;
}

void PickView::Refresh() {
    if (!changes_) return;
    const bool sameCount = rows_.size() == static_cast<std::size_t>(App().scene.NumNodes());
    if (!std::exchange(changes_->happened, false) && sameCount) return;
    std::vector<SceneRow> wanted = RowsOfScene();
    const bool same = std::equal(rows_.begin(), rows_.end(), wanted.begin(), wanted.end(),
                                 [](const Row& row, const SceneRow& other) {
                                     return row.node->Get() == other.node && row.text == other.text;
                                 });
    if (same) return;
    MakeRows(std::move(wanted));
    ShowSelection();
}

void PickView::MakeRows(std::vector<SceneRow> rows) {
    const LRESULT top = Tell(LB_GETTOPINDEX);
    Tell(WM_SETREDRAW, FALSE);
    Tell(LB_RESETCONTENT);
    rows_.clear();
    for (SceneRow& row : rows) {
        Tell(LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(row.text.c_str()));
        rows_.push_back({std::make_unique<TargetReference>(row.node), std::move(row.text)});
    }
    Tell(LB_SETTOPINDEX, static_cast<WPARAM>(top));
    Tell(WM_SETREDRAW, TRUE);
    InvalidateRect(list_, nullptr, TRUE);
}

void PickView::ShowSelection() {
    if (selecting_) return;
    const std::vector<Node*> nodes = App().selection.Nodes();
    const std::unordered_set<const Node*> selected(nodes.begin(), nodes.end());
    Tell(WM_SETREDRAW, FALSE);
    Tell(LB_SETSEL, FALSE, -1);
    // Row by row the list would take its time.
    for (std::size_t row = 0; row < rows_.size() && !selected.empty(); ++row) {
        const std::size_t first = row;
        while (row < rows_.size() && selected.contains(NodeOf(row)))
            ++row;
        // A range of one row would be taken out of the selection.
        if (row == first + 1) Tell(LB_SETSEL, TRUE, static_cast<LPARAM>(first));
        if (row > first + 1) Tell(LB_SELITEMRANGEEX, first, static_cast<LPARAM>(row - 1));
    }
    Tell(WM_SETREDRAW, TRUE);
    InvalidateRect(list_, nullptr, TRUE);
}

void PickView::TakeSelection() {
    std::vector<int> rows(rows_.size());
    const LRESULT count = Tell(LB_GETSELITEMS, rows.size(), reinterpret_cast<LPARAM>(rows.data()));
    rows.resize(static_cast<std::size_t>(std::max<LRESULT>(count, 0)));
    std::vector<Node*> nodes;
    nodes.reserve(rows.size());
    for (const int row : rows)
        nodes.push_back(NodeOf(static_cast<std::size_t>(row)));
    selecting_ = true;
    App().selection.Set(nodes);
    selecting_ = false;
}

bool PickView::PickKey(WPARAM key) {
    if (key == VK_ESCAPE) {
        App().pickMode.Cancel();
        return true;
    }
    if (key != VK_RETURN && key != VK_SPACE) return false;
    RECT row{};
    if (Tell(LB_GETITEMRECT, static_cast<WPARAM>(Tell(LB_GETCARETINDEX)),
             reinterpret_cast<LPARAM>(&row)) != LB_ERR) {
        App().pickMode.Click(list_, {(row.left + row.right) / 2, (row.top + row.bottom) / 2});
    }
    return true;
}

bool PickView::Pick(UINT message, WPARAM wParam, LPARAM lParam) {
    PickMode& mode = App().pickMode;
    if (!mode.Callback()) return false;
    switch (message) {
        case WM_MOUSEMOVE:
            SetCursor(
                LoadCursorW(nullptr, mode.Hit(list_, PointOf(lParam)) ? IDC_CROSS : IDC_ARROW));
            return true;
        case WM_LBUTTONDOWN:
            SetFocus(list_);
            mode.Click(list_, PointOf(lParam));
            return true;
        case WM_RBUTTONUP:
            mode.Cancel();
            return true;
        case WM_LBUTTONDBLCLK:
        case WM_RBUTTONDOWN:
            return true;
        case WM_KEYDOWN:
            return PickKey(wParam);
        default:
            return false;
    }
}

LRESULT CALLBACK PickView::OnListMessage(HWND list, UINT message, WPARAM wParam, LPARAM lParam,
                                         UINT_PTR id, DWORD_PTR view) {
    const bool picking = App().pickMode.Callback() != nullptr;
    if (reinterpret_cast<PickView*>(view)->Pick(message, wParam, lParam)) return 0;
    // The cursor is the last movement's.
    if (picking && message == WM_SETCURSOR && LOWORD(lParam) == HTCLIENT) return TRUE;
    const LRESULT result = DefSubclassProc(list, message, wParam, lParam);
    if (message == WM_NCDESTROY) RemoveWindowSubclass(list, OnListMessage, id);
    return picking && message == WM_GETDLGCODE ? result | DLGC_WANTALLKEYS : result;
}

LRESULT PickView::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CREATE:
            Create();
            break;
        case WM_DESTROY:
            Destroy();
            break;
        case WM_SIZE:
            SetWindowPos(list_, nullptr, 0, 0, LOWORD(lParam), HIWORD(lParam),
                         SWP_NOZORDER | SWP_NOACTIVATE);
            return 0;
        case WM_SETFOCUS:
            SetFocus(list_);
            return 0;
        case WM_SETFONT:
            return Tell(message, wParam, lParam);
        case WM_TIMER:
            Refresh();
            return 0;
        case WM_COMMAND:
            if (HIWORD(wParam) != LBN_SELCHANGE) return 0;
            // A row that is picked isn't selected.
            if (App().pickMode.Callback()) {
                ShowSelection();
            } else {
                TakeSelection();
            }
            return 0;
        default:
            break;
    }
    return DefWindowProcW(Window(), message, wParam, lParam);
}

}  // namespace

HWND CreatePickView(HWND parent, int id) {
    WNDCLASSEXW windowClass{};
    windowClass.lpfnWndProc = PickViewProc;
    windowClass.lpszClassName = pickViewClassName;
    if (!RegisterControl(pickViewClass, windowClass)) return nullptr;
    App().pickMode.nodeAt = NodeInView;
    return CreateWindowExW(WS_EX_CONTROLPARENT, pickViewClassName, nullptr,
                           WS_CHILD | WS_CLIPCHILDREN, 0, 0, 0, 0, parent,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                           GetModuleHandleW(nullptr), nullptr);
}

void RefreshPickView(HWND view) {
    if (PickView* shown = PickViewOf(view)) shown->Refresh();
}

bool EndPickMode(const MSG& message) {
    if (!App().pickMode.Callback()) return false;
    switch (message.message) {
        case WM_RBUTTONDOWN:
        case WM_RBUTTONDBLCLK:
            return true;
        case WM_KEYDOWN:
            if (message.wParam != VK_ESCAPE) return false;
            break;
        case WM_RBUTTONUP:
            break;
        default:
            return false;
    }
    App().pickMode.Cancel();
    return true;
}

}  // namespace host

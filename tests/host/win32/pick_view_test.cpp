#include "host/win32/pick_view.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/application.h"
#include "host/core_interface.h"
#include "tests/host/win32/control_stage.h"
#include "tests/host/win32/leak_rounds.h"
#include "tests/host/win32/object_counts.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Picks any node but one, and writes down what happens.
class PicksNodes final : public PickModeCallback, public PickNodeCallback {
  public:
    BOOL HitTest(IObjParam* ip, HWND view, ViewExp*, IPoint2 point, int) override {
        return ip->PickNode(view, point, this) != nullptr;
    }
    BOOL Pick(IObjParam*, ViewExp* view) override {
        picked.emplace_back(view->GetClosestHit()->GetName());
        return once;
    }
    void EnterMode(IObjParam*) override { ++entered; }
    void ExitMode(IObjParam*) override { ++left; }
    BOOL Filter(INode* node) override { return MSTR(node->GetName()) != MSTR(_M("Cone")); }

    std::vector<std::wstring> picked;
    bool once = false;
    int entered = 0;
    int left = 0;
};

class PickView : public testing::Test {
  protected:
    PickView() {
        host::ResetApplication();
        for (const MCHAR* name : {_M("Box"), _M("Cone"), _M("Tube")})
            nodes.push_back(&host::App().scene.AddNode(MSTR(name)));
        view = host::CreatePickView(stage.window, 7);
        SetWindowPos(view, nullptr, 0, 0, 200, 200, SWP_NOZORDER | SWP_SHOWWINDOW);
        list = GetWindow(view, GW_CHILD);
    }
    ~PickView() override {
        if (IsWindow(view)) DestroyWindow(view);
        host::ResetApplication();
    }

    std::vector<std::wstring> Rows() const {
        std::vector<std::wstring> rows;
        for (LRESULT row = 0; row < SendMessageW(list, LB_GETCOUNT, 0, 0); ++row) {
            wchar_t text[64] = {};
            SendMessageW(list, LB_GETTEXT, static_cast<WPARAM>(row),
                         reinterpret_cast<LPARAM>(text));
            rows.emplace_back(text);
        }
        return rows;
    }
    std::vector<int> SelectedRows() const {
        std::vector<int> rows(16);
        const LRESULT count =
            SendMessageW(list, LB_GETSELITEMS, 16, reinterpret_cast<LPARAM>(rows.data()));
        rows.resize(static_cast<std::size_t>(count));
        return rows;
    }
    // In the middle of a row.
    void OnRow(UINT message, int row) const {
        RECT place{};
        SendMessageW(list, LB_GETITEMRECT, static_cast<WPARAM>(row),
                     reinterpret_cast<LPARAM>(&place));
        Mouse(list, message, 20, static_cast<int>(place.top + place.bottom) / 2);
    }

    ControlStage stage;
    std::vector<host::Node*> nodes;
    HWND view = nullptr;
    HWND list = nullptr;
    PicksNodes callback;
};

TEST_F(PickView, ShowsTheNodesBelowTheirParents) {
    EXPECT_THAT(Rows(), ElementsAre(L"Box", L"Cone", L"Tube"));
    nodes[2]->SetParent(nodes[0]);
    host::App().scene.AddNode(MSTR(_M("Deep")), nodes[2]);
    host::RefreshPickView(view);
    EXPECT_THAT(Rows(), ElementsAre(L"Box", L"  Tube", L"    Deep", L"Cone"));
}

TEST_F(PickView, FollowsTheScene) {
    nodes[0]->SetName(MSTR(_M("Renamed")));
    host::App().scene.Remove(*nodes[1]);
    host::App().scene.AddNode(MSTR(_M("New")));
    // As its timer does.
    SendMessageW(view, WM_TIMER, 1, 0);
    EXPECT_THAT(Rows(), ElementsAre(L"Renamed", L"Tube", L"New"));
    host::App().scene.Clear();
    host::RefreshPickView(view);
    EXPECT_THAT(Rows(), IsEmpty());
    host::RefreshPickView(stage.window);
}

TEST_F(PickView, ItsSelectionIsTheScenes) {
    OnRow(WM_LBUTTONDOWN, 1);
    OnRow(WM_LBUTTONUP, 1);
    EXPECT_THAT(host::App().selection.Nodes(), ElementsAre(nodes[1]));
    host::App().selection.Set({nodes[2], nodes[0]});
    EXPECT_THAT(SelectedRows(), ElementsAre(0, 2));
    // Rows that move keep it.
    nodes[0]->SetParent(nodes[2]);
    host::RefreshPickView(view);
    EXPECT_THAT(Rows(), ElementsAre(L"Cone", L"Tube", L"  Box"));
    EXPECT_THAT(SelectedRows(), ElementsAre(1, 2));
}

TEST_F(PickView, AClickPicksWhatTheModeLetsThrough) {
    host::App().pickMode.Set(&callback);
    OnRow(WM_LBUTTONDOWN, 0);
    OnRow(WM_LBUTTONDOWN, 1);
    OnRow(WM_LBUTTONDBLCLK, 0);
    OnRow(WM_LBUTTONDOWN, 2);
    // Below the last row.
    Mouse(list, WM_LBUTTONDOWN, 20, 190);
    EXPECT_THAT(callback.picked, ElementsAre(L"Box", L"Tube"));
    EXPECT_EQ(callback.left, 0);
    // What is picked isn't selected.
    EXPECT_THAT(host::App().selection.Nodes(), IsEmpty());
    EXPECT_THAT(SelectedRows(), IsEmpty());
}

TEST_F(PickView, AModeMayEndWithItsPick) {
    callback.once = true;
    host::App().pickMode.Set(&callback);
    OnRow(WM_LBUTTONDOWN, 0);
    EXPECT_EQ(callback.left, 1);
    OnRow(WM_LBUTTONDOWN, 2);
    OnRow(WM_LBUTTONUP, 2);
    EXPECT_THAT(callback.picked, ElementsAre(L"Box"));
    EXPECT_THAT(host::App().selection.Nodes(), ElementsAre(nodes[2]));
}

TEST_F(PickView, TheCursorTellsWhatCanBePicked) {
    host::App().pickMode.Set(&callback);
    OnRow(WM_MOUSEMOVE, 0);
    EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_CROSS));
    // The list itself doesn't take it back.
    EXPECT_TRUE(SendMessageW(list, WM_SETCURSOR, reinterpret_cast<WPARAM>(list),
                             MAKELPARAM(HTCLIENT, WM_MOUSEMOVE)));
    EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_CROSS));
    OnRow(WM_MOUSEMOVE, 1);
    EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_ARROW));
}

TEST_F(PickView, ANodeThatIsGoneIsNotPicked) {
    host::App().pickMode.Set(&callback);
    // Before the list is brought up to date.
    host::App().scene.Remove(*nodes[0]);
    OnRow(WM_LBUTTONDOWN, 0);
    EXPECT_THAT(callback.picked, IsEmpty());
}

TEST_F(PickView, TheKeyboardPicksToo) {
    host::App().pickMode.Set(&callback);
    EXPECT_TRUE(SendMessageW(list, WM_GETDLGCODE, 0, 0) & DLGC_WANTALLKEYS);
    SendMessageW(list, LB_SETCARETINDEX, 2, 0);
    Key(list, WM_KEYDOWN, VK_RETURN);
    SendMessageW(list, LB_SETCARETINDEX, 0, 0);
    Key(list, WM_KEYDOWN, VK_SPACE);
    EXPECT_THAT(callback.picked, ElementsAre(L"Tube", L"Box"));
    Key(list, WM_KEYDOWN, VK_ESCAPE);
    EXPECT_EQ(callback.left, 1);
    EXPECT_FALSE(SendMessageW(list, WM_GETDLGCODE, 0, 0) & DLGC_WANTALLKEYS);
}

TEST_F(PickView, ARightClickEndsTheMode) {
    host::App().pickMode.Set(&callback);
    OnRow(WM_RBUTTONDOWN, 0);
    EXPECT_EQ(callback.left, 0);
    OnRow(WM_RBUTTONUP, 0);
    EXPECT_EQ(callback.left, 1);
    EXPECT_EQ(host::App().pickMode.Callback(), nullptr);
}

TEST_F(PickView, TheEscapeKeyEndsTheModeFromAnywhere) {
    const MSG escape{stage.window, WM_KEYDOWN, VK_ESCAPE, 0, 0, {}};
    const MSG enter{stage.window, WM_KEYDOWN, VK_RETURN, 0, 0, {}};
    EXPECT_FALSE(host::EndPickMode(escape));
    host::App().pickMode.Set(&callback);
    EXPECT_FALSE(host::EndPickMode(enter));
    EXPECT_EQ(callback.left, 0);
    EXPECT_TRUE(host::EndPickMode(escape));
    EXPECT_EQ(callback.left, 1);
}

TEST_F(PickView, ARightClickEndsTheModeFromAnywhere) {
    const MSG down{stage.window, WM_RBUTTONDOWN, 0, 0, 0, {}};
    const MSG up{stage.window, WM_RBUTTONUP, 0, 0, 0, {}};
    EXPECT_FALSE(host::EndPickMode(down));
    EXPECT_FALSE(host::EndPickMode(up));
    host::App().pickMode.Set(&callback);
    EXPECT_TRUE(host::EndPickMode(down));
    EXPECT_EQ(callback.left, 0);
    EXPECT_TRUE(host::EndPickMode(up));
    EXPECT_EQ(callback.left, 1);
}

TEST_F(PickView, ASelectionOfAWholeLargeSceneIsShownWhole) {
    for (int i = 0; i < 20'000; ++i)
        nodes.push_back(&host::App().scene.AddNode(MSTR(_M("Leaf"))));
    host::RefreshPickView(view);
    host::App().selection.Set(nodes);
    EXPECT_EQ(SendMessageW(list, LB_GETSELCOUNT, 0, 0), 20'003);
    host::App().selection.Set({nodes[1], nodes[3], nodes[4], nodes[20'002]});
    EXPECT_THAT(SelectedRows(), ElementsAre(1, 3, 4, 20'002));
}

TEST_F(PickView, RowsBeyondTheReachOfAWordArePickedToo) {
    for (int i = 0; i < 65'600; ++i)
        host::App().scene.AddNode(MSTR(_M("Leaf")));
    host::App().scene.AddNode(MSTR(_M("Last")));
    host::RefreshPickView(view);
    ASSERT_EQ(SendMessageW(list, LB_GETCOUNT, 0, 0), 65'604);
    SendMessageW(list, LB_SETTOPINDEX, 65'603, 0);
    host::App().pickMode.Set(&callback);
    OnRow(WM_LBUTTONDOWN, 65'603);
    EXPECT_THAT(callback.picked, ElementsAre(L"Last"));
}

TEST_F(PickView, TheModeEndsWithTheView) {
    host::App().pickMode.Set(&callback);
    DestroyWindow(view);
    EXPECT_EQ(callback.left, 1);
    EXPECT_EQ(host::App().pickMode.Callback(), nullptr);
}

TEST_F(PickView, WithoutAViewNothingIsFound) {
    HWND gone = list;
    DestroyWindow(view);
    EXPECT_EQ(host::TheCoreInterface().PickNode(gone, {20, 5}, nullptr), nullptr);
    EXPECT_EQ(host::TheCoreInterface().PickNode(stage.window, {20, 5}, nullptr), nullptr);
}

TEST_F(PickView, AnyNumberOfViewsLeavesNothingBehind) {
    const auto liveAndDie = [&] {
        HWND other = host::CreatePickView(stage.window, 8);
        SetWindowPos(other, nullptr, 0, 0, 100, 50, SWP_NOZORDER | SWP_SHOWWINDOW);
        host::App().pickMode.Set(&callback);
        Mouse(GetWindow(other, GW_CHILD), WM_MOUSEMOVE);
        DestroyWindow(other);
    };
    // What the system keeps of the first.
    for (int i = 0; i < 3; ++i)
        liveAndDie();
    const ObjectCounts before = CountObjects();
    const std::size_t registered = host::App().notifications.Registrations().size();
    const int rounds = LeakRounds();
    for (int i = 0; i < rounds; ++i)
        liveAndDie();
    EXPECT_EQ(CountObjects(), before);
    EXPECT_EQ(host::App().notifications.Registrations().size(), registered);
    EXPECT_EQ(callback.left, 3 + rounds);
}

}  // namespace

#include "ui/win32/list_splitter.h"

#include "plugin/config_file.h"
#include "tests/host/win32/object_counts.h"
#include "tests/ui/win32/list_stage.h"

namespace {

struct SplitList {
    MapID map;
    int list;
    const MCHAR* key;
};

class ListSplitterTest : public ListTest, public testing::WithParamInterface<SplitList> {
  protected:
    static plugin::ConfigFile Config() {
        plugin::ConfigFile config;
        config.SetSection(_M("UserInterface"));
        return config;
    }
    static void Store(std::uint32_t height) { Config().WriteInt(GetParam().key, height); }
    // 0 for none.
    static std::uint32_t Stored() {
        std::uint32_t height = 0;
        return Config().ReadInt(GetParam().key, height) ? height : 0;
    }
    HWND List() { return Control(GetParam().map, GetParam().list); }
    HWND Splitter() { return Control(GetParam().map, 1080); }
    HWND Frame() { return Control(GetParam().map, 65535); }
    // Of the rollup's dialog, as the window of the rollups has it.
    int PageHeight() {
        IRollupWindow* rollups = place->GetRollupWindow();
        return rollups->GetPageDlgHeight(rollups->GetPanelIndex(Dialog(GetParam().map)));
    }
    // The rollup is the one that is seen, from the top of the window.
    void Show() {
        IRollupWindow* rollups = place->GetRollupWindow();
        const int own = rollups->GetPanelIndex(Dialog(GetParam().map));
        for (int i = 0; i < rollups->GetNumPanels(); ++i)
            rollups->SetPanelOpen(i, i == own);
    }
    // What lies in the dialog, in its pixels.
    struct Layout {
        int list;
        int page;
        int frame;
        int splitter;
        bool operator==(const Layout&) const = default;
        friend void PrintTo(const Layout& layout, std::ostream* out) {
            *out << "list " << layout.list << " page " << layout.page << " frame " << layout.frame
                 << " splitter at " << layout.splitter;
        }
    };
    Layout Now() {
        return {HeightOf(List()), PageHeight(), HeightOf(Frame()),
                static_cast<int>(PlaceOf(Splitter()).top)};
    }
    static Layout Higher(const Layout& layout, int by) {
        return {layout.list + by, layout.page + by, layout.frame + by, layout.splitter + by};
    }
};

INSTANTIATE_TEST_SUITE_P(Lists, ListSplitterTest,
                         testing::Values(SplitList{1, 1043, _M("REListViewHeight")},
                                         SplitList{5, 1153, _M("MaxLayersListViewHeight")},
                                         SplitList{7, 1192, _M("SelSetsListViewHeight")}));

TEST_P(ListSplitterTest, LiesBelowItsList) {
    Open();
    const RECT list = PlaceOf(List());
    const RECT splitter = PlaceOf(Splitter());
    EXPECT_EQ(splitter.left, list.left + 30);
    EXPECT_EQ(splitter.right, list.right - 30);
    EXPECT_EQ(splitter.top, list.bottom);
    EXPECT_EQ(splitter.bottom, list.bottom + 6);
    EXPECT_EQ(Stored(), 0U) << "nobody dragged it";
}

TEST_P(ListSplitterTest, MakesItsListHigherAndLower) {
    Open();
    Show();
    const Layout before = Now();
    Drag(Splitter(), {10, 50, 40});
    EXPECT_EQ(Now(), Higher(before, 40));
    EXPECT_EQ(Stored(), static_cast<std::uint32_t>(before.list + 40));
    EXPECT_EQ(PlaceOf(List()).bottom, PlaceOf(Splitter()).top);
    Drag(Splitter(), {-25});
    EXPECT_EQ(Now(), Higher(before, 15));
    EXPECT_EQ(Stored(), static_cast<std::uint32_t>(before.list + 15));
    Close();
    Open();
    EXPECT_EQ(Now(), Higher(before, 15)) << "the next time too";
}

TEST_P(ListSplitterTest, DoesNothingWithoutAMove) {
    Open();
    Show();
    const Layout before = Now();
    Drag(Splitter(), {0});
    Drag(Splitter(), {20, 0});
    EXPECT_EQ(Now(), before);
    EXPECT_EQ(Stored(), 0U);
}

TEST_P(ListSplitterTest, MakesItsListNoLowerThan39Pixels) {
    Open();
    Show();
    const Layout before = Now();
    Drag(Splitter(), {-500});
    EXPECT_EQ(Now(), Higher(before, 39 - before.list));
    EXPECT_EQ(Stored(), 39U);
    EXPECT_EQ(HeightOf(List()), 39);
}

TEST_P(ListSplitterTest, MakesItsListNoHigherThanThePanelShows) {
    Open();
    Show();
    RECT panel{};
    GetWindowRect(rollupWindow, &panel);
    Drag(Splitter(), {2000});
    RECT list{};
    GetWindowRect(List(), &list);
    EXPECT_EQ(list.bottom, panel.bottom);
    EXPECT_EQ(Stored(), static_cast<std::uint32_t>(list.bottom - list.top));
}

TEST_P(ListSplitterTest, HasTheMouseWhileItIsDragged) {
    Open();
    Show();
    const Layout before = Now();
    SendMessageW(Splitter(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(10, 3));
    EXPECT_EQ(GetCapture(), Splitter());
    SendMessageW(Splitter(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(10, 33));
    EXPECT_EQ(Now(), before) << "nothing moves yet";
    SendMessageW(Splitter(), WM_LBUTTONUP, 0, MAKELPARAM(10, 33));
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_EQ(Now(), Higher(before, 30));
}

TEST_P(ListSplitterTest, GivesADragUpThatIsInterrupted) {
    Open();
    Show();
    const Layout before = Now();
    SendMessageW(Splitter(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(10, 3));
    SendMessageW(Splitter(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(10, 33));
    ReleaseCapture();
    SendMessageW(Splitter(), WM_MOUSEMOVE, 0, MAKELPARAM(10, 53));
    SendMessageW(Splitter(), WM_LBUTTONUP, 0, MAKELPARAM(10, 53));
    EXPECT_EQ(Now(), before);
    EXPECT_EQ(Stored(), 0U);
}

COLORREF ScreenPixel(int x, int y) {
    HDC screen = GetDC(nullptr);
    const COLORREF color = GetPixel(screen, x, y);
    ReleaseDC(nullptr, screen);
    return color;
}

TEST_P(ListSplitterTest, DrawsABarAtTheListsBottomThatGoesAgain) {
    Open();
    Show();
    RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    RECT list{};
    GetWindowRect(List(), &list);
    const int x = list.left + 40;
    const auto pixels = [&](int y) {
        return std::vector<COLORREF>{ScreenPixel(x, y - 1), ScreenPixel(x, y),
                                     ScreenPixel(x, y + 1), ScreenPixel(x, y + 2)};
    };
    const auto inverted = [](std::vector<COLORREF> colors) {
        for (const std::size_t row : {1U, 2U})
            colors[row] ^= RGB(255, 255, 255);
        return colors;
    };
    const int bottom = list.bottom;
    const std::vector<COLORREF> atBottom = pixels(bottom);
    const std::vector<COLORREF> above = pixels(bottom - 20);
    SendMessageW(Splitter(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(10, 3));
    EXPECT_EQ(pixels(bottom), inverted(atBottom));
    SendMessageW(Splitter(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(10, -17));
    EXPECT_EQ(pixels(bottom), atBottom);
    EXPECT_EQ(pixels(bottom - 20), inverted(above));
    SendMessageW(Splitter(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(30, -17));
    EXPECT_EQ(pixels(bottom - 20), inverted(above)) << "it stays";
    ReleaseCapture();
    EXPECT_EQ(pixels(bottom - 20), above);
}

TEST_P(ListSplitterTest, GivesItsListTheStoredHeight) {
    Open();
    const Layout before = Now();
    Close();
    for (const int height : {39, 300, 800}) {
        Store(static_cast<std::uint32_t>(height));
        Open();
        EXPECT_EQ(Now(), Higher(before, height - before.list)) << height;
        Close();
    }
}

TEST_P(ListSplitterTest, IgnoresAStoredHeightBeyondTheLimits) {
    Open();
    const Layout before = Now();
    Close();
    for (const std::uint32_t height : {38U, 0U, 801U, 0x80000000U}) {
        Store(height);
        Open();
        EXPECT_EQ(Now(), before) << height;
        Close();
    }
}

TEST_P(ListSplitterTest, LeavesNothingBehindWhenTheDialogGoesDuringADrag) {
    Open();
    Close();
    const ObjectCounts before = CountObjects();
    Open();
    SendMessageW(Splitter(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(10, 3));
    Close();
    EXPECT_EQ(CountObjects(), before);
}

}  // namespace

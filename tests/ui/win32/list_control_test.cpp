#include "ui/win32/list_control.h"

#include <numeric>

#include "host/win32/ui_scale.h"
#include "tests/host/win32/control_stage.h"
#include "tests/host/win32/object_counts.h"
#include "tests/ui/win32/list_stage.h"
#include "ui/win32/panel_pictures.h"

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

// A list that nobody answers for.
class ListControlTest : public PanelTest {
  protected:
    HWND MakeList() const {
        HWND list = stage.Add(WC_LISTVIEWW, 7, L"",
                              LVS_REPORT | LVS_SINGLESEL | LVS_SHAREIMAGELISTS, {0, 0, 300, 120});
        ui::SetUpList(list, ui::elementList, ui::CheckPictures());
        return list;
    }
    static std::vector<int> Parameters(HWND list) {
        std::vector<int> parameters;
        for (int row = 0; row < RowsOf(list); ++row) {
            LVITEMW item{};
            item.mask = LVIF_PARAM;
            item.iItem = row;
            ListView_GetItem(list, &item);
            parameters.push_back(static_cast<int>(item.lParam));
        }
        return parameters;
    }
    ~ListControlTest() override {
        DestroyWindow(stage.window);
        ui::DropCheckPictures();
    }

    ControlStage stage;
};

TEST_F(ListControlTest, HasColumnsAsWideAsTheHostsScaleSays) {
    host::SetUIScaleFactor(1.5F);
    HWND list = MakeList();
    host::SetUIScaleFactor(1.0F);
    std::vector<int> widths;
    for (const ShownColumn& column : ColumnsOf(list))
        widths.push_back(column.width);
    EXPECT_THAT(widths, ElementsAre(180, 63, 129, 62));
}

TEST_F(ListControlTest, HasTheRowsThatItIsToldWithTheirNumbers) {
    HWND list = MakeList();
    for (const int rows : {3, 5, 0, 2, 2, 1, 40}) {
        ui::FillList(list, ui::elementList, rows);
        std::vector<int> numbers(static_cast<std::size_t>(rows));
        std::iota(numbers.begin(), numbers.end(), 0);
        EXPECT_THAT(Parameters(list), ElementsAreArray(numbers));
        EXPECT_EQ(ui::RowCount(list), rows);
    }
}

TEST_F(ListControlTest, AsksForAllTextsOfARow) {
    HWND list = MakeList();
    ui::FillList(list, ui::elementList, 1);
    for (int column = 0; column < 4; ++column) {
        LVITEMW item{};
        item.mask = LVIF_TEXT | LVIF_NORECOMPUTE;
        item.iSubItem = column;
        MCHAR buffer[8] = {};
        item.pszText = buffer;
        item.cchTextMax = 8;
        ListView_GetItem(list, &item);
        EXPECT_EQ(item.pszText, LPSTR_TEXTCALLBACKW) << column;
    }
}

TEST_F(ListControlTest, SelectsNothingWhenItIsFilledAnew) {
    HWND list = MakeList();
    ui::FillList(list, ui::elementList, 3);
    EXPECT_EQ(ui::SelectedRow(list), -1);
    ui::SelectRow(list, 2, LVIS_SELECTED | LVIS_FOCUSED);
    EXPECT_EQ(ui::SelectedRow(list), 2);
    ui::FillList(list, ui::elementList, 3);
    EXPECT_EQ(ui::SelectedRow(list), -1);
    EXPECT_EQ(ListView_GetNextItem(list, -1, LVNI_FOCUSED), -1);
}

TEST_F(ListControlTest, StaysWhereItIsScrolledToWhenItIsFilledAnew) {
    HWND list = MakeList();
    ui::FillList(list, ui::elementList, 100);
    ListView_EnsureVisible(list, 99, FALSE);
    ListView_EnsureVisible(list, 50, FALSE);
    ASSERT_EQ(ListView_GetTopIndex(list), 50);
    ui::FillList(list, ui::elementList, 101);
    EXPECT_EQ(ListView_GetTopIndex(list), 50);
}

TEST_F(ListControlTest, LosesARowAndKeepsTheNumbersInARow) {
    HWND list = MakeList();
    ui::FillList(list, ui::elementList, 5);
    ui::RemoveRow(list, 1);
    EXPECT_THAT(Parameters(list), ElementsAre(0, 1, 2, 3));
    EXPECT_THAT(SelectedOf(list), IsEmpty());
    for (const int row : {3, 0, 0, 0})
        ui::RemoveRow(list, row);
    EXPECT_EQ(RowsOf(list), 0);
}

TEST_F(ListControlTest, KeepsTheSelectedRowWhenItLosesAnother) {
    HWND list = MakeList();
    ui::FillList(list, ui::elementList, 5);
    ui::SelectRow(list, 2, LVIS_SELECTED | LVIS_FOCUSED);
    ui::RemoveRow(list, 3);
    EXPECT_THAT(SelectedOf(list), ElementsAre(2));
    ui::RemoveRow(list, 0);
    EXPECT_THAT(SelectedOf(list), ElementsAre(1));
    EXPECT_EQ(ListView_GetNextItem(list, -1, LVNI_FOCUSED), 1);
    ui::RemoveRow(list, 1);
    EXPECT_THAT(SelectedOf(list), IsEmpty()) << "it is the one that went";
}

TEST_F(ListControlTest, FindsTheSelectedRowWhereverTheFocusIs) {
    HWND list = MakeList();
    ui::FillList(list, ui::elementList, 5);
    ui::SelectRow(list, 3, LVIS_SELECTED);
    EXPECT_EQ(ui::SelectedRow(list), 3);
    ui::SelectRow(list, 1, LVIS_FOCUSED);
    EXPECT_EQ(ui::SelectedRow(list), 3);
    ListView_SetItemState(list, 3, 0, LVIS_SELECTED);
    EXPECT_EQ(ui::SelectedRow(list), -1);
}

TEST_F(ListControlTest, IsRedrawnOnceForARunOfChanges) {
    HWND list = MakeList();
    UpdateWindow(list);
    ValidateRect(list, nullptr);
    const std::function<void()> redraw = ui::RedrawOnce(list);
    EXPECT_FALSE(GetUpdateRect(list, nullptr, FALSE));
    redraw();
    EXPECT_TRUE(GetUpdateRect(list, nullptr, FALSE));
    ValidateRect(list, nullptr);
    redraw();
    EXPECT_FALSE(GetUpdateRect(list, nullptr, FALSE));
}

TEST_F(ListControlTest, DrawsAgainAfterItWasFilled) {
    HWND list = MakeList();
    ui::FillList(list, ui::elementList, 1);
    UpdateWindow(list);
    ui::RedrawList(list);
    RECT dirty{};
    EXPECT_TRUE(GetUpdateRect(list, &dirty, FALSE));
}

TEST_F(ListControlTest, GivesWhatIsAskedForAndNothingElse) {
    const auto text = [](int row, int column) {
        return host::FromUtf8("row " + std::to_string(row) + '.' + std::to_string(column));
    };
    const auto image = [](int row) { return row == 4 ? 2 : 1; };
    MCHAR buffer[16] = L"before";
    NMLVDISPINFOW asked{};
    asked.item.lParam = 4;
    asked.item.iSubItem = 3;
    asked.item.pszText = buffer;
    asked.item.cchTextMax = 16;
    ui::GiveRow(asked, text, image);
    EXPECT_STREQ(buffer, L"before");
    EXPECT_EQ(asked.item.state, 0U);
    asked.item.mask = LVIF_TEXT;
    ui::GiveRow(asked, text, image);
    EXPECT_STREQ(buffer, L"row 4.3");
    EXPECT_EQ(asked.item.state, 0U);
    asked.item.mask = LVIF_STATE;
    ui::GiveRow(asked, text, image);
    EXPECT_EQ(asked.item.state, 0x2000U);
    EXPECT_EQ(asked.item.stateMask, static_cast<UINT>(LVIS_STATEIMAGEMASK));
    asked.item.lParam = 0;
    ui::GiveRow(asked, text, image);
    EXPECT_EQ(asked.item.state, 0x1000U);
    asked.item.mask = LVIF_TEXT;
    asked.item.cchTextMax = 7;
    ui::GiveRow(asked, text, image);
    EXPECT_STREQ(buffer, L"") << "7 letters and the end don't fit";
}

TEST_F(ListControlTest, FindsWhatLiesUnderAClick) {
    HWND list = MakeList();
    ui::FillList(list, ui::elementList, 2);
    const auto hit = [&](POINT at) {
        NMITEMACTIVATE click{};
        click.hdr.hwndFrom = list;
        click.ptAction = at;
        return ui::HitOf(click);
    };
    const ui::RowHit box = hit(CheckBoxPoint(list, 1));
    EXPECT_EQ(box.row, 1);
    EXPECT_EQ(box.column, 0);
    EXPECT_EQ(box.flags, static_cast<UINT>(LVHT_ONITEMSTATEICON));
    const ui::RowHit cell = hit(CellPoint(list, 0, 2));
    EXPECT_EQ(cell.row, 0);
    EXPECT_EQ(cell.column, 2);
    EXPECT_TRUE(cell.flags & LVHT_ONITEM);
    EXPECT_EQ(hit(EmptyPoint(list)).row, -1);
    EXPECT_EQ(ui::CheckBoxOf(1).row, 1);
    EXPECT_EQ(ui::CheckBoxOf(1).column, 0);
    EXPECT_EQ(ui::CheckBoxOf(1).flags, box.flags);
}

TEST_F(ListControlTest, LeavesNothingOfTheSystemsBehind) {
    DestroyWindow(MakeList());
    const ObjectCounts before = CountObjects();
    for (int i = 0; i < 3; ++i)
        DestroyWindow(MakeList());
    EXPECT_EQ(CountObjects(), before);
}

}  // namespace

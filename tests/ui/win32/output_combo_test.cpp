#include "ui/win32/output_combo.h"

#include <icolorman.h>

#include "tests/host/win32/control_stage.h"
#include "tests/host/win32/object_counts.h"
#include "tests/ui/win32/panel_stage.h"

namespace {

constexpr int combos[] = {1105, 1106, 1109, 1152, 1190};
constexpr int itemWidth = 160;
constexpr int itemHeight = 20;

// Each picture of the strip is of one colour.
constexpr COLORREF PictureColor(int picture) {
    return RGB(10 + 40 * picture, 3, 250 - 40 * picture);
}

class OutputComboTest : public PanelTest {
  protected:
    OutputComboTest() {
        combo = stage.Add(L"COMBOBOX", 1152, L"",
                          CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS, {0, 0, 200, 200});
        for (const wchar_t* text : {L"Channels", L"Cut-out", L"", L"Luminance"})
            SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
        HDC screen = GetDC(nullptr);
        HDC dc = CreateCompatibleDC(screen);
        strip = CreateCompatibleBitmap(screen, 6 * 27, 18);
        ReleaseDC(nullptr, screen);
        HGDIOBJ former = SelectObject(dc, strip);
        for (int picture = 0; picture < 6; ++picture) {
            const RECT area{picture * 27, 0, (picture + 1) * 27, 18};
            HBRUSH brush = CreateSolidBrush(PictureColor(picture));
            FillRect(dc, &area, brush);
            DeleteObject(brush);
        }
        SelectObject(dc, former);
        DeleteDC(dc);
    }
    ~OutputComboTest() override { DeleteObject(strip); }

    Picture Drawn(UINT item, UINT state, HBITMAP pictures, UINT control = 1152) const {
        return PictureOf(itemWidth, itemHeight, RGB(255, 0, 255), [&](HDC dc) {
            DRAWITEMSTRUCT draw{};
            draw.CtlType = ODT_COMBOBOX;
            draw.CtlID = control;
            draw.itemID = item;
            draw.itemState = state;
            draw.hwndItem = combo;
            draw.hDC = dc;
            draw.rcItem = {0, 0, itemWidth, itemHeight};
            ui::DrawOutputItem(draw, pictures);
        });
    }
    static COLORREF Color(int which) { return GetColorManager()->CustSysColor(which); }

    ControlStage stage;
    HWND combo = nullptr;
    HBITMAP strip = nullptr;
};

TEST_F(OutputComboTest, HasItemsOfAtLeast20Pixels) {
    for (const int control : combos) {
        MEASUREITEMSTRUCT item{};
        item.CtlType = ODT_COMBOBOX;
        item.CtlID = static_cast<UINT>(control);
        item.itemHeight = 13;
        ui::MeasureOutputItem(item);
        EXPECT_EQ(item.itemHeight, 20U) << control;
        item.itemHeight = 27;
        ui::MeasureOutputItem(item);
        EXPECT_EQ(item.itemHeight, 27U) << control;
    }
    MEASUREITEMSTRUCT other{};
    other.CtlID = 1143;
    other.itemHeight = 13;
    ui::MeasureOutputItem(other);
    EXPECT_EQ(other.itemHeight, 13U);
}

TEST_F(OutputComboTest, HasThemInThePanelToo) {
    Open();
    for (const int control : combos) {
        const MapID map = control == 1152 ? 5 : control == 1190 ? 7 : 2;
        for (const int item : {-1, 0}) {
            EXPECT_GE(
                SendMessageW(Control(map, control), CB_GETITEMHEIGHT, static_cast<WPARAM>(item), 0),
                20)
                << control << " item " << item;
        }
    }
}

TEST_F(OutputComboTest, ShowsAPictureForEachItem) {
    const int pictures[] = {0, 2, 1, 0};
    for (UINT item = 0; item < 4; ++item) {
        const int picture = pictures[item];
        SCOPED_TRACE(item);
        // 27 by 18 of them, in the middle of the item's height.
        const Picture plain = Drawn(item, 0, strip);
        EXPECT_EQ(plain.Count(PictureColor(picture)), 27 * 18);
        EXPECT_EQ(plain.At(1, 1), PictureColor(picture));
        EXPECT_EQ(plain.At(27, 18), PictureColor(picture));
        EXPECT_EQ(Drawn(item, ODS_SELECTED, strip).Count(PictureColor(picture + 3)), 27 * 18);
        EXPECT_EQ(Drawn(item, ODS_DISABLED, strip).Count(PictureColor(picture + 3)), 27 * 18);
    }
}

TEST_F(OutputComboTest, DrawsInTheHostsColours) {
    struct Painted {
        UINT state;
        int background;
        int text;
    };
    for (const Painted& look :
         {Painted{0, 5, 8}, Painted{ODS_SELECTED, 13, 8}, Painted{ODS_DISABLED, 15, 16},
          Painted{ODS_DISABLED | ODS_SELECTED, 15, 16}}) {
        SCOPED_TRACE(look.state);
        const Picture picture = Drawn(0, look.state, strip);
        EXPECT_EQ(picture.At(itemWidth - 1, 0), Color(look.background));
        EXPECT_EQ(picture.Count(RGB(255, 0, 255)), 0) << "all is painted";
        EXPECT_GT(picture.Count(Color(look.text)), 10);
    }
}

TEST_F(OutputComboTest, DrawsWithoutThePicturesWhenThereAreNone) {
    const Picture picture = Drawn(0, 0, nullptr);
    EXPECT_EQ(picture.At(5, 5), Color(5));
    EXPECT_GT(picture.Count(Color(8)), 10);
}

TEST_F(OutputComboTest, DrawsNoTextForAnItemWithoutOne) {
    const Picture picture = Drawn(2, 0, strip);
    EXPECT_EQ(picture.Count(Color(5)), itemWidth * itemHeight - 27 * 18);
}

TEST_F(OutputComboTest, DrawsOnlyTheBackgroundWithoutASelection) {
    const Picture picture = Drawn(static_cast<UINT>(-1), 0, strip);
    EXPECT_EQ(picture.Count(Color(5)), itemWidth * itemHeight);
}

TEST_F(OutputComboTest, LeavesOtherControlsAlone) {
    EXPECT_EQ(Drawn(0, 0, strip, 1143).Count(RGB(255, 0, 255)), itemWidth * itemHeight);
}

TEST_F(OutputComboTest, LeavesNothingOfTheSystemsBehind) {
    // The host keeps a brush of each colour.
    for (const UINT state : {0, ODS_SELECTED})
        Drawn(0, state, strip);
    const ObjectCounts before = CountObjects();
    for (int i = 0; i < 20; ++i)
        Drawn(static_cast<UINT>(i % 4), i % 2 ? ODS_SELECTED : 0, strip);
    EXPECT_EQ(CountObjects(), before);
}

TEST_F(OutputComboTest, DoesntEraseItsBackground) {
    ui::SetUpOutputCombo(nullptr);
    HDC dc = GetDC(combo);
    ui::SetUpOutputCombo(combo);
    EXPECT_EQ(SendMessageW(combo, WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc), 0), 1);
    ReleaseDC(combo, dc);
    EXPECT_EQ(SendMessageW(combo, CB_GETCOUNT, 0, 0), 4) << "all else goes its way";
}

// An item as the panel's dialog draws it.
class PanelComboTest : public OutputComboTest {
  protected:
    static Picture DrawnBy(HWND dialog, int control, UINT item) {
        return PictureOf(itemWidth, itemHeight, RGB(255, 0, 255), [&](HDC dc) {
            DRAWITEMSTRUCT draw{};
            draw.CtlType = ODT_COMBOBOX;
            draw.CtlID = static_cast<UINT>(control);
            draw.itemID = item;
            draw.hwndItem = GetDlgItem(dialog, control);
            draw.hDC = dc;
            draw.rcItem = {0, 0, itemWidth, itemHeight};
            SendMessageW(dialog, WM_DRAWITEM, static_cast<WPARAM>(control),
                         reinterpret_cast<LPARAM>(&draw));
        });
    }
    static std::vector<COLORREF> PicturePart(const Picture& item) {
        std::vector<COLORREF> pixels;
        for (int y = 1; y < 19; ++y) {
            for (int x = 1; x < 28; ++x)
                pixels.push_back(item.At(x, y));
        }
        return pixels;
    }
};

TEST_F(PanelComboTest, ShowsThePicturesOfTheResources) {
    Open();
    for (const int control : combos) {
        const MapID map = control == 1152 ? 5 : control == 1190 ? 7 : 2;
        HWND dialog = Dialog(map);
        const Picture channels = DrawnBy(dialog, control, 0);
        EXPECT_EQ(channels.Count(RGB(255, 0, 255)), 0) << control;
        EXPECT_NE(PicturePart(channels), PicturePart(DrawnBy(dialog, control, 1))) << control;
        EXPECT_EQ(PicturePart(channels), PicturePart(DrawnBy(dialog, control, 3))) << control;
    }
}

TEST_F(PanelComboTest, IsDrawnWhenItsEffectIsGoneToo) {
    Open();
    HWND dialog = Dialog(2);
    const Picture before = DrawnBy(dialog, 1105, 0);
    Host().effects.clear();
    const Picture after = DrawnBy(dialog, 1105, 0);
    EXPECT_EQ(PicturePart(after), PicturePart(before));
}

}  // namespace

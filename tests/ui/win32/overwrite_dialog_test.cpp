#include "ui/win32/overwrite_dialog.h"

#include "effect/confirm_overwrite.h"
#include "plugin/library_services.h"
#include "tests/ui/win32/modal_dialog.h"
#include "ui/resource.h"
#include "ui/win32/attach.h"

namespace {

using testing::ElementsAre;

constexpr const wchar_t* overwriteTitle = L"veltrane - File Exists";

class OverwriteDialog : public ModalDialogTest {
  protected:
    effect::OverwriteAnswer Ask(const std::string& path, const std::function<void(HWND)>& act) {
        effect::OverwriteAnswer answered{};
        const MSTR text = host::FromUtf8("Confirm overwriting:\n\n" + path + " ?");
        EXPECT_TRUE(InDialog(
            overwriteTitle, [&] { answered = ui::ShowOverwriteDialog(parent, text); }, act, IDNO));
        return answered;
    }
    // A control's left edge and width in the dialog's client area.
    static std::pair<int, int> Span(HWND dialog, int id) {
        RECT place = PlaceOf(GetDlgItem(dialog, id));
        MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
        return {place.left, place.right - place.left};
    }
};

TEST_F(OverwriteDialog, HasItsControlsUnderTheirTexts) {
    Ask("C:\\a.psd", [this](HWND dialog) {
        EXPECT_EQ(GetWindow(dialog, GW_OWNER), parent);
        EXPECT_EQ(WindowText(GetDlgItem(dialog, IDC_FILE_EXISTS_TEXT)),
                  "Confirm overwriting:\n\nC:\\a.psd ?");
        EXPECT_EQ(WindowText(GetDlgItem(dialog, IDYES)), "Yes");
        EXPECT_EQ(WindowText(GetDlgItem(dialog, IDNO)), "No");
        EXPECT_EQ(WindowText(GetDlgItem(dialog, IDC_DO_NOT_ASK)),
                  "Do not show this message anymore (for this session)");
        EXPECT_EQ(IsDlgButtonChecked(dialog, IDC_DO_NOT_ASK), BST_UNCHECKED);
        RECT wanted{0, 0, 264, 82};
        MapDialogRect(dialog, &wanted);
        RECT client{};
        GetClientRect(dialog, &client);
        EXPECT_EQ(client.right, wanted.right);
        EXPECT_EQ(client.bottom, wanted.bottom);
        EXPECT_THAT(TabOrder(dialog), ElementsAre(IDC_DO_NOT_ASK, IDYES, IDNO));
    });
}

TEST_F(OverwriteDialog, ShowsTheWarningIcon) {
    Ask("C:\\a.psd", [](HWND dialog) {
        auto* icon = reinterpret_cast<HICON>(
            SendDlgItemMessageW(dialog, IDC_FILE_EXISTS_ICON, STM_GETICON, 0, 0));
        EXPECT_EQ(icon, LoadImageW(nullptr, IDI_WARNING, IMAGE_ICON, 32, 32, LR_SHARED));
        ICONINFO info{};
        ASSERT_TRUE(GetIconInfo(icon, &info));
        BITMAP picture{};
        GetObjectW(info.hbmMask, sizeof picture, &picture);
        EXPECT_EQ(picture.bmWidth, 32);
        DeleteObject(info.hbmMask);
        if (info.hbmColor) DeleteObject(info.hbmColor);
    });
}

TEST_F(OverwriteDialog, OnlyItsButtonsCloseIt) {
    Ask("C:\\a.psd", [](HWND dialog) {
        const UINT state = GetMenuState(GetSystemMenu(dialog, FALSE), SC_CLOSE, MF_BYCOMMAND);
        EXPECT_NE(state, static_cast<UINT>(-1));
        EXPECT_TRUE(state & MF_GRAYED);
        Key(dialog, VK_ESCAPE);
        SendMessageW(dialog, WM_CLOSE, 0, 0);
        PumpMessages();
        EXPECT_TRUE(FindDialog(overwriteTitle));
        Click(dialog, IDNO);
        EXPECT_FALSE(FindDialog(overwriteTitle));
    });
}

TEST_F(OverwriteDialog, AnswersWithItsButtonAndTheTickCountsWithYesAlone) {
    struct Case {
        bool tick;
        int button;
        bool overwrite;
        bool askNoMore;
    };
    for (const Case& each : {Case{false, IDYES, true, false}, Case{false, IDNO, false, false},
                             Case{true, IDYES, true, true}, Case{true, IDNO, false, false}}) {
        const effect::OverwriteAnswer answered = Ask("C:\\a.psd", [&each](HWND dialog) {
            if (each.tick) Click(dialog, IDC_DO_NOT_ASK);
            Click(dialog, each.button);
        });
        EXPECT_EQ(answered.overwrite, each.overwrite) << each.button << each.tick;
        EXPECT_EQ(answered.askNoMore, each.askNoMore) << each.button << each.tick;
    }
}

TEST_F(OverwriteDialog, TheKeyboardStartsAtYes) {
    Ask("C:\\a.psd", [](HWND dialog) { EXPECT_EQ(GetFocus(), GetDlgItem(dialog, IDYES)); });
}

TEST_F(OverwriteDialog, TheEnterKeyIsYes) {
    EXPECT_TRUE(Ask("C:\\a.psd", [](HWND dialog) {
                    Key(dialog, VK_RETURN);
                    PumpMessages();
                }).overwrite);
}

TEST_F(OverwriteDialog, GrowsToTheWidthOfThePathAndTheButtonsStayInTheMiddle) {
    struct Places {
        int whole;
        std::pair<int, int> text;
        std::pair<int, int> yes;
        std::pair<int, int> no;
        int textWidth;
    };
    const auto placesFor = [this](const std::string& path) {
        Places places{};
        Ask(path, [&](HWND dialog) {
            places = {WidthOf(dialog), Span(dialog, IDC_FILE_EXISTS_TEXT), Span(dialog, IDYES),
                      Span(dialog, IDNO), 0};
            HWND control = GetDlgItem(dialog, IDC_FILE_EXISTS_TEXT);
            HDC device = GetDC(control);
            HGDIOBJ before = SelectObject(
                device, reinterpret_cast<HGDIOBJ>(SendMessageW(control, WM_GETFONT, 0, 0)));
            SIZE size{};
            const MSTR line = host::FromUtf8(path + " ?");
            GetTextExtentPoint32W(device, line.data(), line.Length(), &size);
            SelectObject(device, before);
            ReleaseDC(control, device);
            places.textWidth = static_cast<int>(size.cx);
        });
        return places;
    };
    const Places small = placesFor("C:\\a.psd");
    EXPECT_GT(small.text.second, small.textWidth);
    const Places large =
        placesFor("C:\\projects\\" + std::string(80, 'W') + "\\renders\\still.psd");
    const int growth = large.textWidth - small.text.second;
    ASSERT_GT(growth, 0);
    EXPECT_EQ(large.whole, small.whole + growth);
    EXPECT_EQ(large.text, std::pair(small.text.first, small.text.second + growth));
    EXPECT_EQ(large.yes, std::pair(small.yes.first + growth / 2, small.yes.second));
    EXPECT_EQ(large.no, std::pair(small.no.first + growth / 2, small.no.second));
}

TEST_F(OverwriteDialog, StaysOnTheScreenWhoseWidthAPathExceeds) {
    const std::string path = "C:\\projects\\" + std::string(900, 'W') + "\\still.psd";
    const effect::OverwriteAnswer answered = Ask(path, [&path](HWND dialog) {
        MONITORINFO screen{};
        screen.cbSize = sizeof screen;
        GetMonitorInfoW(MonitorFromWindow(dialog, MONITOR_DEFAULTTONEAREST), &screen);
        const RECT place = PlaceOf(dialog);
        EXPECT_GE(place.left, screen.rcWork.left);
        EXPECT_LE(place.right, screen.rcWork.right);
        EXPECT_GT(WidthOf(dialog), (screen.rcWork.right - screen.rcWork.left) * 9 / 10);
        const std::string shown = WindowText(GetDlgItem(dialog, IDC_FILE_EXISTS_TEXT));
        EXPECT_THAT(shown, testing::StartsWith("Confirm overwriting:\n\nC:\\projects\\WWW"));
        EXPECT_THAT(shown, testing::EndsWith("W...\\still.psd ?"));
        EXPECT_LT(shown.size(), path.size());
        const RECT no = PlaceOf(GetDlgItem(dialog, IDNO));
        EXPECT_LT(no.right, place.right);
        Click(dialog, IDYES);
    });
    EXPECT_TRUE(answered.overwrite);
}

TEST_F(OverwriteDialog, AsksOverTheHostsWindowUntilTheUserWantsNoFurtherQuestion) {
    ui::AttachPanel();
    Host().settings.mainWindow = parent;
    bool ask = true;
    const auto confirm = [&](const std::function<void(HWND)>& act) {
        bool confirmed = false;
        const bool asked = InDialog(
            overwriteTitle,
            [&] {
                confirmed =
                    effect::ConfirmOverwrite(effect->Services(), MSTR(_M("C:\\a.psd")), ask);
            },
            act, IDNO);
        return std::pair(asked, confirmed);
    };
    EXPECT_EQ(confirm([](HWND dialog) {
                  EXPECT_EQ(WindowText(GetDlgItem(dialog, IDC_FILE_EXISTS_TEXT)),
                            "Confirm overwriting:\n\nC:\\a.psd ?");
                  Click(dialog, IDC_DO_NOT_ASK);
                  Click(dialog, IDNO);
              }),
              std::pair(true, false));
    EXPECT_TRUE(ask);
    EXPECT_EQ(confirm([](HWND dialog) {
                  Click(dialog, IDC_DO_NOT_ASK);
                  Click(dialog, IDYES);
              }),
              std::pair(true, true));
    EXPECT_FALSE(ask);
    EXPECT_EQ(confirm([](HWND) {}), std::pair(false, true));
    Host().settings.mainWindow = nullptr;
}

}  // namespace

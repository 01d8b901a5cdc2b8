#include "host/win32/file_dialog.h"

#include <windows.h>

#include <commdlg.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

#include "host/application.h"
#include "tests/host/temporary_folder.h"
#include "tests/host/win32/control_stage.h"
#include "tests/host/win32/modal_stage.h"

namespace {

// Controls of the system's dialog.
constexpr int filterList = 0x470;
constexpr int nameList = 0x47c;
constexpr int nameEdit = 0x480;

FilterList DocumentFilters() {
    FilterList filters;
    for (const MCHAR* text : {_M("Photoshop Document (*.PSD)"), _M("*.psd"),
                              _M("Large Document Format (*.PSB)"), _M("*.psb")})
        filters.Append(text);
    return filters;
}

// The field is a list of former names too in newer dialogs.
HWND NameField(HWND dialog) {
    HWND list = GetDlgItem(dialog, nameList);
    return list ? list : GetDlgItem(dialog, nameEdit);
}

void PressButton(HWND dialog, int button) {
    PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
                 reinterpret_cast<LPARAM>(GetDlgItem(dialog, button)));
}

void ChooseFilter(HWND dialog, int filter) {
    SendDlgItemMessageW(dialog, filterList, CB_SETCURSEL, static_cast<WPARAM>(filter), 0);
    for (int code : {CBN_SELENDOK, CBN_SELCHANGE}) {
        SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(filterList, code),
                     reinterpret_cast<LPARAM>(GetDlgItem(dialog, filterList)));
    }
}

class FileDialog : public testing::Test {
  protected:
    // What the dialog gives when `act` stands in for the user.
    std::optional<MSTR> Ask(const MSTR& name, const std::function<void(HWND)>& act) {
        ModalUser user(act);
        std::optional<MSTR> chosen =
            host::AskSaveFileName({MSTR(_M("Save Document As")), name, MSTR(Folder().c_str()),
                                   DocumentFilters(), nullptr});
        EXPECT_EQ(user.dialogs, 1);
        return chosen;
    }
    std::wstring Folder() const { return folder.path.wstring(); }
    MSTR In(const wchar_t* name) const { return MSTR((folder.path / name).wstring()); }

    TemporaryFolder folder;
};

TEST_F(FileDialog, StartsWithTheNameAndItsFilter) {
    std::filesystem::create_directory(folder.path / "sub");
    std::wstring title;
    std::wstring name;
    LRESULT filter = -1;
    const std::optional<MSTR> chosen = Ask(In(L"sub\\shot.PSB"), [&](HWND dialog) {
        title = TextOf(dialog);
        name = TextOf(NameField(dialog));
        filter = SendDlgItemMessageW(dialog, filterList, CB_GETCURSEL, 0, 0);
        EXPECT_EQ(SendDlgItemMessageW(dialog, filterList, CB_GETCOUNT, 0, 0), 2);
        PressButton(dialog, IDOK);
    });
    EXPECT_EQ(title, L"Save Document As");
    EXPECT_EQ(name, L"shot.PSB");
    EXPECT_EQ(filter, 1);
    ASSERT_TRUE(chosen);
    EXPECT_EQ(*chosen, In(L"sub\\shot.PSB"));
}

TEST_F(FileDialog, ANameWithoutAFolderStartsInTheGivenOne) {
    const std::optional<MSTR> chosen =
        Ask(MSTR(_M("shot.psd")), [](HWND dialog) { PressButton(dialog, IDOK); });
    ASSERT_TRUE(chosen);
    EXPECT_EQ(*chosen, In(L"shot.psd"));
}

TEST_F(FileDialog, ANameWithoutAnExtensionGetsTheFilters) {
    for (const auto& [filter, expected] :
         {std::pair(0, L"other.psd"), std::pair(1, L"other.psb")}) {
        const std::optional<MSTR> chosen = Ask(In(L"shot.psd"), [filter = filter](HWND dialog) {
            ChooseFilter(dialog, filter);
            SetWindowTextW(NameField(dialog), L"other");
            PressButton(dialog, IDOK);
        });
        ASSERT_TRUE(chosen);
        EXPECT_STREQ(chosen->data(), In(expected).data());
    }
}

TEST_F(FileDialog, AnotherKindOfFileAloneChangesTheExtension) {
    const std::optional<MSTR> chosen = Ask(In(L"shot.psd"), [](HWND dialog) {
        ChooseFilter(dialog, 1);
        SetWindowTextW(NameField(dialog), L"shot.psd");
        PressButton(dialog, IDOK);
    });
    ASSERT_TRUE(chosen);
    EXPECT_STREQ(chosen->data(), In(L"shot.psb").data());
}

TEST_F(FileDialog, ANameKeepsAnExtensionOfTheFiltersAndGetsOneBehindAnyOther) {
    const FilterList filters = DocumentFilters();
    const auto with = [&](const MCHAR* name, int filter, int former) {
        return std::wstring(host::WithExtension(MSTR(name), filter, former, filters).data());
    };
    EXPECT_EQ(with(_M("C:\\a.b\\shot"), 0, 0), L"C:\\a.b\\shot.psd");
    EXPECT_EQ(with(_M("shot.v2"), 0, 0), L"shot.v2.psd");
    EXPECT_EQ(with(_M("shot.tif"), 1, 0), L"shot.tif.psb");
    EXPECT_EQ(with(_M("shot.PSD"), 0, 0), L"shot.PSD");
    EXPECT_EQ(with(_M("shot.psb"), 0, 0), L"shot.psb");
    EXPECT_EQ(with(_M("shot.psb"), 1, 0), L"shot.psb");
    EXPECT_EQ(with(_M("shot.Psd"), 1, 0), L"shot.psb");
    FilterList any;
    any.Append(_M("All Files"));
    any.Append(_M("*.*"));
    EXPECT_EQ(std::wstring(host::WithExtension(MSTR(_M("shot")), 0, 0, any).data()), L"shot");
}

TEST_F(FileDialog, AnExistingFileIsTakenWithoutAQuestion) {
    std::ofstream(folder.path / "shot.psd") << "text";
    const std::optional<MSTR> chosen =
        Ask(In(L"shot.psd"), [](HWND dialog) { PressButton(dialog, IDOK); });
    ASSERT_TRUE(chosen);
    EXPECT_EQ(*chosen, In(L"shot.psd"));
    EXPECT_EQ(std::filesystem::file_size(folder.path / "shot.psd"), 4U);
}

TEST_F(FileDialog, CancelGivesNothing) {
    EXPECT_FALSE(Ask(In(L"shot.psd"), [](HWND dialog) { PressButton(dialog, IDCANCEL); }));
    EXPECT_FALSE(std::filesystem::exists(folder.path / "shot.psd"));
}

TEST_F(FileDialog, AnImpossibleNameOpensTheDialogAllTheSame) {
    EXPECT_FALSE(Ask(MSTR(_M("a|b<c>.psd")), [](HWND dialog) { PressButton(dialog, IDCANCEL); }));
}

TEST_F(FileDialog, IsWhatTheHostAsksWith) {
    host::ResetApplication();
    host::App().fileDialogs = host::AskSaveFileName;
    const ModalUser user([](HWND dialog) { PressButton(dialog, IDOK); });
    MSTR name = In(L"shot.psd");
    MSTR start;
    FilterList filters = DocumentFilters();
    EXPECT_TRUE(
        GetCOREInterface8()->DoMaxSaveAsDialog(nullptr, MSTR(_M("Save")), name, start, filters));
    EXPECT_EQ(name, In(L"shot.psd"));
    host::ResetApplication();
}

TEST_F(FileDialog, APatternOfOneExtensionHasIt) {
    EXPECT_EQ(host::ExtensionOf(MSTR(_M("*.psd"))), MSTR(_M(".psd")));
    EXPECT_EQ(host::ExtensionOf(MSTR(_M("*.tar.gz"))), MSTR(_M(".tar.gz")));
    for (const MCHAR* pattern :
         {_M("*.*"), _M("*"), _M("*.psd;*.psb"), _M("*.p?d"), _M("shot.psd"), _M("*."), _M("")})
        EXPECT_EQ(host::ExtensionOf(MSTR(pattern)), MSTR());
}

TEST_F(FileDialog, ANamesFilterIsThatOfItsExtension) {
    const FilterList filters = DocumentFilters();
    EXPECT_EQ(host::FilterOf(MSTR(_M("C:\\out\\shot.psd")), filters), 0);
    EXPECT_EQ(host::FilterOf(MSTR(_M("C:\\out\\shot.PSB")), filters), 1);
    EXPECT_EQ(host::FilterOf(MSTR(_M("C:\\out.psb\\shot")), filters), 0);
    EXPECT_EQ(host::FilterOf(MSTR(_M("shot.exr")), filters), 0);
    EXPECT_EQ(host::FilterOf(MSTR(_M("")), FilterList()), 0);
}

}  // namespace

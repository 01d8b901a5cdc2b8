#include "ui/win32/about_box.h"

#include <algorithm>
#include <map>

#include "tests/ui/win32/modal_dialog.h"
#include "ui/about_texts.h"

namespace {

struct ShownText {
    std::string text;
    RECT place;
};

std::vector<ShownText> TextsOf(HWND dialog) {
    std::vector<ShownText> texts;
    for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        if (ClassOf(child) == "Static") texts.push_back({WindowText(child), PlaceOf(child)});
    }
    return texts;
}

class AboutBox : public ModalDialogTest {
  protected:
    // False when nothing opens.
    bool Open(const std::function<void(HWND)>& act) {
        return InDialog(
            L"About", [this] { ui::OpenAboutBox(parent); }, act, IDCANCEL);
    }
};

TEST_F(AboutBox, ShowsEachTextBesideItsLabel) {
    ASSERT_TRUE(Open([](HWND dialog) {
        const std::vector<ShownText> shown = TextsOf(dialog);
        const auto find = [&shown](const MCHAR* text) {
            return std::find_if(shown.begin(), shown.end(), [text](const ShownText& each) {
                return each.text == host::ToUtf8(text);
            });
        };
        LONG line = 0;
        for (const ui::AboutText& pair : ui::AboutTexts()) {
            const auto label = find(pair.label);
            const auto text = find(pair.text);
            ASSERT_NE(label, shown.end()) << host::ToUtf8(pair.label);
            ASSERT_NE(text, shown.end()) << host::ToUtf8(pair.text);
            EXPECT_LE(label->place.right, text->place.left);
            EXPECT_LE(label->place.top, text->place.top);
            EXPECT_LE(line, text->place.top);
            line = text->place.bottom;
        }
        EXPECT_LE(line, PlaceOf(GetDlgItem(dialog, IDOK)).top);
    }));
}

TEST_F(AboutBox, IsLargeEnoughForAllThatItShowsAndOpensInTheMiddleOfItsParent) {
    ASSERT_TRUE(Open([this](HWND dialog) {
        RECT client{};
        GetClientRect(dialog, &client);
        MapWindowPoints(dialog, nullptr, reinterpret_cast<POINT*>(&client), 2);
        for (HWND child = GetWindow(dialog, GW_CHILD); child;
             child = GetWindow(child, GW_HWNDNEXT)) {
            const RECT place = PlaceOf(child);
            EXPECT_GE(place.left, client.left);
            EXPECT_GE(place.top, client.top);
            EXPECT_LE(place.right, client.right);
            EXPECT_LE(place.bottom, client.bottom);
        }
        EXPECT_EQ(GetWindow(dialog, GW_OWNER), parent);
        const RECT own = PlaceOf(dialog);
        const RECT around = PlaceOf(parent);
        EXPECT_LE(std::abs((own.left + own.right) - (around.left + around.right)), 1);
        EXPECT_LE(std::abs((own.top + own.bottom) - (around.top + around.bottom)), 1);
    }));
}

TEST_F(AboutBox, ClosesWithItsButtonAndTheEscapeKey) {
    EXPECT_TRUE(Open([](HWND dialog) {
        Click(dialog, IDOK);
        EXPECT_FALSE(FindDialog(L"About"));
    }));
    EXPECT_TRUE(Open([](HWND dialog) {
        Key(dialog, VK_ESCAPE);
        PumpMessages();
        EXPECT_FALSE(FindDialog(L"About"));
    }));
}

// What the library does with texts other than the product's.
void ShowInAboutBox(HWND parent, std::initializer_list<ui::AboutText> texts) {
    HMODULE library = GetModuleHandleW(ui::aboutLibrary);
    ASSERT_TRUE(library);
    auto* address = reinterpret_cast<void (*)()>(GetProcAddress(library, ui::aboutFunctionName));
    reinterpret_cast<ui::AboutFunction>(address)(parent, texts.begin(),
                                                 static_cast<int>(texts.size()));
}

TEST_F(AboutBox, RowsUnderTheSameLabelAreOneGroup) {
    Open([](HWND) {});
    std::vector<ShownText> shown;
    EXPECT_TRUE(InDialog(
        L"About",
        [this] {
            ShowInAboutBox(parent, {{_M("One"), _M("first & only")},
                                    {_M("Two"), _M("second")},
                                    {_M("Two"), _M("third")},
                                    {_M("Three"), _M("fourth")}});
        },
        [&shown](HWND dialog) { shown = TextsOf(dialog); }, IDCANCEL));
    std::map<std::string, std::vector<RECT>> places;
    for (const ShownText& each : shown)
        places[each.text].push_back(each.place);
    ASSERT_EQ(shown.size(), 7U);
    ASSERT_EQ(places["Two"].size(), 1U);
    const LONG line = places["third"].at(0).top - places["second"].at(0).top;
    EXPECT_EQ(places["second"].at(0).top, places["Two"].at(0).top);
    EXPECT_EQ(places["second"].at(0).bottom, places["third"].at(0).top);
    // Groups keep a distance.
    EXPECT_GT(places["second"].at(0).top - places["first & only"].at(0).top, line);
    EXPECT_GT(places["fourth"].at(0).top - places["third"].at(0).top, line);
}

TEST_F(AboutBox, WithoutTextsItsButtonIsAllThereIs) {
    Open([](HWND) {});
    EXPECT_TRUE(InDialog(
        L"About", [this] { ShowInAboutBox(parent, {}); },
        [](HWND dialog) {
            EXPECT_TRUE(TextsOf(dialog).empty());
            EXPECT_TRUE(IsWindowVisible(GetDlgItem(dialog, IDOK)));
        },
        IDCANCEL));
}

}  // namespace

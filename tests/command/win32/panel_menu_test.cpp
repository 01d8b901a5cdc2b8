#include "command/win32/panel_menu.h"

#include <gtest/gtest.h>

#include <cctype>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

namespace command {
namespace {

// What stands behind each single "&".
std::set<char> MarkedLetters(const std::string& text) {
    std::set<char> letters;
    for (std::size_t at = 0; at + 1 < text.size(); ++at) {
        if (text[at] != '&') continue;
        const char next = text[++at];
        if (std::isalpha(static_cast<unsigned char>(next)) != 0) {
            letters.insert(static_cast<char>(std::tolower(static_cast<unsigned char>(next))));
        }
    }
    return letters;
}

std::string MenuText(HMENU menu, int place) {
    char text[128] = {};
    GetMenuStringA(menu, static_cast<UINT>(place), text, 128, MF_BYPOSITION);
    return text;
}

TEST(PanelMenu, HasLettersThatNoRollupTakes) {
    std::ifstream file(VELTRANE_SOURCE_DIR "/ui/veltrane.rc");
    std::string text{std::istreambuf_iterator<char>(file), {}};
    // Dialogs of their own, behind which no menu opens.
    const std::size_t dialogs = text.find("IDD_ADVANCED DIALOGEX");
    ASSERT_NE(dialogs, text.npos);
    text.resize(dialogs);
    const std::set<char> taken = MarkedLetters(text);
    ASSERT_TRUE(taken.contains('e')) << "\"&Enabled\"";
    HMENU bar = MakePanelMenu();
    for (int place = 0; place < GetMenuItemCount(bar); ++place) {
        for (const char letter : MarkedLetters(MenuText(bar, place)))
            EXPECT_FALSE(taken.contains(letter)) << MenuText(bar, place);
    }
    DestroyMenu(bar);
}

TEST(PanelMenu, EachItemOfAMenuHasALetterOfItsOwn) {
    HMENU bar = MakePanelMenu();
    ASSERT_GT(GetMenuItemCount(bar), 0);
    for (int menu = 0; menu < GetMenuItemCount(bar); ++menu) {
        HMENU items = GetSubMenu(bar, menu);
        std::set<char> seen;
        for (int place = 0; place < GetMenuItemCount(items); ++place) {
            const std::string text = MenuText(items, place);
            if (text.empty()) continue;
            const std::set<char> letters = MarkedLetters(text);
            ASSERT_EQ(letters.size(), 1U) << text;
            EXPECT_TRUE(seen.insert(*letters.begin()).second) << text;
        }
    }
    DestroyMenu(bar);
}

}  // namespace
}  // namespace command

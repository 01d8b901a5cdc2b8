#include "ui/about_texts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "host/text.h"

namespace {

using Rows = std::vector<std::pair<std::string, std::string>>;

// What the stand-in for the library was asked and shown.
std::string aboutAsked;
Rows aboutShown;
HWND aboutParent = nullptr;

void RecordAbout(HWND parent, const ui::AboutText* texts, int count) {
    aboutParent = parent;
    for (int i = 0; i < count; ++i)
        aboutShown.emplace_back(host::ToUtf8(texts[i].label), host::ToUtf8(texts[i].text));
}

ui::AboutFunction LoadAbout(const MCHAR* library, const char* function) {
    aboutAsked = host::ToUtf8(library) + "!" + function;
    return RecordAbout;
}

ui::AboutFunction LoadNoAbout(const MCHAR*, const char*) {
    return nullptr;
}

class AboutTexts : public testing::Test {
  protected:
    AboutTexts() {
        aboutAsked.clear();
        aboutShown.clear();
    }
};

TEST_F(AboutTexts, TheLibraryDrawsThemAll) {
    int window = 0;
    ui::OpenAbout(reinterpret_cast<HWND>(&window), LoadAbout);
    EXPECT_EQ(aboutAsked, "veltrane-about.dll!ShowAbout");
    EXPECT_EQ(aboutParent, reinterpret_cast<HWND>(&window));
    EXPECT_EQ(aboutShown.size(), ui::AboutTexts().size());
    ASSERT_GE(aboutShown.size(), 2U);
    EXPECT_EQ(aboutShown[0], (std::pair<std::string, std::string>{"Product", "veltrane"}));
    EXPECT_EQ(aboutShown[1], (std::pair<std::string, std::string>{"Version", "4.0.2"}));
    for (const auto& [label, text] : aboutShown) {
        EXPECT_NE(label, "");
        EXPECT_NE(text, "") << label;
    }
}

TEST_F(AboutTexts, WithoutTheLibraryNothingOpens) {
    ui::OpenAbout(nullptr, LoadNoAbout);
    EXPECT_TRUE(aboutShown.empty());
}

}  // namespace

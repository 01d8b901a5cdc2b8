#include "ui/shortened_path.h"

#include <gtest/gtest.h>

#include "host/text.h"

namespace {

// Each unit is ten pixels wide.
int TenPixelsAUnit(const MSTR& text) {
    return 10 * text.Length();
}

std::string Shortened(const std::string& path, int width) {
    return host::ToUtf8(ui::ShortenedPath(host::FromUtf8(path), width, TenPixelsAUnit));
}

TEST(ShortenedPath, APathThatFitsIsShownWhole) {
    EXPECT_EQ(Shortened("C:\\shots\\a.psd", 140), "C:\\shots\\a.psd");
    EXPECT_EQ(Shortened("", 0), "");
}

TEST(ShortenedPath, TheMiddleGivesWay) {
    EXPECT_EQ(Shortened("C:\\shots\\a.psd", 139), "C:\\s...\\a.psd");
    EXPECT_EQ(Shortened("C:\\projects\\film\\shot12.psd", 230), "C:\\projec...\\shot12.psd");
    EXPECT_EQ(Shortened("/projects/film/shot12.psd", 200), "/proje.../shot12.psd");
}

TEST(ShortenedPath, TheBeginningGivesWayBeforeTheFile) {
    EXPECT_EQ(Shortened("/projects/film/shot12.psd", 140), ".../shot12.psd");
    EXPECT_EQ(Shortened("/projects/film/shot12.psd", 149), ".../shot12.psd");
}

TEST(ShortenedPath, OfAFileThatIsTooLongTheEndIsShown) {
    EXPECT_EQ(Shortened("/projects/film/shot12.psd", 139), "...shot12.psd");
    EXPECT_EQ(Shortened("/projects/film/shot12.psd", 80), "...2.psd");
    EXPECT_EQ(Shortened("shot12.psd", 70), "....psd");
}

TEST(ShortenedPath, WithoutRoomOnlyTheDotsAreLeft) {
    for (const int width : {39, 30, 29, 0, -5})
        EXPECT_EQ(Shortened("/projects/shot12.psd", width), "...") << width;
}

TEST(ShortenedPath, ACharacterIsNotCutInTwo) {
    // Each of these is two units.
    EXPECT_EQ(Shortened("/\U0001F3AC\U0001F3AC/a.psd", 110), "/\U0001F3AC\U0001F3AC/a.psd");
    EXPECT_EQ(Shortened("/\U0001F3AC\U0001F3AC\U0001F3AC/a.psd", 120), "/\U0001F3AC.../a.psd");
    EXPECT_EQ(Shortened("/\U0001F3AC\U0001F3AC\U0001F3AC/a.psd", 110), "/.../a.psd");
    EXPECT_EQ(Shortened("\U0001F3AC\U0001F3AC.psd", 70), "....psd");
    EXPECT_EQ(Shortened("\U0001F3AC\U0001F3AC\U0001F3AC.psd", 90), "...\U0001F3AC.psd");
    EXPECT_EQ(Shortened("\U0001F3AC\U0001F3AC\U0001F3AC.psd", 80), "....psd");
}

}  // namespace

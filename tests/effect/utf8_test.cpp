#include "effect/utf8.h"

#include <gtest/gtest.h>

namespace {

using HostString = std::basic_string<MCHAR>;

TEST(Utf8, OfEveryLengthBecomesUnits) {
    EXPECT_EQ(effect::FromUtf8("A\xc3\xa4\xe2\x82\xac\xf0\x9f\x8e\xa8."),
              HostString(_M("A\u00e4\u20ac\U0001F3A8.")));
    EXPECT_EQ(effect::FromUtf8(""), HostString());
    EXPECT_EQ(effect::FromUtf8(nullptr), HostString());
    EXPECT_EQ(effect::FromUtf8("\x7f\xc2\x80\xdf\xbf\xe0\xa0\x80\xef\xbf\xbf"),
              HostString({0x7f, 0x80, 0x7ff, 0x800, 0xffff}));
    EXPECT_EQ(effect::FromUtf8("\xf0\x90\x80\x80\xf4\x8f\xbf\xbf"),
              HostString({0xd800, 0xdc00, 0xdbff, 0xdfff}));
}

TEST(Utf8, ThatIsBrokenIsReplacedByteForByte) {
    const auto broken = [](const char* text, int replaced) {
        HostString expected(static_cast<std::size_t>(replaced), MCHAR{0xFFFD});
        expected += _M("b");
        EXPECT_EQ(effect::FromUtf8((std::string(text) + "b").c_str()), expected) << text;
    };
    broken("\x80", 1);              // a byte that only follows
    broken("\xff", 1);              // a byte that is never there
    broken("\xe2\x82", 2);          // a character that ends early
    broken("\xc0\xaf", 2);          // written longer than needed
    broken("\xe0\x9f\xbf", 3);      // the same
    broken("\xf0\x8f\xbf\xbf", 4);  // the same
    broken("\xed\xa0\x80", 3);      // half of a pair
    broken("\xf4\x90\x80\x80", 4);  // beyond the last character
    EXPECT_EQ(effect::FromUtf8("\xf0\x9f\x8e"), HostString({0xFFFD, 0xFFFD, 0xFFFD}));
}

}  // namespace

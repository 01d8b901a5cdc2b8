#include "host/text.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace {

TEST(Text, EveryLengthOfUtf8GoesThereAndBack) {
    const std::string utf8 = "a\xc3\xa9\xe2\x82\xac\xf0\x9f\x98\x80";
    const MSTR text = host::FromUtf8(utf8);
    EXPECT_EQ(text, MSTR(_M("a\u00e9\u20ac\U0001f600")));
    EXPECT_EQ(text.Length(), 5);
    EXPECT_EQ(host::ToUtf8(text.data()), utf8);
}

TEST(Text, TheEndsOfEachRangeGoThereAndBack) {
    for (const char* utf8 :
         {"\x7f", "\xc2\x80", "\xdf\xbf", "\xe0\xa0\x80", "\xed\x9f\xbf", "\xee\x80\x80",
          "\xef\xbf\xbf", "\xf0\x90\x80\x80", "\xf4\x8f\xbf\xbf"}) {
        EXPECT_EQ(host::ToUtf8(host::FromUtf8(utf8).data()), utf8);
    }
}

TEST(Text, WhatIsNotUtf8BecomesReplacementCharacters) {
    const std::vector<std::pair<std::string, MSTR>> cases = {
        {"\x80", _M("\ufffd")},
        {"\xff"
         "a",
         _M("\ufffda")},
        {"\xc0\x80", _M("\ufffd\ufffd")},                      // overlong
        {"\xe0\x80\x80", _M("\ufffd\ufffd\ufffd")},            // overlong
        {"\xf0\x8f\xbf\xbf", _M("\ufffd\ufffd\ufffd\ufffd")},  // overlong
        {"\xed\xa0\x80", _M("\ufffd\ufffd\ufffd")},            // a surrogate
        {"\xf4\x90\x80\x80", _M("\ufffd\ufffd\ufffd\ufffd")},  // above U+10FFFF
        {"\xe2\x82", _M("\ufffd")},                            // breaks off at the end
        {"\xe2\x82"
         "a",
         _M("\ufffda")},                               // breaks off before a letter
        {"\xf0\x9f\x98\xc3\xa9", _M("\ufffd\u00e9")},  // breaks off before a lead byte
    };
    for (const auto& [utf8, expected] : cases) {
        EXPECT_EQ(host::FromUtf8(utf8), expected) << testing::PrintToString(utf8);
    }
}

TEST(Text, LoneSurrogatesBecomeReplacementCharacters) {
    const MCHAR lone[] = {0xd83d, _M('a'), 0xde00, 0xd83d, 0};
    EXPECT_EQ(host::ToUtf8(lone),
              "\xef\xbf\xbd"
              "a\xef\xbf\xbd\xef\xbf\xbd");
    EXPECT_FALSE(host::IsValidUtf16(lone));
    EXPECT_TRUE(host::IsValidUtf16(_M("\U0001f600")));
}

TEST(Text, NullIsTheEmptyText) {
    EXPECT_EQ(host::ToUtf8(nullptr), "");
}

TEST(Text, OnlyTheCaseOfAsciiLettersIsIgnored) {
    EXPECT_TRUE(host::EqualIgnoringAsciiCase(_M("Button"), _M("bUTTON")));
    EXPECT_FALSE(host::EqualIgnoringAsciiCase(_M("Button"), _M("Buttons")));
    EXPECT_FALSE(host::EqualIgnoringAsciiCase(_M("["), _M("{")));
    EXPECT_FALSE(host::EqualIgnoringAsciiCase(_M("\u00e9"), _M("\u00c9")));
}

}  // namespace

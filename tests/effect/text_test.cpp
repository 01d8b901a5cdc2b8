#include "effect/text.h"

#include <gtest/gtest.h>

namespace {

#ifndef _WIN32

using effect::AnsiText;
using effect::WideText;

TEST(Text, InAnsiIsTheTextItselfForASCII) {
    std::u16string all;
    std::string expected;
    for (char c = 1; c > 0 && c < 127; ++c) {
        all.push_back(static_cast<char16_t>(c));
        expected.push_back(c);
    }
    EXPECT_EQ(AnsiText(all.c_str()), expected);
}

TEST(Text, InAnsiIsLatin1FromA0On) {
    std::u16string all;
    std::string expected;
    for (int c = 0xA0; c <= 0xFF; ++c) {
        all.push_back(static_cast<char16_t>(c));
        expected.push_back(static_cast<char>(c));
    }
    EXPECT_EQ(AnsiText(all.c_str()), expected);
}

TEST(Text, InAnsiHasTheCodePagesCharactersFrom80To9F) {
    EXPECT_EQ(AnsiText(u"€‚ƒ„…†‡ˆ‰Š‹ŒŽ"), "\x80\x82\x83\x84\x85\x86\x87\x88\x89\x8A\x8B\x8C\x8E");
    EXPECT_EQ(AnsiText(u"‘’“”•–—˜™š›œžŸ"),
              "\x91\x92\x93\x94\x95\x96\x97\x98\x99\x9A\x9B\x9C\x9E\x9F");
}

TEST(Text, InAnsiHasAQuestionMarkForWhatTheCodePageLacks) {
    EXPECT_EQ(AnsiText(u"漢字"), "??");
    EXPECT_EQ(AnsiText(u"a\u0080b\u0081"), "a?b?");
    EXPECT_EQ(AnsiText(u"\u0100"), "?");
}

TEST(Text, InAnsiHasOneQuestionMarkForASurrogatePairAndOneForALoneHalf) {
    EXPECT_EQ(AnsiText(u"a🎨b"), "a?b");
    const char16_t loneHigh[] = {u'a', 0xD83C, u'b', 0};
    EXPECT_EQ(AnsiText(loneHigh), "a?b");
    const char16_t twoLow[] = {0xDFA8, 0xDFA8, 0};
    EXPECT_EQ(AnsiText(twoLow), "??");
    const char16_t highAtTheEnd[] = {u'a', 0xD83C, 0};
    EXPECT_EQ(AnsiText(highAtTheEnd), "a?");
}

TEST(Text, ThatIsNullOrEmptyIsEmpty) {
    EXPECT_EQ(AnsiText(nullptr), "");
    EXPECT_EQ(AnsiText(u""), "");
    EXPECT_EQ(WideText(nullptr), u"");
    EXPECT_EQ(WideText(u""), u"");
}

TEST(Text, InUTF16KeepsEveryUnit) {
    const char16_t units[] = {u'a', 0xD83C, 0x6F22, 0xFFFF, 0};
    EXPECT_EQ(WideText(units), units);
}

#else

TEST(Text, InAnsiHasAQuestionMarkForWhatTheCodePageLacks) {
    EXPECT_EQ(effect::AnsiText(L"plain"), "plain");
    EXPECT_EQ(effect::AnsiText(nullptr), "");
}

#endif

TEST(NumberText, IsDecimal) {
    EXPECT_EQ(effect::NumberText(0), MSTR(_M("0")));
    EXPECT_EQ(effect::NumberText(2147483647), MSTR(_M("2147483647")));
    EXPECT_EQ(effect::NumberText(-5), MSTR(_M("-5")));
}

}  // namespace

#include "host/exact_text.h"

#include <gtest/gtest.h>

namespace host {
namespace {

TEST(ExactText, IsUtf8WhereTheTextIsSound) {
    EXPECT_EQ(ToExactText(_M("a\u00fc\u20ac")), "a\xc3\xbc\xe2\x82\xac");
    EXPECT_EQ(ToExactText(_M("\xd83d\xde00!")), "\xf0\x9f\x98\x80!");
    EXPECT_EQ(ToExactText(_M("")), "");
    EXPECT_EQ(ToExactText(nullptr), "");
    EXPECT_EQ(FromExactText("a\xc3\xbc\xf0\x9f\x98\x80"), MSTR(_M("a\u00fc\xd83d\xde00")));
}

TEST(ExactText, LoneSurrogatesComeBack) {
    const MSTR texts[] = {_M("\xd800"), _M("a\xdfffz"), _M("\xd83d\xd83d\xde00"),
                          _M("\xde00\xd83d"), _M("\xdbff b\xdc00")};
    for (const MSTR& text : texts) {
        EXPECT_EQ(FromExactText(ToExactText(text)), text);
        EXPECT_TRUE(HasLoneSurrogate(ToExactText(text)));
    }
    EXPECT_EQ(ToExactText(_M("a\xd800z")), "a\xed\xa0\x80z");
    EXPECT_EQ(ToExactText(_M("\xdfff")), "\xed\xbf\xbf");
    EXPECT_FALSE(HasLoneSurrogate("\xed\x9f\xbf\xf0\x9f\x98\x80"));
}

TEST(ExactText, OtherBytesThatAreNoUtf8AreReplaced) {
    EXPECT_EQ(FromExactText("a\xffz"), MSTR(_M("a\xfffdz")));
    EXPECT_EQ(FromExactText("\xed\xa0"), MSTR(_M("\xfffd\xfffd")));
}

}  // namespace
}  // namespace host

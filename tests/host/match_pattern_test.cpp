// Names against patterns with wildcards.
#include <gtest/gtest.h>
#include <maxapi.h>

#include <string>

namespace {

TEST(MatchPattern, WithoutWildcardsTheWholeNameIsMeant) {
    EXPECT_TRUE(MatchPattern(_M("Box"), _M("Box")));
    EXPECT_FALSE(MatchPattern(_M("Box1"), _M("Box")));
    EXPECT_FALSE(MatchPattern(_M("Bo"), _M("Box")));
    EXPECT_FALSE(MatchPattern(_M("aBox"), _M("Box")));
    EXPECT_TRUE(MatchPattern(_M(""), _M("")));
    EXPECT_FALSE(MatchPattern(_M("a"), _M("")));
    EXPECT_FALSE(MatchPattern(_M(""), _M("a")));
}

TEST(MatchPattern, AStarIsAnyRunOfCharacters) {
    for (const MCHAR* pattern : {_M("*"), _M("Point*"), _M("*01"), _M("P*1"), _M("*int*"), _M("**"),
                                 _M("*Point01*"), _M("P*o*i*n*t*0*1"), _M("Point01*")}) {
        EXPECT_TRUE(MatchPattern(_M("Point01"), pattern));
    }
    for (const MCHAR* pattern : {_M("Point*2"), _M("*0"), _M("*x*"), _M("oint*"), _M("P*P*")}) {
        EXPECT_FALSE(MatchPattern(_M("Point01"), pattern));
    }
    EXPECT_TRUE(MatchPattern(_M(""), _M("*")));
    EXPECT_TRUE(MatchPattern(_M(""), _M("***")));
}

TEST(MatchPattern, AStarGivesBackWhatItTookTooMuch) {
    EXPECT_TRUE(MatchPattern(_M("aXbXbc"), _M("a*bc")));
    EXPECT_TRUE(MatchPattern(_M("abcabcabd"), _M("*abd")));
    EXPECT_TRUE(MatchPattern(_M("aab"), _M("*ab")));
    EXPECT_TRUE(MatchPattern(_M("mississippi"), _M("m*iss*p?")));
    EXPECT_FALSE(MatchPattern(_M("mississippi"), _M("m*issx*")));
}

TEST(MatchPattern, AQuestionMarkIsOneCharacter) {
    EXPECT_TRUE(MatchPattern(_M("Box1"), _M("Box?")));
    EXPECT_FALSE(MatchPattern(_M("Box"), _M("Box?")));
    EXPECT_FALSE(MatchPattern(_M("Box12"), _M("Box?")));
    EXPECT_TRUE(MatchPattern(_M("Box12"), _M("?o?*?")));
    EXPECT_FALSE(MatchPattern(_M(""), _M("?")));
}

TEST(MatchPattern, ACharacterOfTwoUnitsIsOne) {
    EXPECT_TRUE(MatchPattern(_M("a\U0001f600b"), _M("a?b")));
    EXPECT_FALSE(MatchPattern(_M("a\U0001f600b"), _M("a??b")));
    EXPECT_TRUE(MatchPattern(_M("\U0001f600\U0001f600"), _M("*?\U0001f600")));
    EXPECT_FALSE(MatchPattern(_M("\U0001f600"), _M("*??")));
    const MCHAR lone[] = {0xd83d, _M('b'), 0};
    EXPECT_TRUE(MatchPattern(lone, _M("?b")));
}

TEST(MatchPattern, CaseCountsOnlyWhenItIsAskedFor) {
    EXPECT_TRUE(MatchPattern(_M("POINT01"), _M("point*")));
    EXPECT_TRUE(MatchPattern(_M("\u00c9t\u00e9"), _M("\u00e9T\u00c9")));
    EXPECT_TRUE(MatchPattern(_M("\u0414\u043e\u043c"), _M("\u0434*\u041c")));
    EXPECT_FALSE(MatchPattern(_M("POINT01"), _M("point*"), false));
    EXPECT_TRUE(MatchPattern(_M("Point01"), _M("Point*"), false));
}

TEST(MatchPattern, WildcardsInTheNameAreCharacters) {
    EXPECT_TRUE(MatchPattern(_M("a*b"), _M("a?b")));
    EXPECT_FALSE(MatchPattern(_M("a*b"), _M("axb")));
    EXPECT_TRUE(MatchPattern(_M("*"), _M("?")));
}

TEST(MatchPattern, ManyStarsTakeNoTimeWorthSpeakingOf) {
    // With a search through all ways to share the text out among the stars this never ends.
    const MSTR text(std::basic_string<MCHAR>(2000, _M('a')));
    std::basic_string<MCHAR> pattern;
    for (int i = 0; i < 500; ++i) {
        pattern += _M("*a");
    }
    EXPECT_TRUE(MatchPattern(text, MSTR(pattern)));
    EXPECT_FALSE(MatchPattern(text, MSTR(pattern + _M("b"))));
}

}  // namespace

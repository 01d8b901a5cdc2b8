#include "host/user_properties.h"

#include <gtest/gtest.h>

namespace {

using host::FindUserPropertyBool;

std::optional<bool> Value(const MCHAR* value) {
    return FindUserPropertyBool(MSTR(_M("a = ")) + value, _M("a"));
}

TEST(UserProperties, ALineGivesItsValue) {
    EXPECT_EQ(FindUserPropertyBool(_M("opaque = true"), _M("opaque")), true);
    EXPECT_EQ(FindUserPropertyBool(_M("opaque=false"), _M("opaque")), false);
    EXPECT_EQ(FindUserPropertyBool(_M("\t opaque \t=\t 1 \t"), _M("opaque")), true);
}

TEST(UserProperties, TrueYesOnAndWholeNumbersButZeroAreTrue) {
    for (const MCHAR* value : {_M("true"), _M("TRUE"), _M("Yes"), _M("on"), _M("1"), _M("12"),
                               _M("-1"), _M("+1"), _M("007"), _M("99999999999999999999")}) {
        EXPECT_EQ(Value(value), true);
    }
    for (const MCHAR* value :
         {_M("false"), _M("no"), _M("off"), _M("0"), _M("00"), _M("-0"), _M("-"), _M(""), _M("1.5"),
          _M("0x1"), _M("truely"), _M("1 2"), _M("- 1"), _M("= true")}) {
        EXPECT_EQ(Value(value), false);
    }
}

TEST(UserProperties, ANameThatNoLineHasGivesNothing) {
    EXPECT_EQ(FindUserPropertyBool(_M(""), _M("a")), std::nullopt);
    for (const MCHAR* text : {_M("ab = 1"), _M("a"), _M("a 1"), _M("b = a"), _M("xa = 1"),
                              _M("a b = 1"), _M("b = 1\n\n")}) {
        EXPECT_EQ(FindUserPropertyBool(text, _M("a")), std::nullopt);
    }
}

TEST(UserProperties, NamesAreComparedWithoutCaseAndBlanks) {
    EXPECT_EQ(FindUserPropertyBool(_M("OPAQUE = 1"), _M("opaque")), true);
    EXPECT_EQ(FindUserPropertyBool(_M("opaque = 1"), _M(" Opaque ")), true);
    EXPECT_EQ(FindUserPropertyBool(_M("\u00c9t\u00e9 = 1"), _M("\u00e9t\u00e9")), true);
}

TEST(UserProperties, TheFirstLineOfTheNameCounts) {
    EXPECT_EQ(FindUserPropertyBool(_M("b = 1\na = 0\na = 1"), _M("a")), false);
}

TEST(UserProperties, LinesEndInEveryUsualWay) {
    for (const MCHAR* text : {_M("b = 0\na = 1\nc = 0"), _M("b = 0\r\na = 1\r\nc = 0"),
                              _M("b = 0\ra = 1\rc = 0"), _M("\n\n\na = 1\n"), _M("a = 1\r\n")}) {
        EXPECT_EQ(FindUserPropertyBool(text, _M("a")), true);
    }
}

}  // namespace

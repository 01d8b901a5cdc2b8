// Words and numbers, as writers of all kinds spell them.

#include "psdfile/cube_words.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <optional>
#include <random>
#include <sstream>
#include <string>
#include <string_view>

namespace psdfile {
namespace {

std::optional<double> Number(std::string_view text) {
    double number = 0;
    if (!TakeNumber(text, number)) return std::nullopt;
    return number;
}

std::optional<int> Integer(std::string_view text) {
    int number = 0;
    if (!TakeNumber(text, number)) return std::nullopt;
    return number;
}

TEST(CubeWords, AreTakenOffTheFrontWithTheBlanksBefore) {
    std::string_view text = " \tDOMAIN_MIN \v\f 0 1\r";
    EXPECT_EQ(TakeWord(text), "DOMAIN_MIN");
    EXPECT_EQ(text, " \v\f 0 1\r");
    EXPECT_EQ(TakeWord(text), "0");
    EXPECT_EQ(TakeWord(text), "1");
    EXPECT_EQ(text, "\r");
    EXPECT_EQ(TakeWord(text), "");
    EXPECT_EQ(text, "");
    EXPECT_EQ(TakeWord(text), "");
}

TEST(CubeWords, HoldZeroBytesAndWhatIsNotASCII) {
    const std::string zero("a\0b c", 5);
    std::string_view text = zero;
    EXPECT_EQ(TakeWord(text), std::string_view("a\0b", 3));
    text = "\xC3\xA9\xC2\xA0z";
    EXPECT_EQ(TakeWord(text), "\xC3\xA9\xC2\xA0z");
}

TEST(CubeNumbers, LeaveTheRestOfTheText) {
    std::string_view text = "  0.25\t-1 rest";
    double number = 0;
    EXPECT_TRUE(TakeNumber(text, number));
    EXPECT_EQ(number, 0.25);
    EXPECT_EQ(text, "\t-1 rest");
    EXPECT_TRUE(TakeNumber(text, number));
    EXPECT_EQ(number, -1);
    EXPECT_EQ(text, " rest");
    EXPECT_FALSE(TakeNumber(text, number));
    EXPECT_EQ(text, " rest");
}

TEST(CubeNumbers, MayHaveASignAPointAndAnExponent) {
    EXPECT_EQ(Number("1"), 1);
    EXPECT_EQ(Number("+0.5"), 0.5);
    EXPECT_EQ(Number("-0.5"), -0.5);
    EXPECT_EQ(Number(".5"), 0.5);
    EXPECT_EQ(Number("-.5"), -0.5);
    EXPECT_EQ(Number("5."), 5);
    EXPECT_EQ(Number("0005.5000"), 5.5);
    EXPECT_EQ(Number("2.5e-1"), 0.25);
    EXPECT_EQ(Number("+25E+2"), 2500);
    EXPECT_EQ(Number("1e3"), 1000);
    EXPECT_EQ(Number("0.10000000000000000000000000000000001"), 0.1);
    EXPECT_EQ(Number("5e-324"), std::numeric_limits<double>::denorm_min());
    EXPECT_EQ(Number("1.7976931348623157e308"), std::numeric_limits<double>::max());
}

TEST(CubeNumbers, KeepTheSignOfZero) {
    EXPECT_TRUE(std::signbit(Number("-0.000000").value()));
    EXPECT_TRUE(std::signbit(Number("-0e0").value()));
    EXPECT_FALSE(std::signbit(Number("0.000000").value()));
}

TEST(CubeNumbers, AreNothingElse) {
    for (const char* text :
         {"",     " ",    "+",        "-",     ".",      "+.",    "-.",  "e5",   ".e5",
          "1e",   "1e+",  "+-1",      "-+1",   "--1",    "++1",   "nan", "-nan", "nan(1)",
          "inf",  "-inf", "infinity", "1e999", "-1e999", "0x10",  "0,5", "1,",   ",5",
          "0.5.", "0.5,", "0.5#",     "0.5-1", "1f",     "\"1\"", "/5"}) {
        EXPECT_EQ(Number(text), std::nullopt) << text;
    }
    EXPECT_EQ(Number(std::string_view("1\0", 2)), std::nullopt);
    EXPECT_EQ(Number(std::string(400, '9')), std::nullopt);
}

TEST(CubeNumbers, OfManyDigitsAreReadToTheirEnd) {
    EXPECT_EQ(Number(std::string(300, '9')), 1e300);
    EXPECT_EQ(Number("0." + std::string(300, '0') + "1"), 1e-301);
    // Where the digits that are read at a stretch end, with the point on either side.
    EXPECT_EQ(Number("1234567890123456789"), 1234567890123456789.0);
    EXPECT_EQ(Number("12345678901234567890"), 12345678901234567890.0);
    EXPECT_EQ(Number("123456789012345678."), 123456789012345678.0);
    EXPECT_EQ(Number("1234567890123456789."), 1234567890123456789.0);
    EXPECT_EQ(Number("0.00000000000000001"), 1e-17);
    EXPECT_EQ(Number("0.000000000000000001"), 1e-18);
    EXPECT_EQ(Number(".000000000000000001"), 1e-18);
    EXPECT_EQ(Number(".0000000000000000001"), 1e-19);
    // From 2^53 on, not every integer is a double.
    EXPECT_EQ(Number("9007199254740991"), 9007199254740991.0);
    EXPECT_EQ(Number("9007199254740993"), 9007199254740992.0);
    EXPECT_EQ(Number("900719925474.0993"), 900719925474.0993);
}

TEST(CubeNumbers, AreTheNearestDoubleOfWhatIsWritten) {
    std::mt19937 random(1);
    std::uniform_real_distribution<double> uniform(-2, 2);
    std::uniform_int_distribution<int> precision(0, 20);
    std::uniform_int_distribution<int> exponent(-30, 30);
    for (int i = 0; i < 20000; ++i) {
        std::ostringstream stream;
        stream.precision(precision(random));
        if (i % 2 == 0) {
            stream << std::fixed << uniform(random);
        } else {
            stream << std::ldexp(uniform(random), exponent(random));
        }
        const std::string text = stream.str();
        ASSERT_EQ(Number(text), std::strtod(text.c_str(), nullptr)) << text;
    }
}

TEST(CubeNumbers, OfPointsAreWhole) {
    EXPECT_EQ(Integer("33"), 33);
    EXPECT_EQ(Integer(" +33 # points"), 33);
    EXPECT_EQ(Integer("-2"), -2);
    EXPECT_EQ(Integer("2147483647"), 2147483647);
    for (const char* text : {"", "2147483648", "-2147483648", "99999999999999999999", "33.0", "3e1",
                             "0x2", "2x", "two"}) {
        EXPECT_EQ(Integer(text), std::nullopt) << text;
    }
}

}  // namespace
}  // namespace psdfile

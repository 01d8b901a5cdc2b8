#include "host/format.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "host/text.h"

namespace {

template <class... Values>
std::string Formatted(const MCHAR* format, Values... values) {
    return host::ToUtf8(host::Format(format, values...).data());
}

TEST(Format, NumbersAreAsPrintfHasThem) {
    EXPECT_EQ(Formatted(_M("%d %i %u"), -5, 7, 4000000000U), "-5 7 4000000000");
    EXPECT_EQ(Formatted(_M("%x %X %#x %o"), 255U, 255U, 255U, 8U), "ff FF 0xff 10");
    EXPECT_EQ(Formatted(_M("%f %g %.2f %e"), 1.5, 0.25, 2.345678, 1.0),
              "1.500000 0.25 2.35 1.000000e+00");
}

TEST(Format, FlagsWidthAndPrecisionAreKept) {
    EXPECT_EQ(Formatted(_M("[%5d|%-5d|%05d|%+d|% d|%.3d]"), 42, 42, 42, 42, 42, 42),
              "[   42|42   |00042|+42| 42|042]");
    EXPECT_EQ(Formatted(_M("[%*d|%-*d|%*d|%.*f]"), 4, 1, 4, 2, -4, 3, 1, 0.25),
              "[   1|2   |3   |0.2]");
    EXPECT_EQ(Formatted(_M("[%5s|%-5s|%.2s]"), _M("abc"), _M("abc"), _M("abc")),
              "[  abc|abc  |ab]");
}

TEST(Format, LengthsOf64BitsAreRead) {
    EXPECT_EQ(Formatted(_M("%lld %llu %llx"), std::numeric_limits<long long>::min(),
                        std::numeric_limits<unsigned long long>::max(), 0x123456789abcdefULL),
              "-9223372036854775808 18446744073709551615 123456789abcdef");
    EXPECT_EQ(Formatted(_M("%I64d %zu %jd %td"), -1LL, std::size_t{5}, std::intmax_t{6},
                        std::ptrdiff_t{-7}),
              "-1 5 6 -7");
    EXPECT_EQ(Formatted(_M("%ld %lu"), -8L, 9UL), "-8 9");
}

TEST(Format, ShortLengthsCutTheirValue) {
    EXPECT_EQ(Formatted(_M("%hd %hu %hhd %hhu"), 65537, 65537U, 257, 257U), "1 1 1 1");
}

TEST(Format, TextAndUnitsAreUtf16) {
    EXPECT_EQ(Formatted(_M("%s %c"), _M("\u00e9\U0001f600"), _M('\u20ac')),
              "\xc3\xa9\xf0\x9f\x98\x80 \xe2\x82\xac");
}

TEST(Format, ANullTextIsPrintedAsNull) {
    const MCHAR* none = nullptr;
    EXPECT_EQ(Formatted(_M("%s."), none), "(null).");
}

TEST(Format, PercentSignsAndWhatIsUnknownAreCopied) {
    EXPECT_EQ(Formatted(_M("100%% %k %5q %d"), 3), "100% %k %5q 3");
    EXPECT_EQ(Formatted(_M("end %")), "end %");
    EXPECT_EQ(Formatted(_M("end %-0")), "end %-0");
}

TEST(Format, AHugeWidthIsCut) {
    EXPECT_EQ(Formatted(_M("%999999999999d"), 1).size(), 4096U);
    EXPECT_EQ(Formatted(_M("%*d"), std::numeric_limits<int>::min(), 1).size(), 4096U);
}

}  // namespace

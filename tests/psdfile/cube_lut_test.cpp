// Tables as programs write them, each way to break one, and what is written.

#include "psdfile/cube_lut.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <iostream>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace psdfile {
namespace {

using TableRow = CubeLUT::Row;

int LoadText(CubeLUT& lut, const std::string& text) {
    std::istringstream stream(text);
    return lut.LoadCubeFile(stream);
}

int StatusOf(const std::string& text) {
    CubeLUT lut;
    const int status = LoadText(lut, text);
    EXPECT_EQ(lut.status, status);
    return status;
}

std::string Replaced(std::string text, std::string_view what, std::string_view by) {
    for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += by.size()) {
        text.replace(at, what.size(), by);
    }
    return text;
}

// Eight different rows, red fastest, with a curve on each axis that isn't the others'.
const std::string rows3D =
    "0.0 0.125 0.25\n"
    "1.0 0.125 0.25\n"
    "0.0 0.875 0.25\n"
    "1.0 0.875 0.25\n"
    "0.0 0.125 0.75\n"
    "1.0 0.125 0.75\n"
    "0.0 0.875 0.75\n"
    "1.0 0.875 0.75\n";

const std::string sample3D =
    "TITLE \"Warm evening\"\n"
    "# A comment\n"
    "\n"
    "DOMAIN_MIN 0.0 0.0 0.0\n"
    "DOMAIN_MAX 1.0 1.0 1.0\n"
    "LUT_3D_SIZE 2\n" +
    rows3D;

const std::string sample1D =
    "LUT_1D_SIZE 3\n"
    "0 0 0\n"
    "0.5 0.25 0.125\n"
    "1 1 1\n";

void ExpectTheRowsOf3D(const CubeLUT& lut) {
    EXPECT_TRUE(lut.lut1D.empty());
    const decltype(CubeLUT::lut3D) expected{{{TableRow{0, 0.125, 0.25}, TableRow{0, 0.125, 0.75}},
                                             {TableRow{0, 0.875, 0.25}, TableRow{0, 0.875, 0.75}}},
                                            {{TableRow{1, 0.125, 0.25}, TableRow{1, 0.125, 0.75}},
                                             {TableRow{1, 0.875, 0.25}, TableRow{1, 0.875, 0.75}}}};
    EXPECT_EQ(lut.lut3D, expected);
}

TEST(CubeLUT, LoadsA3DTableRedFastest) {
    CubeLUT lut;
    ASSERT_EQ(LoadText(lut, sample3D), CubeLUT::OK);
    EXPECT_EQ(lut.status, 0);
    EXPECT_EQ(lut.title, "Warm evening");
    EXPECT_EQ(lut.domainMin, (TableRow{0, 0, 0}));
    EXPECT_EQ(lut.domainMax, (TableRow{1, 1, 1}));
    ExpectTheRowsOf3D(lut);
}

TEST(CubeLUT, LoadsA1DTable) {
    CubeLUT lut;
    ASSERT_EQ(LoadText(lut, sample1D), CubeLUT::OK);
    EXPECT_EQ(lut.title, "");
    EXPECT_EQ(lut.domainMin, (TableRow{0, 0, 0}));
    EXPECT_EQ(lut.domainMax, (TableRow{1, 1, 1}));
    EXPECT_EQ(lut.lut1D, (std::vector<TableRow>{{0, 0, 0}, {0.5, 0.25, 0.125}, {1, 1, 1}}));
    EXPECT_TRUE(lut.lut3D.empty());
}

TEST(CubeLUT, LoadsTheSameTableHoweverItIsSpelt) {
    const std::vector<std::pair<const char*, std::string>> spellings{
        {"no title, no domain", "LUT_3D_SIZE 2\n" + rows3D},
        {"keywords in another order", "LUT_3D_SIZE 2\nDOMAIN_MAX 1 1 1\nTITLE \"x\"\n" + rows3D},
        {"CRLF", Replaced(sample3D, "\n", "\r\n")},
        {"blank line before the table", "LUT_3D_SIZE 2\n\n" + rows3D},
        {"blank CRLF line before the table", "LUT_3D_SIZE 2\r\n\r\n" + rows3D},
        {"blank lines and comments within", Replaced(sample3D, "\n", "\n\n# next\n  \n")},
        {"no end of the last line", sample3D.substr(0, sample3D.size() - 1)},
        {"no LF of the last CRLF",
         Replaced(sample3D.substr(0, sample3D.size() - 1), "\n", "\r\n") + "\r"},
        {"tabs", Replaced(rows3D, " ", "\t").insert(0, "LUT_3D_SIZE\t2\n")},
        {"columns", "LUT_3D_SIZE   2\n" + Replaced(rows3D, " ", "    ")},
        {"leading blanks", Replaced("\nLUT_3D_SIZE 2\n" + rows3D, "\n", "\n  ")},
        {"trailing blanks", Replaced(sample3D, "\n", "  \t\n")},
        {"leading plus", Replaced("\nLUT_3D_SIZE 2\n" + rows3D, "\n0", "\n+0")},
        {"a plus at each", "LUT_3D_SIZE +2\n" + Replaced(rows3D, "0.", "+0.")},
        {"no leading zero", "LUT_3D_SIZE 2\n" + Replaced(rows3D, "0.", ".")},
        {"no trailing zero", "LUT_3D_SIZE 2\n" + Replaced(rows3D, ".0 ", ". ")},
        {"ten decimals", "LUT_3D_SIZE 2\n" + Replaced(rows3D, "5 ", "50000000 ")},
        {"exponents", "LUT_3D_SIZE 2\n" + Replaced(rows3D, "0.25", "2.5e-01")},
        {"capital exponents", "LUT_3D_SIZE 2\n" + Replaced(rows3D, "0.25", "+25.E-2")},
        {"decimal commas", Replaced("LUT_3D_SIZE 2\n" + rows3D, ".", ",")},
        {"decimal commas, CRLF",
         Replaced(Replaced("LUT_3D_SIZE 2\n" + rows3D, ".", ","), "\n", "\r\n")},
        {"decimal commas in the domain", Replaced(sample3D, ".", ",")},
        {"a remark behind the row", "LUT_3D_SIZE 2\n" + Replaced(rows3D, "\n", " # a row\n")},
        {"a fourth column", "LUT_3D_SIZE 2\n" + Replaced(rows3D, "\n", " 1.0\n")},
        {"a byte order mark", "\xEF\xBB\xBF" + sample3D},
        {"lines behind the table", sample3D + "0 0 0\nEND\n\"\n"},
        {"bytes behind the table", sample3D + std::string(70000, '\0')},
    };
    for (const auto& [name, text] : spellings) {
        SCOPED_TRACE(name);
        CubeLUT lut;
        EXPECT_EQ(LoadText(lut, text), CubeLUT::OK);
        ExpectTheRowsOf3D(lut);
    }
}

TEST(CubeLUT, SkipsCommentsBetweenTheRows) {
    CubeLUT lut;
    EXPECT_EQ(LoadText(lut, "LUT_1D_SIZE 2\n# dark\n0 0 0\n# 0.5 0.5 0.5\n#\n1 1 1\n"),
              CubeLUT::OK);
    EXPECT_EQ(lut.lut1D, (std::vector<TableRow>{{0, 0, 0}, {1, 1, 1}}));
}

TEST(CubeLUT, HasStatusesOfFixedNumbers) {
    EXPECT_EQ(StatusOf(sample3D), 0);
    EXPECT_EQ(CubeLUT::ReadError, 10);
    EXPECT_EQ(CubeLUT::WriteError, 11);
    EXPECT_EQ(StatusOf(""), 12);
    EXPECT_EQ(StatusOf(std::string(251, 'x')), 13);
    EXPECT_EQ(StatusOf("x\n"), 20);
    EXPECT_EQ(StatusOf("TITLE x\n"), 21);
    EXPECT_EQ(StatusOf("LUT_1D_SIZE 2\nDOMAIN_MAX 0 0 0\n0 0 0\n"), 22);
    EXPECT_EQ(StatusOf("LUT_1D_SIZE 1\n"), 23);
    EXPECT_EQ(StatusOf("LUT_1D_SIZE 2\n0 0\n"), 24);
}

TEST(CubeLUT, LoadsCarriageReturnsAndTellsOfThemOnce) {
    testing::internal::CaptureStdout();
    CubeLUT lut;
    EXPECT_EQ(LoadText(lut, Replaced(sample3D, "\n", "\r")), CubeLUT::OK);
    std::cout.flush();
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "INFO: This file uses non-compliant line separator \\r (0x0D)\n");
    EXPECT_EQ(lut.title, "Warm evening");
    ExpectTheRowsOf3D(lut);
}

// Each row says where it belongs. The sizes are those around the steps in which tables grow.
TEST(CubeLUT, PutsEveryRowOfA3DTableInItsPlace) {
    for (const std::size_t size : {2U, 3U, 7U, 8U, 9U, 16U, 17U, 33U}) {
        std::ostringstream text;
        text << "LUT_3D_SIZE " << size << '\n';
        for (std::size_t b = 0; b < size; ++b) {
            for (std::size_t g = 0; g < size; ++g) {
                for (std::size_t r = 0; r < size; ++r) {
                    text << r << ' ' << g << ' ' << b << '\n';
                }
            }
        }
        CubeLUT lut;
        ASSERT_EQ(LoadText(lut, text.str()), CubeLUT::OK) << size;
        ASSERT_EQ(lut.lut3D.size(), size);
        for (std::size_t r = 0; r < size; ++r) {
            ASSERT_EQ(lut.lut3D[r].size(), size);
            for (std::size_t g = 0; g < size; ++g) {
                ASSERT_EQ(lut.lut3D[r][g].size(), size);
                for (std::size_t b = 0; b < size; ++b) {
                    const TableRow expected{static_cast<double>(r), static_cast<double>(g),
                                            static_cast<double>(b)};
                    ASSERT_EQ(lut.lut3D[r][g][b], expected);
                }
            }
        }
    }
}

TEST(CubeLUT, ReplacesWhatItHeld) {
    CubeLUT lut;
    ASSERT_EQ(LoadText(lut, Replaced(sample3D, "1.0 1.0 1.0", "2 3 4")), CubeLUT::OK);
    EXPECT_EQ(lut.domainMax, (TableRow{2, 3, 4}));
    ASSERT_EQ(LoadText(lut, sample1D), CubeLUT::OK);
    EXPECT_EQ(lut.title, "");
    EXPECT_EQ(lut.domainMax, (TableRow{1, 1, 1}));
    EXPECT_EQ(lut.lut1D.size(), 3U);
    EXPECT_TRUE(lut.lut3D.empty());
    ASSERT_EQ(LoadText(lut, "x\n"), CubeLUT::UnknownOrRepeatedKeyword);
    EXPECT_TRUE(lut.lut1D.empty());
    ASSERT_EQ(LoadText(lut, sample3D), CubeLUT::OK);
    ExpectTheRowsOf3D(lut);
}

TEST(CubeLUTTitle, IsWhatStandsBetweenTheFirstTwoQuotes) {
    const auto title = [](const std::string& line) {
        CubeLUT lut;
        EXPECT_EQ(LoadText(lut, line + "\n" + sample1D), CubeLUT::OK) << line;
        return lut.title;
    };
    EXPECT_EQ(title("TITLE \"Kodak # 2383, D65\""), "Kodak # 2383, D65");
    EXPECT_EQ(title("TITLE \t  \"  a  b \"  "), "  a  b ");
    EXPECT_EQ(title("TITLE \"\""), "");
    EXPECT_EQ(title("TITLE \"a\" \"b\""), "a");
    EXPECT_EQ(title("TITLE \"D\xC3\xA4mmerung \xE5\xA4\x95\""), "D\xC3\xA4mmerung \xE5\xA4\x95");
    EXPECT_EQ(title(std::string("TITLE \"a\0b\"", 11)), std::string("a\0b", 3));
}

TEST(CubeLUTTitle, WithoutAQuoteIsAnError) {
    for (const char* line : {"TITLE Warm evening", "TITLE", "TITLE  \t", "TITLE 'Warm evening'",
                             "TITLE Warm \"evening\"", "TITLE \"Warm evening", "TITLE \""}) {
        EXPECT_EQ(StatusOf(line + std::string("\n") + sample1D), CubeLUT::TitleMissingQuote)
            << line;
    }
    // The next line doesn't close it.
    EXPECT_EQ(StatusOf("TITLE \"Warm\nevening\"\n" + sample1D), CubeLUT::TitleMissingQuote);
}

TEST(CubeLUTDomain, IsSixNumbers) {
    CubeLUT lut;
    ASSERT_EQ(LoadText(lut, "DOMAIN_MAX 1e1 +2 .5\nDOMAIN_MIN -1 -0.5\t0\n" + sample1D),
              CubeLUT::OK);
    EXPECT_EQ(lut.domainMin, (TableRow{-1, -0.5, 0}));
    EXPECT_EQ(lut.domainMax, (TableRow{10, 2, 0.5}));
    ASSERT_EQ(LoadText(lut, "DOMAIN_MIN -0,5 0 0,25\n" + sample1D), CubeLUT::OK);
    EXPECT_EQ(lut.domainMin, (TableRow{-0.5, 0, 0.25}));
}

TEST(CubeLUTDomain, IsReversedUnlessItsLowerEndIsBelowTheUpperOnAllAxes) {
    const auto status = [](const std::string& min, const std::string& max) {
        return StatusOf("DOMAIN_MIN " + min + "\nDOMAIN_MAX " + max + "\n" + sample1D);
    };
    EXPECT_EQ(status("0 0 0", "1 1 1"), CubeLUT::OK);
    EXPECT_EQ(status("0 0 0", "1 0 1"), CubeLUT::DomainBoundsReversed);
    EXPECT_EQ(status("0 0 0", "0 1 1"), CubeLUT::DomainBoundsReversed);
    EXPECT_EQ(status("0 0 2", "1 1 1"), CubeLUT::DomainBoundsReversed);
    EXPECT_EQ(status("1 1 1", "0 0 0"), CubeLUT::DomainBoundsReversed);
    EXPECT_EQ(status("-2 -2 -2", "-1 -1 -1"), CubeLUT::OK);
    // One end alone is held against the other's default.
    EXPECT_EQ(StatusOf("DOMAIN_MIN 0 1 0\n" + sample1D), CubeLUT::DomainBoundsReversed);
    EXPECT_EQ(StatusOf("DOMAIN_MAX 1 1 0\n" + sample1D), CubeLUT::DomainBoundsReversed);
}

TEST(CubeLUTDomain, WithoutThreeNumbersIsAnError) {
    for (const char* numbers : {"", " 0", " 0 0", " 0 0 x", " nan 0 0", " 0 -inf 0", " 0 0 1e999",
                                " 0.5,0.5,0.5", "\t# 0 0 0"}) {
        for (const char* keyword : {"DOMAIN_MIN", "DOMAIN_MAX"}) {
            EXPECT_EQ(StatusOf(keyword + std::string(numbers) + "\n" + sample1D),
                      CubeLUT::CouldNotParseTableData)
                << keyword << numbers;
        }
    }
}

TEST(CubeLUTSize, Of3DIsFrom2To256) {
    const auto status = [](const std::string& size) {
        return StatusOf("LUT_3D_SIZE " + size + "\n0 0 0\n");
    };
    EXPECT_EQ(status("2"), CubeLUT::PrematureEndOfFile);
    EXPECT_EQ(status("256"), CubeLUT::PrematureEndOfFile);
    for (const char* size : {"1", "257", "0", "-2", "-256", "2147483648", "4294967298",
                             "99999999999999999999999999", "", "x", "2x", "2.5", "nan", "\"2\""}) {
        EXPECT_EQ(status(size), CubeLUT::LUTSizeOutOfRange) << size;
    }
}

TEST(CubeLUTSize, Of1DIsFrom2To65536) {
    std::string text = "LUT_1D_SIZE 65536\n";
    for (int i = 0; i < 65536; ++i) {
        text += std::to_string(i) + " 0.5 1\n";
    }
    CubeLUT lut;
    ASSERT_EQ(LoadText(lut, text), CubeLUT::OK);
    ASSERT_EQ(lut.lut1D.size(), 65536U);
    EXPECT_EQ(lut.lut1D.front(), (TableRow{0, 0.5, 1}));
    EXPECT_EQ(lut.lut1D.back(), (TableRow{65535, 0.5, 1}));
    EXPECT_EQ(StatusOf("LUT_1D_SIZE 2\n0 0 0\n1 1 1\n"), CubeLUT::OK);
    for (const char* size : {"1", "65537", "0", "-2", "2147483648", "", "x"}) {
        EXPECT_EQ(StatusOf("LUT_1D_SIZE " + std::string(size) + "\n0 0 0\n"),
                  CubeLUT::LUTSizeOutOfRange)
            << size;
    }
}

TEST(CubeLUTSize, MustStandBeforeTheTable) {
    EXPECT_EQ(StatusOf(rows3D), CubeLUT::LUTSizeOutOfRange);
    EXPECT_EQ(StatusOf("TITLE \"x\"\n" + rows3D + "LUT_3D_SIZE 2\n"), CubeLUT::LUTSizeOutOfRange);
    // It is missed first, whatever the domain is.
    EXPECT_EQ(StatusOf("DOMAIN_MIN 2 2 2\n" + rows3D), CubeLUT::LUTSizeOutOfRange);
}

TEST(CubeLUTKeywords, StandOnceEach) {
    const std::string title = "TITLE \"x\"\n";
    EXPECT_EQ(StatusOf(title + title + sample1D), CubeLUT::UnknownOrRepeatedKeyword);
    EXPECT_EQ(StatusOf(title + "LUT_1D_SIZE 3\n" + title), CubeLUT::UnknownOrRepeatedKeyword);
    // Of the two sizes there is one.
    for (const char* twoLines :
         {"DOMAIN_MIN 0 0 0\nDOMAIN_MIN 0 0 0\n", "DOMAIN_MAX 1 1 1\nDOMAIN_MAX 1 1 1\n",
          "LUT_1D_SIZE 2\nLUT_1D_SIZE 2\n", "LUT_1D_SIZE 2\nLUT_3D_SIZE 2\n",
          "LUT_3D_SIZE 2\nLUT_1D_SIZE 2\n", "LUT_3D_SIZE 2\nLUT_3D_SIZE 2\n"}) {
        EXPECT_EQ(StatusOf(twoLines + rows3D), CubeLUT::UnknownOrRepeatedKeyword) << twoLines;
    }
}

TEST(CubeLUTKeywords, AreFiveAndNoMore) {
    for (const char* word :
         {"LUT_2D_SIZE 2", "LUT_3D_INPUT_RANGE 0 1", "title \"x\"", "TITLES \"x\"", "TITLE\"x\"",
          "x", " # comment", "+", ":", "nan 0 0", "inf 0 0", "\"0\" 0 0", "*1 0 0", "\xFF 0 0"}) {
        EXPECT_EQ(StatusOf(word + std::string("\n") + sample1D), CubeLUT::UnknownOrRepeatedKeyword)
            << word;
    }
    EXPECT_EQ(StatusOf(std::string("\0\n", 2) + sample1D), CubeLUT::UnknownOrRepeatedKeyword);
}

TEST(CubeLUTRows, ThatAreNotThreeNumbersAreAnError) {
    for (const char* row : {"0.5", "0.5 0.5", "0.5 0.5 x", "x 0.5 0.5", "nan 0 0", "0 0 inf",
                            "0 1e999 0", "0,5 0 0", "0.5,0.5,0.5", "0 0 0,5", "0.5 0.5 0.5x",
                            "TITLE \"x\"", "LUT_1D_SIZE 2", "- 0 0", " # comment", "/ 0 0"}) {
        EXPECT_EQ(StatusOf("LUT_1D_SIZE 2\n0.0 0.0 0.0\n" + std::string(row) + "\n1 1 1\n"),
                  CubeLUT::CouldNotParseTableData)
            << row;
    }
    EXPECT_EQ(StatusOf("LUT_1D_SIZE 2\n" + std::string("0.5 0\0.5 0\n", 11) + "1 1 1\n"),
              CubeLUT::CouldNotParseTableData);
    // The first row counts as one by how it begins.
    EXPECT_EQ(StatusOf("LUT_1D_SIZE 2\n+x\n1 1 1\n"), CubeLUT::CouldNotParseTableData);
    EXPECT_EQ(StatusOf("LUT_3D_SIZE 2\n0 0\n" + rows3D), CubeLUT::CouldNotParseTableData);
}

TEST(CubeLUTRows, HaveDecimalCommasUntilAPointIsSeen) {
    CubeLUT lut;
    ASSERT_EQ(LoadText(lut, "LUT_1D_SIZE 5\n0 0 0\n0,5 0,5 0,5\n1 0 1\n,25 -0,5 1e-1\n0.75 1 1\n"),
              CubeLUT::OK);
    EXPECT_EQ(lut.lut1D,
              (std::vector<TableRow>{
                  {0, 0, 0}, {0.5, 0.5, 0.5}, {1, 0, 1}, {0.25, -0.5, 0.1}, {0.75, 1, 1}}));
    EXPECT_EQ(StatusOf("LUT_1D_SIZE 3\n0,5 0 0\n0.5 0 0\n0,5 0 0\n"),
              CubeLUT::CouldNotParseTableData);
    // In a row with a point a comma was never a decimal one.
    EXPECT_EQ(StatusOf("LUT_1D_SIZE 2\n0.5 0,5 0\n1 1 1\n"), CubeLUT::CouldNotParseTableData);
    // A domain says nothing about the rows.
    EXPECT_EQ(StatusOf("DOMAIN_MIN 0.0 0.0 0.0\nLUT_1D_SIZE 2\n0,5 0 0\n1 1 1\n"), CubeLUT::OK);
}

TEST(CubeLUTRows, ThatAreMissingEndTheFileEarly) {
    for (const char* text : {"", "\n", "# only\n# comments", "TITLE \"x\"\n", "LUT_3D_SIZE 2",
                             "LUT_3D_SIZE 2\n", "DOMAIN_MIN 0 0 0\nDOMAIN_MAX 0 0 0\n"}) {
        EXPECT_EQ(StatusOf(text), CubeLUT::PrematureEndOfFile) << text;
    }
    EXPECT_EQ(StatusOf(sample3D.substr(0, sample3D.rfind("1.0"))), CubeLUT::PrematureEndOfFile);
    EXPECT_EQ(StatusOf("LUT_1D_SIZE 4" + sample1D.substr(13)), CubeLUT::PrematureEndOfFile);
}

std::size_t RowsAllocated(const CubeLUT& lut) {
    std::size_t rows = lut.lut1D.capacity();
    for (const auto& greens : lut.lut3D) {
        for (const auto& blues : greens) {
            rows += blues.capacity();
        }
    }
    return rows;
}

TEST(CubeLUTRows, AreAllocatedAsTheyCome) {
    CubeLUT lut;
    EXPECT_EQ(LoadText(lut, "LUT_3D_SIZE 256\n0 0 0\n"), CubeLUT::PrematureEndOfFile);
    EXPECT_EQ(RowsAllocated(lut), 0U);
    EXPECT_EQ(LoadText(lut, "LUT_1D_SIZE 65536\n0 0 0\n"), CubeLUT::PrematureEndOfFile);
    EXPECT_LE(RowsAllocated(lut), 4U);
    constexpr std::size_t rowCount = 1000000;
    std::string text = "LUT_3D_SIZE 256\n";
    for (std::size_t i = 0; i < rowCount; ++i) {
        text += "0 0 0\n";
    }
    EXPECT_EQ(LoadText(lut, text), CubeLUT::PrematureEndOfFile);
    EXPECT_LE(RowsAllocated(lut), 4 * rowCount);
}

TEST(CubeLUT, RefusesAFirstLineOfMoreThan250Characters) {
    EXPECT_EQ(StatusOf("#" + std::string(249, 'x') + "\n" + sample1D), CubeLUT::OK);
    EXPECT_EQ(StatusOf("#" + std::string(250, 'x') + "\n" + sample1D), CubeLUT::LineError);
    EXPECT_EQ(StatusOf(std::string(300, '\0')), CubeLUT::LineError);
}

TEST(CubeLUT, RefusesALineWithoutEnd) {
    EXPECT_EQ(StatusOf("LUT_1D_SIZE 2\n0 0 0\n0 0" + std::string(1 << 20, ' ') + "0\n"),
              CubeLUT::LineError);
    EXPECT_EQ(StatusOf("# short\nTITLE \"" + std::string(1 << 20, 'x') + "\"\n" + sample1D),
              CubeLUT::LineError);
    EXPECT_EQ(StatusOf("LUT_1D_SIZE 2\n0 0 0\n#" + std::string(1 << 20, ' ') + "\n1 1 1\n"),
              CubeLUT::OK);
}

// Each read but the first `good` fails.
class BreakingLutBuffer : public std::stringbuf {
  public:
    BreakingLutBuffer(const std::string& text, int goodReads)
        : std::stringbuf(text, std::ios::in), good(goodReads) {}

  protected:
    std::streamsize xsgetn(char* to, std::streamsize count) override {
        if (good-- == 0) throw std::runtime_error("gone");
        return std::stringbuf::xsgetn(to, count);
    }

  private:
    int good;
};

TEST(CubeLUT, GivesAReadErrorWhereTheStreamBreaks) {
    std::string text = "LUT_1D_SIZE 65536\n";
    for (int i = 0; i < 65536; ++i) {
        text += "0.5 0.5 0.5\n";
    }
    for (const int goodReads : {0, 1, 5}) {
        for (const std::ios::iostate thrown : {std::ios::goodbit, std::ios::badbit}) {
            BreakingLutBuffer buffer(text, goodReads);
            std::istream stream(&buffer);
            stream.exceptions(thrown);
            CubeLUT lut;
            EXPECT_EQ(lut.LoadCubeFile(stream), CubeLUT::ReadError);
            EXPECT_EQ(lut.status, CubeLUT::ReadError);
        }
    }
    BreakingLutBuffer buffer(text, 100);
    std::istream stream(&buffer);
    CubeLUT lut;
    EXPECT_EQ(lut.LoadCubeFile(stream), CubeLUT::OK);
}

TEST(CubeLUT, GivesAReadErrorForAStreamThatHasFailed) {
    for (const std::ios::iostate state : {std::ios::failbit, std::ios::badbit}) {
        std::istringstream stream(sample1D);
        stream.setstate(state);
        CubeLUT lut;
        EXPECT_EQ(lut.LoadCubeFile(stream), CubeLUT::ReadError);
    }
}

std::string Saved(CubeLUT& lut) {
    std::ostringstream stream;
    EXPECT_EQ(lut.SaveCubeFile(stream), CubeLUT::OK);
    return stream.str();
}

TEST(CubeLUTSave, WritesA3DTableRedFastest) {
    CubeLUT lut;
    ASSERT_EQ(LoadText(lut, sample3D), CubeLUT::OK);
    lut.domainMin = {-0.5, 0, 0.25};
    lut.lut3D[1][0][1] = {1.0 / 3, 1e-7, 1234567};
    EXPECT_EQ(Saved(lut),
              "TITLE \"Warm evening\"\n"
              "# Created by CubeLUT.cpp\n"
              "DOMAIN_MIN -0.5 0 0.25\n"
              "DOMAIN_MAX 1 1 1\n"
              "LUT_3D_SIZE 2\n"
              "0 0.125 0.25\n"
              "1 0.125 0.25\n"
              "0 0.875 0.25\n"
              "1 0.875 0.25\n"
              "0 0.125 0.75\n"
              "0.333333 1e-07 1.23457e+06\n"
              "0 0.875 0.75\n"
              "1 0.875 0.75\n");
}

TEST(CubeLUTSave, WritesA1DTableAndNoTitleWithoutOne) {
    CubeLUT lut;
    ASSERT_EQ(LoadText(lut, sample1D), CubeLUT::OK);
    EXPECT_EQ(Saved(lut),
              "# Created by CubeLUT.cpp\n"
              "DOMAIN_MIN 0 0 0\n"
              "DOMAIN_MAX 1 1 1\n"
              "LUT_1D_SIZE 3\n"
              "0 0 0\n"
              "0.5 0.25 0.125\n"
              "1 1 1\n");
}

TEST(CubeLUTSave, WritesASizeOfZeroForNoTable) {
    CubeLUT lut;
    EXPECT_EQ(Saved(lut),
              "# Created by CubeLUT.cpp\n"
              "DOMAIN_MIN 0 0 0\n"
              "DOMAIN_MAX 1 1 1\n"
              "LUT_3D_SIZE 0\n");
}

TEST(CubeLUTSave, WritesNothingWhileTheStatusIsNotOK) {
    CubeLUT lut;
    ASSERT_EQ(LoadText(lut, sample1D + "x"), CubeLUT::OK);
    for (const int status : {10, 11, 12, 13, 20, 21, 22, 23, 24}) {
        lut.status = status;
        std::ostringstream stream;
        EXPECT_EQ(lut.SaveCubeFile(stream), status);
        EXPECT_EQ(stream.str(), "");
        EXPECT_EQ(lut.status, status);
    }
}

// Takes what fits in its 16 bytes, and fails when it is flushed or more comes.
class FullBuffer : public std::streambuf {
  public:
    explicit FullBuffer(bool throwing) : throws(throwing) {
        setp(space.data(), space.data() + space.size());
    }

  protected:
    int_type overflow(int_type) override {
        if (throws) throw std::runtime_error("full");
        return traits_type::eof();
    }
    int sync() override { return -1; }

  private:
    std::array<char, 16> space{};
    bool throws;
};

TEST(CubeLUTSave, GivesAWriteErrorAndKeepsIt) {
    for (const bool bufferThrows : {false, true}) {
        for (const std::ios::iostate thrown :
             {std::ios::goodbit, std::ios::badbit | std::ios::failbit}) {
            CubeLUT lut;
            ASSERT_EQ(LoadText(lut, sample1D), CubeLUT::OK);
            FullBuffer buffer(bufferThrows);
            std::ostream stream(&buffer);
            stream.exceptions(thrown);
            EXPECT_EQ(lut.SaveCubeFile(stream), CubeLUT::WriteError);
            EXPECT_TRUE(stream.fail());
            EXPECT_EQ(lut.status, CubeLUT::WriteError);
            std::ostringstream other;
            EXPECT_EQ(lut.SaveCubeFile(other), CubeLUT::WriteError);
            EXPECT_EQ(other.str(), "");
        }
    }
}

// What is still in the stream's buffer when the last row is written must not get lost unseen.
class UnflushableBuffer : public std::stringbuf {
  protected:
    int sync() override { return -1; }
};

TEST(CubeLUTSave, GivesAWriteErrorIfTheLastBytesDoNotGetThrough) {
    CubeLUT lut;
    UnflushableBuffer buffer;
    std::ostream stream(&buffer);
    EXPECT_EQ(lut.SaveCubeFile(stream), CubeLUT::WriteError);
}

CubeLUT RandomTable(std::mt19937& random) {
    std::uniform_int_distribution<std::size_t> size(2, 6);
    std::uniform_int_distribution<int> exponent(-20, 20);
    std::uniform_int_distribution<int> letter(0x20, 0xFF);
    std::uniform_real_distribution<double> uniform(-1, 1);
    const auto row = [&] {
        TableRow values{};
        for (double& value : values) {
            value = std::ldexp(uniform(random), exponent(random));
        }
        return values;
    };
    CubeLUT lut;
    for (std::size_t i = size(random); i < 6; ++i) {
        const char character = static_cast<char>(letter(random));
        if (character != '"') lut.title.push_back(character);
    }
    lut.domainMin = row();
    for (std::size_t axis = 0; axis < 3; ++axis) {
        lut.domainMax[axis] = lut.domainMin[axis] + std::abs(lut.domainMin[axis]) + 1;
    }
    const std::size_t points = size(random);
    if (random() % 2 == 0) {
        lut.lut1D.resize(points);
        std::generate(lut.lut1D.begin(), lut.lut1D.end(), row);
    } else {
        lut.lut3D.assign(points, {points, std::vector<TableRow>(points)});
        for (auto& greens : lut.lut3D) {
            for (auto& blues : greens) {
                std::generate(blues.begin(), blues.end(), row);
            }
        }
    }
    return lut;
}

// `tolerance` is relative.
void ExpectNear(const TableRow& row, const TableRow& expected, double tolerance) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
        ASSERT_LE(std::abs(row[axis] - expected[axis]), tolerance * std::abs(expected[axis]))
            << row[axis] << " for " << expected[axis];
    }
}

void ExpectNear(const CubeLUT& lut, const CubeLUT& expected, double tolerance) {
    EXPECT_EQ(lut.title, expected.title);
    ExpectNear(lut.domainMin, expected.domainMin, tolerance);
    ExpectNear(lut.domainMax, expected.domainMax, tolerance);
    ASSERT_EQ(lut.lut1D.size(), expected.lut1D.size());
    for (std::size_t i = 0; i < lut.lut1D.size(); ++i) {
        ExpectNear(lut.lut1D[i], expected.lut1D[i], tolerance);
    }
    const std::size_t size = expected.lut3D.size();
    ASSERT_EQ(lut.lut3D.size(), size);
    for (std::size_t r = 0; r < size; ++r) {
        ASSERT_EQ(lut.lut3D[r].size(), size);
        for (std::size_t g = 0; g < size; ++g) {
            ASSERT_EQ(lut.lut3D[r][g].size(), size);
            for (std::size_t b = 0; b < size; ++b) {
                ExpectNear(lut.lut3D[r][g][b], expected.lut3D[r][g][b], tolerance);
            }
        }
    }
}

TEST(CubeLUTSave, WritesWhatLoadsAgain) {
    constexpr double halfOfTheSixthDigit = 5.001e-6;
    std::mt19937 random(7);
    for (int i = 0; i < 500; ++i) {
        SCOPED_TRACE(i);
        CubeLUT written = RandomTable(random);
        std::stringstream stream;
        ASSERT_EQ(written.SaveCubeFile(stream), CubeLUT::OK);
        CubeLUT read;
        ASSERT_EQ(read.LoadCubeFile(stream), CubeLUT::OK);
        ASSERT_NO_FATAL_FAILURE(ExpectNear(read, written, halfOfTheSixthDigit));
    }
}

TEST(CubeLUTSave, LosesNothingInAStreamOf17Digits) {
    std::mt19937 random(8);
    for (int i = 0; i < 500; ++i) {
        SCOPED_TRACE(i);
        CubeLUT written = RandomTable(random);
        std::stringstream stream;
        stream.precision(17);
        ASSERT_EQ(written.SaveCubeFile(stream), CubeLUT::OK);
        CubeLUT read;
        ASSERT_EQ(read.LoadCubeFile(stream), CubeLUT::OK);
        ASSERT_NO_FATAL_FAILURE(ExpectNear(read, written, 0));
    }
}

}  // namespace
}  // namespace psdfile

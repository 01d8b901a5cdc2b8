// Line ends, comments and blocks.

#include "psdfile/cube_lines.h"

#include <gtest/gtest.h>

#include <iostream>
#include <span>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace psdfile {
namespace {

using Lines = std::vector<std::string>;

constexpr std::size_t blockSize = 65536;
const std::string infoLine = "INFO: This file uses non-compliant line separator \\r (0x0D)\n";

struct Reading {
    Lines lines;
    CubeLUT::Status end = CubeLUT::OK;  // why there are no more
    std::string told;                   // on the standard output
};

Reading ReadAll(std::istream& stream) {
    Reading reading;
    testing::internal::CaptureStdout();
    CubeLines lines(stream);
    reading.end = lines.FindSeparator();
    while (reading.end == CubeLUT::OK) {
        std::span<char> line;
        reading.end = lines.ReadLine(line);
        if (reading.end == CubeLUT::OK) reading.lines.emplace_back(line.begin(), line.end());
    }
    std::cout.flush();
    reading.told = testing::internal::GetCapturedStdout();
    return reading;
}

Reading ReadAll(const std::string& text) {
    std::istringstream stream(text);
    return ReadAll(stream);
}

TEST(CubeLines, EndWithALineFeed) {
    const Reading reading = ReadAll("one\ntwo\n\n three \nlast\n");
    EXPECT_EQ(reading.lines, (Lines{"one", "two", " three ", "last"}));
    EXPECT_EQ(reading.end, CubeLUT::PrematureEndOfFile);
    EXPECT_EQ(reading.told, "");
}

TEST(CubeLines, KeepTheCarriageReturnBeforeALineFeed) {
    const Reading reading = ReadAll("one\r\n\r\ntwo\r\n");
    EXPECT_EQ(reading.lines, (Lines{"one\r", "two\r"}));
    EXPECT_EQ(reading.told, "");
}

TEST(CubeLines, EndWithACarriageReturnIfTheFirstOneDoes) {
    const Reading reading = ReadAll("one\rtwo\r\rthree\nfour\r");
    EXPECT_EQ(reading.lines, (Lines{"one", "two", "three\nfour"}));
    EXPECT_EQ(reading.told, infoLine);
}

TEST(CubeLines, NeedNoEndAtTheEndOfTheFile) {
    EXPECT_EQ(ReadAll("one\nlast").lines, (Lines{"one", "last"}));
    EXPECT_EQ(ReadAll("one\rlast").lines, (Lines{"one", "last"}));
    EXPECT_EQ(ReadAll("only").lines, (Lines{"only"}));
    const Reading reading = ReadAll("only\r");
    EXPECT_EQ(reading.lines, (Lines{"only"}));
    EXPECT_EQ(reading.told, infoLine);
}

TEST(CubeLines, OfCommentsAndBlanksAreSkipped) {
    EXPECT_EQ(ReadAll("# first\none\n#\n \t \n##two\ntwo # kept\n # kept too\n#last").lines,
              (Lines{"one", "two # kept", " # kept too"}));
    for (const char* text : {"", "\n", "\r\n", "\n\n\n", "# only", "# only\n", " ", "\t\n"}) {
        const Reading reading = ReadAll(text);
        EXPECT_EQ(reading.lines, Lines{}) << text;
        EXPECT_EQ(reading.end, CubeLUT::PrematureEndOfFile) << text;
    }
}

TEST(CubeLines, KeepZeroBytes) {
    const std::string line("a\0b", 3);
    EXPECT_EQ(ReadAll(line + "\n" + line).lines, (Lines{line, line}));
}

TEST(CubeLines, StartBehindAByteOrderMark) {
    EXPECT_EQ(ReadAll("\xEF\xBB\xBF# comment\none\n\xEF\xBB\xBFtwo\n").lines,
              (Lines{"one", "\xEF\xBB\xBFtwo"}));
    EXPECT_EQ(ReadAll("\xEF\xBB\xBF").lines, Lines{});
}

TEST(CubeLines, HaveAFirstOneOf250CharactersAtMost) {
    const std::string longest(250, 'x');
    for (const char* end : {"\n", "\r\n", "\r"}) {
        const Reading fits = ReadAll(longest + end + "two");
        EXPECT_EQ(fits.lines.size(), 2U);
        EXPECT_EQ(fits.end, CubeLUT::PrematureEndOfFile);
        const Reading tooLong = ReadAll(longest + "x" + end + "two");
        EXPECT_EQ(tooLong.lines, Lines{});
        EXPECT_EQ(tooLong.end, CubeLUT::LineError);
    }
    EXPECT_EQ(ReadAll(longest).lines, (Lines{longest}));
    EXPECT_EQ(ReadAll(longest + "x").end, CubeLUT::LineError);
    EXPECT_EQ(ReadAll("#" + longest + "\none").end, CubeLUT::LineError);
    EXPECT_EQ(ReadAll("one\n" + longest + "x\n").lines, (Lines{"one", longest + "x"}));
}

TEST(CubeLines, OfWhichOneCanBeRepeated) {
    std::istringstream stream("one\n\n# comment\ntwo\nthree");
    CubeLines lines(stream);
    ASSERT_EQ(lines.FindSeparator(), CubeLUT::OK);
    for (const char* expected : {"one", "two", "three"}) {
        std::span<char> line;
        ASSERT_EQ(lines.ReadLine(line), CubeLUT::OK);
        EXPECT_EQ(std::string(line.begin(), line.end()), expected);
        lines.RepeatLine();
        line = {};
        ASSERT_EQ(lines.ReadLine(line), CubeLUT::OK);
        EXPECT_EQ(std::string(line.begin(), line.end()), expected);
    }
}

TEST(CubeLines, CrossBlocksAtEveryCharacter) {
    for (std::size_t offset = 0; offset < 12; ++offset) {
        const std::string filler = std::string("x\n#").append(blockSize - 9 - offset, 'c') + "\n";
        for (const char* end : {"\n", "\r\n"}) {
            const std::string text = filler + "one" + end + "#c" + end + "two" + end + "three";
            const std::string kept = end[0] == '\r' ? "\r" : "";
            EXPECT_EQ(ReadAll(text).lines, (Lines{"x", "one" + kept, "two" + kept, "three"}))
                << offset;
        }
    }
}

TEST(CubeLines, OfABlocksLengthAreTooLong) {
    const std::string longest(blockSize - 1, 'x');
    const Reading fits = ReadAll("one\n" + longest + "\nthree\n");
    EXPECT_EQ(fits.lines, (Lines{"one", longest, "three"}));
    const Reading tooLong = ReadAll("one\n" + longest + "x\nthree\n");
    EXPECT_EQ(tooLong.lines, (Lines{"one"}));
    EXPECT_EQ(tooLong.end, CubeLUT::LineError);
    EXPECT_EQ(ReadAll("one\n" + std::string(blockSize, ' ') + "\n").end, CubeLUT::LineError);
    // A file that is one zero byte after the other, as failing disks leave them.
    EXPECT_EQ(ReadAll("one\n" + std::string(10 * blockSize, '\0')).end, CubeLUT::LineError);
}

TEST(CubeLines, OfCommentsMayBeOfAnyLength) {
    for (const std::size_t length : {blockSize - 2, blockSize - 1, blockSize, 3 * blockSize + 7}) {
        const std::string comment = std::string("#").append(length, ' ');
        EXPECT_EQ(ReadAll("one\n" + comment + "\ntwo").lines, (Lines{"one", "two"})) << length;
        EXPECT_EQ(ReadAll("one\n" + comment).end, CubeLUT::PrematureEndOfFile) << length;
    }
}

// Gives the text once over and then throws, as a file on a share that went away.
class BreakingBuffer : public std::stringbuf {
  public:
    explicit BreakingBuffer(const std::string& text) : std::stringbuf(text, std::ios::in) {}

  protected:
    int_type underflow() override { throw std::runtime_error("gone"); }
    std::streamsize xsgetn(char* to, std::streamsize count) override {
        if (count > in_avail()) throw std::runtime_error("gone");
        return std::stringbuf::xsgetn(to, count);
    }
};

TEST(CubeLines, EndWithAReadErrorWhereTheStreamBreaks) {
    std::string text = "one\n";
    while (text.size() < blockSize) {
        text += "0.5 0.5 0.5\n";
    }
    BreakingBuffer buffer(text);
    std::istream stream(&buffer);
    const Reading reading = ReadAll(stream);
    EXPECT_EQ(reading.end, CubeLUT::ReadError);
    EXPECT_EQ(reading.lines.size(), 1 + (blockSize - 4) / 12);
    EXPECT_EQ(reading.lines.back(), "0.5 0.5 0.5");
}

TEST(CubeLines, ThrowNothingThatTheStreamsUserAskedFor) {
    BreakingBuffer buffer("one\n");
    std::istream stream(&buffer);
    stream.exceptions(std::ios::badbit | std::ios::failbit | std::ios::eofbit);
    EXPECT_EQ(ReadAll(stream).end, CubeLUT::ReadError);
    std::istringstream whole("one\n");
    whole.exceptions(std::ios::badbit | std::ios::failbit | std::ios::eofbit);
    EXPECT_EQ(ReadAll(whole).end, CubeLUT::PrematureEndOfFile);
}

TEST(CubeLines, OfAStreamThatHasFailedAreNone) {
    for (const std::ios::iostate state : {std::ios::failbit, std::ios::badbit}) {
        std::istringstream stream("one\n");
        stream.setstate(state);
        const Reading reading = ReadAll(stream);
        EXPECT_EQ(reading.lines, Lines{});
        EXPECT_EQ(reading.end, CubeLUT::ReadError);
        EXPECT_EQ(stream.rdstate(), state);
    }
    std::istream withoutBuffer(nullptr);
    EXPECT_EQ(ReadAll(withoutBuffer).end, CubeLUT::ReadError);
}

TEST(CubeLines, StartAtTheBeginningOfAStreamThatWasReadToItsEnd) {
    std::istringstream stream("one\ntwo\n");
    std::string word;
    while (stream >> word) {
    }
    stream.clear(std::ios::eofbit);
    EXPECT_EQ(ReadAll(stream).lines, (Lines{"one", "two"}));
}

class UnseekableBuffer : public std::stringbuf {
  public:
    UnseekableBuffer() : std::stringbuf("one\n", std::ios::in) {}

  protected:
    pos_type seekpos(pos_type, std::ios::openmode) override { return pos_type(off_type(-1)); }
};

TEST(CubeLines, NeedAStreamThatCanSeek) {
    UnseekableBuffer buffer;
    std::istream stream(&buffer);
    EXPECT_EQ(ReadAll(stream).end, CubeLUT::ReadError);
}

}  // namespace
}  // namespace psdfile

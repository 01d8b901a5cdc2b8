// PackBits against hand-worked rows and against a state machine written for comparison.

#include "psdfile/pack_bits.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "tests/documents/written_bytes.h"

namespace psdfile {
namespace {

using Row = std::vector<std::uint8_t>;
using Sizes = std::vector<std::size_t>;

// The same encoding as a machine of four states that takes one run after the other:
// 0 no open block, 1 a literal block is open, 2 a repeat code was written last, 3 a repeat code was
// written behind an open block.
class StateMachine {
  public:
    explicit StateMachine(const Row& row) {
        for (std::size_t i = 0; i < row.size();) {
            std::size_t length = 1;
            while (i + length < row.size() && row[i + length] == row[i]) {
                ++length;
            }
            Take(row[i], length);
            i += length;
        }
    }

    Row out;

  private:
    void Take(std::uint8_t value, std::size_t length) {
        switch (state) {
            case 0:
            case 2:
                if (length == 1) {
                    block = out.size();
                    out.push_back(0);
                    out.push_back(value);
                    state = 1;
                } else {
                    state = 2;
                    Repeat(value, length);
                }
                break;
            case 1:
                if (length == 1) {
                    ++out[block];
                    out.push_back(value);
                    state = out[block] == 127 ? 0 : 1;
                } else {
                    state = 3;
                    Repeat(value, length);
                }
                break;
            default:
                if (length == 1 && out[out.size() - 2] == 255 && out[block] < 126) {
                    out[block] = static_cast<std::uint8_t>(out[block] + 2);
                    out[out.size() - 2] = out.back();
                    state = out[block] == 127 ? 0 : 1;
                } else {
                    state = 2;
                }
                Take(value, length);
        }
    }

    // What is left of a long run is taken in the state that was just entered.
    void Repeat(std::uint8_t value, std::size_t length) {
        if (length > 128) {
            out.push_back(129);
            out.push_back(value);
            Take(value, length - 128);
        } else {
            out.push_back(static_cast<std::uint8_t>(1 - static_cast<int>(length)));
            out.push_back(value);
        }
    }

    int state = 0;
    std::size_t block = 0;
};

Row Pack(const Row& row, std::ptrdiff_t stride = 1) {
    // Exactly as much room as is promised, so that a sanitizer sees one byte more.
    const std::size_t count =
        (row.size() + static_cast<std::size_t>(stride) - 1) / static_cast<std::size_t>(stride);
    Row packed(2 * count);
    packed.resize(PackBits(row.data(), stride, static_cast<std::ptrdiff_t>(count), packed.data()));
    return packed;
}

std::string HexOf(const Row& bytes) {
    return Hex(std::string(bytes.begin(), bytes.end()));
}

std::string PackedHex(const std::string& rowHex) {
    const std::string bytes = FromHex(rowHex);
    return HexOf(Pack(Row(bytes.begin(), bytes.end())));
}

Row Unpack(const Row& packed) {
    Row row;
    for (std::size_t i = 0; i < packed.size();) {
        const std::size_t control = packed[i++];
        if (control < 128) {
            row.insert(row.end(), packed.begin() + static_cast<std::ptrdiff_t>(i),
                       packed.begin() + static_cast<std::ptrdiff_t>(i + control + 1));
            i += control + 1;
        } else {
            row.insert(row.end(), 257 - control, packed[i++]);
        }
    }
    return row;
}

// n bytes of which no two neighbours are equal.
Row Unlike(std::size_t n) {
    Row row(n);
    for (std::size_t i = 0; i < n; ++i) {
        row[i] = static_cast<std::uint8_t>(i);
    }
    return row;
}

void Append(Row& row, std::size_t count, std::uint8_t value) {
    row.insert(row.end(), count, value);
}

void ExpectAsTheStateMachine(const Row& row) {
    const Row packed = Pack(row);
    const Row expected = StateMachine(row).out;
    if (packed != expected) {
        FAIL() << "row " << HexOf(row) << "\nis packed as " << HexOf(packed) << "\nand not as "
               << HexOf(expected);
    }
    ASSERT_EQ(Unpack(packed), row);
}

TEST(PackBits, GivesNothingForACountBelowOne) {
    const std::uint8_t byte = 1;
    std::uint8_t out = 9;
    EXPECT_EQ(PackBits(&byte, 1, 0, &out), 0U);
    EXPECT_EQ(PackBits(&byte, 1, -5, &out), 0U);
    EXPECT_EQ(out, 9);
}

TEST(PackBits, OfOneSampleIsZeroAndTheByte) {
    EXPECT_EQ(PackedHex("2A"), "00 2A");
    EXPECT_EQ(PackedHex("00"), "00 00");
}

TEST(PackBits, OfUnlikeBytesIsOneLiteral) {
    EXPECT_EQ(PackedHex("01 02 03"), "02 01 02 03");
}

TEST(PackBits, OfEqualBytesIsOneRepeat) {
    EXPECT_EQ(PackedHex("07 07"), "FF 07");
    EXPECT_EQ(PackedHex("07 07 07 07 07"), "FC 07");
    EXPECT_EQ(HexOf(Pack(Row(128, 7))), "81 07");
}

TEST(PackBits, ARunOf129BytesIsARepeatOf128AndALiteral) {
    EXPECT_EQ(HexOf(Pack(Row(129, 7))), "81 07 00 07");
}

TEST(PackBits, ARunOf130BytesIsARepeatOf128AndOneOfTwo) {
    EXPECT_EQ(HexOf(Pack(Row(130, 7))), "81 07 FF 07");
    EXPECT_EQ(HexOf(Pack(Row(257, 7))), "81 07 81 07 00 07");
}

TEST(PackBits, WhatIsLeftOfALongRunOpensANewLiteralAndNeverExtendsTheOneBefore) {
    Row row{1, 2};
    Append(row, 129, 7);
    row.push_back(3);
    EXPECT_EQ(HexOf(Pack(row)), "01 01 02 81 07 01 07 03");
}

TEST(PackBits, APairOfTheRestOfALongRunIsNotFoldedIntoTheLiteralBeforeTheRun) {
    Row row{1, 2};
    Append(row, 130, 7);
    row.push_back(3);
    EXPECT_EQ(HexOf(Pack(row)), "01 01 02 81 07 FF 07 00 03");
}

TEST(PackBits, APairBehindTheRestOfALongRunIsFoldedIntoItsLiteral) {
    Row row(129, 7);
    Append(row, 2, 8);
    row.push_back(9);
    EXPECT_EQ(HexOf(Pack(row)), "81 07 03 07 08 08 09");
}

TEST(PackBits, APairBetweenSinglesIsFoldedIntoTheLiteral) {
    EXPECT_EQ(PackedHex("01 02 02 03"), "03 01 02 02 03");
    EXPECT_EQ(PackedHex("01 02 02 03 04 04 05"), "06 01 02 02 03 04 04 05");
}

TEST(PackBits, APairAtTheEndOrBeforeARunStaysARepeat) {
    EXPECT_EQ(PackedHex("01 02 02"), "00 01 FF 02");
    EXPECT_EQ(PackedHex("01 02 02 03 03"), "00 01 FF 02 FF 03");
    EXPECT_EQ(PackedHex("01 02 02 03 03 04"), "00 01 FF 02 FF 03 00 04");
}

TEST(PackBits, APairAtTheStartIsARepeat) {
    EXPECT_EQ(PackedHex("01 01 02"), "FF 01 00 02");
}

TEST(PackBits, ARunOfThreeBetweenSinglesIsNotFolded) {
    EXPECT_EQ(PackedHex("01 02 02 02 03"), "00 01 FE 02 00 03");
}

TEST(PackBits, ARowOfPairsStaysAsLongAsItWas) {
    Row row;
    for (int i = 0; i < 100; ++i) {
        Append(row, 2, static_cast<std::uint8_t>(i));
    }
    EXPECT_EQ(Pack(row).size(), row.size());
}

TEST(PackBits, ALiteralBlockEndsAt128Bytes) {
    for (const std::size_t length : Sizes{127, 128, 129, 255, 256, 257}) {
        const Row row = Unlike(length);
        const Row packed = Pack(row);
        EXPECT_EQ(packed.size(), length + (length + 127) / 128) << length;
        EXPECT_EQ(packed[0], std::min<std::size_t>(length, 128) - 1) << length;
        EXPECT_EQ(Unpack(packed), row) << length;
    }
}

TEST(PackBits, APairIsFoldedAsLongAsItFillsTheBlockAtMost) {
    for (const std::size_t before : Sizes{124, 125, 126, 127, 128, 129}) {
        Row row = Unlike(before);
        Append(row, 2, 0xF0);
        row.push_back(0xF1);
        const Row packed = Pack(row);
        // Up to 126 bytes before it, the pair fits into the block.
        EXPECT_EQ(packed[0], before <= 126 ? std::min<std::size_t>(before + 3, 128) - 1
                                           : std::min<std::size_t>(before, 128) - 1)
            << before;
        ExpectAsTheStateMachine(row);
    }
}

TEST(PackBits, IsTheSameAsTheStateMachineForEveryLengthOfRuns) {
    for (std::size_t literal = 0; literal < 140; ++literal) {
        for (const std::size_t run : Sizes{2, 3, 127, 128, 129, 130, 255, 256, 257, 258, 300}) {
            Row row = Unlike(literal);
            Append(row, run, 0xFF);
            ExpectAsTheStateMachine(row);
            row.push_back(0xFE);
            ExpectAsTheStateMachine(row);
            Append(row, 2, 0xFD);
            row.push_back(0xFC);
            ExpectAsTheStateMachine(row);
        }
    }
}

TEST(PackBits, IsTheSameAsTheStateMachineForAllShortRowsOfTwoValues) {
    for (std::size_t length = 1; length <= 16; ++length) {
        for (unsigned bits = 0; bits < 1U << length; ++bits) {
            Row row;
            for (std::size_t i = 0; i < length; ++i) {
                row.push_back(static_cast<std::uint8_t>(bits >> i & 1));
            }
            ExpectAsTheStateMachine(row);
        }
    }
}

// Rows of runs whose lengths come from `runLength`, of every size up to 1000.
template <class RunLength>
void CompareRows(std::uint32_t seed, int values, RunLength runLength) {
    std::mt19937 random(seed);
    for (std::size_t size = 0; size <= 1000; ++size) {
        Row row;
        while (row.size() < size) {
            const auto value = static_cast<std::uint8_t>(random() % static_cast<unsigned>(values));
            Append(row, static_cast<std::size_t>(runLength(random)), value);
        }
        row.resize(size);
        ExpectAsTheStateMachine(row);
        if (testing::Test::HasFatalFailure()) return;
    }
}

TEST(PackBits, IsTheSameAsTheStateMachineForNoise) {
    CompareRows(1, 256, [](std::mt19937&) { return 1; });
}

TEST(PackBits, IsTheSameAsTheStateMachineForCoarseNoise) {
    for (const int values : {2, 3, 5, 10, 20}) {
        CompareRows(2, values, [](std::mt19937&) { return 1; });
    }
}

TEST(PackBits, IsTheSameAsTheStateMachineForSinglesAndPairs) {
    CompareRows(3, 256, [](std::mt19937& random) { return random() % 3 == 0 ? 2 : 1; });
    CompareRows(4, 256, [](std::mt19937& random) { return random() % 20 == 0 ? 2 : 1; });
}

TEST(PackBits, IsTheSameAsTheStateMachineForRunsOfAllLengths) {
    CompareRows(5, 256, [](std::mt19937& random) { return 1 + static_cast<int>(random() % 9); });
    CompareRows(6, 256, [](std::mt19937& random) { return 1 + static_cast<int>(random() % 400); });
}

TEST(PackBits, IsTheSameAsTheStateMachineForRunsAround128AmongSingles) {
    CompareRows(7, 256, [](std::mt19937& random) {
        return random() % 3 != 0 ? 1 : 126 + static_cast<int>(random() % 6);
    });
    CompareRows(8, 256, [](std::mt19937& random) {
        return random() % 4 != 0 ? 1 : 254 + static_cast<int>(random() % 6);
    });
}

TEST(PackBits, WithAStrideTakesEveryNthByte) {
    std::mt19937 random(9);
    for (const std::ptrdiff_t stride : {2, 3, 4}) {
        for (std::size_t size = 0; size < 400; ++size) {
            Row row;
            Row interleaved;
            for (std::size_t i = 0; i < size; ++i) {
                const bool repeat = i > 0 && random() % 3 != 0;
                row.push_back(repeat ? row.back() : static_cast<std::uint8_t>(random()));
                interleaved.push_back(row.back());
                if (i + 1 < size) Append(interleaved, static_cast<std::size_t>(stride - 1), 0xEE);
            }
            ASSERT_EQ(HexOf(Pack(interleaved, stride)), HexOf(Pack(row)));
        }
    }
}

}  // namespace
}  // namespace psdfile

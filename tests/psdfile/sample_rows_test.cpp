// The row passes against byte-by-byte results, at widths around every vector length.

#include "psdfile/sample_rows.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "tests/documents/written_bytes.h"

namespace psdfile {
namespace {

using Bytes = std::vector<std::uint8_t>;

std::string HexOf(const Bytes& bytes) {
    return Hex(std::string(bytes.begin(), bytes.end()));
}

// Widths on both sides of every vector length.
constexpr std::size_t widths[] = {0, 1, 2, 3, 4, 7, 8, 9, 15, 16, 17, 31, 32, 33, 64, 100, 1001};

TEST(SwapRow16, WritesTheHighByteFirst) {
    const std::vector<std::uint16_t> row{0x1234, 0x00FF, 0xFF00};
    Bytes out(6);
    SwapRow16(row.data(), out.data(), row.size());
    EXPECT_EQ(HexOf(out), "12 34 00 FF FF 00");
}

TEST(SwapRow32, ReversesTheFourBytesOfEachSample) {
    const std::vector<float> row{1.0F, -2.5F};
    Bytes out(8);
    SwapRow32(row.data(), out.data(), row.size());
    EXPECT_EQ(HexOf(out), "3F 80 00 00 C0 20 00 00");
}

TEST(SwapRow32, WorksInPlaceForEveryWidth) {
    for (const std::size_t width : widths) {
        std::vector<float> row(width);
        Bytes expected;
        for (std::size_t i = 0; i < width; ++i) {
            const auto bits = static_cast<std::uint32_t>(i * 0x01234567U);
            row[i] = std::bit_cast<float>(bits);
            for (const int shift : {24, 16, 8, 0}) {
                expected.push_back(static_cast<std::uint8_t>(bits >> shift));
            }
        }
        auto* bytes = reinterpret_cast<std::uint8_t*>(row.data());
        SwapRow32(row.data(), bytes, width);
        EXPECT_EQ(Bytes(bytes, bytes + 4 * width), expected) << width;
    }
}

TEST(WidenRow8To16, GivesTheFullRange) {
    const Bytes row{0, 1, 128, 255};
    Bytes out(8);
    WidenRow8To16(row.data(), out.data(), row.size());
    EXPECT_EQ(HexOf(out), "00 00 01 01 80 80 FF FF");
}

TEST(ConvertRow8To32, Makes255ExactlyOneAnd0ExactlyZero) {
    Bytes row(256);
    for (std::size_t i = 0; i < row.size(); ++i) {
        row[i] = static_cast<std::uint8_t>(i);
    }
    std::vector<float> out(row.size());
    ConvertRow8To32(row.data(), out.data(), row.size());
    EXPECT_EQ(out[0], 0.0F);
    EXPECT_EQ(out[255], 1.0F);
    for (std::size_t i = 0; i < row.size(); ++i) {
        EXPECT_EQ(out[i], static_cast<float>(static_cast<double>(i) / 255.0)) << i;
    }
}

TEST(ConvertRow16To32, DividesEverySampleBy65535) {
    std::vector<std::uint16_t> row(65536);
    for (std::size_t i = 0; i < row.size(); ++i) {
        row[i] = static_cast<std::uint16_t>(i);
    }
    std::vector<float> out(row.size());
    ConvertRow16To32(row.data(), out.data(), row.size());
    EXPECT_EQ(out[0], 0.0F);
    EXPECT_EQ(out[65535], 1.0F);
    for (std::size_t i = 0; i < row.size(); ++i) {
        ASSERT_EQ(out[i], static_cast<float>(static_cast<double>(i) / 65535.0)) << i;
    }
}

TEST(PredictFloatRow, PutsThePlanesOneBehindTheOtherAndTakesDifferencesAcrossTheirBorders) {
    // 1.0 is 3F 80 00 00, 2.5 is 40 20 00 00: planes 3F 40, 80 20, 00 00, 00 00.
    const std::vector<float> row{1.0F, 2.5F};
    Bytes out(8);
    PredictFloatRow(row.data(), out.data(), row.size());
    EXPECT_EQ(HexOf(out), "3F 01 40 A0 E0 00 00 00");
}

TEST(PredictFloatRow, KeepsTheFirstByteOfASinglePixel) {
    const float sample = std::bit_cast<float>(0x01040918U);
    Bytes out(4);
    PredictFloatRow(&sample, out.data(), 1);
    EXPECT_EQ(HexOf(out), "01 03 05 0F");
}

TEST(PredictFloatRow, IsTheSameAsDifferencesFromTheEndForEveryWidth) {
    std::mt19937 random(1);
    for (const std::size_t width : widths) {
        std::vector<float> row(width);
        Bytes expected(4 * width);
        for (std::size_t i = 0; i < width; ++i) {
            const auto bits = static_cast<std::uint32_t>(random());
            row[i] = std::bit_cast<float>(bits);
            for (std::size_t k = 0; k < 4; ++k) {
                expected[(3 - k) * width + i] = static_cast<std::uint8_t>(bits >> (8 * k));
            }
        }
        for (std::size_t r = 4 * width; r-- > 1;) {
            expected[r] = static_cast<std::uint8_t>(expected[r] - expected[r - 1]);
        }
        Bytes out(4 * width);
        PredictFloatRow(row.data(), out.data(), width);
        EXPECT_EQ(out, expected) << width;
    }
}

}  // namespace
}  // namespace psdfile

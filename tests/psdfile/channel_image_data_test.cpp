// Every compression at every depth, down to the bytes.

#include "psdfile/channel_image_data.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zlib.h>

#include <bit>
#include <boost/make_shared.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "psdfile/sample_rows.h"
#include "tests/documents/test_sources.h"
#include "tests/documents/written_bytes.h"

namespace psdfile {
namespace {

// Gives nothing from row 1 on.
class NothingAfterRow0 : public Rows8 {
  public:
    NothingAfterRow0() : Rows8({{1, 2}}) {}
    const std::uint8_t* GetRow8(std::uint32_t row) override {
        return row == 0 ? Rows8::GetRow8(0) : nullptr;
    }
};

PSDChannelImageData Channel(std::uint32_t width, std::uint32_t height, std::uint8_t depth,
                            std::uint16_t compression, PSDChannelImageDataSourcePtr source,
                            bool writeCompression = true) {
    return {width, height, depth, compression, std::move(source), writeCompression};
}

std::string Inflated(const std::string& packed, std::size_t size) {
    std::string output(size, '\0');
    z_stream zlib{};
    inflateInit2(&zlib, 12);
    std::string input = packed;
    zlib.next_in = reinterpret_cast<Bytef*>(input.data());
    zlib.avail_in = static_cast<uInt>(input.size());
    zlib.next_out = reinterpret_cast<Bytef*>(output.data());
    zlib.avail_out = static_cast<uInt>(output.size());
    const int status = inflate(&zlib, Z_FINISH);
    const std::size_t left = zlib.avail_in + zlib.avail_out;
    inflateEnd(&zlib);
    return status == Z_STREAM_END && left == 0 ? output : "not one whole zlib stream";
}

TEST(ChannelImageData, WithoutASourceIsItsCompressionFieldAlone) {
    EXPECT_EQ(WrittenHex(Channel(5, 5, 16, compressionZIP, nullptr)), "00 02");
    EXPECT_EQ(WrittenHex(Channel(0, 0, 8, compressionRaw, nullptr)), "00 00");
    EXPECT_EQ(WrittenHex(Channel(5, 5, 8, compressionRLE, nullptr, false)), "");
}

TEST(ChannelImageData, OwnsItsLengthTableUnlessOneIsGiven) {
    std::uint8_t table[2] = {};
    EXPECT_TRUE(Channel(1, 1, 8, 1, nullptr).ownLengthTable);
    EXPECT_FALSE(PSDChannelImageData(1, 1, 8, 1, nullptr, false, table).ownLengthTable);
}

TEST(ChannelImageData, AsksForEachRowOnceFromTheTop) {
    for (const std::uint16_t compression : {compressionRaw, compressionRLE, compressionZIP}) {
        const auto rows = Pattern(3, 4, 1);
        WrittenHex(Channel(3, 4, compression == compressionZIP ? 16 : 8, compression, rows));
        EXPECT_THAT(rows->asked, testing::ElementsAre(0, 1, 2, 3)) << compression;
    }
}

TEST(RawChannel, Of8BitsIsTheRowsAsTheyAre) {
    const auto rows =
        boost::make_shared<Rows8>(std::vector<std::vector<std::uint8_t>>{{1, 2}, {3, 4}});
    EXPECT_EQ(WrittenHex(Channel(2, 2, 8, compressionRaw, rows)), "00 00 01 02 03 04");
    EXPECT_EQ(WrittenHex(Channel(2, 2, 8, compressionRaw, rows, false)), "01 02 03 04");
}

TEST(RawChannel, Of16BitsIsBigEndian) {
    const auto rows = boost::make_shared<Rows16>(
        std::vector<std::vector<std::uint16_t>>{{0x1234, 0xFF00}, {1, 2}});
    EXPECT_EQ(WrittenHex(Channel(2, 2, 16, compressionRaw, rows)), "00 00 12 34 FF 00 00 01 00 02");
}

TEST(RawChannel, Of16BitsIsWidenedFromASourceOf8) {
    const auto rows =
        boost::make_shared<Rows8>(std::vector<std::vector<std::uint8_t>>{{0, 128, 255}});
    EXPECT_EQ(WrittenHex(Channel(3, 1, 16, compressionRaw, rows)), "00 00 00 00 80 80 FF FF");
}

TEST(RawChannel, Of32BitsIsBigEndian) {
    const auto rows = boost::make_shared<Rows32>(std::vector<std::vector<float>>{{1.0F, -2.5F}});
    EXPECT_EQ(WrittenHex(Channel(2, 1, 32, compressionRaw, rows)), "00 00 3F 80 00 00 C0 20 00 00");
}

TEST(RawChannel, Of32BitsIsDividedBy65535FromASourceOf16) {
    const auto rows =
        boost::make_shared<Rows16>(std::vector<std::vector<std::uint16_t>>{{0, 65535, 13107}});
    // 13107 / 65535 is 0.2.
    EXPECT_EQ(WrittenHex(Channel(3, 1, 32, compressionRaw, rows)),
              "00 00 00 00 00 00 3F 80 00 00 3E 4C CC CD");
}

TEST(RawChannel, Of32BitsFromASourceOf8Makes255ExactlyOneAnd0Zero) {
    const auto rows =
        boost::make_shared<Rows8>(std::vector<std::vector<std::uint8_t>>{{255, 0, 51}});
    EXPECT_EQ(WrittenHex(Channel(3, 1, 32, compressionRaw, rows)),
              "00 00 3F 80 00 00 00 00 00 00 3E 4C CC CD");
}

TEST(RawChannel, RepeatsTheRowBeforeWhenASourceGivesNothing) {
    EXPECT_EQ(WrittenHex(Channel(2, 2, 16, compressionRaw, boost::make_shared<NothingAfterRow0>())),
              "00 00 01 01 02 02 01 01 02 02");
}

TEST(RLEChannel, HasATableOfTwoByteRowLengthsBeforeTheRows) {
    const auto rows =
        boost::make_shared<Rows8>(std::vector<std::vector<std::uint8_t>>{{7, 7, 7}, {1, 2, 3}});
    EXPECT_EQ(WrittenHex(Channel(3, 2, 8, compressionRLE, rows)),
              "00 01 00 02 00 04 FE 07 02 01 02 03");
}

TEST(RLEChannel, HasFourByteRowLengthsInPSBMode) {
    const auto rows =
        boost::make_shared<Rows8>(std::vector<std::vector<std::uint8_t>>{{7, 7, 7}, {1, 2, 3}});
    EXPECT_EQ(WrittenHex(Channel(3, 2, 8, compressionRLE, rows), true),
              "00 01 00 00 00 02 00 00 00 04 FE 07 02 01 02 03");
}

TEST(RLEChannel, OfOneSampleARowIsZeroAndTheByte) {
    EXPECT_EQ(WrittenHex(Channel(1, 1, 8, compressionRLE, Flat(1, 0x2A))), "00 01 00 02 00 2A");
}

TEST(RLEChannel, Of16BitsPacksBigEndianBytes) {
    const auto rows =
        boost::make_shared<Rows16>(std::vector<std::vector<std::uint16_t>>{{0x0102, 0x0203}});
    // 01 02 02 03: the pair lies within the literal.
    EXPECT_EQ(WrittenHex(Channel(2, 1, 16, compressionRLE, rows)), "00 01 00 05 03 01 02 02 03");
}

TEST(RLEChannel, Of16BitsIsWidenedFromASourceOf8) {
    EXPECT_EQ(WrittenHex(Channel(3, 1, 16, compressionRLE, Flat(3, 9))), "00 01 00 02 FB 09");
}

TEST(RLEChannel, WithATableFromOutsideFillsItAndWritesTheRowsAlone) {
    std::vector<std::uint8_t> table(4, 0xEE);
    const auto rows =
        boost::make_shared<Rows8>(std::vector<std::vector<std::uint8_t>>{{7, 7, 7}, {1, 2, 3}});
    PSDChannelImageData channel(3, 2, 8, compressionRLE, rows, false, table.data());
    EXPECT_EQ(WrittenHex(channel), "FE 07 02 01 02 03");
    EXPECT_EQ(Hex(std::string(table.begin(), table.end())), "00 02 00 04");
}

TEST(RLEChannel, Of32BitsIsItsTableAlone) {
    EXPECT_EQ(WrittenHex(Channel(3, 2, 32, compressionRLE, Flat(3, 9))), "00 01 00 00 00 00");
}

TEST(ZIPChannel, Of8BitsWritesNoPixels) {
    EXPECT_EQ(WrittenHex(Channel(3, 2, 8, compressionZIP, Flat(3, 9))), "00 02");
}

TEST(ZIPChannel, HasAZlibHeaderThatSaysAWindowOf4KB) {
    for (const std::uint8_t depth : {std::uint8_t{16}, std::uint8_t{32}}) {
        auto channel = Channel(300, 40, depth, compressionZIP, Pattern(300, 40, 3));
        const std::string bytes = WrittenBytes(channel);
        const auto method = static_cast<unsigned char>(bytes.at(2));
        EXPECT_EQ(method & 15, 8);
        EXPECT_EQ(256 << (method >> 4), 4096);
        EXPECT_EQ((method * 256 + static_cast<unsigned char>(bytes.at(3))) % 31, 0);
    }
}

TEST(ZIPChannel, Of16BitsIsTheBigEndianRowsInOneStreamWhateverTheFieldSaysOfPrediction) {
    const auto rows = boost::make_shared<Rows16>(
        std::vector<std::vector<std::uint16_t>>{{0x1234, 0x5678}, {0x9ABC, 0xDEF0}});
    for (const std::uint16_t compression : {compressionZIP, compressionZIPWithPrediction}) {
        auto channel = Channel(2, 2, 16, compression, rows);
        const std::string bytes = WrittenBytes(channel);
        EXPECT_EQ(Hex(bytes.substr(0, 2)), compression == compressionZIP ? "00 02" : "00 03");
        EXPECT_EQ(Hex(Inflated(bytes.substr(2), 8)), "12 34 56 78 9A BC DE F0");
    }
}

TEST(ZIPChannel, Of16BitsIsWidenedFromASourceOf8) {
    auto channel = Channel(2, 1, 16, compressionZIP, Flat(2, 0xAB));
    EXPECT_EQ(Hex(Inflated(WrittenBytes(channel).substr(2), 4)), "AB AB AB AB");
}

TEST(ZIPChannel, Of32BitsIsPredictedRowByRowWhateverTheFieldSays) {
    const auto rows =
        boost::make_shared<Rows32>(std::vector<std::vector<float>>{{1.0F, 2.5F}, {0.0F, 1.0F}});
    for (const std::uint16_t compression : {compressionZIP, compressionZIPWithPrediction}) {
        auto channel = Channel(2, 2, 32, compression, rows);
        // Planes 3F 40, 80 20, 00 00, 00 00 and 00 3F, 00 80, 00 00, 00 00.
        EXPECT_EQ(Hex(Inflated(WrittenBytes(channel).substr(2), 16)),
                  "3F 01 40 A0 E0 00 00 00 00 3F C1 80 80 00 00 00");
    }
}

TEST(ZIPChannel, Of32BitsTakesShallowerSources) {
    auto from8 = Channel(1, 1, 32, compressionZIP, Flat(1, 255));
    EXPECT_EQ(Hex(Inflated(WrittenBytes(from8).substr(2), 4)), "3F 41 80 00");
    auto from16 =
        Channel(1, 1, 32, compressionZIP,
                boost::make_shared<Rows16>(std::vector<std::vector<std::uint16_t>>{{65535}}));
    EXPECT_EQ(WrittenHex(from16), WrittenHex(from8));
}

TEST(ZIPChannel, RepeatsTheRowBeforeWhenASourceGivesNothing) {
    auto of16 = Channel(2, 2, 16, compressionZIP, boost::make_shared<NothingAfterRow0>());
    EXPECT_EQ(Hex(Inflated(WrittenBytes(of16).substr(2), 8)), "01 01 02 02 01 01 02 02");
    auto of32 = Channel(2, 2, 32, compressionZIP, boost::make_shared<NothingAfterRow0>());
    const std::string rows = Inflated(WrittenBytes(of32).substr(2), 16);
    EXPECT_EQ(Hex(rows.substr(0, 8)), Hex(rows.substr(8)));
}

// Longer than the window, with noise that makes deflate fill its output row many times.
TEST(ZIPChannel, OfALargeNoisyChannelInflatesToItsRows) {
    constexpr std::uint32_t width = 257;
    constexpr std::uint32_t height = 120;
    std::vector<std::vector<std::uint16_t>> words(height, std::vector<std::uint16_t>(width));
    std::vector<std::vector<float>> floats(height, std::vector<float>(width));
    std::uint32_t noise = 1;
    std::string expected16;
    std::string expected32;
    for (std::uint32_t y = 0; y < height; ++y) {
        for (std::uint32_t x = 0; x < width; ++x) {
            noise = noise * 1664525 + 1013904223;
            words[y][x] = static_cast<std::uint16_t>(noise >> 16);
            floats[y][x] = std::bit_cast<float>(noise);
            expected16 += static_cast<char>(noise >> 24);
            expected16 += static_cast<char>(noise >> 16);
        }
        std::string predicted(4 * width, '\0');
        PredictFloatRow(floats[y].data(), reinterpret_cast<std::uint8_t*>(predicted.data()), width);
        expected32 += predicted;
    }
    auto of16 = Channel(width, height, 16, compressionZIP, boost::make_shared<Rows16>(words));
    EXPECT_TRUE(Inflated(WrittenBytes(of16).substr(2), expected16.size()) == expected16);
    auto of32 = Channel(width, height, 32, compressionZIP, boost::make_shared<Rows32>(floats));
    EXPECT_TRUE(Inflated(WrittenBytes(of32).substr(2), expected32.size()) == expected32);
}

TEST(ZIPChannel, OfHeightOneIsAWholeStream) {
    auto channel = Channel(3, 1, 16, compressionZIP, Flat(3, 1));
    EXPECT_EQ(Hex(Inflated(WrittenBytes(channel).substr(2), 6)), "01 01 01 01 01 01");
}

TEST(ZIPChannel, OfWidthZeroEnds) {
    auto channel = Channel(0, 3, 16, compressionZIP, Flat(1, 1));
    EXPECT_EQ(Inflated(WrittenBytes(channel).substr(2), 0), "");
}

TEST(ChannelImageData, OfAFailedStreamStillAsksForEveryRow) {
    for (const std::uint16_t compression : {compressionRaw, compressionRLE, compressionZIP}) {
        const auto rows = Pattern(3, 4, 1);
        auto channel = Channel(3, 4, compression == compressionZIP ? 16 : 8, compression, rows);
        std::stringstream stream;
        stream.setstate(std::ios_base::failbit);
        stream << channel;
        EXPECT_THAT(rows->asked, testing::ElementsAre(0, 1, 2, 3)) << compression;
        EXPECT_EQ(stream.str(), "");
    }
}

}  // namespace
}  // namespace psdfile

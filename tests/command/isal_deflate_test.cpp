#include "command/isal_deflate.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#ifdef VELTRANE_ISAL

namespace command {
namespace {

constexpr int windowBits = 12;

using Bytes = std::vector<std::uint8_t>;

Bytes Noise(std::size_t size) {
    std::mt19937 random(5);
    Bytes bytes(size);
    for (std::uint8_t& byte : bytes)
        byte = static_cast<std::uint8_t>(random());
    return bytes;
}

Bytes Ramp(std::size_t size) {
    Bytes bytes(size);
    for (std::size_t i = 0; i < size; ++i)
        bytes[i] = static_cast<std::uint8_t>(i / 7 % 251);
    return bytes;
}

int Begin(z_stream& stream, int bits = windowBits) {
    return IsalDeflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, bits, 8, Z_DEFAULT_STRATEGY,
                            ZLIB_VERSION, sizeof stream);
}

// The loop that zlib's callers run: rows in, pieces out, until a piece comes back not filled.
Bytes Compress(const Bytes& input, std::size_t rowSize, std::size_t pieceSize,
               int bits = windowBits) {
    z_stream stream{};
    EXPECT_EQ(Begin(stream, bits), Z_OK);
    Bytes output;
    Bytes piece(pieceSize);
    Bytes row;
    std::size_t taken = 0;
    int result = Z_OK;
    do {
        const std::size_t count = std::min(rowSize, input.size() - taken);
        row.assign(input.begin() + static_cast<std::ptrdiff_t>(taken),
                   input.begin() + static_cast<std::ptrdiff_t>(taken + count));
        taken += count;
        const bool last = taken == input.size();
        stream.next_in = row.data();
        stream.avail_in = static_cast<uInt>(count);
        do {
            stream.next_out = piece.data();
            stream.avail_out = static_cast<uInt>(pieceSize);
            result = IsalDeflate(&stream, last ? Z_FINISH : Z_NO_FLUSH);
            EXPECT_NE(result, Z_STREAM_ERROR);
            output.insert(output.end(), piece.begin(),
                          piece.end() - static_cast<std::ptrdiff_t>(stream.avail_out));
        } while (stream.avail_out == 0);
        EXPECT_EQ(stream.avail_in, 0U);
    } while (taken < input.size());
    EXPECT_EQ(result, Z_STREAM_END);
    EXPECT_EQ(stream.total_in, input.size());
    EXPECT_EQ(stream.total_out, output.size());
    EXPECT_EQ(IsalDeflateEnd(&stream), Z_OK);
    return output;
}

Bytes Inflate(const Bytes& compressed, std::size_t size, int bits = windowBits) {
    z_stream stream{};
    EXPECT_EQ(inflateInit2(&stream, bits), Z_OK);
    Bytes output(size + 1);
    Bytes input = compressed;
    stream.next_in = input.data();
    stream.avail_in = static_cast<uInt>(input.size());
    stream.next_out = output.data();
    stream.avail_out = static_cast<uInt>(output.size());
    EXPECT_EQ(inflate(&stream, Z_FINISH), Z_STREAM_END) << (stream.msg ? stream.msg : "");
    EXPECT_EQ(stream.avail_in, 0U);
    output.resize(stream.total_out);
    inflateEnd(&stream);
    return output;
}

TEST(IsalDeflate, ZlibInflatesItAtTwelveWindowBits) {
    for (const std::size_t size :
         {0UL, 1UL, 2UL, 100UL, 4096UL, 4097UL, 70000UL, 131072UL, 131073UL, 262144UL, 1500000UL}) {
        for (const Bytes& input : {Noise(size), Ramp(size), Bytes(size, 0x55)}) {
            EXPECT_EQ(Inflate(Compress(input, 3840, 65536), size), input) << size;
        }
    }
}

TEST(IsalDeflate, SmallPiecesOfOutputGiveTheSameBytes) {
    const Bytes input = Ramp(300000);
    const Bytes whole = Compress(input, 3840, 1 << 20);
    for (const std::size_t piece : {1UL, 2UL, 3UL, 7UL, 64UL, 1000UL}) {
        EXPECT_EQ(Compress(input, 3840, piece), whole) << piece;
    }
    const Bytes noise = Noise(200000);
    EXPECT_EQ(Inflate(Compress(noise, 5000, 1), noise.size()), noise);
}

TEST(IsalDeflate, TheSizeOfRowsChangesNothing) {
    const Bytes input = Ramp(300000);
    const Bytes whole = Compress(input, input.size(), 65536);
    for (const std::size_t row : {1UL, 100UL, 3840UL, 131072UL, 200000UL}) {
        EXPECT_EQ(Compress(input, row, 65536), whole) << row;
    }
}

TEST(IsalDeflate, TheHeaderIsThatOfTheWindow) {
    const Bytes small = Compress(Ramp(10), 10, 100);
    EXPECT_EQ(small[0], 0x48);
    EXPECT_EQ((small[0] * 256 + small[1]) % 31, 0);
    EXPECT_EQ(small[1] & 0x20, 0) << "no dictionary";
    EXPECT_EQ(Compress(Ramp(10), 10, 100, 15)[0], 0x78);
}

TEST(IsalDeflate, NoMatchReachesBeyondItsWindow) {
    // Noise that repeats at a distance which only a larger window sees.
    Bytes input = Noise(5000);
    const Bytes copy = input;
    for (int i = 0; i < 10; ++i)
        input.insert(input.end(), copy.begin(), copy.end());
    EXPECT_EQ(Inflate(Compress(input, 4000, 4096), input.size()), input);
    EXPECT_GT(Compress(input, 4000, 4096).size(), input.size() * 99 / 100);
    EXPECT_LT(Compress(input, 4000, 4096, 15).size(), input.size() / 2);
}

TEST(IsalDeflate, ItCompresses) {
    EXPECT_LT(Compress(Bytes(1000000, 7), 4000, 4096).size(), 10000U);
}

TEST(IsalDeflate, AStreamCanBeGivenUp) {
    z_stream stream{};
    ASSERT_EQ(Begin(stream), Z_OK);
    Bytes input = Ramp(1000);
    Bytes output(100);
    stream.next_in = input.data();
    stream.avail_in = 1000;
    stream.next_out = output.data();
    stream.avail_out = 100;
    EXPECT_EQ(IsalDeflate(&stream, Z_NO_FLUSH), Z_OK);
    EXPECT_EQ(IsalDeflateEnd(&stream), Z_DATA_ERROR);
    EXPECT_EQ(IsalDeflateEnd(&stream), Z_STREAM_ERROR);
}

TEST(IsalDeflate, AnswersMisuseAsZlibDoes) {
    z_stream stream{};
    const auto init = [&](int level, int method, int bits, int memLevel, int strategy,
                          const char* version, int size) {
        return IsalDeflateInit2(&stream, level, method, bits, memLevel, strategy, version, size);
    };
    constexpr int size = sizeof(z_stream);
    EXPECT_EQ(init(6, Z_DEFLATED, 12, 8, 0, "0.0", size), Z_VERSION_ERROR);
    EXPECT_EQ(init(6, Z_DEFLATED, 12, 8, 0, nullptr, size), Z_VERSION_ERROR);
    EXPECT_EQ(init(6, Z_DEFLATED, 12, 8, 0, ZLIB_VERSION, size - 1), Z_VERSION_ERROR);
    EXPECT_EQ(init(10, Z_DEFLATED, 12, 8, 0, ZLIB_VERSION, size), Z_STREAM_ERROR);
    EXPECT_EQ(init(6, 7, 12, 8, 0, ZLIB_VERSION, size), Z_STREAM_ERROR);
    EXPECT_EQ(init(6, Z_DEFLATED, 8, 8, 0, ZLIB_VERSION, size), Z_STREAM_ERROR);
    EXPECT_EQ(init(6, Z_DEFLATED, -12, 8, 0, ZLIB_VERSION, size), Z_STREAM_ERROR);
    EXPECT_EQ(init(6, Z_DEFLATED, 12, 0, 0, ZLIB_VERSION, size), Z_STREAM_ERROR);
    EXPECT_EQ(init(6, Z_DEFLATED, 12, 8, 9, ZLIB_VERSION, size), Z_STREAM_ERROR);
    EXPECT_EQ(IsalDeflateInit2(nullptr, 6, Z_DEFLATED, 12, 8, 0, ZLIB_VERSION, size),
              Z_STREAM_ERROR);
    EXPECT_EQ(IsalDeflate(&stream, Z_FINISH), Z_STREAM_ERROR);
    EXPECT_EQ(IsalDeflateEnd(&stream), Z_STREAM_ERROR);

    ASSERT_EQ(Begin(stream), Z_OK);
    Bytes output(100);
    stream.next_out = output.data();
    stream.avail_out = 100;
    EXPECT_EQ(IsalDeflate(&stream, Z_SYNC_FLUSH), Z_STREAM_ERROR);
    stream.avail_out = 0;
    EXPECT_EQ(IsalDeflate(&stream, Z_FINISH), Z_BUF_ERROR);
    stream.avail_out = 100;
    EXPECT_EQ(IsalDeflate(&stream, Z_NO_FLUSH), Z_OK) << "the header";
    EXPECT_EQ(IsalDeflate(&stream, Z_NO_FLUSH), Z_BUF_ERROR) << "nothing to do";
    EXPECT_EQ(IsalDeflate(&stream, Z_FINISH), Z_STREAM_END);
    EXPECT_EQ(IsalDeflate(&stream, Z_FINISH), Z_STREAM_END);
    EXPECT_EQ(IsalDeflate(&stream, Z_NO_FLUSH), Z_STREAM_ERROR);
    EXPECT_EQ(IsalDeflateEnd(&stream), Z_OK);
}

TEST(IsalDeflate, TwoStreamsDontDisturbEachOther) {
    z_stream first{};
    z_stream second{};
    ASSERT_EQ(Begin(first), Z_OK);
    ASSERT_EQ(Begin(second), Z_OK);
    Bytes ramp = Ramp(1000);
    Bytes noise = Noise(1000);
    Bytes firstOut(5000);
    Bytes secondOut(5000);
    first.next_in = ramp.data();
    second.next_in = noise.data();
    first.avail_in = second.avail_in = 1000;
    first.next_out = firstOut.data();
    second.next_out = secondOut.data();
    first.avail_out = second.avail_out = 5000;
    EXPECT_EQ(IsalDeflate(&first, Z_NO_FLUSH), Z_OK);
    EXPECT_EQ(IsalDeflate(&second, Z_NO_FLUSH), Z_OK);
    EXPECT_EQ(IsalDeflate(&first, Z_FINISH), Z_STREAM_END);
    EXPECT_EQ(IsalDeflate(&second, Z_FINISH), Z_STREAM_END);
    firstOut.resize(first.total_out);
    secondOut.resize(second.total_out);
    EXPECT_EQ(Inflate(firstOut, 1000), ramp);
    EXPECT_EQ(Inflate(secondOut, 1000), noise);
    EXPECT_EQ(IsalDeflateEnd(&first), Z_OK);
    EXPECT_EQ(IsalDeflateEnd(&second), Z_OK);
}

}  // namespace
}  // namespace command

#endif

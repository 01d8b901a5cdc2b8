// The table of deflate functions, working and failing ones in it.

#include "psdfile/deflate_functions.h"

#include <gtest/gtest.h>

#include <boost/make_shared.hpp>

#include "psdfile/channel_image_data.h"
#include "tests/documents/test_sources.h"
#include "tests/documents/written_bytes.h"

namespace psdfile {
namespace {

// What the functions of the test's own tables were called with.
struct Calls {
    int inits = 0;
    int deflates = 0;
    int ends = 0;
    int lastFlush = -1;
    int level = 0;
    int method = 0;
    int windowBits = 0;
    int memLevel = 0;
    int strategy = 0;
} calls;

int InitFails(z_streamp, int, int, int, int, int, const char*, int) {
    ++calls.inits;
    return Z_MEM_ERROR;
}

int InitRecords(z_streamp stream, int level, int method, int windowBits, int memLevel, int strategy,
                const char* version, int size) {
    ++calls.inits;
    calls.level = level;
    calls.method = method;
    calls.windowBits = windowBits;
    calls.memLevel = memLevel;
    calls.strategy = strategy;
    return ::deflateInit2_(stream, level, method, windowBits, memLevel, strategy, version, size);
}

int DeflateFails(z_streamp, int) {
    ++calls.deflates;
    return Z_STREAM_ERROR;
}

int DeflateFailsWithFullOutput(z_streamp stream, int) {
    ++calls.deflates;
    stream->avail_out = 0;
    return Z_DATA_ERROR;
}

int DeflateRecords(z_streamp stream, int flush) {
    ++calls.deflates;
    calls.lastFlush = flush;
    return ::deflate(stream, flush);
}

int EndRecords(z_streamp stream) {
    ++calls.ends;
    return ::deflateEnd(stream);
}

class DeflateTable : public testing::Test {
  protected:
    DeflateTable() { calls = {}; }
    ~DeflateTable() override { SetDeflateFunctions(ZlibDeflateFunctions()); }

    // A 16-bit channel of one row a call of deflate.
    static std::string Channel(std::uint32_t height) {
        PSDChannelImageData channel(4, height, 16, compressionZIP, Pattern(4, height, 1), true);
        return WrittenHex(channel);
    }
};

TEST_F(DeflateTable, IsZlibsAtFirst) {
    EXPECT_EQ(CurrentDeflateFunctions().deflateInit2_, &::deflateInit2_);
    EXPECT_EQ(CurrentDeflateFunctions().deflate, &::deflate);
    EXPECT_EQ(CurrentDeflateFunctions().deflateEnd, &::deflateEnd);
}

TEST_F(DeflateTable, IsReplacedAndReturned) {
    const DeflateFunctions before = SetDeflateFunctions({InitRecords, DeflateRecords, EndRecords});
    EXPECT_EQ(before.deflate, &::deflate);
    EXPECT_EQ(CurrentDeflateFunctions().deflateInit2_, &InitRecords);
    const DeflateFunctions second = SetDeflateFunctions(before);
    EXPECT_EQ(second.deflateInit2_, &InitRecords);
    EXPECT_EQ(second.deflate, &DeflateRecords);
    EXPECT_EQ(second.deflateEnd, &EndRecords);
    EXPECT_EQ(CurrentDeflateFunctions().deflate, &::deflate);
}

TEST_F(DeflateTable, IsAskedForAWindowOf4KBAtTheDefaultLevel) {
    const std::string withZlib = Channel(3);
    SetDeflateFunctions({InitRecords, DeflateRecords, EndRecords});
    EXPECT_EQ(Channel(3), withZlib);
    EXPECT_EQ(calls.inits, 1);
    EXPECT_EQ(calls.level, -1);
    EXPECT_EQ(calls.method, 8);
    EXPECT_EQ(calls.windowBits, 12);
    EXPECT_EQ(calls.memLevel, 8);
    EXPECT_EQ(calls.strategy, 0);
    EXPECT_EQ(calls.ends, 1);
}

TEST_F(DeflateTable, IsToldToFinishOnTheOnlyRowOfAChannel) {
    SetDeflateFunctions({InitRecords, DeflateRecords, EndRecords});
    Channel(1);
    EXPECT_EQ(calls.lastFlush, Z_FINISH);
}

TEST_F(DeflateTable, ThatFailsToStartEndsTheChannelSilently) {
    SetDeflateFunctions({InitFails, DeflateRecords, EndRecords});
    EXPECT_EQ(Channel(3), "00 02");
    EXPECT_EQ(calls.inits, 1);
    EXPECT_EQ(calls.deflates, 0);
    EXPECT_EQ(calls.ends, 0);
}

TEST_F(DeflateTable, ThatFailsOnARowEndsTheChannelSilently) {
    SetDeflateFunctions({InitRecords, DeflateFails, EndRecords});
    EXPECT_EQ(Channel(3), "00 02");
    EXPECT_EQ(calls.deflates, 1);
    EXPECT_EQ(calls.ends, 1);
}

TEST_F(DeflateTable, ThatFailsWithAFullOutputDoesNotRunForEver) {
    SetDeflateFunctions({InitRecords, DeflateFailsWithFullOutput, EndRecords});
    // The output row is handed on as it is: 4 samples of zero.
    EXPECT_EQ(Channel(3), "00 02 00 00 00 00 00 00 00 00");
    EXPECT_EQ(calls.deflates, 1);
    EXPECT_EQ(calls.ends, 1);
}

}  // namespace
}  // namespace psdfile

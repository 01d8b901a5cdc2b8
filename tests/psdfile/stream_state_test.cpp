// The two words of a stream and the 2 GB limit.

#include "psdfile/stream_state.h"

#include <gtest/gtest.h>

#include <sstream>

#include "tests/documents/counting_stream.h"

namespace psdfile {
namespace {

TEST(StreamState, BothWordsAreZeroOnANewStreamAndBelongToTheStream) {
    std::ostringstream first;
    std::ostringstream second;
    EXPECT_EQ(PSBMode(first), 0);
    EXPECT_EQ(FileTooLarge(first), 0);
    PSBMode(first) = 1;
    FileTooLarge(first) = 1;
    EXPECT_EQ(PSBMode(first), 1);
    EXPECT_EQ(PSBMode(second), 0);
    EXPECT_EQ(FileTooLarge(second), 0);
}

TEST(CheckFileSize, LetsAPSDOf2147483647BytesPass) {
    CountingBuffer buffer;
    std::ostream stream(&buffer);
    stream.seekp(2147483647);
    CheckFileSize(stream);
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(FileTooLarge(stream), 0);
}

TEST(CheckFileSize, StopsAPSDAt2147483648Bytes) {
    CountingBuffer buffer;
    std::ostream stream(&buffer);
    stream.seekp(2147483648);
    CheckFileSize(stream);
    EXPECT_EQ(stream.rdstate(), std::ios_base::failbit);
    EXPECT_EQ(FileTooLarge(stream), 1);
}

TEST(CheckFileSize, LetsAPSBOfAnySizePass) {
    CountingBuffer buffer;
    std::ostream stream(&buffer);
    PSBMode(stream) = 1;
    for (const std::streamoff size : {2147483647LL, 2147483648LL, 1LL << 40}) {
        stream.seekp(size);
        CheckFileSize(stream);
        EXPECT_TRUE(stream.good()) << size;
        EXPECT_EQ(FileTooLarge(stream), 0) << size;
    }
}

TEST(CheckFileSize, LeavesAStreamThatFailedForAnotherReasonWithoutTheMark) {
    CountingBuffer buffer;
    std::ostream stream(&buffer);
    stream.seekp(2147483648);
    stream.setstate(std::ios_base::badbit);
    CheckFileSize(stream);
    EXPECT_TRUE(stream.bad());
    EXPECT_EQ(FileTooLarge(stream), 0);
}

}  // namespace
}  // namespace psdfile

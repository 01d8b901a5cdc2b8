#include "command/jpeg_end.h"

#include <gtest/gtest.h>

#include <string>

#include "command/input_file.h"

namespace command {
namespace {

// A segment with its length.
std::string Segment(char mark, const std::string& body) {
    const std::size_t length = body.size() + 2;
    return std::string("\xff") + mark + static_cast<char>(length >> 8) +
           static_cast<char>(length & 255) + body;
}

const std::string start = "\xff\xd8";
const std::string end = "\xff\xd9";
// A thumbnail with an end of its own.
const std::string preview = Segment('\xe1', "Exif" + start + end);
const std::string scan = Segment('\xda', "scan");

TEST(JpegEnd, IsFoundBehindThePixels) {
    EXPECT_TRUE(ReachesJpegEnd(start + preview + scan + "pixels" + end));
    EXPECT_TRUE(ReachesJpegEnd(start + scan +
                               std::string("a\xff\0b\xff\xd0"
                                           "c",
                                           7) +
                               end))
        << "the data have 0xff and restarts";
    EXPECT_TRUE(ReachesJpegEnd(start + scan + "a" + Segment('\xc4', "table") + scan + "b" + end))
        << "several scans";
    EXPECT_TRUE(ReachesJpegEnd(start + "\xff" + scan + "a\xff\xff" + end)) << "0xff before marks";
    EXPECT_TRUE(ReachesJpegEnd(start + scan + "a" + end + "anything"));
}

TEST(JpegEnd, IsMissedWhereverTheFileIsCut) {
    const std::string whole = start + preview + scan +
                              std::string(
                                  "a\xff\0b\xff\xd3"
                                  "c",
                                  7) +
                              Segment('\xc4', "table") + scan + "pixels" + end;
    ASSERT_TRUE(ReachesJpegEnd(whole));
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_FALSE(ReachesJpegEnd(whole.substr(0, size))) << size;
}

TEST(JpegEnd, IsMissedWithoutSegments) {
    EXPECT_FALSE(ReachesJpegEnd("no JPEG" + end));
    EXPECT_FALSE(ReachesJpegEnd(start + "x" + end)) << "data outside of a scan";
    EXPECT_FALSE(ReachesJpegEnd(start + std::string("\xff\xe1\xff\xff", 4) + end));
    EXPECT_FALSE(ReachesJpegEnd(start + std::string("\xff\xe1\0\0", 4))) << "a length of 0";
}

TEST(JpegEnd, OfARealFileIsItsLastMark) {
    const std::string bytes =
        ReadWholeInput(std::string(VELTRANE_SOURCE_DIR) + "/tests/command/files/grey.jpg");
    ASSERT_GT(bytes.size(), 100U);
    EXPECT_TRUE(ReachesJpegEnd(bytes));
    EXPECT_FALSE(ReachesJpegEnd(bytes.substr(0, bytes.size() - 1)));
}

}  // namespace
}  // namespace command

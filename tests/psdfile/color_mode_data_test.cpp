// The colour mode section at each depth.

#include "psdfile/color_mode_data.h"

#include <gtest/gtest.h>

#include "tests/documents/written_bytes.h"

namespace psdfile {
namespace {

std::string Section(std::uint32_t depth, bool psb) {
    PSDColorModeData data;
    data.depth = depth;
    return WrittenHex(data, psb);
}

TEST(ColorModeData, IsAZeroLengthAt8And16Bits) {
    EXPECT_EQ(Section(8, false), "00 00 00 00");
    EXPECT_EQ(Section(16, false), "00 00 00 00");
    EXPECT_EQ(Section(16, true), "00 00 00 00");
}

TEST(ColorModeData, IsAFixedBlockOf74BytesAt32Bits) {
    const std::string expected =
        "00 00 00 4A "
        "68 64 72 74 00 00 00 03 3F 00 00 00 00 00 00 02 00 00 00 08 00 44 00 65 00 66 00 61 00 75 "
        "00 6C 00 74 00 00 00 02 00 02 00 00 00 00 00 FF 00 FF 01 01 00 00 00 00 00 00 00 00 41 80 "
        "00 00 00 00 00 01 00 00 00 00 3F 80 00 00";
    EXPECT_EQ(Section(32, false), expected);
    EXPECT_EQ(Section(32, true), expected);
}

}  // namespace
}  // namespace psdfile

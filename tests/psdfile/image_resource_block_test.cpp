// The frame of an image resource.

#include "psdfile/image_resource_block.h"

#include <gtest/gtest.h>

#include "psdfile/four_char_code.h"
#include "tests/documents/written_bytes.h"

namespace psdfile {
namespace {

TEST(ImageResourceBlock, WithoutNameAndDataHasTwelveBytes) {
    EXPECT_EQ(WrittenHex(PSDImageResourceBlock(0x1234)), "38 42 49 4D 12 34 00 00 00 00 00 00");
}

TEST(ImageResourceBlock, PadsItsNameToAnEvenSize) {
    EXPECT_EQ(WrittenHex(PSDImageResourceBlock(1, "a")), "38 42 49 4D 00 01 01 61 00 00 00 00");
    EXPECT_EQ(WrittenHex(PSDImageResourceBlock(1, "ab")),
              "38 42 49 4D 00 01 02 61 62 00 00 00 00 00");
}

TEST(ImageResourceBlock, LeavesThePaddingOfItsDataOutOfTheLength) {
    PSDImageResourceBlock block(1);
    block.data.Add<PSint8>(std::uint8_t{9});
    EXPECT_EQ(WrittenHex(block), "38 42 49 4D 00 01 00 00 00 00 00 01 09 00");
    EXPECT_EQ(WrittenHex(block, true), "38 42 49 4D 00 01 00 00 00 00 00 01 09 00");
}

TEST(ImageResourceBlock, MayHaveASignatureOfItsOwn) {
    PSDImageResourceBlock block(1);
    block.signature.value = FourCharCode("abCd");
    EXPECT_EQ(WrittenHex(block), "61 62 43 64 00 01 00 00 00 00 00 00");
}

}  // namespace
}  // namespace psdfile

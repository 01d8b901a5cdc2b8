// The 26 bytes of the header.

#include "psdfile/file_header.h"

#include <gtest/gtest.h>

#include "tests/documents/written_bytes.h"

namespace psdfile {
namespace {

TEST(FileHeader, Has26BytesInAFixedOrder) {
    PSDFileHeader header;
    header.version = 2;
    header.channels = 5;
    header.height = 0x01020304;
    header.width = 0x05060708;
    header.depth = 16;
    EXPECT_EQ(WrittenHex(header),
              "38 42 50 53 00 02 00 00 00 00 00 00 00 05 01 02 03 04 05 06 07 08 00 10 00 03");
}

TEST(FileHeader, IsAPSDOf3ChannelsOf8BitsByDefault) {
    EXPECT_EQ(WrittenHex(PSDFileHeader()),
              "38 42 50 53 00 01 00 00 00 00 00 00 00 03 00 00 00 00 00 00 00 00 00 08 00 03");
}

}  // namespace
}  // namespace psdfile

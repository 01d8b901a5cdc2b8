// The pieces of descriptors, down to the bytes.

#include "psdfile/descriptor_items.h"

#include <gtest/gtest.h>

#include <sstream>

#include "psdfile/four_char_code.h"
#include "tests/documents/written_bytes.h"

namespace psdfile {
namespace {

TEST(DescriptorClass, HasAnEmptyNameForPeopleAndCountsItsItems) {
    std::ostringstream stream;
    WriteClass(stream, FourCharCode("RGBC"), 3);
    EXPECT_EQ(Hex(stream.str()), "00 00 00 01 00 00 00 00 00 00 52 47 42 43 00 00 00 03");
}

TEST(DescriptorKey, StandsBehindItsLengthAndHasNoTerminator) {
    std::ostringstream stream;
    WriteKey(stream, "3DLUT");
    EXPECT_EQ(Hex(stream.str()), "00 00 00 05 33 44 4C 55 54");
}

TEST(DescriptorItem, OfAFourCharacterKeyHasAZeroForItsLength) {
    std::ostringstream stream;
    WriteItemHead(stream, FourCharCode("Dthr"), FourCharCode("bool"));
    EXPECT_EQ(Hex(stream.str()), "00 00 00 00 44 74 68 72 62 6F 6F 6C");
}

TEST(DescriptorItem, OfALongerKeyHasItsLength) {
    std::ostringstream stream;
    WriteItemHead(stream, "profile", FourCharCode("tdta"));
    EXPECT_EQ(Hex(stream.str()), "00 00 00 07 70 72 6F 66 69 6C 65 74 64 74 61");
}

}  // namespace
}  // namespace psdfile

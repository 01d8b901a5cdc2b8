// Placeholders, patches and padding.

#include "psdfile/length_field.h"

#include <gtest/gtest.h>

#include <sstream>

#include "tests/documents/written_bytes.h"

namespace psdfile {
namespace {

TEST(LengthField, HasFourBytesOrEight) {
    std::ostringstream stream;
    WriteLengthField(stream, 0x01020304, false);
    WriteLengthField(stream, 0x0102030405060708, true);
    EXPECT_EQ(Hex(stream.str()), "01 02 03 04 01 02 03 04 05 06 07 08");
}

TEST(LengthField, IsCutToItsLow32BitsInFourBytes) {
    std::ostringstream stream;
    WriteLengthField(stream, 0x100000002, false);
    EXPECT_EQ(Hex(stream.str()), "00 00 00 02");
}

TEST(LengthField, IsPatchedInPlaceWithTheStreamLeftBehindIt) {
    std::stringstream stream;
    stream << "abcdefgh";
    PatchLengthField(stream, 2, 0x41424344, false);
    EXPECT_EQ(stream.str(), "abABCDgh");
    EXPECT_EQ(stream.tellp(), 6);
}

TEST(Padding, FillsToTheMultipleCountedFromTheStart) {
    for (int size = 0; size <= 8; ++size) {
        std::stringstream stream;
        stream << "xyz";
        const std::streampos start = stream.tellp();
        stream << std::string(static_cast<std::size_t>(size), 'a');
        PadFrom(stream, start, 4);
        EXPECT_EQ(stream.str(),
                  "xyz" + std::string(static_cast<std::size_t>(size), 'a') +
                      std::string(static_cast<std::size_t>((4 - size % 4) % 4), '\0'));
    }
}

TEST(Padding, OfAStreamThatFailedBehindTheStartEnds) {
    std::stringstream stream;
    stream << "xyz";
    const std::streampos start = stream.tellp();
    stream.setstate(std::ios_base::badbit);
    PadFrom(stream, start, 4);
    EXPECT_EQ(stream.str(), "xyz");
}

}  // namespace
}  // namespace psdfile

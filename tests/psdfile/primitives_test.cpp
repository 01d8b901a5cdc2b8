// Numbers and raw data as bytes of the file.

#include "psdfile/primitives.h"

#include <gtest/gtest.h>

#include <array>

#include "tests/documents/written_bytes.h"

namespace psdfile {
namespace {

TEST(Numbers, AreWrittenHighByteFirst) {
    EXPECT_EQ(WrittenHex(PSint8(0xAB)), "AB");
    EXPECT_EQ(WrittenHex(PSint16(0x1234)), "12 34");
    EXPECT_EQ(WrittenHex(PSint32(0x12345678)), "12 34 56 78");
    EXPECT_EQ(WrittenHex(PSint64(0x123456789ABCDEF0)), "12 34 56 78 9A BC DE F0");
}

TEST(Numbers, OfFloatingPointHaveFourAndEightBytes) {
    EXPECT_EQ(WrittenHex(PSfloat16(-2.5F)), "C0 20 00 00");
    EXPECT_EQ(WrittenHex(PSdouble32(1.0)), "3F F0 00 00 00 00 00 00");
}

TEST(Numbers, AreZeroByDefault) {
    EXPECT_EQ(WrittenHex(PSint16()), "00 00");
    EXPECT_EQ(WrittenHex(PSdouble32()), "00 00 00 00 00 00 00 00");
}

TEST(Data, IsEmptyByDefault) {
    PSdata data;
    EXPECT_EQ(data.GetSize(), 0U);
    EXPECT_EQ(WrittenHex(data), "");
}

TEST(Data, KeepsACopyOfItsOwn) {
    std::array<unsigned char, 3> bytes{1, 0, 255};
    PSdata data(bytes.data(), bytes.size());
    PSdata copy(data);
    bytes[0] = 9;
    data.SetData(bytes.data(), 2);
    EXPECT_EQ(WrittenHex(data), "09 00");
    EXPECT_EQ(data.GetSize(), 2U);
    EXPECT_EQ(WrittenHex(copy), "01 00 FF");
    EXPECT_EQ(copy.GetSize(), 3U);
}

TEST(Data, OfNoBytesMayBeNull) {
    PSdata data("abc", 3);
    data.SetData(nullptr, 0);
    EXPECT_EQ(data.GetSize(), 0U);
    EXPECT_EQ(WrittenHex(data), "");
}

}  // namespace
}  // namespace psdfile

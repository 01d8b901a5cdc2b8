// The blocks of scene data, down to the bytes.

#include "psdfile/scene_data_blocks.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "tests/documents/written_bytes.h"

namespace {

using psdfile::Hex;
using psdfile::WrittenBytes;
using psdfile::WrittenHex;

const SceneDataValues values = {1, -2, 0.5, 0, 4, 8, -0.25, 16, 1e3};
const std::string valuesHex =
    "3F F0 00 00 00 00 00 00 C0 00 00 00 00 00 00 00 3F E0 00 00 00 00 00 00 "
    "00 00 00 00 00 00 00 00 40 10 00 00 00 00 00 00 40 20 00 00 00 00 00 00 "
    "BF D0 00 00 00 00 00 00 40 30 00 00 00 00 00 00 40 8F 40 00 00 00 00 00";

// The two bytes after the signature.
std::string IDHex(psdfile::PSDPart&& block) {
    return WrittenHex(block).substr(12, 5);
}

TEST(CameraBlock, HasItsOwnSignatureAndIDAndNoName) {
    EXPECT_EQ(WrittenHex(PSDIRB_Camera(0, 7, values)),
              "71 7A 4D 6B E3 27 00 00 00 00 00 50 00 00 00 01 00 00 00 07 " + valuesHex);
}

TEST(CameraBlock, IsTheSameInTheLargeFormat) {
    EXPECT_EQ(WrittenHex(PSDIRB_Camera(0, 7, values), true),
              WrittenHex(PSDIRB_Camera(0, 7, values)));
}

TEST(CameraBlock, OfAnyOtherIndexIsTheSecondField) {
    EXPECT_EQ(WrittenHex(PSDIRB_Camera(1, 0xFFFFFFFF, values)),
              "71 7A 4D 6B E3 28 00 00 00 00 00 50 00 00 00 01 FF FF FF FF " + valuesHex);
    EXPECT_EQ(IDHex(PSDIRB_Camera(2, 0, values)), "E3 28");
    EXPECT_EQ(IDHex(PSDIRB_Camera(-1, 0, values)), "E3 28");
}

TEST(HelperBlock, CarriesTheHelpersName) {
    EXPECT_EQ(WrittenHex(PSDIRB_Helper("Lamp", 0, 0, values)),
              "71 7A 4D 6B 75 30 04 4C 61 6D 70 00 00 00 00 4C 00 00 00 01 " + valuesHex);
    EXPECT_EQ(WrittenHex(PSDIRB_Helper("Bulbs", 0, 0, values), true),
              "71 7A 4D 6B 75 30 05 42 75 6C 62 73 00 00 00 4C 00 00 00 01 " + valuesHex);
}

TEST(HelperBlock, WithoutANameHasTwoZeroBytes) {
    const std::string expected = "71 7A 4D 6B 75 30 00 00 00 00 00 4C 00 00 00 01 " + valuesHex;
    EXPECT_EQ(WrittenHex(PSDIRB_Helper("", 0, 0, values)), expected);
    EXPECT_EQ(WrittenHex(PSDIRB_Helper(nullptr, 0, 0, values)), expected);
}

TEST(HelperBlock, CutsANameTo255Characters) {
    PSDIRB_Helper block((std::string(255, 'a') + std::string(45, 'b')).c_str(), 0, 0, values);
    const std::string bytes = WrittenBytes(block);
    EXPECT_EQ(bytes.size(), 4U + 2 + 256 + 4 + 76);
    EXPECT_EQ(bytes.substr(6, 256), '\xFF' + std::string(255, 'a'));
    EXPECT_EQ(Hex(bytes.substr(262)), "00 00 00 4C 00 00 00 01 " + valuesHex);
}

TEST(HelperBlock, HasAnIDForEachHelperAndField) {
    EXPECT_EQ(IDHex(PSDIRB_Helper("a", 0, 1, values)), "75 31");    // 30001
    EXPECT_EQ(IDHex(PSDIRB_Helper("a", 1, 0, values)), "75 32");    // 30002
    EXPECT_EQ(IDHex(PSDIRB_Helper("a", 999, 0, values)), "7C FE");  // 31998
    EXPECT_EQ(IDHex(PSDIRB_Helper("a", 999, 1, values)), "7C FF");  // 31999
}

TEST(HelperBlock, BeyondTheLastIDSharesIt) {
    constexpr auto lastIndex = std::numeric_limits<std::uint16_t>::max();
    constexpr auto lastFrame = std::numeric_limits<std::uint32_t>::max();
    EXPECT_EQ(IDHex(PSDIRB_Helper("a", 1000, 0, values)), "7C FF");
    EXPECT_EQ(IDHex(PSDIRB_Helper("a", 1000, 1, values)), "7C FF");
    EXPECT_EQ(IDHex(PSDIRB_Helper("a", lastIndex, 0, values)), "7C FF");
    EXPECT_EQ(IDHex(PSDIRB_Helper("a", 1, lastFrame, values)), "7C FF");
}

}  // namespace

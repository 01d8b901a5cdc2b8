// A layer of one colour, down to the bytes.

#include "psdfile/solid_color_adjustment_layer.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/documents/written_bytes.h"

namespace psdfile {
namespace {

// 8BIM SoCo, 112 bytes: version 16, an object "null" of one item "Clr ", an object of class "RGBC"
// with three items; then each as zero, key, "doub" and eight bytes.
std::string Block(const std::string& red, const std::string& green, const std::string& blue) {
    return "38 42 49 4D 53 6F 43 6F 00 00 00 70 00 00 00 10 "
           "00 00 00 01 00 00 00 00 00 00 6E 75 6C 6C 00 00 00 01 "
           "00 00 00 00 43 6C 72 20 4F 62 6A 63 "
           "00 00 00 01 00 00 00 00 00 00 52 47 42 43 00 00 00 03 "
           "00 00 00 00 52 64 20 20 64 6F 75 62 " +
           red + " 00 00 00 00 47 72 6E 20 64 6F 75 62 " + green +
           " 00 00 00 00 42 6C 20 20 64 6F 75 62 " + blue;
}

TEST(SolidColorLayer, OfWhiteHas255InAllThreeDoubles) {
    PSDSolidColorAdjustmentLayer layer;
    layer.SetColor(255, 255, 255);
    const std::string level = "40 6F E0 00 00 00 00 00";
    EXPECT_EQ(WrittenHex(layer), Block(level, level, level));
    EXPECT_EQ(WrittenHex(layer, true), Block(level, level, level));
    EXPECT_EQ(WrittenBytes(layer).size(), 12U + 112U);
}

TEST(SolidColorLayer, IsBlackUntilAColorIsSet) {
    const std::string level = "00 00 00 00 00 00 00 00";
    EXPECT_EQ(WrittenHex(PSDSolidColorAdjustmentLayer()), Block(level, level, level));
}

TEST(SolidColorLayer, KeepsRedGreenAndBlueApart) {
    PSDSolidColorAdjustmentLayer layer;
    layer.SetColor(1, 127.5, 64);
    EXPECT_EQ(WrittenHex(layer), Block("3F F0 00 00 00 00 00 00", "40 5F E0 00 00 00 00 00",
                                       "40 50 00 00 00 00 00 00"));
}

TEST(SolidColorLayer, TakesTheLastColorSet) {
    PSDSolidColorAdjustmentLayer layer;
    layer.SetColor(255, 255, 255);
    layer.SetColor(1, 127.5, 64);
    PSDSolidColorAdjustmentLayer other;
    other.SetColor(1, 127.5, 64);
    EXPECT_EQ(WrittenHex(layer), WrittenHex(other));
}

}  // namespace
}  // namespace psdfile

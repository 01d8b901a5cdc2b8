// The curve of linear renders, down to the bytes.

#include "psdfile/curves_adjustment_layer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "tests/documents/written_bytes.h"

namespace psdfile {
namespace {

const std::string curveHex =
    "00 0C 15 1C 21 26 2A 2E 31 34 37 3A 3D 40 42 44 47 49 4B 4D 4F 51 53 55 56 58 5A 5B 5D 5F 60 "
    "62 63 65 66 67 69 6A 6C 6D 6E 70 71 72 73 75 76 77 78 79 7A 7C 7D 7E 7F 80 81 82 83 84 85 86 "
    "87 88 89 8A 8B 8C 8D 8E 8F 90 91 92 93 94 95 95 96 97 98 99 9A 9B 9B 9C 9D 9E 9F A0 A0 A1 A2 "
    "A3 A4 A4 A5 A6 A7 A8 A8 A9 AA AB AB AC AD AE AE AF B0 B0 B1 B2 B3 B3 B4 B5 B5 B6 B7 B7 B8 B9 "
    "B9 BA BB BB BC BD BD BE BF BF C0 C1 C1 C2 C3 C3 C4 C4 C5 C6 C6 C7 C8 C8 C9 C9 CA CB CB CC CC "
    "CD CD CE CF CF D0 D0 D1 D2 D2 D3 D3 D4 D4 D5 D6 D6 D7 D7 D8 D8 D9 D9 DA DA DB DC DC DD DD DE "
    "DE DF DF E0 E0 E1 E1 E2 E2 E3 E3 E4 E4 E5 E5 E6 E7 E7 E8 E8 E9 E9 EA EA EB EB EB EC EC ED ED "
    "EE EE EF EF F0 F0 F1 F1 F2 F2 F3 F3 F4 F4 F5 F5 F6 F6 F6 F7 F7 F8 F8 F9 F9 FA FA FB FB FB FC "
    "FC FD FD FE FE FF FF FF ";

TEST(CurvesLayer, HoldsTheCurveTwice) {
    EXPECT_EQ(WrittenHex(PSDCurvesAdjustmentLayer()),
              "38 42 49 4D 63 75 72 76 00 00 02 14 "  // 8BIM curv, 532
              "01 00 01 00 00 00 01 "                 // table, version 1, composite
                  + curveHex +
                  "43 72 76 20 00 03 00 00 00 01 "  // Crv, version 3, one curve
                  "00 00 "                          // channel 0
                  + curveHex + "00");
}

TEST(CurvesLayer, HasNoPaddingInEitherFormat) {
    PSDCurvesAdjustmentLayer layer;
    EXPECT_EQ(WrittenBytes(layer, false).size(), 12U + 532U);
    EXPECT_EQ(WrittenBytes(layer, true), WrittenBytes(layer, false));
}

TEST(CurvesLayer, EncodesAsSRGBToWithinOneStep) {
    PSDCurvesAdjustmentLayer layer;
    const std::string curve = WrittenBytes(layer).substr(12 + 7, 256);
    for (std::size_t input = 0; input < curve.size(); ++input) {
        const double linear = static_cast<double>(input) / 255;
        const double encoded =
            linear <= 0.0031308 ? 12.92 * linear : 1.055 * std::pow(linear, 1 / 2.4) - 0.055;
        EXPECT_NEAR(static_cast<unsigned char>(curve[input]), 255 * encoded, 1) << input;
    }
}

}  // namespace
}  // namespace psdfile

#include "command/transfer_curve.h"

#include <gtest/gtest.h>

namespace command {
namespace {

constexpr TransferCurve srgb{TransferCurve::Kind::SRGB};

TEST(TransferCurve, SRGBHasItsKnownValues) {
    EXPECT_NEAR(Decode(srgb, 0.5), 0.21404114048223255, 1e-15);
    EXPECT_NEAR(Decode(srgb, 0.04045), 0.04045 / 12.92, 1e-15);
    EXPECT_NEAR(Decode(srgb, 0.02), 0.02 / 12.92, 1e-15);
    EXPECT_DOUBLE_EQ(Decode(srgb, 0.0), 0.0);
    EXPECT_DOUBLE_EQ(Decode(srgb, 1.0), 1.0);
}

TEST(TransferCurve, APowerIsAPower) {
    constexpr TransferCurve curve{TransferCurve::Kind::Power, 2.0};
    EXPECT_DOUBLE_EQ(Decode(curve, 0.5), 0.25);
    EXPECT_DOUBLE_EQ(Decode(curve, 3.0), 9.0);
}

TEST(TransferCurve, LinearChangesNothing) {
    EXPECT_EQ(Decode({}, 0.3), 0.3);
}

TEST(TransferCurve, NegativeValuesAreMirrored) {
    EXPECT_DOUBLE_EQ(Decode(srgb, -0.5), -Decode(srgb, 0.5));
    EXPECT_DOUBLE_EQ(Encode(srgb, -0.5), -Encode(srgb, 0.5));
}

TEST(TransferCurve, EncodingUndoesDecoding) {
    for (const TransferCurve curve :
         {srgb, TransferCurve{TransferCurve::Kind::Power, 1.8}, TransferCurve{}}) {
        for (int i = 0; i <= 300; ++i) {
            EXPECT_NEAR(Encode(curve, Decode(curve, i / 200.0)), i / 200.0, 1e-12);
        }
    }
}

TEST(DecodeTable, HoldsEveryIntegerExactlyRounded) {
    const std::vector<float> table = DecodeTable(srgb, 255);
    ASSERT_EQ(table.size(), 256U);
    EXPECT_EQ(table[0], 0.0F);
    EXPECT_EQ(table[255], 1.0F);
    EXPECT_EQ(table[128], static_cast<float>(Decode(srgb, 128 / 255.0)));
    EXPECT_EQ(DecodeTable({}, 65535)[65535], 1.0F);
}

}  // namespace
}  // namespace command

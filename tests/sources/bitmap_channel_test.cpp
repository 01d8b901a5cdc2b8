#include "sources/bitmap_channel.h"

#include <gamma.h>
#include <gtest/gtest.h>

#include <cmath>

#include "sources/srgb_curve.h"
#include "tests/sources/fake_bitmap.h"

namespace {

using sources::BitmapToPSDChannel;
using sources::BitmapToPSDChannel_SRGB;

constexpr bool keepPremultiplied = true;
constexpr bool divideByAlpha = false;
constexpr bool gammaCorrected = true;
constexpr bool linear = false;

class BitmapChannel : public testing::Test {
  protected:
    void SetUp() override { gammaMgr = GammaMgr{}; }
    void TearDown() override { gammaMgr = GammaMgr{}; }

    static void UseGamma(float gamma) {
        gammaMgr.enable = TRUE;
        gammaMgr.SetFileOutGamma(gamma);
    }

    FakeBitmap bitmap;
};

TEST_F(BitmapChannel, GivesTheHighByteOfAComponentIn8Bits) {
    SetRow(bitmap, {BMM_Color_64{0x12FF, 0x3400, 0x56AB, 0xFFFF}});
    for (const auto& [selector, expected] : {std::pair{0, 0x12}, {1, 0x34}, {2, 0x56}, {3, 0xFF}}) {
        BitmapToPSDChannel channel(&bitmap, selector, keepPremultiplied, linear);
        EXPECT_EQ(channel.GetRow8(0)[0], expected) << selector;
    }
}

TEST_F(BitmapChannel, GivesAComponentAsItIsIn16Bits) {
    SetRow(bitmap, {BMM_Color_64{1, 2, 3, 4}, BMM_Color_64{65535, 40000, 30000, 65535}});
    BitmapToPSDChannel green(&bitmap, sources::selectGreen, keepPremultiplied, linear);
    EXPECT_EQ(green.GetRow16(0)[0], 2);
    EXPECT_EQ(green.GetRow16(0)[1], 40000);
}

TEST_F(BitmapChannel, GivesAComponentAsItIsIn32Bits) {
    SetRow(bitmap, {BMM_Color_fl{0.5F, -1.0F, 12.0F, 1.0F}});
    BitmapToPSDChannel blue(&bitmap, sources::selectBlue, keepPremultiplied, linear);
    EXPECT_EQ(blue.GetRow32(0)[0], 12.0F);
    BitmapToPSDChannel green(&bitmap, sources::selectGreen, keepPremultiplied, linear);
    EXPECT_EQ(green.GetRow32(0)[0], -1.0F);
}

TEST_F(BitmapChannel, LuminanceIsTheUnweightedMean) {
    SetRow(bitmap, {BMM_Color_64{0x0300, 0x0300, 0x0002, 9}});
    SetRow(bitmap, {BMM_Color_fl{1.0F, 2.0F, 6.0F, 1.0F}});
    BitmapToPSDChannel channel(&bitmap, sources::selectLuminance, keepPremultiplied, linear);
    EXPECT_EQ(channel.GetRow16(0)[0], 0x0602 / 3);
    EXPECT_EQ(channel.GetRow8(0)[0], 0x02);
    EXPECT_EQ(channel.GetRow32(0)[0], 3.0F);
}

TEST_F(BitmapChannel, DividesColourByAlphaIn13Bits) {
    // Alpha 32768 >> 3 is 4096; 20000 * 8191 / 4096 is 39995.1...
    SetRow(bitmap, {BMM_Color_64{20000, 100, 100, 32768}});
    BitmapToPSDChannel channel(&bitmap, sources::selectRed, divideByAlpha, linear);
    EXPECT_EQ(channel.GetRow16(0)[0], 39995);
    EXPECT_EQ(channel.GetRow8(0)[0], 39995 >> 8);
}

TEST_F(BitmapChannel, LuminanceDividesAllThreeColours) {
    SetRow(bitmap, {BMM_Color_64{8191, 8191, 16382, 32768}});
    BitmapToPSDChannel channel(&bitmap, sources::selectLuminance, divideByAlpha, linear);
    // 8191 * 8191 / 4096 is 16380, 16382 * 8191 / 4096 is 32760.
    EXPECT_EQ(channel.GetRow16(0)[0], (16380 + 16380 + 32760) / 3);
}

TEST_F(BitmapChannel, ColourWithoutAlphaStaysAsItIs) {
    SetRow(bitmap, {BMM_Color_64{500, 600, 700, 0}});
    SetRow(bitmap, {BMM_Color_fl{0.25F, 0.5F, 0.75F, 0.0F}});
    BitmapToPSDChannel channel(&bitmap, sources::selectRed, divideByAlpha, linear);
    EXPECT_EQ(channel.GetRow16(0)[0], 500);
    EXPECT_EQ(channel.GetRow8(0)[0], 500 >> 8);
    EXPECT_EQ(channel.GetRow32(0)[0], 0.25F);
}

TEST_F(BitmapChannel, AlphaOf7Of65535IsNoAlphaAnd8Is) {
    SetRow(bitmap, {BMM_Color_64{5, 0, 0, 7}, BMM_Color_64{5, 0, 0, 8}});
    BitmapToPSDChannel channel(&bitmap, sources::selectRed, divideByAlpha, linear);
    EXPECT_EQ(channel.GetRow16(0)[0], 5);
    EXPECT_EQ(channel.GetRow16(0)[1], 5 * 8191);
}

TEST_F(BitmapChannel, ColourAboveAlphaIsCappedInIntegersAndNotInFloats) {
    SetRow(bitmap, {BMM_Color_64{60000, 0, 0, 20000}});
    SetRow(bitmap, {BMM_Color_fl{3.0F, 0.0F, 0.0F, 0.5F}});
    BitmapToPSDChannel channel(&bitmap, sources::selectRed, divideByAlpha, linear);
    EXPECT_EQ(channel.GetRow16(0)[0], 65535);
    EXPECT_EQ(channel.GetRow8(0)[0], 255);
    EXPECT_EQ(channel.GetRow32(0)[0], 6.0F);
}

TEST_F(BitmapChannel, GammaTakesTheTableAtTheUpper13Bits) {
    UseGamma(2.2F);
    SetRow(bitmap, {BMM_Color_64{0x1234, 0, 0, 65535}});
    BitmapToPSDChannel channel(&bitmap, sources::selectRed, keepPremultiplied, gammaCorrected);
    const UWORD expected = gammaMgr.fileOutGammaTable[0x1234 >> 3];
    EXPECT_GT(expected, 0x1234);
    EXPECT_EQ(channel.GetRow16(0)[0], expected);
    EXPECT_EQ(channel.GetRow8(0)[0], expected >> 8);
}

TEST_F(BitmapChannel, GammaOfLuminanceTakesTheTableAtTheSumOver24) {
    UseGamma(2.2F);
    SetRow(bitmap, {BMM_Color_64{1000, 2000, 3001, 65535}});
    BitmapToPSDChannel channel(&bitmap, sources::selectLuminance, keepPremultiplied,
                               gammaCorrected);
    EXPECT_EQ(channel.GetRow16(0)[0], gammaMgr.fileOutGammaTable[6001 / 24]);
}

TEST_F(BitmapChannel, GammaOfFloatsIsTheHostsPowerCurve) {
    UseGamma(2.0F);
    SetRow(bitmap, {BMM_Color_fl{4.0F, 1.0F, 1.0F, 0.25F}});
    BitmapToPSDChannel red(&bitmap, sources::selectRed, keepPremultiplied, gammaCorrected);
    EXPECT_FLOAT_EQ(red.GetRow32(0)[0], 2.0F);
    BitmapToPSDChannel mean(&bitmap, sources::selectLuminance, keepPremultiplied, gammaCorrected);
    EXPECT_FLOAT_EQ(mean.GetRow32(0)[0], std::sqrt(2.0F));
}

TEST_F(BitmapChannel, GammaNeedsTheHostsSwitchAndTheCallersWish) {
    gammaMgr.SetFileOutGamma(2.2F);
    SetRow(bitmap, {BMM_Color_64{0x1234, 0, 0, 65535}});
    gammaMgr.enable = FALSE;
    BitmapToPSDChannel switchedOff(&bitmap, 0, keepPremultiplied, gammaCorrected);
    EXPECT_EQ(switchedOff.GetRow16(0)[0], 0x1234);
    gammaMgr.enable = TRUE;
    BitmapToPSDChannel notWanted(&bitmap, 0, keepPremultiplied, linear);
    EXPECT_EQ(notWanted.GetRow16(0)[0], 0x1234);
}

TEST_F(BitmapChannel, AlphaTakesNoGammaAndNoDivisionInAnyVariant) {
    UseGamma(2.2F);
    SetRow(bitmap, {BMM_Color_64{1, 2, 3, 0x4567}});
    SetRow(bitmap, {BMM_Color_fl{1.0F, 1.0F, 1.0F, 0.5F}});
    BitmapToPSDChannel plain(&bitmap, sources::selectAlpha, divideByAlpha, gammaCorrected);
    BitmapToPSDChannel_SRGB curved(&bitmap, sources::selectAlpha, divideByAlpha, true);
    for (BitmapToPSDChannel* channel : {&plain, static_cast<BitmapToPSDChannel*>(&curved)}) {
        EXPECT_EQ(channel->GetRow16(0)[0], 0x4567);
        EXPECT_EQ(channel->GetRow8(0)[0], 0x45);
        EXPECT_EQ(channel->GetRow32(0)[0], 0.5F);
    }
}

TEST_F(BitmapChannel, TheSRGBVariantCurvesIntegersWithoutTheHostsGamma) {
    SetRow(bitmap, {BMM_Color_64{0x1234, 0, 0, 65535}});
    SetRow(bitmap, {BMM_Color_fl{0.25F, 0.0F, 0.0F, 1.0F}});
    BitmapToPSDChannel_SRGB channel(&bitmap, sources::selectRed, keepPremultiplied, true);
    const std::uint16_t expected = sources::SRGBTable()[0x1234 >> 3];
    EXPECT_EQ(channel.GetRow16(0)[0], expected);
    EXPECT_EQ(channel.GetRow8(0)[0], expected >> 8);
    EXPECT_EQ(channel.GetRow32(0)[0], 0.25F) << "float rows stay linear";
}

TEST_F(BitmapChannel, TheSRGBVariantWithoutItsCurveIsLinearWhateverTheHostsGamma) {
    UseGamma(2.2F);
    SetRow(bitmap, {BMM_Color_64{0x1234, 0, 0, 65535}});
    BitmapToPSDChannel_SRGB channel(&bitmap, sources::selectRed, keepPremultiplied, false);
    EXPECT_EQ(channel.GetRow16(0)[0], 0x1234);
}

TEST_F(BitmapChannel, DitherAddsNoiseBelowTheLowestBitAndRepeatsIt) {
    gammaMgr.dithTrue = TRUE;
    SetRow(bitmap, std::vector<BMM_Color_64>(1000, BMM_Color_64{0x7F80, 0, 0, 65535}));
    BitmapToPSDChannel channel(&bitmap, sources::selectRed, keepPremultiplied, linear);
    const std::uint8_t* row = channel.GetRow8(0);
    const std::vector<std::uint8_t> first(row, row + 1000);
    int higher = 0;
    for (std::uint8_t sample : first) {
        ASSERT_TRUE(sample == 0x7F || sample == 0x80);
        higher += sample == 0x80;
    }
    EXPECT_NEAR(higher, 500, 100);
    row = channel.GetRow8(0);
    EXPECT_EQ(std::vector<std::uint8_t>(row, row + 1000), first) << "a second write repeats it";
    BitmapToPSDChannel green(&bitmap, sources::selectAlpha, keepPremultiplied, linear);
    EXPECT_EQ(green.GetRow8(0)[0], 255) << "capped";
}

TEST_F(BitmapChannel, EveryChannelOfABitmapGetsTheSameNoiseRowByRow) {
    gammaMgr.dithTrue = TRUE;
    SetRow(bitmap, std::vector<BMM_Color_64>(1000, BMM_Color_64{0x7F80, 0x7F80, 0, 65535}));
    bitmap.pixels.width = 500;
    bitmap.pixels.height = 2;
    const auto rows = [this](int selector) {
        BitmapToPSDChannel channel(&bitmap, selector, keepPremultiplied, linear);
        std::vector<std::uint8_t> samples;
        for (std::uint32_t row : {0U, 1U}) {
            const std::uint8_t* row8 = channel.GetRow8(row);
            samples.insert(samples.end(), row8, row8 + 500);
        }
        return samples;
    };
    const std::vector<std::uint8_t> red = rows(sources::selectRed);
    EXPECT_EQ(rows(sources::selectGreen), red);
    EXPECT_NE(std::vector(red.begin(), red.begin() + 500),
              std::vector(red.begin() + 500, red.end()))
        << "the second row goes on where the first ended";
}

TEST_F(BitmapChannel, ReadsTheRowThatIsAskedFor) {
    SetRow(bitmap, {BMM_Color_64{1, 0, 0, 0}, BMM_Color_64{2, 0, 0, 0}, BMM_Color_64{3, 0, 0, 0},
                    BMM_Color_64{4, 0, 0, 0}});
    bitmap.pixels.width = 2;
    bitmap.pixels.height = 2;
    BitmapToPSDChannel red(&bitmap, sources::selectRed, keepPremultiplied, linear);
    EXPECT_EQ(red.GetRow16(1)[0], 3);
    EXPECT_EQ(red.GetRow16(1)[1], 4);
    EXPECT_EQ(red.GetRow16(0)[1], 2);
}

TEST_F(BitmapChannel, TheSRGBVariantLeavesFloatsLinearAlsoWithTheHostsGamma) {
    UseGamma(2.2F);
    SetRow(bitmap, {BMM_Color_fl{0.25F, 0.0F, 0.0F, 1.0F}});
    BitmapToPSDChannel_SRGB channel(&bitmap, sources::selectRed, keepPremultiplied, true);
    EXPECT_EQ(channel.GetRow32(0)[0], 0.25F);
}

TEST_F(BitmapChannel, DitherLeaves16BitsAlone) {
    gammaMgr.dithTrue = TRUE;
    SetRow(bitmap, std::vector<BMM_Color_64>(100, BMM_Color_64{0x7F80, 0, 0, 65535}));
    BitmapToPSDChannel channel(&bitmap, sources::selectRed, keepPremultiplied, linear);
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(channel.GetRow16(0)[i], 0x7F80);
}

TEST_F(BitmapChannel, ABitmapWithoutStorageHasNoWidth) {
    bitmap.storage = nullptr;
    BitmapToPSDChannel channel(&bitmap, sources::selectRed, divideByAlpha, linear);
    EXPECT_NE(channel.GetRow8(0), nullptr);
    EXPECT_NE(channel.GetRow16(0), nullptr);
    EXPECT_NE(channel.GetRow32(0), nullptr);
}

TEST_F(BitmapChannel, ARowThatCantBeReadRepeatsTheOneBefore) {
    SetRow(bitmap, {BMM_Color_64{77, 0, 0, 0}});
    BitmapToPSDChannel channel(&bitmap, sources::selectRed, keepPremultiplied, linear);
    EXPECT_EQ(channel.GetRow16(0)[0], 77);
    bitmap.pixels.pixels64.clear();
    EXPECT_EQ(channel.GetRow16(0)[0], 77);
    BitmapToPSDChannel fresh(&bitmap, sources::selectRed, keepPremultiplied, linear);
    EXPECT_EQ(fresh.GetRow16(0)[0], 0);
}

TEST_F(BitmapChannel, GivesEveryRowInTheSameBuffer) {
    SetRow(bitmap, {BMM_Color_64{1, 2, 3, 4}, BMM_Color_64{5, 6, 7, 8}});
    SetRow(bitmap, {BMM_Color_fl{1, 2, 3, 4}, BMM_Color_fl{5, 6, 7, 8}});
    bitmap.pixels.width = 1;
    bitmap.pixels.height = 2;
    BitmapToPSDChannel channel(&bitmap, sources::selectRed, keepPremultiplied, linear);
    EXPECT_EQ(channel.GetRow8(0), channel.GetRow8(1));
    EXPECT_EQ(channel.GetRow16(0), channel.GetRow16(1));
    EXPECT_EQ(channel.GetRow32(0), channel.GetRow32(1));
}

TEST_F(BitmapChannel, FetchesNothingBeforeARowIsAskedFor) {
    SetRow(bitmap, {BMM_Color_64{1, 2, 3, 4}});
    BitmapToPSDChannel channel(&bitmap, sources::selectRed, keepPremultiplied, linear);
    EXPECT_EQ(bitmap.pixels.reads, 0);
    channel.GetRow16(0);
    EXPECT_EQ(bitmap.pixels.reads, 1);
    EXPECT_FALSE(channel.IsSolid());
}

}  // namespace

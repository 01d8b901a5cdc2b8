#include "sources/vray_vfb_channel.h"

#include <gamma.h>
#include <gmock/gmock.h>

#include <cmath>

#include "sources/bitmap_channel.h"
#include "sources/dither.h"
#include "sources/srgb_curve.h"
#include "tests/sources/fake_bitmap.h"
#include "tests/sources/row_copies.h"

namespace {

using sources::VRayVFBToPSDChannel;
using sources::VRayVFBToPSDChannel_SRGB;
using testing::Each;
using testing::ElementsAre;

constexpr bool keepFramePremultiplied = true;
constexpr bool divideFrameByAlpha = false;
constexpr int corrected = 1;

// What the last read was asked for.
struct Request {
    int channelIndex;
    DWORD colorMapped;
    VRayRegion region;
    int format;
    std::size_t bytes;
    int reserved0, readFlag, reserved1;
};

struct FakeFrameBuffer final : IVRayPixelBuffer {
    void Prepare() override {}
    int GetWidth() override { return static_cast<int>(row64.size()); }
    int GetHeight() override { return 1; }
    int GetNumChannels() override { return 1; }
    bool DescribeChannel(int index, VRayChannelDescription&) override {
        described.push_back(index);
        return true;
    }
    int FindChannel(int) override { return -1; }
    DWORD GetProperty(int number) override { return number == 125 ? 77 : 0; }
    bool GetPixels(int channelIndex, DWORD colorMapped, const VRayRegion& region, int format,
                   std::size_t bytes, void* buffer, int reserved0, int readFlag,
                   int reserved1) override {
        request = {channelIndex, colorMapped, region,   format,
                   bytes,        reserved0,   readFlag, reserved1};
        describedBefore = described.size();
        if (fails) return false;
        if (format == VRAY_PIXELS_16) {
            std::ranges::copy(row64, static_cast<BMM_Color_64*>(buffer));
        } else {
            std::ranges::copy(rowFloat, static_cast<BMM_Color_fl*>(buffer));
        }
        return true;
    }

    std::vector<BMM_Color_64> row64;
    std::vector<BMM_Color_fl> rowFloat;
    bool fails = false;
    std::vector<int> described;
    std::size_t describedBefore = 0;
    Request request{};
};

class VRayChannel : public testing::Test {
  protected:
    VRayChannel() {
        gammaMgr = GammaMgr{};
        buffer.row64 = {{0x1234, 2, 3, 0xFFFF}, {20000, 200, 300, 32768}, {500, 600, 700, 0}};
        buffer.rowFloat = {
            {0.25F, 2.0F, 3.0F, 1.0F}, {0.5F, 9.0F, -1.0F, 0.25F}, {0.5F, 0.5F, 0.5F, 0.0F}};
    }
    ~VRayChannel() override { gammaMgr = GammaMgr{}; }

    FakeFrameBuffer buffer;
};

TEST_F(VRayChannel, TakesOneComponentAtEveryDepth) {
    VRayVFBToPSDChannel red(&buffer, 4, 0, keepFramePremultiplied, false, corrected);
    EXPECT_THAT(Row8(red, 3), ElementsAre(0x12, 20000 >> 8, 1));
    EXPECT_THAT(Row16(red, 3), ElementsAre(0x1234, 20000, 500));
    EXPECT_THAT(Row32(red, 3), ElementsAre(0.25F, 0.5F, 0.5F));
    VRayVFBToPSDChannel mean(&buffer, 4, 4, keepFramePremultiplied, false, corrected);
    EXPECT_THAT(Row16(mean, 3), ElementsAre((0x1234 + 5) / 3, 6833, 600));
}

TEST_F(VRayChannel, DividesByAlphaAsABitmapsChannelDoes) {
    VRayVFBToPSDChannel red(&buffer, 4, 0, divideFrameByAlpha, false, corrected);
    // 0x1234 * 8191 / 8191; 20000 * 8191 / 4096 is 39995.1.
    EXPECT_THAT(Row16(red, 3), ElementsAre(0x1234, 39995, 500));
    EXPECT_THAT(Row32(red, 3), ElementsAre(0.25F, 2.0F, 0.5F));
}

TEST_F(VRayChannel, ReadsOneRowOfTheChannel) {
    VRayVFBToPSDChannel source(&buffer, 4, 0, keepFramePremultiplied, false, corrected);
    const auto expectRequest = [this](int row, int format, std::size_t bytes, int readFlag) {
        const Request& r = buffer.request;
        EXPECT_EQ(r.channelIndex, 4);
        EXPECT_EQ(r.colorMapped, 77U);
        EXPECT_EQ(r.region.x, 0);
        EXPECT_EQ(r.region.y, row);
        EXPECT_EQ(r.region.right, 3);
        EXPECT_EQ(r.region.bottom, row + 1);
        EXPECT_EQ(r.region.width, 3);
        EXPECT_EQ(r.region.height, 1);
        EXPECT_EQ(r.region.reserved0, 0);
        EXPECT_EQ(r.region.reserved1, 0);
        EXPECT_EQ(r.format, format);
        EXPECT_EQ(r.bytes, bytes);
        EXPECT_EQ(r.reserved0, 0);
        EXPECT_EQ(r.readFlag, readFlag);
        EXPECT_EQ(r.reserved1, 0);
    };
    source.GetRow8(7);
    expectRequest(7, 301, 24, 0);
    source.GetRow16(8);
    expectRequest(8, 301, 24, 0);
    source.GetRow32(9);
    expectRequest(9, 303, 48, 0);
    VRayVFBToPSDChannel uncorrected(&buffer, 4, 0, keepFramePremultiplied, false, 0);
    uncorrected.GetRow8(1);
    expectRequest(1, 301, 24, -1);
}

TEST_F(VRayChannel, AsksForTheDescriptionBeforeItReadsMoreThan8Bits) {
    VRayVFBToPSDChannel source(&buffer, 4, 0, keepFramePremultiplied, false, corrected);
    source.GetRow8(0);
    EXPECT_THAT(buffer.described, ElementsAre());
    source.GetRow16(0);
    EXPECT_THAT(buffer.described, ElementsAre(4));
    EXPECT_EQ(buffer.describedBefore, 1U);
    source.GetRow32(0);
    EXPECT_THAT(buffer.described, ElementsAre(4, 4));
    EXPECT_EQ(buffer.describedBefore, 2U);
}

TEST_F(VRayChannel, ARowThatCantBeReadIsWhiteAndOpaque) {
    for (const bool premultiplied : {keepFramePremultiplied, divideFrameByAlpha}) {
        for (int component = 0; component <= 4; ++component) {
            VRayVFBToPSDChannel source(&buffer, 4, component, premultiplied, false, corrected);
            buffer.fails = false;
            source.GetRow8(0);
            source.GetRow32(0);
            buffer.fails = true;
            EXPECT_THAT(Row8(source, 3), Each(255)) << component;
            EXPECT_THAT(Row16(source, 3), Each(65535)) << component;
            EXPECT_THAT(Row32(source, 3), Each(1.0F)) << component;
        }
    }
}

TEST_F(VRayChannel, TakesTheHostsGammaButForAlpha) {
    gammaMgr.enable = TRUE;
    gammaMgr.SetFileOutGamma(2.0F);
    VRayVFBToPSDChannel red(&buffer, 4, 0, keepFramePremultiplied, true, corrected);
    EXPECT_EQ(red.GetRow16(0)[0], gammaMgr.fileOutGammaTable[0x1234 >> 3]);
    EXPECT_FLOAT_EQ(red.GetRow32(0)[0], 0.5F);
    VRayVFBToPSDChannel unwanted(&buffer, 4, 0, keepFramePremultiplied, false, corrected);
    EXPECT_EQ(unwanted.GetRow16(0)[0], 0x1234);
    VRayVFBToPSDChannel alpha(&buffer, 4, 3, keepFramePremultiplied, true, corrected);
    EXPECT_EQ(alpha.GetRow8(0)[1], 128);
    EXPECT_EQ(alpha.GetRow16(0)[1], 32768);
    EXPECT_EQ(alpha.GetRow32(0)[1], 0.25F);
}

TEST_F(VRayChannel, TheSRGBVariantCurvesIntegersAndLeavesFloatsLinear) {
    gammaMgr.enable = TRUE;
    gammaMgr.SetFileOutGamma(2.0F);
    VRayVFBToPSDChannel_SRGB red(&buffer, 4, 0, keepFramePremultiplied, true, corrected);
    const std::uint16_t expected = sources::SRGBTable()[0x1234 >> 3];
    EXPECT_EQ(red.GetRow16(0)[0], expected);
    EXPECT_EQ(red.GetRow8(0)[0], expected >> 8);
    EXPECT_EQ(red.GetRow32(0)[0], 0.25F);
    VRayVFBToPSDChannel_SRGB alpha(&buffer, 4, 3, keepFramePremultiplied, true, corrected);
    EXPECT_EQ(alpha.GetRow8(0)[1], 128);
    EXPECT_EQ(alpha.GetRow16(0)[1], 32768);
    VRayVFBToPSDChannel_SRGB uncurved(&buffer, 4, 0, keepFramePremultiplied, false, corrected);
    EXPECT_EQ(uncurved.GetRow16(0)[0], 0x1234);
    EXPECT_EQ(uncurved.GetRow32(0)[0], 0.25F);
}

TEST_F(VRayChannel, DitherIsSeededFromTheFrameBuffersAddress) {
    gammaMgr.dithTrue = TRUE;
    buffer.row64.assign(500, BMM_Color_64{0x7F80, 0x7F80, 0, 0xFFFF});
    VRayVFBToPSDChannel red(&buffer, 4, 0, keepFramePremultiplied, false, corrected);
    const std::vector<std::uint8_t> first = Row8(red, 500);
    sources::SeedDither(static_cast<IVRayPixelBuffer*>(&buffer));
    for (std::uint8_t sample : first)
        ASSERT_EQ(sample, (0x7F80 + sources::NextDither()) >> 8);
    VRayVFBToPSDChannel green(&buffer, 9, 1, keepFramePremultiplied, false, corrected);
    EXPECT_EQ(Row8(green, 500), first);
}

TEST_F(VRayChannel, WithoutAFrameBufferHasNoWidth) {
    VRayVFBToPSDChannel source(nullptr, 0, 0, keepFramePremultiplied, false, corrected);
    EXPECT_NE(source.GetRow8(0), nullptr);
    EXPECT_NE(source.GetRow16(0), nullptr);
    EXPECT_NE(source.GetRow32(0), nullptr);
}

// One conversion for both.
TEST_F(VRayChannel, GivesWhatABitmapOfTheSamePixelsGives) {
    gammaMgr.enable = TRUE;
    gammaMgr.SetFileOutGamma(2.2F);
    FakeBitmap bitmap;
    SetRow(bitmap, buffer.row64);
    SetRow(bitmap, buffer.rowFloat);
    for (int component = 0; component <= 4; ++component) {
        for (const bool premultiplied : {keepFramePremultiplied, divideFrameByAlpha}) {
            for (const bool gamma : {false, true}) {
                VRayVFBToPSDChannel vray(&buffer, 0, component, premultiplied, gamma, corrected);
                sources::BitmapToPSDChannel other(&bitmap, component, premultiplied, gamma);
                EXPECT_EQ(Row8(vray, 3), Row8(other, 3));
                EXPECT_EQ(Row16(vray, 3), Row16(other, 3));
                EXPECT_EQ(Row32(vray, 3), Row32(other, 3));
            }
        }
    }
}

}  // namespace

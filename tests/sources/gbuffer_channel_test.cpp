#include "sources/gbuffer_channel.h"

#include <gmock/gmock.h>

#include "sources/id_color_tables.h"
#include "tests/sources/fake_gbuffer.h"
#include "tests/sources/row_copies.h"

namespace {

using sources::GBufferToPSDChannel;
using testing::ElementsAre;
using testing::FloatEq;

constexpr bool leavePremultiplied = true;
constexpr bool divideByCoverage = false;
constexpr int coverageComponent = 3;

class GBufferChannel : public testing::Test {
  protected:
    GBufferToPSDChannel Channel(DWORD channel, int component, bool premultiplied = true) {
        return {&bitmap, channel, component, premultiplied};
    }
    std::vector<std::uint8_t> Samples8(DWORD channel, int component, std::uint32_t row = 0) {
        GBufferToPSDChannel source = Channel(channel, component);
        return Row8(source, bitmap.pixels.width, row);
    }
    std::vector<std::uint16_t> Samples16(DWORD channel) {
        GBufferToPSDChannel source = Channel(channel, 0);
        return Row16(source, bitmap.pixels.width);
    }
    std::vector<float> Colors(int component, bool premultiplied) {
        GBufferToPSDChannel source = Channel(BMM_CHAN_REALPIX, component, premultiplied);
        return Row32(source, bitmap.pixels.width);
    }
    void SetDepthRange(float min, float max) {
        bitmap.gbuffer.zMin = min;
        bitmap.gbuffer.zMax = max;
    }

    FakeGBufferBitmap bitmap;
};

TEST_F(GBufferChannel, ShowsMaterialIDsOfThePlaneInFalseColours) {
    std::vector<UBYTE> plane = {3, 3, 3, 0, 1, 2};
    bitmap.SetRows({{{}, {}, {}}, {{}, {}, {}}});
    bitmap.pixels.planes[BMM_CHAN_MTL_ID] = plane.data();
    EXPECT_THAT(Samples8(BMM_CHAN_MTL_ID, 0, 1), ElementsAre(0x00, 0xAC, 0x1A));
    EXPECT_THAT(Samples8(BMM_CHAN_MTL_ID, 1, 1), ElementsAre(0x00, 0x04, 0xD8));
    EXPECT_THAT(Samples8(BMM_CHAN_MTL_ID, 2, 1), ElementsAre(0x00, 0x26, 0xB1));
    EXPECT_THAT(Samples8(BMM_CHAN_MTL_ID, 0, 0), ElementsAre(0x47, 0x47, 0x47));
}

TEST_F(GBufferChannel, ShowsObjectIDsByTheirLowByteInRedAndGreenAndTheirHighByteInBlue) {
    std::vector<UWORD> plane = {0, 0x0001, 0x0203, 0x0100};
    bitmap.SetRows({{{}, {}, {}, {}}});
    bitmap.pixels.planes[BMM_CHAN_NODE_ID] = plane.data();
    EXPECT_THAT(Samples8(BMM_CHAN_NODE_ID, 0), ElementsAre(0x00, 0xAC, 0x47, 0x00));
    EXPECT_THAT(Samples8(BMM_CHAN_NODE_ID, 1), ElementsAre(0x00, 0x04, 0x37, 0x00));
    EXPECT_THAT(Samples8(BMM_CHAN_NODE_ID, 2), ElementsAre(0x00, 0x00, 0xB1, 0x26));
}

TEST_F(GBufferChannel, ShowsRenderIDsWithNoObjectInBlack) {
    std::vector<UWORD> plane = {65535, 0, 0x0102, 0x00FF};
    bitmap.SetRows({{{}, {}, {}, {}}});
    bitmap.pixels.planes[BMM_CHAN_NODE_RENDER_ID] = plane.data();
    EXPECT_THAT(Samples8(BMM_CHAN_NODE_RENDER_ID, 0), ElementsAre(0, 0x0B, 0x1A, 0));
    EXPECT_THAT(Samples8(BMM_CHAN_NODE_RENDER_ID, 1), ElementsAre(0, 0xE1, 0xD8, 0));
    EXPECT_THAT(Samples8(BMM_CHAN_NODE_RENDER_ID, 2), ElementsAre(0, 0x7D, 0x26, 0x7D));
}

TEST_F(GBufferChannel, ReadsIDsOfTheFirstFragmentsWhereThereIsNoPlane) {
    bitmap.SetRows({{{{.mtlID = UBYTE{1}, .nodeID = UWORD{0x0203}, .renderID = UWORD{0x0102}},
                      {.mtlID = UBYTE{2}, .nodeID = UWORD{2}, .renderID = UWORD{3}}},
                     {},
                     {{}, {.mtlID = UBYTE{2}, .nodeID = UWORD{2}, .renderID = UWORD{3}}}}});
    for (int component = 0; component < 3; ++component) {
        const auto c = static_cast<std::size_t>(component);
        const auto& ids = sources::idColorTable[c];
        const auto& renderIDs = sources::renderIDColorTable[c];
        EXPECT_THAT(Samples8(BMM_CHAN_MTL_ID, component), ElementsAre(ids[1], 0, 0));
        EXPECT_THAT(Samples8(BMM_CHAN_NODE_ID, component),
                    ElementsAre(ids[component == 2 ? 2 : 3], 0, 0));
        EXPECT_THAT(Samples8(BMM_CHAN_NODE_RENDER_ID, component),
                    ElementsAre(renderIDs[component == 2 ? 1 : 2], 0, 0));
    }
}

TEST_F(GBufferChannel, ShowsDepthWithinTheRangeOfTheBuffer) {
    SetDepthRange(1.0F, 5.0F);
    bitmap.SetRows({{{{.z = 1.0F}}, {{.z = 3.0F}}, {{.z = 5.0F}}, {}}});
    EXPECT_THAT(Samples8(BMM_CHAN_Z, 0), ElementsAre(0, 127, 255, 0));
    EXPECT_THAT(Samples16(BMM_CHAN_Z), ElementsAre(0, 32767, 65535, 0));
}

TEST_F(GBufferChannel, WeighsDepthByCoverage) {
    SetDepthRange(0.0F, 4.0F);
    bitmap.gbuffer.channels = BMM_CHAN_COVERAGE;
    bitmap.SetRows({{{{.z = 4.0F, .coverage = UBYTE{51}}},
                     {{.z = 2.0F, .coverage = UBYTE{100}}, {.z = 4.0F, .coverage = UBYTE{100}}},
                     {{.z = 4.0F}}}});
    EXPECT_THAT(Samples8(BMM_CHAN_Z, 0), ElementsAre(51, 150, 0));
    EXPECT_THAT(Samples16(BMM_CHAN_Z), ElementsAre(51 * 257, 150 * 257, 0));
}

TEST_F(GBufferChannel, WeighsDepthByWeightAndOpacity) {
    SetDepthRange(0.0F, 1.0F);
    bitmap.gbuffer.channels = BMM_CHAN_WEIGHT | BMM_CHAN_TRANSP | BMM_CHAN_COVERAGE;
    // 255 * 255 / 765 is 85; 255 * 100 / 765 is 33.3, and that * 257 is 8566.6.
    bitmap.SetRows({{{{.z = 1.0F,
                       .coverage = UBYTE{255},
                       .transparency = Color24{0, 0, 0},
                       .weight = Color24{255, 0, 0}}},
                     {{.z = 1.0F,
                       .coverage = UBYTE{255},
                       .transparency = Color24{255, 155, 0},
                       .weight = Color24{255, 255, 0}}}}});
    EXPECT_THAT(Samples8(BMM_CHAN_Z, 0), ElementsAre(85, 33));
    EXPECT_THAT(Samples16(BMM_CHAN_Z), ElementsAre(85 * 257, 8566));
}

TEST_F(GBufferChannel, DepthOfTwoFullFragmentsSaturates) {
    SetDepthRange(0.0F, 4.0F);
    bitmap.SetRows({{{{.z = 3.0F}, {.z = 3.0F}}}});
    EXPECT_THAT(Samples8(BMM_CHAN_Z, 0), ElementsAre(255));
    EXPECT_THAT(Samples16(BMM_CHAN_Z), ElementsAre(65535));
}

TEST_F(GBufferChannel, DepthOutsideTheRangeIsNotClampedBeforeItIsSummed) {
    SetDepthRange(4.0F, 5.0F);
    // -1 and 1; -1 and 1.5.
    bitmap.SetRows({{{{.z = 3.0F}, {.z = 5.0F}}, {{.z = 3.0F}, {.z = 5.5F}}, {{.z = 3.0F}}}});
    EXPECT_THAT(Samples8(BMM_CHAN_Z, 0), ElementsAre(0, 127, 0));
}

TEST_F(GBufferChannel, DepthOfARangeWithoutExtentOrWithoutDepthIs0) {
    SetDepthRange(2.0F, 2.0F);
    bitmap.SetRows({{{{.z = 2.0F}}, {{.coverage = UBYTE{9}}}}});
    EXPECT_THAT(Samples8(BMM_CHAN_Z, 0), ElementsAre(0, 0));
    EXPECT_THAT(Samples16(BMM_CHAN_Z), ElementsAre(0, 0));
}

TEST_F(GBufferChannel, ShowsNormalsFromMinus1To1) {
    const DWORD toCamera = CompressNormal({0.0F, 0.0F, 1.0F});
    const DWORD left = CompressNormal({-1.0F, 0.0F, 0.0F});
    bitmap.gbuffer.channels = BMM_CHAN_COVERAGE;
    bitmap.SetRows({{{{.normal = toCamera, .coverage = UBYTE{255}}},
                     {{.normal = left, .coverage = UBYTE{255}}},
                     {{.normal = toCamera, .coverage = UBYTE{102}}, {.coverage = UBYTE{153}}},
                     {}}});
    EXPECT_THAT(Samples8(BMM_CHAN_NORMAL, 0), ElementsAre(127, 0, 51, 0));
    EXPECT_THAT(Samples8(BMM_CHAN_NORMAL, 1), ElementsAre(127, 127, 51, 0));
    EXPECT_THAT(Samples8(BMM_CHAN_NORMAL, 2), ElementsAre(255, 127, 102, 0));
}

TEST_F(GBufferChannel, ShowsColoursWeighedByCoverageAndUncapped) {
    bitmap.gbuffer.channels = BMM_CHAN_COVERAGE | BMM_CHAN_REALPIX;
    const RealPixel color = MakeRealPixel(0.5F, 2.0F, 0.25F);
    bitmap.SetRows({{{{.realPixel = color, .coverage = UBYTE{255}, .renderID = UWORD{0}}},
                     {{.realPixel = color, .coverage = UBYTE{51}, .renderID = UWORD{65534}}},
                     {}}});
    EXPECT_THAT(Colors(0, leavePremultiplied), ElementsAre(FloatEq(0.5F), FloatEq(0.1F), 0.0F));
    EXPECT_THAT(Colors(1, leavePremultiplied), ElementsAre(FloatEq(2.0F), FloatEq(0.4F), 0.0F));
    EXPECT_THAT(Colors(2, divideByCoverage), ElementsAre(FloatEq(0.25F), FloatEq(0.25F), 0.0F));
    EXPECT_THAT(Colors(coverageComponent, divideByCoverage),
                ElementsAre(1.0F, FloatEq(0.2F), 0.0F));
}

TEST_F(GBufferChannel, ShowsColoursWeighedComponentByComponent) {
    bitmap.gbuffer.channels = BMM_CHAN_WEIGHT | BMM_CHAN_TRANSP;
    bitmap.SetRows({{{{.realPixel = MakeRealPixel(0.5F, 2.0F, 0.25F),
                       .renderID = UWORD{1},
                       .transparency = Color24{0, 127, 0},
                       .weight = Color24{255, 128, 0}}}}});
    // 255 * 255 + 128 * 128 of 195075.
    const float coverage = 81409.0F / 195075.0F;
    EXPECT_THAT(Colors(0, leavePremultiplied), ElementsAre(FloatEq(0.5F)));
    EXPECT_THAT(Colors(1, leavePremultiplied), ElementsAre(FloatEq(256.0F / 255.0F)));
    EXPECT_THAT(Colors(2, leavePremultiplied), ElementsAre(0.0F));
    EXPECT_THAT(Colors(0, divideByCoverage), ElementsAre(FloatEq(0.5F / coverage)));
    EXPECT_THAT(Colors(coverageComponent, leavePremultiplied), ElementsAre(FloatEq(coverage)));
}

TEST_F(GBufferChannel, CoverageOfColoursIsAtMost1AndBelow1LevelDoesntDivide) {
    bitmap.gbuffer.channels = BMM_CHAN_COVERAGE;
    const FakeFragment half{
        .realPixel = MakeRealPixel(1.0F, 1.0F, 1.0F), .coverage = UBYTE{200}, .renderID = UWORD{1}};
    bitmap.SetRows({{{half, half}}});
    EXPECT_THAT(Colors(coverageComponent, leavePremultiplied), ElementsAre(1.0F));
    EXPECT_THAT(Colors(0, leavePremultiplied), ElementsAre(FloatEq(400.0F / 255.0F)));
    EXPECT_THAT(Colors(0, divideByCoverage), ElementsAre(FloatEq(1.0F)));
    bitmap.gbuffer.channels = BMM_CHAN_WEIGHT | BMM_CHAN_TRANSP;
    // 255, 764 and 765 of weight.
    const auto weighed = [](UBYTE opacity, UBYTE weight) -> FakePixel {
        const auto transparency = static_cast<UBYTE>(255 - opacity);
        return {{.realPixel = MakeRealPixel(1.0F, 1.0F, 1.0F),
                 .renderID = UWORD{1},
                 .transparency = Color24{transparency, 255, 255},
                 .weight = Color24{weight, 0, 0}}};
    };
    bitmap.SetRows({{weighed(255, 1), weighed(191, 4), weighed(255, 3)}});
    EXPECT_THAT(Colors(0, divideByCoverage),
                ElementsAre(FloatEq(1.0F / 255.0F), FloatEq(4.0F / 255.0F), FloatEq(3.0F)));
}

TEST_F(GBufferChannel, ColoursLeaveTheBackgroundOut) {
    bitmap.gbuffer.channels = BMM_CHAN_COVERAGE;
    const RealPixel color = MakeRealPixel(1.0F, 1.0F, 1.0F);
    bitmap.SetRows({{{{.realPixel = color, .coverage = UBYTE{255}, .renderID = UWORD{65535}}},
                     {{.realPixel = color, .coverage = UBYTE{255}}},
                     {{.coverage = UBYTE{255}, .renderID = UWORD{1}}}}});
    EXPECT_THAT(Colors(0, leavePremultiplied), ElementsAre(0.0F, 0.0F, 0.0F));
    EXPECT_THAT(Colors(coverageComponent, leavePremultiplied), ElementsAre(0.0F, 0.0F, 1.0F));
}

TEST_F(GBufferChannel, ColoursAreBlackWithoutWeightsAndCoverageWhileDepthIsNot) {
    SetDepthRange(0.0F, 1.0F);
    bitmap.gbuffer.channels = BMM_CHAN_REALPIX | BMM_CHAN_Z | BMM_CHAN_NODE_RENDER_ID;
    bitmap.SetRows({{{{.z = 1.0F,
                       .realPixel = MakeRealPixel(1.0F, 1.0F, 1.0F),
                       .coverage = UBYTE{255},
                       .renderID = UWORD{1}}}}});
    for (int component = 0; component <= coverageComponent; ++component)
        EXPECT_THAT(Colors(component, divideByCoverage), ElementsAre(0.0F));
    EXPECT_THAT(Samples8(BMM_CHAN_Z, 0), ElementsAre(255));
}

TEST_F(GBufferChannel, HasOnlyTheDepthsThatItsChannelGives) {
    bitmap.SetRows({{{{.realPixel = MakeRealPixel(1.0F, 1.0F, 1.0F), .renderID = UWORD{1}}}}});
    for (const DWORD channel : {BMM_CHAN_MTL_ID, BMM_CHAN_NODE_ID, BMM_CHAN_NODE_RENDER_ID,
                                BMM_CHAN_NORMAL, BMM_CHAN_REALPIX, BMM_CHAN_Z}) {
        GBufferToPSDChannel source = Channel(channel, 0);
        EXPECT_EQ(source.GetRow16(0) != nullptr, channel == BMM_CHAN_Z) << channel;
        EXPECT_EQ(source.GetRow32(0) != nullptr, channel == BMM_CHAN_REALPIX) << channel;
        EXPECT_FALSE(source.IsSolid());
    }
    EXPECT_THAT(Samples8(BMM_CHAN_REALPIX, 0), ElementsAre(0));
}

TEST_F(GBufferChannel, IsBlackWhereNothingCanBeRead) {
    bitmap.SetRows({{{{.z = 1.0F, .mtlID = UBYTE{1}, .normal = DWORD{1}, .renderID = UWORD{1}}}}});
    const auto expectBlack = [this](const char* why) {
        for (const DWORD channel :
             {BMM_CHAN_MTL_ID, BMM_CHAN_NODE_RENDER_ID, BMM_CHAN_NORMAL, BMM_CHAN_Z}) {
            EXPECT_THAT(Samples8(channel, 0), ElementsAre(0)) << why << " " << channel;
        }
        EXPECT_THAT(Colors(0, leavePremultiplied), ElementsAre(0.0F)) << why;
    };
    bitmap.pixels.hasGBuffer = false;
    expectBlack("no G-Buffer");
    bitmap.pixels.hasGBuffer = true;
    bitmap.gbuffer.outOfMemory = true;
    expectBlack("no reader");
    bitmap.gbuffer.outOfMemory = false;
    bitmap.gbuffer.reader.unreadableLine = 0;
    expectBlack("no line");
}

TEST_F(GBufferChannel, ARowThatCantBeReadDoesntRepeatTheOneBefore) {
    SetDepthRange(0.0F, 1.0F);
    bitmap.gbuffer.channels = BMM_CHAN_COVERAGE;
    const FakePixel pixel = {{.z = 1.0F,
                              .mtlID = UBYTE{1},
                              .normal = CompressNormal({1.0F, 0.0F, 0.0F}),
                              .realPixel = MakeRealPixel(1.0F, 1.0F, 1.0F),
                              .coverage = UBYTE{255},
                              .renderID = UWORD{1}}};
    bitmap.SetRows({{pixel}, {pixel}});
    bitmap.gbuffer.reader.unreadableLine = 1;
    for (const DWORD channel :
         {BMM_CHAN_MTL_ID, BMM_CHAN_NODE_RENDER_ID, BMM_CHAN_NORMAL, BMM_CHAN_Z}) {
        GBufferToPSDChannel source = Channel(channel, 0);
        EXPECT_NE(source.GetRow8(0)[0], 0) << channel;
        EXPECT_EQ(source.GetRow8(1)[0], 0) << channel;
    }
    GBufferToPSDChannel color = Channel(BMM_CHAN_REALPIX, 0);
    EXPECT_FLOAT_EQ(color.GetRow32(0)[0], 1.0F);
    EXPECT_EQ(color.GetRow32(1)[0], 0.0F);
}

TEST_F(GBufferChannel, EveryChannelGivesTheRowThatIsAskedFor) {
    SetDepthRange(0.0F, 5.0F);
    bitmap.gbuffer.channels = BMM_CHAN_COVERAGE;
    bitmap.SetRows({{{{.z = 5.0F,
                       .mtlID = UBYTE{9},
                       .nodeID = UWORD{9},
                       .normal = CompressNormal({1.0F, 0.0F, 0.0F}),
                       .realPixel = MakeRealPixel(4.0F, 4.0F, 4.0F),
                       .coverage = UBYTE{255},
                       .renderID = UWORD{9}}}},
                    {{{.z = 1.0F,
                       .mtlID = UBYTE{1},
                       .nodeID = UWORD{2},
                       .normal = CompressNormal({-1.0F, 0.0F, 0.0F}),
                       .realPixel = MakeRealPixel(0.5F, 0.5F, 0.5F),
                       .coverage = UBYTE{255},
                       .renderID = UWORD{3}}}}});
    EXPECT_THAT(Samples8(BMM_CHAN_MTL_ID, 0, 1), ElementsAre(0xAC));
    EXPECT_THAT(Samples8(BMM_CHAN_NODE_ID, 0, 1), ElementsAre(0x1A));
    EXPECT_THAT(Samples8(BMM_CHAN_NODE_RENDER_ID, 0, 1), ElementsAre(0x47));
    EXPECT_THAT(Samples8(BMM_CHAN_NORMAL, 0, 1), ElementsAre(0));
    EXPECT_THAT(Samples8(BMM_CHAN_Z, 0, 1), ElementsAre(51));
    GBufferToPSDChannel depth = Channel(BMM_CHAN_Z, 0);
    EXPECT_THAT(Row16(depth, 1, 1), ElementsAre(51 * 257));
    GBufferToPSDChannel color = Channel(BMM_CHAN_REALPIX, 0);
    EXPECT_THAT(Row32(color, 1, 1), ElementsAre(FloatEq(0.5F)));
}

TEST_F(GBufferChannel, ABitmapWithoutStorageHasNoWidth) {
    bitmap.hasStorage = false;
    for (const DWORD channel : {BMM_CHAN_MTL_ID, BMM_CHAN_NORMAL, BMM_CHAN_Z, BMM_CHAN_REALPIX})
        EXPECT_NE(Channel(channel, 0).GetRow8(0), nullptr);
    EXPECT_NE(Channel(BMM_CHAN_Z, 0).GetRow16(0), nullptr);
    EXPECT_NE(Channel(BMM_CHAN_REALPIX, 0).GetRow32(0), nullptr);
}

}  // namespace

#include "sources/id_mask_channel.h"

#include <gmock/gmock.h>

#include "tests/sources/fake_gbuffer.h"
#include "tests/sources/row_copies.h"

namespace {

using testing::ElementsAre;
using testing::FloatEq;

constexpr bool maskKeepPremultiplied = true;
constexpr bool maskDivideByCoverage = false;
constexpr int matte = 3;
constexpr DWORD maskWeightAndTransparency = BMM_CHAN_WEIGHT | BMM_CHAN_TRANSP;

// The fragments with material 1, inside a box that the test gives.
class MaterialOne : public sources::SpecificGBufferIDToPSDChannel {
  public:
    using SpecificGBufferIDToPSDChannel::SpecificGBufferIDToPSDChannel;

    void ComputeBounds() override {
        ++computed;
        if (box) {
            bounds = *box;
        } else {
            SpecificGBufferIDToPSDChannel::ComputeBounds();
        }
    }
    bool FragmentMatches(GBufReader* reader) override {
        UBYTE id = 0;
        return reader->ReadChannelData(GB_MTL_ID, &id) && id == 1;
    }

    std::optional<Box2> box;
    int computed = 0;
};

Box2 Box(int left, int top, int right, int bottom) {
    Box2 box;
    box.left = left;
    box.top = top;
    box.right = right;
    box.bottom = bottom;
    return box;
}

FakeFragment Covering(UBYTE coverage, Color24 color = {0, 0, 0}) {
    return {.mtlID = UBYTE{1}, .coverage = coverage, .color = color};
}
FakeFragment Of(UBYTE mtlID, FakeFragment fragment) {
    fragment.mtlID = mtlID;
    return fragment;
}
FakeFragment Weighing(Color24 weight, Color24 transparency, Color24 color) {
    return {.mtlID = UBYTE{1},
            .realPixel = MakeRealPixel(1.0F, 0.5F, 4.0F),
            .color = color,
            .transparency = transparency,
            .weight = weight};
}

class IDMask : public testing::Test {
  protected:
    IDMask() { bitmap.gbuffer.channels = BMM_CHAN_COVERAGE; }

    std::vector<std::uint8_t> Samples8(int component, bool premultiplied = maskKeepPremultiplied) {
        MaterialOne source(&bitmap, component, premultiplied);
        return Row8(source, bitmap.pixels.width);
    }
    std::vector<float> Samples32(int component, bool premultiplied = maskKeepPremultiplied) {
        MaterialOne source(&bitmap, component, premultiplied);
        return Row32(source, bitmap.pixels.width);
    }
    std::map<int, int>& Reads() { return bitmap.gbuffer.reader.reads; }

    FakeGBufferBitmap bitmap;
};

TEST_F(IDMask, MatteIsTheCoverageOfTheFragmentsThatBelong) {
    bitmap.SetRows({{{Covering(100)},
                     {Of(2, Covering(255))},
                     {Of(2, Covering(155)), Covering(100)},
                     {},
                     {Covering(255)}}});
    EXPECT_THAT(Samples8(matte), ElementsAre(100, 0, 100, 0, 255));
}

TEST_F(IDMask, MatteOfTwoFragmentsIsTheirSumCapped) {
    bitmap.SetRows({{{Covering(100), Covering(55)}, {Covering(200), Covering(200)}}});
    EXPECT_THAT(Samples8(matte), ElementsAre(155, 255));
    bitmap.gbuffer.channels |= BMM_CHAN_REALPIX;
    EXPECT_THAT(Samples32(matte), ElementsAre(FloatEq(155.0F / 255.0F), 1.0F));
}

TEST_F(IDMask, MatteByWeightsLeavesOutWhatIsTransparent) {
    bitmap.gbuffer.channels = maskWeightAndTransparency | BMM_CHAN_COVERAGE;
    // 255 * 255 * 3 / 765; 255 * 255 / 765; (100 * 30 + 50 * 20) / 765 is 5.2.
    bitmap.SetRows({{{Weighing({255, 255, 255}, {0, 0, 0}, {})},
                     {Weighing({255, 255, 255}, {255, 0, 255}, {})},
                     {Weighing({30, 20, 0}, {155, 205, 0}, {})}}});
    EXPECT_THAT(Samples8(matte), ElementsAre(255, 85, 5));
}

TEST_F(IDMask, IsEmptyWithoutWeightsAndCoverage) {
    bitmap.SetRows({{{Covering(255, {255, 255, 255})}}});
    for (const DWORD channels : {BMM_CHAN_MTL_ID, BMM_CHAN_WEIGHT, BMM_CHAN_TRANSP}) {
        bitmap.gbuffer.channels = channels | BMM_CHAN_REALPIX;
        for (int component = 0; component <= matte; ++component) {
            EXPECT_THAT(Samples8(component), ElementsAre(0));
            EXPECT_THAT(Samples32(component), ElementsAre(0.0F));
        }
    }
}

TEST_F(IDMask, ColourIsWeighedByCoverage) {
    bitmap.SetRows({{{Covering(255, {10, 20, 30})},
                     {Covering(102, {200, 100, 50})},
                     {Covering(100, {200, 0, 1}), Of(9, Covering(200)), Covering(155, {10, 0, 2})},
                     {Covering(0, {255, 255, 255})}}});
    // 102 * 200 / 255; (100 * 200 + 155 * 10) / 255 is 84.5.
    EXPECT_THAT(Samples8(0), ElementsAre(10, 80, 84, 0));
    EXPECT_THAT(Samples8(1), ElementsAre(20, 40, 0, 0));
    // 410 / 255
    EXPECT_THAT(Samples8(2), ElementsAre(30, 20, 1, 0));
}

TEST_F(IDMask, ColourCanBeDividedByTheCoverage) {
    bitmap.SetRows({{{Covering(255, {10, 20, 30})},
                     {Covering(102, {200, 100, 50})},
                     {Covering(100, {200, 0, 0}), Covering(100, {11, 0, 0})},
                     {Covering(0, {255, 255, 255})}}});
    // 21100 / 200 is 105.5.
    EXPECT_THAT(Samples8(0, maskDivideByCoverage), ElementsAre(10, 200, 105, 0));
}

TEST_F(IDMask, ColourIsCapped) {
    bitmap.gbuffer.channels = maskWeightAndTransparency;
    // 255 * 200 over a level of 85.
    bitmap.SetRows({{{Weighing({255, 0, 0}, {0, 255, 255}, {200, 0, 0})}}});
    EXPECT_THAT(Samples8(0, maskDivideByCoverage), ElementsAre(255));
    EXPECT_THAT(Samples8(0, maskKeepPremultiplied), ElementsAre(200));
    bitmap.gbuffer.channels = BMM_CHAN_COVERAGE;
    bitmap.SetRows({{{Covering(255, {200, 0, 0}), Covering(255, {200, 0, 0})}}});
    EXPECT_THAT(Samples8(0, maskKeepPremultiplied), ElementsAre(255));
}

TEST_F(IDMask, ColourOfLessThanALevelOfCoverageIsntDivided) {
    bitmap.gbuffer.channels = maskWeightAndTransparency | BMM_CHAN_REALPIX;
    // Weights of 764, which is no level, and 765, which is one; components 4 and 3 of 255.
    bitmap.SetRows({{{Weighing({4, 0, 0}, {64, 255, 255}, {50, 0, 0})},
                     {Weighing({3, 0, 0}, {0, 255, 255}, {50, 0, 0})}}});
    EXPECT_THAT(Samples8(0, maskDivideByCoverage), ElementsAre(200, 150));
    EXPECT_THAT(Samples8(0, maskKeepPremultiplied), ElementsAre(0, 0));
    EXPECT_THAT(Samples32(0, maskDivideByCoverage),
                ElementsAre(FloatEq(4.0F / 255.0F), FloatEq(3.0F)));
}

TEST_F(IDMask, FloatColoursComeFromTheColoursOfHighRange) {
    bitmap.gbuffer.channels |= BMM_CHAN_REALPIX;
    FakeFragment fragment = Covering(51, {1, 2, 3});
    fragment.realPixel = MakeRealPixel(0.5F, 20.0F, 0.25F);
    FakeFragment without = Covering(255, {255, 255, 255});
    bitmap.SetRows({{{fragment}, {fragment, without}, {without}, {Of(2, fragment)}}});
    EXPECT_THAT(Samples32(1), ElementsAre(FloatEq(4.0F), FloatEq(4.0F), 0.0F, 0.0F));
    EXPECT_THAT(Samples32(1, maskDivideByCoverage),
                ElementsAre(FloatEq(20.0F), FloatEq(4.0F / 1.2F), 0.0F, 0.0F));
    EXPECT_THAT(Samples32(matte), ElementsAre(FloatEq(0.2F), 1.0F, 1.0F, 0.0F));
}

TEST_F(IDMask, FloatColoursAreWeighedComponentByComponent) {
    bitmap.gbuffer.channels = maskWeightAndTransparency | BMM_CHAN_REALPIX;
    // Of (1, 0.5, 4); 255 * 255 + 100 * 100 of weight.
    bitmap.SetRows({{{Weighing({255, 100, 0}, {0, 155, 0}, {})}}});
    const float coverage = 75025.0F / 195075.0F;
    EXPECT_THAT(Samples32(0), ElementsAre(FloatEq(1.0F)));
    EXPECT_THAT(Samples32(1), ElementsAre(FloatEq(50.0F / 255.0F)));
    EXPECT_THAT(Samples32(2), ElementsAre(0.0F));
    EXPECT_THAT(Samples32(0, maskDivideByCoverage), ElementsAre(FloatEq(1.0F / coverage)));
    EXPECT_THAT(Samples32(matte), ElementsAre(FloatEq(coverage)));
}

TEST_F(IDMask, LeavesDepthsThatItDoesntHaveToTheWriter) {
    bitmap.SetRows({{{Covering(255)}}});
    MaterialOne source(&bitmap, matte, maskKeepPremultiplied);
    EXPECT_EQ(source.GetRow16(0), nullptr);
    EXPECT_EQ(source.GetRow32(0), nullptr) << "without colours of high range";
    EXPECT_FALSE(source.IsSolid());
    EXPECT_EQ(source.GetSolidValue8(), 0);
    EXPECT_EQ(source.GetSolidValue16(), 0);
}

TEST_F(IDMask, FragmentsThatCantBeReadAreLeftOut) {
    bitmap.gbuffer.channels |= BMM_CHAN_MTL_ID;
    bitmap.SetRows({{{{.coverage = UBYTE{100}}, Covering(50), {.mtlID = UBYTE{1}}},
                     {{.mtlID = UBYTE{1}, .coverage = UBYTE{70}}, Covering(10, {255, 0, 0})}}});
    EXPECT_THAT(Samples8(matte), ElementsAre(50, 80));
    EXPECT_THAT(Samples8(0), ElementsAre(0, 10)) << "no colour, and yet coverage";
}

TEST_F(IDMask, VisitsTheColumnsOfItsBoxOnly) {
    const FakePixel full = {Covering(255)};
    bitmap.SetRows({{full, full, full, full, full}});
    MaterialOne source(&bitmap, matte, maskKeepPremultiplied);
    source.box = Box(1, 0, 3, 0);
    EXPECT_THAT(Row8(source, 5), ElementsAre(0, 255, 255, 255, 0));
    EXPECT_EQ(bitmap.gbuffer.reader.pixelsStarted, 3);
}

TEST_F(IDMask, RowsOutsideItsBoxReadNothing) {
    const FakePixel full = {Covering(255)};
    bitmap.gbuffer.channels |= BMM_CHAN_REALPIX;
    bitmap.SetRows({{full}, {full}, {full}});
    MaterialOne source(&bitmap, matte, maskKeepPremultiplied);
    source.box = Box(0, 1, 0, 1);
    EXPECT_THAT(Row8(source, 1, 0), ElementsAre(0));
    EXPECT_THAT(Row8(source, 1, 2), ElementsAre(0));
    EXPECT_THAT(Row32(source, 1, 0), ElementsAre(0.0F));
    EXPECT_EQ(bitmap.gbuffer.reader.linesStarted, 0);
    EXPECT_THAT(Row8(source, 1, 1), ElementsAre(255));
    EXPECT_THAT(Row8(source, 1, 2), ElementsAre(0)) << "and not the row before";
    EXPECT_THAT(Row32(source, 1, 1), ElementsAre(1.0F));
    EXPECT_THAT(Row32(source, 1, 2), ElementsAre(0.0F)) << "and not the row before";
}

TEST_F(IDMask, GivesTheRowThatIsAskedFor) {
    bitmap.gbuffer.channels |= BMM_CHAN_REALPIX;
    bitmap.SetRows({{{Covering(102)}}, {{Covering(51)}}});
    MaterialOne source(&bitmap, matte, maskKeepPremultiplied);
    EXPECT_THAT(Row8(source, 1, 1), ElementsAre(51));
    EXPECT_THAT(Row8(source, 1, 0), ElementsAre(102));
    EXPECT_THAT(Row32(source, 1, 1), ElementsAre(FloatEq(0.2F)));
    EXPECT_THAT(Row32(source, 1, 0), ElementsAre(FloatEq(0.4F)));
}

TEST_F(IDMask, ABoxThatReachesBeyondTheImageIsCut) {
    const FakePixel full = {Covering(255)};
    bitmap.SetRows({{full, full}});
    MaterialOne source(&bitmap, matte, maskKeepPremultiplied);
    source.box = Box(-3, -1, 9, 9);
    EXPECT_THAT(Row8(source, 2), ElementsAre(255, 255));
    EXPECT_EQ(bitmap.gbuffer.reader.pixelsStarted, 2);
    source.box = Box(-3, 0, -1, 0);
    EXPECT_THAT(Row8(source, 2), ElementsAre(0, 0));
    source.box = Box2{};
    EXPECT_THAT(Row8(source, 2), ElementsAre(0, 0));
}

TEST_F(IDMask, ALineThatEndsEarlyEndsTheRow) {
    bitmap.SetRows({{{Covering(255)}, {}, {}}});
    bitmap.gbuffer.rows = {{{Covering(255)}}};
    EXPECT_THAT(Samples8(matte), ElementsAre(255, 0, 0));
}

TEST_F(IDMask, TheBoxIsTheWholeImageAndFoundAnewWithEveryPass) {
    bitmap.gbuffer.channels |= BMM_CHAN_REALPIX;
    bitmap.SetRows({{{}, {}, {}}, {{}, {}, {}}});
    MaterialOne source(&bitmap, matte, maskKeepPremultiplied);
    EXPECT_EQ(source.computed, 0);
    EXPECT_EQ(source.Bounds().left, 0);
    EXPECT_EQ(source.Bounds().top, 0);
    EXPECT_EQ(source.Bounds().right, 2);
    EXPECT_EQ(source.Bounds().bottom, 1);
    source.GetRow8(0);
    source.GetRow8(1);
    EXPECT_EQ(source.computed, 1);
    source.GetRow8(0);
    EXPECT_EQ(source.computed, 2);
    source.GetRow32(0);
    source.GetRow32(1);
    EXPECT_EQ(source.computed, 3);
    source.box = Box(1, 1, 1, 1);
    source.GetRow8(0);
    source.box.reset();
    source.ComputeBounds();
    EXPECT_EQ(source.Bounds().right, 2);
}

TEST_F(IDMask, OfFragmentsThatDontBelongReadsNothingMore) {
    bitmap.gbuffer.channels |= BMM_CHAN_REALPIX;
    bitmap.SetRows({{{Of(2, Covering(255))}, {Of(3, Covering(255))}, {Covering(9)}}});
    Samples8(matte);
    Samples32(matte);
    EXPECT_EQ(Reads()[GB_MTL_ID], 6);
    EXPECT_EQ(Reads()[GB_COVERAGE], 2);
    EXPECT_EQ(Reads()[GB_COLOR], 0) << "a matte has no colour";
    EXPECT_EQ(Reads()[GB_REALPIX], 0);
    Samples8(1);
    Samples32(1);
    EXPECT_EQ(Reads()[GB_COLOR], 1);
    EXPECT_EQ(Reads()[GB_REALPIX], 1);
}

TEST_F(IDMask, IsEmptyWhereNothingCanBeRead) {
    bitmap.SetRows({{{Covering(255)}}});
    bitmap.pixels.hasGBuffer = false;
    EXPECT_THAT(Samples8(matte), ElementsAre(0));
    bitmap.pixels.hasGBuffer = true;
    bitmap.gbuffer.outOfMemory = true;
    EXPECT_THAT(Samples8(matte), ElementsAre(0));
    bitmap.gbuffer.outOfMemory = false;
    bitmap.gbuffer.reader.unreadableLine = 0;
    EXPECT_THAT(Samples8(matte), ElementsAre(0));
    bitmap.hasStorage = false;
    MaterialOne source(&bitmap, matte, maskKeepPremultiplied);
    EXPECT_NE(source.GetRow8(0), nullptr);
    EXPECT_TRUE(source.Bounds().IsEmpty());
}

TEST_F(IDMask, SumsOfAnyNumberOfFragmentsDontOverflow) {
    bitmap.gbuffer.channels = maskWeightAndTransparency;
    bitmap.SetRows({{FakePixel(40000, Weighing({255, 255, 255}, {0, 0, 0}, {255, 255, 255}))}});
    EXPECT_THAT(Samples8(matte), ElementsAre(255));
    EXPECT_THAT(Samples8(0, maskDivideByCoverage), ElementsAre(255));
    EXPECT_THAT(Samples8(0, maskKeepPremultiplied), ElementsAre(255));
}

}  // namespace

#include "effect/merged_image.h"

#include "sources/srgb_curve.h"
#include "sources/srgb_filter.h"
#include "tests/effect/document_frame.h"
#include "tests/effect/vray_frame.h"

namespace {

class MergedImage : public DocumentFrameTest {
  protected:
    void Build(Bitmap* bitmap) { effect::BuildMergedImage(builder, FrameOf(bitmap)); }
    static bool FollowsCurves(const psdfile::PSDChannelImageDataSourcePtr& source) {
        return boost::dynamic_pointer_cast<sources::SRGBFilterIDS>(source) != nullptr;
    }
    static int Curved(int sample) {
        return static_cast<int>(sources::SRGB(sample / 65535.0) * 65535.0 + 0.5);
    }
    void ExpectCurves(bool expected) {
        EXPECT_EQ(FollowsCurves(Document().mergedRed), expected);
        EXPECT_EQ(FollowsCurves(Document().mergedGreen), expected);
        EXPECT_EQ(FollowsCurves(Document().mergedBlue), expected);
        EXPECT_FALSE(FollowsCurves(Document().mergedAlpha));
    }
};

TEST_F(MergedImage, IsTheFrame) {
    Build(image.get());
    EXPECT_TRUE(Document().hasRealMergedData);
    EXPECT_EQ(SampleOf(Document().mergedRed), ImageAt(0));
    EXPECT_EQ(SampleOf(Document().mergedGreen), ImageAt(1));
    EXPECT_EQ(SampleOf(Document().mergedBlue), ImageAt(2));
    EXPECT_EQ(SampleOf(Document().mergedAlpha), ImageAt(3));
}

TEST_F(MergedImage, OfAFrameWithoutAlphaHasNone) {
    Build(opaque.get());
    EXPECT_EQ(SampleOf(Document().mergedRed), ImageAt(0));
    EXPECT_FALSE(Document().mergedAlpha);
}

TEST_F(MergedImage, WithoutAnInputIsBlackAndHasNoAlpha) {
    Set("createCurvesAdjustmentLayer"_param, TRUE);
    Build(nullptr);
    EXPECT_TRUE(Document().hasRealMergedData);
    EXPECT_EQ(Document().mergedRed, black);
    EXPECT_EQ(Document().mergedGreen, black);
    EXPECT_EQ(Document().mergedBlue, black);
    EXPECT_FALSE(Document().mergedAlpha);
}

TEST_F(MergedImage, IsCorrectedWheneverGammaIsActive) {
    gammaMgr.enable = TRUE;
    gammaMgr.SetFileOutGamma(2.2F);
    Build(image.get());
    EXPECT_EQ(SampleOf(Document().mergedRed), ImageAt(0));
    colors.gammaActive = true;
    Build(image.get());
    EXPECT_EQ(SampleOf(Document().mergedRed), gammaMgr.fileOutGammaTable[ImageAt(0) >> 3])
        << "also where an adjustment layer corrects the layers";
    EXPECT_EQ(SampleOf(Document().mergedAlpha), ImageAt(3));
}

TEST_F(MergedImage, TakesTheSRGBVariantBelow32Bits) {
    Set("renderSRGBCorrect"_param, TRUE);
    for (const int bitDepth : {8, 16, 32}) {
        Set("bitDepth"_param, bitDepth);
        Build(image.get());
        EXPECT_EQ(IsCurved(Document().mergedRed), bitDepth != 32);
        EXPECT_EQ(IsCurved(Document().mergedGreen), bitDepth != 32);
        EXPECT_EQ(IsCurved(Document().mergedBlue), bitDepth != 32);
        EXPECT_FALSE(IsCurved(Document().mergedAlpha));
    }
}

TEST_F(MergedImage, FollowsTheCurvesLayerBelow32BitsAndWithoutTheSRGBVariant) {
    Build(image.get());
    ExpectCurves(false);
    Set("createCurvesAdjustmentLayer"_param, TRUE);
    for (const int bitDepth : {8, 16, 32}) {
        Set("bitDepth"_param, bitDepth);
        Build(image.get());
        ExpectCurves(bitDepth != 32);
        if (bitDepth == 32) continue;
        EXPECT_EQ(SampleOf(Document().mergedRed), Curved(ImageAt(0)));
        EXPECT_EQ(SampleOf(Document().mergedGreen), Curved(ImageAt(1)));
        EXPECT_EQ(SampleOf(Document().mergedBlue), Curved(ImageAt(2)));
    }
    Set("bitDepth"_param, 16);
    Set("renderSRGBCorrect"_param, TRUE);
    Build(image.get());
    ExpectCurves(false);
}

TEST_F(MergedImage, BlankIsAWhitePage) {
    effect::BuildBlankMergedImage(builder, FrameOf(image.get()));
    EXPECT_FALSE(Document().hasRealMergedData);
    EXPECT_EQ(Document().mergedRed, white);
    EXPECT_EQ(Document().mergedGreen, white);
    EXPECT_EQ(Document().mergedBlue, white);
    EXPECT_FALSE(Document().mergedAlpha);
}

TEST_F(MergedImage, IsVRaysFrameBufferWithItsOwnAlphaWhereThatIsInUse) {
    const auto vray = VRayFrame(width, height);
    effect::BuildMergedImage(builder, FrameOf(effect::PSDFrameSources{opaque.get(), vray.get()}));
    EXPECT_EQ(SampleOf(Document().mergedRed), VRaySample(2, 1, 0));
    EXPECT_EQ(SampleOf(Document().mergedGreen), VRaySample(2, 1, 1));
    EXPECT_EQ(SampleOf(Document().mergedBlue), VRaySample(2, 1, 2));
    EXPECT_EQ(SampleOf(Document().mergedAlpha), VRayAlphaSample(2, 1));
}

TEST_F(MergedImage, OfVRaysFrameBufferFollowsTheCurvesLayerOnlyBesideABitmap) {
    Set("createCurvesAdjustmentLayer"_param, TRUE);
    const auto vray = VRayFrame(width, height);
    effect::BuildMergedImage(builder, FrameOf(effect::PSDFrameSources{image.get(), vray.get()}));
    ExpectCurves(true);
    EXPECT_EQ(SampleOf(Document().mergedRed), Curved(VRaySample(2, 1, 0)));
    effect::BuildMergedImage(builder, FrameOf(effect::PSDFrameSources{nullptr, vray.get()}));
    ExpectCurves(false);
}

}  // namespace

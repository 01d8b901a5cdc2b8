#include "effect/merged_image.h"

#include "effect/render_channels.h"
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
    void SwitchGammaOn() {
        Set("gammaCorrectRender"_param, TRUE);
        Set("bitDepth"_param, 16);
        gammaMgr.enable = TRUE;
        gammaMgr.SetFileOutGamma(2.2F);
    }
    static int Corrected(int sample) { return gammaMgr.fileOutGammaTable[sample >> 3]; }
    static int CorrectedImageAt(int component) { return Corrected(ImageAt(component)); }
    void ExpectSamples(int red, int green, int blue, int alpha) {
        EXPECT_EQ(SampleOf(Document().mergedRed), red);
        EXPECT_EQ(SampleOf(Document().mergedGreen), green);
        EXPECT_EQ(SampleOf(Document().mergedBlue), blue);
        EXPECT_EQ(SampleOf(Document().mergedAlpha), alpha);
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

TEST_F(MergedImage, IsCorrectedInEveryConfigurationOfTheGamma) {
    const auto vray = VRayFrame(width, height);
    for (const int config : {0, 1, 2, 3}) {
        SwitchGammaOn();
        Set("gammaCorrectConfig"_param, config);
        const bool reachesRender = config != 3;
        colors = effect::DecideColors(*effect->pblock);
        EXPECT_EQ(colors.gammaToRender, reachesRender);
        const auto frame = FrameOf(image.get());
        effect::BuildMergedImage(builder, frame);
        ExpectSamples(CorrectedImageAt(0), CorrectedImageAt(1), CorrectedImageAt(2), ImageAt(3));
        EXPECT_EQ(SampleOf(effect::RenderColor(frame, 0, colors.gammaToRender)),
                  reachesRender ? CorrectedImageAt(0) : ImageAt(0))
            << "the layer below differs";
        effect::BuildMergedImage(builder,
                                 FrameOf(effect::PSDFrameSources{image.get(), vray.get()}));
        ExpectSamples(Corrected(VRaySample(2, 1, 0)), Corrected(VRaySample(2, 1, 1)),
                      Corrected(VRaySample(2, 1, 2)), VRayAlphaSample(2, 1));
    }
}

TEST_F(MergedImage, IsLinearWhereTheGammaIsNotActiveWhateverItsConfiguration) {
    const struct {
        const char* why;
        std::function<void()> switchOff;
    } rows[] = {
        {"the effect's switch", [this] { Set("gammaCorrectRender"_param, FALSE); }},
        {"the host's switch", [] { gammaMgr.enable = FALSE; }},
        {"a gamma of 1", [] { gammaMgr.SetFileOutGamma(1.0F); }},
        {"floats", [this] { Set("bitDepth"_param, 32); }},
    };
    for (const auto& row : rows) {
        for (const int config : {0, 1, 2, 3}) {
            SwitchGammaOn();
            Set("gammaCorrectConfig"_param, config);
            row.switchOff();
            colors = effect::DecideColors(*effect->pblock);
            Build(image.get());
            SCOPED_TRACE(row.why);
            ExpectSamples(ImageAt(0), ImageAt(1), ImageAt(2), ImageAt(3));
        }
    }
}

TEST_F(MergedImage, AsksOnlyWhetherTheGammaIsActiveAndNotWhatItReaches) {
    SwitchGammaOn();
    colors.gammaToRender = true;
    colors.gammaToElements = true;
    Build(image.get());
    ExpectSamples(ImageAt(0), ImageAt(1), ImageAt(2), ImageAt(3));
}

TEST_F(MergedImage, SendsCorrectedColoursThroughTheCurve) {
    SwitchGammaOn();
    Set("createCurvesAdjustmentLayer"_param, TRUE);
    colors = effect::DecideColors(*effect->pblock);
    Build(image.get());
    ExpectSamples(Curved(CorrectedImageAt(0)), Curved(CorrectedImageAt(1)),
                  Curved(CorrectedImageAt(2)), ImageAt(3));
}

// Whatever becomes of the corrections, V-Ray itself applies what is still switched on.
TEST_F(MergedImage, HasVRaysCorrectionsInEveryConfiguration) {
    const auto vray = VRayFrame(width, height);
    CorrectingFrame correcting(*vray);
    for (const int config : {0, 1, 2, 3}) {
        Set("colorCorrectConfig"_param, config);
        colors = effect::DecideColors(*effect->pblock);
        effect::BuildMergedImage(builder, FrameOf(effect::PSDFrameSources{nullptr, &correcting}));
        ExpectSamples(65535, 65535, 65535, 65535);
    }
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

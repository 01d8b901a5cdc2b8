#include "effect/render_channels.h"

#include "sources/vray_vfb_channel.h"
#include "tests/effect/document_frame.h"
#include "tests/effect/vray_frame.h"

namespace {

struct NoStorage : Bitmap {
    BitmapStorage* Storage() override { return nullptr; }
    void DeleteThis() override {}
};

class RenderChannels : public DocumentFrameTest {};

TEST_F(RenderChannels, AreEmptyWithoutAnInput) {
    EXPECT_FALSE(effect::RenderColor(FrameOf(nullptr), 0, false));
    EXPECT_FALSE(effect::RenderAlpha(FrameOf(nullptr)));
}

TEST_F(RenderChannels, OfABitmapWithoutStorageHaveColoursAndNoAlpha) {
    NoStorage bitmap;
    const auto color = effect::RenderColor(FrameOf(&bitmap), 0, false);
    ASSERT_TRUE(color);
    EXPECT_NE(color->GetRow16(0), nullptr);
    EXPECT_FALSE(effect::RenderAlpha(FrameOf(&bitmap)));
}

TEST_F(RenderChannels, TakeTheSRGBVariantBelow32BitsOnly) {
    EXPECT_FALSE(effect::UsesSRGBVariant(FrameOf(nullptr)));
    Set("renderSRGBCorrect"_param, TRUE);
    for (const int bitDepth : {8, 16, 32}) {
        Set("bitDepth"_param, bitDepth);
        EXPECT_EQ(effect::UsesSRGBVariant(FrameOf(nullptr)), bitDepth != 32);
    }
}

TEST_F(RenderChannels, ReadNoPixelsBeforeARowIsAskedFor) {
    // The bitmap goes before a row is asked for: making the sources must not have kept anything.
    const auto frame = FrameOf(image.get());
    EXPECT_TRUE(effect::RenderColor(frame, 0, false));
    EXPECT_EQ(SampleOf(effect::RenderColor(frame, 1, false)), ImageAt(1));
    EXPECT_EQ(SampleOf(effect::RenderAlpha(frame)), ImageAt(3));
}

TEST_F(RenderChannels, ArePlainWhateverTheSettingsSay) {
    Set("renderSRGBCorrect"_param, TRUE);
    const auto frame = FrameOf(image.get());
    EXPECT_TRUE(IsCurved(effect::RenderColor(frame, 0, false)));
    EXPECT_FALSE(IsCurved(effect::PlainRenderColor(frame, 0, true, false)));
    EXPECT_EQ(SampleOf(effect::PlainRenderColor(frame, 1, true, false)), ImageAt(1));
    EXPECT_GT(SampleOf(effect::PlainRenderColor(frame, 1, false, false)), ImageAt(1));
}

class VRayRenderChannels : public DocumentFrameTest {
  protected:
    static int At(int component) { return VRaySample(2, 1, component); }
    effect::Frame FrameWith(Bitmap* bitmap) {
        return FrameOf(effect::PSDFrameSources{bitmap, vray.get()});
    }
    std::shared_ptr<host::VRayFrameBuffer> vray = VRayFrame(width, height);
};

TEST_F(VRayRenderChannels, ComeFromTheFrameBufferWithAndWithoutABitmap) {
    for (Bitmap* bitmap : {static_cast<Bitmap*>(nullptr), static_cast<Bitmap*>(image.get()),
                           static_cast<Bitmap*>(opaque.get())}) {
        const auto frame = FrameWith(bitmap);
        for (int component = 0; component < 3; ++component) {
            EXPECT_EQ(SampleOf(effect::RenderColor(frame, component, false)), At(component));
            EXPECT_EQ(SampleOf(effect::PlainRenderColor(frame, component, true, false)),
                      At(component));
        }
        EXPECT_EQ(SampleOf(effect::RenderAlpha(frame)), At(3)) << "the picture's own";
        EXPECT_EQ(SampleOf(effect::MergedAlpha(frame)), VRayAlphaSample(2, 1))
            << "of the alpha's channel";
    }
}

TEST_F(VRayRenderChannels, AreDividedByAlphaWhereTheRenderIs) {
    premultiply = false;
    const auto frame = FrameWith(nullptr);
    EXPECT_GT(SampleOf(effect::RenderColor(frame, 0, false)), At(0));
    EXPECT_EQ(SampleOf(effect::RenderAlpha(frame)), At(3));
}

TEST_F(VRayRenderChannels, TakeTheHostsGammaAndTheSRGBCurve) {
    gammaMgr.enable = TRUE;
    gammaMgr.SetFileOutGamma(2.2F);
    const auto frame = FrameWith(nullptr);
    EXPECT_EQ(SampleOf(effect::RenderColor(frame, 0, true)),
              gammaMgr.fileOutGammaTable[At(0) >> 3]);
    EXPECT_EQ(SampleOf(effect::RenderAlpha(frame)), At(3));
    Set("renderSRGBCorrect"_param, TRUE);
    for (const int bitDepth : {8, 16, 32}) {
        Set("bitDepth"_param, bitDepth);
        const auto curved = boost::dynamic_pointer_cast<sources::VRayVFBToPSDChannel_SRGB>(
            effect::RenderColor(frame, 0, true));
        EXPECT_EQ(curved != nullptr, bitDepth != 32);
        EXPECT_FALSE(boost::dynamic_pointer_cast<sources::VRayVFBToPSDChannel_SRGB>(
            effect::RenderAlpha(frame)));
    }
}

TEST_F(VRayRenderChannels, AreReadWithTheFrameBuffersCorrections) {
    CorrectingFrame correcting(*vray);
    const auto frame = FrameOf(effect::PSDFrameSources{image.get(), &correcting});
    EXPECT_EQ(SampleOf(effect::RenderColor(frame, 0, false)), 65535);
    EXPECT_EQ(SampleOf(effect::PlainRenderColor(frame, 0, true, false)), 65535);
    EXPECT_EQ(SampleOf(effect::RenderAlpha(frame)), 65535);
    EXPECT_EQ(SampleOf(effect::MergedAlpha(frame)), 65535);
    Set("renderSRGBCorrect"_param, TRUE);
    EXPECT_EQ(SampleOf(effect::RenderColor(frame, 0, false)), 65535);
}

TEST_F(VRayRenderChannels, ThatAreMissingAreWhite) {
    vray->BeginFrame(width, height);
    const auto frame = FrameWith(image.get());
    EXPECT_EQ(SampleOf(effect::RenderColor(frame, 0, false)), 65535);
    EXPECT_EQ(SampleOf(effect::RenderAlpha(frame)), 65535);
    EXPECT_EQ(SampleOf(effect::MergedAlpha(frame)), 65535);
}

TEST_F(RenderChannels, OfABitmapHaveOneAlphaForAll) {
    EXPECT_EQ(SampleOf(effect::MergedAlpha(FrameOf(image.get()))), ImageAt(3));
    EXPECT_FALSE(effect::MergedAlpha(FrameOf(opaque.get())));
    EXPECT_FALSE(effect::MergedAlpha(FrameOf(nullptr)));
}

}  // namespace

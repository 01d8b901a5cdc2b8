#include "effect/element_pixels.h"

#include "sources/pixel_rows.h"
#include "tests/effect/element_frame.h"
#include "tests/effect/vray_frame.h"

namespace {

struct NoStorage : Bitmap {
    BitmapStorage* Storage() override { return nullptr; }
    void DeleteThis() override {}
};

class ElementPixels : public ElementFrameTest {
  protected:
    static int MeanAt() { return (ImageAt(0) + ImageAt(1) + ImageAt(2)) / 3; }
};

TEST_F(ElementPixels, ComeFromTheElementsBitmap) {
    const effect::ElementPixels pixels{.bitmap = image.get()};
    for (int selector = 0; selector < 4; ++selector)
        EXPECT_EQ(SampleOf(pixels.Channel(selector)), ImageAt(selector));
    EXPECT_EQ(SampleOf(pixels.Channel(sources::selectLuminance)), MeanAt());
    EXPECT_TRUE(pixels.HasAlpha());
    EXPECT_FALSE(effect::ElementPixels{.bitmap = opaque.get()}.HasAlpha());
    NoStorage bitmap;
    EXPECT_FALSE(effect::ElementPixels{.bitmap = &bitmap}.HasAlpha());
}

TEST_F(ElementPixels, ComeFromAChannelOfVRaysFrameBuffer) {
    UseVRay();
    AddVRayChannel(106, "VRaySpecular", Image(width, height));
    const effect::ElementPixels pixels{.vfb = vfb.get(), .vfbChannel = 2};
    for (int selector = 0; selector < 4; ++selector)
        EXPECT_EQ(SampleOf(pixels.Channel(selector)), ImageAt(selector));
    EXPECT_EQ(SampleOf(pixels.Channel(sources::selectLuminance)), MeanAt());
    EXPECT_TRUE(pixels.HasAlpha());
}

TEST_F(ElementPixels, AreDividedByAlphaUnlessTheyStayPremultiplied) {
    const auto bitmap = Filled(8000, 0, 0, 32768);
    const effect::ElementPixels pixels{.bitmap = bitmap.get(), .premultiplied = false};
    EXPECT_EQ(SampleOf(pixels.Channel(0)), 8000 * 8191 / (32768 >> 3));
    UseVRay();
    AddVRayChannel(106, "VRaySpecular", Filled(8000, 0, 0, 32768));
    const effect::ElementPixels channel{.vfb = vfb.get(), .vfbChannel = 2, .premultiplied = false};
    EXPECT_EQ(SampleOf(channel.Channel(0)), 8000 * 8191 / (32768 >> 3));
}

TEST_F(ElementPixels, TakeTheHostsGammaWhereAsked) {
    gammaMgr.enable = TRUE;
    gammaMgr.SetFileOutGamma(2.2F);
    const int corrected = gammaMgr.fileOutGammaTable[ImageAt(0) >> 3];
    EXPECT_EQ(SampleOf(effect::ElementPixels{.bitmap = image.get()}.Channel(0)), ImageAt(0));
    const effect::ElementPixels pixels{.bitmap = image.get(), .gammaCorrect = true};
    EXPECT_EQ(SampleOf(pixels.Channel(0)), corrected);
    EXPECT_EQ(SampleOf(pixels.Channel(3)), ImageAt(3));
    UseVRay();
    const effect::ElementPixels channel{.vfb = vfb.get(), .vfbChannel = 0, .gammaCorrect = true};
    EXPECT_EQ(SampleOf(channel.Channel(0)), corrected);
}

TEST_F(ElementPixels, TakeVRaysColourCorrectionsWhereAsked) {
    CorrectingFrame buffer(UseVRay());
    effect::ElementPixels pixels{.vfb = &buffer, .vfbChannel = 0};
    EXPECT_EQ(SampleOf(pixels.Channel(0)), 0);
    pixels.colorCorrect = true;
    EXPECT_EQ(SampleOf(pixels.Channel(0)), 65535);
}

}  // namespace

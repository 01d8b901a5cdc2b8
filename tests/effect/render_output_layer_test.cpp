#include "effect/render_output_layer.h"

#include "sources/srgb_curve.h"
#include "tests/effect/document_frame.h"
#include "tests/effect/vray_frame.h"

namespace {

using testing::IsEmpty;

class RenderOutputLayer : public DocumentFrameTest {
  protected:
    void Add(Bitmap* bitmap) { effect::AddRenderOutputLayer(builder, FrameOf(bitmap)); }
    void Style(int style) { Set("outputRenderAs"_param, style); }
};

TEST_F(RenderOutputLayer, IsNotMadeWithoutAnInput) {
    for (int style = 0; style <= 4; ++style) {
        Style(style);
        Add(nullptr);
    }
    EXPECT_THAT(Document().children, IsEmpty());
    EXPECT_THAT(Document().channels, IsEmpty());
}

TEST_F(RenderOutputLayer, HasTheFramesColoursInEveryStyle) {
    for (int style = 0; style <= 4; ++style) {
        Style(style);
        Add(image.get());
        const auto& layer = Layer(static_cast<std::size_t>(style));
        EXPECT_EQ(layer.name, "Render");
        EXPECT_EQ(layer.unicodeName, u"Render");
        EXPECT_EQ(layer.blendKey, psdfile::blendKeyNormal);
        EXPECT_EQ(layer.flags, 0);
        EXPECT_FALSE(layer.clipping);
        EXPECT_EQ(SampleOf(layer.red), ImageAt(0));
        EXPECT_EQ(SampleOf(layer.green), ImageAt(1));
        EXPECT_EQ(SampleOf(layer.blue), ImageAt(2));
    }
}

TEST_F(RenderOutputLayer, WithTransparencyHasTheRendersAlpha) {
    Style(0);
    Add(image.get());
    EXPECT_EQ(SampleOf(Layer(0).alpha), ImageAt(3));
    EXPECT_FALSE(Layer(0).mask);
    EXPECT_FALSE(Layer(0).maskEnabled);
    EXPECT_THAT(Document().channels, IsEmpty());
}

TEST_F(RenderOutputLayer, WithoutTransparencyIsSolid) {
    Style(1);
    Add(image.get());
    EXPECT_EQ(Layer(0).alpha, white);
    EXPECT_FALSE(Layer(0).mask);
    EXPECT_FALSE(Layer(0).maskEnabled);
    EXPECT_THAT(Document().channels, IsEmpty());
}

TEST_F(RenderOutputLayer, WithAMaskHasTheRendersAlphaThere) {
    for (const int style : {2, 3}) {
        Style(style);
        Add(image.get());
        const auto& layer = Layer(static_cast<std::size_t>(style - 2));
        EXPECT_EQ(layer.alpha, white);
        EXPECT_EQ(SampleOf(layer.mask), ImageAt(3));
        EXPECT_EQ(layer.maskEnabled, style == 2);
    }
    EXPECT_THAT(Document().channels, IsEmpty());
}

TEST_F(RenderOutputLayer, WithAnAlphaChannelHasTheRendersAlphaBesideTheLayers) {
    Style(4);
    Add(image.get());
    EXPECT_EQ(Layer(0).alpha, white);
    EXPECT_FALSE(Layer(0).mask);
    ASSERT_EQ(Document().channels.size(), 1U);
    EXPECT_EQ(Document().channels[0].name, "Render Alpha");
    EXPECT_EQ(Document().channels[0].unicodeName, u"Render Alpha");
    EXPECT_EQ(SampleOf(Document().channels[0].source), ImageAt(3));
}

TEST_F(RenderOutputLayer, OfARenderWithoutAlphaIsWhite) {
    for (int style = 0; style <= 4; ++style) {
        Style(style);
        Add(opaque.get());
        EXPECT_EQ(Layer(static_cast<std::size_t>(style)).alpha, white) << style;
        EXPECT_FALSE(Layer(static_cast<std::size_t>(style)).mask) << style;
    }
    ASSERT_EQ(Document().channels.size(), 1U);
    EXPECT_EQ(Document().channels[0].source, white);
}

TEST_F(RenderOutputLayer, HasTheNameThatTheUserGaveInBothForms) {
    SetText("renderOutputLayerName"_param, _M("Bild 漢"));
    Style(4);
    Add(image.get());
    EXPECT_EQ(Layer(0).name, "Bild ?");
    EXPECT_EQ(Layer(0).unicodeName, u"Bild 漢");
    EXPECT_EQ(Document().channels[0].name, "Render Alpha") << "no parameter changes it";
}

TEST_F(RenderOutputLayer, TakesTheSRGBVariantBelow32BitsForItsColoursOnly) {
    Set("renderSRGBCorrect"_param, TRUE);
    Style(0);
    std::size_t layers = 0;
    for (const int bitDepth : {8, 16, 32}) {
        Set("bitDepth"_param, bitDepth);
        Add(image.get());
        const auto& layer = Layer(layers++);
        EXPECT_EQ(IsCurved(layer.red), bitDepth != 32) << bitDepth;
        EXPECT_EQ(IsCurved(layer.green), bitDepth != 32);
        EXPECT_EQ(IsCurved(layer.blue), bitDepth != 32);
        EXPECT_FALSE(IsCurved(layer.alpha));
    }
    EXPECT_EQ(SampleOf(Layer(0).red),
              sources::SRGBTable()[static_cast<std::size_t>(ImageAt(0)) >> 3]);
}

TEST_F(RenderOutputLayer, IsGammaCorrectedOnlyWhenGammaGoesToTheRender) {
    gammaMgr.enable = TRUE;
    gammaMgr.SetFileOutGamma(2.2F);
    colors.gammaActive = true;
    Style(0);
    Add(image.get());
    EXPECT_EQ(SampleOf(Layer(0).red), ImageAt(0));
    colors.gammaToRender = true;
    Add(image.get());
    EXPECT_EQ(SampleOf(Layer(1).red), gammaMgr.fileOutGammaTable[ImageAt(0) >> 3]);
    EXPECT_EQ(SampleOf(Layer(1).alpha), ImageAt(3));
    Set("renderSRGBCorrect"_param, TRUE);
    Add(image.get());
    EXPECT_EQ(SampleOf(Layer(2).red),
              sources::SRGBTable()[static_cast<std::size_t>(ImageAt(0)) >> 3])
        << "one curve stands in for the other";
}

TEST_F(RenderOutputLayer, IsDividedByAlphaUnlessPremultiplied) {
    premultiply = false;
    Style(0);
    Add(image.get());
    // 13 bits of alpha.
    EXPECT_EQ(SampleOf(Layer(0).red), ImageAt(0) * 8191 / (ImageAt(3) >> 3));
    EXPECT_EQ(SampleOf(Layer(0).alpha), ImageAt(3));
}

TEST_F(RenderOutputLayer, OfAnUnknownStyleIsThePlainest) {
    for (const int style : {-1, 5, 1000}) {
        Style(style);
        Add(image.get());
    }
    ASSERT_EQ(Document().children.size(), 3U);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(Layer(i).alpha, white);
        EXPECT_FALSE(Layer(i).mask);
    }
    EXPECT_THAT(Document().channels, IsEmpty());
}

TEST_F(RenderOutputLayer, ComesFromVRaysFrameBufferWhereThatIsInUse) {
    const auto vray = VRayFrame(width, height);
    for (Bitmap* bitmap : {static_cast<Bitmap*>(nullptr), static_cast<Bitmap*>(opaque.get())}) {
        Document().children.clear();
        for (int style = 0; style <= 4; ++style) {
            Style(style);
            const effect::PSDFrameSources sources{bitmap, vray.get()};
            effect::AddRenderOutputLayer(builder, FrameOf(sources));
            const auto& layer = Layer(static_cast<std::size_t>(style));
            EXPECT_EQ(SampleOf(layer.red), VRaySample(2, 1, 0));
            EXPECT_EQ(SampleOf(layer.green), VRaySample(2, 1, 1));
            EXPECT_EQ(SampleOf(layer.blue), VRaySample(2, 1, 2));
        }
        EXPECT_EQ(SampleOf(Layer(0).alpha), VRaySample(2, 1, 3));
        EXPECT_EQ(SampleOf(Layer(2).mask), VRaySample(2, 1, 3));
        EXPECT_EQ(SampleOf(Layer(3).mask), VRaySample(2, 1, 3));
        EXPECT_EQ(SampleOf(Document().channels.back().source), VRaySample(2, 1, 3));
    }
}

}  // namespace

#include "effect/gbuffer_layers.h"

#include "tests/effect/matte_frame.h"

namespace {

constexpr ParamID layerSwitches[] = {"createNodeIDLayer"_param, "createNodeRenderIDLayer"_param,
                                     "createMtlIDLayer"_param, "createNormalLayer"_param,
                                     "createNonClampedColorLayer"_param};

class GBufferLayers : public MatteFrameTest {
  protected:
    void SwitchAllOn() {
        for (const ParamID id : layerSwitches)
            Set(id, TRUE);
    }
    std::string Add(Bitmap* bitmap) {
        Document().children.clear();
        effect::AddGBufferLayers(builder, FrameOf(bitmap));
        return Tree();
    }
    std::string Add() { return Add(image.get()); }
    static std::string HostName(int index) { return host::ToUtf8(MSTR(GBChannelName(index))); }
};

TEST_F(GBufferLayers, AreOffAtFirst) {
    EXPECT_EQ(Add(), "");
}

TEST_F(GBufferLayers, HaveTheHostsNamesAndAreHidden) {
    SwitchAllOn();
    Set("bitDepth"_param, 32);
    Add();
    const int indices[] = {2, 8, 1, 4, 5};
    ASSERT_EQ(Document().children.size(), std::size(indices));
    for (std::size_t i = 0; i < std::size(indices); ++i) {
        EXPECT_EQ(Layer(i).name, HostName(indices[i]));
        EXPECT_NE(Layer(i).name, "");
        EXPECT_EQ(Layer(i).blendKey, psdfile::blendKeyNormal);
        EXPECT_EQ(Layer(i).flags, 2);
        EXPECT_FALSE(Layer(i).mask);
        EXPECT_TRUE(Layer(i).maskEnabled);
        EXPECT_FALSE(Layer(i).clipping);
        if (i < 4) {
            EXPECT_EQ(Layer(i).alpha, white);
        }
    }
}

TEST_F(GBufferLayers, EachHasItsOwnSwitch) {
    Set("bitDepth"_param, 32);
    const int indices[] = {2, 8, 1, 4, 5};
    for (std::size_t i = 0; i < std::size(layerSwitches); ++i) {
        Set(layerSwitches[i], TRUE);
        EXPECT_EQ(Add(), HostName(indices[i]));
        Set(layerSwitches[i], FALSE);
    }
}

TEST_F(GBufferLayers, OfIDsMayHaveNamesOfTheUsers) {
    SwitchAllOn();
    Set("createNodeRenderIDLayer"_param, FALSE);
    Set("createNormalLayer"_param, FALSE);
    SetText("gbufferObjectIdLayerName"_param, _M("Objects"));
    SetText("gbufferMaterialIdLayerName"_param, _M("IDs/Materials"));
    EXPECT_EQ(Add(), "Objects IDs(Materials)");
}

TEST_F(GBufferLayers, StandInASetOfTheirOwnWhereTheUserWantsOne) {
    Set("createNodeIDLayer"_param, TRUE);
    Set("createGBufferLayerSet"_param, TRUE);
    SetText("gbufferObjectIdLayerName"_param, _M("IDs"));
    EXPECT_EQ(Add(), "G-Buffer(IDs)");
    EXPECT_EQ(Set0().unicodeName, u"G-Buffer");
    EXPECT_EQ(Set0().blendKey, psdfile::blendKeyPassThrough);
    EXPECT_EQ(Set0().flags, 0);
    EXPECT_FALSE(Set0().open);
    EXPECT_EQ(builder.current.lock(), builder.doc);
    SetText("gbufferLayerSetName"_param, _M("Data"));
    EXPECT_EQ(Add(), "Data(IDs)");
    Set("createNodeIDLayer"_param, FALSE);
    EXPECT_EQ(Add(), "Data()");
}

TEST_F(GBufferLayers, OfNonClampedColoursNeed32Bits) {
    Set("createNonClampedColorLayer"_param, TRUE);
    for (const int bitDepth : {8, 16}) {
        Set("bitDepth"_param, bitDepth);
        EXPECT_EQ(Add(), "");
    }
    Set("bitDepth"_param, 32);
    EXPECT_NE(Add(), "");
}

TEST_F(GBufferLayers, WithoutTheirChannelAreLeftOut) {
    SwitchAllOn();
    Set("bitDepth"_param, 32);
    const struct {
        DWORD channel;
        int index;
    } layers[] = {{BMM_CHAN_NODE_ID, 2},
                  {BMM_CHAN_NODE_RENDER_ID, 8},
                  {BMM_CHAN_MTL_ID, 1},
                  {BMM_CHAN_NORMAL, 4},
                  {BMM_CHAN_REALPIX, 5}};
    for (const auto& layer : layers) {
        UseChannels(layer.channel);
        EXPECT_EQ(Add(), HostName(layer.index));
    }
    UseChannels(BMM_CHAN_COVERAGE);
    EXPECT_EQ(Add(), "");
    EXPECT_EQ(Add(nullptr), "");
    EXPECT_EQ(Add(opaque.get()), "");
    Set("createGBufferLayerSet"_param, TRUE);
    EXPECT_EQ(Add(nullptr), "G-Buffer()");
}

TEST_F(GBufferLayers, HaveAColourForEachIDAndBlackForNone) {
    Set("createMtlIDLayer"_param, TRUE);
    Add();
    for (const auto& source : {Layer(0).red, Layer(0).green, Layer(0).blue}) {
        const std::vector<int> samples = Rows8(source);
        EXPECT_EQ(samples[0], samples[1]) << "the first fragment counts";
        EXPECT_NE(samples[0], samples[4]);
        EXPECT_EQ(samples[2], 0);
        EXPECT_EQ(samples[3], 0);
    }
    EXPECT_NE(Rows8(Layer(0).red), Rows8(Layer(0).green));
    EXPECT_NE(Rows8(Layer(0).green), Rows8(Layer(0).blue));
}

// Pixel (0, 0) covered wholly, and (1, 0) by a half, by a colour above white.
class NonClampedColors : public DocumentFrameTest {
  protected:
    NonClampedColors() {
        auto fragments = std::make_unique<host::FragmentBuffer>(
            width, height, BMM_CHAN_REALPIX | BMM_CHAN_COVERAGE | BMM_CHAN_NODE_RENDER_ID);
        const host::Fragment whole{.realPixel = MakeRealPixel(4.0F, 2.0F, 0.5F), .renderID = 1};
        host::Fragment half = whole;
        half.coverage = 51;
        fragments->AddPixel(std::array{whole});
        fragments->AddPixel(std::array{half});
        for (int i = 2; i < width * height; ++i)
            fragments->AddPixel({});
        image->SetGBuffer(std::move(fragments));
        Set("bitDepth"_param, 32);
        Set("createNonClampedColorLayer"_param, TRUE);
    }
    void Add() {
        Document().children.clear();
        effect::AddGBufferLayers(builder, FrameOf(image.get()));
    }
    static float At(const psdfile::PSDChannelImageDataSourcePtr& source, std::size_t x) {
        return source->GetRow32(0)[x];
    }
};

TEST_F(NonClampedColors, KeepWhatIsAboveWhiteAndHaveTheCoverageAsAlpha) {
    Add();
    EXPECT_NEAR(At(Layer(0).red, 0), 4.0F, 0.05F);
    EXPECT_NEAR(At(Layer(0).green, 0), 2.0F, 0.05F);
    EXPECT_NEAR(At(Layer(0).blue, 0), 0.5F, 0.05F);
    EXPECT_FLOAT_EQ(At(Layer(0).alpha, 0), 1.0F);
    EXPECT_FLOAT_EQ(At(Layer(0).alpha, 1), 0.2F);
    EXPECT_FLOAT_EQ(At(Layer(0).alpha, 2), 0.0F);
}

TEST_F(NonClampedColors, ArePremultipliedAsTheRenderIs) {
    Add();
    EXPECT_NEAR(At(Layer(0).red, 1), 0.8F, 0.01F);
    premultiply = false;
    Add();
    EXPECT_NEAR(At(Layer(0).red, 1), 4.0F, 0.05F);
}

}  // namespace

#include "effect/render_elements.h"

#include <elementclasses.h>
#include <vrayelements.h>

#include <cmath>
#include <map>

#include "effect/class_defaults.h"
#include "psdfile/blend_keys.h"
#include "tests/effect/element_frame.h"
#include "tests/effect/vray_frame.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class RenderElements : public ElementFrameTest {
  protected:
    void AddGroup() { effect::AddRenderElementsGroup(builder, FrameOf(image.get())); }
    const psdbuilder::PSDBuilderLayerSet& OnlySet() {
        EXPECT_EQ(Document().children.size(), 1U);
        return dynamic_cast<const psdbuilder::PSDBuilderLayerSet&>(*Document().children.at(0));
    }
    host::RenderElement& Add(const std::string& name, host::Owned<host::ImageBitmap> bitmap) {
        return AddElement(unknownElement, name, std::move(bitmap));
    }
    host::RenderElement& Add(const std::string& name) { return Add(name, Image(width, height)); }
};

// ---- The group ----

TEST_F(RenderElements, AreLayersInTheOrderOfTheList) {
    Add("B");
    Add("A");
    Add("C");
    AddGroup();
    EXPECT_EQ(Tree(), "B A C");
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(SampleOf(Layer(i).red), ImageAt(0));
        EXPECT_EQ(SampleOf(Layer(i).green), ImageAt(1));
        EXPECT_EQ(SampleOf(Layer(i).blue), ImageAt(2));
        EXPECT_EQ(SampleOf(Layer(i).alpha), ImageAt(3));
    }
}

TEST_F(RenderElements, StandInASetWhereTheUserWants) {
    Add("A");
    Set("createRenderElementsLayerSet"_param, TRUE);
    AddGroup();
    EXPECT_EQ(Tree(), "Render Elements(A)");
    const auto& set = OnlySet();
    EXPECT_EQ(set.unicodeName, u"Render Elements");
    EXPECT_EQ(set.blendKey, psdfile::blendKeyPassThrough);
    EXPECT_EQ(set.flags, 0);
    EXPECT_FALSE(set.open);
    EXPECT_FALSE(set.mask);
    EXPECT_TRUE(set.maskEnabled);
    EXPECT_TRUE(builder.stack.empty()) << "the set is closed again";
}

TEST_F(RenderElements, StandInASetOfTheUsersName) {
    Set("createRenderElementsLayerSet"_param, TRUE);
    SetText("renderElementsLayerSetName"_param, _M("Passes/All"));
    Add("A");
    AddGroup();
    EXPECT_EQ(Tree(), "Passes(All(A))");
}

TEST_F(RenderElements, StandInASetUnderTheRendersAlphaWhereTheUserWants) {
    Set("createRenderElementsLayerSet"_param, TRUE);
    Set("createRenderElementsLayerSetMaskFromAlpha"_param, TRUE);
    AddGroup();
    ASSERT_TRUE(OnlySet().mask);
    EXPECT_EQ(SampleOf(OnlySet().mask), ImageAt(3));
}

TEST_F(RenderElements, OfARenderWithoutAlphaStandInASetWithoutMask) {
    Set("createRenderElementsLayerSet"_param, TRUE);
    Set("createRenderElementsLayerSetMaskFromAlpha"_param, TRUE);
    effect::AddRenderElementsGroup(builder, FrameOf(opaque.get()));
    EXPECT_FALSE(OnlySet().mask);
    Document().children.clear();
    effect::AddRenderElementsGroup(builder, FrameOf(nullptr));
    EXPECT_FALSE(OnlySet().mask);
}

// ---- Rows that are passed over ----

TEST_F(RenderElements, HaveTheCurvesLayerAboveThemInsideTheirSet) {
    Add("A");
    Set("createCurvesAdjustmentLayer"_param, TRUE);
    AddGroup();
    EXPECT_EQ(Tree(), "Curves A");
    Document().children.clear();
    Set("createRenderElementsLayerSet"_param, TRUE);
    AddGroup();
    EXPECT_EQ(Tree(), "Render Elements(Curves A)");
}

TEST_F(RenderElements, HaveNoCurvesLayerAt32BitsOrWithoutTheSwitch) {
    Add("A");
    for (const int bitDepth : {8, 16, 32}) {
        Set("bitDepth"_param, bitDepth);
        for (const bool wanted : {false, true}) {
            Document().children.clear();
            Set("createCurvesAdjustmentLayer"_param, wanted);
            AddGroup();
            EXPECT_EQ(Tree(), wanted && bitDepth != 32 ? "Curves A" : "A") << bitDepth;
        }
    }
}

TEST_F(RenderElements, WithoutALayerThatIsOnAreLeftOut) {
    const auto& off = Add("off");
    Add("on");
    SetOf(off, "enabled"_layerParam, FALSE);
    AddGroup();
    EXPECT_EQ(Tree(), "on");
}

TEST_F(RenderElements, ThatTheHostReportsAsOffAreLeftOut) {
    Add("off").SetEnabled(false);
    Add("on");
    AddGroup();
    EXPECT_EQ(Tree(), "on");
}

TEST_F(RenderElements, OfDeletedElementsAndNullEntriesAreLeftOut) {
    Add("null");
    Add("deleted");
    Add("there");
    LayerOf(*Elements().GetRenderElement(0)).DeleteThis();
    Elements().Remove(Elements().GetRenderElement(1));
    ASSERT_EQ(effect->LayerCount(0), 3);
    AddGroup();
    EXPECT_EQ(Tree(), "there");
}

TEST_F(RenderElements, ThatTheRenderDoesntHoldAreLeftOut) {
    Add("A");
    AddLayer(Elements(RS_Draft).Add(unknownElement, _M("draft")), 0);
    Elements(RS_Draft).GetRenderElement(0)->SetBitmap(Image(width, height));
    AddGroup();
    EXPECT_EQ(Tree(), "A");
    Document().children.clear();
    context.elementMgr = nullptr;
    AddGroup();
    EXPECT_EQ(Tree(), "");
}

TEST_F(RenderElements, ThatTheHostDoesntHoldAreLeftOut) {
    Add("A");
    host::RenderElementManager foreign;
    host::RenderElement& element = foreign.Add(unknownElement, _M("foreign"));
    element.SetBitmap(Image(width, height));
    AddLayer(element, 0);
    context.elementMgr = &foreign;
    AddGroup();
    EXPECT_EQ(Tree(), "");
}

TEST_F(RenderElements, OfTheHostsSecondManagerGoByTheSecondList) {
    Add("production");
    host::RenderElement& draft = Elements(RS_Draft).Add(unknownElement, _M("draft"));
    draft.SetBitmap(Image(width, height));
    AddLayer(draft, 1);
    AddGroup();
    EXPECT_EQ(Tree(), "production");
    Document().children.clear();
    context.elementMgr = &Elements(RS_Draft);
    AddGroup();
    EXPECT_EQ(Tree(), "draft");
}

TEST_F(RenderElements, WithoutABitmapOfTheFramesSizeAreLeftOut) {
    Add("none", {});
    Add("wide", Filled(1, 1, 1, 65535, true, width + 1));
    Add("A");
    AddGroup();
    EXPECT_EQ(Tree(), "A");
}

// ---- Each row's settings ----

TEST_F(RenderElements, StayPremultipliedAsTheirLayerSays) {
    const auto& element = Add("A", Filled(8000, 0, 0, 32768));
    AddGroup();
    SetOf(element, "premultiply"_layerParam, FALSE);
    AddGroup();
    EXPECT_EQ(SampleOf(Layer(0).red), 8000);
    EXPECT_EQ(SampleOf(Layer(1).red), 8000 * 8191 / (32768 >> 3));
}

TEST_F(RenderElements, AreCorrectedAsTheirLayerSays) {
    gammaMgr.enable = TRUE;
    gammaMgr.SetFileOutGamma(2.2F);
    colors.gammaToElements = true;
    const auto& first = Add("first");
    const auto& second = Add("second");
    SetOf(first, "gammaCorrect"_layerParam, TRUE);
    SetOf(second, "gammaCorrect"_layerParam, FALSE);
    Set("gammaCorrectConfig"_param, 1);
    AddGroup();
    const int corrected = gammaMgr.fileOutGammaTable[ImageAt(0) >> 3];
    EXPECT_EQ(SampleOf(Layer(0).red), corrected);
    EXPECT_EQ(SampleOf(Layer(1).red), ImageAt(0));
    EXPECT_EQ(SampleOf(Layer(0).alpha), ImageAt(3));
    Set("gammaCorrectConfig"_param, 2);
    AddGroup();
    EXPECT_EQ(SampleOf(Layer(3).red), corrected);
    colors.gammaToElements = false;
    AddGroup();
    EXPECT_EQ(SampleOf(Layer(4).red), ImageAt(0));
}

TEST_F(RenderElements, AreSplitAsTheirLayerSays) {
    const auto& element = Add("A");
    Add("B");
    SetOf(element, "split"_layerParam, TRUE);
    AddGroup();
    EXPECT_EQ(Tree(), "A R A G A B B");
}

TEST_F(RenderElements, MergeIntoTheNextOne) {
    for (const char* name : {"first", "second"}) {
        const auto& element = Add(name, Filled(13107, 0, 0));
        SetOf(element, "mergeDown"_layerParam, TRUE);
        SetOf(element, "blendingMode"_layerParam, 9);
    }
    Add("third", Filled(13107, 0, 0));
    Add("fourth", Filled(13107, 0, 0));
    AddGroup();
    EXPECT_EQ(Tree(), "third fourth");
    EXPECT_EQ(SampleOf(Named("third").red), 39321);
    EXPECT_EQ(SampleOf(Named("fourth").red), 13107);
}

TEST_F(RenderElements, ThatMergeAsTheLastAreInNoLayer) {
    Add("first", Filled(13107, 0, 0));
    const auto& last = Add("last", Filled(13107, 0, 0));
    SetOf(last, "mergeDown"_layerParam, TRUE);
    SetOf(last, "blendingMode"_layerParam, 9);
    for (int frame = 0; frame < 2; ++frame) {
        Document().children.clear();
        AddGroup();
        EXPECT_EQ(Tree(), "first");
        EXPECT_EQ(SampleOf(Layer(0).red), 13107) << "nothing is left from the frame before";
    }
}

// ---- V-Ray's frame buffer ----

constexpr Class_ID specular{0x28820859, 0x490f6dad};
constexpr Class_ID extraTex{0x2e056b03, 0x318604b3};

class VRayRenderElements : public RenderElements {
  protected:
    VRayRenderElements() {
        UseVRay();
        AddVRayChannel(106, "VRaySpecular", Filled(1000, 2000, 3000, 32768));
        AddVRayChannel(1000, "wood", Filled(500, 600, 700));
    }
    void AddGroup() { effect::AddRenderElementsGroup(builder, VRayFrame()); }
};

TEST_F(VRayRenderElements, ComeFromItAndNotFromTheirBitmaps) {
    AddElement(extraTex, "wood", Image(width, height));
    AddElement(specular, "VRaySpecular");
    AddGroup();
    EXPECT_EQ(Tree(), "wood VRaySpecular");
    EXPECT_EQ(SampleOf(Layer(0).red), 500);
    EXPECT_EQ(SampleOf(Layer(0).green), 600);
    EXPECT_EQ(SampleOf(Layer(0).blue), 700);
    EXPECT_EQ(SampleOf(Layer(1).red), 1000);
    EXPECT_EQ(SampleOf(Layer(1).alpha), 32768);
}

TEST_F(VRayRenderElements, ThatItDoesntHaveAreLeftOut) {
    AddElement(extraTex, "stone", Image(width, height));
    AddElement(specular, "VRaySpecular");
    AddGroup();
    EXPECT_EQ(Tree(), "VRaySpecular Extra()");
    EXPECT_THAT(Channels(), ElementsAre("wood"));
}

TEST_F(VRayRenderElements, GoByTheirOwnSwitch) {
    host::RenderElement& element = AddElement(specular, "VRaySpecular");
    AddElement(extraTex, "wood");
    element.SetEnabled(false);
    AddGroup();
    EXPECT_EQ(Tree(), "VRaySpecular wood") << "the host's switch has no meaning";
    Document().children.clear();
    element.SetParameter(host::VRAY_ELEMENT_ENABLED, 0);
    AddGroup();
    EXPECT_EQ(Tree(), "wood");
    Document().children.clear();
    element.RemoveParameter(host::VRAY_ELEMENT_ENABLED);
    AddGroup();
    EXPECT_EQ(Tree(), "VRaySpecular wood") << "without a switch it is on";
}

TEST_F(VRayRenderElements, OfOtherRenderersAreLeftOut) {
    AddVRayChannel(1000, "Specular", Image(width, height));
    AddElement(SPECULAR_ELEMENT, "Specular", Image(width, height));
    AddElement(specular, "VRaySpecular");
    AddGroup();
    EXPECT_EQ(Tree(), "VRaySpecular");
}

TEST_F(VRayRenderElements, AreCorrectedAsTheirLayerSays) {
    gammaMgr.enable = TRUE;
    gammaMgr.SetFileOutGamma(2.2F);
    colors.gammaToElements = true;
    Set("gammaCorrectConfig"_param, 1);
    AddElement(specular, "VRaySpecular");
    SetOf(AddElement(extraTex, "wood"), "gammaCorrect"_layerParam, FALSE);
    AddGroup();
    EXPECT_EQ(SampleOf(Layer(0).red), gammaMgr.fileOutGammaTable[1000 >> 3]);
    EXPECT_EQ(SampleOf(Layer(1).red), 500);
}

TEST_F(VRayRenderElements, TakeVRaysCorrectionsAsTheirLayerSays) {
    CorrectingFrame correcting(*vfb);
    const auto reds = [&] {
        Document().children.clear();
        effect::AddRenderElementsGroup(builder,
                                       FrameOf(effect::PSDFrameSources{image.get(), &correcting}));
        return std::vector<int>{SampleOf(Layer(0).red), SampleOf(Layer(1).red)};
    };
    AddElement(specular, "VRaySpecular");
    SetOf(AddElement(extraTex, "wood"), "colorCorrect"_layerParam, TRUE);
    colors.ccToElements = true;
    Set("colorCorrectConfig"_param, 1);
    EXPECT_THAT(reds(), ElementsAre(0, 65535));
    Set("colorCorrectConfig"_param, 2);
    EXPECT_THAT(reds(), ElementsAre(65535, 65535));
    colors.ccToElements = false;
    EXPECT_THAT(reds(), ElementsAre(0, 0));
}

TEST_F(VRayRenderElements, AreLeftOutWhereThereIsNoFrameOfTheSize) {
    AddElement(specular, "VRaySpecular", Image(width, height));
    effect::AddRenderElementsGroup(builder, FrameOf(image.get()));
    EXPECT_EQ(Tree(), "") << "V-Ray's elements have no bitmaps";
    vfb->BeginFrame(width + 1, height);
    AddGroup();
    EXPECT_EQ(Tree(), "");
    EXPECT_THAT(Channels(), IsEmpty());
}

TEST_F(VRayRenderElements, ComeFromBitmapsWhereItIsOff) {
    Host().renderer->GetParamBlock(host::VRAY_BLOCK)->SetValue(host::VRAY_FRAME_BUFFER_ON, 0, 0);
    AddElement(specular, "VRaySpecular", Image(width, height));
    effect::AddRenderElementsGroup(builder, FrameOf(image.get()));
    EXPECT_EQ(Tree(), "VRaySpecular");
    EXPECT_EQ(SampleOf(Layer(0).red), ImageAt(0));
}

TEST_F(VRayRenderElements, ComeWithTheSetOfExtraChannelsInsideTheirOwn) {
    Set("createRenderElementsLayerSet"_param, TRUE);
    AddElement(specular, "VRaySpecular");
    AddGroup();
    EXPECT_EQ(Tree(), "Render Elements(VRaySpecular Extra())");
}

// ---- What a paint application shows of the default layers ----

// The application's model of opaque layers over black, in floats: a clipped layer changes what its
// base is, and the base then goes over what is below.
class Shown : public RenderElements {
  protected:
    void AddPass(PassKind kind, float value) {
        const std::string name = "pass " + std::to_string(values.size());
        values[name] = value;
        Elements()
            .Add(PassClassID(kind), host::FromUtf8(name))
            .SetBitmap(Filled(Sample(value), Sample(value), Sample(value)));
    }
    static int Sample(float value) { return static_cast<int>(std::lround(value * 65535.0F)); }

    static float Blend(std::uint32_t key, float below, float above) {
        if (key == psdfile::BlendKey(9)) return std::min(1.0F, below + above);
        if (key == psdfile::BlendKey(3)) return below * above;
        EXPECT_EQ(key, psdfile::blendKeyNormal);
        return above;
    }
    // The red at one pixel.
    float Show() {
        effect::SyncRenderElements(*effect, 0);
        AddGroup();
        float shown = 0.0F;
        const auto& stack = Document().children;
        for (auto base = stack.rbegin(); base != stack.rend();) {
            EXPECT_FALSE((*base)->clipping) << (*base)->name;
            float group = Value(*base);
            auto next = base + 1;
            for (; next != stack.rend() && (*next)->clipping; ++next) {
                if ((*next)->flags == 0) group = Blend((*next)->blendKey, group, Value(*next));
            }
            if ((*base)->flags == 0) shown = Blend((*base)->blendKey, shown, group);
            base = next;
        }
        return shown;
    }
    static float Value(const boost::shared_ptr<psdbuilder::PSDBuilderLayerGeneric>& node) {
        const auto& layer = dynamic_cast<const psdbuilder::PSDBuilderRGBLayer&>(*node);
        EXPECT_EQ(SampleOf(layer.alpha), 65535);
        EXPECT_FALSE(layer.mask);
        return static_cast<float>(SampleOf(layer.red)) / 65535.0F;
    }

    std::map<std::string, float> values;
};

TEST_F(Shown, OfRawLightAndColourIsTheLitSurface) {
    AddPass(PassKind::DiffuseColor, 0.5F);
    AddPass(PassKind::DiffuseIndirect, 0.1F);
    AddPass(PassKind::DiffuseDirect, 0.3F);
    EXPECT_NEAR(Show(), (0.3F + 0.1F) * 0.5F, 1e-4F);
}

TEST_F(Shown, OfAllPassesOfAPictureIsThePicture) {
    AddPass(PassKind::DiffuseDirect, 0.3F);
    AddPass(PassKind::DiffuseIndirect, 0.1F);
    AddPass(PassKind::DiffuseColor, 0.5F);
    AddPass(PassKind::GlossyDirect, 0.2F);
    AddPass(PassKind::GlossyIndirect, 0.15F);
    AddPass(PassKind::GlossyColor, 0.8F);
    AddPass(PassKind::TransmissionDirect, 0.05F);
    AddPass(PassKind::TransmissionIndirect, 0.25F);
    AddPass(PassKind::TransmissionColor, 0.2F);
    AddPass(PassKind::VolumeDirect, 0.01F);
    AddPass(PassKind::VolumeIndirect, 0.02F);
    AddPass(PassKind::Emission, 0.07F);
    AddPass(PassKind::Background, 0.04F);
    // What repeats the picture, and numbers, change nothing.
    for (const PassKind kind :
         {PassKind::LightGroup, PassKind::AmbientOcclusion, PassKind::Shadow,
          PassKind::ShadowCatcher, PassKind::Albedo, PassKind::Normal, PassKind::Position,
          PassKind::Mist, PassKind::Motion, PassKind::ObjectID, PassKind::MaterialID,
          PassKind::TextureCoordinates, PassKind::DenoisingData, PassKind::SampleCount,
          PassKind::Depth, PassKind::Alpha, PassKind::OtherColor, PassKind::OtherData}) {
        AddPass(kind, 0.6F);
    }
    EXPECT_NEAR(Show(),
                0.5F * (0.3F + 0.1F) + 0.8F * (0.2F + 0.15F) + 0.2F * (0.05F + 0.25F) + 0.01F +
                    0.02F + 0.07F + 0.04F,
                1e-3F);
    EXPECT_EQ(Channels().size(), 2U) << "depth and alpha";
}

TEST_F(Shown, OfLightIsItsSumOverTheBackground) {
    AddPass(PassKind::Background, 0.1F);
    AddPass(PassKind::Diffuse, 0.2F);
    AddPass(PassKind::Specular, 0.15F);
    AddPass(PassKind::Subsurface, 0.05F);
    EXPECT_NEAR(Show(), 0.5F, 1e-4F);
}

TEST_F(Shown, OfVRaysRawLightIsTheLitSurface) {
    const auto add = [](Class_ID id, float value) {
        Elements()
            .Add(id, _M("V-Ray's"))
            .SetBitmap(Filled(Sample(value), Sample(value), Sample(value)));
    };
    add({0x36315e91, 0x50e55dbd}, 0.5F);   // the surface's colour
    add({0x483d1647, 0x18b2086}, 0.1F);    // indirect light
    add({0x73a90d68, 0x62245636}, 0.3F);   // direct light
    add({0x2d304e42, 0x19d838a4}, 0.04F);  // background
    EXPECT_NEAR(Show(), (0.3F + 0.1F) * 0.5F + 0.04F, 1e-4F);
}

// ---- Through the effect ----

TEST_F(RenderElements, ComeIntoTheDocumentOfAFrame) {
    Elements().Add(PassClassID(PassKind::Emission), _M("Emit")).SetBitmap(Image(width, height));
    SetFilename(File("frame.psd"));
    RenderFrame(image.get());
    const std::string bytes = FileBytes(File("frame.psd"));
    EXPECT_NE(bytes.find("lddg"), std::string::npos);
    EXPECT_NE(bytes.find("Emit"), std::string::npos);
    EXPECT_EQ(effect->LayerCount(0), 1);
}

TEST_F(VRayRenderElements, ComeIntoTheDocumentOfAFrame) {
    Render().saveFile = TRUE;
    Render().width = width;
    Render().height = height;
    IParamBlock2* settings = Host().renderer->GetParamBlock(host::VRAY_BLOCK);
    settings->SetValue(host::VRAY_MEMORY_FRAME_BUFFER, 0, 1);
    settings->SetValue(host::VRAY_SIZE_FROM_HOST, 0, 1);
    Elements().Add(specular, _M("VRaySpecular"));
    SetFilename(File("frame.psd"));
    RenderFrame(image.get());
    const std::string bytes = FileBytes(File("frame.psd"));
    EXPECT_NE(bytes.find("VRaySpecular"), std::string::npos);
    EXPECT_NE(bytes.find("wood"), std::string::npos) << "an extra channel";
    EXPECT_EQ(effect->LayerCount(0), 1);
}

}  // namespace

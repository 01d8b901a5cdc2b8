#include "effect/vray_channels.h"

#include <elementclasses.h>
#include <vrayelements.h>

#include <utility>

#include "tests/effect/element_frame.h"
#include "tests/effect/vray_frame.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr Class_ID specular{0x28820859, 0x490f6dad};
constexpr Class_ID depth{0x19641992, 0x3fe7073a};
constexpr Class_ID extraTex{0x2e056b03, 0x318604b3};

// Every class of V-Ray's and the alias of its channel.
constexpr struct {
    Class_ID id;
    int alias;
} aliases[] = {
    {{0x11e87638, 0x029e3355}, 100},  {{0x36315e91, 0x50e55dbd}, 101},
    {{0x55573ae5, 0x4b350b0a}, 102},  {{0x05a90571, 0x53c608af}, 103},
    {{0x17786a94, 0x21d87e76}, 104},  {{0x7e697a63, 0x36e83aaf}, 105},
    {{0x28820859, 0x490f6dad}, 106},  {{0x64c808e0, 0x605d7246}, 107},
    {{0x07497eec, 0x51ea5d6b}, 108},  {{0x3d462e09, 0x7f3e1bd1}, 109},
    {{0x483d1647, 0x018b2086}, 110},  {{0x73a90d68, 0x62245636}, 111},
    {{0x2be23135, 0x790b1389}, 112},  {{0x7e99293c, 0x0a9013c7}, 113},
    {{0x19f604e2, 0x0095204f}, 114},  {{0x2fbc1433, 0x275c59e3}, 115},
    {{0x24156286, 0x78f3335d}, 116},  {{0x19641992, 0x3fe7073a}, 117},
    {{0x642a347b, 0x21ab1de6}, 118},  {{0x285a3515, 0x297156a5}, 119},
    {{0x244426f5, 0x15b873db}, 120},  {{0x76fa13f0, 0x07b03a79}, 121},
    {{0x3d13611e, 0x0cfa0263}, 122},  {{0x3f1322d1, 0x0212008f}, 123},
    {{0x2d304e42, 0x19d838a4}, 124},  {{0x58a32517, 0x70d06c58}, 125},
    {{0x175b6083, 0x54320c25}, 127},  {{0x4a025922, 0x05ec7c41}, 128},
    {{0x3a84693e, 0x4d9266bf}, 129},  {{0x3fa83453, 0x1b9032cb}, 130},
    {{0x1c2427eb, 0x1eed6252}, 131},  {{0x3e08269a, 0x0cd515c3}, 132},
    {{0x627e5ae7, 0x6cc059e7}, 133},  {{0x28b2b281, 0x981cbcb1}, 134},
    {{0x3a613e17, 0x26a415dc}, 135},  {{0x321f5dc2, 0x23a578c1}, 136},
    {{0x449c43a8, 0x0caa5525}, 140},  {{0x5e6d3ea2, 0x72910e89}, 142},
    {{0x3af5439f, 0x1fe32dbe}, 144},  {{0x963a9436, 0x30d57a4a}, 1000},
    {{0x6d5c764b, 0x084f18fd}, 1000}, {{0x651a2649, 0x32332f01}, 1000},
    {{0x674e38df, 0x797b7c2d}, 1000}, {{0x2e056b03, 0x318604b3}, 1000},
    {{0x05762738, 0x23b06ec0}, 1000},
};

class VRayChannels : public ElementFrameTest {
  protected:
    VRayChannels() { UseVRay(); }

    host::RenderElement& Add(Class_ID id, const std::string& name) {
        return Elements().Add(id, host::FromUtf8(name));
    }
    void AddChannel(int alias, const std::string& name) {
        AddVRayChannel(alias, name, Image(width, height));
    }
    effect::VRayChannels Find() { return effect::FindVRayChannels(*vfb, &Elements()); }
    std::vector<std::string> Extra() {
        const effect::VRayChannels channels = Find();
        effect::AddExtraChannels(builder, VRayFrame(), channels);
        return Channels();
    }
};

TEST_F(VRayChannels, AreListedInTheDebugOutput) {
    AddVRayChannel(117, "VRayZDepth", Image(width, height), RDCT_FLOAT);
    AddVRayChannel(113, "VRayVelocity", Image(width, height), RDCT_3FLOAT_SIGNED);
    AddVRayChannel(116, "Objekte \xc3\xa4", Image(width, height), RDCT_INT);
    AddVRayChannel(1200, "uv", Image(width, height), RDCT_2FLOAT);
    AddVRayChannel(1201, "last", Image(width, height), RDCT_LAST);
    Find();
    EXPECT_THAT(printed,
                ElementsAre("VRay PixelBuffer: Channels=7 Width=3: Height=2\n",
                            "ChannelInfo: Index=0 Alias=126 Type=RDCT_3FLOAT Name=RGB color\n",
                            "ChannelInfo: Index=1 Alias=125 Type=RDCT_3FLOAT Name=Alpha\n",
                            "ChannelInfo: Index=2 Alias=117 Type=RDCT_FLOAT Name=VRayZDepth\n",
                            "ChannelInfo: Index=3 Alias=113 Type=RDCT_3FLOAT_SIGNED "
                            "Name=VRayVelocity\n",
                            "ChannelInfo: Index=4 Alias=116 Type=RDCT_INT Name=Objekte \xc3\xa4\n",
                            "ChannelInfo: Index=5 Alias=1200 Type=RDCT_2FLOAT Name=uv\n",
                            "ChannelInfo: Index=6 Alias=1201 Type=RDCT_LAST Name=last\n"));
}

TEST_F(VRayChannels, AreFoundByClass) {
    AddChannel(117, "VRayZDepth");
    AddChannel(106, "VRaySpecular");
    const auto& first = Add(specular, "VRaySpecular");
    const auto& second = Add(depth, "VRayZDepth");
    const effect::VRayChannels found = Find();
    EXPECT_EQ(found.IndexOf(&first), 3);
    EXPECT_EQ(found.IndexOf(&second), 2);
    EXPECT_EQ(found.largest, 3);
    EXPECT_EQ(found.indices.size(), 2U);
}

TEST_F(VRayChannels, OfEveryClassOfVRayAreFound) {
    std::vector<std::pair<const host::RenderElement*, int>> expected;
    for (const auto& [id, alias] : aliases) {
        const std::string name = "channel " + std::to_string(vfb->GetNumChannels());
        AddChannel(99, name);
        AddChannel(alias, name);
        const int index = id == VRAY_ALPHA_ELEMENT ? 1 : vfb->GetNumChannels() - 1;
        expected.emplace_back(&Add(id, name), index);
        // A denoiser has a channel only if it is told to make one.
        Elements()
            .GetRenderElement(Elements().NumRenderElements() - 1)
            ->SetParameter(host::VRAY_DENOISER_MODE, 2);
    }
    const effect::VRayChannels found = Find();
    for (const auto& [element, index] : expected)
        EXPECT_EQ(found.IndexOf(element), index) << host::ToUtf8(MSTR(element->ElementName()));
}

TEST_F(VRayChannels, OfOneClassAreToldApartByName) {
    AddChannel(117, "near");
    AddChannel(117, "far");
    const auto& second = Add(depth, "far");
    const auto& first = Add(depth, "near");
    const auto& renamed = Add(depth, "middle");
    const effect::VRayChannels found = Find();
    EXPECT_EQ(found.IndexOf(&second), 3);
    EXPECT_EQ(found.IndexOf(&first), 2);
    EXPECT_EQ(found.IndexOf(&renamed), 2) << "the class's first";
}

TEST_F(VRayChannels, OfTheRightNameAndAnotherClassArePassedOver) {
    AddChannel(106, "depth");
    AddChannel(117, "VRayZDepth");
    const auto& element = Add(depth, "depth");
    EXPECT_EQ(Find().IndexOf(&element), 3);
}

TEST_F(VRayChannels, OfTheAlphaElementAreLookedUpByAlias) {
    const auto& element = Add(VRAY_ALPHA_ELEMENT, "another name");
    EXPECT_EQ(Find().IndexOf(&element), 1);
}

TEST_F(VRayChannels, WithoutAClassOfTheirOwnAreFoundByName) {
    AddChannel(1000, "wood");
    AddChannel(1000, "stone \xe2\x82\xac");
    AddChannel(1017, "foreign");
    const auto& stone = Add(extraTex, "stone \xe2\x82\xac");
    const auto& missing = Add(extraTex, "Wood");
    const auto& foreign = Add(unknownElement, "foreign");
    const effect::VRayChannels found = Find();
    EXPECT_EQ(found.IndexOf(&stone), 3);
    EXPECT_EQ(found.IndexOf(&missing), -1) << "names are told apart by case";
    EXPECT_EQ(found.IndexOf(&foreign), 4);
}

TEST_F(VRayChannels, OfAnotherClassAreNotFoundByName) {
    AddChannel(106, "wood");
    const auto& element = Add(extraTex, "wood");
    EXPECT_EQ(Find().IndexOf(&element), -1);
    AddChannel(1000, "wood");
    EXPECT_EQ(Find().IndexOf(&element), 3);
}

TEST_F(VRayChannels, ThatAreMissingAreToldInTheDebugOutput) {
    const auto& element = Add(specular, "VRaySpecular");
    const effect::VRayChannels found = Find();
    EXPECT_EQ(found.IndexOf(&element), -1);
    EXPECT_TRUE(found.indices.empty());
    EXPECT_EQ(printed.back(),
              "Error: Could not find VRay channel corresponding to render element VRaySpecular.");
}

TEST_F(VRayChannels, OfElementsThatHaveNoneAreNotMissed) {
    AddChannel(144, "VRayDenoiser");
    Add(VRAY_OPTIONS_ELEMENT, "RGB color");
    auto& denoiser = Add(VRAY_DENOISER_ELEMENT, "VRayDenoiser");
    for (const int mode : {0, 1}) {
        denoiser.SetParameter(host::VRAY_DENOISER_MODE, mode);
        EXPECT_TRUE(Find().indices.empty()) << mode;
        EXPECT_EQ(printed.back(),
                  "ChannelInfo: Index=2 Alias=144 Type=RDCT_3FLOAT Name=VRayDenoiser\n");
    }
    denoiser.SetParameter(host::VRAY_DENOISER_MODE, 2);
    EXPECT_EQ(Find().IndexOf(&denoiser), 2);
}

TEST_F(VRayChannels, OfNoElementsAreNone) {
    const effect::VRayChannels found = effect::FindVRayChannels(*vfb, nullptr);
    EXPECT_TRUE(found.indices.empty());
    EXPECT_EQ(found.largest, -1);
}

TEST_F(VRayChannels, ThatAreExtraStandInASetAndAreChannels) {
    AddChannel(200, "first");
    AddChannel(201, "second");
    EXPECT_THAT(Extra(), ElementsAre("second", "first")) << "from the last down";
    EXPECT_EQ(Tree(), "Extra()");
    const auto& set = *Document().children[0];
    EXPECT_EQ(set.unicodeName, u"Extra");
    EXPECT_EQ(set.blendKey, psdfile::blendKeyPassThrough);
    EXPECT_EQ(set.flags, 0);
    EXPECT_FALSE(dynamic_cast<const psdbuilder::PSDBuilderLayerSet&>(set).open);
    EXPECT_EQ(SampleOf(Document().channels[0].source), (ImageAt(0) + ImageAt(1) + ImageAt(2)) / 3);
    EXPECT_TRUE(builder.stack.empty()) << "the set is closed again";
}

TEST_F(VRayChannels, ThatAreExtraStandBehindThoseOfElements) {
    AddChannel(200, "before");
    AddChannel(106, "VRaySpecular");
    AddChannel(201, "behind");
    Add(specular, "VRaySpecular");
    EXPECT_THAT(Extra(), ElementsAre("behind"));
}

TEST_F(VRayChannels, ThatAreExtraNeedMoreThanThePictureAndItsAlpha) {
    EXPECT_THAT(Extra(), IsEmpty());
    EXPECT_EQ(Tree(), "");
    const auto& picture = Add(unknownElement, "RGB color");
    ASSERT_EQ(Find().IndexOf(&picture), 0);
    EXPECT_THAT(Extra(), IsEmpty()) << "nor is the alpha behind an element's channel";
    vfb->BeginFrame(width, height);
    EXPECT_THAT(Extra(), IsEmpty());
}

TEST_F(VRayChannels, OfTheRendererItselfAreNeverExtra) {
    AddChannel(1001, "own");
    EXPECT_THAT(Extra(), IsEmpty());
    EXPECT_EQ(Tree(), "") << "no set without a channel";
    AddChannel(1000, "extra");
    EXPECT_THAT(Extra(), ElementsAre("extra"));
}

TEST_F(VRayChannels, OfTheDenoiserAreExtraWhereTheUserWants) {
    const std::vector<std::string> names = {
        "refraction",   "specular",       "reflection",       "globalIllumination", "lighting",
        "background",   "atmosphere",     "refractionFilter", "reflectionFilter",   "diffuseFilter",
        "worldNormals", "worldPositions", "defocusAmount",    "noiseLevel"};
    for (const std::string& name : names)
        AddChannel(500, name);
    EXPECT_THAT(Extra(), IsEmpty());
    EXPECT_EQ(Tree(), "");
    AddChannel(500, "WorldNormals");
    EXPECT_THAT(Extra(), ElementsAre("WorldNormals"));
    Set("saveDenoiserExtraChannels"_param, TRUE);
    Document().channels.clear();
    std::vector<std::string> all(names.rbegin(), names.rend());
    all.insert(all.begin(), "WorldNormals");
    EXPECT_EQ(Extra(), all);
}

TEST_F(VRayChannels, ThatAreExtraAreCorrectedWithAllElementsOnly) {
    gammaMgr.enable = TRUE;
    gammaMgr.SetFileOutGamma(2.2F);
    colors.gammaToElements = true;
    AddVRayChannel(200, "extra", Filled(9000, 9000, 9000));
    for (const int config : {1, 2}) {
        Set("gammaCorrectConfig"_param, config);
        Document().channels.clear();
        Extra();
        EXPECT_EQ(SampleOf(Document().channels[0].source),
                  config == 2 ? gammaMgr.fileOutGammaTable[9000 >> 3] : 9000);
    }
}

TEST_F(VRayChannels, ThatAreExtraTakeVRaysCorrectionsWithAllElementsOnly) {
    AddChannel(200, "extra");
    CorrectingFrame correcting(*vfb);
    colors.ccToElements = true;
    for (const int config : {1, 2}) {
        Set("colorCorrectConfig"_param, config);
        Document().channels.clear();
        effect::AddExtraChannels(
            builder, FrameOf(effect::PSDFrameSources{image.get(), &correcting}), Find());
        EXPECT_EQ(SampleOf(Document().channels.at(0).source), config == 2 ? 65535 : 0);
    }
}

}  // namespace

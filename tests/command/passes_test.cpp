#include "command/passes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include <vrayelements.h>

#include "command/beauty.h"
#include "tests/command/descriptions.h"

namespace command {
namespace {

using descriptions::Channels;
using descriptions::Joined;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto half = SampleType::Half;

PassPlan Plan(const Description& file, const std::string& beauty = {},
              const PassOptions& options = {}) {
    return PlanPasses(file, ChooseBeauty(file, beauty), options);
}

Description File(const std::vector<std::string>& channels) {
    return descriptions::File({.channels = Channels(channels)});
}

std::string ChannelText(const Description& file, const std::optional<ChannelRef>& ref) {
    return ref ? descriptions::NameOf(file, *ref) : "-";
}

// "NAME: red green blue alpha, KIND".
std::vector<std::string> ElementsOf(const Description& file, const PassPlan& plan) {
    std::vector<std::string> texts;
    for (const PassElement& each : plan.elements) {
        texts.push_back(
            each.name + ": " + ChannelText(file, each.channels.red) + " " +
            ChannelText(file, each.channels.green) + " " + ChannelText(file, each.channels.blue) +
            " " + ChannelText(file, each.channels.alpha) + ", " + std::string(NameOf(each.kind)));
    }
    return texts;
}

std::vector<std::string> NamesOf(const PassPlan& plan) {
    std::vector<std::string> names;
    for (const PassElement& each : plan.elements)
        names.push_back(each.name);
    return names;
}

TEST(Passes, EveryOtherLayerThanThePictureIsAnElement) {
    const Description file = File({"V.Combined.A", "V.Combined.B", "V.Combined.G", "V.Combined.R",
                                   "V.DiffCol.B", "V.DiffCol.G", "V.DiffCol.R", "V.DiffInd.B",
                                   "V.DiffInd.G", "V.DiffInd.R", "V.Mist.Z"});
    const PassPlan plan = Plan(file);
    EXPECT_EQ(plan.renderer, Renderer::Cycles);
    EXPECT_EQ(plan.beautyPlace, (LayerPlace{"V", "Combined", ""}));
    EXPECT_THAT(ElementsOf(file, plan),
                ElementsAre("DiffCol: V.DiffCol.R V.DiffCol.G V.DiffCol.B -, diffuse colour",
                            "DiffInd: V.DiffInd.R V.DiffInd.G V.DiffInd.B -, indirect diffuse "
                            "light without colour",
                            "Mist: V.Mist.Z - - -, mist"));
    EXPECT_EQ(plan.elements[0].classID, PassClassID(PassKind::DiffuseColor));
    EXPECT_EQ(plan.elements[0].layer, 1U);
    EXPECT_FALSE(plan.elements[0].isData);
    EXPECT_TRUE(plan.elements[2].isData);
    EXPECT_THAT(plan.becomes,
                ElementsAre("the picture", "render element \"DiffCol\" (diffuse colour)",
                            "render element \"DiffInd\" (indirect diffuse light without colour)",
                            "render element \"Mist\" (mist)"));
    EXPECT_THAT(plan.warnings, IsEmpty());
    EXPECT_THAT(plan.unknown, IsEmpty());
}

TEST(Passes, VectorsGoIntoTheColoursInTheirOrder) {
    const Description file = File({"V.Combined.B", "V.Combined.G", "V.Combined.R", "V.Normal.X",
                                   "V.Normal.Y", "V.Normal.Z", "V.UV.A", "V.UV.U", "V.UV.V"});
    EXPECT_THAT(ElementsOf(file, Plan(file)),
                ElementsAre("Normal: V.Normal.X V.Normal.Y V.Normal.Z -, normals",
                            "UV: V.UV.U V.UV.V - V.UV.A, texture coordinates"));
    EXPECT_THAT(Plan(file).warnings, IsEmpty());
}

TEST(Passes, TwoMotionsInOneLayerAreTwoElements) {
    const Description file = File({"V.Combined.B", "V.Combined.G", "V.Combined.R", "V.Vector.W",
                                   "V.Vector.X", "V.Vector.Y", "V.Vector.Z"});
    EXPECT_THAT(ElementsOf(file, Plan(file)),
                ElementsAre("Vector: V.Vector.X V.Vector.Y - -, motion",
                            "Vector ZW: V.Vector.Z V.Vector.W - -, motion"));
    EXPECT_EQ(Plan(file).becomes[1],
              "render element \"Vector\" (motion) and render element \"Vector ZW\" (motion)");
}

TEST(Passes, OtherViewLayersAndViewsAreInSets) {
    const Description file =
        File({"Back.Combined.right.R", "Back.DiffDir.left.R", "Composite.Combined.left.R",
              "Composite.Combined.left.G", "Composite.Combined.left.B", "Front.Combined.left.R",
              "Front.Combined.left.G", "Front.Combined.left.B", "Front.DiffDir.left.R",
              "Front.DiffDir.right.R"});
    const PassPlan plan = Plan(file);
    EXPECT_EQ(plan.beautyPlace, (LayerPlace{"Front", "Combined", "left"}));
    EXPECT_THAT(NamesOf(plan), ElementsAre("Back/right/Combined", "Back/DiffDir",
                                           "Composite/Combined", "DiffDir", "right/DiffDir"));
    EXPECT_EQ(plan.elements[2].classID, BEAUTY_ELEMENT);
    EXPECT_EQ(plan.becomes[2], "render element \"Composite/Combined\" (picture)");
}

TEST(Passes, OtherViewsCanBeLeftOut) {
    const Description file = File({"Back.DiffDir.R", "Back.DiffDir.G", "Back.DiffDir.B",
                                   "Front.Combined.R", "Front.Combined.G", "Front.Combined.B",
                                   "Front.DiffDir.R", "Front.DiffDir.G", "Front.DiffDir.B"});
    const PassPlan plan = Plan(file, {}, {.otherViews = false});
    EXPECT_THAT(NamesOf(plan), ElementsAre("DiffDir"));
    EXPECT_EQ(plan.becomes[0], "nothing: it is of another view");
}

TEST(Passes, FollowThePictureThatTheUserChose) {
    const Description file =
        File({"Back.Combined.R", "Back.Combined.G", "Back.Combined.B", "Back.DiffDir.R",
              "Front.Combined.R", "Front.Combined.G", "Front.Combined.B"});
    EXPECT_THAT(NamesOf(Plan(file, "Front.Combined")),
                ElementsAre("Back/Combined", "Back/DiffDir"));
    EXPECT_THAT(NamesOf(Plan(file, "Back.Combined")), ElementsAre("DiffDir", "Front/Combined"));
}

TEST(Passes, PartsAreViewsToo) {
    const Description file =
        descriptions::File({{.channels = Channels({"R", "G", "B", "diffuse.R"}), .name = "left"},
                            {.channels = Channels({"R", "G", "B", "diffuse.R"}), .name = "right"}});
    EXPECT_THAT(NamesOf(Plan(file)), ElementsAre("left/diffuse", "right", "right/diffuse"));
}

TEST(Passes, CryptomattesAndTheirPicturesAreNoElements) {
    const Description file = File({"R", "G", "B", "crypto_material00.R", "crypto_material00.G",
                                   "crypto_object.R", "crypto_object00.R", "crypto_object00.G",
                                   "crypto_asset00.R", "crypto_asset00.G", "crypto_hair.R"});
    const PassPlan plan = Plan(file);
    EXPECT_THAT(plan.elements, IsEmpty());
    ASSERT_EQ(plan.cryptomattes.size(), 3U);
    EXPECT_EQ(plan.materialMatte, 0U);
    EXPECT_EQ(plan.objectMatte, 1U);
    EXPECT_THAT(plan.becomes,
                ElementsAre("the picture", "mattes of Cryptomatte, material",
                            "nothing: a picture of its mattes", "mattes of Cryptomatte, object",
                            "nothing: mattes of Cryptomatte, asset",
                            "nothing: a picture of mattes that aren't in the file"));
}

TEST(Passes, MattesAreOfThePicturesOwnView) {
    const Description file =
        File({"Back.Combined.R", "Back.Combined.G", "Back.Combined.B", "Back.CryptoObject00.R",
              "Back.CryptoObject00.G", "Front.CryptoObject00.R", "Front.CryptoObject00.G"});
    const PassPlan plan = Plan(file);
    EXPECT_EQ(plan.objectMatte, 0U);
    EXPECT_EQ(plan.becomes[2], "nothing: mattes of Cryptomatte, object, of another view");
}

TEST(Passes, MattesThatCanNotBeUsedAreNotChosen) {
    const Description file = descriptions::File(
        {.channels = Joined(Channels({"R", "G", "B"}),
                            Channels({"crypto_object00.R", "crypto_object00.G"}, half))});
    const PassPlan plan = Plan(file);
    EXPECT_EQ(plan.objectMatte, std::nullopt);
    EXPECT_THAT(plan.elements, IsEmpty());
    EXPECT_EQ(plan.becomes[1], "nothing: no mattes can come of it");
    EXPECT_EQ(plan.warnings.size(), 1U);
}

TEST(Passes, IdsDepthAndNormalsGoToTheFragmentsToo) {
    const Description file =
        File({"V.Combined.B", "V.Combined.G", "V.Combined.R", "V.Depth.Z", "V.IndexMA.X",
              "V.IndexOB.X", "V.Normal.X", "V.Normal.Y", "V.Normal.Z"});
    const PassPlan plan = Plan(file);
    ASSERT_TRUE(plan.depth && plan.objectID && plan.materialID && plan.normals);
    EXPECT_EQ(ChannelText(file, plan.depth->channel), "V.Depth.Z");
    EXPECT_TRUE(plan.depth->isDistance);
    EXPECT_EQ(ChannelText(file, plan.objectID->channel), "V.IndexOB.X");
    EXPECT_EQ(ChannelText(file, plan.materialID->channel), "V.IndexMA.X");
    EXPECT_EQ(ChannelText(file, plan.normals->z), "V.Normal.Z");
    EXPECT_EQ(plan.normals->space, PassDetail::WorldSpace);
    EXPECT_THAT(NamesOf(plan), ElementsAre("Depth", "IndexMA", "IndexOB", "Normal"));
    EXPECT_EQ(plan.becomes[1], "render element \"Depth\" (depth), and the depth of the mattes");
    EXPECT_EQ(plan.becomes[3],
              "render element \"IndexOB\" (object IDs), and the object IDs of the mattes");
}

TEST(Passes, FragmentsTakeNothingOfOtherViews) {
    const Description file = File({"Back.Depth.Z", "Back.IndexOB.X", "Front.Combined.B",
                                   "Front.Combined.G", "Front.Combined.R"});
    const PassPlan plan = Plan(file);
    EXPECT_FALSE(plan.depth || plan.objectID);
    EXPECT_THAT(NamesOf(plan), ElementsAre("Back/Depth", "Back/IndexOB"));
}

TEST(Passes, IntegersGoBeforeFloatsAndColoursAreNoIds) {
    const Description file = descriptions::File(
        {.channels = Joined(
             Joined(Channels({"R", "G", "B", "ID"}),
                    Channels({"VRayMtlID.R", "VRayMtlID.G", "VRayMtlID.B"}, SampleType::Half)),
             Channels({"VRayObjectID", "VRayRenderID"}, SampleType::Unsigned32))});
    const PassPlan plan = Plan(file);
    EXPECT_FALSE(plan.materialID.has_value());
    ASSERT_TRUE(plan.objectID.has_value());
    EXPECT_EQ(ChannelText(file, plan.objectID->channel), "VRayObjectID");
}

TEST(Passes, ANumberMayStandInAllColours) {
    const Description file = File({"R", "G", "B", "VRayMtlID.R", "VRayMtlID.G", "VRayMtlID.B"});
    const PassPlan plan = Plan(file);
    ASSERT_TRUE(plan.materialID.has_value());
    EXPECT_EQ(ChannelText(file, plan.materialID->channel), "VRayMtlID.R");
}

TEST(Passes, ADistanceGoesBeforeAMappedDepth) {
    const Description file =
        File({"R", "G", "B", "VRayZDepth.R", "VRayZDepth.G", "VRayZDepth.B", "Z"});
    const PassPlan plan = Plan(file);
    ASSERT_TRUE(plan.depth.has_value());
    EXPECT_EQ(ChannelText(file, plan.depth->channel), "Z");
    EXPECT_TRUE(plan.depth->isDistance);
    EXPECT_THAT(plan.warnings, IsEmpty());
}

TEST(Passes, AMappedDepthIsTakenWithAWarning) {
    const Description file =
        File({"R", "G", "B", "CGeometry_ZDepth.R", "CGeometry_ZDepth.G", "CGeometry_ZDepth.B"});
    const PassPlan plan = Plan(file);
    ASSERT_TRUE(plan.depth.has_value());
    EXPECT_FALSE(plan.depth->isDistance);
    EXPECT_THAT(plan.warnings, ElementsAre("depth \"CGeometry_ZDepth\" was mapped to a range by "
                                           "the renderer; it is no distance"));
}

TEST(Passes, GBufferChannelsOfTheApplication) {
    const Description file = descriptions::File(
        {.channels = Joined(Channels({"A", "B", "G", "NX", "NY", "NZ", "R", "Z", "velX", "velY"}),
                            Channels({"materialID", "objectID"}, SampleType::Unsigned32))});
    const PassPlan plan = Plan(file);
    EXPECT_EQ(plan.renderer, Renderer::Max);
    EXPECT_THAT(ElementsOf(file, plan), ElementsAre("N: NX NY NZ -, normals", "Z: Z - - -, depth",
                                                    "vel: velX velY - -, motion",
                                                    "materialID: materialID - - -, material IDs",
                                                    "objectID: objectID - - -, object IDs"));
    EXPECT_EQ(plan.normals->space, PassDetail::CameraSpace);
    EXPECT_EQ(plan.elements[2].classID, VELOCITY_ELEMENT);
    EXPECT_TRUE(plan.depth && plan.objectID && plan.materialID);
    EXPECT_THAT(plan.unknown, IsEmpty());
}

TEST(Passes, VRaysElementsHaveVRaysClasses) {
    const Description file = File({"R", "G", "B", "VRayReflection.R", "VRayReflection.G",
                                   "VRayReflection.B", "MultiMatteElement1.R"});
    const PassPlan plan = Plan(file);
    EXPECT_EQ(plan.renderer, Renderer::VRay);
    EXPECT_EQ(plan.elements[0].classID, VRAY_ELEMENT_CLASSES[2].id);
    EXPECT_EQ(plan.elements[1].classID, VRAY_MULTI_MATTE_ELEMENT);
}

TEST(Passes, UnknownLayersAreElementsOfColourOrData) {
    const Description file = descriptions::File(
        {.channels = Joined(Channels({"R", "G", "B", "glow.R", "glow.G", "glow.B"}, half),
                            Channels({"mask", "vec.X", "vec.Y", "wide.R", "wide.G", "wide.B"}))});
    const PassPlan plan = Plan(file);
    EXPECT_THAT(ElementsOf(file, plan),
                ElementsAre("glow: glow.R glow.G glow.B -, colour", "mask: mask - - -, data",
                            "vec: vec.X vec.Y - -, data", "wide: wide.R wide.G wide.B -, data"));
    EXPECT_THAT(plan.unknown, ElementsAre("layer \"glow\" is of no known kind; it counts as colour",
                                          "layer \"mask\" is of no known kind; it counts as data",
                                          "layer \"vec\" is of no known kind; it counts as data",
                                          "layer \"wide\" is of no known kind; it counts as data"));
    EXPECT_THAT(plan.warnings, IsEmpty());
}

TEST(Passes, TellOfMissingChannels) {
    const Description file =
        File({"R", "G", "B", "diffuse.G", "diffuse.A", "P.X", "P.Z", "N.X", "N.Y"});
    const PassPlan plan = Plan(file);
    EXPECT_THAT(ElementsOf(file, plan),
                ElementsAre("diffuse: - diffuse.G - diffuse.A, diffuse light",
                            "P: P.X - P.Z -, positions", "N: N.X N.Y - -, normals"));
    EXPECT_THAT(plan.warnings,
                ElementsAre("layer \"diffuse\" has no channel for red and blue; 0 stands there",
                            "layer \"P\" has no channel for Y; 0 stands there"));
    EXPECT_FALSE(plan.normals.has_value());
}

TEST(Passes, ChannelsOfOtherNamesAreElementsOfTheirOwn) {
    const Description file = File(
        {"R", "G", "B", "mix.R", "mix.G", "mix.B", "mix.weight", "mix.Z", "set.one", "set.two"});
    const PassPlan plan = Plan(file);
    EXPECT_THAT(ElementsOf(file, plan),
                ElementsAre("mix: mix.R mix.G mix.B -, colour",
                            "mix weight: mix.weight - - -, data", "mix Z: mix.Z - - -, depth",
                            "set one: set.one - - -, data", "set two: set.two - - -, data"));
    EXPECT_EQ(ChannelText(file, plan.depth->channel), "mix.Z");
}

TEST(Passes, WhatThePictureDoesNotUseOfItsLayerIsAnElement) {
    const Description file = File({"rgba.R", "rgba.G", "rgba.B", "rgba.A", "rgba.Z"});
    const PassPlan plan = Plan(file);
    EXPECT_THAT(ElementsOf(file, plan), ElementsAre("rgba Z: rgba.Z - - -, depth"));
    EXPECT_EQ(plan.becomes[0],
              "the picture and render element \"rgba Z\" (depth), and the depth of the mattes");
}

TEST(Passes, NamesOfElementsAreUnique) {
    const Description file = File({"R", "G", "B", "V.Depth.Z", "V/Depth.Z", "V.Mist\n.Z"});
    EXPECT_THAT(NamesOf(Plan(file)), ElementsAre("V/Depth", "V/Depth (2)", "V/Mist"));
}

TEST(Passes, LeaveOutWhatCanNotBeRead) {
    std::vector<Channel> channels = Channels({"R", "G", "B", "thin.R", "thin.G", "thin.B"});
    channels[4].ySampling = 2;
    const Description file = descriptions::File(
        {{.channels = channels, .name = "flat"},
         {.channels = Channels({"R", "G", "B", "A", "Z"}), .name = "deep", .deep = true}});
    const PassPlan plan = Plan(file);
    EXPECT_THAT(plan.elements, IsEmpty());
    EXPECT_THAT(plan.becomes,
                ElementsAre("the picture", "nothing: it has fewer samples than pixels",
                            "nothing: it is deep", "nothing: it is deep"));
    EXPECT_THAT(plan.warnings,
                ElementsAre("layer \"thin\" has fewer samples than pixels and is left out"));
}

TEST(Passes, ADeepPictureIsReadWithItsIds) {
    const Description file = descriptions::File(
        {.channels = Joined(Channels({"A", "B", "G", "R", "Z", "ZBack"}),
                            Channels({"materialID", "objectID"}, SampleType::Unsigned32)),
         .deep = true});
    const PassPlan plan = Plan(file, "RGBA");
    ASSERT_TRUE(plan.deep.has_value());
    EXPECT_EQ(plan.deep->channels.red, "R");
    EXPECT_EQ(plan.deep->channels.alpha, "A");
    EXPECT_EQ(plan.deep->channels.z, "Z");
    EXPECT_EQ(plan.deep->channels.zBack, "ZBack");
    EXPECT_THAT(plan.deep->channels.ids, ElementsAre("materialID", "objectID"));
    EXPECT_EQ(plan.deep->materialID, 0U);
    EXPECT_EQ(plan.deep->objectID, 1U);
    EXPECT_FALSE(plan.depth.has_value());
    EXPECT_THAT(plan.elements, IsEmpty());
    EXPECT_EQ(plan.becomes[1], "part of the deep picture");
}

TEST(Passes, ADeepPictureNeedsADepth) {
    const Description file =
        descriptions::File({.channels = Channels({"A", "B", "G", "R"}), .deep = true});
    const PassPlan plan = Plan(file, "RGBA");
    EXPECT_FALSE(plan.deep.has_value());
    EXPECT_THAT(
        plan.warnings,
        ElementsAre("layer \"RGBA\" is deep and has no depth channel Z; render it with one or "
                    "flat"));
}

TEST(Passes, OfTheExample) {
    const auto render = OpenRenderFile(VELTRANE_SOURCE_DIR "/examples/still.exr");
    const Description& file = render->GetDescription();
    const PassPlan plan = Plan(file);
    EXPECT_EQ(plan.renderer, Renderer::Cycles);
    EXPECT_THAT(NamesOf(plan), ElementsAre("AO", "Depth", "DiffCol", "DiffDir", "DiffInd", "Emit",
                                           "Env", "GlossCol", "GlossDir", "GlossInd", "Normal",
                                           "Shadow", "TransCol", "TransDir", "TransInd"));
    EXPECT_EQ(plan.cryptomattes.at(plan.objectMatte.value()).name, "ViewLayer.CryptoObject");
    EXPECT_EQ(plan.cryptomattes.at(plan.materialMatte.value()).name, "ViewLayer.CryptoMaterial");
    EXPECT_EQ(ChannelText(file, plan.depth->channel), "ViewLayer.Depth.Z");
    EXPECT_EQ(ChannelText(file, plan.normals->x), "ViewLayer.Normal.X");
    EXPECT_FALSE(plan.objectID || plan.materialID || plan.deep);
    EXPECT_THAT(plan.warnings, IsEmpty());
    EXPECT_THAT(plan.unknown, IsEmpty());
    EXPECT_EQ(plan.becomes.size(), file.layers.size());
    EXPECT_EQ(std::count(plan.becomes.begin(), plan.becomes.end(), ""), 0);
}

}  // namespace
}  // namespace command

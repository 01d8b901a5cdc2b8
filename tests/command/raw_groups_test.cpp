#include "command/raw_groups.h"

#include <gtest/gtest.h>

#include <map>

#include "command/beauty.h"
#include "tests/command/descriptions.h"

namespace command {
namespace {

// The kinds of the passes of a Cycles file, by name.
std::map<std::string, PassKind> KindsOf(const std::vector<std::string>& passes) {
    std::vector<Channel> channels = descriptions::Channels(
        {"ViewLayer.Combined.R", "ViewLayer.Combined.G", "ViewLayer.Combined.B"});
    for (const std::string& pass : passes) {
        channels = descriptions::Joined(
            channels, descriptions::Channels({pass + ".R", pass + ".G", pass + ".B"}));
    }
    const Description file = descriptions::File(descriptions::Part{channels});
    const PassPlan plan = PlanPasses(file, ChooseBeauty(file));
    std::map<std::string, PassKind> kinds;
    for (const PassElement& element : plan.elements) {
        kinds[element.name] = element.kind;
        if (element.name.ends_with("Combined")) continue;
        EXPECT_EQ(element.classID, PassClassID(element.kind)) << element.name;
        EXPECT_NE(plan.becomes[element.layer].find("(" + std::string(NameOf(element.kind)) + ")"),
                  std::string::npos)
            << plan.becomes[element.layer];
    }
    return kinds;
}

using Kinds = std::map<std::string, PassKind>;

TEST(RawGroups, StayAsTheyAreWhenTheyAreWhole) {
    EXPECT_EQ(KindsOf({"ViewLayer.DiffCol", "ViewLayer.DiffDir", "ViewLayer.DiffInd"}),
              (Kinds{{"DiffCol", PassKind::DiffuseColor},
                     {"DiffDir", PassKind::DiffuseDirect},
                     {"DiffInd", PassKind::DiffuseIndirect}}));
}

TEST(RawGroups, OfAColourAloneBecomeAnAlbedo) {
    EXPECT_EQ(KindsOf({"ViewLayer.GlossCol"}), (Kinds{{"GlossCol", PassKind::Albedo}}));
}

TEST(RawGroups, WithoutIndirectLightStandOnTheDirectLight) {
    EXPECT_EQ(KindsOf({"ViewLayer.TransCol", "ViewLayer.TransDir"}),
              (Kinds{{"TransCol", PassKind::TransmissionColor},
                     {"TransDir", PassKind::TransmissionIndirect}}));
}

TEST(RawGroups, WithoutDirectLightStayAsTheyAre) {
    EXPECT_EQ(KindsOf({"ViewLayer.DiffCol", "ViewLayer.DiffInd"}),
              (Kinds{{"DiffCol", PassKind::DiffuseColor}, {"DiffInd", PassKind::DiffuseIndirect}}));
}

TEST(RawGroups, OfLightWithoutItsColourAreColoursThatNothingIsKnownOf) {
    EXPECT_EQ(KindsOf({"ViewLayer.DiffDir", "ViewLayer.DiffInd"}),
              (Kinds{{"DiffDir", PassKind::OtherColor}, {"DiffInd", PassKind::OtherColor}}));
}

TEST(RawGroups, AreThoseOfEachViewLayerByItself) {
    EXPECT_EQ(KindsOf({"ViewLayer.DiffCol", "ViewLayer.DiffDir", "ViewLayer.DiffInd",
                       "Back.Combined", "Back.DiffCol"}),
              (Kinds{{"DiffCol", PassKind::DiffuseColor},
                     {"DiffDir", PassKind::DiffuseDirect},
                     {"DiffInd", PassKind::DiffuseIndirect},
                     {"Back/Combined", PassKind::OtherColor},
                     {"Back/DiffCol", PassKind::Albedo}}));
}

std::vector<std::string> DoublesOf(const std::vector<std::string>& names) {
    std::vector<Channel> channels = descriptions::Channels({"R", "G", "B"});
    for (const std::string& name : names) {
        channels = descriptions::Joined(
            channels, descriptions::Channels({name + ".R", name + ".G", name + ".B"}));
    }
    const Description file = descriptions::File(descriptions::Part{channels});
    std::vector<std::string> doubles;
    for (const PassElement& element : PlanPasses(file, ChooseBeauty(file)).elements) {
        if (element.isDouble) doubles.push_back(element.name);
    }
    return doubles;
}

TEST(RawGroups, OfVRayAreDoublesWhereTheFinishedLightIsThereToo) {
    EXPECT_EQ(DoublesOf({"VRayLighting", "VRayGlobalIllumination", "VRayRawLighting",
                         "VRayRawGlobalIllumination", "VRayDiffuseFilter", "VRayReflection"}),
              (std::vector<std::string>{"VRayRawLighting", "VRayRawGlobalIllumination",
                                        "VRayDiffuseFilter"}));
}

TEST(RawGroups, OfVRayAreNoDoublesWithoutAllOfTheFinishedLight) {
    EXPECT_EQ(DoublesOf({"VRayLighting", "VRayRawLighting", "VRayRawGlobalIllumination",
                         "VRayDiffuseFilter"}),
              std::vector<std::string>());
}

}  // namespace
}  // namespace command

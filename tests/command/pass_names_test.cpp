#include "command/pass_names.h"

#include <gtest/gtest.h>

#include <vrayelements.h>

#include "tests/command/descriptions.h"

namespace command {
namespace {

using descriptions::Channels;

Renderer RendererOfChannels(const std::vector<std::string>& channels) {
    return RendererOf(descriptions::File({.channels = Channels(channels)}));
}

std::optional<PassKind> KindOf(Renderer renderer, std::string_view pass) {
    const std::optional<PassMeaning> meaning = FindPass(renderer, pass);
    return meaning ? std::optional(meaning->kind) : std::nullopt;
}

TEST(RendererOf, ReadsTheNamesOfLayers) {
    EXPECT_EQ(RendererOfChannels({"R", "VRayReflection.R"}), Renderer::VRay);
    EXPECT_EQ(RendererOfChannels({"R", "CESSENTIAL_Direct.R"}), Renderer::Corona);
    EXPECT_EQ(RendererOfChannels({"ViewLayer.DiffCol.R"}), Renderer::Cycles);
    EXPECT_EQ(RendererOfChannels({"View Layer.Diffuse Direct.R"}), Renderer::Cycles);
    EXPECT_EQ(RendererOfChannels({"R", "diffuse_direct.R"}), Renderer::Arnold);
    EXPECT_EQ(RendererOfChannels({"R", "rawGI.R"}), Renderer::VRay);
    EXPECT_EQ(RendererOfChannels({"R", "Z", "objectID"}), Renderer::Max);
    EXPECT_EQ(RendererOfChannels({"R", "velX", "velY"}), Renderer::Max);
    EXPECT_EQ(RendererOfChannels({"R", "Z"}), Renderer::Any);
}

TEST(RendererOf, ReadsAttributes) {
    const auto of = [](const std::string& name, const std::string& text) {
        return RendererOf(
            descriptions::File({.channels = Channels({"R"}), .attributes = {{name, text}}}));
    };
    EXPECT_EQ(of("BlenderMultiChannel", "Blender V2.55.1 and newer"), Renderer::Cycles);
    EXPECT_EQ(of("cycles.ViewLayer.samples", "32"), Renderer::Cycles);
    EXPECT_EQ(of("Software", "Arnold 7.2"), Renderer::Arnold);
    EXPECT_EQ(of("arnold/version", "7.2"), Renderer::Arnold);
    EXPECT_EQ(of("vrayInfo/camera", "Camera01"), Renderer::VRay);
    EXPECT_EQ(of("cameraFov", "0.7"), Renderer::VRay);
    EXPECT_EQ(of("Comment", "better than Arnold"), Renderer::Any);
}

TEST(RendererOf, TheNamesOfVRaysElementsGoBeforeTheApplication) {
    EXPECT_EQ(RendererOf(descriptions::File(
                  {.channels = Channels({"V.VRayReflection.R"}),
                   .attributes = {{"BlenderMultiChannel", std::string("Blender")}}})),
              Renderer::VRay);
}

TEST(PassNames, KnowEveryElementOfVRay) {
    for (const VRayElementClass& each : VRAY_ELEMENT_CLASSES) {
        const std::string_view name = each.name;
        if (name.empty()) continue;
        const std::optional<PassMeaning> meaning = FindPass(Renderer::VRay, name);
        ASSERT_TRUE(meaning.has_value()) << name;
        EXPECT_EQ(meaning->classID, each.id) << name;
    }
}

TEST(PassNames, VRaysNamesInMayaAreOfTheSameClasses) {
    struct Pair {
        const char* maya;
        const char* max;
    };
    for (const Pair& each :
         {Pair{"GI", "VRayGlobalIllumination"}, Pair{"reflect", "VRayReflection"},
          Pair{"normals", "VRayNormals"}, Pair{"rawLight", "VRayRawLighting"},
          Pair{"diffuse", "VRayDiffuseFilter"}, Pair{"zDepth", "VRayZDepth"}}) {
        EXPECT_EQ(FindPass(Renderer::VRay, each.maya)->classID,
                  FindPass(Renderer::VRay, each.max)->classID)
            << each.maya;
    }
}

TEST(PassNames, KnowCyclesUnderOldAndNewNames) {
    struct NamedPass {
        const char* shortName;
        const char* longName;
        PassKind kind;
    };
    for (const NamedPass& row : {
             NamedPass{"DiffCol", "Diffuse Color", PassKind::DiffuseColor},
             NamedPass{"DiffDir", "Diffuse Direct", PassKind::DiffuseDirect},
             NamedPass{"DiffInd", "Diffuse Indirect", PassKind::DiffuseIndirect},
             NamedPass{"GlossCol", "Glossy Color", PassKind::GlossyColor},
             NamedPass{"TransInd", "Transmission Indirect", PassKind::TransmissionIndirect},
             NamedPass{"SubsurfaceDir", "Subsurface Direct", PassKind::SubsurfaceDirect},
             NamedPass{"VolumeInd", "Volume Indirect", PassKind::VolumeIndirect},
             NamedPass{"Emit", "Emission", PassKind::Emission},
             NamedPass{"Env", "Environment", PassKind::Background},
             NamedPass{"AO", "Ambient Occlusion", PassKind::AmbientOcclusion},
             NamedPass{"IndexOB", "Object Index", PassKind::ObjectID},
             NamedPass{"IndexMA", "Material Index", PassKind::MaterialID},
             NamedPass{"Combined_key", "Combined_", PassKind::LightGroup},
             NamedPass{"Denoising Normal", "Denoising Depth", PassKind::DenoisingData},
             NamedPass{"Debug Sample Count", "Sample Count", PassKind::SampleCount},
             NamedPass{"Shadow Catcher", "Noisy Shadow Catcher", PassKind::ShadowCatcher},
             NamedPass{"Mist", "mist", PassKind::Mist},
             NamedPass{"Vector", "Vector", PassKind::Motion},
         }) {
        EXPECT_EQ(KindOf(Renderer::Cycles, row.shortName), row.kind) << row.shortName;
        EXPECT_EQ(KindOf(Renderer::Cycles, row.longName), row.kind) << row.longName;
        EXPECT_EQ(FindPass(Renderer::Cycles, row.shortName)->classID, PassClassID(row.kind));
    }
}

TEST(PassNames, OneNameMeansWhatTheFilesRendererMeans) {
    EXPECT_EQ(KindOf(Renderer::VRay, "diffuse"), PassKind::DiffuseColor);
    EXPECT_EQ(KindOf(Renderer::Arnold, "diffuse"), PassKind::Diffuse);
    EXPECT_EQ(FindPass(Renderer::Max, "Diffuse")->classID, DIFFUSE_ELEMENT);
    EXPECT_EQ(FindPass(Renderer::Max, "Z")->classID, Z_ELEMENT);
    EXPECT_EQ(FindPass(Renderer::Any, "Z")->classID, PassClassID(PassKind::Depth));
}

TEST(PassNames, ArnoldsLightComesWithItsColour) {
    EXPECT_EQ(KindOf(Renderer::Arnold, "diffuse_direct"), PassKind::Diffuse);
    EXPECT_EQ(KindOf(Renderer::Arnold, "specular_indirect"), PassKind::Specular);
    EXPECT_EQ(KindOf(Renderer::Arnold, "coat_direct"), PassKind::Coat);
    EXPECT_EQ(KindOf(Renderer::Arnold, "sss"), PassKind::Subsurface);
    EXPECT_EQ(KindOf(Renderer::Arnold, "sheen_albedo"), PassKind::Albedo);
    EXPECT_EQ(KindOf(Renderer::Arnold, "diffuse_direct_key"), PassKind::LightGroup);
    EXPECT_EQ(KindOf(Renderer::Arnold, "RGBA_key"), PassKind::LightGroup);
    EXPECT_EQ(KindOf(Renderer::Arnold, "shadow_matte"), PassKind::Shadow);
    EXPECT_EQ(KindOf(Renderer::Arnold, "P"), PassKind::Position);
}

TEST(PassNames, KnowCorona) {
    EXPECT_EQ(KindOf(Renderer::Corona, "CESSENTIAL_Indirect"), PassKind::IndirectLight);
    EXPECT_EQ(KindOf(Renderer::Corona, "CShading_LightSelect_window"), PassKind::LightGroup);
    EXPECT_EQ(FindPass(Renderer::Corona, "CMasking_Mask")->classID, CORONA_MASK_ELEMENT);
    EXPECT_EQ(FindPass(Renderer::Corona, "CGeometry_ZDepth")->detail, PassDetail::MappedDepth);
}

TEST(PassNames, TellTheSpaceOfNormals) {
    EXPECT_EQ(FindPass(Renderer::Cycles, "Normal")->detail, PassDetail::WorldSpace);
    EXPECT_EQ(FindPass(Renderer::Arnold, "N")->detail, PassDetail::WorldSpace);
    EXPECT_EQ(FindPass(Renderer::Max, "N")->detail, PassDetail::CameraSpace);
    EXPECT_EQ(FindPass(Renderer::VRay, "VRayNormals")->detail, PassDetail::ScreenSpace);
    EXPECT_EQ(FindPass(Renderer::Any, "N")->detail, PassDetail::None);
}

TEST(PassNames, ANumberBehindTheNameDoesNotMatter) {
    EXPECT_EQ(FindPass(Renderer::VRay, "VRayReflection_02")->classID,
              FindPass(Renderer::VRay, "VRayReflection")->classID);
    EXPECT_EQ(KindOf(Renderer::Corona, "CMasking_WireColor 3"), PassKind::WireColor);
    EXPECT_EQ(FindPass(Renderer::VRay, "MultiMatteElement7")->classID, VRAY_MULTI_MATTE_ELEMENT);
    EXPECT_EQ(KindOf(Renderer::Any, "7"), std::nullopt);
    EXPECT_EQ(KindOf(Renderer::Any, "_07"), std::nullopt);
}

TEST(PassNames, NamesOfOtherRenderersCountButNotTheirPatterns) {
    EXPECT_EQ(KindOf(Renderer::Any, "diffuse direct"), PassKind::DiffuseDirect);
    EXPECT_EQ(KindOf(Renderer::Any, "specular_direct"), PassKind::Specular);
    EXPECT_EQ(KindOf(Renderer::Any, "direct_hit"), std::nullopt);
    EXPECT_EQ(KindOf(Renderer::Arnold, "direct_hit"), PassKind::LightGroup);
    EXPECT_EQ(KindOf(Renderer::Any, "my own"), std::nullopt);
    EXPECT_EQ(KindOf(Renderer::Any, ""), std::nullopt);
}

TEST(PassNames, ThePictureIsOfTheClassOfPictures) {
    for (const char* name : {"Combined", "RGBA", "beauty", "C"})
        EXPECT_EQ(FindPass(Renderer::Any, name)->classID, BEAUTY_ELEMENT) << name;
    EXPECT_TRUE(IsPictureName("rgb"));
    EXPECT_FALSE(IsPictureName("Combined_key"));
}

TEST(PassNames, KnowCryptomattes) {
    for (const char* name : {"CryptoObject00", "crypto_material", "VRayCryptomatte",
                             "CMasking_Cryptomatte01", "CryptoAsset"})
        EXPECT_TRUE(IsCryptomatteName(name)) << name;
    EXPECT_FALSE(IsCryptomatteName("encrypted"));
    EXPECT_TRUE(IsKnownPass(Renderer::Any, "crypto_object00"));
    EXPECT_FALSE(IsKnownPass(Renderer::Any, "my own"));
}

TEST(PassNames, EveryKindHasWords) {
    for (auto kind = static_cast<DWORD>(PassKind::OtherColor);
         kind <= static_cast<DWORD>(PassKind::SampleCount); ++kind) {
        EXPECT_NE(NameOf(static_cast<PassKind>(kind)), "") << kind;
    }
    EXPECT_EQ(NameOf(Renderer::VRay), "V-Ray");
    EXPECT_EQ(NameOf(Renderer::Any), "");
    EXPECT_EQ(NameOf(Renderer::Max), "3ds Max");
}

TEST(PassNames, TellNumbersFromColours) {
    EXPECT_TRUE(IsData(PassKind::OtherData));
    EXPECT_TRUE(IsData(PassKind::Depth));
    EXPECT_TRUE(IsData(PassKind::DenoisingData));
    EXPECT_TRUE(IsData(PassKind::Mask));
    EXPECT_FALSE(IsData(PassKind::OtherColor));
    EXPECT_FALSE(IsData(PassKind::DiffuseColor));
    EXPECT_FALSE(IsData(PassKind::AmbientOcclusion));
    EXPECT_FALSE(IsData(PassKind::ShadowCatcher));
}

}  // namespace
}  // namespace command

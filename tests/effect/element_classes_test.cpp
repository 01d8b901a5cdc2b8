#include "effect/element_classes.h"

#include <elementclasses.h>
#include <gtest/gtest.h>
#include <vrayelements.h>

#include <set>
#include <utility>

namespace {

constexpr int multiply = 3;
constexpr int linearDodge = 9;

effect::LayerDefaults DefaultsOf(const Class_ID& id) {
    const int rank = effect::ElementRank(id);
    EXPECT_GE(rank, 0) << std::hex << id.PartA() << ' ' << id.PartB();
    return rank < 0 ? effect::LayerDefaults()
                    : effect::ElementClasses()[static_cast<std::size_t>(rank)].defaults;
}
effect::LayerDefaults DefaultsOf(PassKind kind) {
    return DefaultsOf(PassClassID(kind));
}
int RankOf(PassKind kind) {
    return effect::ElementRank(PassClassID(kind));
}

constexpr PassKind rawGroups[][3] = {
    {PassKind::DiffuseColor, PassKind::DiffuseDirect, PassKind::DiffuseIndirect},
    {PassKind::GlossyColor, PassKind::GlossyDirect, PassKind::GlossyIndirect},
    {PassKind::TransmissionColor, PassKind::TransmissionDirect, PassKind::TransmissionIndirect},
    {PassKind::SubsurfaceColor, PassKind::SubsurfaceDirect, PassKind::SubsurfaceIndirect},
};

TEST(ElementClasses, HaveOneRowEach) {
    std::set<std::pair<DWORD, DWORD>> seen;
    for (const effect::ElementClass& row : effect::ElementClasses()) {
        EXPECT_TRUE(seen.emplace(row.id.PartA(), row.id.PartB()).second)
            << std::hex << row.id.PartA() << ' ' << row.id.PartB();
    }
}

TEST(ElementClasses, RankInTheOrderOfTheTable) {
    int rank = 0;
    for (const effect::ElementClass& row : effect::ElementClasses())
        EXPECT_EQ(effect::ElementRank(row.id), rank++);
    EXPECT_EQ(effect::ElementRank({0x12345678, 0x9abcdef0}), -1);
    EXPECT_EQ(effect::ElementRank({}), -1);
}

TEST(ElementClasses, AreAllOfVRaysTheHostsAndTheFilesPasses) {
    for (const VRayElementClass& element : VRAY_ELEMENT_CLASSES)
        EXPECT_GE(effect::ElementRank(element.id), 0) << element.channel << ' ' << element.name;
    for (const Class_ID& id :
         {BEAUTY_ELEMENT,     SPECULAR_ELEMENT,    DIFFUSE_ELEMENT,     SELF_ILLUMINATION_ELEMENT,
          REFLECTION_ELEMENT, REFRACTION_ELEMENT,  SHADOW_ELEMENT,      ATMOSPHERE_ELEMENT,
          BLEND_ELEMENT,      Z_ELEMENT,           ALPHA_ELEMENT,       BACKGROUND_ELEMENT,
          LIGHTING_ELEMENT,   MATTE_ELEMENT,       VELOCITY_ELEMENT,    MATERIAL_ID_ELEMENT,
          OBJECT_ID_ELEMENT,  ILLUMINANCE_ELEMENT, CORONA_MASK_ELEMENT, VRAY_OPTIONS_ELEMENT}) {
        EXPECT_GE(effect::ElementRank(id), 0) << std::hex << id.PartA();
    }
    const int last = static_cast<int>(PassKind::SampleCount);
    for (int kind = 1; kind <= last; ++kind)
        EXPECT_GE(RankOf(static_cast<PassKind>(kind)), 0) << kind;
}

// Numbers are kept as they are, whatever the document does to its colours.
TEST(ElementClasses, OfNumbersAreHiddenAndNeverCorrected) {
    for (const PassKind kind :
         {PassKind::OtherData, PassKind::Alpha, PassKind::Depth, PassKind::Mist, PassKind::Normal,
          PassKind::Position, PassKind::TextureCoordinates, PassKind::Motion, PassKind::ObjectID,
          PassKind::MaterialID, PassKind::WireColor, PassKind::Mask, PassKind::DenoisingData,
          PassKind::SampleCount}) {
        const effect::LayerDefaults defaults = DefaultsOf(kind);
        const int number = static_cast<int>(kind);
        EXPECT_FALSE(defaults.visible) << number;
        EXPECT_FALSE(defaults.transparency) << number;
        EXPECT_FALSE(defaults.gammaCorrect) << number;
        EXPECT_FALSE(defaults.colorCorrect) << number;
        EXPECT_TRUE(defaults.premultiply) << number;
        EXPECT_FALSE(defaults.groupWithPrevious) << number;
        EXPECT_EQ(defaults.blendingMode, 0) << number;
        const bool isSelection = kind == PassKind::Alpha || kind == PassKind::Depth;
        EXPECT_EQ(defaults.outputAs, isSelection ? 1 : 0) << number;
    }
}

TEST(ElementClasses, OfColoursAreCorrectedWhereTheUserChooses) {
    const int lastColor = static_cast<int>(PassKind::ShadowCatcher);
    for (int number = 1; number <= lastColor; ++number) {
        if (static_cast<PassKind>(number) == PassKind::OtherData) continue;
        const effect::LayerDefaults defaults = DefaultsOf(static_cast<PassKind>(number));
        EXPECT_TRUE(defaults.gammaCorrect) << number;
        EXPECT_FALSE(defaults.transparency) << number;
        EXPECT_EQ(defaults.outputAs, 0) << number;
    }
}

TEST(ElementClasses, OfLightAddUp) {
    for (const PassKind kind :
         {PassKind::Diffuse, PassKind::Specular, PassKind::Coat, PassKind::Sheen,
          PassKind::Reflection, PassKind::Refraction, PassKind::Transmission, PassKind::Subsurface,
          PassKind::Volume, PassKind::VolumeDirect, PassKind::VolumeIndirect, PassKind::Emission,
          PassKind::Caustics, PassKind::GlobalIllumination, PassKind::DirectLight,
          PassKind::IndirectLight}) {
        const effect::LayerDefaults defaults = DefaultsOf(kind);
        EXPECT_EQ(defaults.blendingMode, linearDodge) << static_cast<int>(kind);
        EXPECT_TRUE(defaults.visible) << static_cast<int>(kind);
        EXPECT_FALSE(defaults.groupWithPrevious) << static_cast<int>(kind);
        EXPECT_LT(RankOf(kind), RankOf(PassKind::Background)) << static_cast<int>(kind);
    }
}

TEST(ElementClasses, ThatRepeatThePictureAreHidden) {
    EXPECT_FALSE(DefaultsOf(PassKind::LightGroup).visible);
    EXPECT_EQ(DefaultsOf(PassKind::LightGroup).blendingMode, linearDodge);
    for (const PassKind kind : {PassKind::Albedo, PassKind::AmbientOcclusion, PassKind::Shadow,
                                PassKind::ShadowCatcher}) {
        EXPECT_FALSE(DefaultsOf(kind).visible) << static_cast<int>(kind);
        EXPECT_EQ(DefaultsOf(kind).blendingMode, multiply) << static_cast<int>(kind);
        EXPECT_FALSE(DefaultsOf(kind).groupWithPrevious) << static_cast<int>(kind);
    }
}

TEST(ElementClasses, OfRawLightAreClippedGroupsUnderTheirColour) {
    for (const auto& [color, direct, indirect] : rawGroups) {
        EXPECT_EQ(RankOf(direct), RankOf(color) + 1);
        EXPECT_EQ(RankOf(indirect), RankOf(color) + 2);
        EXPECT_EQ(DefaultsOf(color).blendingMode, multiply);
        EXPECT_TRUE(DefaultsOf(color).groupWithPrevious);
        EXPECT_FALSE(DefaultsOf(color).premultiply);
        EXPECT_EQ(DefaultsOf(direct).blendingMode, linearDodge);
        EXPECT_TRUE(DefaultsOf(direct).groupWithPrevious);
        EXPECT_EQ(DefaultsOf(indirect).blendingMode, linearDodge);
        EXPECT_FALSE(DefaultsOf(indirect).groupWithPrevious);
        for (const PassKind kind : {color, direct, indirect}) {
            EXPECT_TRUE(DefaultsOf(kind).visible);
            EXPECT_LT(RankOf(kind), RankOf(PassKind::Background));
        }
    }
}

// What is clipped takes part in what its base does, so both are seen or neither.
TEST(ElementClasses, ThatAreClippedStandOverABaseThatIsSeenAsTheyAre) {
    const auto rows = effect::ElementClasses();
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (!rows[i].defaults.groupWithPrevious) continue;
        ASSERT_LT(i + 1, rows.size());
        EXPECT_EQ(rows[i].defaults.visible, rows[i + 1].defaults.visible) << i;
        EXPECT_EQ(rows[i + 1].defaults.blendingMode, linearDodge) << i;
    }
}

}  // namespace

#include "effect/element_classes.h"

#include <elementclasses.h>
#include <vrayelements.h>

#include <stdexcept>
#include <string_view>

#include "effect/blend_modes.h"

namespace effect {
namespace {

// ---- How rows are written ----

consteval Class_ID VRay(std::string_view name) {
    for (const VRayElementClass& element : VRAY_ELEMENT_CLASSES) {
        if (name == element.name) return element.id;
    }
    throw std::invalid_argument("no element of this name");
}
consteval Class_ID VRay(int channel) {
    for (const VRayElementClass& element : VRAY_ELEMENT_CLASSES) {
        if (channel == element.channel) return element.id;
    }
    throw std::invalid_argument("no element of this channel");
}

consteval LayerDefaults Hidden(LayerDefaults defaults) {
    defaults.visible = false;
    return defaults;
}
consteval LayerDefaults Clipped(LayerDefaults defaults) {
    defaults.groupWithPrevious = true;
    return defaults;
}
consteval LayerDefaults Corrected(LayerDefaults defaults) {
    defaults.gammaCorrect = true;
    return defaults;
}

// Which elements are corrected where the user chooses them: the colours of render files, and of the
// renderers' own elements those that stand for themselves. Numbers aren't, but for the host's depth
// and V-Ray's material ids, which are looked at as pictures.

// Light adds up. It is black where there is none, so that it needs no transparency.
constexpr LayerDefaults light{.transparency = false, .blendingMode = linearDodgeMode};
// A factor for what is below it: for the surface's colour the raw light to which it is clipped.
// Divided by alpha, since light brings the coverage with it.
constexpr LayerDefaults factor{
    .transparency = false, .premultiply = false, .blendingMode = multiplyMode};
// The whole of the picture, or what repeats other elements: to be looked at by itself.
constexpr LayerDefaults picture{.visible = false};
// What lies behind all else.
constexpr LayerDefaults backdrop{.transparency = false, .gammaCorrect = true};
// Numbers: kept as they are.
constexpr LayerDefaults data{.visible = false, .transparency = false};
// One number a pixel, of use as a selection.
constexpr LayerDefaults selection{.visible = false, .transparency = false, .outputAs = 1};

// ---- The table ----

// A layer is clipped to the one below it, so the rows of one group stay together, the base of the
// group lowest: colour over direct over indirect light makes (indirect + direct) * colour, added
// to what lies below.
constexpr ElementClass classes[] = {
    // What the picture already holds as a factor.
    {PassClassID(PassKind::AmbientOcclusion), Corrected(Hidden(factor))},
    {PassClassID(PassKind::Shadow), Corrected(Hidden(factor))},
    {PassClassID(PassKind::ShadowCatcher), Corrected(Hidden(factor))},
    {PassClassID(PassKind::Albedo), Corrected(Hidden(factor))},
    // Its black is told from no shadow by its alpha alone.
    {SHADOW_ELEMENT, {.visible = false, .blendingMode = multiplyMode}},

    // The light that shadows took away.
    {VRay("VRayShadows"), Hidden(light)},
    {VRay("VRayRawShadow"), Hidden(light)},

    // The whole picture's light another time.
    {PassClassID(PassKind::LightGroup), Corrected(Hidden(light))},
    {VRay("VRayTotalLighting"), Hidden(light)},
    {VRay("VRayRawTotalLighting"), Hidden(light)},
    {LIGHTING_ELEMENT, Hidden(light)},

    // Light in front of surfaces.
    {ATMOSPHERE_ELEMENT, {.transparency = false, .blendingMode = screenMode}},
    {VRay("VRayAtmosphere"), light},
    {PassClassID(PassKind::Volume), Corrected(light)},
    {PassClassID(PassKind::VolumeDirect), Corrected(light)},
    {PassClassID(PassKind::VolumeIndirect), Corrected(light)},

    // Light of surfaces.
    {PassClassID(PassKind::Emission), Corrected(light)},
    {SELF_ILLUMINATION_ELEMENT, light},
    {VRay("VRaySelfIllumination"), light},
    {PassClassID(PassKind::Caustics), Corrected(light)},
    {VRay("VRayCaustics"), light},
    {PassClassID(PassKind::Sheen), Corrected(light)},
    {PassClassID(PassKind::Coat), Corrected(light)},
    {PassClassID(PassKind::Specular), Corrected(light)},
    {SPECULAR_ELEMENT, light},
    {VRay("VRaySpecular"), light},
    {PassClassID(PassKind::Reflection), Corrected(light)},
    {REFLECTION_ELEMENT, light},
    {VRay("VRayReflection"), light},
    {PassClassID(PassKind::Refraction), Corrected(light)},
    {REFRACTION_ELEMENT, light},
    {VRay("VRayRefraction"), light},
    {PassClassID(PassKind::Transmission), Corrected(light)},
    {PassClassID(PassKind::Subsurface), Corrected(light)},
    {VRay("VRaySSS2"), light},
    {PassClassID(PassKind::Diffuse), Corrected(light)},
    {PassClassID(PassKind::GlobalIllumination), Corrected(light)},
    {VRay("VRayGlobalIllumination"), light},
    {PassClassID(PassKind::IndirectLight), Corrected(light)},
    {PassClassID(PassKind::DirectLight), Corrected(light)},
    {VRay("VRayLighting"), light},

    // Raw light of reflection and refraction repeats the elements above.
    {VRay("VRayReflectionFilter"), Hidden(Clipped(factor))},
    {VRay("VRayRawReflection"), Hidden(light)},
    {VRay("VRayRefractionFilter"), Hidden(Clipped(factor))},
    {VRay("VRayRawRefraction"), Hidden(light)},

    // Groups of raw light and colour.
    {PassClassID(PassKind::SubsurfaceColor), Corrected(Clipped(factor))},
    {PassClassID(PassKind::SubsurfaceDirect), Corrected(Clipped(light))},
    {PassClassID(PassKind::SubsurfaceIndirect), Corrected(light)},
    {PassClassID(PassKind::TransmissionColor), Corrected(Clipped(factor))},
    {PassClassID(PassKind::TransmissionDirect), Corrected(Clipped(light))},
    {PassClassID(PassKind::TransmissionIndirect), Corrected(light)},
    {PassClassID(PassKind::GlossyColor), Corrected(Clipped(factor))},
    {PassClassID(PassKind::GlossyDirect), Corrected(Clipped(light))},
    {PassClassID(PassKind::GlossyIndirect), Corrected(light)},
    {PassClassID(PassKind::DiffuseColor), Corrected(Clipped(factor))},
    {PassClassID(PassKind::DiffuseDirect), Corrected(Clipped(light))},
    {PassClassID(PassKind::DiffuseIndirect), Corrected(light)},
    // The direct light is the base here, since it is what most renders have.
    {VRay("VRayDiffuseFilter"), Clipped(factor)},
    {VRay("VRayRawGlobalIllumination"), Clipped(light)},
    {VRay("VRayRawLighting"), light},

    // What the light lies on.
    {DIFFUSE_ELEMENT, {.premultiply = false}},
    {PassClassID(PassKind::Background), backdrop},
    {BACKGROUND_ELEMENT, backdrop},
    {VRay("VRayBackground"), backdrop},

    // Whole pictures, and colours of which nothing is known.
    {BEAUTY_ELEMENT, Corrected(picture)},
    {BLEND_ELEMENT, Corrected(picture)},
    {VRay("VRayUnclampedColor"), Corrected(picture)},
    {VRAY_DENOISER_ELEMENT, Corrected(picture)},
    {VRay("VRayExtraTex"),
     {.visible = false, .premultiply = false, .gammaCorrect = true, .colorCorrect = true}},
    {PassClassID(PassKind::OtherColor),
     {.visible = false, .transparency = false, .gammaCorrect = true}},

    // Which object or material is where.
    {VRAY_MULTI_MATTE_ELEMENT, data},
    {CORONA_MASK_ELEMENT, data},
    {MATTE_ELEMENT, data},
    {VRay("VRayMatteShadow"), data},
    {PassClassID(PassKind::Mask), data},
    {PassClassID(PassKind::ObjectID), data},
    {OBJECT_ID_ELEMENT, data},
    {VRay("VRayObjectID"), data},
    {VRay("VRayRenderID"), data},
    {PassClassID(PassKind::MaterialID), data},
    {MATERIAL_ID_ELEMENT, data},
    {VRay("VRayMtlID"), Corrected(data)},
    {PassClassID(PassKind::WireColor), data},
    {VRay("VRayWireColor"), data},

    // Other numbers.
    {PassClassID(PassKind::Mist), data},
    {PassClassID(PassKind::Normal), data},
    {VRay("VRayNormals"), data},
    {VRay("VRayBumpNormals"), data},
    {PassClassID(PassKind::Position), data},
    {PassClassID(PassKind::TextureCoordinates), data},
    {PassClassID(PassKind::Motion), data},
    {VELOCITY_ELEMENT, data},
    {VRay("VRayVelocity"), data},
    {ILLUMINANCE_ELEMENT, data},
    {PassClassID(PassKind::DenoisingData), data},
    {PassClassID(PassKind::SampleCount), data},
    {VRay("VRaySampleRate"), data},
    {PassClassID(PassKind::OtherData), data},

    // Elements that are known by their channel alone, or hold nothing: told from colours by nobody.
    {VRay(134), data},
    {VRay(135), data},
    {VRay(136), data},
    {VRay(140), data},
    {VRay(142), data},
    {{0x6d5c764b, 0x084f18fd}, data},
    {{0x651a2649, 0x32332f01}, data},
    {{0x674e38df, 0x797b7c2d}, data},
    {{0x05762738, 0x23b06ec0}, data},
    {VRAY_OPTIONS_ELEMENT, data},

    // Selections.
    {PassClassID(PassKind::Alpha), selection},
    {ALPHA_ELEMENT, selection},
    {VRAY_ALPHA_ELEMENT, selection},
    {PassClassID(PassKind::Depth), selection},
    {Z_ELEMENT, Corrected(selection)},
    {VRay("VRayZDepth"), selection},
};

}  // namespace

std::span<const ElementClass> ElementClasses() {
    return classes;
}

int ElementRank(const Class_ID& id) {
    for (std::size_t i = 0; i < std::size(classes); ++i) {
        if (classes[i].id == id) return static_cast<int>(i);
    }
    return -1;
}

}  // namespace effect

// Class ids of render elements that are the application's own, another renderer's, or have no class
// in the application at all: passes that are known from render files alone.
#pragma once

#include "plugapi.h"

// The application's own elements have their number here and 0 as the second part.
constexpr Class_ID BEAUTY_ELEMENT{0x01, 0};
constexpr Class_ID SPECULAR_ELEMENT{0x02, 0};
constexpr Class_ID DIFFUSE_ELEMENT{0x04, 0};
constexpr Class_ID SELF_ILLUMINATION_ELEMENT{0x05, 0};
constexpr Class_ID REFLECTION_ELEMENT{0x06, 0};
constexpr Class_ID REFRACTION_ELEMENT{0x07, 0};
constexpr Class_ID SHADOW_ELEMENT{0x08, 0};
constexpr Class_ID ATMOSPHERE_ELEMENT{0x09, 0};
constexpr Class_ID BLEND_ELEMENT{0x0a, 0};
constexpr Class_ID Z_ELEMENT{0x0c, 0};
constexpr Class_ID ALPHA_ELEMENT{0x0d, 0};
constexpr Class_ID BACKGROUND_ELEMENT{0x0e, 0};
constexpr Class_ID LIGHTING_ELEMENT{0x11, 0};
constexpr Class_ID MATTE_ELEMENT{0x12, 0};
constexpr Class_ID VELOCITY_ELEMENT{0x13, 0};
constexpr Class_ID MATERIAL_ID_ELEMENT{0x14, 0};
constexpr Class_ID OBJECT_ID_ELEMENT{0x15, 0};
constexpr Class_ID ILLUMINANCE_ELEMENT{0x17, 0};

constexpr Class_ID CORONA_MASK_ELEMENT{0x65ad627c, 0x68853451};

// What a pass of a render file is, whichever renderer wrote it. A group's direct and indirect light
// is without the surface's colour and is multiplied by it; a light is with it and is added.
enum class PassKind : DWORD {
    OtherColor = 1,  // colours that nothing is known of
    OtherData,       // numbers that are no colours
    // Groups of raw light and colour.
    DiffuseColor,
    DiffuseDirect,
    DiffuseIndirect,
    GlossyColor,
    GlossyDirect,
    GlossyIndirect,
    TransmissionColor,
    TransmissionDirect,
    TransmissionIndirect,
    SubsurfaceColor,
    SubsurfaceDirect,
    SubsurfaceIndirect,
    VolumeDirect,
    VolumeIndirect,
    // Light as it adds up to the picture.
    Diffuse,
    Specular,
    Coat,
    Sheen,
    Reflection,
    Refraction,
    Transmission,
    Subsurface,
    Volume,
    Emission,
    Caustics,
    GlobalIllumination,
    DirectLight,
    IndirectLight,
    Background,
    // One light or group of lights of the whole picture.
    LightGroup,
    // Colours of the surface, without light.
    Albedo,
    AmbientOcclusion,
    Shadow,
    ShadowCatcher,
    // Data.
    Alpha,
    Depth,
    Mist,
    Normal,
    Position,
    TextureCoordinates,
    Motion,
    ObjectID,
    MaterialID,
    WireColor,
    Mask,
    // What a denoiser takes as its input.
    DenoisingData,
    SampleCount,
};

constexpr DWORD PASS_CLASS_PART_A = 0x76a1c3e5;
constexpr Class_ID PassClassID(PassKind kind) {
    return {PASS_CLASS_PART_A, static_cast<DWORD>(kind)};
}

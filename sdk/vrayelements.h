// V-Ray's render elements: the class ids of the elements, and the alias of the frame buffer channel
// that each one's pixels are in. An outside party's classes, not the host's.
#pragma once

#include "plugapi.h"

constexpr int VRAY_CHANNEL_OF_NAME = 1000;

struct VRayElementClass {
    Class_ID id;
    // Alias of the channel; 1000 for elements whose channels are told by name alone.
    int channel;
    // As V-Ray calls the element, and its layer in a file; empty where it isn't known.
    const char* name;
};

constexpr Class_ID VRAY_ALPHA_ELEMENT{0x58a32517, 0x70d06c58};
constexpr Class_ID VRAY_DENOISER_ELEMENT{0x3af5439f, 0x1fe32dbe};
// Only tells the renderer something; it has no pixels.
constexpr Class_ID VRAY_OPTIONS_ELEMENT{0x6452167f, 0x127b0bea};
constexpr Class_ID VRAY_MULTI_MATTE_ELEMENT{0x963a9436, 0x30d57a4a};

constexpr VRayElementClass VRAY_ELEMENT_CLASSES[] = {
    {{0x11e87638, 0x29e3355}, 100, "VRayAtmosphere"},
    {{0x36315e91, 0x50e55dbd}, 101, "VRayDiffuseFilter"},
    {{0x55573ae5, 0x4b350b0a}, 102, "VRayReflection"},
    {{0x5a90571, 0x53c608af}, 103, "VRayRefraction"},
    {{0x17786a94, 0x21d87e76}, 104, "VRaySelfIllumination"},
    {{0x7e697a63, 0x36e83aaf}, 105, "VRayShadows"},
    {{0x28820859, 0x490f6dad}, 106, "VRaySpecular"},
    {{0x64c808e0, 0x605d7246}, 107, "VRayLighting"},
    {{0x7497eec, 0x51ea5d6b}, 108, "VRayGlobalIllumination"},
    {{0x3d462e09, 0x7f3e1bd1}, 109, "VRayCaustics"},
    {{0x483d1647, 0x18b2086}, 110, "VRayRawGlobalIllumination"},
    {{0x73a90d68, 0x62245636}, 111, "VRayRawLighting"},
    {{0x2be23135, 0x790b1389}, 112, "VRayRawShadow"},
    {{0x7e99293c, 0xa9013c7}, 113, "VRayVelocity"},
    {{0x19f604e2, 0x95204f}, 114, "VRayRenderID"},
    {{0x2fbc1433, 0x275c59e3}, 115, "VRayMtlID"},
    {{0x24156286, 0x78f3335d}, 116, "VRayObjectID"},
    {{0x19641992, 0x3fe7073a}, 117, "VRayZDepth"},
    {{0x642a347b, 0x21ab1de6}, 118, "VRayReflectionFilter"},
    {{0x285a3515, 0x297156a5}, 119, "VRayRawReflection"},
    {{0x244426f5, 0x15b873db}, 120, "VRayRefractionFilter"},
    {{0x76fa13f0, 0x7b03a79}, 121, "VRayRawRefraction"},
    {{0x3d13611e, 0xcfa0263}, 122, "VRayUnclampedColor"},
    {{0x3f1322d1, 0x212008f}, 123, "VRayNormals"},
    {{0x2d304e42, 0x19d838a4}, 124, "VRayBackground"},
    {VRAY_ALPHA_ELEMENT, 125, "VRayAlpha"},
    {{0x175b6083, 0x54320c25}, 127, "VRayWireColor"},
    {{0x4a025922, 0x5ec7c41}, 128, "VRayMatteShadow"},
    {{0x3a84693e, 0x4d9266bf}, 129, "VRayTotalLighting"},
    {{0x3fa83453, 0x1b9032cb}, 130, "VRayRawTotalLighting"},
    {{0x1c2427eb, 0x1eed6252}, 131, "VRayBumpNormals"},
    {{0x3e08269a, 0xcd515c3}, 132, "VRaySampleRate"},
    {{0x627e5ae7, 0x6cc059e7}, 133, "VRaySSS2"},
    {{0x28b2b281, 0x981cbcb1}, 134, ""},
    {{0x3a613e17, 0x26a415dc}, 135, ""},
    {{0x321f5dc2, 0x23a578c1}, 136, ""},
    {{0x449c43a8, 0xcaa5525}, 140, ""},
    {{0x5e6d3ea2, 0x72910e89}, 142, ""},
    {VRAY_DENOISER_ELEMENT, 144, "VRayDenoiser"},
    {VRAY_MULTI_MATTE_ELEMENT, VRAY_CHANNEL_OF_NAME, "MultiMatteElement"},
    {{0x6d5c764b, 0x084f18fd}, VRAY_CHANNEL_OF_NAME, ""},
    {{0x651a2649, 0x32332f01}, VRAY_CHANNEL_OF_NAME, ""},
    {{0x674e38df, 0x797b7c2d}, VRAY_CHANNEL_OF_NAME, ""},
    {{0x2e056b03, 0x318604b3}, VRAY_CHANNEL_OF_NAME, "VRayExtraTex"},
    {{0x05762738, 0x23b06ec0}, VRAY_CHANNEL_OF_NAME, ""},
};

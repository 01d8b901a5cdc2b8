#include "command/pass_names.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>

#include <vrayelements.h>

#include "command/ascii_case.h"

namespace command {
namespace {

// The class whose pixels are in the frame buffer's channel `alias`. Fails to compile for an alias
// that no class has.
consteval Class_ID VRayClass(int alias) {
    for (const VRayElementClass& each : VRAY_ELEMENT_CLASSES) {
        if (each.channel == alias) return each.id;
    }
    throw "no V-Ray element has this channel";
}

consteval Class_ID VRayClass(std::string_view name) {
    for (const VRayElementClass& each : VRAY_ELEMENT_CLASSES) {
        if (each.name == name) return each.id;
    }
    throw "no V-Ray element has this name";
}

// One meaning, and the names that one renderer gives it, with "|" between them. "*" stands for any
// text, also none.
struct PassRow {
    Renderer renderer;
    std::string_view names;
    PassKind kind;
    // Left out for passes that have no class of their own.
    Class_ID classID{};
    PassDetail detail = PassDetail::None;
};

constexpr PassRow passRows[] = {
    // Names that several renderers share, or nobody in particular.
    {Renderer::Any, "alpha|a|opacity", PassKind::Alpha},
    {Renderer::Any, "depth|z|zdepth|z depth|depth.z", PassKind::Depth},
    {Renderer::Any, "normal|normals|n", PassKind::Normal},
    {Renderer::Any, "position|worldposition|p|pref", PassKind::Position},
    {Renderer::Any, "vector|velocity|motionvector|motionvectors|motion vectors|motion",
     PassKind::Motion},
    {Renderer::Any, "uv|st", PassKind::TextureCoordinates},
    {Renderer::Any, "ao|ambient occlusion|ambientocclusion|ambient_occlusion|occlusion",
     PassKind::AmbientOcclusion},
    {Renderer::Any, "shadow|shadows", PassKind::Shadow},
    {Renderer::Any, "emission|emit|self-illumination|selfillumination|self illumination",
     PassKind::Emission},
    {Renderer::Any, "background|environment|env", PassKind::Background},
    {Renderer::Any, "albedo", PassKind::Albedo},
    {Renderer::Any, "diffuse", PassKind::Diffuse},
    {Renderer::Any, "specular", PassKind::Specular},
    {Renderer::Any, "reflection|reflections", PassKind::Reflection},
    {Renderer::Any, "refraction|refractions", PassKind::Refraction},
    {Renderer::Any, "transmission", PassKind::Transmission},
    {Renderer::Any, "subsurface|sss", PassKind::Subsurface},
    {Renderer::Any, "volume|volumetrics", PassKind::Volume},
    {Renderer::Any, "caustics", PassKind::Caustics},
    {Renderer::Any, "objectid|object id|object index|id", PassKind::ObjectID},
    {Renderer::Any, "materialid|material id|material index", PassKind::MaterialID},
    {Renderer::Any, "mist", PassKind::Mist},
    // Cycles: the short names up to Blender 4, and those that are spelt out.
    {Renderer::Cycles, "DiffCol|Diffuse Color", PassKind::DiffuseColor},
    {Renderer::Cycles, "DiffDir|Diffuse Direct", PassKind::DiffuseDirect},
    {Renderer::Cycles, "DiffInd|Diffuse Indirect", PassKind::DiffuseIndirect},
    {Renderer::Cycles, "GlossCol|Glossy Color", PassKind::GlossyColor},
    {Renderer::Cycles, "GlossDir|Glossy Direct", PassKind::GlossyDirect},
    {Renderer::Cycles, "GlossInd|Glossy Indirect", PassKind::GlossyIndirect},
    {Renderer::Cycles, "TransCol|Transmission Color", PassKind::TransmissionColor},
    {Renderer::Cycles, "TransDir|Transmission Direct", PassKind::TransmissionDirect},
    {Renderer::Cycles, "TransInd|Transmission Indirect", PassKind::TransmissionIndirect},
    {Renderer::Cycles, "SubsurfaceCol|Subsurface Color", PassKind::SubsurfaceColor},
    {Renderer::Cycles, "SubsurfaceDir|Subsurface Direct", PassKind::SubsurfaceDirect},
    {Renderer::Cycles, "SubsurfaceInd|Subsurface Indirect", PassKind::SubsurfaceIndirect},
    {Renderer::Cycles, "VolumeDir|Volume Direct", PassKind::VolumeDirect},
    {Renderer::Cycles, "VolumeInd|Volume Indirect", PassKind::VolumeIndirect},
    {Renderer::Cycles, "Emit|Emission", PassKind::Emission},
    {Renderer::Cycles, "Env|Environment", PassKind::Background},
    {Renderer::Cycles, "AO|Ambient Occlusion", PassKind::AmbientOcclusion},
    {Renderer::Cycles, "Shadow", PassKind::Shadow},
    {Renderer::Cycles, "Shadow Catcher|Noisy Shadow Catcher", PassKind::ShadowCatcher},
    {Renderer::Cycles, "Combined_*", PassKind::LightGroup},
    {Renderer::Cycles, "Noisy Image", PassKind::OtherColor, BEAUTY_ELEMENT},
    {Renderer::Cycles, "Depth", PassKind::Depth},
    {Renderer::Cycles, "Mist", PassKind::Mist},
    {Renderer::Cycles, "Normal", PassKind::Normal, {}, PassDetail::WorldSpace},
    {Renderer::Cycles, "Position", PassKind::Position},
    {Renderer::Cycles, "UV", PassKind::TextureCoordinates},
    {Renderer::Cycles, "Vector", PassKind::Motion},
    {Renderer::Cycles, "IndexOB|Object Index", PassKind::ObjectID},
    {Renderer::Cycles, "IndexMA|Material Index", PassKind::MaterialID},
    {Renderer::Cycles, "Denoising *", PassKind::DenoisingData},
    {Renderer::Cycles, "Debug Sample Count|Sample Count|Render Time", PassKind::SampleCount},
    {Renderer::Cycles, "Debug *", PassKind::OtherData},
    // V-Ray: its classes' names in 3ds Max, then the names in Maya.
    {Renderer::VRay, "VRayAtmosphere|atmosphere", PassKind::Volume, VRayClass(100)},
    {Renderer::VRay, "VRayDiffuseFilter|diffuse|diffuseFilter", PassKind::DiffuseColor,
     VRayClass(101)},
    {Renderer::VRay, "VRayReflection|reflect", PassKind::Reflection, VRayClass(102)},
    {Renderer::VRay, "VRayRefraction|refract", PassKind::Refraction, VRayClass(103)},
    {Renderer::VRay, "VRaySelfIllumination|selfIllum", PassKind::Emission, VRayClass(104)},
    {Renderer::VRay, "VRayShadows|shadow", PassKind::Shadow, VRayClass(105)},
    {Renderer::VRay, "VRaySpecular|specular", PassKind::Specular, VRayClass(106)},
    {Renderer::VRay, "VRayLighting|lighting", PassKind::DirectLight, VRayClass(107)},
    {Renderer::VRay, "VRayGlobalIllumination|GI", PassKind::GlobalIllumination, VRayClass(108)},
    {Renderer::VRay, "VRayCaustics|caustics", PassKind::Caustics, VRayClass(109)},
    {Renderer::VRay, "VRayRawGlobalIllumination|rawGI", PassKind::DiffuseIndirect, VRayClass(110)},
    {Renderer::VRay, "VRayRawLighting|rawLight", PassKind::DiffuseDirect, VRayClass(111)},
    {Renderer::VRay, "VRayRawShadow|rawShadow", PassKind::Shadow, VRayClass(112)},
    {Renderer::VRay, "VRayVelocity|velocity", PassKind::Motion, VRayClass(113)},
    {Renderer::VRay, "VRayRenderID|renderID", PassKind::OtherData, VRayClass(114)},
    {Renderer::VRay, "VRayMtlID|materialID|mtlID", PassKind::MaterialID, VRayClass(115)},
    {Renderer::VRay, "VRayObjectID|objectID|nodeID", PassKind::ObjectID, VRayClass(116)},
    {Renderer::VRay, "VRayZDepth|zDepth", PassKind::Depth, VRayClass(117), PassDetail::MappedDepth},
    {Renderer::VRay, "VRayReflectionFilter|reflectionFilter", PassKind::GlossyColor,
     VRayClass(118)},
    {Renderer::VRay, "VRayRawReflection|rawReflection", PassKind::GlossyIndirect, VRayClass(119)},
    {Renderer::VRay, "VRayRefractionFilter|refractionFilter", PassKind::TransmissionColor,
     VRayClass(120)},
    {Renderer::VRay, "VRayRawRefraction|rawRefraction", PassKind::TransmissionIndirect,
     VRayClass(121)},
    {Renderer::VRay, "VRayUnclampedColor|unclampedColor", PassKind::OtherColor, VRayClass(122)},
    {Renderer::VRay, "VRayNormals|normals", PassKind::Normal, VRayClass(123),
     PassDetail::ScreenSpace},
    {Renderer::VRay, "VRayBackground|background", PassKind::Background, VRayClass(124)},
    {Renderer::VRay, "VRayAlpha|alpha", PassKind::Alpha, VRayClass(125)},
    {Renderer::VRay, "VRayWireColor|wireColor", PassKind::WireColor, VRayClass(127)},
    {Renderer::VRay, "VRayMatteShadow|matteShadow", PassKind::Shadow, VRayClass(128)},
    {Renderer::VRay, "VRayTotalLighting|totalLight|totalLighting", PassKind::Diffuse,
     VRayClass(129)},
    {Renderer::VRay, "VRayRawTotalLighting|rawTotalLight|rawTotalLighting", PassKind::DiffuseDirect,
     VRayClass(130)},
    {Renderer::VRay, "VRayBumpNormals|bumpNormals|bump_normals", PassKind::Normal, VRayClass(131),
     PassDetail::ScreenSpace},
    {Renderer::VRay, "VRaySampleRate|sampleRate", PassKind::SampleCount, VRayClass(132)},
    {Renderer::VRay, "VRaySSS2|SSS", PassKind::Subsurface, VRayClass(133)},
    {Renderer::VRay, "VRayDenoiser|denoiser", PassKind::OtherColor, VRayClass(144)},
    {Renderer::VRay, "MultiMatteElement*|MultiMatte*", PassKind::Mask, VRAY_MULTI_MATTE_ELEMENT},
    {Renderer::VRay, "VRayExtraTex*|extraTex*", PassKind::OtherColor, VRayClass("VRayExtraTex")},
    {Renderer::VRay, "Z", PassKind::Depth},
    {Renderer::VRay, "VRayLightSelect*|lightSelect*|VRayLightMix|LightMix", PassKind::LightGroup},
    {Renderer::VRay, "VRayCoat|VRayCoatSpecular|VRayCoatReflection|coat_specular|coat_reflection",
     PassKind::Coat},
    {Renderer::VRay,
     "VRaySheen|VRaySheenSpecular|VRaySheenReflection|sheen_specular|sheen_reflection",
     PassKind::Sheen},
    {Renderer::VRay, "VRayMtlSelect*|VRayObjectSelect*|materialSelect*|objectSelect*",
     PassKind::OtherColor},
    {Renderer::VRay, "coverage", PassKind::Alpha},
    {Renderer::VRay, "effectsResult", PassKind::OtherColor, BEAUTY_ELEMENT},
    {Renderer::VRay, "worldNormals|worldPositions|noiseLevel|defocusAmount",
     PassKind::DenoisingData},
    // Arnold. Its light comes with the surface's colour.
    {Renderer::Arnold, "albedo|*_albedo", PassKind::Albedo},
    {Renderer::Arnold, "denoise_albedo|denoise_albedo_noisy|N_denoise|N_noisy|*_denoise_noisy",
     PassKind::DenoisingData},
    {Renderer::Arnold, "diffuse|diffuse_direct|diffuse_indirect", PassKind::Diffuse},
    {Renderer::Arnold, "specular|specular_direct|specular_indirect", PassKind::Specular},
    {Renderer::Arnold, "coat|coat_direct|coat_indirect", PassKind::Coat},
    {Renderer::Arnold, "sheen|sheen_direct|sheen_indirect", PassKind::Sheen},
    {Renderer::Arnold, "transmission|transmission_direct|transmission_indirect",
     PassKind::Transmission},
    {Renderer::Arnold, "sss|sss_direct|sss_indirect", PassKind::Subsurface},
    {Renderer::Arnold, "volume|volume_direct|volume_indirect", PassKind::Volume},
    {Renderer::Arnold, "direct", PassKind::DirectLight},
    {Renderer::Arnold, "indirect", PassKind::IndirectLight},
    {Renderer::Arnold, "emission", PassKind::Emission},
    {Renderer::Arnold, "background", PassKind::Background},
    {Renderer::Arnold,
     "RGBA_*|diffuse_direct_*|diffuse_indirect_*|specular_direct_*|specular_indirect_*|direct_*|"
     "indirect_*",
     PassKind::LightGroup},
    {Renderer::Arnold, "shadow_matte|shadow|shadow_mask|shadow_diff", PassKind::Shadow},
    {Renderer::Arnold, "N", PassKind::Normal, {}, PassDetail::WorldSpace},
    {Renderer::Arnold, "P|Pref", PassKind::Position},
    {Renderer::Arnold, "Z", PassKind::Depth},
    {Renderer::Arnold, "volume_Z|cputime", PassKind::OtherData},
    {Renderer::Arnold, "motionvector", PassKind::Motion},
    {Renderer::Arnold, "ID", PassKind::ObjectID},
    {Renderer::Arnold, "AO", PassKind::AmbientOcclusion},
    {Renderer::Arnold, "A|opacity|volume_opacity", PassKind::Alpha},
    {Renderer::Arnold, "AA_inv_density|raycount", PassKind::SampleCount},
    // Corona.
    {Renderer::Corona, "CESSENTIAL_Direct", PassKind::DirectLight},
    {Renderer::Corona, "CESSENTIAL_Indirect", PassKind::IndirectLight},
    {Renderer::Corona, "CESSENTIAL_Reflect", PassKind::Reflection},
    {Renderer::Corona, "CESSENTIAL_Refract", PassKind::Refraction},
    {Renderer::Corona, "CESSENTIAL_Translucency", PassKind::Transmission},
    {Renderer::Corona, "CESSENTIAL_Emission", PassKind::Emission},
    {Renderer::Corona, "CESSENTIAL_Volumetrics", PassKind::Volume},
    {Renderer::Corona, "CGeometry_ZDepth", PassKind::Depth, {}, PassDetail::MappedDepth},
    {Renderer::Corona, "CGeometry_NormalsShading|CGeometry_NormalsGeometry", PassKind::Normal},
    {Renderer::Corona, "CGeometry_NormalsDotProduct|CGeometry_NormalsDiscrepancy",
     PassKind::OtherData},
    {Renderer::Corona, "CGeometry_WorldPosition", PassKind::Position},
    {Renderer::Corona, "CGeometry_UvwCoords|CGeometry_MapCoords", PassKind::TextureCoordinates},
    {Renderer::Corona, "CGeometry_Velocity", PassKind::Motion},
    {Renderer::Corona, "CMasking_Mask", PassKind::Mask, CORONA_MASK_ELEMENT},
    {Renderer::Corona, "CMasking_ID", PassKind::Mask},
    {Renderer::Corona, "CMasking_WireColor", PassKind::WireColor},
    {Renderer::Corona, "CShading_Alpha", PassKind::Alpha},
    {Renderer::Corona, "CShading_Albedo|CShading_SourceColor", PassKind::Albedo},
    {Renderer::Corona, "CShading_Shadows", PassKind::Shadow},
    {Renderer::Corona, "CShading_Caustics", PassKind::Caustics},
    {Renderer::Corona, "CShading_LightSelect*|CShading_LightMix*", PassKind::LightGroup},
    {Renderer::Corona, "CShading_Beauty*|CShading_VirtualBeauty", PassKind::OtherColor,
     BEAUTY_ELEMENT},
    {Renderer::Corona, "CShading_Components|CShading_RawComponent|CTexmap", PassKind::OtherColor},
    // The application's own elements, and its G-Buffer channels.
    {Renderer::Max, "specular", PassKind::Specular, SPECULAR_ELEMENT},
    {Renderer::Max, "diffuse", PassKind::Diffuse, DIFFUSE_ELEMENT},
    {Renderer::Max, "self-illumination|self illumination|selfIllumination|emission",
     PassKind::Emission, SELF_ILLUMINATION_ELEMENT},
    {Renderer::Max, "reflection", PassKind::Reflection, REFLECTION_ELEMENT},
    {Renderer::Max, "refraction", PassKind::Refraction, REFRACTION_ELEMENT},
    {Renderer::Max, "shadow|shadows", PassKind::Shadow, SHADOW_ELEMENT},
    {Renderer::Max, "atmosphere", PassKind::Volume, ATMOSPHERE_ELEMENT},
    {Renderer::Max, "blend", PassKind::OtherColor, BLEND_ELEMENT},
    {Renderer::Max, "alpha", PassKind::Alpha, ALPHA_ELEMENT},
    {Renderer::Max, "Z", PassKind::Depth, Z_ELEMENT},
    {Renderer::Max, "background", PassKind::Background, BACKGROUND_ELEMENT},
    {Renderer::Max, "lighting", PassKind::DirectLight, LIGHTING_ELEMENT},
    {Renderer::Max, "matte", PassKind::Mask, MATTE_ELEMENT},
    {Renderer::Max, "vel|velocity", PassKind::Motion, VELOCITY_ELEMENT},
    {Renderer::Max, "materialID|material ID", PassKind::MaterialID, MATERIAL_ID_ELEMENT},
    {Renderer::Max, "objectID|object ID", PassKind::ObjectID, OBJECT_ID_ELEMENT},
    {Renderer::Max, "illuminance HDR data|illuminance", PassKind::OtherData, ILLUMINANCE_ELEMENT},
    {Renderer::Max, "Z depth|zDepth", PassKind::Depth, Z_ELEMENT, PassDetail::MappedDepth},
    {Renderer::Max, "N", PassKind::Normal, {}, PassDetail::CameraSpace},
    {Renderer::Max, "UV", PassKind::TextureCoordinates},
    {Renderer::Max, "renderID|nodeRenderID|coverage", PassKind::OtherData},
};

// What tells a renderer. The first sign that a file shows decides; strong ones come first.
struct RendererSign {
    enum class Where : std::uint8_t { AttributeName, AttributeText, LayerName } where;
    Renderer renderer;
    // A pattern; for the text of attributes ("Software"), a part of it.
    std::string_view text;
};

using Where = RendererSign::Where;

constexpr RendererSign rendererSigns[] = {
    {Where::LayerName, Renderer::VRay, "VRay*"},
    {Where::LayerName, Renderer::Corona, "CESSENTIAL_*"},
    {Where::LayerName, Renderer::Corona, "CGeometry_*"},
    {Where::LayerName, Renderer::Corona, "CMasking_*"},
    {Where::LayerName, Renderer::Corona, "CShading_*"},
    {Where::AttributeName, Renderer::Cycles, "BlenderMultiChannel"},
    {Where::AttributeName, Renderer::Cycles, "cycles.*"},
    {Where::AttributeName, Renderer::Arnold, "arnold/*"},
    {Where::AttributeName, Renderer::VRay, "vray*"},
    {Where::AttributeText, Renderer::Cycles, "Blender"},
    {Where::AttributeText, Renderer::Arnold, "Arnold"},
    {Where::AttributeText, Renderer::VRay, "V-Ray"},
    {Where::AttributeText, Renderer::Corona, "Corona"},
    // Names that nobody else uses.
    {Where::LayerName, Renderer::Cycles, "DiffCol"},
    {Where::LayerName, Renderer::Cycles, "DiffDir"},
    {Where::LayerName, Renderer::Cycles, "GlossCol"},
    {Where::LayerName, Renderer::Cycles, "GlossDir"},
    {Where::LayerName, Renderer::Cycles, "IndexOB"},
    {Where::LayerName, Renderer::Cycles, "IndexMA"},
    {Where::LayerName, Renderer::Cycles, "Diffuse Color"},
    {Where::LayerName, Renderer::Cycles, "Diffuse Direct"},
    {Where::LayerName, Renderer::Cycles, "Glossy Direct"},
    {Where::LayerName, Renderer::VRay, "rawGI"},
    {Where::LayerName, Renderer::VRay, "rawLight"},
    {Where::LayerName, Renderer::VRay, "selfIllum"},
    {Where::LayerName, Renderer::VRay, "reflectionFilter"},
    {Where::LayerName, Renderer::VRay, "MultiMatteElement*"},
    {Where::LayerName, Renderer::VRay, "GI"},
    {Where::LayerName, Renderer::Arnold, "*_albedo"},
    {Where::LayerName, Renderer::Arnold, "diffuse_direct"},
    {Where::LayerName, Renderer::Arnold, "diffuse_indirect"},
    {Where::LayerName, Renderer::Arnold, "specular_direct"},
    {Where::LayerName, Renderer::Arnold, "specular_indirect"},
    {Where::LayerName, Renderer::Arnold, "shadow_matte"},
    {Where::LayerName, Renderer::Arnold, "crypto_object*"},
    // V-Ray in Maya writes its camera so.
    {Where::AttributeName, Renderer::VRay, "cameraFov"},
    {Where::LayerName, Renderer::Max, "vel"},
    {Where::LayerName, Renderer::Max, "objectID"},
    {Where::LayerName, Renderer::Max, "materialID"},
};

struct KindName {
    PassKind kind;
    std::string_view name;
};

constexpr KindName kindNames[] = {
    {PassKind::OtherColor, "colour"},
    {PassKind::OtherData, "data"},
    {PassKind::DiffuseColor, "diffuse colour"},
    {PassKind::DiffuseDirect, "direct diffuse light without colour"},
    {PassKind::DiffuseIndirect, "indirect diffuse light without colour"},
    {PassKind::GlossyColor, "glossy colour"},
    {PassKind::GlossyDirect, "direct glossy light without colour"},
    {PassKind::GlossyIndirect, "indirect glossy light without colour"},
    {PassKind::TransmissionColor, "transmission colour"},
    {PassKind::TransmissionDirect, "direct transmitted light without colour"},
    {PassKind::TransmissionIndirect, "indirect transmitted light without colour"},
    {PassKind::SubsurfaceColor, "subsurface colour"},
    {PassKind::SubsurfaceDirect, "direct subsurface light without colour"},
    {PassKind::SubsurfaceIndirect, "indirect subsurface light without colour"},
    {PassKind::VolumeDirect, "direct light of volumes"},
    {PassKind::VolumeIndirect, "indirect light of volumes"},
    {PassKind::Diffuse, "diffuse light"},
    {PassKind::Specular, "specular light"},
    {PassKind::Coat, "coat"},
    {PassKind::Sheen, "sheen"},
    {PassKind::Reflection, "reflection"},
    {PassKind::Refraction, "refraction"},
    {PassKind::Transmission, "transmission"},
    {PassKind::Subsurface, "subsurface light"},
    {PassKind::Volume, "volume"},
    {PassKind::Emission, "emission"},
    {PassKind::Caustics, "caustics"},
    {PassKind::GlobalIllumination, "global illumination"},
    {PassKind::DirectLight, "direct light"},
    {PassKind::IndirectLight, "indirect light"},
    {PassKind::Background, "background"},
    {PassKind::LightGroup, "group of lights"},
    {PassKind::Albedo, "albedo"},
    {PassKind::AmbientOcclusion, "ambient occlusion"},
    {PassKind::Shadow, "shadow"},
    {PassKind::ShadowCatcher, "shadow catcher"},
    {PassKind::Alpha, "alpha"},
    {PassKind::Depth, "depth"},
    {PassKind::Mist, "mist"},
    {PassKind::Normal, "normals"},
    {PassKind::Position, "positions"},
    {PassKind::TextureCoordinates, "texture coordinates"},
    {PassKind::Motion, "motion"},
    {PassKind::ObjectID, "object IDs"},
    {PassKind::MaterialID, "material IDs"},
    {PassKind::WireColor, "wire colour"},
    {PassKind::Mask, "masks"},
    {PassKind::DenoisingData, "input of a denoiser"},
    {PassKind::SampleCount, "numbers of samples"},
};

constexpr std::string_view pictureNames[] = {"Combined", "RGBA",      "RGB",   "beauty", "c",
                                             "color",    "RGB color", "final", "image",  "master"};

// `pattern` has at most one "*".
bool Fits(std::string_view pattern, std::string_view name) {
    const std::size_t star = pattern.find('*');
    if (star == std::string_view::npos) return EqualIgnoringCase(pattern, name);
    const std::string_view before = pattern.substr(0, star);
    const std::string_view after = pattern.substr(star + 1);
    return name.size() >= before.size() + after.size() &&
           EqualIgnoringCase(before, name.substr(0, before.size())) &&
           EqualIgnoringCase(after, name.substr(name.size() - after.size()));
}

bool IsPattern(std::string_view name) {
    return name.find('*') != std::string_view::npos;
}

// Rows of one renderer, or all.
enum class Rows : std::uint8_t { OfRenderer, All };

// The row whose name it is, else the one with the longest pattern that fits.
const PassRow* FindRow(Rows which, Renderer renderer, std::string_view pass) {
    const PassRow* best = nullptr;
    std::size_t bestLength = 0;
    for (const PassRow& row : passRows) {
        if (which == Rows::OfRenderer && row.renderer != renderer) continue;
        for (std::string_view names = row.names; !names.empty();) {
            const std::string_view name = names.substr(0, names.find('|'));
            names.remove_prefix(std::min(names.size(), name.size() + 1));
            // A renderer's patterns are too wide for the files of others.
            if (IsPattern(name) && which == Rows::All) continue;
            if (!Fits(name, pass)) continue;
            if (!IsPattern(name)) return &row;
            if (name.size() > bestLength) {
                best = &row;
                bestLength = name.size();
            }
        }
    }
    return best;
}

const PassRow* FindRow(Renderer renderer, std::string_view pass) {
    if (pass.empty()) return nullptr;
    const PassRow* row = FindRow(Rows::OfRenderer, renderer, pass);
    if (!row) row = FindRow(Rows::OfRenderer, Renderer::Any, pass);
    return row ? row : FindRow(Rows::All, renderer, pass);
}

// "VRayReflection" of "VRayReflection_02"; the same text where no number is behind it.
std::string_view WithoutNumber(std::string_view pass) {
    const std::size_t last = pass.find_last_not_of("0123456789");
    if (last == std::string_view::npos || last + 1 == pass.size()) return pass;
    const std::size_t end = pass.substr(0, last + 1).find_last_not_of("_ .-#");
    return pass.substr(0, end == std::string_view::npos ? 0 : end + 1);
}

bool HasAttribute(const Description& file, const RendererSign& sign) {
    for (const Part& part : file.parts) {
        for (const Attribute& attribute : part.attributes) {
            if (sign.where == Where::AttributeName && Fits(sign.text, attribute.name)) return true;
            const auto* text = std::get_if<std::string>(&attribute.value);
            if (sign.where == Where::AttributeText && text &&
                EqualIgnoringCase(attribute.name.substr(attribute.name.rfind('/') + 1),
                                  "software") &&
                text->find(sign.text) != std::string::npos) {
                return true;
            }
        }
    }
    return false;
}

// By one of the name's ends at a dot: renderers put view layers in front.
bool HasLayer(const Description& file, std::string_view pattern) {
    for (const Layer& layer : file.layers) {
        std::string_view name = layer.name;
        while (!Fits(pattern, name)) {
            const std::size_t dot = name.find('.');
            if (dot == std::string_view::npos) break;
            name.remove_prefix(dot + 1);
        }
        if (Fits(pattern, name)) return true;
    }
    return false;
}

}  // namespace

Renderer RendererOf(const Description& file) {
    for (const RendererSign& sign : rendererSigns) {
        const bool shown =
            sign.where == Where::LayerName ? HasLayer(file, sign.text) : HasAttribute(file, sign);
        if (shown) return sign.renderer;
    }
    return Renderer::Any;
}

std::string_view NameOf(Renderer renderer) {
    constexpr std::string_view names[] = {"", "Cycles", "V-Ray", "Arnold", "Corona", "3ds Max"};
    return names[static_cast<std::size_t>(renderer)];
}

std::optional<PassMeaning> FindPass(Renderer renderer, std::string_view pass) {
    if (IsPictureName(pass)) return PassMeaning{PassKind::OtherColor, BEAUTY_ELEMENT};
    const PassRow* row = FindRow(renderer, pass);
    if (!row) row = FindRow(renderer, WithoutNumber(pass));
    if (!row) return std::nullopt;
    const bool hasClass = row->classID != Class_ID();
    return PassMeaning{row->kind, hasClass ? row->classID : PassClassID(row->kind), row->detail};
}

bool IsKnownPass(Renderer renderer, std::string_view pass) {
    return IsCryptomatteName(pass) || FindPass(renderer, pass).has_value();
}

bool IsPictureName(std::string_view pass) {
    return std::any_of(std::begin(pictureNames), std::end(pictureNames),
                       [&](std::string_view name) { return EqualIgnoringCase(name, pass); });
}

bool IsCryptomatteName(std::string_view pass) {
    const std::string lower = AsciiLower(pass);
    return lower.starts_with("crypto") || lower.find("cryptomatte") != std::string::npos;
}

bool IsData(PassKind kind) {
    return kind == PassKind::OtherData || kind >= PassKind::Alpha;
}

std::string_view NameOf(PassKind kind) {
    const auto* found = std::find_if(std::begin(kindNames), std::end(kindNames),
                                     [&](const KindName& each) { return each.kind == kind; });
    return found == std::end(kindNames) ? std::string_view() : found->name;
}

}  // namespace command

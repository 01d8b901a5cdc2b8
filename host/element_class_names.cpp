#include "host/element_class_names.h"

#include <elementclasses.h>
#include <vrayelements.h>

#include <algorithm>

namespace host {
namespace {

struct NamedClass {
    std::string_view name;
    Class_ID id;
};

constexpr NamedClass applicationClasses[] = {
    {"Beauty Element", BEAUTY_ELEMENT},
    {"Specular Element", SPECULAR_ELEMENT},
    {"Diffuse Element", DIFFUSE_ELEMENT},
    {"Self-Illumination Element", SELF_ILLUMINATION_ELEMENT},
    {"Reflection Element", REFLECTION_ELEMENT},
    {"Refraction Element", REFRACTION_ELEMENT},
    {"Shadow Element", SHADOW_ELEMENT},
    {"Atmosphere Element", ATMOSPHERE_ELEMENT},
    {"Blend Element", BLEND_ELEMENT},
    {"Z Element", Z_ELEMENT},
    {"Alpha Element", ALPHA_ELEMENT},
    {"Background Element", BACKGROUND_ELEMENT},
    {"Lighting Element", LIGHTING_ELEMENT},
    {"Matte Element", MATTE_ELEMENT},
    {"Velocity Element", VELOCITY_ELEMENT},
    {"Material ID Element", MATERIAL_ID_ELEMENT},
    {"Object ID Element", OBJECT_ID_ELEMENT},
    {"Illuminance Element", ILLUMINANCE_ELEMENT},
    {"Corona Mask", CORONA_MASK_ELEMENT},
};

constexpr NamedClass Pass(std::string_view name, PassKind kind) {
    return {name, PassClassID(kind)};
}

constexpr NamedClass passClasses[] = {
    Pass("OtherColor", PassKind::OtherColor),
    Pass("OtherData", PassKind::OtherData),
    Pass("DiffuseColor", PassKind::DiffuseColor),
    Pass("DiffuseDirect", PassKind::DiffuseDirect),
    Pass("DiffuseIndirect", PassKind::DiffuseIndirect),
    Pass("GlossyColor", PassKind::GlossyColor),
    Pass("GlossyDirect", PassKind::GlossyDirect),
    Pass("GlossyIndirect", PassKind::GlossyIndirect),
    Pass("TransmissionColor", PassKind::TransmissionColor),
    Pass("TransmissionDirect", PassKind::TransmissionDirect),
    Pass("TransmissionIndirect", PassKind::TransmissionIndirect),
    Pass("SubsurfaceColor", PassKind::SubsurfaceColor),
    Pass("SubsurfaceDirect", PassKind::SubsurfaceDirect),
    Pass("SubsurfaceIndirect", PassKind::SubsurfaceIndirect),
    Pass("VolumeDirect", PassKind::VolumeDirect),
    Pass("VolumeIndirect", PassKind::VolumeIndirect),
    Pass("Diffuse", PassKind::Diffuse),
    Pass("Specular", PassKind::Specular),
    Pass("Coat", PassKind::Coat),
    Pass("Sheen", PassKind::Sheen),
    Pass("Reflection", PassKind::Reflection),
    Pass("Refraction", PassKind::Refraction),
    Pass("Transmission", PassKind::Transmission),
    Pass("Subsurface", PassKind::Subsurface),
    Pass("Volume", PassKind::Volume),
    Pass("Emission", PassKind::Emission),
    Pass("Caustics", PassKind::Caustics),
    Pass("GlobalIllumination", PassKind::GlobalIllumination),
    Pass("DirectLight", PassKind::DirectLight),
    Pass("IndirectLight", PassKind::IndirectLight),
    Pass("Background", PassKind::Background),
    Pass("LightGroup", PassKind::LightGroup),
    Pass("Albedo", PassKind::Albedo),
    Pass("AmbientOcclusion", PassKind::AmbientOcclusion),
    Pass("Shadow", PassKind::Shadow),
    Pass("ShadowCatcher", PassKind::ShadowCatcher),
    Pass("Alpha", PassKind::Alpha),
    Pass("Depth", PassKind::Depth),
    Pass("Mist", PassKind::Mist),
    Pass("Normal", PassKind::Normal),
    Pass("Position", PassKind::Position),
    Pass("TextureCoordinates", PassKind::TextureCoordinates),
    Pass("Motion", PassKind::Motion),
    Pass("ObjectID", PassKind::ObjectID),
    Pass("MaterialID", PassKind::MaterialID),
    Pass("WireColor", PassKind::WireColor),
    Pass("Mask", PassKind::Mask),
    Pass("DenoisingData", PassKind::DenoisingData),
    Pass("SampleCount", PassKind::SampleCount),
};

std::vector<NamedClass> NamedClasses() {
    std::vector<NamedClass> classes(std::begin(passClasses), std::end(passClasses));
    classes.insert(classes.end(), std::begin(applicationClasses), std::end(applicationClasses));
    for (const VRayElementClass& each : VRAY_ELEMENT_CLASSES) {
        const std::string_view name = each.name;
        if (!name.empty()) classes.push_back({name, each.id});
    }
    return classes;
}

}  // namespace

std::optional<Class_ID> ElementClassOf(std::string_view name) {
    const std::vector<NamedClass> classes = NamedClasses();
    const auto found = std::find_if(classes.begin(), classes.end(),
                                    [&](const NamedClass& each) { return each.name == name; });
    if (found == classes.end()) return std::nullopt;
    return found->id;
}

std::string_view ElementClassName(const Class_ID& id) {
    const std::vector<NamedClass> classes = NamedClasses();
    const auto found = std::find_if(classes.begin(), classes.end(),
                                    [&](const NamedClass& each) { return each.id == id; });
    return found == classes.end() ? std::string_view() : found->name;
}

std::vector<std::string> ElementClassNames() {
    std::vector<std::string> names;
    for (const NamedClass& each : NamedClasses())
        names.emplace_back(each.name);
    return names;
}

}  // namespace host

#include "command/raw_groups.h"

#include <vrayelements.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <string>
#include <string_view>

namespace command {
namespace {

struct RawGroup {
    PassKind color;
    PassKind direct;
    PassKind indirect;
};

constexpr RawGroup groups[] = {
    {PassKind::DiffuseColor, PassKind::DiffuseDirect, PassKind::DiffuseIndirect},
    {PassKind::GlossyColor, PassKind::GlossyDirect, PassKind::GlossyIndirect},
    {PassKind::TransmissionColor, PassKind::TransmissionDirect, PassKind::TransmissionIndirect},
    {PassKind::SubsurfaceColor, PassKind::SubsurfaceDirect, PassKind::SubsurfaceIndirect},
};

using Members = std::map<PassKind, PassElement*>;

void ChangeKind(PassPlan& plan, PassElement& element, PassKind kind) {
    std::string& becomes = plan.becomes[element.layer];
    const std::string old = "(" + std::string(NameOf(element.kind)) + ")";
    if (const std::size_t at = becomes.find(old); at != std::string::npos) {
        becomes.replace(at, old.size(), "(" + std::string(NameOf(kind)) + ")");
    }
    element.kind = kind;
    element.classID = PassClassID(kind);
}

void Mend(PassPlan& plan, const RawGroup& group, const Members& members) {
    const auto find = [&](PassKind kind) {
        const auto found = members.find(kind);
        return found == members.end() ? nullptr : found->second;
    };
    PassElement* color = find(group.color);
    PassElement* direct = find(group.direct);
    PassElement* indirect = find(group.indirect);
    if (color && !direct && !indirect) ChangeKind(plan, *color, PassKind::Albedo);
    if (color && direct && !indirect) ChangeKind(plan, *direct, group.indirect);
    if (color) return;
    for (PassElement* light : {direct, indirect}) {
        if (light) ChangeKind(plan, *light, PassKind::OtherColor);
    }
}

// "Back/right/" of "Back/right/DiffDir".
std::string ViewOf(const PassElement& element) {
    return element.name.substr(0, element.name.rfind('/') + 1);
}

constexpr const char* finishedLight[] = {"VRayLighting", "VRayGlobalIllumination"};
constexpr const char* rawLight[] = {"VRayRawLighting", "VRayRawGlobalIllumination",
                                    "VRayDiffuseFilter"};

bool IsOf(const PassElement& element, std::string_view vrayName) {
    return std::any_of(std::begin(VRAY_ELEMENT_CLASSES), std::end(VRAY_ELEMENT_CLASSES),
                       [&](const VRayElementClass& each) {
                           return each.name == vrayName && each.id == element.classID;
                       });
}

void MarkDoublesOfVRay(PassPlan& plan) {
    const bool finished =
        std::all_of(std::begin(finishedLight), std::end(finishedLight), [&](const char* name) {
            return std::any_of(plan.elements.begin(), plan.elements.end(),
                               [&](const PassElement& each) { return IsOf(each, name); });
        });
    if (!finished) return;
    for (PassElement& element : plan.elements) {
        for (const char* name : rawLight)
            element.isDouble = element.isDouble || IsOf(element, name);
    }
}

}  // namespace

void MendRawGroups(PassPlan& plan) {
    MarkDoublesOfVRay(plan);
    std::map<std::string, Members> views;
    for (PassElement& element : plan.elements) {
        if (element.classID == PassClassID(element.kind)) {
            views[ViewOf(element)].try_emplace(element.kind, &element);
        }
    }
    for (const auto& [view, members] : views) {
        for (const RawGroup& group : groups)
            Mend(plan, group, members);
    }
}

}  // namespace command

#include "command/raw_groups.h"

#include <map>
#include <string>

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

}  // namespace

void MendRawGroups(PassPlan& plan) {
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

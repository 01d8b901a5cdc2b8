#include "host/saved_value_types.h"

#include <algorithm>
#include <array>

namespace host {
namespace {

struct NamedType {
    std::string_view name;
    ParamType2 type;
};

constexpr std::array<NamedType, 8> namedTypes{{{"float", TYPE_FLOAT},
                                               {"int", TYPE_INT},
                                               {"bool", TYPE_BOOL},
                                               {"fraction", TYPE_PCNT_FRAC},
                                               {"text", TYPE_STRING},
                                               {"file", TYPE_FILENAME},
                                               {"node", TYPE_INODE},
                                               {"target", TYPE_REFTARG}}};

}  // namespace

std::string_view NameOfParameterType(ParamType2 type) {
    const auto* found =
        std::find_if(namedTypes.begin(), namedTypes.end(),
                     [&](const NamedType& each) { return each.type == (type & ~TYPE_TAB); });
    return found == namedTypes.end() ? std::string_view() : found->name;
}

std::optional<ParamType2> ParameterTypeNamed(std::string_view name) {
    const auto* found = std::find_if(namedTypes.begin(), namedTypes.end(),
                                     [&](const NamedType& each) { return each.name == name; });
    return found == namedTypes.end() ? std::nullopt : std::optional(found->type);
}

std::string ParameterTypeNames() {
    std::string names;
    for (const NamedType& each : namedTypes)
        names += (names.empty() ? "" : ", ") + std::string(each.name);
    return names;
}

}  // namespace host

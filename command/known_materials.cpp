#include "command/known_materials.h"

#include <cstddef>
#include <optional>

namespace command {
namespace {

// The one index among the ranks that cover anything; nothing when there are none or several.
std::optional<std::uint16_t> Only(std::span<const Rank> ranks, std::uint16_t none) {
    std::optional<std::uint16_t> only;
    for (const Rank& rank : ranks) {
        if (!Covers(rank, none)) continue;
        if (only && *only != rank.index) return std::nullopt;
        only = rank.index;
    }
    return only;
}

}  // namespace

void KnownMaterials::Learn(std::span<const Rank> objects, std::span<const Rank> materials) {
    if (const auto object = Only(objects, noObject)) {
        for (const Rank& material : materials) {
            if (Covers(material, noMaterial)) Add(*object, material.index);
        }
    } else if (const auto material = Only(materials, noMaterial)) {
        for (const Rank& each : objects) {
            if (Covers(each, noObject)) Add(each.index, *material);
        }
    }
}

void KnownMaterials::Add(std::uint16_t object, std::uint16_t material) {
    if (material > mostMaterials) return;
    if (object >= materialsOf.size()) materialsOf.resize(std::size_t{object} + 1);
    materialsOf[object][material / 64] |= std::uint64_t{1} << (material % 64);
}

}  // namespace command

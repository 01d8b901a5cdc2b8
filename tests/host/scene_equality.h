// When two descriptions of a scene are the same, for tests; paths don't count. Transforms are the
// same when the application keeps them as the same floats.
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <tuple>

#include "host/scene_description.h"

namespace host {

inline bool operator==(const SavedReference& a, const SavedReference& b) {
    return a.target == b.target;
}

// Floats by their bits, so that NaN is itself.
inline bool SameValue(const SavedValue& a, const SavedValue& b) {
    const auto* left = std::get_if<float>(&a);
    const auto* right = std::get_if<float>(&b);
    if (left && right)
        return std::bit_cast<std::uint32_t>(*left) == std::bit_cast<std::uint32_t>(*right);
    return a == b;
}

inline bool operator==(const SavedAppData& a, const SavedAppData& b) {
    return std::tie(a.owner, a.ownerSuperClass, a.subID, a.bytes) ==
           std::tie(b.owner, b.ownerSuperClass, b.subID, b.bytes);
}

inline bool operator==(const SavedChunk& a, const SavedChunk& b) {
    return std::tie(a.id, a.bytes, a.chunks) == std::tie(b.id, b.bytes, b.chunks);
}

inline bool operator==(const SavedParameter& a, const SavedParameter& b) {
    return a.id == b.id && a.type == b.type &&
           std::equal(a.values.begin(), a.values.end(), b.values.begin(), b.values.end(),
                      SameValue);
}

inline bool operator==(const SavedBlock& a, const SavedBlock& b) {
    return std::tie(a.id, a.version, a.parameters) == std::tie(b.id, b.version, b.parameters);
}

inline bool operator==(const SavedObject& a, const SavedObject& b) {
    return std::tie(a.handle, a.superClass, a.classID, a.chunks, a.appData, a.references) ==
           std::tie(b.handle, b.superClass, b.classID, b.chunks, b.appData, b.references);
}

inline bool SameTransform(const std::optional<std::array<double, 16>>& a,
                          const std::optional<std::array<double, 16>>& b) {
    if (!a || !b) return a.has_value() == b.has_value();
    return std::equal(a->begin(), a->end(), b->begin(), [](double left, double right) {
        return std::bit_cast<std::uint32_t>(static_cast<float>(left)) ==
               std::bit_cast<std::uint32_t>(static_cast<float>(right));
    });
}

inline bool operator==(const SceneNode& a, const SceneNode& b) {
    const auto fields = [](const SceneNode& node) {
        return std::tie(node.handle, node.name, node.id, node.kind, node.objectID, node.hidden,
                        node.parent, node.children, node.groupHead, node.groupMember,
                        node.properties, node.view, node.appData);
    };
    return fields(a) == fields(b) && SameTransform(a.transform, b.transform);
}

inline bool operator==(const SceneLayerDescription& a, const SceneLayerDescription& b) {
    return std::tie(a.handle, a.name, a.hidden, a.parent, a.nodes, a.appData) ==
           std::tie(b.handle, b.name, b.hidden, b.parent, b.nodes, b.appData);
}

inline bool operator==(const SceneSet& a, const SceneSet& b) {
    return std::tie(a.name, a.nodes) == std::tie(b.name, b.nodes);
}

inline bool operator==(const SceneMatte& a, const SceneMatte& b) {
    return std::tie(a.id, a.isMaterial, a.nodes, a.include) ==
           std::tie(b.id, b.isMaterial, b.nodes, b.include);
}

inline bool operator==(const SceneNumber& a, const SceneNumber& b) {
    return a.id == b.id && a.value == b.value;
}

inline bool operator==(const SceneRenderer& a, const SceneRenderer& b) {
    return a.rendererClass == b.rendererClass && a.parameters == b.parameters &&
           a.sampler == b.sampler;
}

inline bool operator==(const SceneElement& a, const SceneElement& b) {
    const auto fields = [](const SceneElement& element) {
        return std::tie(element.handle, element.name, element.elementClass, element.enabled,
                        element.draft, element.multiMatte, element.parameters, element.appData);
    };
    return fields(a) == fields(b);
}

inline bool operator==(const SceneRender& a, const SceneRender& b) {
    const auto fields = [](const SceneRender& render) {
        return std::tie(render.hidden, render.camera, render.frameRate, render.width, render.height,
                        render.output, render.saveFile, render.timeType, render.numberBase,
                        render.effects, render.draft, render.renderer);
    };
    return fields(a) == fields(b);
}

inline bool operator==(const SceneDescription& a, const SceneDescription& b) {
    return std::tie(a.nodes, a.layers, a.selectionSets, a.elements, a.render, a.objects,
                    a.effects) ==
           std::tie(b.nodes, b.layers, b.selectionSets, b.elements, b.render, b.objects, b.effects);
}

}  // namespace host

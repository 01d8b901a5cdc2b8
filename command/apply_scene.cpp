#include "command/apply_scene.h"

#include <iparamb2.h>

#include "command/host_transform.h"
#include "host/text.h"

namespace command {
namespace {

using Nodes = std::vector<host::Node*>;

Nodes NodesOf(const std::vector<std::size_t>& indices, const Nodes& nodes) {
    Nodes chosen;
    chosen.reserve(indices.size());
    for (const std::size_t index : indices)
        chosen.push_back(nodes[index]);
    return chosen;
}

host::NodeKind KindOf(NodeKind kind) {
    switch (kind) {
        case NodeKind::Object:
            return host::NodeKind::Geometry;
        case NodeKind::Camera:
            return host::NodeKind::Camera;
        case NodeKind::Light:
            return host::NodeKind::Light;
        case NodeKind::Helper:
            break;
    }
    return host::NodeKind::PointHelper;
}

void ApplyNode(const SceneNode& description, host::Node& node) {
    if (description.id) node.SetRenderID(static_cast<USHORT>(*description.id));
    node.SetObjectID(static_cast<UWORD>(description.objectID));
    node.SetHidden(description.hidden);
    node.SetGroupHead(description.groupHead);
    node.SetGroupMember(description.groupMember);
    node.SetUserProperties(host::FromUtf8(description.properties));
    node.SetKind(KindOf(description.kind));
    node.SetTransform(description.transform ? HostTransform(*description.transform) : Matrix3());
}

bool ApplyNodeTable(const Setting& setting, const host::Scene& scene, IParamBlock2& block) {
    const ParamID id = setting.row->id;
    block.SetCount(id, 0);
    for (const std::string& name : std::get<std::vector<std::string>>(setting.value)) {
        ReferenceTarget* node = scene.FindNode(host::FromUtf8(name));
        if (node && block.Append(id, 1, &node) < 0) return false;
    }
    return true;
}

}  // namespace

std::vector<host::Node*> ApplyScene(const SceneDescription& description, host::Scene& scene) {
    Nodes nodes;
    nodes.reserve(description.nodes.size());
    for (const SceneNode& each : description.nodes) {
        const MSTR name = host::FromUtf8(each.name);
        host::Node* node = scene.FindNode(name);
        if (!node) node = &scene.AddNode(name);
        ApplyNode(each, *node);
        nodes.push_back(node);
    }
    // Old parents go first, so that no order of the new ones makes a circle.
    for (host::Node* node : nodes)
        node->SetParent(nullptr);
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const auto parent = description.nodes[i].parent;
        if (parent) nodes[i]->SetParent(nodes[*parent]);
    }

    std::vector<host::SceneLayer*> layers;
    layers.reserve(description.layers.size());
    for (const SceneLayerDescription& each : description.layers) {
        const MSTR name = host::FromUtf8(each.name);
        host::SceneLayer* layer = scene.FindLayer(name);
        if (!layer) layer = &scene.AddLayer(name);
        layer->SetHidden(each.hidden);
        for (const std::size_t node : each.nodes)
            nodes[node]->SetLayer(layer);
        layers.push_back(layer);
    }
    for (host::SceneLayer* layer : layers)
        layer->SetParent(nullptr);
    for (std::size_t i = 0; i < layers.size(); ++i) {
        const auto parent = description.layers[i].parent;
        if (parent) layers[i]->SetParent(layers[*parent]);
    }

    for (const SceneSet& set : description.selectionSets) {
        scene.AddSelectionSet(host::FromUtf8(set.name), NodesOf(set.nodes, nodes));
    }
    return nodes;
}

bool ApplyParameters(const SceneDescription& description, const host::Scene& scene,
                     IParamBlock2& block) {
    bool all = true;
    for (const Setting& setting : description.parameters) {
        const bool isNodes = setting.row->type == parameters::Type::NodeTable;
        all &= isNodes ? ApplyNodeTable(setting, scene, block) : Apply(setting, block);
    }
    return all;
}

}  // namespace command

#include "command/turn_on_all.h"

#include <algorithm>
#include <utility>

namespace command {

void TurnOnAll(Session& session, const PassPlan& plan, const SceneDescription* scene) {
    const bool deepObjects = plan.deep && plan.deep->objectID;
    const bool deepMaterials = plan.deep && plan.deep->materialID;
    const bool objectNumbersInFile = plan.objectID.has_value() || deepObjects;
    const bool materials = plan.materialMatte || plan.materialID || deepMaterials;
    const bool numberedNodes =
        scene && std::any_of(scene->nodes.begin(), scene->nodes.end(),
                             [](const auto& node) { return node.objectID > 0; });
    const std::pair<const char*, bool> outputs[] = {
        {"createRenderElementLayers", true},
        {"outputObjects", plan.objectMatte.has_value()},
        {"outputNodeIDs",
         (objectNumbersInFile && !plan.objectMatte) || session.IsGiven("nodeIDList")},
        {"outputMtlIDs", materials},
        {"outputSceneLayers", scene && !scene->layers.empty() && plan.objectMatte},
        {"outputNamedSelectionSets", scene && !scene->selectionSets.empty() && plan.objectMatte},
        {"createNodeIDLayer", objectNumbersInFile || (numberedNodes && plan.objectMatte)},
        {"createMtlIDLayer", materials},
        {"createNodeRenderIDLayer", plan.objectMatte.has_value()},
        {"createNormalLayer", plan.normals.has_value()},
        // A layer of it would lie over the passes and change what the document looks like.
        {"createZDepthChannel", plan.HasDistances()},
    };
    for (const auto& [name, isThere] : outputs) {
        if (isThere) session.SetUnlessGiven(name, "true");
    }
}

}  // namespace command

#include "effect/layer_stack.h"

#include <iparamb2.h>

#include <algorithm>
#include <vector>

#include "effect/background_layer.h"
#include "effect/custom_layer_sets.h"
#include "effect/depth_group.h"
#include "effect/gbuffer_layers.h"
#include "effect/id_groups.h"
#include "effect/object_groups.h"
#include "effect/render_elements.h"
#include "effect/render_output_layer.h"
#include "effect/scene_sync.h"
#include "effect/shadows_group.h"
#include "effect/sync_render_elements.h"
#include "plugin/parameters.h"

namespace effect {
namespace {

void SyncElements(const Frame& frame) {
    SyncRenderElements(frame.effect, LayerListOf(frame.gc));
}
void SyncSets(const Frame& frame) {
    SyncSelectionSets(frame.pblock);
}
void CleanupObjects(const Frame& frame) {
    CleanupDeletedObjects(frame.pblock);
}

void AddDepthLayer(psdbuilder::PSDBuilder& builder, const Frame& frame) {
    constexpr bool asLayer = true;
    AddDepthGroup(builder, frame, asLayer);
}

bool IsOn(const StackRow& row, const Frame& frame) {
    return !row.enabling || frame.pblock.GetInt(*row.enabling);
}

}  // namespace

std::span<const StackRow> StackRows() {
    static constexpr StackRow rows[] = {
        {"customLayerSet1Order"_param, "customLayerSet1"_param, AddLayerSet1},
        {"customLayerSet2Order"_param, "customLayerSet2"_param, AddLayerSet2},
        {"customLayerSet3Order"_param, "customLayerSet3"_param, AddLayerSet3},
        {"renderOrder"_param, "createRenderOutputLayer"_param, AddRenderOutputLayer},
        {"renderElementsOrder"_param, "createRenderElementLayers"_param, AddRenderElementsGroup,
         SyncElements},
        {"maxLayersOrder"_param, "outputSceneLayers"_param, AddSceneLayersGroup},
        {"namedSelectionSetsOrder"_param, "outputNamedSelectionSets"_param, AddSelectionSetsGroup,
         SyncSets},
        {"nodeIDsOrder"_param, "outputNodeIDs"_param, AddObjectIDGroup},
        {"mtlIDsOrder"_param, "outputMtlIDs"_param, AddMaterialIDGroup},
        {"objectsOrder"_param, "outputObjects"_param, AddObjectsGroup, CleanupObjects},
        {"gbufferOrder"_param, {}, AddGBufferLayers},
        {"depthLayerOrder"_param, "depthLayer"_param, AddDepthLayer},
        {"shadowPassLayerOrder"_param, {}, AddShadowsGroup},
        {"backgroundLayerOrder"_param, "backgroundLayer"_param, AddBackgroundLayer},
    };
    return rows;
}

void RunLayerStack(psdbuilder::PSDBuilder& builder, const Frame& frame,
                   std::span<const StackRow> rows) {
    struct Placed {
        int position;
        const StackRow* row;
    };
    std::vector<Placed> stack;
    for (const StackRow& row : rows) {
        stack.push_back({ClampPosition(frame.pblock.GetInt(row.position)), &row});
    }
    std::stable_sort(stack.begin(), stack.end(), [](const Placed& left, const Placed& right) {
        return left.position < right.position;
    });
    for (const Placed& placed : stack) {
        if (placed.row->prepare) placed.row->prepare(frame);
        if (IsOn(*placed.row, frame)) placed.row->build(builder, frame);
    }
}

}  // namespace effect

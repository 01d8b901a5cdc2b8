#include "ui/output_as_groups.h"

#include <iparamb2.h>

#include "plugin/parameters.h"

namespace ui {
namespace {

constexpr int outputAsChannels = 0;

constexpr OutputAsGroup outputAsGroups[] = {
    {2, "outputNodeIDs"_param, "outputNodeIDsAs"_param, 1096, 1105, 1010},
    {2, "outputMtlIDs"_param, "outputMtlIDsAs"_param, 1098, 1106, 1009},
    {2, "outputObjects"_param, "outputObjectsAs"_param, 1095, 1109, 1007},
    {5, "outputSceneLayers"_param, "outputSceneLayersAs"_param, 1151, 1152, 1150},
    {7, "outputNamedSelectionSets"_param, "outputNamedSelectionSetsAs"_param, 1188, 1190, 1189},
};

}  // namespace

std::span<const OutputAsGroup> OutputAsGroups() {
    return outputAsGroups;
}

const OutputAsGroup* OutputAsGroupOf(ParamID output) {
    for (const OutputAsGroup& group : outputAsGroups) {
        if (group.output == output) return &group;
    }
    return nullptr;
}

OutputAsControls ShowOutputAs(IParamBlock2& pblock, const OutputAsGroup& group) {
    return {.enabled = pblock.GetInt(group.output) != FALSE,
            .folderShown = pblock.GetInt(group.outputAs) != outputAsChannels};
}

}  // namespace ui

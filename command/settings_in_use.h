// Which parameters the effect acts on. Setting any other one, which only old scenes hold, saves a
// document that doesn't show it, and that must not pass without a word.
#pragma once

#include <algorithm>
#include <array>
#include <string_view>

namespace command {

inline constexpr auto settingsInUse = std::to_array<std::string_view>({
    // The document.
    "filename",
    "matchRenderOutputFilename",
    "fileFormat",
    "compression",
    "bitDepth",
    "resolution",
    "compatibility",
    // The picture.
    "createRenderOutputLayer",
    "outputRenderAs",
    "renderOutputLayerName",
    "renderOrder",
    "premultipliedAlpha",
    "renderSRGBCorrect",
    "gammaCorrectRender",
    "gammaCorrectConfig",
    "vrayColorCorrections",
    "colorCorrectConfig",
    "createCurvesAdjustmentLayer",
    "curvesAdjustmentLayerName",
    // Render elements.
    "createRenderElementLayers",
    "renderElementsOrder",
    "createRenderElementsLayerSet",
    "renderElementsLayerSetName",
    "createRenderElementsLayerSetMaskFromAlpha",
    "autoSort",
    "saveDenoiserExtraChannels",
    // Scene layers.
    "outputSceneLayers",
    "outputSceneLayersAs",
    "outputSceneLayersLayerGroup",
    "sceneLayersLayerSetName",
    "maxLayersOrder",
    "sceneLayerAppDataChunkId",
    // Selection sets.
    "outputNamedSelectionSets",
    "outputNamedSelectionSetsAs",
    "createNamedSelectionSetsLayerSet",
    "namedSelectionSetsLayerSetName",
    "namedSelectionSetsList",
    "namedSelectionSetsOrder",
    // Object IDs.
    "outputNodeIDs",
    "outputNodeIDsAs",
    "outputNodeIDsLayerSet",
    "nodeIDList",
    "nodeIdsLayerSetName",
    "nodeIDsOrder",
    // Material IDs.
    "outputMtlIDs",
    "outputMtlIDsAs",
    "outputMtlIDsLayerSet",
    "mtlIDList",
    "mtlIDsLayerSetName",
    "mtlIDsOrder",
    // Objects.
    "outputObjects",
    "outputObjectsAs",
    "outputObjectsLayerSet",
    "objectList",
    "objectsLayerSetName",
    "objectsOrder",
    // G-Buffer layers.
    "createNodeIDLayer",
    "createMtlIDLayer",
    "createNodeRenderIDLayer",
    "createNormalLayer",
    "createNonClampedColorLayer",
    "createGBufferLayerSet",
    "gbufferLayerSetName",
    "gbufferObjectIdLayerName",
    "gbufferMaterialIdLayerName",
    "gbufferOrder",
    // The camera and helpers.
    "embedCameraInfo",
    "embedHelpersInfo",
    "embedHelpersWildcard",
    // Depth.
    "depthLayer",
    "depthLayerName",
    "depthLayerOrder",
    "createZDepthChannel",
    "zDepthChannelName",
    "zDepthCoverageThreshold",
    "zDepthExtendToBack",
    // Shadows, background, sets to fill by hand.
    "shadowPassSource",
    "shadowPassLayerStyle",
    "shadowPassLayerOrder",
    "shadowPassLayerName",
    "backgroundLayer",
    "backgroundLayerName",
    "backgroundLayerOrder",
    "customLayerSet1",
    "customLayerSet1Name",
    "customLayerSet1Order",
    "customLayerSet1OpenInUI",
    "customLayerSet1Visible",
    "customLayerSet2",
    "customLayerSet2Name",
    "customLayerSet2Order",
    "customLayerSet2OpenInUI",
    "customLayerSet2Visible",
    "customLayerSet2MaskFromRenderAlpha",
    "customLayerSet3",
    "customLayerSet3Name",
    "customLayerSet3Order",
    "customLayerSet3OpenInUI",
    "customLayerSet3Visible",
    // Mattes and what is empty.
    "matteLayersVisible",
    "filterEmptyMattes",
    "filterEmptyRenderElements",
    "filterEmptyLayerSets",
    "filterEmptyLayersAndChannelsForAnimations",
});

constexpr bool IsSettingInUse(std::string_view name) {
    return std::find(settingsInUse.begin(), settingsInUse.end(), name) != settingsInUse.end();
}

}  // namespace command

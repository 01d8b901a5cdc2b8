// Which parameters the effect acts on in this version. Setting any other one saves a document that
// doesn't show it, and that must not pass without a word.
#pragma once

#include <algorithm>
#include <array>
#include <string_view>

namespace command {

inline constexpr auto settingsInUse = std::to_array<std::string_view>({
    "filename",
    "matchRenderOutputFilename",
    "fileFormat",
    "compression",
    "bitDepth",
    "resolution",
    "compatibility",
    "createRenderOutputLayer",
    "outputRenderAs",
    "renderOutputLayerName",
    "renderOrder",
    "premultipliedAlpha",
    "renderSRGBCorrect",
    "gammaCorrectRender",
    "gammaCorrectConfig",
});

constexpr bool IsSettingInUse(std::string_view name) {
    return std::find(settingsInUse.begin(), settingsInUse.end(), name) != settingsInUse.end();
}

}  // namespace command

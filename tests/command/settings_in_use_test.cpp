#include "command/settings_in_use.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "plugin/entry.h"

namespace command {
namespace {

// Settings of layers that aren't made yet and of what isn't embedded, corrections of colours that
// no frame buffer here has, and parameters that only old scenes hold.
constexpr std::string_view withoutEffect[] = {
    "layersProduction",
    "layersSecondary",
    "unnamed27",
    "renderSetting",
    "usePS7Extensions",
    "embedCameraInfo",
    "embedHelpersInfo",
    "embedHelpersWildcard",
    "unnamed37",
    "legacyBitDepth",
    "legacyGammaAll",
    "vrayColorCorrections",
    "colorCorrectConfig",
    "unnamed61",
    "unnamed62",
    "unnamed89",
    "unnamed90",
    "shadowPassSource",
    "shadowPassLayerStyle",
    "shadowPassLayerOrder",
    "shadowPassLayerName",
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
    "createZDepthChannel",
    "zDepthCoverageThreshold",
    "zDepthExtendToBack",
    "zDepthChannelName",
    "createCurvesAdjustmentLayer",
    "curvesAdjustmentLayerName",
    "backgroundLayer",
    "backgroundLayerName",
    "backgroundLayerOrder",
    "depthLayer",
    "depthLayerName",
    "depthLayerOrder",
};

TEST(SettingsInUse, WithThoseWithoutEffectTheyAreAllParametersEachOnce) {
    std::multiset<std::string_view> known(settingsInUse.begin(), settingsInUse.end());
    known.insert(std::begin(withoutEffect), std::end(withoutEffect));
    std::multiset<std::string_view> parameters;
    for (const parameters::Row& row : plugin::EffectParameters())
        parameters.insert(row.name);
    EXPECT_THAT(known, testing::ContainerEq(parameters));
}

TEST(SettingsInUse, AreFoundByName) {
    EXPECT_TRUE(IsSettingInUse("bitDepth"));
    EXPECT_TRUE(IsSettingInUse("autoSort"));
    EXPECT_TRUE(IsSettingInUse("namedSelectionSetsOrder"));
    EXPECT_FALSE(IsSettingInUse("depthLayer"));
    EXPECT_FALSE(IsSettingInUse("bitdepth"));
}

}  // namespace
}  // namespace command

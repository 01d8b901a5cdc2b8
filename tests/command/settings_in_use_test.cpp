#include "command/settings_in_use.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "plugin/entry.h"

namespace command {
namespace {

// Lists that the command fills itself, and parameters that only old scenes hold.
constexpr std::string_view withoutEffect[] = {
    "layersProduction", "layersSecondary", "unnamed27",      "renderSetting",
    "usePS7Extensions", "unnamed37",       "legacyBitDepth", "legacyGammaAll",
    "unnamed61",        "unnamed62",       "unnamed89",      "unnamed90",
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
    EXPECT_TRUE(IsSettingInUse("depthLayer"));
    EXPECT_FALSE(IsSettingInUse("usePS7Extensions"));
    EXPECT_FALSE(IsSettingInUse("bitdepth"));
}

}  // namespace
}  // namespace command

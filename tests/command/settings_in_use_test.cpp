#include "command/settings_in_use.h"

#include <gtest/gtest.h>

#include "plugin/entry.h"

namespace command {
namespace {

TEST(SettingsInUse, AreParametersOfTheEffect) {
    for (std::string_view name : settingsInUse) {
        const auto rows = plugin::EffectParameters();
        EXPECT_TRUE(std::any_of(rows.begin(), rows.end(), [name](const parameters::Row& row) {
            return row.name == name;
        })) << name;
    }
}

TEST(SettingsInUse, AreNotThoseOfLayersThatAreNotMadeYet) {
    EXPECT_TRUE(IsSettingInUse("bitDepth"));
    EXPECT_FALSE(IsSettingInUse("createNormalLayer"));
}

}  // namespace
}  // namespace command

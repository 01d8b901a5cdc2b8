#include "ui/rollup_buttons.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

#include "host/text.h"

namespace {

struct Look {
    int control;
    MapID map;
    std::string picture;
    std::string toolTip;
    bool check;

    friend bool operator==(const Look&, const Look&) = default;
};

void PrintTo(const Look& look, std::ostream* out) {
    *out << look.control << '/' << look.map << ' ' << look.picture << " [" << look.toolTip << "] "
         << look.check;
}

TEST(RollupButtons, HaveTheirPicturesAndToolTips) {
    std::vector<Look> looks;
    for (const ui::RollupButton& button : ui::RollupButtons()) {
        looks.push_back({button.control, button.map,
                         button.picture ? host::ToUtf8(button.picture) : "none",
                         host::ToUtf8(button.toolTip), button.isCheckButton});
    }
    EXPECT_THAT(looks, testing::ElementsAre(
                           Look{1008, 0, "Common/Settings", "Advanced Options", false},
                           Look{1184, 1, "Common/Folder", "Layer Group", true},
                           Look{1069, 1, "Common/UIComponents/ArrowUp", "Move Up", false},
                           Look{1068, 1, "Common/UIComponents/ArrowDown", "Move Down", false},
                           Look{1079, 1, "none", "Sort Render Elements automatically.", true},
                           Look{1007, 2, "Common/Folder", "Layer Group", true},
                           Look{1010, 2, "Common/Folder", "Layer Group", true},
                           Look{1009, 2, "Common/Folder", "Layer Group", true},
                           Look{1006, 2, "Common/UIComponents/ArrowUp", "Move Up", false},
                           Look{1008, 2, "Common/UIComponents/ArrowDown", "Move Down", false},
                           Look{1150, 5, "Common/Folder", "Layer Group", true},
                           Look{1158, 5, "MergeAnimation/UpdateList", "Refresh Layers List", false},
                           Look{1189, 7, "Common/Folder", "Layer Group", true}));
    EXPECT_EQ(ui::buttonPictureSize, 16);
    EXPECT_EQ(ui::flatButton, 40960);
}

}  // namespace

#include "ui/output_as_groups.h"

#include "tests/effect/effect_fixture.h"

namespace {

class OutputAsGroups : public EffectTest {};

TEST_F(OutputAsGroups, HaveTheirParametersAndControls) {
    const std::span<const ui::OutputAsGroup> groups = ui::OutputAsGroups();
    constexpr int rows[][6] = {
        // map, output, outputAs, label, combo, folder
        {2, 18, 23, 1096, 1105, 1010}, {2, 20, 24, 1098, 1106, 1009}, {2, 28, 29, 1095, 1109, 1007},
        {5, 48, 50, 1151, 1152, 1150}, {7, 71, 73, 1188, 1190, 1189},
    };
    ASSERT_EQ(groups.size(), std::size(rows));
    for (std::size_t i = 0; i < groups.size(); ++i) {
        const ui::OutputAsGroup& group = groups[i];
        const int row[] = {group.map,   group.output, group.outputAs,
                           group.label, group.combo,  group.folder};
        EXPECT_THAT(row, testing::ElementsAreArray(rows[i])) << i;
        EXPECT_EQ(ui::OutputAsGroupOf(group.output), &group);
        EXPECT_EQ(ui::OutputAsGroupOf(group.outputAs), nullptr);
    }
}

TEST_F(OutputAsGroups, TheComboIsEnabledWhileThereIsOutput) {
    for (const ui::OutputAsGroup& group : ui::OutputAsGroups()) {
        EXPECT_FALSE(ui::ShowOutputAs(*effect->pblock, group).enabled) << group.output;
        Set(group.output, TRUE);
        EXPECT_TRUE(ui::ShowOutputAs(*effect->pblock, group).enabled) << group.output;
    }
}

TEST_F(OutputAsGroups, ChannelsHaveNoFolder) {
    for (const ui::OutputAsGroup& group : ui::OutputAsGroups()) {
        for (const int outputAs : {5, 1, 4, 0}) {
            Set(group.outputAs, outputAs);
            for (const BOOL on : {FALSE, TRUE}) {
                Set(group.output, on);
                EXPECT_EQ(ui::ShowOutputAs(*effect->pblock, group).folderShown, outputAs != 0)
                    << group.output << ' ' << outputAs << ' ' << on;
            }
        }
    }
}

}  // namespace

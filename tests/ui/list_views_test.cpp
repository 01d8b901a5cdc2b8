#include "ui/list_views.h"

#include <gmock/gmock.h>

#include <string>
#include <tuple>

#include "host/text.h"
#include "plugin/entry.h"
#include "plugin/string_table.h"

namespace {

using testing::ElementsAre;

using Column = std::tuple<std::string, int>;

std::vector<Column> ColumnsOf(const ui::ListView& list) {
    plugin::Attach();
    std::vector<Column> columns;
    for (const ui::ListColumn& column : list.columns)
        columns.emplace_back(host::ToUtf8(MSTR(plugin::GetString(column.title))), column.width);
    return columns;
}

TEST(ListViews, HaveTheirColumns) {
    EXPECT_THAT(ColumnsOf(ui::elementList),
                ElementsAre(Column{"Name", 120}, Column{"Visible", 42}, Column{"Blending Mode", 86},
                            Column{"Misc", 41}));
    EXPECT_THAT(ColumnsOf(ui::sceneLayerList), ElementsAre(Column{"Layers", 265}));
    EXPECT_THAT(ColumnsOf(ui::selectionSetList), ElementsAre(Column{"Selection Sets", 265}));
}

TEST(ListViews, AllHaveCheckBoxesAndTheElementsWholeRows) {
    EXPECT_EQ(ui::elementList.control, 1043);
    EXPECT_EQ(ui::elementList.map, 1);
    EXPECT_EQ(ui::elementList.extendedStyle, 36U);
    EXPECT_TRUE(ui::elementList.renamesRows);
    EXPECT_EQ(ui::sceneLayerList.control, 1153);
    EXPECT_EQ(ui::sceneLayerList.map, 5);
    EXPECT_EQ(ui::sceneLayerList.extendedStyle, 4U);
    EXPECT_FALSE(ui::sceneLayerList.renamesRows);
    EXPECT_EQ(ui::selectionSetList.control, 1192);
    EXPECT_EQ(ui::selectionSetList.map, 7);
    EXPECT_EQ(ui::selectionSetList.extendedStyle, 4U);
    EXPECT_FALSE(ui::selectionSetList.renamesRows);
}

TEST(ListViews, DrawACheckBoxByItsStateImage) {
    EXPECT_EQ(ui::CheckImage(true), 2);
    EXPECT_EQ(ui::CheckImage(false), 1);
}

}  // namespace

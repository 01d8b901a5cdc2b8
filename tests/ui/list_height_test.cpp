#include "ui/list_height.h"

#include <cstdint>

#include "plugin/config_file.h"
#include "tests/effect/effect_fixture.h"

namespace {

class ListHeight : public EffectTest {
  protected:
    static plugin::ConfigFile Section() {
        plugin::ConfigFile config;
        config.SetSection(_M("UserInterface"));
        return config;
    }
    static void Store(const MCHAR* key, std::uint32_t height) { Section().WriteInt(key, height); }
    // -1 for none.
    static std::int64_t Stored(const MCHAR* key) {
        std::uint32_t height = 0;
        return Section().ReadInt(key, height) ? std::int64_t{height} : -1;
    }
};

constexpr const MCHAR* elementKey = _M("REListViewHeight");
constexpr const MCHAR* layerKey = _M("MaxLayersListViewHeight");
constexpr const MCHAR* setKey = _M("SelSetsListViewHeight");

TEST_F(ListHeight, IsStoredListByList) {
    EXPECT_EQ(ui::StoredListHeight(ui::elementList), std::nullopt);
    Store(elementKey, 100);
    Store(layerKey, 200);
    Store(setKey, 300);
    EXPECT_EQ(ui::StoredListHeight(ui::elementList), 100);
    EXPECT_EQ(ui::StoredListHeight(ui::sceneLayerList), 200);
    EXPECT_EQ(ui::StoredListHeight(ui::selectionSetList), 300);
}

TEST_F(ListHeight, OutOfTheLimitsIsIgnoredAndLeftInTheFile) {
    for (const std::uint32_t height : {0U, 38U, 801U, 0x80000064U, 0xffffffffU}) {
        Store(elementKey, height);
        EXPECT_EQ(ui::StoredListHeight(ui::elementList), std::nullopt) << height;
        EXPECT_EQ(Stored(elementKey), std::int64_t{height});
    }
    for (const int height : {39, 800}) {
        Store(elementKey, static_cast<std::uint32_t>(height));
        EXPECT_EQ(ui::StoredListHeight(ui::elementList), height);
    }
}

TEST_F(ListHeight, WhoseCheckSumNoLongerFitsIsIgnored) {
    WriteFile(File("config") / "veltrane.cfg",
              "[UserInterface]\r\nREListViewHeight=6400000065\r\n");
    EXPECT_EQ(ui::StoredListHeight(ui::elementList), std::nullopt);
    WriteFile(File("config") / "veltrane.cfg",
              "[UserInterface]\r\nREListViewHeight=6400000064\r\n");
    EXPECT_EQ(ui::StoredListHeight(ui::elementList), 100);
}

TEST_F(ListHeight, ChangesByADifference) {
    const auto size = ui::ApplyListViewHeight(ui::elementList, {100, 400}, 50, true);
    ASSERT_TRUE(size);
    EXPECT_EQ(size->list, 150);
    EXPECT_EQ(size->dialog, 450);
    EXPECT_EQ(Stored(elementKey), 150);
    EXPECT_EQ(Stored(layerKey), -1);
    EXPECT_EQ(Stored(setKey), -1);
    const auto lower = ui::ApplyListViewHeight(ui::sceneLayerList, {100, 400}, -61, true);
    ASSERT_TRUE(lower);
    EXPECT_EQ(lower->list, 39);
    EXPECT_EQ(lower->dialog, 339);
    EXPECT_EQ(Stored(layerKey), 39);
}

TEST_F(ListHeight, IsSetAsAWhole) {
    const auto size = ui::ApplyListViewHeight(ui::selectionSetList, {100, 400}, 800, false);
    ASSERT_TRUE(size);
    EXPECT_EQ(size->list, 800);
    EXPECT_EQ(size->dialog, 1100);
    EXPECT_EQ(Stored(setKey), 800);
}

TEST_F(ListHeight, StaysWhenTheNewOneIsOutOfTheLimits) {
    Store(elementKey, 100);
    for (const int height : {38, 801, 0, -100, 2147483647})
        EXPECT_FALSE(ui::ApplyListViewHeight(ui::elementList, {100, 4000}, height, false));
    for (const int difference : {-62, 701, 2147483647, -2147483647})
        EXPECT_FALSE(ui::ApplyListViewHeight(ui::elementList, {100, 4000}, difference, true));
    EXPECT_EQ(Stored(elementKey), 100);
}

TEST_F(ListHeight, LeavesTheDialogAHeight) {
    EXPECT_FALSE(ui::ApplyListViewHeight(ui::elementList, {100, 50}, -50, true));
    EXPECT_EQ(Stored(elementKey), -1);
    const auto size = ui::ApplyListViewHeight(ui::elementList, {100, 51}, -50, true);
    ASSERT_TRUE(size);
    EXPECT_EQ(size->dialog, 1);
}

}  // namespace

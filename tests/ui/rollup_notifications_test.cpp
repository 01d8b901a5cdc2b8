#include "ui/rollup_notifications.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

#include "tests/host/sample_objects.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using ui::PanelUpdate;

std::vector<int> CodesOf(MapID map) {
    const std::span<const int> codes = ui::RollupNotifications(map);
    return {codes.begin(), codes.end()};
}

TEST(RollupNotifications, EachRollupListensToItsOwn) {
    EXPECT_THAT(CodesOf(0), ElementsAre(152, 35, 143));
    EXPECT_THAT(CodesOf(2), ElementsAre(18));
    EXPECT_THAT(CodesOf(5), ElementsAre(148, 149, 246));
    EXPECT_THAT(CodesOf(7), ElementsAre(184, 185, 188));
    for (const MapID map : std::initializer_list<MapID>{1, 3, 4, 6, 8, -1})
        EXPECT_THAT(CodesOf(map), IsEmpty()) << map;
}

TEST(RollupNotifications, EachCodeShowsWhatItChanged) {
    const std::pair<int, PanelUpdate> rows[] = {
        {35, PanelUpdate::FileName},          {143, PanelUpdate::LayerControls},
        {18, PanelUpdate::AddSelectedButton}, {148, PanelUpdate::SceneLayers},
        {149, PanelUpdate::SceneLayerRow},    {246, PanelUpdate::SceneLayers},
        {184, PanelUpdate::SelectionSetRows}, {185, PanelUpdate::SelectionSetRows},
        {188, PanelUpdate::SelectionSetRows}, {139, PanelUpdate::Nothing},
        {20, PanelUpdate::Nothing},           {0, PanelUpdate::Nothing},
    };
    for (const auto& [code, update] : rows) {
        NotifyInfo info;
        info.intcode = code;
        EXPECT_EQ(ui::UpdateFor(info), update) << code;
    }
}

class ChosenRenderer : public SampleTarget {
  public:
    explicit ChosenRenderer(Class_ID chosen) : id(chosen) {}
    Class_ID ClassID() override { return id; }

  private:
    Class_ID id;
};

TEST(RollupNotifications, OneRendererChangesTheDepthControls) {
    NotifyInfo info;
    info.intcode = 152;
    EXPECT_EQ(ui::UpdateFor(info), PanelUpdate::Nothing);
    ChosenRenderer right({0x16d416fb, 0x1cdd4da5});
    info.callParam = static_cast<ReferenceTarget*>(&right);
    EXPECT_EQ(ui::UpdateFor(info), PanelUpdate::DepthControls);
    for (const Class_ID id : {Class_ID(0x16d416fb, 0), Class_ID(0, 0x1cdd4da5), Class_ID()}) {
        ChosenRenderer other(id);
        info.callParam = static_cast<ReferenceTarget*>(&other);
        EXPECT_EQ(ui::UpdateFor(info), PanelUpdate::Nothing);
    }
}

}  // namespace

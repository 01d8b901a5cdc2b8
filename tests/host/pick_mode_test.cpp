#include "host/pick_mode.h"

#include <gtest/gtest.h>

#include <string>

#include "host/application.h"

namespace {

// Writes down what it is called for.
class Picker : public PickModeCallback, public PickNodeCallback {
  public:
    BOOL HitTest(IObjParam* ip, HWND view, ViewExp*, IPoint2 point, int) override {
        calls += "hit ";
        return ip->PickNode(view, point, this) != nullptr;
    }
    BOOL Pick(IObjParam*, ViewExp* view) override {
        calls += "pick ";
        picked = view->GetClosestHit();
        return endsWithPick;
    }
    void EnterMode(IObjParam*) override { calls += "enter "; }
    void ExitMode(IObjParam*) override { calls += "exit "; }
    BOOL Filter(INode* node) override { return node && node != refused; }

    std::string calls;
    INode* picked = nullptr;
    INode* refused = nullptr;
    BOOL endsWithPick = FALSE;
};

class PickMode : public testing::Test {
  protected:
    PickMode() {
        node = &host::App().scene.AddNode(MSTR(_M("Box")));
        mode.nodeAt = [this](HWND, IPoint2 point, PickNodeCallback* filter) -> INode* {
            return point.x == 3 && point.y == 4 && filter->Filter(node) ? node : nullptr;
        };
    }
    ~PickMode() override { mode.Set(nullptr); }

    host::PickMode& mode = (host::ResetApplication(), host::App().pickMode);
    INode* node = nullptr;
    Picker picker;
};

TEST_F(PickMode, PicksWhatIsUnderTheClickAndStays) {
    GetCOREInterface()->SetPickMode(&picker);
    mode.Click(nullptr, {3, 4});
    EXPECT_EQ(picker.calls, "enter hit pick ");
    EXPECT_EQ(picker.picked, node);
    EXPECT_EQ(mode.Callback(), &picker);
}

TEST_F(PickMode, EndsWithThePickWhenItsCallbackWantsThat) {
    picker.endsWithPick = TRUE;
    mode.Set(&picker);
    mode.Click(nullptr, {3, 4});
    EXPECT_EQ(picker.calls, "enter hit pick exit ");
    EXPECT_EQ(mode.Callback(), nullptr);
}

TEST_F(PickMode, AClickBesideAllNodesAndOneOnARefusedNodePickNothing) {
    mode.Set(&picker);
    mode.Click(nullptr, {0, 0});
    picker.refused = node;
    mode.Click(nullptr, {3, 4});
    EXPECT_EQ(picker.calls, "enter hit hit ");
    EXPECT_EQ(mode.GetClosestHit(), nullptr);
}

TEST_F(PickMode, AnotherModeEndsTheOneThatIsOn) {
    Picker other;
    mode.Set(&picker);
    mode.Set(&picker);
    mode.Set(&other);
    EXPECT_EQ(picker.calls, "enter exit ");
    GetCOREInterface()->ClearPickMode();
    EXPECT_EQ(other.calls, "enter exit ");
    mode.Click(nullptr, {3, 4});
    EXPECT_EQ(other.calls, "enter exit ");
}

TEST_F(PickMode, WithoutAViewNothingIsHit) {
    mode.nodeAt = nullptr;
    mode.Set(&picker);
    EXPECT_FALSE(mode.Hit(nullptr, {3, 4}));
}

}  // namespace

#include "ui/pick_callback.h"

#include <new>

#include "tests/ui/object_list_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class PickCallback : public ObjectListTest {
  protected:
    PickCallback() : nodes(AddAll({"a", "b"})) {
        Host().undo.Clear();
        Host().pickMode.nodeAt = [this](HWND view, IPoint2 point, PickNodeCallback* filter) {
            EXPECT_EQ(view, nullptr);
            EXPECT_EQ(point.x, 3);
            EXPECT_EQ(point.y, 5);
            return under && filter->Filter(under) ? under : nullptr;
        };
        callback.Edit(effect);
        callback.onPick = [this] { shown.emplace_back("list"); };
        callback.onModeChange = [this] { shown.emplace_back(callback.IsActive() ? "on" : "off"); };
    }
    ~PickCallback() override { Host().pickMode.Cancel(); }

    void Click(INode* node) {
        under = node;
        Host().pickMode.Click(nullptr, {3, 5});
    }
    std::vector<std::string> TakeShown() { return std::exchange(shown, {}); }

    std::vector<host::Node*> nodes;
    INode* under = nullptr;
    std::vector<std::string> shown;
    ui::PSDOutputPickModeCallback callback;
};

TEST_F(PickCallback, ObjectsArePickedOneAfterTheOther) {
    callback.Toggle();
    EXPECT_TRUE(callback.IsActive());
    EXPECT_THAT(TakeShown(), ElementsAre("on"));
    Click(nodes[1]);
    EXPECT_THAT(Names(), ElementsAre("b"));
    EXPECT_EQ(UndoName(), "Add Object");
    EXPECT_THAT(TakeShown(), ElementsAre("list"));
    Click(nodes[0]);
    EXPECT_THAT(Names(), ElementsAre("b", "a"));
    EXPECT_EQ(Host().pickMode.Callback(), &callback) << "the mode lasts";
    Host().undo.Undo();
    EXPECT_THAT(Names(), ElementsAre("b"));
}

TEST_F(PickCallback, AnObjectThatIsListedIsNotPickedAgain) {
    callback.Toggle();
    Click(nodes[1]);
    TakeShown();
    Click(nodes[1]);
    EXPECT_THAT(Names(), ElementsAre("b"));
    EXPECT_THAT(TakeShown(), IsEmpty());
    EXPECT_FALSE(callback.Filter(nodes[1]));
    EXPECT_TRUE(callback.Filter(nodes[0]));
    EXPECT_EQ(callback.GetFilter(), &callback) << "by name too";
}

TEST_F(PickCallback, AClickBesideAllObjectsPicksNone) {
    callback.Toggle();
    Click(nullptr);
    EXPECT_THAT(Names(), IsEmpty());
    EXPECT_FALSE(Host().pickMode.Hit(nullptr, {3, 5}));
    under = nodes[0];
    EXPECT_TRUE(Host().pickMode.Hit(nullptr, {3, 5}));
    EXPECT_FALSE(callback.Filter(nullptr));
}

TEST_F(PickCallback, TheButtonLeavesTheModeToo) {
    callback.Toggle();
    TakeShown();
    callback.Toggle();
    EXPECT_FALSE(callback.IsActive());
    EXPECT_EQ(Host().pickMode.Callback(), nullptr);
    EXPECT_THAT(TakeShown(), ElementsAre("off"));
}

TEST_F(PickCallback, TheButtonFollowsAModeThatTheUserLeaves) {
    callback.Toggle();
    TakeShown();
    Host().pickMode.Cancel();
    EXPECT_FALSE(callback.IsActive());
    EXPECT_THAT(TakeShown(), ElementsAre("off"));
}

TEST_F(PickCallback, APanelThatClosesLeavesTheMode) {
    callback.Leave();
    EXPECT_THAT(TakeShown(), IsEmpty()) << "it isn't on";
    callback.Toggle();
    callback.Leave();
    EXPECT_EQ(Host().pickMode.Callback(), nullptr);
    EXPECT_FALSE(callback.IsActive());
}

TEST_F(PickCallback, LeavesTheModeOfSomeoneElseAlone) {
    ui::PSDOutputPickModeCallback other;
    other.Toggle();
    callback.Leave();
    EXPECT_EQ(Host().pickMode.Callback(), &other);
    other.Leave();
}

TEST_F(PickCallback, NothingIsPickedForAnEffectThatIsGone) {
    callback.Toggle();
    Host().effects.clear();
    EXPECT_FALSE(callback.Filter(nodes[0]));
    Click(nodes[0]);
    callback.Edit(nullptr);
    EXPECT_FALSE(callback.Filter(nodes[0]));
    EXPECT_FALSE(Host().undo.CanUndo());
}

// A node that a camera or a light is aimed at, and one that shows nothing.
class ShownObject : public Object {
  public:
    ShownObject(SClass_ID superClass, Class_ID objectClass)
        : superID(superClass), id(objectClass) {}
    SClass_ID SuperClassID() override { return superID; }
    Class_ID ClassID() override { return id; }
    RefResult NotifyRefChanged(const Interval&, RefTargetHandle, PartID&, RefMessage,
                               BOOL) override {
        return REF_SUCCEED;
    }

  private:
    SClass_ID superID;
    Class_ID id;
};

class NodeThatShows : public INode {
  public:
    explicit NodeThatShows(Object* object) : state{object} {}
    const MCHAR* GetName() override { return _M(""); }
    USHORT GetRenderID() override { return 65535; }
    INode* GetParentNode() override { return nullptr; }
    BOOL IsRootNode() override { return FALSE; }
    int NumberOfChildren() override { return 0; }
    INode* GetChildNode(int) override { return nullptr; }
    BOOL IsGroupHead() override { return FALSE; }
    BOOL IsGroupMember() override { return FALSE; }
    BOOL IsNodeHidden(BOOL) override { return FALSE; }
    const ObjectState& EvalWorldState(TimeValue, BOOL) override { return state; }
    Matrix3 GetNodeTM(TimeValue, Interval*) override { return {}; }
    BOOL GetUserPropBool(const MSTR&, BOOL&) override { return FALSE; }
    RefResult NotifyRefChanged(const Interval&, RefTargetHandle, PartID&, RefMessage,
                               BOOL) override {
        return REF_SUCCEED;
    }

  private:
    ObjectState state;
};

TEST_F(PickCallback, TargetsOfCamerasAndLightsAreNotPicked) {
    ShownObject target(0x10, Class_ID(0x1020, 0));
    ShownObject box(0x10, Class_ID(0x10, 0));
    ShownObject camera(0x20, Class_ID(0x1020, 0));
    NodeThatShows aim(&target);
    NodeThatShows object(&box);
    NodeThatShows view(&camera);
    NodeThatShows nothing(nullptr);
    EXPECT_FALSE(callback.Filter(&aim));
    EXPECT_TRUE(callback.Filter(&object));
    EXPECT_TRUE(callback.Filter(&view));
    EXPECT_TRUE(callback.Filter(&nothing));
}

TEST_F(PickCallback, NothingIsThrownToTheHost) {
    callback.onModeChange = [] { throw std::bad_alloc(); };
    callback.onPick = [] { throw std::bad_alloc(); };
    callback.Toggle();
    EXPECT_TRUE(callback.IsActive());
    Click(nodes[0]);
    EXPECT_THAT(Names(), ElementsAre("a"));
    EXPECT_EQ(UndoName(), "Add Object");
}

}  // namespace

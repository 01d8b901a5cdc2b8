#include "host/node_selection.h"

#include <gtest/gtest.h>
#include <hold.h>
#include <maxapi.h>
#include <notify.h>

#include "host/application.h"

namespace {

using Nodes = std::vector<host::Node*>;

int changesHeard = 0;

void HearSelection(void*, NotifyInfo*) {
    ++changesHeard;
}

class NodeSelection : public testing::Test {
  protected:
    NodeSelection() {
        changesHeard = 0;
        RegisterNotification(HearSelection, nullptr, NOTIFY_SELECTIONSET_CHANGED);
    }
    ~NodeSelection() override {
        UnRegisterNotification(HearSelection, nullptr, NOTIFY_SELECTIONSET_CHANGED);
    }

    host::NodeSelection& selection = (host::ResetApplication(), host::App().selection);
    host::Node* box = &host::App().scene.AddNode(MSTR(_M("Box")));
    host::Node* ball = &host::App().scene.AddNode(MSTR(_M("Ball")));
};

TEST_F(NodeSelection, StartsEmptyAndIsWhatWasSet) {
    EXPECT_EQ(selection.Nodes(), Nodes{});
    selection.Set({ball, nullptr, box, ball});
    EXPECT_EQ(selection.Nodes(), (Nodes{ball, box}));
    Interface* core = GetCOREInterface();
    EXPECT_EQ(core->GetSelNodeCount(), 2);
    EXPECT_EQ(core->GetSelNode(0), ball);
    EXPECT_EQ(core->GetSelNode(1), box);
    EXPECT_EQ(core->GetSelNode(2), nullptr);
    EXPECT_EQ(core->GetSelNode(-1), nullptr);
}

TEST_F(NodeSelection, IsBroadcastWhenItIsAnother) {
    selection.Set({box});
    EXPECT_EQ(changesHeard, 1);
    selection.Set({box, box});
    EXPECT_EQ(changesHeard, 1);
    selection.Set({});
    EXPECT_EQ(changesHeard, 2);
}

TEST_F(NodeSelection, LosesANodeThatLeavesTheSceneAndHasItAgainWithAnUndo) {
    selection.Set({box, ball});
    theHold.Begin();
    host::App().scene.Remove(*box);
    theHold.Accept(_M("Delete"));
    EXPECT_EQ(selection.Nodes(), Nodes{ball});
    host::App().undo.Undo();
    EXPECT_EQ(selection.Nodes(), (Nodes{box, ball}));
}

}  // namespace

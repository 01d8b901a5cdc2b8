#include "sources/node_set_channels.h"

#include <gmock/gmock.h>

#include "host/application.h"
#include "host/scene.h"
#include "sources/id_bounds.h"
#include "tests/sources/fake_gbuffer.h"
#include "tests/sources/row_copies.h"

namespace {

using testing::ElementsAre;

constexpr int matteOfSet = 3;

class NodeSetChannels : public testing::Test {
  protected:
    NodeSetChannels() {
        bitmap.gbuffer.channels = BMM_CHAN_COVERAGE;
        FakePixel pixels[5];
        for (UWORD id = 0; id < 4; ++id) {
            pixels[id] = {{.coverage = UBYTE{255}, .renderID = id}};
            sources::nodeRenderIDBounds[id] += IPoint2{id, 0};
        }
        pixels[4] = {{.coverage = UBYTE{255}, .renderID = UWORD{65535}}, {.coverage = UBYTE{255}}};
        sources::nodeRenderIDBounds[65535] += IPoint2{4, 0};
        bitmap.SetRows({{pixels[0], pixels[1], pixels[2], pixels[3], pixels[4]}});
    }
    ~NodeSetChannels() override {
        sources::nodeRenderIDBounds.clear();
        scene.Clear();
    }
    host::Node& AddNode(USHORT renderID, host::Node* parent = nullptr) {
        host::Node& node = scene.AddNode(_M("node"), parent);
        node.SetRenderID(renderID);
        node.SetGroupMember(parent != nullptr);
        return node;
    }
    host::Node& AddGroup() {
        host::Node& head = AddNode(0);
        head.SetGroupHead(true);
        AddNode(1, &head);
        AddNode(3, &head);
        return head;
    }
    static void ExpectColumns(sources::SpecificGBufferIDToPSDChannel& source, int left, int right) {
        source.ComputeBounds();
        EXPECT_EQ(source.Bounds().left, left);
        EXPECT_EQ(source.Bounds().right, right);
        EXPECT_EQ(source.Bounds().top, 0);
        EXPECT_EQ(source.Bounds().bottom, 0);
    }

    FakeGBufferBitmap bitmap;
    host::Scene& scene = host::App().scene;
};

TEST_F(NodeSetChannels, CutOutOneObject) {
    sources::SpecificNodeRenderIDToPSDChannel source(&bitmap, &AddNode(2), matteOfSet, true);
    EXPECT_THAT(Row8(source, 5), ElementsAre(0, 0, 255, 0, 0));
    ExpectColumns(source, 2, 2);
}

TEST_F(NodeSetChannels, CutOutTheMembersOfAGroupAndNotItsHead) {
    sources::SpecificNodeRenderIDToPSDChannel source(&bitmap, &AddGroup(), matteOfSet, true);
    EXPECT_THAT(Row8(source, 5), ElementsAre(0, 255, 0, 255, 0));
    ExpectColumns(source, 1, 3);
}

TEST_F(NodeSetChannels, OfNoNodeOrOneThatIsntRenderedAreEmpty) {
    for (INode* node : {static_cast<INode*>(nullptr), static_cast<INode*>(&AddNode(65535)),
                        static_cast<INode*>(&AddNode(77))}) {
        sources::SpecificNodeRenderIDToPSDChannel source(&bitmap, node, matteOfSet, true);
        EXPECT_THAT(Row8(source, 5), ElementsAre(0, 0, 0, 0, 0));
        EXPECT_TRUE(source.Bounds().IsEmpty());
    }
    EXPECT_EQ(bitmap.gbuffer.reader.linesStarted, 0);
}

TEST_F(NodeSetChannels, CutOutTheObjectsThatTheCallerAdded) {
    sources::NodesToPSDChannel source(&bitmap, matteOfSet, true);
    EXPECT_THAT(Row8(source, 5), ElementsAre(0, 0, 0, 0, 0));
    source.renderIDs.Add(0);
    source.renderIDs.Add(2);
    source.renderIDs.Add(500);
    EXPECT_THAT(Row8(source, 5), ElementsAre(255, 0, 255, 0, 0));
    ExpectColumns(source, 0, 2);
}

TEST_F(NodeSetChannels, LieInABoxAroundTheBoxesOfAllTheirObjects) {
    sources::nodeRenderIDBounds[10] += IPoint2{5, 20};
    sources::nodeRenderIDBounds[10] += IPoint2{9, 21};
    sources::nodeRenderIDBounds[11] += IPoint2{7, 4};
    sources::nodeRenderIDBounds[11] += IPoint2{30, 6};
    sources::NodesToPSDChannel source(&bitmap, matteOfSet, true);
    source.renderIDs.Add(10);
    source.renderIDs.Add(11);
    source.renderIDs.Add(500);
    source.ComputeBounds();
    EXPECT_EQ(source.Bounds().left, 5);
    EXPECT_EQ(source.Bounds().top, 4);
    EXPECT_EQ(source.Bounds().right, 30);
    EXPECT_EQ(source.Bounds().bottom, 21);
}

TEST_F(NodeSetChannels, NeverTakeTheBackground) {
    sources::NodesToPSDChannel source(&bitmap, matteOfSet, true);
    source.renderIDs.Add(65535);
    EXPECT_THAT(Row8(source, 5), ElementsAre(0, 0, 0, 0, 0));
}

TEST_F(NodeSetChannels, CutOutASelectionSet) {
    scene.AddSelectionSet(_M("none"), {});
    scene.AddSelectionSet(_M("some"), {&AddNode(2), &AddGroup()});
    sources::NamedSelectionSetToPSDChannel none(&bitmap, 0, matteOfSet, true);
    EXPECT_THAT(Row8(none, 5), ElementsAre(0, 0, 0, 0, 0));
    EXPECT_TRUE(none.Bounds().IsEmpty());
    sources::NamedSelectionSetToPSDChannel some(&bitmap, 1, matteOfSet, true);
    EXPECT_THAT(Row8(some, 5), ElementsAre(0, 255, 255, 255, 0));
    sources::NamedSelectionSetToPSDChannel beyond(&bitmap, 2, matteOfSet, true);
    EXPECT_THAT(Row8(beyond, 5), ElementsAre(0, 0, 0, 0, 0));
}

TEST_F(NodeSetChannels, CutOutASceneLayer) {
    host::SceneLayer& layer = scene.AddLayer(_M("layer"));
    host::SceneLayer& inside = scene.AddLayer(_M("inside"), &layer);
    AddNode(0).SetLayer(&layer);
    AddNode(3).SetLayer(&inside);
    sources::MaxLayerToPSDChannel source(&bitmap, &layer, matteOfSet, true);
    EXPECT_THAT(Row8(source, 5), ElementsAre(255, 0, 0, 255, 0));
    sources::MaxLayerToPSDChannel none(&bitmap, nullptr, matteOfSet, true);
    EXPECT_THAT(Row8(none, 5), ElementsAre(0, 0, 0, 0, 0));
}

TEST_F(NodeSetChannels, OutliveTheirNodes) {
    host::Node& node = AddNode(2);
    sources::SpecificNodeRenderIDToPSDChannel source(&bitmap, &node, matteOfSet, true);
    scene.Remove(node);
    EXPECT_THAT(Row8(source, 5), ElementsAre(0, 0, 255, 0, 0));
}

}  // namespace

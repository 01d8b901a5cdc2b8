#include "effect/id_groups.h"

#include "tests/effect/matte_frame.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ObjectIDGroup : public MatteFrameTest {
  protected:
    ObjectIDGroup() { Set("filterEmptyMattes"_param, FALSE); }
    void Add() { effect::AddObjectIDGroup(builder, FrameOf(image.get())); }
    void List(const MSTR& list) { SetText("nodeIDList"_param, list); }
    void Style(int style) { Set("outputNodeIDsAs"_param, style); }
};

TEST_F(ObjectIDGroup, OfTheDefaultListHasItsLayersInASet) {
    Add();
    EXPECT_EQ(Tree(),
              "Object IDs(Object ID: 1 Name Object ID: 5 Object ID: 6 Object ID: 7 Object ID: 8)");
    EXPECT_EQ(InSet(0).unicodeName, u"Object ID: 1");
    EXPECT_EQ(InSet(1).unicodeName, u"Name");
    EXPECT_EQ(Rows8(InSet(0).alpha), firstMatte);
    EXPECT_EQ(Rows8(InSet(1).alpha), secondMatte);
    EXPECT_EQ(Rows8(InSet(2).alpha), noMatte);
    EXPECT_EQ(Rows8(InSet(4).alpha), thirdMatte);
    for (std::size_t i = 0; i < 6; ++i)
        EXPECT_EQ(InSet(i).red, black);
}

TEST_F(ObjectIDGroup, OfARangeWithANameNumbersItsLayers) {
    List(_M("2-4 [Wall]"));
    Add();
    EXPECT_EQ(Tree(), "Object IDs(Wall ID:2 Wall ID:3 Wall ID:4)");
    EXPECT_EQ(Rows8(InSet(1).alpha), secondMatte);
}

TEST_F(ObjectIDGroup, OfAFaultyListHasTheIDsBeforeTheFault) {
    List(_M("7, 8-5, 1"));
    Add();
    EXPECT_EQ(Tree(), "Object IDs(Object ID: 7)");
}

TEST_F(ObjectIDGroup, OfNumbersInARowIsARange) {
    List(_M("1 2 3"));
    Add();
    EXPECT_EQ(Tree(), "Object IDs(Object ID: 1 Object ID: 2 Object ID: 3)");
}

TEST_F(ObjectIDGroup, OfAnEmptyListIsAnEmptySet) {
    List(_M("abc"));
    Add();
    EXPECT_EQ(Tree(), "Object IDs()");
    psdbuilder::RemoveEmptyLayerSets(Document());
    EXPECT_EQ(Tree(), "");
}

TEST_F(ObjectIDGroup, WithoutASetOfItsOwnAddsToTheDocument) {
    Set("outputNodeIDsLayerSet"_param, FALSE);
    List(_M("1, 7"));
    Add();
    EXPECT_EQ(Tree(), "Object ID: 1 Object ID: 7");
}

TEST_F(ObjectIDGroup, ASlashInANameMakesASet) {
    List(_M("1 [A/B], 3 [A/C]"));
    Add();
    EXPECT_EQ(Tree(), "Object IDs(A(B C))");
    Set("outputNodeIDsLayerSet"_param, FALSE);
    SetText("nodeIDList"_param, _M("1 [A/B]"));
    Add();
    EXPECT_EQ(Tree(), "Object IDs(A(B C)) A(B)");
}

TEST_F(ObjectIDGroup, TheSetsNameIsTheUsers) {
    SetText("nodeIdsLayerSetName"_param, _M("IDs"));
    List(_M("1"));
    Add();
    EXPECT_EQ(Tree(), "IDs(Object ID: 1)");
}

TEST_F(ObjectIDGroup, AsChannelsMakesNoSet) {
    Style(0);
    List(_M("1, 3 [A/B], 100000"));
    Add();
    EXPECT_EQ(Tree(), "");
    EXPECT_EQ(Channels(), "Object ID: 1 | A/B | Object ID: 100000");
    EXPECT_EQ(Document().channels[1].unicodeName, u"A/B");
    EXPECT_EQ(Rows8(Document().channels[0].source), firstMatte);
    EXPECT_EQ(Rows8(Document().channels[1].source), secondMatte);
    EXPECT_EQ(Rows8(Document().channels[2].source), noMatte);
}

TEST_F(ObjectIDGroup, InColorHasTheFragmentsColours) {
    List(_M("1"));
    Style(2);
    Add();
    EXPECT_THAT(Rows8(InSet(0).red), ElementsAre(200, 200, 0, 0, 0, 0)) << "divided by coverage";
    EXPECT_THAT(Rows8(InSet(0).green), ElementsAre(100, 100, 0, 0, 0, 0));
    EXPECT_THAT(Rows8(InSet(0).blue), ElementsAre(50, 50, 0, 0, 0, 0));
    EXPECT_EQ(Rows8(InSet(0).alpha), firstMatte);
    Style(3);
    Add();
    EXPECT_THAT(Rows8(InSet(1).red), ElementsAre(200, 100, 0, 0, 0, 0));
    EXPECT_THAT(Rows8(InSet(1).green), ElementsAre(100, 50, 0, 0, 0, 0));
    EXPECT_THAT(Rows8(InSet(1).blue), ElementsAre(50, 25, 0, 0, 0, 0));
    EXPECT_EQ(Rows8(InSet(1).alpha), firstMatte);
}

TEST_F(ObjectIDGroup, AsLuminanceMattesHasTheCoverageAsGrey) {
    List(_M("3"));
    Style(4);
    Add();
    EXPECT_EQ(Rows8(InSet(0).red), secondMatte);
    EXPECT_EQ(Rows8(InSet(0).green), secondMatte);
    EXPECT_EQ(Rows8(InSet(0).blue), secondMatte);
    EXPECT_EQ(InSet(0).alpha, white);
}

TEST_F(ObjectIDGroup, AsACutOutHasTheRenderWhereTheObjectIs) {
    List(_M("3"));
    Style(5);
    Add();
    for (int component = 0; component < 3; ++component) {
        const auto& source = component == 0   ? InSet(0).red
                             : component == 1 ? InSet(0).green
                                              : InSet(0).blue;
        for (int y = 0; y < height; ++y) {
            const std::uint16_t* row = source->GetRow16(static_cast<std::uint32_t>(y));
            for (int x = 0; x < width; ++x) {
                const bool covered = secondMatte[static_cast<std::size_t>(y * width + x)] != 0;
                EXPECT_EQ(row[x], covered ? ImageSample(x, y, component) : 0);
            }
        }
    }
    EXPECT_EQ(Rows8(InSet(0).alpha), secondMatte);
}

TEST_F(ObjectIDGroup, AnIDThatIsInNoGBufferMatchesNothing) {
    // 65537 is 1 in 16 bits.
    List(_M("65537"));
    for (int style = 1; style <= 5; ++style) {
        Style(style);
        Add();
        const auto& layer = InSet(static_cast<std::size_t>(style - 1));
        EXPECT_EQ(layer.name, "Object ID: 65537");
        EXPECT_EQ(Rows8(layer.red), noMatte);
        if (style != 4) {
            EXPECT_EQ(Rows8(layer.alpha), noMatte);
        }
    }
    Set("filterEmptyMattes"_param, TRUE);
    Add();
    EXPECT_EQ(Set0().children.size(), 5U);
}

TEST_F(ObjectIDGroup, MattesWithoutPixelsAreLeftOut) {
    Set("filterEmptyMattes"_param, TRUE);
    for (int style = 0; style <= 5; ++style) {
        Style(style);
        Add();
    }
    EXPECT_EQ(Set0().children.size(), 15U);
    EXPECT_EQ(InSet(0).name, "Object ID: 1");
    EXPECT_EQ(InSet(1).name, "Name");
    EXPECT_EQ(InSet(2).name, "Object ID: 7");
    EXPECT_EQ(Channels(), "Object ID: 1 | Name | Object ID: 7");
    Render().timeType = REND_TIMERANGE;
    Style(0);
    Add();
    EXPECT_EQ(Document().channels.size(), 9U) << "an animation keeps them";
}

TEST_F(ObjectIDGroup, NeedsObjectIDsAndRenderIDs) {
    for (const DWORD channels : {BMM_CHAN_NODE_RENDER_ID, BMM_CHAN_NODE_ID, DWORD{0}}) {
        UseChannels(channels | BMM_CHAN_COLOR | BMM_CHAN_COVERAGE);
        Add();
        EXPECT_EQ(Tree(), "");
    }
    UseChannels(BMM_CHAN_NODE_RENDER_ID | BMM_CHAN_NODE_ID);
    Style(2);
    Add();
    EXPECT_EQ(Tree(), "") << "no colours";
    Style(1);
    Add();
    EXPECT_NE(Tree(), "");
}

TEST_F(ObjectIDGroup, WithoutABitmapOrAGBufferAddsNothing) {
    effect::AddObjectIDGroup(builder, FrameOf(nullptr));
    effect::AddObjectIDGroup(builder, FrameOf(opaque.get()));
    EXPECT_THAT(Document().children, IsEmpty());
}

class MaterialIDGroup : public MatteFrameTest {
  protected:
    MaterialIDGroup() { SetText("mtlIDList"_param, _M("4, 6 [Glass], 7-9")); }
    void Add() { effect::AddMaterialIDGroup(builder, FrameOf(image.get())); }
};

TEST_F(MaterialIDGroup, HasAMatteForEachIDOfItsOwnList) {
    Set("filterEmptyMattes"_param, FALSE);
    Add();
    EXPECT_EQ(Tree(),
              "Material IDs(Material ID: 4 Glass Material ID: 7 Material ID: 8 Material ID: 9)");
    EXPECT_EQ(Rows8(InSet(0).alpha), firstMatte);
    EXPECT_EQ(Rows8(InSet(1).alpha), secondMatte);
    EXPECT_EQ(Rows8(InSet(2).alpha), noMatte);
    EXPECT_EQ(Rows8(InSet(4).alpha), thirdMatte);
}

TEST_F(MaterialIDGroup, LeavesOutWhatHasNoPixels) {
    Add();
    EXPECT_EQ(Tree(), "Material IDs(Material ID: 4 Glass Material ID: 9)");
}

TEST_F(MaterialIDGroup, HasItsOwnSettings) {
    Set("outputMtlIDsLayerSet"_param, FALSE);
    Add();
    EXPECT_EQ(Tree(), "Material ID: 4 Glass Material ID: 9");
    Set("outputMtlIDsLayerSet"_param, TRUE);
    SetText("mtlIDsLayerSetName"_param, _M("Shaders"));
    Set("outputMtlIDsAs"_param, 4);
    SetText("mtlIDList"_param, _M("4"));
    Add();
    EXPECT_EQ(Tree(), "Material ID: 4 Glass Material ID: 9 Shaders(Material ID: 4)");
    Set("outputMtlIDsAs"_param, 0);
    Add();
    EXPECT_EQ(Channels(), "Material ID: 4");
}

TEST_F(MaterialIDGroup, NeedsMaterialIDsAndRenderIDs) {
    UseChannels(allChannels & ~BMM_CHAN_MTL_ID);
    Add();
    UseChannels(allChannels & ~BMM_CHAN_NODE_RENDER_ID);
    Add();
    UseChannels(allChannels & ~BMM_CHAN_COLOR);
    Set("outputMtlIDsAs"_param, 3);
    Add();
    EXPECT_EQ(Tree(), "");
}

}  // namespace

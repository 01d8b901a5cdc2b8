#include "effect/depth_group.h"

#include <array>
#include <memory>

#include "host/fragment_buffer.h"
#include "host/scene.h"
#include "tests/effect/fill_frame.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr DWORD weightsAndIdentities =
    BMM_CHAN_WEIGHT | BMM_CHAN_TRANSP | BMM_CHAN_NODE_RENDER_ID | BMM_CHAN_NODE_ID;

// Depths of 10, 14 and 20 in the first row; in the second a stray speck at 100, of which little
// shows, a pane of glass at 50, which is object 7, and nothing.
class DepthGroup : public FillFrameTest {
  protected:
    DepthGroup() {
        UseChannels(BMM_CHAN_Z | BMM_CHAN_COVERAGE);
        Host().log.SetDebugSink(
            [this](const MSTR& text) { printed.push_back(host::ToUtf8(text)); });
    }

    void UseChannels(DWORD channels) {
        const Color24 full{255, 255, 255};
        const host::Fragment front{.z = 10.0F, .weight = full, .renderID = 1};
        const host::Fragment middle{.z = 14.0F, .weight = full, .renderID = 1};
        const host::Fragment behind{.z = 20.0F, .weight = full, .renderID = 1};
        const host::Fragment speck{.z = 100.0F, .weight = {5, 5, 5}, .renderID = 1, .coverage = 5};
        const host::Fragment glass{
            .z = 50.0F, .transparency = full, .weight = full, .renderID = 7, .coverage = 5};
        auto fragments = std::make_unique<host::FragmentBuffer>(width, height, channels);
        for (const host::Fragment& fragment : {front, middle, behind, speck, glass})
            fragments->AddPixel(std::array{fragment});
        fragments->AddPixel({});
        image->SetGBuffer(std::move(fragments));
    }
    void AddLayer(Bitmap* bitmap) {
        Document().children.clear();
        effect::AddDepthGroup(builder, FrameOf(bitmap), true);
    }
    // The mask's samples.
    std::vector<int> LayerRow(std::uint32_t row) {
        AddLayer(image.get());
        const std::uint16_t* samples = Fill().mask->GetRow16(row);
        return {samples, samples + width};
    }
    static host::Node& AddNode(USHORT renderID, const MSTR& properties,
                               host::Node* parent = nullptr) {
        host::Node& node = Host().scene.AddNode(_M("node"), parent);
        node.SetRenderID(renderID);
        node.SetUserProperties(properties);
        return node;
    }

    std::vector<std::string> printed;
};

TEST_F(DepthGroup, AsALayerIsAWhiteFillWithTheDepthAsItsMask) {
    AddLayer(image.get());
    EXPECT_EQ(Fill().name, "Depth");
    EXPECT_EQ(Fill().unicodeName, u"Depth");
    EXPECT_EQ(Fill().blendKey, psdfile::blendKeyNormal);
    EXPECT_EQ(Fill().flags, 0);
    EXPECT_EQ(LevelsOf(Fill()), (std::vector{255.0, 255.0, 255.0}));
    EXPECT_TRUE(Fill().mask);
    EXPECT_TRUE(Fill().maskEnabled);
    EXPECT_FALSE(Fill().clipping);
    EXPECT_THAT(Document().channels, IsEmpty());
}

TEST_F(DepthGroup, AsAChannelHasTheHostsName) {
    effect::AddDepthGroup(builder, FrameOf(image.get()), false);
    EXPECT_THAT(Document().children, IsEmpty());
    ASSERT_EQ(Document().channels.size(), 1U);
    const psdbuilder::PSDBuilderChannel& channel = Document().channels.front();
    EXPECT_EQ(channel.name, host::ToUtf8(MSTR(GBChannelName(GB_Z))));
    EXPECT_NE(channel.name, "");
    const std::basic_string<MCHAR> unicodeName(channel.unicodeName.begin(),
                                               channel.unicodeName.end());
    EXPECT_EQ(unicodeName, GBChannelName(GB_Z));
    // 14 of 10 to 20 is 0.4 * 65535 = 26214.
    EXPECT_EQ(channel.source->GetRow16(0)[1], 65535 - 26214);
}

TEST_F(DepthGroup, MayHaveNamesOfTheUsers) {
    SetText("depthLayerName"_param, _M("Fog"));
    SetText("zDepthChannelName"_param, _M("Far"));
    AddLayer(image.get());
    EXPECT_EQ(Fill().name, "Fog");
    effect::AddDepthGroup(builder, FrameOf(image.get()), false);
    EXPECT_EQ(Document().channels.front().name, "Far");
}

TEST_F(DepthGroup, RunsBetweenTheDepthsThatShowEnough) {
    EXPECT_THAT(LayerRow(0), ElementsAre(65535, 65535 - 26214, 0));
    // What is beyond the far end has 5 levels of coverage.
    EXPECT_THAT(LayerRow(1), ElementsAre(65535 - 5 * 257, 65535 - 5 * 257, 65535));
}

TEST_F(DepthGroup, OfALowerThresholdTakesSpecksIn) {
    effect->pblock->SetValue("zDepthCoverageThreshold"_param, 0, 0.01F);
    // 14 and 20 of 10 to 100: 2912.7 and 7281.7 of 65535.
    EXPECT_THAT(LayerRow(0), ElementsAre(65535, 65535 - 2912, 65535 - 7281));
}

TEST_F(DepthGroup, MayReachFartherBack) {
    effect->pblock->SetValue("zDepthExtendToBack"_param, 0, 0.6F);
    // 10 to 26: 14 is a quarter, 16383.75; 20 is 0.625, 40959.375.
    EXPECT_THAT(LayerRow(0), ElementsAre(65535, 65535 - 16383, 65535 - 40959));
}

TEST_F(DepthGroup, TellsTheDebuggerBothRanges) {
    effect->pblock->SetValue("zDepthExtendToBack"_param, 0, 0.5F);
    AddLayer(image.get());
    EXPECT_THAT(printed,
                ElementsAre("Z-DEPTH: Min=10.000 Max=100.000 - ORIGINAL\n",
                            "Z-DEPTH ###: Min(0, 0)=10.000 Max(2, 0)=25.000 - - CUSTOM\n"));
}

TEST_F(DepthGroup, WhereNothingCountsTakesTheGBuffersOwnRange) {
    effect->pblock->SetValue("zDepthCoverageThreshold"_param, 0, 1.01F);
    // 20 of 10 to 100 is 7281.7 of 65535.
    EXPECT_EQ(LayerRow(0)[2], 65535 - 7281);
    EXPECT_THAT(printed, ElementsAre("Z-DEPTH: Min=10.000 Max=100.000 - ORIGINAL\n"));
}

TEST_F(DepthGroup, OfAGBufferWithoutFragmentsIsWhite) {
    auto fragments = std::make_unique<host::FragmentBuffer>(width, height, BMM_CHAN_Z);
    for (int i = 0; i < width * height; ++i)
        fragments->AddPixel({});
    image->SetGBuffer(std::move(fragments));
    EXPECT_THAT(LayerRow(0), ElementsAre(65535, 65535, 65535));
    EXPECT_THAT(printed, ElementsAre("Z-DEPTH: Min=0.000 Max=0.000 - ORIGINAL\n"));
}

TEST_F(DepthGroup, NeedsDepthInTheGBuffer) {
    for (const bool asLayer : {true, false}) {
        effect::AddDepthGroup(builder, FrameOf(nullptr), asLayer);
        effect::AddDepthGroup(builder, FrameOf(opaque.get()), asLayer);
    }
    UseChannels(weightsAndIdentities | BMM_CHAN_COVERAGE);
    effect::AddDepthGroup(builder, FrameOf(image.get()), true);
    effect::AddDepthGroup(builder, FrameOf(image.get()), false);
    EXPECT_THAT(Document().children, IsEmpty());
    EXPECT_THAT(Document().channels, IsEmpty());
    EXPECT_THAT(printed, IsEmpty());
}

class OpaqueGlass : public DepthGroup {
  protected:
    static constexpr const MCHAR* makeOpaque = _M("PSDZDepthMakeOpaque = 1");

    OpaqueGlass() { UseChannels(BMM_CHAN_Z | weightsAndIdentities); }
    // It is the far end then, at 50 in place of 20.
    bool IsGlassSeen() {
        const int sample = LayerRow(0)[2];
        // 20 of 10 to 50 is 0.25 * 65535 = 16383.75.
        EXPECT_THAT(sample, testing::AnyOf(0, 65535 - 16383));
        return sample != 0;
    }
};

TEST_F(OpaqueGlass, IsWhatANodesUserPropertySays) {
    EXPECT_FALSE(IsGlassSeen());
    host::Node& node = AddNode(7, _M(""));
    EXPECT_FALSE(IsGlassSeen());
    node.SetUserProperties(makeOpaque);
    EXPECT_TRUE(IsGlassSeen());
    node.SetUserProperties(_M("PSDZDepthMakeOpaque = 0"));
    EXPECT_FALSE(IsGlassSeen());
}

TEST_F(OpaqueGlass, IsTheFirstNodesAlone) {
    AddNode(7, makeOpaque);
    host::Node& other = AddNode(1, makeOpaque);
    EXPECT_TRUE(IsGlassSeen());
    host::Node& first = *Host().scene.GetNode(0);
    first.SetUserProperties(_M("PSDZDepthMakeOpaque = no"));
    EXPECT_FALSE(IsGlassSeen());
    other.SetUserProperties(_M(""));
    AddNode(7, makeOpaque, &other);
    EXPECT_TRUE(IsGlassSeen()) << "also one that hangs from another";
}

TEST_F(OpaqueGlass, IsOpaqueInTheImageToo) {
    // The speck weighs 5 levels.
    EXPECT_THAT(LayerRow(1), ElementsAre(65535 - 5 * 257, 65535, 65535));
    AddNode(7, makeOpaque);
    EXPECT_THAT(LayerRow(1), ElementsAre(65535 - 5 * 257, 0, 65535));
}

}  // namespace

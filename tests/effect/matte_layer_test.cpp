#include "effect/matte_layer.h"

#include <utility>

#include "tests/effect/matte_frame.h"
#include "tests/effect/vray_frame.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using Source = psdfile::PSDChannelImageDataSourcePtr;

constexpr effect::MatteGroupSettings groupSettings{
    .ownLayerSet = "outputObjectsLayerSet"_param,
    .outputAs = "outputObjectsAs"_param,
    .layerSetName = "objectsLayerSetName"_param,
    .defaultLayerSetName = _M("Objects"),
    .channels = BMM_CHAN_NODE_RENDER_ID,
};

// Colours 10, 20 and 30, coverage 40.
class MatteLayer : public MatteFrameTest {
  protected:
    MatteLayer() { Set("outputObjectsLayerSet"_param, FALSE); }

    Source Make(int component, bool premultiplied) {
        asked.emplace_back(component, premultiplied);
        return boost::make_shared<sources::SolidColorChannelImageSource>(
            static_cast<std::uint8_t>(10 * (component + 1)), width);
    }
    void Add(int style, const MCHAR* name = _M("Matte")) {
        asked.clear();
        Set("outputObjectsAs"_param, style);
        const effect::Frame frame = FrameOf(image.get());
        effect::MatteGroup group(builder, frame, groupSettings);
        ASSERT_TRUE(group.HasItsChannels());
        group.Add(effect::LayerName(name), [this](int component, bool premultiplied) {
            return Make(component, premultiplied);
        });
    }
    bool AddsWith(DWORD channels, int style) {
        UseChannels(channels);
        Set("outputObjectsAs"_param, style);
        const effect::Frame frame = FrameOf(image.get());
        return effect::MatteGroup(builder, frame, groupSettings).HasItsChannels();
    }
    static int Value(const Source& source) { return source->GetRow8(0)[0]; }

    // Component and premultiplication of each source that was made.
    std::vector<std::pair<int, bool>> asked;
};

TEST_F(MatteLayer, AsAChannelIsItsCoverage) {
    Set("outputObjectsLayerSet"_param, TRUE);
    Add(0, _M("A/B"));
    EXPECT_THAT(Document().children, IsEmpty()) << "no set either";
    ASSERT_EQ(Document().channels.size(), 1U);
    EXPECT_EQ(Document().channels[0].name, "A/B") << "names of channels are no paths";
    EXPECT_EQ(Document().channels[0].unicodeName, u"A/B");
    EXPECT_EQ(Value(Document().channels[0].source), 40);
    EXPECT_THAT(asked, ElementsAre(Pair(3, true)));
}

TEST_F(MatteLayer, AsAnAlphaMatteIsBlackWithItsCoverageAsAlpha) {
    Add(1);
    EXPECT_EQ(Layer(0).red, black);
    EXPECT_EQ(Layer(0).green, black);
    EXPECT_EQ(Layer(0).blue, black);
    EXPECT_EQ(Value(Layer(0).alpha), 40);
    EXPECT_THAT(asked, ElementsAre(Pair(3, true)));
}

TEST_F(MatteLayer, InColorHasTheFragmentsColours) {
    for (const int style : {2, 3}) {
        Add(style);
        const auto& layer = Layer(static_cast<std::size_t>(style - 2));
        EXPECT_EQ(Value(layer.red), 10);
        EXPECT_EQ(Value(layer.green), 20);
        EXPECT_EQ(Value(layer.blue), 30);
        EXPECT_EQ(Value(layer.alpha), 40);
        const bool premultiplied = style == 3;
        EXPECT_THAT(asked,
                    testing::UnorderedElementsAre(Pair(0, premultiplied), Pair(1, premultiplied),
                                                  Pair(2, premultiplied), Pair(3, premultiplied)));
    }
}

TEST_F(MatteLayer, AsALuminanceMatteIsSolidWithItsCoverageAsGrey) {
    Add(4);
    EXPECT_EQ(Value(Layer(0).red), 40);
    EXPECT_EQ(Value(Layer(0).green), 40);
    EXPECT_EQ(Value(Layer(0).blue), 40);
    EXPECT_EQ(Layer(0).alpha, white);
    for (const auto& source : asked)
        EXPECT_THAT(source, Pair(3, true));
}

TEST_F(MatteLayer, AsACutOutIsTheRenderWhereThereIsCoverage) {
    for (const bool withAlpha : {true, false}) {
        premultiply = withAlpha;
        Add(5);
        for (const auto& source : asked)
            EXPECT_THAT(source, Pair(3, withAlpha));
    }
    EXPECT_EQ(SampleOf(Layer(0).red), ImageAt(0));
    EXPECT_EQ(SampleOf(Layer(0).green), ImageAt(1));
    EXPECT_EQ(SampleOf(Layer(0).blue), ImageAt(2));
    EXPECT_EQ(Value(Layer(0).alpha), 40);
    EXPECT_GT(SampleOf(Layer(1).red), ImageAt(0)) << "divided by alpha";
}

TEST_F(MatteLayer, ACutOutTakesTheRendersGammaAndNeverTheSRGBCurve) {
    gammaMgr.enable = TRUE;
    gammaMgr.SetFileOutGamma(2.2F);
    Set("renderSRGBCorrect"_param, TRUE);
    Add(5);
    EXPECT_EQ(SampleOf(Layer(0).red), ImageAt(0)) << "an adjustment layer corrects it";
    colors.gammaActive = true;
    Add(5);
    EXPECT_EQ(SampleOf(Layer(1).red), ImageAt(0)) << "an adjustment layer corrects it";
    colors.gammaToRender = true;
    Add(5);
    EXPECT_EQ(SampleOf(Layer(2).red), gammaMgr.fileOutGammaTable[ImageAt(0) >> 3]);
}

TEST_F(MatteLayer, ACutOutComesFromVRaysFrameBufferWhereThatIsInUse) {
    const auto vray = VRayFrame(width, height);
    Set("outputObjectsAs"_param, 5);
    const effect::Frame frame = FrameOf(effect::PSDFrameSources{image.get(), vray.get()});
    {
        effect::MatteGroup group(builder, frame, groupSettings);
        group.Add(effect::LayerName(_M("Matte")), [this](int component, bool premultiplied) {
            return Make(component, premultiplied);
        });
    }
    EXPECT_EQ(SampleOf(Layer(0).red), VRaySample(2, 1, 0));
    EXPECT_EQ(SampleOf(Layer(0).green), VRaySample(2, 1, 1));
    EXPECT_EQ(SampleOf(Layer(0).blue), VRaySample(2, 1, 2));
    EXPECT_EQ(Value(Layer(0).alpha), 40);
}

TEST_F(MatteLayer, InAStyleThatIsNoneIsAnAlphaMatte) {
    for (const int style : {6, 1000, -1})
        Add(style);
    ASSERT_EQ(Document().children.size(), 3U);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(Layer(i).red, black);
        EXPECT_EQ(Value(Layer(i).alpha), 40);
    }
}

TEST_F(MatteLayer, IsVisibleUnlessMattesAreHidden) {
    for (int style = 1; style <= 5; ++style)
        Add(style);
    Set("matteLayersVisible"_param, FALSE);
    for (int style = 1; style <= 5; ++style)
        Add(style);
    ASSERT_EQ(Document().children.size(), 10U);
    for (std::size_t i = 0; i < 10; ++i) {
        EXPECT_EQ(Layer(i).flags, i < 5 ? 0 : 2);
        EXPECT_EQ(Layer(i).blendKey, psdfile::blendKeyNormal);
        EXPECT_EQ(Layer(i).name, "Matte");
        EXPECT_EQ(Layer(i).unicodeName, u"Matte");
        EXPECT_FALSE(Layer(i).mask);
        EXPECT_TRUE(Layer(i).maskEnabled);
        EXPECT_FALSE(Layer(i).clipping);
    }
}

TEST_F(MatteLayer, StandsInTheGroupsLayerSet) {
    Set("outputObjectsLayerSet"_param, TRUE);
    Set("matteLayersVisible"_param, FALSE);
    Add(1, _M("A"));
    Add(1, _M("B"));
    EXPECT_EQ(Tree(), "Objects(A B)") << "a set of that name that is there is gone on with";
    EXPECT_EQ(Set0().unicodeName, u"Objects");
    EXPECT_EQ(Set0().blendKey, psdfile::blendKeyPassThrough);
    EXPECT_EQ(Set0().flags, 0) << "only its layers are hidden";
    EXPECT_FALSE(Set0().open);
    EXPECT_FALSE(Set0().mask);
    EXPECT_TRUE(Set0().maskEnabled);
    EXPECT_EQ(builder.current.lock(), builder.doc) << "the set was left again";
    SetText("objectsLayerSetName"_param, _M("Mattes/Mine"));
    Add(1, _M("C"));
    EXPECT_EQ(Tree(), "Objects(A B) Mattes(Mine(C))");
}

TEST_F(MatteLayer, NamesArePaths) {
    Add(1, _M("A/B"));
    EXPECT_EQ(Tree(), "A(B)");
}

TEST_F(MatteLayer, NeedsTheIdentitiesAndInColorTheirColours) {
    for (int style = 0; style <= 5; ++style) {
        const bool isColor = style == 2 || style == 3;
        EXPECT_EQ(AddsWith(BMM_CHAN_NODE_RENDER_ID, style), !isColor) << style;
        EXPECT_TRUE(AddsWith(BMM_CHAN_NODE_RENDER_ID | BMM_CHAN_COLOR, style));
        EXPECT_FALSE(AddsWith(BMM_CHAN_COLOR | BMM_CHAN_NODE_ID, style));
    }
}

TEST_F(MatteLayer, WithoutItsChannelsThereIsNoLayerSetEither) {
    Set("outputObjectsLayerSet"_param, TRUE);
    EXPECT_FALSE(AddsWith(BMM_CHAN_NODE_ID, 1));
    const effect::Frame frame = FrameOf(nullptr);
    EXPECT_FALSE(effect::MatteGroup(builder, frame, groupSettings).HasItsChannels());
    EXPECT_THAT(Document().children, IsEmpty());
}

TEST_F(MatteLayer, WithoutPixelsIsLeftOutOfASingleFrameUnlessTheUserWantsIt) {
    const effect::Frame frame = FrameOf(image.get());
    const auto leavesOut = [&] {
        return effect::MatteGroup(builder, frame, groupSettings).LeavesOutEmpty();
    };
    Render().timeType = REND_TIMESINGLE;
    EXPECT_TRUE(leavesOut());
    Render().timeType = REND_TIMERANGE;
    EXPECT_FALSE(leavesOut());
    Set("filterEmptyLayersAndChannelsForAnimations"_param, TRUE);
    EXPECT_TRUE(leavesOut());
    Set("filterEmptyMattes"_param, FALSE);
    EXPECT_FALSE(leavesOut());
}

}  // namespace

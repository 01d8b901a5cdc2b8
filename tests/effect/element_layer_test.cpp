#include "effect/element_layer.h"

#include <vrayelements.h>

#include "psdfile/blend_keys.h"
#include "tests/effect/element_frame.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ElementLayer : public ElementFrameTest {
  protected:
    ElementLayer() : element(AddElement(unknownElement, "Element")) {}

    void Change(ParamID id, int value) { SetOf(element, id, value); }
    void AddWhole(Bitmap* bitmap) {
        effect::AddWholeElement(builder, FrameOf(image.get()), LayerOf(element), {.bitmap = bitmap},
                                pending);
    }
    void AddSplit(Bitmap* bitmap) {
        effect::AddSplitElement(builder, FrameOf(image.get()), LayerOf(element),
                                {.bitmap = bitmap});
    }
    static std::vector<int> ColorsOf(const psdbuilder::PSDBuilderRGBLayer& layer) {
        return {SampleOf(layer.red), SampleOf(layer.green), SampleOf(layer.blue)};
    }
    void FilterEmptyElements() { Set("filterEmptyRenderElements"_param, TRUE); }

    host::RenderElement& element;
    effect::PendingLayers pending;
};

// ---- Whole ----

TEST_F(ElementLayer, IsTheElement) {
    AddWhole(image.get());
    EXPECT_EQ(Tree(), "Element");
    const auto& layer = Layer(0);
    EXPECT_EQ(layer.unicodeName, u"Element");
    EXPECT_THAT(ColorsOf(layer), ElementsAre(ImageAt(0), ImageAt(1), ImageAt(2)));
    EXPECT_EQ(SampleOf(layer.alpha), ImageAt(3));
    EXPECT_FALSE(layer.mask);
    EXPECT_TRUE(layer.maskEnabled);
    EXPECT_EQ(layer.blendKey, psdfile::blendKeyNormal);
    EXPECT_EQ(layer.flags, 0);
    EXPECT_FALSE(layer.clipping);
    EXPECT_THAT(Channels(), IsEmpty());
}

TEST_F(ElementLayer, HasTheBlendModeVisibilityAndClippingOfItsSettings) {
    for (int mode = 0; mode <= 26; ++mode) {
        Change("blendingMode"_layerParam, mode);
        AddWhole(image.get());
        EXPECT_EQ(Document().children.back()->blendKey, psdfile::BlendKey(mode)) << mode;
    }
    Change("visible"_layerParam, FALSE);
    Change("groupWithPrevious"_layerParam, TRUE);
    AddWhole(image.get());
    EXPECT_EQ(Document().children.back()->flags, 2);
    EXPECT_TRUE(Document().children.back()->clipping);
}

TEST_F(ElementLayer, HasItsAlphaAsTransparencyMaskBothOrNeither) {
    Change("mask"_layerParam, TRUE);
    AddWhole(image.get());
    EXPECT_EQ(SampleOf(Layer(0).alpha), ImageAt(3));
    EXPECT_EQ(SampleOf(Layer(0).mask), ImageAt(3));
    EXPECT_TRUE(Layer(0).maskEnabled);
    Change("transparency"_layerParam, FALSE);
    AddWhole(image.get());
    EXPECT_EQ(Layer(1).alpha, white);
    EXPECT_EQ(SampleOf(Layer(1).mask), ImageAt(3));
    Change("mask"_layerParam, FALSE);
    AddWhole(image.get());
    EXPECT_EQ(Layer(2).alpha, white);
    EXPECT_FALSE(Layer(2).mask);
}

TEST_F(ElementLayer, OfAnElementWithoutAlphaIsWhiteInsteadOfIt) {
    Change("mask"_layerParam, TRUE);
    AddWhole(opaque.get());
    EXPECT_EQ(Layer(0).alpha, white);
    EXPECT_EQ(Layer(0).mask, white);
}

TEST_F(ElementLayer, AsAChannelIsTheMeanOfTheColours) {
    Change("outputAs"_layerParam, 1);
    AddWhole(image.get());
    EXPECT_EQ(Tree(), "");
    ASSERT_THAT(Channels(), ElementsAre("Element"));
    EXPECT_EQ(Document().channels[0].unicodeName, u"Element");
    EXPECT_EQ(SampleOf(Document().channels[0].source), (ImageAt(0) + ImageAt(1) + ImageAt(2)) / 3);
}

TEST_F(ElementLayer, AsAnythingElseIsNothing) {
    for (const int other : {-1, 2, 7}) {
        Change("outputAs"_layerParam, other);
        AddWhole(image.get());
        AddSplit(image.get());
    }
    EXPECT_EQ(Tree(), "");
    EXPECT_THAT(Channels(), IsEmpty());
}

TEST_F(ElementLayer, WithSlashesInItsNameStandsInSets) {
    element.SetElementName(_M("Lights/Key/Left"));
    AddWhole(image.get());
    EXPECT_EQ(Tree(), "Lights(Key(Left))");
}

TEST_F(ElementLayer, OfBlackIsLeftOutWhereTheUserWants) {
    const auto nothing = Black();
    AddWhole(nothing.get());
    EXPECT_EQ(Tree(), "Element");
    FilterEmptyElements();
    AddWhole(nothing.get());
    EXPECT_EQ(Tree(), "Element");
    AddWhole(image.get());
    EXPECT_EQ(Tree(), "Element Element");
    Change("outputAs"_layerParam, 1);
    AddWhole(nothing.get());
    EXPECT_THAT(Channels(), IsEmpty());
}

TEST_F(ElementLayer, OfBlackStaysInAnAnimationUnlessTheUserWantsItThereToo) {
    const auto nothing = Black();
    FilterEmptyElements();
    Render().timeType = REND_TIMESEGMENT;
    AddWhole(nothing.get());
    EXPECT_EQ(Tree(), "Element");
    Set("filterEmptyLayersAndChannelsForAnimations"_param, TRUE);
    AddWhole(nothing.get());
    EXPECT_EQ(Tree(), "Element");
    Set("filterEmptyRenderElements"_param, FALSE);
    AddWhole(nothing.get());
    EXPECT_EQ(Tree(), "Element Element");
}

// ---- Merging ----

class MergingElementLayer : public ElementLayer {
  protected:
    MergingElementLayer() {
        Change("blendingMode"_layerParam, 9);
        Change("mergeDown"_layerParam, TRUE);
    }
    void StopMerging() { Change("mergeDown"_layerParam, FALSE); }

    // Opaque, without rounding when they are added.
    host::Owned<host::ImageBitmap> light = Filled(13107, 0, 0);
    host::Owned<host::ImageBitmap> more = Filled(26214, 13107, 0);
};

TEST_F(MergingElementLayer, LandsInTheNextLayer) {
    AddWhole(light.get());
    EXPECT_EQ(Tree(), "");
    EXPECT_EQ(pending.size(), 1U);
    StopMerging();
    Change("mask"_layerParam, TRUE);
    AddWhole(more.get());
    EXPECT_EQ(Tree(), "Element");
    EXPECT_TRUE(pending.empty());
    EXPECT_THAT(ColorsOf(Layer(0)), ElementsAre(39321, 13107, 0));
    EXPECT_EQ(SampleOf(Layer(0).alpha), 65535);
    EXPECT_FALSE(Layer(0).mask) << "a merged layer has no mask";
    EXPECT_EQ(Layer(0).blendKey, psdfile::BlendKey(9));
    AddWhole(more.get());
    EXPECT_THAT(ColorsOf(Layer(1)), ElementsAre(26214, 13107, 0)) << "once";
}

TEST_F(MergingElementLayer, LandsWithAllThatIsPending) {
    AddWhole(light.get());
    AddWhole(light.get());
    EXPECT_EQ(pending.size(), 2U);
    StopMerging();
    AddWhole(more.get());
    EXPECT_EQ(SampleOf(Layer(0).red), 52428);
}

TEST_F(MergingElementLayer, LandsInABlackOneThatElseWereLeftOut) {
    const auto nothing = Black();
    FilterEmptyElements();
    AddWhole(light.get());
    StopMerging();
    AddWhole(nothing.get());
    EXPECT_EQ(Tree(), "Element");
    EXPECT_EQ(SampleOf(Layer(0).red), 13107);
    AddWhole(nothing.get());
    EXPECT_EQ(Tree(), "Element");
}

TEST_F(MergingElementLayer, OfBlackIsPendingToo) {
    const auto nothing = Black();
    FilterEmptyElements();
    AddWhole(nothing.get());
    EXPECT_EQ(pending.size(), 1U);
}

TEST_F(MergingElementLayer, ThatIsHiddenAddsNothing) {
    Change("visible"_layerParam, FALSE);
    AddWhole(light.get());
    EXPECT_EQ(Tree(), "");
    EXPECT_TRUE(pending.empty());
}

TEST_F(MergingElementLayer, MergesInLinearDodgeOnly) {
    Change("blendingMode"_layerParam, 7);
    AddWhole(light.get());
    EXPECT_EQ(Tree(), "Element");
    EXPECT_TRUE(pending.empty());
}

TEST_F(MergingElementLayer, OfBlackStaysInEveryMode) {
    const auto nothing = Black();
    FilterEmptyElements();
    Change("blendingMode"_layerParam, 7);
    AddWhole(nothing.get());
    EXPECT_EQ(Tree(), "Element");
}

TEST_F(MergingElementLayer, KeepsABlackChannelBehindWhatIsPending) {
    const auto nothing = Black();
    FilterEmptyElements();
    AddWhole(light.get());
    StopMerging();
    Change("outputAs"_layerParam, 1);
    AddWhole(nothing.get());
    EXPECT_THAT(Channels(), ElementsAre("Element"));
    pending.clear();
    AddWhole(nothing.get());
    EXPECT_THAT(Channels(), ElementsAre("Element"));
}

TEST_F(MergingElementLayer, IsNoChannelsBusiness) {
    AddWhole(light.get());
    Change("outputAs"_layerParam, 1);
    AddWhole(more.get());
    EXPECT_THAT(Channels(), ElementsAre("Element"));
    EXPECT_EQ(SampleOf(Document().channels[0].source), (26214 + 13107) / 3);
    EXPECT_EQ(pending.size(), 1U) << "the channel took nothing";
    Change("outputAs"_layerParam, 0);
    Change("transparency"_layerParam, FALSE);
    AddSplit(more.get());
    EXPECT_EQ(SampleOf(Layer(0).red), 26214);
    EXPECT_EQ(pending.size(), 1U) << "nor did a split element";
}

// ---- Split ----

TEST_F(ElementLayer, SplitIsAGreyLayerOfEachColour) {
    Change("transparency"_layerParam, FALSE);
    Change("blendingMode"_layerParam, 3);
    Change("visible"_layerParam, FALSE);
    Change("groupWithPrevious"_layerParam, TRUE);
    AddSplit(image.get());
    EXPECT_EQ(Tree(), "Element R Element G Element B");
    for (int component = 0; component < 3; ++component) {
        const auto& layer = Layer(static_cast<std::size_t>(component));
        const int sample = ImageAt(component);
        EXPECT_THAT(ColorsOf(layer), ElementsAre(sample, sample, sample));
        EXPECT_EQ(layer.alpha, white);
        EXPECT_FALSE(layer.mask);
        EXPECT_EQ(layer.blendKey, psdfile::BlendKey(3));
        EXPECT_EQ(layer.flags, 2);
        EXPECT_TRUE(layer.clipping);
    }
}

TEST_F(ElementLayer, SplitWithTransparencyIsAMatteOfBlack) {
    AddSplit(image.get());
    ASSERT_EQ(Tree(), "Element R Element G Element B");
    for (int component = 0; component < 3; ++component) {
        const auto& layer = Layer(static_cast<std::size_t>(component));
        EXPECT_EQ(layer.red, black);
        EXPECT_EQ(layer.green, black);
        EXPECT_EQ(layer.blue, black);
        EXPECT_EQ(SampleOf(layer.alpha), ImageAt(component));
        EXPECT_FALSE(layer.mask);
    }
}

TEST_F(ElementLayer, SplitWithAMaskIsBlackUnderIt) {
    Change("transparency"_layerParam, FALSE);
    Change("mask"_layerParam, TRUE);
    AddSplit(image.get());
    EXPECT_EQ(Layer(1).red, black);
    EXPECT_EQ(Layer(1).alpha, white);
    EXPECT_EQ(SampleOf(Layer(1).mask), ImageAt(1));
}

TEST_F(ElementLayer, SplitWithoutAlphaIsWhiteInsteadOfTheMatte) {
    Change("mask"_layerParam, TRUE);
    AddSplit(opaque.get());
    EXPECT_EQ(Layer(2).red, black);
    EXPECT_EQ(Layer(2).alpha, white);
    EXPECT_EQ(Layer(2).mask, white);
}

TEST_F(ElementLayer, SplitAsChannelsIsOneOfEachColour) {
    Change("outputAs"_layerParam, 1);
    AddSplit(image.get());
    EXPECT_EQ(Tree(), "");
    ASSERT_THAT(Channels(), ElementsAre("Element R", "Element G", "Element B"));
    for (int component = 0; component < 3; ++component) {
        EXPECT_EQ(SampleOf(Document().channels[static_cast<std::size_t>(component)].source),
                  ImageAt(component));
    }
}

TEST_F(ElementLayer, SplitLeavesOutEmptyColoursWhereTheUserWants) {
    FilterEmptyElements();
    const auto green = Filled(0, 1, 0);
    AddSplit(green.get());
    EXPECT_EQ(Tree(), "Element G");
    Change("outputAs"_layerParam, 1);
    AddSplit(green.get());
    EXPECT_THAT(Channels(), ElementsAre("Element G"));
}

TEST_F(ElementLayer, SplitOfAMatteHasOneLayerForEqualComponents) {
    host::RenderElement& matte = AddElement(VRAY_MULTI_MATTE_ELEMENT, "MultiMatteElement");
    for (int component : {0, 1, 2})
        matte.SetMultiMatte(component, {.idOn = true, .id = 4, .nodes = {}});
    effect::AddSplitElement(builder, FrameOf(image.get()), LayerOf(matte), {.bitmap = image.get()});
    EXPECT_EQ(Tree(), "Matte Object ID: 4");
    EXPECT_EQ(SampleOf(Layer(0).alpha), ImageAt(0));
}

}  // namespace

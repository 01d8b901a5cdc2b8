#include "effect/custom_layer_sets.h"

#include "tests/effect/document_frame.h"
#include "tests/effect/vray_frame.h"

namespace {

struct CustomSet {
    void (*add)(psdbuilder::PSDBuilder& builder, const effect::Frame& frame);
    ParamID name;
    ParamID open;
    ParamID visible;
    const char* defaultName;
};

const CustomSet customSets[] = {
    {effect::AddLayerSet1, "customLayerSet1Name"_param, "customLayerSet1OpenInUI"_param,
     "customLayerSet1Visible"_param, "Layer Set 1"},
    {effect::AddLayerSet2, "customLayerSet2Name"_param, "customLayerSet2OpenInUI"_param,
     "customLayerSet2Visible"_param, "Layer Set 2"},
    {effect::AddLayerSet3, "customLayerSet3Name"_param, "customLayerSet3OpenInUI"_param,
     "customLayerSet3Visible"_param, "Layer Set 3"},
};

class CustomLayerSets : public DocumentFrameTest {
  protected:
    const psdbuilder::PSDBuilderLayerSet& Add(const CustomSet& set, const effect::Frame& frame) {
        Document().children.clear();
        set.add(builder, frame);
        EXPECT_EQ(Document().children.size(), 1U);
        return dynamic_cast<const psdbuilder::PSDBuilderLayerSet&>(*Document().children.at(0));
    }
    const psdbuilder::PSDBuilderLayerSet& Add(const CustomSet& set) {
        return Add(set, FrameOf(image.get()));
    }
};

TEST_F(CustomLayerSets, AreClosedVisibleAndEmptyByDefault) {
    for (const CustomSet& custom : customSets) {
        const auto& set = Add(custom);
        EXPECT_EQ(set.name, custom.defaultName);
        EXPECT_EQ(set.unicodeName, std::u16string(set.name.begin(), set.name.end()));
        EXPECT_EQ(set.blendKey, psdfile::blendKeyPassThrough);
        EXPECT_EQ(set.flags, 0);
        EXPECT_FALSE(set.open);
        EXPECT_FALSE(set.mask);
        EXPECT_TRUE(set.maskEnabled);
        EXPECT_TRUE(set.children.empty());
        EXPECT_EQ(builder.current.lock(), builder.doc) << "the set is ended";
    }
}

TEST_F(CustomLayerSets, EachIsOpenedHiddenAndNamedByItsOwnSettings) {
    for (const CustomSet& changed : customSets) {
        Set(changed.open, TRUE);
        Set(changed.visible, FALSE);
        SetText(changed.name, _M("Mine"));
        for (const CustomSet& custom : customSets) {
            const bool isChanged = custom.add == changed.add;
            const auto& set = Add(custom);
            EXPECT_EQ(set.open, isChanged);
            EXPECT_EQ(set.flags, isChanged ? 2 : 0);
            EXPECT_EQ(set.name, isChanged ? "Mine" : custom.defaultName);
        }
        Set(changed.open, FALSE);
        Set(changed.visible, TRUE);
        SetText(changed.name, _M(""));
    }
}

TEST_F(CustomLayerSets, OnlyTheSecondTakesTheRendersAlphaAsItsMask) {
    Set("customLayerSet2MaskFromRenderAlpha"_param, TRUE);
    EXPECT_FALSE(Add(customSets[0]).mask);
    EXPECT_FALSE(Add(customSets[2]).mask);
    const auto& set = Add(customSets[1]);
    ASSERT_TRUE(set.mask);
    EXPECT_EQ(SampleOf(set.mask), ImageAt(3));
    EXPECT_TRUE(set.maskEnabled);
}

TEST_F(CustomLayerSets, TheSecondHasNoMaskWithoutAnAlpha) {
    Set("customLayerSet2MaskFromRenderAlpha"_param, TRUE);
    EXPECT_FALSE(Add(customSets[1], FrameOf(opaque.get())).mask);
    EXPECT_FALSE(Add(customSets[1], FrameOf(nullptr)).mask);
}

TEST_F(CustomLayerSets, TheSecondsMaskComesFromVRaysFrameBufferWhereThatIsInUse) {
    Set("customLayerSet2MaskFromRenderAlpha"_param, TRUE);
    const auto vray = VRayFrame(width, height);
    const effect::PSDFrameSources sources{opaque.get(), vray.get()};
    EXPECT_EQ(SampleOf(Add(customSets[1], FrameOf(sources)).mask), VRaySample(2, 1, 3));
}

}  // namespace

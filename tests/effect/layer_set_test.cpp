#include "effect/layer_set.h"

#include "tests/effect/document_frame.h"
#include "tests/psdbuilder/tree_text.h"

namespace {

class GroupSet : public DocumentFrameTest {
  protected:
    const psdbuilder::PSDBuilderLayerSet& Begin(
        const psdfile::PSDChannelImageDataSourcePtr& mask = {}) {
        effect::BeginGroupSet(builder, effect::LayerName(_M("Gr\u00FCn \u6F22")), mask);
        return dynamic_cast<const psdbuilder::PSDBuilderLayerSet&>(*Document().children.at(0));
    }
};

TEST_F(GroupSet, IsVisibleClosedAndPassingThrough) {
    const auto& set = Begin();
    EXPECT_EQ(set.name, "Gr\xFCn ?");
    EXPECT_EQ(set.unicodeName, u"Gr\u00FCn \u6F22");
    EXPECT_EQ(set.blendKey, 0x70617373U) << "pass";
    EXPECT_EQ(set.flags, 0);
    EXPECT_FALSE(set.open);
    EXPECT_FALSE(set.mask);
    EXPECT_TRUE(set.maskEnabled);
}

TEST_F(GroupSet, MayHaveAMask) {
    const auto& set = Begin(black);
    EXPECT_EQ(set.mask, black);
    EXPECT_TRUE(set.maskEnabled);
}

TEST_F(GroupSet, TakesWhatComesUntilItIsEnded) {
    Begin();
    effect::BeginGroupSet(builder, effect::LayerName(_M("Inner")));
    builder.EndLayerSet();
    builder.EndLayerSet();
    effect::BeginGroupSet(builder, effect::LayerName(_M("Next")));
    EXPECT_EQ(psdbuilder::TreeText(Document()), "Gr\xFCn ?(Inner()) Next()");
}

}  // namespace

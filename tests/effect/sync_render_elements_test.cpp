#include <elementclasses.h>

#include "effect/class_defaults.h"
#include "tests/effect/element_frame.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SyncRenderElements : public ElementFrameTest {
  protected:
    host::RenderElement& Add(PassKind kind, const std::string& name,
                             RenderSettingID setting = RS_Production) {
        return Elements(setting).Add(PassClassID(kind), host::FromUtf8(name));
    }
    bool Sync(int list = 0) { return effect::SyncRenderElements(*effect, list); }
    std::vector<std::string> Names(int list = 0) {
        std::vector<std::string> names;
        for (int i = 0; i < effect->LayerCount(list); ++i) {
            const effect::PSDOutputLayer* layer = effect->Layer(list, i);
            names.push_back(layer ? host::ToUtf8(layer->ElementName()) : "null");
        }
        return names;
    }
    bool TakeSaveRequired() { return std::exchange(Host().settings.saveRequired, false); }
};

TEST_F(SyncRenderElements, MakesALayerForEachElement) {
    const host::RenderElement& element = Add(PassKind::Emission, "Emit");
    Add(PassKind::Background, "Env");
    EXPECT_TRUE(Sync());
    EXPECT_THAT(Names(), ElementsAre("Emit", "Env"));
    EXPECT_EQ(GetOf(element, "blendingMode"_layerParam), 9) << "with the class's defaults";
    EXPECT_EQ(GetOf(element, "transparency"_layerParam), FALSE);
    EXPECT_FALSE(Sync());
    EXPECT_THAT(Names(), ElementsAre("Emit", "Env"));
    EXPECT_FALSE(TakeSaveRequired()) << "only a layer that goes is told";
}

TEST_F(SyncRenderElements, KeepsTheSettingsOfLayersThatAreThere) {
    const host::RenderElement& element = Add(PassKind::Emission, "Emit");
    Sync();
    SetOf(element, "blendingMode"_layerParam, 3);
    Add(PassKind::Background, "Env");
    EXPECT_TRUE(Sync());
    EXPECT_EQ(GetOf(element, "blendingMode"_layerParam), 3);
}

TEST_F(SyncRenderElements, TakesOutLayersWhoseElementIsGone) {
    const host::RenderElement& first = Add(PassKind::Emission, "Emit");
    Add(PassKind::Coat, "Coat");
    const host::RenderElement& third = Add(PassKind::Background, "Env");
    Sync();
    Elements().Remove(&first);
    Elements().Remove(&third);
    EXPECT_TRUE(Sync());
    EXPECT_THAT(Names(), ElementsAre("Coat"));
    EXPECT_TRUE(TakeSaveRequired());
    EXPECT_FALSE(Sync());
    EXPECT_FALSE(TakeSaveRequired());
    Elements().Clear();
    EXPECT_TRUE(Sync());
    EXPECT_THAT(Names(), IsEmpty());
}

TEST_F(SyncRenderElements, TakesOutNullEntriesAndElementsOfOtherSettings) {
    AddElement(unknownElement, "A");
    AddElement(unknownElement, "B");
    LayerOf(*Elements().GetRenderElement(0)).DeleteThis();
    AddLayer(Add(PassKind::Coat, "draft", RS_Draft), 0);
    ASSERT_THAT(Names(), ElementsAre("null", "B", "draft"));
    EXPECT_TRUE(Sync());
    EXPECT_THAT(Names(), ElementsAre("B", "A"));
}

TEST_F(SyncRenderElements, SortsAListThatWasEmptyAndNoOther) {
    Add(PassKind::Background, "Env");
    Add(PassKind::Emission, "Emit");
    Sync();
    EXPECT_THAT(Names(), ElementsAre("Emit", "Env"));
    Add(PassKind::LightGroup, "Lamp");
    Sync();
    EXPECT_THAT(Names(), ElementsAre("Emit", "Env", "Lamp"));
}

TEST_F(SyncRenderElements, KeepsAListSortedWhereTheUserWants) {
    Add(PassKind::Background, "Env");
    Sync();
    Add(PassKind::Emission, "Emit");
    Sync();
    ASSERT_THAT(Names(), ElementsAre("Env", "Emit"));
    Set("autoSort"_param, TRUE);
    EXPECT_TRUE(Sync());
    EXPECT_THAT(Names(), ElementsAre("Emit", "Env"));
    EXPECT_TRUE(Sync()) << "a sort counts as a change, also of nothing";
}

TEST_F(SyncRenderElements, OfNoElementsDoesNothing) {
    EXPECT_FALSE(Sync());
    EXPECT_THAT(Names(), IsEmpty());
}

TEST_F(SyncRenderElements, WithoutTheHostsManagerLeavesTheListAlone) {
    AddElement(PassClassID(PassKind::Background), "Env");
    AddElement(PassClassID(PassKind::Emission), "Emit");
    const host::RenderElement& gone = AddElement(unknownElement, "gone");
    Elements().Remove(&gone);
    Render().current = static_cast<RenderSettingID>(2);
    Set("autoSort"_param, TRUE);
    EXPECT_FALSE(Sync());
    EXPECT_THAT(Names(), ElementsAre("Env", "Emit", "<deleted>"));
    EXPECT_FALSE(TakeSaveRequired());
}

TEST_F(SyncRenderElements, WithoutTheBlockDoesNothing) {
    Add(PassKind::Emission, "Emit");
    effect->DeleteReference(0);
    EXPECT_FALSE(Sync());
}

TEST_F(SyncRenderElements, PreparesLayersFor32Bits) {
    const host::RenderElement& early = Elements().Add(ATMOSPHERE_ELEMENT, _M("early"));
    Sync();
    EXPECT_EQ(GetOf(early, "blendingMode"_layerParam), 7);
    Set("bitDepth"_param, 32);
    const host::RenderElement& element = Elements().Add(ATMOSPHERE_ELEMENT, _M("late"));
    Sync();
    EXPECT_EQ(GetOf(element, "blendingMode"_layerParam), 9);
    EXPECT_EQ(GetOf(early, "blendingMode"_layerParam), 9);
}

TEST_F(SyncRenderElements, WritesTheListThatIsAskedFor) {
    Add(PassKind::Emission, "Emit");
    EXPECT_TRUE(Sync(1));
    EXPECT_THAT(Names(1), ElementsAre("Emit"));
    EXPECT_THAT(Names(0), IsEmpty());
    EXPECT_FALSE(Sync(2)) << "a list that isn't there";
}

TEST_F(SyncRenderElements, GoesByTheElementsOfTheCurrentSettings) {
    Add(PassKind::Emission, "Emit");
    Add(PassKind::Coat, "draft", RS_Draft);
    Render().current = RS_Draft;
    Sync(1);
    EXPECT_THAT(Names(1), ElementsAre("draft"));
}

TEST_F(SyncRenderElements, ARenderGoesByTheListOfItsElements) {
    EXPECT_EQ(effect::LayerListOf(context), 0);
    context.elementMgr = &Elements(RS_Draft);
    EXPECT_EQ(effect::LayerListOf(context), 1);
    context.elementMgr = nullptr;
    EXPECT_EQ(effect::LayerListOf(context), 0);
}

}  // namespace

#include "effect/sort_layers.h"

#include <elementclasses.h>

#include "tests/effect/element_frame.h"

namespace {

using testing::ElementsAre;

class SortLayers : public ElementFrameTest {
  protected:
    std::vector<std::string> Sorted(int list = 0) {
        effect::SortLayers(*effect, list);
        std::vector<std::string> names;
        for (int i = 0; i < effect->LayerCount(list); ++i) {
            const effect::PSDOutputLayer* layer = effect->Layer(list, i);
            names.push_back(layer ? host::ToUtf8(layer->ElementName()) : "null");
        }
        return names;
    }
    void AddPass(PassKind kind, const std::string& name) { AddElement(PassClassID(kind), name); }
};

TEST_F(SortLayers, GoByTheRankOfTheirClass) {
    AddPass(PassKind::Normal, "Normal");
    AddPass(PassKind::DiffuseIndirect, "DiffInd");
    AddPass(PassKind::Background, "Env");
    AddPass(PassKind::DiffuseColor, "DiffCol");
    AddPass(PassKind::Emission, "Emit");
    AddPass(PassKind::DiffuseDirect, "DiffDir");
    EXPECT_THAT(Sorted(), ElementsAre("Emit", "DiffCol", "DiffDir", "DiffInd", "Env", "Normal"));
}

TEST_F(SortLayers, OfUnknownClassesComeFirst) {
    AddPass(PassKind::Emission, "Emit");
    AddElement(unknownElement, "B");
    AddElement({7, 7}, "A");
    EXPECT_THAT(Sorted(), ElementsAre("B", "A", "Emit"));
}

TEST_F(SortLayers, OfEqualRankStayAsTheyWere) {
    for (const char* name : {"c", "a", "d", "b"})
        AddPass(PassKind::LightGroup, name);
    EXPECT_THAT(Sorted(), ElementsAre("c", "a", "d", "b"));
    EXPECT_THAT(Sorted(), ElementsAre("c", "a", "d", "b"));
}

TEST_F(SortLayers, ThatAreChannelsComeLast) {
    const host::RenderElement& first = AddElement(unknownElement, "mask");
    AddPass(PassKind::Normal, "Normal");
    AddPass(PassKind::Emission, "Emit");
    SetOf(first, "outputAs"_layerParam, 1);
    EXPECT_THAT(Sorted(), ElementsAre("Emit", "Normal", "mask"));
    SetOf(*Elements().GetRenderElement(1), "outputAs"_layerParam, 1);
    EXPECT_THAT(Sorted(), ElementsAre("Emit", "mask", "Normal")) << "channels by rank as well";
}

TEST_F(SortLayers, WithoutAnElementAndNullEntriesComeFirst) {
    AddPass(PassKind::Emission, "Emit");
    AddPass(PassKind::Coat, "Coat");
    AddPass(PassKind::Background, "Env");
    // The first entry stays behind as a null.
    LayerOf(*Elements().GetRenderElement(0)).DeleteThis();
    Elements().Remove(Elements().GetRenderElement(1));
    AddPass(PassKind::Volume, "Volume");
    EXPECT_THAT(Sorted(), ElementsAre("null", "<deleted>", "Volume", "Env"));
}

TEST_F(SortLayers, OfTheOtherListStayAsTheyAre) {
    AddPass(PassKind::Background, "Env");
    AddPass(PassKind::Emission, "Emit");
    AddLayer(*Elements().GetRenderElement(0), 1);
    AddLayer(*Elements().GetRenderElement(1), 1);
    EXPECT_THAT(Sorted(1), ElementsAre("Emit", "Env"));
    EXPECT_EQ(effect->Layer(0, 0)->Element(), Elements().GetRenderElement(0));
    effect::SortLayers(*effect, 2);
    EXPECT_THAT(Sorted(0), ElementsAre("Emit", "Env"));
}

}  // namespace

#include "ui/move_layer.h"

#include <elementclasses.h>

#include "tests/effect/element_frame.h"

namespace {

using testing::ElementsAre;

class MoveLayer : public ElementFrameTest {
  protected:
    MoveLayer() {
        for (const char* name : {"a", "b", "c"})
            AddElement(unknownElement, name);
    }
    std::vector<std::string> Names() {
        std::vector<std::string> names;
        for (int i = 0; i < effect->LayerCount(0); ++i) {
            const effect::PSDOutputLayer* layer = effect->Layer(0, i);
            names.push_back(layer ? host::ToUtf8(layer->ElementName()) : "null");
        }
        return names;
    }
};

TEST_F(MoveLayer, ChangesPlacesWithTheNeighbour) {
    EXPECT_EQ(ui::MoveLayer(*effect, 0, 1), 1);
    EXPECT_THAT(Names(), ElementsAre("b", "a", "c"));
    EXPECT_EQ(ui::MoveLayer(*effect, 2, -1), 1);
    EXPECT_THAT(Names(), ElementsAre("b", "c", "a"));
    EXPECT_EQ(ui::MoveLayer(*effect, 1, -1), 0);
    EXPECT_THAT(Names(), ElementsAre("c", "b", "a"));
}

TEST_F(MoveLayer, KeepsTheLayersThemselvesWithTheirSettings) {
    SetOf(*Elements().GetRenderElement(0), "mask"_layerParam, TRUE);
    effect::PSDOutputLayer* first = effect->Layer(0, 0);
    effect::PSDOutputLayer* second = effect->Layer(0, 1);
    ui::MoveLayer(*effect, 0, 1);
    ASSERT_EQ(effect->Layer(0, 0), second);
    ASSERT_EQ(effect->Layer(0, 1), first);
    EXPECT_EQ(first->pblock->GetInt("mask"_layerParam), TRUE);
    EXPECT_FALSE(first->TestAFlag(0x8000000)) << "only held on to during the move";
    EXPECT_FALSE(second->TestAFlag(0x8000000));
    // Each goes with its last entry, as before.
    effect->pblock->SetCount("layersProduction"_param, 0);
    EXPECT_EQ(effect->LayerCount(0), 0);
}

TEST_F(MoveLayer, OutOfTheTableMovesNothing) {
    EXPECT_EQ(ui::MoveLayer(*effect, 0, -1), 0);
    EXPECT_EQ(ui::MoveLayer(*effect, 2, 1), 2);
    EXPECT_EQ(ui::MoveLayer(*effect, -1, 1), -1);
    EXPECT_EQ(ui::MoveLayer(*effect, 3, -1), 3);
    EXPECT_THAT(Names(), ElementsAre("a", "b", "c"));
}

TEST_F(MoveLayer, PassesANullEntryAndMovesNone) {
    // The first entry stays behind as a null.
    effect->Layer(0, 0)->DeleteThis();
    EXPECT_EQ(ui::MoveLayer(*effect, 0, 1), 0);
    EXPECT_THAT(Names(), ElementsAre("null", "b", "c"));
    EXPECT_EQ(ui::MoveLayer(*effect, 1, -1), 0);
    EXPECT_THAT(Names(), ElementsAre("b", "null", "c"));
}

TEST_F(MoveLayer, SelectsTheRowButForTheFirstAfterAMoveDown) {
    EXPECT_TRUE(ui::SelectsMovedRow(-1, 0));
    EXPECT_TRUE(ui::SelectsMovedRow(-1, 3));
    EXPECT_TRUE(ui::SelectsMovedRow(1, 1));
    EXPECT_FALSE(ui::SelectsMovedRow(1, 0));
}

}  // namespace

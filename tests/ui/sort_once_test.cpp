#include "ui/sort_once.h"

#include <elementclasses.h>

#include "tests/effect/element_frame.h"

namespace {

class SortOnce : public ElementFrameTest {
  protected:
    SortOnce() {
        AddElement(BACKGROUND_ELEMENT, "Back");
        AddElement(SPECULAR_ELEMENT, "Spec");
        AddElement(unknownElement, "Mine");
    }
    std::string NameAt(int row) { return host::ToUtf8(effect->Layer(0, row)->ElementName()); }
};

TEST_F(SortOnce, FindsTheSelectedLayerAgain) {
    EXPECT_EQ(ui::SortOnce(*effect, 0), 2);
    EXPECT_EQ(NameAt(0), "Mine");
    EXPECT_EQ(NameAt(1), "Spec");
    EXPECT_EQ(NameAt(2), "Back");
    EXPECT_EQ(ui::SortOnce(*effect, 1), 1) << "sorted already";
}

TEST_F(SortOnce, SortsWithoutASelectionToo) {
    EXPECT_EQ(ui::SortOnce(*effect, -1), -1);
    EXPECT_EQ(NameAt(2), "Back");
    EXPECT_EQ(ui::SortOnce(*effect, 3), -1);
}

TEST_F(SortOnce, OfNullsAloneFindsNone) {
    effect->pblock->SetCount("layersProduction"_param, 0);
    EXPECT_EQ(ui::SortOnce(*effect, 0), -1);
}

}  // namespace

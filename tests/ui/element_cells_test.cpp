#include "ui/element_cells.h"

#include <elementclasses.h>

#include <string>
#include <vector>

#include "tests/effect/element_frame.h"

namespace {

using testing::ElementsAre;

class ElementCells : public ElementFrameTest {
  protected:
    std::string Cell(int row, int column) {
        return host::ToUtf8(ui::ElementCell(*effect, row, column));
    }
    std::vector<std::string> Row(int row) {
        return {Cell(row, 0), Cell(row, 1), Cell(row, 2), Cell(row, 3)};
    }
    void SetRow(int row, ParamID id, int value) {
        effect->Layer(0, row)->pblock->SetValue(id, 0, value);
    }
    void ClearFlags(int row) {
        for (const ParamID id :
             {"premultiply"_layerParam, "transparency"_layerParam, "mask"_layerParam,
              "groupWithPrevious"_layerParam, "split"_layerParam}) {
            SetRow(row, id, FALSE);
        }
    }
};

TEST_F(ElementCells, ShowTheLayerAsItIsAtTheMoment) {
    host::RenderElement& element = AddElement(unknownElement, "Glow");
    EXPECT_THAT(Row(0), ElementsAre("Glow", "On", "Normal", "PT"));
    element.SetElementName(_M("Halo"));
    SetRow(0, "visible"_layerParam, FALSE);
    SetRow(0, "blendingMode"_layerParam, 9);
    SetRow(0, "mask"_layerParam, TRUE);
    EXPECT_THAT(Row(0), ElementsAre("Halo", "Off", "Linear Dodge (Add)", "PTM"));
}

TEST_F(ElementCells, HaveALetterForEachFlag) {
    AddElement(unknownElement, "a");
    ClearFlags(0);
    EXPECT_EQ(Cell(0, 3), "");
    const std::pair<ParamID, const char*> letters[] = {
        {6, "P"}, {5, "T"}, {4, "M"}, {8, "C"}, {9, "S"}};
    std::string all;
    for (const auto& [id, letter] : letters) {
        ClearFlags(0);
        SetRow(0, id, TRUE);
        EXPECT_EQ(Cell(0, 3), letter);
    }
    for (const auto& [id, letter] : letters) {
        SetRow(0, id, TRUE);
        all += letter;
    }
    EXPECT_EQ(all, "PTMCS");
    EXPECT_EQ(Cell(0, 3), "PTMCS");
}

TEST_F(ElementCells, OfAChannelAreDashes) {
    AddElement(unknownElement, "a");
    for (const ParamID id : {"premultiply"_layerParam, "transparency"_layerParam, "mask"_layerParam,
                             "groupWithPrevious"_layerParam, "split"_layerParam}) {
        SetRow(0, id, TRUE);
    }
    SetRow(0, "outputAs"_layerParam, 1);
    EXPECT_THAT(Row(0), ElementsAre("a", "- - -", "- - - - - - - - - - -", "P"));
    SetRow(0, "premultiply"_layerParam, FALSE);
    SetRow(0, "visible"_layerParam, FALSE);
    SetRow(0, "mergeDown"_layerParam, TRUE);
    EXPECT_THAT(Row(0), ElementsAre("a", "- - -", "- - - - - - - - - - -", ""));
}

TEST_F(ElementCells, PointDownWhereALayerIsMergedIntoTheNext) {
    AddElement(unknownElement, "a");
    SetRow(0, "mergeDown"_layerParam, TRUE);
    EXPECT_EQ(Cell(0, 1), "vvv");
    SetRow(0, "visible"_layerParam, FALSE);
    EXPECT_EQ(Cell(0, 1), "Off");
}

TEST_F(ElementCells, OfANumberThatIsNoModeSaySo) {
    AddElement(unknownElement, "a");
    for (const int mode : {-1, 27}) {
        SetRow(0, "blendingMode"_layerParam, mode);
        EXPECT_EQ(Cell(0, 2), "<unknown>");
    }
}

TEST_F(ElementCells, OfADeletedElementStayUntilTheListIsBroughtUpToDate) {
    AddElement(unknownElement, "a");
    AddElement(unknownElement, "b");
    Elements().Remove(Elements().GetRenderElement(0));
    EXPECT_EQ(ui::ElementRowCount(*effect), 2);
    EXPECT_THAT(Row(0), ElementsAre("<deleted>", "On", "Normal", "PT"));
    EXPECT_EQ(Cell(1, 0), "b");
    EXPECT_TRUE(effect::SyncRenderElements(*effect, 0));
    EXPECT_EQ(ui::ElementRowCount(*effect), 1);
    EXPECT_EQ(Cell(0, 0), "b");
}

TEST_F(ElementCells, OfARowWithoutALayerAreEmpty) {
    AddElement(unknownElement, "a");
    AddElement(unknownElement, "b");
    // The first entry stays behind as a null.
    effect->Layer(0, 0)->DeleteThis();
    ASSERT_EQ(effect->LayerCount(0), 2);
    EXPECT_EQ(ui::ElementRowCount(*effect), 1) << "null entries make no row";
    EXPECT_EQ(ui::LayerOfRow(*effect, 0), nullptr);
    for (const int row : {-1, 0, 2}) {
        EXPECT_THAT(Row(row), ElementsAre("<deleted>", "", "", "")) << row;
        EXPECT_EQ(ui::ElementCheckImage(*effect, row), 1) << row;
    }
    EXPECT_EQ(Cell(1, 4), "") << "there are four columns";
    EXPECT_EQ(Cell(1, -1), "");
}

TEST_F(ElementCells, CheckWhatGoesOut) {
    AddElement(unknownElement, "a");
    EXPECT_EQ(ui::ElementCheckImage(*effect, 0), 2);
    SetRow(0, "enabled"_layerParam, FALSE);
    EXPECT_EQ(ui::ElementCheckImage(*effect, 0), 1);
    EXPECT_EQ(Cell(0, 1), "On") << "visible or not is another matter";
}

TEST_F(ElementCells, ShowTheModeThatTakesTheOnesPlaceThat32BitsDontHave) {
    AddElement(unknownElement, "a");
    AddElement(unknownElement, "b");
    SetRow(0, "blendingMode"_layerParam, 7);
    SetRow(1, "blendingMode"_layerParam, 10);
    EXPECT_EQ(Cell(0, 2), "Screen");
    EXPECT_EQ(Cell(1, 2), "Overlay");
    Set("bitDepth"_param, 32);
    EXPECT_EQ(Cell(0, 2), "Linear Dodge (Add)");
    EXPECT_EQ(Cell(1, 2), "Normal");
}

}  // namespace

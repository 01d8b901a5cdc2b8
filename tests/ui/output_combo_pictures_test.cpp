#include "ui/output_combo_pictures.h"

#include <gmock/gmock.h>

#include <vector>

namespace {

std::vector<int> PicturesOf(bool disabled, bool highlighted) {
    std::vector<int> pictures;
    for (int item = 0; item < 4; ++item)
        pictures.push_back(ui::OutputPicture(item, disabled, highlighted));
    return pictures;
}

TEST(OutputComboPictures, AreThoseOfTheItems) {
    EXPECT_THAT(PicturesOf(false, false), testing::ElementsAre(0, 2, 1, 0));
}

TEST(OutputComboPictures, OfDisabledAndHighlightedItemsAreTheOtherThree) {
    EXPECT_THAT(PicturesOf(true, false), testing::ElementsAre(3, 5, 4, 3));
    EXPECT_THAT(PicturesOf(false, true), testing::ElementsAre(3, 5, 4, 3));
    EXPECT_THAT(PicturesOf(true, true), testing::ElementsAre(3, 5, 4, 3));
}

TEST(OutputComboPictures, OfWhatIsNoItemAreNone) {
    for (const int item : {-1, 4, 100})
        EXPECT_EQ(ui::OutputPicture(item, false, true), -1) << item;
}

TEST(OutputComboPictures, LieSideBySide) {
    EXPECT_EQ(ui::OutputPictureLeft(0), 0);
    EXPECT_EQ(ui::OutputPictureLeft(5), 135);
    EXPECT_EQ(ui::outputPictureHeight, 18);
    EXPECT_EQ(ui::lowestOutputItem, 20);
}

}  // namespace

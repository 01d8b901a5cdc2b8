#include "ui/header_picture.h"

#include <gtest/gtest.h>

namespace {

TEST(HeaderPicture, FitsTheScale) {
    EXPECT_EQ(ui::HeaderBitmap(1.0F), 126);
    EXPECT_EQ(ui::HeaderBitmap(1.25F), 141);
    EXPECT_EQ(ui::HeaderBitmap(1.5F), 142);
    EXPECT_EQ(ui::HeaderBitmap(2.0F), 139);
    EXPECT_EQ(ui::HeaderBitmap(2.25F), 139);
    EXPECT_EQ(ui::HeaderBitmap(3.0F), 139);
}

TEST(HeaderPicture, IsNoneAtAnyOtherScale) {
    for (const float scale : {1.75F, 0.0F, 0.75F, 1.1F, 1.4999F, 1.9999F})
        EXPECT_EQ(ui::HeaderBitmap(scale), 0) << scale;
}

}  // namespace

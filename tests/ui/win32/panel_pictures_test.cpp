#include "ui/win32/panel_pictures.h"

#include <gtest/gtest.h>

#include "plugin/entry.h"
#include "plugin/library.h"
#include "tests/host/win32/control_stage.h"
#include "tests/host/win32/object_counts.h"

namespace {

constexpr COLORREF green = RGB(0, 200, 0);
constexpr COLORREF violet = RGB(200, 0, 200);

class PanelPicturesTest : public testing::Test {
  protected:
    PanelPicturesTest() { plugin::Attach(); }
    ~PanelPicturesTest() override {
        ui::DropCheckPictures();
        ui::DropOutputKindPictures();
    }
    static std::vector<COLORREF> Check(int picture, COLORREF background) {
        return PictureOf(16, 16, background,
                         [&](HDC dc) {
                             ImageList_Draw(ui::CheckPictures(), picture, dc, 0, 0, ILD_NORMAL);
                         })
            .pixels;
    }
    // Of a picture of the resources, by its number, from its left edge on, as an image list of its
    // own draws it.
    static std::vector<COLORREF> Resource(int id, int picture, COLORREF background) {
        auto* bitmap = static_cast<HBITMAP>(LoadImageW(plugin::Module(), MAKEINTRESOURCEW(id),
                                                       IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION));
        HIMAGELIST list = ImageList_Create(16, 16, ILC_COLOR32, 0, 5);
        ImageList_Add(list, bitmap, nullptr);
        std::vector<COLORREF> pixels = PictureOf(16, 16, background, [&](HDC dc) {
                                           ImageList_Draw(list, picture, dc, 0, 0, ILD_NORMAL);
                                       }).pixels;
        ImageList_Destroy(list);
        DeleteObject(bitmap);
        return pixels;
    }
};

TEST_F(PanelPicturesTest, AreFiveCheckBoxes) {
    HIMAGELIST pictures = ui::CheckPictures();
    EXPECT_EQ(ImageList_GetImageCount(pictures), 5);
    int width = 0;
    int height = 0;
    ImageList_GetIconSize(pictures, &width, &height);
    EXPECT_EQ(width, 16);
    EXPECT_EQ(height, 16);
    EXPECT_EQ(ui::CheckPictures(), pictures) << "made once";
}

TEST_F(PanelPicturesTest, HaveAnotherFirstCheckBoxThanTheirStrip) {
    EXPECT_EQ(Check(0, green), Resource(146, 0, green));
    for (int picture = 1; picture < 5; ++picture)
        EXPECT_EQ(Check(picture, green), Resource(148, picture, green)) << picture;
    EXPECT_NE(Check(0, green), Check(1, green)) << "off and on look different";
}

TEST_F(PanelPicturesTest, LetTheBackgroundThrough) {
    for (int picture = 0; picture < 5; ++picture) {
        EXPECT_EQ(Check(picture, green).front(), green) << picture;
        EXPECT_EQ(Check(picture, violet).front(), violet) << picture;
    }
}

TEST_F(PanelPicturesTest, AreSixKindsOfOutput) {
    HBITMAP strip = ui::OutputKindPictures();
    BITMAP info{};
    ASSERT_TRUE(GetObjectW(strip, sizeof info, &info));
    EXPECT_EQ(info.bmWidth, 6 * 27);
    EXPECT_EQ(info.bmHeight, 18);
    EXPECT_EQ(ui::OutputKindPictures(), strip) << "loaded once";
}

TEST_F(PanelPicturesTest, AreLoadedAgainWhenTheyWereDropped) {
    const ObjectCounts before = CountObjects();
    for (int i = 0; i < 3; ++i) {
        ASSERT_TRUE(ui::CheckPictures());
        ASSERT_TRUE(ui::OutputKindPictures());
        EXPECT_GT(CountObjects().gdi, before.gdi);
        for (int times = 0; times < 2; ++times) {
            ui::DropCheckPictures();
            ui::DropOutputKindPictures();
        }
        EXPECT_EQ(CountObjects(), before);
    }
}

}  // namespace

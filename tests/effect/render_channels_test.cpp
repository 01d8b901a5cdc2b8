#include "effect/render_channels.h"

#include "tests/effect/document_frame.h"

namespace {

struct NoStorage : Bitmap {
    BitmapStorage* Storage() override { return nullptr; }
    void DeleteThis() override {}
};

class RenderChannels : public DocumentFrameTest {};

TEST_F(RenderChannels, AreEmptyWithoutAnInput) {
    EXPECT_FALSE(effect::RenderColor(FrameOf(nullptr), 0, false));
    EXPECT_FALSE(effect::RenderAlpha(FrameOf(nullptr)));
}

TEST_F(RenderChannels, OfABitmapWithoutStorageHaveColoursAndNoAlpha) {
    NoStorage bitmap;
    const auto color = effect::RenderColor(FrameOf(&bitmap), 0, false);
    ASSERT_TRUE(color);
    EXPECT_NE(color->GetRow16(0), nullptr);
    EXPECT_FALSE(effect::RenderAlpha(FrameOf(&bitmap)));
}

TEST_F(RenderChannels, TakeTheSRGBVariantBelow32BitsOnly) {
    EXPECT_FALSE(effect::UsesSRGBVariant(FrameOf(nullptr)));
    Set("renderSRGBCorrect"_param, TRUE);
    for (const int bitDepth : {8, 16, 32}) {
        Set("bitDepth"_param, bitDepth);
        EXPECT_EQ(effect::UsesSRGBVariant(FrameOf(nullptr)), bitDepth != 32);
    }
}

TEST_F(RenderChannels, ReadNoPixelsBeforeARowIsAskedFor) {
    // The bitmap goes before a row is asked for: making the sources must not have kept anything.
    const auto frame = FrameOf(image.get());
    EXPECT_TRUE(effect::RenderColor(frame, 0, false));
    EXPECT_EQ(SampleOf(effect::RenderColor(frame, 1, false)), ImageAt(1));
    EXPECT_EQ(SampleOf(effect::RenderAlpha(frame)), ImageAt(3));
}

}  // namespace

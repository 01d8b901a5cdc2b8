#include "effect/active_channels.h"

#include "tests/effect/matte_frame.h"

namespace {

struct BitmapWithoutStorage : Bitmap {
    BitmapStorage* Storage() override { return nullptr; }
    void DeleteThis() override {}
};

class ActiveChannels : public MatteFrameTest {};

TEST_F(ActiveChannels, AreThoseOfTheGBuffer) {
    UseChannels(BMM_CHAN_NODE_ID | BMM_CHAN_COLOR);
    EXPECT_TRUE(effect::HasGBufferChannels(image.get(), BMM_CHAN_NODE_ID));
    EXPECT_TRUE(effect::HasGBufferChannels(image.get(), BMM_CHAN_NODE_ID | BMM_CHAN_COLOR));
    EXPECT_FALSE(effect::HasGBufferChannels(image.get(), BMM_CHAN_NODE_ID | BMM_CHAN_MTL_ID));
    EXPECT_FALSE(effect::HasGBufferChannels(image.get(), BMM_CHAN_MTL_ID));
}

TEST_F(ActiveChannels, AreNoneWithoutAGBuffer) {
    BitmapWithoutStorage bitmap;
    for (Bitmap* none : {static_cast<Bitmap*>(nullptr), static_cast<Bitmap*>(&bitmap),
                         static_cast<Bitmap*>(opaque.get())}) {
        EXPECT_FALSE(effect::HasGBufferChannels(none, BMM_CHAN_NODE_ID));
        EXPECT_FALSE(effect::HasGBufferChannels(none, 0));
    }
}

}  // namespace

#include "effect/id_bounds.h"

#include <gtest/gtest.h>

#include "sources/id_bounds.h"
#include "tests/sources/fake_gbuffer.h"

namespace {

FakeFragment IDs(UBYTE mtlID, UWORD nodeID, UWORD renderID) {
    return {.mtlID = mtlID, .nodeID = nodeID, .renderID = renderID};
}

class IDBounds : public testing::Test {
  protected:
    IDBounds() {
        bitmap.gbuffer.channels = BMM_CHAN_NODE_RENDER_ID | BMM_CHAN_MTL_ID | BMM_CHAN_NODE_ID;
        bitmap.SetRows({
            {{}, {IDs(5, 300, 1)}, {}, {}},
            {{IDs(5, 300, 2), IDs(255, 65535, 3)}, {}, {}, {{.nodeID = UWORD{7}}}},
            {{}, {}, {IDs(0, 0, 0)}, {IDs(5, 7, 1)}},
        });
    }
    ~IDBounds() override { effect::CollectIDBounds(nullptr); }
    static void ExpectBox(const sources::IDBounds& bounds, std::uint16_t id, int left, int top,
                          int right, int bottom) {
        const auto found = bounds.find(id);
        ASSERT_NE(found, bounds.end()) << id;
        EXPECT_EQ(found->second.left, left) << id;
        EXPECT_EQ(found->second.top, top) << id;
        EXPECT_EQ(found->second.right, right) << id;
        EXPECT_EQ(found->second.bottom, bottom) << id;
    }
    static void ExpectNone() {
        EXPECT_TRUE(sources::nodeRenderIDBounds.empty());
        EXPECT_TRUE(sources::mtlIDBounds.empty());
        EXPECT_TRUE(sources::nodeIDBounds.empty());
    }
    static void FillWithOldOnes() {
        for (auto* bounds :
             {&sources::nodeRenderIDBounds, &sources::mtlIDBounds, &sources::nodeIDBounds}) {
            (*bounds)[99] += IPoint2{0, 0};
        }
    }

    FakeGBufferBitmap bitmap;
};

TEST_F(IDBounds, HoldAllFragmentsOfAnIDWhateverTheirPlaceInThePixel) {
    effect::CollectIDBounds(&bitmap);
    EXPECT_EQ(sources::nodeIDBounds.size(), 4U);
    ExpectBox(sources::nodeIDBounds, 300, 0, 0, 1, 1);
    ExpectBox(sources::nodeIDBounds, 65535, 0, 1, 0, 1);
    ExpectBox(sources::nodeIDBounds, 7, 3, 1, 3, 2);
    ExpectBox(sources::nodeIDBounds, 0, 2, 2, 2, 2);
    EXPECT_EQ(sources::mtlIDBounds.size(), 3U);
    ExpectBox(sources::mtlIDBounds, 5, 0, 0, 3, 2);
    ExpectBox(sources::mtlIDBounds, 255, 0, 1, 0, 1);
    ExpectBox(sources::mtlIDBounds, 0, 2, 2, 2, 2);
    EXPECT_EQ(sources::nodeRenderIDBounds.size(), 4U);
    ExpectBox(sources::nodeRenderIDBounds, 1, 1, 0, 3, 2);
    ExpectBox(sources::nodeRenderIDBounds, 2, 0, 1, 0, 1);
    ExpectBox(sources::nodeRenderIDBounds, 3, 0, 1, 0, 1);
    ExpectBox(sources::nodeRenderIDBounds, 0, 2, 2, 2, 2);
}

TEST_F(IDBounds, ComeOnlyFromChannelsThatTheBitmapHas) {
    for (const DWORD channel : {BMM_CHAN_NODE_RENDER_ID, BMM_CHAN_MTL_ID, BMM_CHAN_NODE_ID}) {
        bitmap.gbuffer.channels = channel | 0x1440U;
        effect::CollectIDBounds(&bitmap);
        EXPECT_EQ(sources::nodeRenderIDBounds.empty(), channel != BMM_CHAN_NODE_RENDER_ID);
        EXPECT_EQ(sources::mtlIDBounds.empty(), channel != BMM_CHAN_MTL_ID);
        EXPECT_EQ(sources::nodeIDBounds.empty(), channel != BMM_CHAN_NODE_ID);
    }
}

TEST_F(IDBounds, GoByTheChannelsThatTheStorageNames) {
    bitmap.pixels.channels = BMM_CHAN_NODE_ID;
    effect::CollectIDBounds(&bitmap);
    EXPECT_FALSE(sources::nodeIDBounds.empty());
    EXPECT_TRUE(sources::mtlIDBounds.empty());
    EXPECT_TRUE(sources::nodeRenderIDBounds.empty());
}

TEST_F(IDBounds, HoldTheBackgroundToo) {
    bitmap.SetRows({{{IDs(0, 0, 1)}, {IDs(0, 0, 65535)}}});
    effect::CollectIDBounds(&bitmap);
    ExpectBox(sources::nodeIDBounds, 0, 0, 0, 1, 0);
    ExpectBox(sources::mtlIDBounds, 0, 0, 0, 1, 0);
    ExpectBox(sources::nodeRenderIDBounds, 65535, 1, 0, 1, 0);
}

TEST_F(IDBounds, OfTheFrameBeforeAreForgotten) {
    FillWithOldOnes();
    effect::CollectIDBounds(&bitmap);
    EXPECT_EQ(sources::nodeIDBounds.count(99), 0U);
    EXPECT_EQ(sources::mtlIDBounds.count(99), 0U);
    EXPECT_EQ(sources::nodeRenderIDBounds.count(99), 0U);
}

TEST_F(IDBounds, AreEmptyWithoutABitmapStorageGBufferOrReader) {
    FillWithOldOnes();
    effect::CollectIDBounds(nullptr);
    ExpectNone();
    FillWithOldOnes();
    bitmap.hasStorage = false;
    effect::CollectIDBounds(&bitmap);
    ExpectNone();
    bitmap.hasStorage = true;
    FillWithOldOnes();
    bitmap.pixels.hasGBuffer = false;
    effect::CollectIDBounds(&bitmap);
    ExpectNone();
    bitmap.pixels.hasGBuffer = true;
    FillWithOldOnes();
    bitmap.gbuffer.outOfMemory = true;
    effect::CollectIDBounds(&bitmap);
    ExpectNone();
}

TEST_F(IDBounds, ALineThatCantBeReadIsLeftOut) {
    bitmap.gbuffer.reader.unreadableLine = 1;
    effect::CollectIDBounds(&bitmap);
    ExpectBox(sources::nodeIDBounds, 300, 1, 0, 1, 0);
    EXPECT_EQ(sources::nodeIDBounds.count(65535), 0U);
}

}  // namespace

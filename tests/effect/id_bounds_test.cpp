#include "effect/id_bounds.h"

#include <gtest/gtest.h>

#include <map>
#include <vector>

namespace {

// A fragment's values by GB_ index; bytes as the host gives them.
using Fragment = std::map<int, std::uint16_t>;

// Behaves as strictly as a host may: a call out of order fails the test.
class FakeReader : public GBufReader {
  public:
    explicit FakeReader(const std::vector<std::vector<std::vector<Fragment>>>& source)
        : rows(source) {}

    BOOL StartLine(int row) override {
        y = static_cast<std::size_t>(row);
        x = 0;
        layer = 0;
        return row != unreadableLine;
    }
    void StartPixel(int column) override {
        x = static_cast<std::size_t>(column);
        layer = 0;
    }
    void NextPixel() override {
        ++x;
        layer = 0;
    }
    BOOL StartNextLayer() override { return ++layer <= rows.at(y).at(x).size(); }
    BOOL ReadChannelData(int index, void* data) override {
        const Fragment& fragment = rows.at(y).at(x).at(layer - 1);
        const auto found = fragment.find(index);
        if (found == fragment.end()) return FALSE;
        if (index == GB_MTL_ID) {
            *static_cast<UBYTE*>(data) = static_cast<UBYTE>(found->second);
        } else {
            *static_cast<UWORD*>(data) = found->second;
        }
        return TRUE;
    }

    const std::vector<std::vector<std::vector<Fragment>>>& rows;
    int unreadableLine = -1;
    std::size_t x = 0;
    std::size_t y = 0;
    std::size_t layer = 0;
};

class FakeGBuffer : public GBuffer {
  public:
    GBufReader* CreateReader() override {
        if (outOfMemory) return nullptr;
        ++readers;
        return &reader;
    }
    void DestroyReader(GBufReader* destroyed) override {
        EXPECT_EQ(destroyed, &reader);
        --readers;
    }

    std::vector<std::vector<std::vector<Fragment>>> rows;
    FakeReader reader{rows};
    bool outOfMemory = false;
    int readers = 0;
};

struct GBufferStorage : BitmapStorage {
    int Width() override { return static_cast<int>(gbuffer.rows.at(0).size()); }
    int Height() override { return static_cast<int>(gbuffer.rows.size()); }
    float Aspect() override { return 1.0F; }
    DWORD Flags() override { return 0; }
    int GetLinearPixels(int, int, int, BMM_Color_64*) override { return 0; }
    int GetLinearPixels(int, int, int, BMM_Color_fl*) override { return 0; }
    DWORD ChannelsPresent() override { return channels; }
    GBuffer* GetGBuffer() override { return hasGBuffer ? &gbuffer : nullptr; }

    FakeGBuffer gbuffer;
    DWORD channels = BMM_CHAN_NODE_RENDER_ID | BMM_CHAN_MTL_ID | BMM_CHAN_NODE_ID;
    bool hasGBuffer = true;
};

struct GBufferBitmap : Bitmap {
    BitmapStorage* Storage() override { return hasStorage ? &storage : nullptr; }
    void DeleteThis() override {}

    GBufferStorage storage;
    bool hasStorage = true;
};

class IDBounds : public testing::Test {
  protected:
    IDBounds() {
        storage.gbuffer.rows = {
            {{}, {{{1, 5}, {2, 300}, {8, 1}}}, {}, {}},
            {{{{1, 5}, {2, 300}, {8, 2}}, {{1, 255}, {2, 65535}, {8, 3}}}, {}, {}, {{{2, 7}}}},
            {{}, {}, {{{1, 0}, {2, 0}, {8, 0}}}, {{{1, 5}, {2, 7}, {8, 1}}}},
        };
    }
    ~IDBounds() override {
        EXPECT_EQ(storage.gbuffer.readers, 0) << "a reader that wasn't given back";
        effect::CollectIDBounds(nullptr);
    }
    static void ExpectBox(const effect::IDBounds& bounds, std::uint16_t id, int left, int top,
                          int right, int bottom) {
        const auto found = bounds.find(id);
        ASSERT_NE(found, bounds.end()) << id;
        EXPECT_EQ(found->second.left, left) << id;
        EXPECT_EQ(found->second.top, top) << id;
        EXPECT_EQ(found->second.right, right) << id;
        EXPECT_EQ(found->second.bottom, bottom) << id;
    }
    static void ExpectNone() {
        EXPECT_TRUE(effect::nodeRenderIDBounds.empty());
        EXPECT_TRUE(effect::mtlIDBounds.empty());
        EXPECT_TRUE(effect::nodeIDBounds.empty());
    }
    static void FillWithOldOnes() {
        for (auto* bounds :
             {&effect::nodeRenderIDBounds, &effect::mtlIDBounds, &effect::nodeIDBounds}) {
            (*bounds)[99] += IPoint2{0, 0};
        }
    }

    GBufferBitmap bitmap;
    GBufferStorage& storage = bitmap.storage;
};

TEST_F(IDBounds, HoldAllFragmentsOfAnIDWhateverTheirPlaceInThePixel) {
    effect::CollectIDBounds(&bitmap);
    EXPECT_EQ(effect::nodeIDBounds.size(), 4U);
    ExpectBox(effect::nodeIDBounds, 300, 0, 0, 1, 1);
    ExpectBox(effect::nodeIDBounds, 65535, 0, 1, 0, 1);
    ExpectBox(effect::nodeIDBounds, 7, 3, 1, 3, 2);
    ExpectBox(effect::nodeIDBounds, 0, 2, 2, 2, 2);
    EXPECT_EQ(effect::mtlIDBounds.size(), 3U);
    ExpectBox(effect::mtlIDBounds, 5, 0, 0, 3, 2);
    ExpectBox(effect::mtlIDBounds, 255, 0, 1, 0, 1);
    ExpectBox(effect::mtlIDBounds, 0, 2, 2, 2, 2);
    EXPECT_EQ(effect::nodeRenderIDBounds.size(), 4U);
    ExpectBox(effect::nodeRenderIDBounds, 1, 1, 0, 3, 2);
    ExpectBox(effect::nodeRenderIDBounds, 2, 0, 1, 0, 1);
    ExpectBox(effect::nodeRenderIDBounds, 3, 0, 1, 0, 1);
    ExpectBox(effect::nodeRenderIDBounds, 0, 2, 2, 2, 2);
}

TEST_F(IDBounds, ComeOnlyFromChannelsThatTheBitmapHas) {
    for (const DWORD channel : {BMM_CHAN_NODE_RENDER_ID, BMM_CHAN_MTL_ID, BMM_CHAN_NODE_ID}) {
        storage.channels = channel | 0x1440U;
        effect::CollectIDBounds(&bitmap);
        EXPECT_EQ(effect::nodeRenderIDBounds.empty(), channel != BMM_CHAN_NODE_RENDER_ID);
        EXPECT_EQ(effect::mtlIDBounds.empty(), channel != BMM_CHAN_MTL_ID);
        EXPECT_EQ(effect::nodeIDBounds.empty(), channel != BMM_CHAN_NODE_ID);
    }
}

TEST_F(IDBounds, OfTheFrameBeforeAreForgotten) {
    FillWithOldOnes();
    effect::CollectIDBounds(&bitmap);
    EXPECT_EQ(effect::nodeIDBounds.count(99), 0U);
    EXPECT_EQ(effect::mtlIDBounds.count(99), 0U);
    EXPECT_EQ(effect::nodeRenderIDBounds.count(99), 0U);
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
    storage.hasGBuffer = false;
    effect::CollectIDBounds(&bitmap);
    ExpectNone();
    storage.hasGBuffer = true;
    FillWithOldOnes();
    storage.gbuffer.outOfMemory = true;
    effect::CollectIDBounds(&bitmap);
    ExpectNone();
}

TEST_F(IDBounds, ALineThatCantBeReadIsLeftOut) {
    storage.gbuffer.reader.unreadableLine = 1;
    effect::CollectIDBounds(&bitmap);
    ExpectBox(effect::nodeIDBounds, 300, 1, 0, 1, 0);
    EXPECT_EQ(effect::nodeIDBounds.count(65535), 0U);
}

}  // namespace

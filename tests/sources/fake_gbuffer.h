// A G-Buffer whose fragments a test spells out. It is as strict as a host may be: a call out of
// order fails the test.
#pragma once

#include <bitmap.h>
#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <vector>

#include "tests/sources/fake_bitmap.h"

// What isn't set can't be read at this fragment.
struct FakeFragment {
    std::optional<float> z = {};
    std::optional<UBYTE> mtlID = {};
    std::optional<UWORD> nodeID = {};
    std::optional<DWORD> normal = {};
    std::optional<RealPixel> realPixel = {};
    std::optional<UBYTE> coverage = {};
    std::optional<UWORD> renderID = {};
    std::optional<Color24> color = {};
    std::optional<Color24> transparency = {};
    std::optional<Color24> weight = {};

    BOOL Read(int index, void* data) const {
        switch (index) {
            case GB_Z:
                return Copy(z, data);
            case GB_MTL_ID:
                return Copy(mtlID, data);
            case GB_NODE_ID:
                return Copy(nodeID, data);
            case GB_NORMAL:
                return Copy(normal, data);
            case GB_REALPIX:
                return Copy(realPixel, data);
            case GB_COVERAGE:
                return Copy(coverage, data);
            case GB_NODE_RENDER_ID:
                return Copy(renderID, data);
            case GB_COLOR:
                return Copy(color, data);
            case GB_TRANSP:
                return Copy(transparency, data);
            case GB_WEIGHT:
                return Copy(weight, data);
            default:
                ADD_FAILURE() << "channel " << index;
                return FALSE;
        }
    }

    template <class Value>
    static BOOL Copy(const std::optional<Value>& value, void* data) {
        if (!value) return FALSE;
        *static_cast<Value*>(data) = *value;
        return TRUE;
    }
};

using FakePixel = std::vector<FakeFragment>;

class FakeReader : public GBufReader {
  public:
    explicit FakeReader(const std::vector<std::vector<FakePixel>>& source) : rows(source) {}

    int StartLine(int row) override {
        y = static_cast<std::size_t>(row);
        ++linesStarted;
        return row != unreadableLine && y < rows.size();
    }
    int StartPixel(int column) override {
        x = static_cast<std::size_t>(column);
        return Start();
    }
    int NextPixel() override {
        ++x;
        return Start();
    }
    BOOL StartNextLayer() override { return ++layer <= rows.at(y).at(x).size(); }
    // Inlined where `data` is seen to be small, its wider channels would raise a warning.
    [[gnu::noinline]] BOOL ReadChannelData(int index, void* data) override {
        ++reads[index];
        return rows.at(y).at(x).at(layer - 1).Read(index, data);
    }

    const std::vector<std::vector<FakePixel>>& rows;
    int unreadableLine = -1;
    int linesStarted = 0;
    int pixelsStarted = 0;
    // By GB_ index.
    std::map<int, int> reads;

  private:
    int Start() {
        layer = 0;
        ++pixelsStarted;
        return x < rows.at(y).size() ? static_cast<int>(rows.at(y).at(x).size()) : -1;
    }

    std::size_t x = 0;
    std::size_t y = 0;
    std::size_t layer = 0;
};

class FakeGBuffer : public GBuffer {
  public:
    ~FakeGBuffer() override { EXPECT_EQ(readers, 0) << "a reader that wasn't given back"; }

    ULONG ChannelsPresent() override { return channels; }
    GBufReader* CreateReader() override {
        if (outOfMemory) return nullptr;
        ++readers;
        return &reader;
    }
    void DestroyReader(GBufReader* destroyed) override {
        EXPECT_EQ(destroyed, &reader);
        --readers;
    }
    BOOL GetChannelMin(int chan, void* data) override { return Extreme(chan, zMin, data); }
    BOOL GetChannelMax(int chan, void* data) override { return Extreme(chan, zMax, data); }

    static BOOL Extreme(int chan, const std::optional<float>& z, void* data) {
        EXPECT_EQ(chan, GB_Z);
        return FakeFragment::Copy(z, data);
    }

    // Rows of pixels of fragments.
    std::vector<std::vector<FakePixel>> rows;
    DWORD channels = 0;
    std::optional<float> zMin;
    std::optional<float> zMax;
    FakeReader reader{rows};
    bool outOfMemory = false;
    int readers = 0;
};

struct FakeGBufferStorage : FakeStorage {
    DWORD ChannelsPresent() override { return channels.value_or(gbuffer.channels); }
    GBuffer* GetGBuffer() override { return hasGBuffer ? &gbuffer : nullptr; }
    void* GetChannel(ULONG channelID, ULONG& chanType) override {
        chanType = channelID;
        const auto found = planes.find(channelID);
        return found != planes.end() ? found->second : nullptr;
    }

    FakeGBuffer gbuffer;
    // Those of the G-Buffer unless set.
    std::optional<DWORD> channels;
    bool hasGBuffer = true;
    // By BMM_CHAN_ bit; of the channel's type.
    std::map<ULONG, void*> planes;
};

struct FakeGBufferBitmap : Bitmap {
    BitmapStorage* Storage() override { return hasStorage ? &pixels : nullptr; }
    void DeleteThis() override {}

    // All rows have as many pixels as the first.
    void SetRows(std::vector<std::vector<FakePixel>> rows) {
        pixels.width = static_cast<int>(rows.at(0).size());
        pixels.height = static_cast<int>(rows.size());
        gbuffer.rows = std::move(rows);
    }

    FakeGBufferStorage pixels;
    FakeGBuffer& gbuffer = pixels.gbuffer;
    bool hasStorage = true;
};

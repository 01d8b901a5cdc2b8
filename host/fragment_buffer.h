// The G-Buffer of a frame in memory: what a render file tells of each pixel's fragments, kept
// column by column and only for the channels that someone asked for.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <span>
#include <vector>

#include <gbuf.h>

namespace host {

// One fragment as it comes from a render file.
struct Fragment {
    // NaN or infinite: none.
    float z = std::numeric_limits<float>::quiet_NaN();
    // Compressed; 0: none.
    DWORD normal = 0;
    RealPixel realPixel{};
    Color24 color{};
    Color24 transparency{};
    Color24 weight{};
    UWORD nodeID = 0;
    UWORD renderID = 65535;
    UBYTE mtlID = 0;
    UBYTE coverage = 255;
};

// Memory is a block a row: two bytes a pixel, and for each fragment the kept channels in their own
// types. Any number of readers may read at the same time, as long as nothing is added.
class FragmentBuffer final : public GBuffer {
  public:
    // The most fragments that a pixel keeps; those behind them are dropped.
    static constexpr std::size_t MAX_FRAGMENTS = std::numeric_limits<std::uint16_t>::max();

    // Keeps those of `channels` (BMM_CHAN_ bits) that a Fragment has. A width or height that isn't
    // above 0 gives a buffer without rows.
    FragmentBuffer(int width, int height, DWORD channels);
    ~FragmentBuffer() override = default;
    FragmentBuffer(const FragmentBuffer&) = delete;
    FragmentBuffer& operator=(const FragmentBuffer&) = delete;

    int Width() const { return width_; }
    int Height() const { return height_; }

    // The next pixel in raster order, width * height times; more pixels than that are dropped. A
    // row can be read once its last pixel is there. When memory runs out (std::bad_alloc) the
    // buffer is as it was before.
    void AddPixel(std::span<const Fragment> frontToBack);
    // All rows are there.
    bool IsComplete() const { return rows_.size() == static_cast<std::size_t>(height_); }

    ULONG ChannelsPresent() override { return channels_; }
    GBufReader* CreateReader() override;
    void DestroyReader(GBufReader* reader) override;
    // Of GB_Z.
    BOOL GetChannelMin(int chan, void* data) override;
    BOOL GetChannelMax(int chan, void* data) override;

    // As BitmapStorage::GetChannel, for BMM_CHAN_MTL_ID, BMM_CHAN_NODE_ID and
    // BMM_CHAN_NODE_RENDER_ID: made when first asked for, and null while rows are missing.
    void* GetChannel(ULONG channelID, ULONG& chanType);

  private:
    class Reader;
    // Of the fragments of a row; columns that aren't kept are null.
    struct Columns {
        float* z = nullptr;
        DWORD* normal = nullptr;
        RealPixel* realPixel = nullptr;
        std::uint16_t* counts = nullptr;
        UWORD* nodeID = nullptr;
        UWORD* renderID = nullptr;
        Color24* color = nullptr;
        Color24* transparency = nullptr;
        Color24* weight = nullptr;
        UBYTE* mtlID = nullptr;
        UBYTE* coverage = nullptr;
    };
    struct Row {
        std::unique_ptr<std::byte[]> memory;
        // Fragments.
        std::size_t size = 0;
    };

    // The columns of a block of memory that has room for `capacity` fragments.
    Columns ColumnsOf(std::byte* memory, std::size_t capacity) const;
    std::size_t BytesFor(std::size_t fragments) const;
    static void CopyColumns(const Columns& from, const Columns& to, std::size_t fragments,
                            std::size_t pixels);
    void Grow(std::size_t fragments);
    void FinishRow(std::size_t fragments);
    void KeepRange(std::span<const Fragment> fragments);
    template <class Id>
    void* Plane(std::vector<Id>& plane, Id* Columns::*column, Id none) const;

    int width_;
    int height_;
    DWORD channels_;
    // In the channels that are kept.
    std::size_t fragmentBytes_ = 0;
    std::vector<Row> rows_;

    // The row that grows.
    std::unique_ptr<std::byte[]> growing_;
    Columns growingColumns_;
    std::size_t capacity_ = 0;
    std::size_t fragments_ = 0;
    int pixels_ = 0;

    // Until a z was added the smallest is above the largest.
    float smallestZ_ = std::numeric_limits<float>::infinity();
    float largestZ_ = -std::numeric_limits<float>::infinity();

    std::vector<UBYTE> mtlIDs_;
    std::vector<UWORD> nodeIDs_;
    std::vector<UWORD> renderIDs_;
};

}  // namespace host

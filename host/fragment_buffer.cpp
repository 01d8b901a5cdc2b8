#include "host/fragment_buffer.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <new>
#include <numeric>
#include <utility>

namespace host {
namespace {

constexpr DWORD KEPT_CHANNELS = BMM_CHAN_Z | BMM_CHAN_MTL_ID | BMM_CHAN_NODE_ID | BMM_CHAN_NORMAL |
                                BMM_CHAN_REALPIX | BMM_CHAN_COVERAGE | BMM_CHAN_NODE_RENDER_ID |
                                BMM_CHAN_COLOR | BMM_CHAN_TRANSP | BMM_CHAN_WEIGHT;
constexpr UWORD NO_OBJECT = 65535;

// Columns lie behind each other without gaps, wide types first, so each is aligned.
static_assert(sizeof(RealPixel) == 4 && sizeof(Color24) == 3);

template <class T>
T* TakeColumn(std::byte*& at, bool kept, std::size_t count) {
    return kept ? reinterpret_cast<T*>(std::exchange(at, at + count * sizeof(T))) : nullptr;
}

template <class T>
void CopyColumn(const T* from, T* to, std::size_t count) {
    if (from) {
        std::copy_n(from, count, to);
    }
}

template <class T>
void Store(T* column, std::size_t at, const T& value) {
    if (column) {
        column[at] = value;
    }
}

template <class T>
BOOL Give(const T* column, std::size_t at, void* data) {
    if (!column) {
        return FALSE;
    }
    std::memcpy(data, column + at, sizeof(T));
    return TRUE;
}

}  // namespace

FragmentBuffer::FragmentBuffer(int width, int height, DWORD channels)
    : width_(std::max(width, 0)),
      height_(width > 0 ? std::max(height, 0) : 0),
      channels_(channels & KEPT_CHANNELS) {
    static constexpr struct {
        DWORD channel;
        std::size_t bytes;
    } SIZES[] = {{BMM_CHAN_Z, sizeof(float)},
                 {BMM_CHAN_NORMAL, sizeof(DWORD)},
                 {BMM_CHAN_REALPIX, sizeof(RealPixel)},
                 {BMM_CHAN_NODE_ID, sizeof(UWORD)},
                 {BMM_CHAN_NODE_RENDER_ID, sizeof(UWORD)},
                 {BMM_CHAN_COLOR, sizeof(Color24)},
                 {BMM_CHAN_TRANSP, sizeof(Color24)},
                 {BMM_CHAN_WEIGHT, sizeof(Color24)},
                 {BMM_CHAN_MTL_ID, sizeof(UBYTE)},
                 {BMM_CHAN_COVERAGE, sizeof(UBYTE)}};
    for (const auto& size : SIZES) {
        fragmentBytes_ += channels_ & size.channel ? size.bytes : 0;
    }
}

std::size_t FragmentBuffer::BytesFor(std::size_t fragments) const {
    return static_cast<std::size_t>(width_) * sizeof(std::uint16_t) + fragments * fragmentBytes_;
}

FragmentBuffer::Columns FragmentBuffer::ColumnsOf(std::byte* memory, std::size_t capacity) const {
    const auto kept = [this](DWORD channel) { return (channels_ & channel) != 0; };
    Columns columns;
    columns.z = TakeColumn<float>(memory, kept(BMM_CHAN_Z), capacity);
    columns.normal = TakeColumn<DWORD>(memory, kept(BMM_CHAN_NORMAL), capacity);
    columns.realPixel = TakeColumn<RealPixel>(memory, kept(BMM_CHAN_REALPIX), capacity);
    columns.counts = TakeColumn<std::uint16_t>(memory, true, static_cast<std::size_t>(width_));
    columns.nodeID = TakeColumn<UWORD>(memory, kept(BMM_CHAN_NODE_ID), capacity);
    columns.renderID = TakeColumn<UWORD>(memory, kept(BMM_CHAN_NODE_RENDER_ID), capacity);
    columns.color = TakeColumn<Color24>(memory, kept(BMM_CHAN_COLOR), capacity);
    columns.transparency = TakeColumn<Color24>(memory, kept(BMM_CHAN_TRANSP), capacity);
    columns.weight = TakeColumn<Color24>(memory, kept(BMM_CHAN_WEIGHT), capacity);
    columns.mtlID = TakeColumn<UBYTE>(memory, kept(BMM_CHAN_MTL_ID), capacity);
    columns.coverage = TakeColumn<UBYTE>(memory, kept(BMM_CHAN_COVERAGE), capacity);
    return columns;
}

void FragmentBuffer::CopyColumns(const Columns& from, const Columns& to, std::size_t fragments,
                                 std::size_t pixels) {
    CopyColumn(from.z, to.z, fragments);
    CopyColumn(from.normal, to.normal, fragments);
    CopyColumn(from.realPixel, to.realPixel, fragments);
    CopyColumn(from.counts, to.counts, pixels);
    CopyColumn(from.nodeID, to.nodeID, fragments);
    CopyColumn(from.renderID, to.renderID, fragments);
    CopyColumn(from.color, to.color, fragments);
    CopyColumn(from.transparency, to.transparency, fragments);
    CopyColumn(from.weight, to.weight, fragments);
    CopyColumn(from.mtlID, to.mtlID, fragments);
    CopyColumn(from.coverage, to.coverage, fragments);
}

// Building

void FragmentBuffer::Grow(std::size_t fragments) {
    if (growing_ && fragments <= capacity_) {
        return;
    }
    const std::size_t capacity =
        std::max({fragments, capacity_ * 2, static_cast<std::size_t>(width_)});
    auto memory = std::make_unique_for_overwrite<std::byte[]>(BytesFor(capacity));
    const Columns columns = ColumnsOf(memory.get(), capacity);
    CopyColumns(growingColumns_, columns, fragments_, static_cast<std::size_t>(pixels_));
    growing_ = std::move(memory);
    growingColumns_ = columns;
    capacity_ = capacity;
}

void FragmentBuffer::AddPixel(std::span<const Fragment> frontToBack) {
    if (IsComplete()) {
        return;
    }
    const auto fragments = frontToBack.first(std::min(frontToBack.size(), MAX_FRAGMENTS));
    Grow(fragments_ + fragments.size());
    // In locals, which the stores can't change.
    const Columns columns = growingColumns_;
    std::size_t at = fragments_;
    for (const Fragment& fragment : fragments) {
        const float z =
            std::isfinite(fragment.z) ? fragment.z : std::numeric_limits<float>::quiet_NaN();
        Store(columns.z, at, z);
        Store(columns.normal, at, fragment.normal);
        Store(columns.realPixel, at, fragment.realPixel);
        Store(columns.nodeID, at, fragment.nodeID);
        Store(columns.renderID, at, fragment.renderID);
        Store(columns.color, at, fragment.color);
        Store(columns.transparency, at, fragment.transparency);
        Store(columns.weight, at, fragment.weight);
        Store(columns.mtlID, at, fragment.mtlID);
        Store(columns.coverage, at, fragment.coverage);
        ++at;
    }
    columns.counts[pixels_] = static_cast<std::uint16_t>(fragments.size());

    // Nothing of the above counts before this.
    if (pixels_ + 1 == width_) {
        FinishRow(at);
    } else {
        ++pixels_;
        fragments_ = at;
    }
    KeepRange(fragments);
}

// The row moves into memory of its very size.
void FragmentBuffer::FinishRow(std::size_t fragments) {
    Row row{std::make_unique_for_overwrite<std::byte[]>(BytesFor(fragments)), fragments};
    CopyColumns(growingColumns_, ColumnsOf(row.memory.get(), fragments), fragments,
                static_cast<std::size_t>(width_));
    rows_.push_back(std::move(row));
    pixels_ = 0;
    fragments_ = 0;
    if (IsComplete()) {
        growing_.reset();
        growingColumns_ = {};
        capacity_ = 0;
    }
}

void FragmentBuffer::KeepRange(std::span<const Fragment> fragments) {
    if (!(channels_ & BMM_CHAN_Z)) {
        return;
    }
    for (const Fragment& fragment : fragments) {
        if (std::isfinite(fragment.z)) {
            smallestZ_ = std::min(smallestZ_, fragment.z);
            largestZ_ = std::max(largestZ_, fragment.z);
        }
    }
}

// Reading

// Stands on fragment `at_` of the row while first_ <= at_ < end_, which are those of the pixel; one
// before first_ it stands before them.
class FragmentBuffer::Reader final : public GBufReader {
  public:
    explicit Reader(const FragmentBuffer& buffer) : buffer_(buffer) {}
    ~Reader() override = default;

    int StartLine(int y) override {
        Leave();
        pixel_ = -1;
        columns_ = {};
        if (y < 0 || static_cast<std::size_t>(y) >= buffer_.rows_.size()) {
            return FALSE;
        }
        const Row& row = buffer_.rows_[static_cast<std::size_t>(y)];
        columns_ = buffer_.ColumnsOf(row.memory.get(), row.size);
        return TRUE;
    }

    int StartPixel(int x) override {
        if (!columns_.counts || x < 0 || x >= buffer_.width_) {
            Leave();
            pixel_ = buffer_.width_;
            return -1;
        }
        // Fragments before the pixel are counted from the row's start, or from here.
        const bool ahead = x > pixel_;
        const std::uint16_t* from = columns_.counts + (ahead ? pixel_ + 1 : 0);
        const std::uint16_t* to = columns_.counts + x;
        return Enter(x, std::accumulate(from, to, ahead ? end_ : std::size_t{0}));
    }

    int NextPixel() override {
        if (!columns_.counts || pixel_ + 1 >= buffer_.width_) {
            Leave();
            pixel_ = buffer_.width_;
            return -1;
        }
        return Enter(pixel_ + 1, end_);
    }

    BOOL StartNextLayer() override {
        at_ = at_ + 1 < static_cast<std::ptrdiff_t>(end_) ? at_ + 1
                                                          : static_cast<std::ptrdiff_t>(end_);
        return at_ < static_cast<std::ptrdiff_t>(end_);
    }

    BOOL ReadChannelData(int chan, void* data) override {
        if (at_ < static_cast<std::ptrdiff_t>(first_) || at_ >= static_cast<std::ptrdiff_t>(end_)) {
            return FALSE;
        }
        const auto at = static_cast<std::size_t>(at_);
        switch (chan) {
            case GB_Z:
                return columns_.z && !std::isnan(columns_.z[at]) && Give(columns_.z, at, data);
            case GB_MTL_ID:
                return Give(columns_.mtlID, at, data);
            case GB_NODE_ID:
                return Give(columns_.nodeID, at, data);
            case GB_NORMAL:
                return columns_.normal && columns_.normal[at] != 0 &&
                       Give(columns_.normal, at, data);
            case GB_REALPIX:
                return Give(columns_.realPixel, at, data);
            case GB_COVERAGE:
                return Give(columns_.coverage, at, data);
            case GB_NODE_RENDER_ID:
                return Give(columns_.renderID, at, data);
            case GB_COLOR:
                return Give(columns_.color, at, data);
            case GB_TRANSP:
                return Give(columns_.transparency, at, data);
            case GB_WEIGHT:
                return Give(columns_.weight, at, data);
            default:
                return FALSE;
        }
    }

  private:
    int Enter(int x, std::size_t start) {
        const std::uint16_t count = columns_.counts[x];
        pixel_ = x;
        first_ = start;
        end_ = start + count;
        at_ = static_cast<std::ptrdiff_t>(start) - 1;
        return count;
    }

    // Stands on no pixel.
    void Leave() {
        first_ = 0;
        end_ = 0;
        at_ = -1;
    }

    const FragmentBuffer& buffer_;
    // Without counts: there is no line.
    Columns columns_;
    int pixel_ = -1;
    std::size_t first_ = 0;
    std::size_t end_ = 0;
    std::ptrdiff_t at_ = -1;
};

GBufReader* FragmentBuffer::CreateReader() {
    return new (std::nothrow) Reader(*this);
}

void FragmentBuffer::DestroyReader(GBufReader* reader) {
    delete static_cast<Reader*>(reader);
}

BOOL FragmentBuffer::GetChannelMin(int chan, void* data) {
    return chan == GB_Z && smallestZ_ <= largestZ_ && Give(&smallestZ_, 0, data);
}

BOOL FragmentBuffer::GetChannelMax(int chan, void* data) {
    return chan == GB_Z && smallestZ_ <= largestZ_ && Give(&largestZ_, 0, data);
}

template <class Id>
void* FragmentBuffer::Plane(std::vector<Id>& plane, Id* Columns::*column, Id none) const {
    if (plane.empty()) {
        plane.reserve(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_));
        for (const Row& row : rows_) {
            const Columns columns = ColumnsOf(row.memory.get(), row.size);
            const Id* first = columns.*column;
            for (int x = 0; x < width_; ++x) {
                const std::uint16_t count = columns.counts[x];
                plane.push_back(first && count > 0 ? *first : none);
                first += count;
            }
        }
    }
    return plane.data();
}

void* FragmentBuffer::GetChannel(ULONG channelID, ULONG& chanType) {
    chanType = channelID;
    if (!(channels_ & channelID) || !IsComplete() || rows_.empty()) {
        return nullptr;
    }
    switch (channelID) {
        case BMM_CHAN_MTL_ID:
            return Plane(mtlIDs_, &Columns::mtlID, UBYTE{0});
        case BMM_CHAN_NODE_ID:
            return Plane(nodeIDs_, &Columns::nodeID, UWORD{0});
        case BMM_CHAN_NODE_RENDER_ID:
            return Plane(renderIDs_, &Columns::renderID, NO_OBJECT);
        default:
            return nullptr;
    }
}

}  // namespace host

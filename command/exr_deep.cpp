#include "command/exr_deep.h"

#include <OpenEXR/ImfChannelList.h>
#include <OpenEXR/ImfCompressionAttribute.h>
#include <OpenEXR/ImfDeepScanLineInputPart.h>
#include <OpenEXR/ImfDeepTiledInputPart.h>
#include <OpenEXR/ImfHeader.h>
#include <OpenEXR/ImfMultiPartInputFile.h>
#include <OpenEXR/ImfPartType.h>

#include <algorithm>
#include <bit>

#include "command/exr_description.h"
#include "command/failure.h"

namespace command {
namespace {

// Bytes of a band's samples in memory.
constexpr std::uint64_t mostBandBytes = std::uint64_t{1} << 30;

// The most bytes that one byte of a file can stand for.
std::uint64_t LargestRatio(Imf::Compression compression) {
    switch (compression) {
        case Imf::NO_COMPRESSION:
            return 1;
        case Imf::RLE_COMPRESSION:
            return 64;
        default:
            // Deflate's.
            return 1032;
    }
}

std::uint64_t SampleBytes(const Imf::ChannelList& channels) {
    std::uint64_t bytes = 0;
    for (auto each = channels.begin(); each != channels.end(); ++each)
        bytes += each.channel().type == Imf::HALF ? 2 : 4;
    return std::max<std::uint64_t>(1, bytes);
}

// A band is one row.
class ScanlineBands : public ExrDeepRows::Bands {
  public:
    ScanlineBands(Imf::MultiPartInputFile& file, std::size_t part)
        : input(file, static_cast<int>(part)), data(WindowOf(input.header().dataWindow())) {}

    Window BandOf(int row) const override { return {data.left, row, data.right, row}; }
    void SetFrameBuffer(const Imf::DeepFrameBuffer& buffer) override {
        input.setFrameBuffer(buffer);
    }
    void ReadCounts(const Window& band) override {
        input.readPixelSampleCounts(band.top, band.bottom);
    }
    void ReadSamples(const Window& band) override { input.readPixels(band.top, band.bottom); }

  private:
    Imf::DeepScanLineInputPart input;
    Window data;
};

// A band is a row of those tiles that the frame needs.
class TiledBands : public ExrDeepRows::Bands {
  public:
    TiledBands(Imf::MultiPartInputFile& file, std::size_t part, const Window& frame)
        : input(file, static_cast<int>(part)), data(WindowOf(input.header().dataWindow())) {
        const auto width = static_cast<int>(input.tileXSize());
        firstColumn = (std::max(frame.left, data.left) - data.left) / width;
        lastColumn = (std::min(frame.right, data.right) - data.left) / width;
    }

    Window BandOf(int row) const override {
        const int tileRow = TileRow(row);
        const Imath::Box2i first = input.dataWindowForTile(firstColumn, tileRow);
        const Imath::Box2i last = input.dataWindowForTile(lastColumn, tileRow);
        return {first.min.x, first.min.y, last.max.x, last.max.y};
    }
    void SetFrameBuffer(const Imf::DeepFrameBuffer& buffer) override {
        input.setFrameBuffer(buffer);
    }
    void ReadCounts(const Window& band) override {
        const int row = TileRow(band.top);
        input.readPixelSampleCounts(firstColumn, lastColumn, row, row);
    }
    void ReadSamples(const Window& band) override {
        const int row = TileRow(band.top);
        input.readTiles(firstColumn, lastColumn, row, row);
    }

  private:
    int TileRow(int row) const { return (row - data.top) / static_cast<int>(input.tileYSize()); }

    Imf::DeepTiledInputPart input;
    Window data;
    int firstColumn = 0;
    int lastColumn = 0;
};

}  // namespace

ExrDeepRows::ExrDeepRows(Imf::MultiPartInputFile& file, const std::string& filePath,
                         std::uint64_t fileBytes, const Window& frameWindow,
                         const DeepChannels& channels)
    : path(filePath), frame(frameWindow) {
    const Imf::Header& header = file.header(static_cast<int>(channels.part));
    data = WindowOf(header.dataWindow());
    starts.resize(static_cast<std::size_t>(frame.Width()) + 1);
    color[0] = PlaneOf(header, channels.red);
    color[1] = PlaneOf(header, channels.green);
    color[2] = PlaneOf(header, channels.blue);
    alpha = PlaneOf(header, channels.alpha);
    z = PlaneOf(header, channels.z);
    zBack = PlaneOf(header, channels.zBack);
    const std::size_t idCount = std::min(channels.ids.size(), mostDeepIds);
    for (std::size_t i = 0; i < idCount; ++i)
        ids.push_back(PlaneOf(header, channels.ids[i]));
    if (z == none) throw InputError(path + ": deep pixels without a depth channel can't be read");
    mostInFile = fileBytes * LargestRatio(header.compression()) / SampleBytes(header.channels());
    const bool isSeen = data.left <= frame.right && data.right >= frame.left;
    if (!isSeen) {
        // As if there were no rows.
        data.bottom = data.top - 1;
    } else if (header.type() == Imf::DEEPTILE) {
        bands = std::make_unique<TiledBands>(file, channels.part, frame);
    } else {
        bands = std::make_unique<ScanlineBands>(file, channels.part);
    }
}

ExrDeepRows::~ExrDeepRows() = default;

// Adds the plane unless it is there.
int ExrDeepRows::PlaneOf(const Imf::Header& header, const std::string& name) {
    if (name.empty()) return none;
    const auto same = std::find_if(planes.begin(), planes.end(),
                                   [&](const Plane& plane) { return plane.name == name; });
    if (same != planes.end()) return static_cast<int>(same - planes.begin());
    const Imf::Channel* channel = header.channels().findChannel(name);
    if (!channel) throw InputError(path + ": there is no deep channel " + name);
    planes.push_back({name, channel->type == Imf::UINT, {}, {}});
    return static_cast<int>(planes.size()) - 1;
}

void ExrDeepRows::Load(int y) {
    samples.clear();
    const int row = frame.top + y;
    if (row < data.top || row > data.bottom) {
        std::fill(starts.begin(), starts.end(), std::size_t{0});
        return;
    }
    if (row < band.top || row > band.bottom) ReadBand(row);
    const auto bandWidth = static_cast<std::size_t>(band.Width());
    const std::size_t line = static_cast<std::size_t>(row - band.top) * bandWidth;
    for (std::size_t x = 0; x + 1 < starts.size(); ++x) {
        starts[x] = samples.size();
        const std::int64_t column = std::int64_t{frame.left} + static_cast<std::int64_t>(x);
        if (column < band.left || column > band.right) continue;
        ReadPixel(line + static_cast<std::size_t>(column - band.left));
        if (!tidier.Tidy(pixelSamples)) {
            throw InputError(path + ": a pixel in row " + std::to_string(row) +
                             " has too many deep samples that overlap; render it flat");
        }
        samples.insert(samples.end(), pixelSamples.begin(), pixelSamples.end());
    }
    starts.back() = samples.size();
}

void ExrDeepRows::ReadBand(int row) {
    const Window next = bands->BandOf(row);
    // Stays empty when reading fails.
    band = Window();
    const auto pixels = static_cast<std::size_t>(next.Width() * next.Height());
    counts.assign(pixels, 0);
    offsets.resize(pixels);
    for (Plane& plane : planes)
        plane.places.assign(pixels, nullptr);

    const Imath::V2i origin(next.left, next.top);
    const auto width = static_cast<std::size_t>(next.Width());
    Imf::DeepFrameBuffer buffer;
    buffer.insertSampleCountSlice(Imf::Slice::Make(Imf::UINT, counts.data(), origin, next.Width(),
                                                   next.Height(), sizeof(unsigned),
                                                   sizeof(unsigned) * width));
    constexpr std::size_t placeBytes = sizeof(std::uint32_t*);
    for (Plane& plane : planes) {
        const Imf::PixelType type = plane.isUnsigned ? Imf::UINT : Imf::FLOAT;
        const Imf::Slice places = Imf::Slice::Make(type, plane.places.data(), origin, next.Width(),
                                                   next.Height(), placeBytes, placeBytes * width);
        buffer.insert(plane.name, Imf::DeepSlice(type, places.base, placeBytes, placeBytes * width,
                                                 sizeof(std::uint32_t)));
    }
    bands->SetFrameBuffer(buffer);
    bands->ReadCounts(next);
    std::uint64_t total = 0;
    for (std::size_t i = 0; i < pixels; ++i) {
        offsets[i] = static_cast<std::size_t>(total);
        total += counts[i];
    }
    CheckSamples(total, row);
    for (Plane& plane : planes) {
        plane.samples.resize(static_cast<std::size_t>(total));
        for (std::size_t i = 0; i < pixels; ++i)
            plane.places[i] = plane.samples.data() + offsets[i];
    }
    bands->ReadSamples(next);
    band = next;
}

void ExrDeepRows::CheckSamples(std::uint64_t count, int row) const {
    const std::string start =
        path + ": the rows from " + std::to_string(row) + " on claim " + std::to_string(count);
    if (count > mostInFile) {
        throw InputError(start +
                         " deep samples, more than the file can hold; it is damaged: render or "
                         "copy it again");
    }
    if (count > mostBandBytes / (planes.size() * sizeof(std::uint32_t))) {
        throw InputError(start + " deep samples, too many to hold in memory; render fewer or flat");
    }
}

float ExrDeepRows::Value(int plane, std::size_t sample, float otherwise) const {
    if (plane == none) return otherwise;
    const Plane& from = planes[static_cast<std::size_t>(plane)];
    const std::uint32_t bits = from.samples[sample];
    return from.isUnsigned ? static_cast<float>(bits) : std::bit_cast<float>(bits);
}

void ExrDeepRows::ReadPixel(std::size_t pixel) {
    pixelSamples.clear();
    const std::size_t end = offsets[pixel] + counts[pixel];
    for (std::size_t i = offsets[pixel]; i < end; ++i) {
        DeepSample& sample = pixelSamples.emplace_back();
        sample.z = Value(z, i, 0.0F);
        sample.zBack = Value(zBack, i, sample.z);
        sample.alpha = Value(alpha, i, 1.0F);
        for (std::size_t c = 0; c < sample.color.size(); ++c)
            sample.color[c] = Value(color[c], i, 0.0F);
        for (std::size_t k = 0; k < ids.size(); ++k)
            sample.ids[k] = planes[static_cast<std::size_t>(ids[k])].samples[i];
    }
}

}  // namespace command

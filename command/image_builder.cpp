#include "command/image_builder.h"

#include <algorithm>
#include <utility>

#include "command/finite.h"
#include "host/pixel_rows.h"

namespace command {
namespace {

// Stored components of an image of so many channels: a missing third colour is 0.
std::size_t ComponentsFor(std::size_t channels, bool lastIsAlpha) {
    if (lastIsAlpha) return 4;
    return channels == 1 ? 1 : 3;
}

template <class Sample, class Value>
void Spread(const void* samples, std::size_t width, std::size_t step, Value* out) {
    const auto* from = static_cast<const Sample*>(samples);
    for (std::size_t x = 0; x < width; ++x)
        out[x * step] = static_cast<Value>(from[x]);
}

void SpreadHalfsAsFloats(const void* samples, std::size_t width, std::size_t step, float* out) {
    constexpr std::size_t blockSize = 256;
    const auto* halfs = static_cast<const std::uint16_t*>(samples);
    float floats[blockSize];
    for (std::size_t first = 0; first < width; first += blockSize) {
        const std::size_t count = std::min(blockSize, width - first);
        host::HalfRowToFloat(halfs + first, floats, count);
        Spread<float>(floats, count, step, out + first * step);
    }
}

// An image of halfs is made of halfs alone.
void SpreadChannel(const ChannelRow& row, std::size_t width, std::size_t step, std::uint16_t* out) {
    Spread<std::uint16_t>(row.samples, width, step, out);
}

void SpreadChannel(const ChannelRow& row, std::size_t width, std::size_t step, float* out) {
    switch (row.type) {
        case SampleType::Half:
            return SpreadHalfsAsFloats(row.samples, width, step, out);
        case SampleType::Float:
            return Spread<float>(row.samples, width, step, out);
        case SampleType::Unsigned32:
            return Spread<std::uint32_t>(row.samples, width, step, out);
        case SampleType::Unsigned16:
            return Spread<std::uint16_t>(row.samples, width, step, out);
        case SampleType::Unsigned8:
            return Spread<std::uint8_t>(row.samples, width, step, out);
    }
}

}  // namespace

ImageBuilder::ImageBuilder(int imageWidth, int imageHeight, std::span<const SampleType> types,
                           bool lastIsAlpha)
    : width(imageWidth),
      height(imageHeight),
      hasAlpha(lastIsAlpha),
      channels(types.size()),
      components(ComponentsFor(types.size(), lastIsAlpha)) {
    const bool allHalf = std::all_of(types.begin(), types.end(),
                                     [](SampleType type) { return type == SampleType::Half; });
    if (!allHalf) image.emplace<std::vector<float>>();
    std::visit(
        [&](auto& values) {
            values.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) *
                           components);
        },
        image);
}

template <class Value>
void ImageBuilder::Append(std::vector<Value>& values, std::span<const ChannelRow> rows) {
    const auto pixels = static_cast<std::size_t>(width);
    const std::size_t start = values.size();
    values.resize(start + pixels * components);
    Value* out = values.data() + start;
    const std::size_t colors = channels - (hasAlpha ? 1 : 0);
    for (std::size_t i = 0; i < colors; ++i)
        SpreadChannel(rows[i], pixels, components, out + i);
    // Grey with alpha stands in all three colours.
    for (std::size_t i = 1; colors == 1 && i < 3 && i < components; ++i)
        SpreadChannel(rows[0], pixels, components, out + i);
    if (hasAlpha) SpreadChannel(rows[channels - 1], pixels, components, out + 3);
    notFinite += MakeFinite(out, pixels * components);
}

void ImageBuilder::AddRow(std::span<const ChannelRow> rows) {
    std::visit([&](auto& values) { Append(values, rows); }, image);
}

host::Owned<host::ImageBitmap> ImageBuilder::Finish(float pixelAspect) {
    const host::ImageFormat format{.width = width,
                                   .height = height,
                                   .hasAlpha = hasAlpha,
                                   .aspect = pixelAspect,
                                   .components = static_cast<int>(components)};
    if (auto* halfs = std::get_if<std::vector<std::uint16_t>>(&image)) {
        return host::ImageBitmap::FromHalf(format, std::move(*halfs));
    }
    return host::ImageBitmap::FromFloat(format, std::move(std::get<std::vector<float>>(image)));
}

}  // namespace command

#include "psdbuilder/composer_channel.h"

#include <algorithm>
#include <utility>

namespace psdbuilder {

ComposerChannelImageSource::ComposerChannelImageSource(
    psdfile::PSDChannelImageDataSourcePtr picture, psdfile::PSDChannelImageDataSourcePtr gate,
    int samples)
    : width(static_cast<std::size_t>(std::max(samples, 0))),
      source(std::move(picture)),
      mask(std::move(gate)) {}

// `fetch()` gives the source's row.
template <class Sample, class Fetch>
const Sample* ComposerChannelImageSource::GateRow(std::uint32_t row, std::vector<Sample>& gated,
                                                  Fetch fetch) {
    const std::uint8_t* open = mask ? mask->GetRow8(row) : nullptr;
    if (!open) return source ? fetch() : nullptr;
    // A buffer that is asked for has an address, also for a picture without width.
    gated.reserve(std::max<std::size_t>(width, 1));
    gated.assign(width, Sample{});
    const std::uint8_t* end = open + width;
    const std::uint8_t* first = std::find_if(open, end, [](std::uint8_t m) { return m != 0; });
    if (first == end) return gated.data();
    const Sample* samples = source ? fetch() : nullptr;
    if (!samples) return nullptr;
    Sample* out = gated.data();
    for (auto x = static_cast<std::size_t>(first - open); x < width; ++x) {
        const Sample sample = samples[x];
        out[x] = open[x] != 0 ? sample : Sample{};
    }
    return gated.data();
}

const std::uint8_t* ComposerChannelImageSource::GetRow8(std::uint32_t row) {
    return GateRow(row, row8, [&] { return source->GetRow8(row); });
}

const std::uint16_t* ComposerChannelImageSource::GetRow16(std::uint32_t row) {
    return GateRow(row, row16, [&] { return source->GetRow16(row); });
}

const float* ComposerChannelImageSource::GetRow32(std::uint32_t row) {
    return GateRow(row, rowFloat, [&] { return source->GetRow32(row); });
}

}  // namespace psdbuilder

#include "sources/srgb_filter.h"

#include <cmath>
#include <limits>
#include <utility>
#include <vector>

#include "sources/srgb_curve.h"

namespace sources {
namespace {

template <class Sample>
Sample Filter(Sample sample) {
    constexpr double full = std::numeric_limits<Sample>::max();
    const double encoded = SRGB(sample / full) * full + 0.5;
    return encoded >= full ? std::numeric_limits<Sample>::max()
                           : static_cast<Sample>(std::floor(encoded));
}

// Every sample's filtered value: a power function a sample would cost more than the whole write.
template <class Sample>
const std::vector<Sample>& FilterTable() {
    static const std::vector<Sample> table = [] {
        std::vector<Sample> entries(std::size_t{std::numeric_limits<Sample>::max()} + 1);
        for (std::size_t i = 0; i < entries.size(); ++i) {
            entries[i] = Filter(static_cast<Sample>(i));
        }
        return entries;
    }();
    return table;
}

template <class Sample>
const Sample* FilterRow(const Sample* inner, int width, Sample* filtered) {
    if (!inner) return nullptr;
    const Sample* table = FilterTable<Sample>().data();
    for (int i = 0; i < width; ++i)
        filtered[i] = table[inner[i]];
    return filtered;
}

}  // namespace

SRGBFilterIDS::SRGBFilterIDS(psdfile::PSDChannelImageDataSourcePtr inner, int samples)
    : row8(MakeRow<std::uint8_t>(samples)),
      row16(MakeRow<std::uint16_t>(samples)),
      width(samples),
      source(std::move(inner)) {}

const std::uint8_t* SRGBFilterIDS::GetRow8(std::uint32_t row) {
    return source ? FilterRow(source->GetRow8(row), width, row8.get()) : nullptr;
}

const std::uint16_t* SRGBFilterIDS::GetRow16(std::uint32_t row) {
    return source ? FilterRow(source->GetRow16(row), width, row16.get()) : nullptr;
}

const float* SRGBFilterIDS::GetRow32(std::uint32_t row) {
    return source ? source->GetRow32(row) : nullptr;
}

bool SRGBFilterIDS::IsSolid() {
    return source && source->IsSolid();
}

}  // namespace sources

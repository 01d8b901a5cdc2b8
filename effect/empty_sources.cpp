#include "effect/empty_sources.h"

namespace effect {
namespace {

bool IsEmptyRow(const std::uint16_t* samples, int width) {
    unsigned any = 0;
    for (int x = 0; x < width; ++x)
        any |= samples[x];
    return any == 0;
}

bool IsEmpty(psdfile::PSDChannelImageDataSource& source, int width, int height) {
    // A source of one value is told by one row.
    const int rows = source.IsSolid() && height > 0 ? 1 : height;
    for (int y = 0; y < rows; ++y) {
        const std::uint16_t* samples = source.GetRow16(static_cast<std::uint32_t>(y));
        if (!samples) return true;
        if (!IsEmptyRow(samples, width)) return false;
    }
    return true;
}

}  // namespace

bool AreSourcesEmpty(int width, int height,
                     std::span<const psdfile::PSDChannelImageDataSourcePtr> sources) {
    for (const psdfile::PSDChannelImageDataSourcePtr& source : sources) {
        if (source && !IsEmpty(*source, width, height)) return false;
    }
    return true;
}

}  // namespace effect

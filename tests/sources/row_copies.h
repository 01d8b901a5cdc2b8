// Rows that a source gave, as vectors that a test can compare.
#pragma once

#include <vector>

#include "psdfile/channel_source.h"

inline std::vector<std::uint8_t> Row8(psdfile::PSDChannelImageDataSource& source, int width,
                                      std::uint32_t row = 0) {
    const std::uint8_t* samples = source.GetRow8(row);
    return {samples, samples + width};
}
inline std::vector<std::uint16_t> Row16(psdfile::PSDChannelImageDataSource& source, int width,
                                        std::uint32_t row = 0) {
    const std::uint16_t* samples = source.GetRow16(row);
    return {samples, samples + width};
}
inline std::vector<float> Row32(psdfile::PSDChannelImageDataSource& source, int width,
                                std::uint32_t row = 0) {
    const float* samples = source.GetRow32(row);
    return {samples, samples + width};
}

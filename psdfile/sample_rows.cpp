// Passes over one row, in a form that compilers turn into vector code.

#include "psdfile/sample_rows.h"

#include <bit>
#include <cstring>

namespace psdfile {

namespace {

std::uint32_t Bits(const float* sample) {
    std::uint32_t bits;
    std::memcpy(&bits, sample, sizeof bits);
    return bits;
}

}  // namespace

void SwapRow16(const std::uint16_t* source, std::uint8_t* destination, std::size_t width) {
    for (std::size_t i = 0; i < width; ++i) {
        const std::uint16_t sample = source[i];
        const auto swapped = static_cast<std::uint16_t>(sample << 8 | sample >> 8);
        std::memcpy(destination + 2 * i, &swapped, sizeof swapped);
    }
}

void SwapRow32(const float* source, std::uint8_t* destination, std::size_t width) {
    for (std::size_t i = 0; i < width; ++i) {
        const std::uint32_t x = Bits(source + i);
        const std::uint32_t swapped = x << 24 | (x & 0xFF00U) << 8 | (x >> 8 & 0xFF00U) | x >> 24;
        std::memcpy(destination + 4 * i, &swapped, sizeof swapped);
    }
}

void WidenRow8To16(const std::uint8_t* source, std::uint8_t* destination, std::size_t width) {
    for (std::size_t i = 0; i < width; ++i) {
        destination[2 * i] = source[i];
        destination[2 * i + 1] = source[i];
    }
}

void ConvertRow16To32(const std::uint16_t* source, float* destination, std::size_t width) {
    for (std::size_t i = 0; i < width; ++i) {
        destination[i] = static_cast<float>(source[i]) / 65535.0F;
    }
}

void ConvertRow8To32(const std::uint8_t* source, float* destination, std::size_t width) {
    for (std::size_t i = 0; i < width; ++i) {
        destination[i] = static_cast<float>(source[i]) / 255.0F;
    }
}

void PredictFloatRow(const float* source, std::uint8_t* destination, std::size_t width) {
    if (width == 0) return;
    std::uint8_t before = 0;  // the last byte of the plane before
    for (int plane = 0; plane < 4; ++plane) {
        const int shift = 24 - 8 * plane;
        std::uint8_t* const bytes = destination + static_cast<std::size_t>(plane) * width;
        bytes[0] = static_cast<std::uint8_t>((Bits(source) >> shift) - before);
        for (std::size_t i = 1; i < width; ++i) {
            bytes[i] = static_cast<std::uint8_t>((Bits(source + i) >> shift) -
                                                 (Bits(source + i - 1) >> shift));
        }
        before = static_cast<std::uint8_t>(Bits(source + width - 1) >> shift);
    }
}

}  // namespace psdfile

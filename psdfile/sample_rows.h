// Conversions of a row of samples between depths and byte orders. All are plain passes over a row
// without allocation; `width` counts samples.
#pragma once

#include <cstddef>
#include <cstdint>

namespace psdfile {

// Big-endian bytes of machine-order samples. SwapRow32 also works in place.
void SwapRow16(const std::uint16_t* source, std::uint8_t* destination, std::size_t width);
void SwapRow32(const float* source, std::uint8_t* destination, std::size_t width);

// x * 257, so that 255 becomes 65535. Both bytes are equal: the result is in any byte order.
void WidenRow8To16(const std::uint8_t* source, std::uint8_t* destination, std::size_t width);

// x / 65535 and x / 255: white is exactly 1.
void ConvertRow16To32(const std::uint16_t* source, float* destination, std::size_t width);
void ConvertRow8To32(const std::uint8_t* source, float* destination, std::size_t width);

// What floats go through before they are deflated: the row's bytes in four planes, most
// significant first, then each byte less the one before it, across the planes' borders. The
// destination takes 4 * width bytes and must not overlap the source.
void PredictFloatRow(const float* source, std::uint8_t* destination, std::size_t width);

}  // namespace psdfile

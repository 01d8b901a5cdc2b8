// Conversions of pixel rows. Every instruction set gives the same bits for the same input.
//
// A component is one sample of a pixel; `components` counts them, and rows of any length and
// alignment are taken. Source and destination must not overlap.
#pragma once

#include <cstddef>
#include <cstdint>

namespace host {

// To 16 bits: NaN and what is below 0 give 0, what is above 1 gives 65535, and any x between them
// the integer nearest to the exact product x * 65535 (a tie goes to the even one; 0.5 is the only
// tie and gives 32768).
void HalfRowToUnsigned16(const std::uint16_t* halfs, std::uint16_t* out, std::size_t components);
void FloatRowToUnsigned16(const float* in, std::uint16_t* out, std::size_t components);

// Exact, also for denormal numbers and infinities; a NaN keeps its sign and payload and is quiet.
void HalfRowToFloat(const std::uint16_t* halfs, float* out, std::size_t components);

// The float nearest to v / 65535, so that the way back gives v again.
void Unsigned16RowToFloat(const std::uint16_t* in, float* out, std::size_t components);

// Whole pixels of R, G, B, A out of grey or of R, G, B: the alpha is 1 (65535 in 16 bits), a grey
// is all colours. `pixels` counts pixels.
void GreyToPixels(const std::uint16_t* greys, std::uint16_t* out, std::size_t pixels);
void GreyToPixels(const float* greys, float* out, std::size_t pixels);
void ColorsToPixels(const std::uint16_t* colors, std::uint16_t* out, std::size_t pixels);
void ColorsToPixels(const float* colors, float* out, std::size_t pixels);

}  // namespace host

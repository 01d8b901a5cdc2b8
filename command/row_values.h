// A channel's row in the type that its reader works with.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "command/render_file.h"

namespace command {

// The whole number that a renderer stored as a float; 0 for what is no whole number from 1 on, as
// where a filter mixed two of them, and for what is above 32 bits.
std::uint32_t WholeNumber(float value);

// One channel's scratch row. Rows that have the wanted type already are handed on as they are; the
// results are valid as long as the row that was given, and until the next call.
class RowValues {
  public:
    // Of any type, as numbers.
    std::span<const float> AsFloats(const ChannelRow& row, std::size_t width);
    // The 32 bits of a float or an unsigned integer.
    static std::span<const std::uint32_t> AsBits(const ChannelRow& row, std::size_t width);
    // Whole numbers, also of channels of floats; what is below 0, NaN or above 32 bits is 0.
    std::span<const std::uint32_t> AsNumbers(const ChannelRow& row, std::size_t width);

  private:
    std::vector<float> floats;
    std::vector<std::uint32_t> numbers;
};

}  // namespace command

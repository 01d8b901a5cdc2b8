// The picture, made of rows of its channels.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "command/render_file.h"

namespace command {

class PictureBuilder {
  public:
    // `shape` is a picture without pixels. `halfs` makes a picture of halfs, for which every row
    // must be of them; otherwise it is of floats, and an unsigned channel is taken as a fraction:
    // 4294967295 is 1. Memory is taken as rows come.
    PictureBuilder(Picture shape, bool halfs);

    // Red, green, blue and alpha of the next row from above, of one data window. Without samples
    // blue is 0 and alpha is 1 where the others' data window is.
    void Append(const std::array<ChannelRow, 4>& rows);
    // The next row as pixels, red, green, blue, alpha, which stand from the column `first` on.
    void Append(std::span<const std::uint16_t> halfs, int first);
    void Append(std::span<const float> floats, int first);
    // After the last row.
    Picture Take();

  private:
    template <class Value>
    void AppendChannels(const std::array<const Value*, 4>& samples, int first, int count);
    template <class Value>
    void AppendPixels(std::span<const Value> values, int first);
    template <class Value>
    Value* AppendEmptyRow();
    const float* Floats(const ChannelRow& row, std::size_t component);

    Picture picture;
    std::size_t width;
    // For a component that there is no channel for.
    std::vector<std::uint16_t> halfZeros;
    std::vector<std::uint16_t> halfOnes;
    std::vector<float> zeros;
    std::vector<float> ones;
    // Rows of other types, as floats.
    std::array<std::vector<float>, 4> converted;
};

}  // namespace command

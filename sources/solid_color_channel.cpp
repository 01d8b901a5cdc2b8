#include "sources/solid_color_channel.h"

#include <algorithm>
#include <cmath>

namespace sources {

SolidColorChannelImageSource::SolidColorChannelImageSource(std::uint8_t value, int samples)
    : value8(value),
      value16(static_cast<std::uint16_t>(value * 257)),
      valueFloat(static_cast<float>(std::floor(value / 255.0))),
      row8(MakeRow<std::uint8_t>(samples)),
      row16(MakeRow<std::uint16_t>(samples)),
      rowFloat(MakeRow<float>(samples)),
      width(samples) {
    std::fill_n(row8.get(), width, value8);
    std::fill_n(row16.get(), width, value16);
    std::fill_n(rowFloat.get(), width, valueFloat);
}

}  // namespace sources

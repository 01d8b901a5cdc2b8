// A channel of one value.
#pragma once

#include "psdfile/channel_source.h"
#include "sources/row_buffer.h"

namespace sources {

// In floats only white is kept: 255 is 1.0 and every other value 0.0.
class SolidColorChannelImageSource : public psdfile::PSDChannelImageDataSource {
  public:
    // `width` in samples.
    SolidColorChannelImageSource(std::uint8_t value, int width);

    const std::uint8_t* GetRow8(std::uint32_t) override { return row8.get(); }
    const std::uint16_t* GetRow16(std::uint32_t) override { return row16.get(); }
    const float* GetRow32(std::uint32_t) override { return rowFloat.get(); }
    bool IsSolid() override { return true; }
    std::uint8_t GetSolidValue8() override { return value8; }
    std::uint16_t GetSolidValue16() override { return value16; }

  private:
    std::uint8_t value8;
    std::uint16_t value16;
    float valueFloat;
    RowBuffer<std::uint8_t> row8;
    RowBuffer<std::uint16_t> row16;
    RowBuffer<float> rowFloat;
    int width;
};

}  // namespace sources

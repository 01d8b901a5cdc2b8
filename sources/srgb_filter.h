// The sRGB curve over another source, for data that has no gamma path of its own.
#pragma once

#include "psdfile/channel_source.h"
#include "sources/row_buffer.h"

namespace sources {

// Float rows pass unfiltered. A solid source stays solid, but its solid values read 0: as a mask it
// gets default colour 0.
class SRGBFilterIDS : public psdfile::PSDChannelImageDataSource {
  public:
    // `width` in samples. Without a source every row is null.
    SRGBFilterIDS(psdfile::PSDChannelImageDataSourcePtr source, int width);

    const std::uint8_t* GetRow8(std::uint32_t row) override;
    const std::uint16_t* GetRow16(std::uint32_t row) override;
    const float* GetRow32(std::uint32_t row) override;
    bool IsSolid() override;

  private:
    RowBuffer<std::uint8_t> row8;
    RowBuffer<std::uint16_t> row16;
    int width;
    psdfile::PSDChannelImageDataSourcePtr source;
};

}  // namespace sources

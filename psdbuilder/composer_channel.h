// A source of which a mask lets through only a part.
#pragma once

#include <cstdint>
#include <vector>

#include "psdfile/channel_source.h"

namespace psdbuilder {

// The source's samples, untouched, where the mask's 8-bit row isn't 0, and 0 elsewhere. The mask
// doesn't scale. A row whose mask is 0 throughout asks nothing of the source.
class ComposerChannelImageSource : public psdfile::PSDChannelImageDataSource {
  public:
    // `width` in samples. Without a mask, or where it has no row, the source's row passes.
    ComposerChannelImageSource(psdfile::PSDChannelImageDataSourcePtr source,
                               psdfile::PSDChannelImageDataSourcePtr mask, int width);

    // Null where a row of the source is needed that it doesn't have.
    const std::uint8_t* GetRow8(std::uint32_t row) override;
    const std::uint16_t* GetRow16(std::uint32_t row) override;
    const float* GetRow32(std::uint32_t row) override;

  private:
    template <class Sample, class Fetch>
    const Sample* GateRow(std::uint32_t row, std::vector<Sample>& gated, Fetch fetch);

    // Empty until the first row of that depth.
    std::vector<std::uint8_t> row8;
    std::vector<std::uint16_t> row16;
    std::vector<float> rowFloat;
    std::size_t width;
    psdfile::PSDChannelImageDataSourcePtr source;
    psdfile::PSDChannelImageDataSourcePtr mask;
};

}  // namespace psdbuilder

// A small uncompressed picture of the document among the image resources.
#pragma once

#include <cstdint>

#include "psdfile/channel_source.h"
#include "psdfile/image_resource_block.h"
#include "psdfile/part.h"

namespace psdfile {

// The pixels: red, green, blue bytes of each, rows padded with zeros to a multiple of 4 bytes.
class PSDThumbnailData : public PSDPart {
  public:
    PSDThumbnailData(std::uint32_t width, std::uint32_t height, PSDChannelImageDataSourcePtr red,
                     PSDChannelImageDataSourcePtr green, PSDChannelImageDataSourcePtr blue);

    void WriteBody(std::ostream& stream) override;

    [[nodiscard]] std::uint32_t RowBytes() const;

    std::uint32_t width;
    std::uint32_t height;
    PSDChannelImageDataSourcePtr red;
    PSDChannelImageDataSourcePtr green;
    PSDChannelImageDataSourcePtr blue;
};

class PSDIRB_Thumbnail : public PSDImageResourceBlock {
  public:
    // The sources must not be empty, and must be of the thumbnail's size: nothing is scaled.
    PSDIRB_Thumbnail(std::uint32_t width, std::uint32_t height,
                     const PSDChannelImageDataSourcePtr& red,
                     const PSDChannelImageDataSourcePtr& green,
                     const PSDChannelImageDataSourcePtr& blue);
};

}  // namespace psdfile

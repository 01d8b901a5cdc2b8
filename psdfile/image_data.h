// Section 5 of the file: the merged image and the extra alpha channels.
#pragma once

#include <cstdint>

#include "psdfile/part.h"
#include "psdfile/part_list.h"
#include "psdfile/primitives.h"
#include "psdfile/progress.h"

namespace psdfile {

class PSDImageData : public PSDPart {
  public:
    void WriteBody(std::ostream& stream) override;

    PSint16 compression;   // raw or RLE, for all channels
    PSDPartList channels;  // PSDChannelImageData: red, green, blue, then alpha channels
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    PSDWriteProgressCallback* progress = nullptr;  // not owned

  private:
    void WriteChannels(std::ostream& stream);
};

}  // namespace psdfile

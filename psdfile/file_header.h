// Section 1 of the file, 26 bytes.
#pragma once

#include <cstdint>

#include "psdfile/part.h"

namespace psdfile {

class PSDFileHeader : public PSDPart {
  public:
    void WriteBody(std::ostream& stream) override;

    std::uint16_t version = 1;   // 1 PSD, 2 PSB
    std::uint16_t channels = 3;  // of the merged image
    std::uint32_t height = 0;    // rows
    std::uint32_t width = 0;     // columns
    std::uint16_t depth = 8;     // 8, 16 or 32 bits a channel
};

}  // namespace psdfile

// Section 2 of the file: empty, but for a fixed block of view settings at 32 bits.
#pragma once

#include <cstdint>

#include "psdfile/part.h"

namespace psdfile {

class PSDColorModeData : public PSDPart {
  public:
    PSDColorModeData() { writeInnerLength = true; }

    void WriteBody(std::ostream& stream) override;

    std::uint32_t depth = 8;
};

}  // namespace psdfile

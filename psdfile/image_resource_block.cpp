// The frame of an image resource.

#include "psdfile/image_resource_block.h"

#include "psdfile/four_char_code.h"

namespace psdfile {

PSDImageResourceBlock::PSDImageResourceBlock(std::uint16_t resourceID, const char* resourceName)
    : signature(FourCharCode("8BIM")),
      id(resourceID),
      name(resourceName, 2, false, false, true),
      data(2, true, false) {}

void PSDImageResourceBlock::WriteBody(std::ostream& stream) {
    stream << signature << id << name << data;
}

}  // namespace psdfile

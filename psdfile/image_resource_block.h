// The common form of all image resources: signature, id, name, data.
#pragma once

#include <cstdint>

#include "psdfile/part.h"
#include "psdfile/part_list.h"
#include "psdfile/primitives.h"
#include "psdfile/text.h"

namespace psdfile {

// A kind of resource is a subclass whose constructor fills `data`; nothing else differs.
class PSDImageResourceBlock : public PSDPart {
  public:
    // A null name is an empty one.
    explicit PSDImageResourceBlock(std::uint16_t resourceID, const char* resourceName = nullptr);

    void WriteBody(std::ostream& stream) override;

    PSint32 signature;  // "8BIM"
    PSint16 id;
    PSString name;     // Pascal string padded to an even size
    PSDPartList data;  // padded to an even size that its 4-byte length leaves out
};

}  // namespace psdfile

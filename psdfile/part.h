// Root of the file tree: every byte of a document is written by a part, and every part frames
// itself with lengths and padding in the same way.
#pragma once

#include <cstdint>
#include <ostream>

namespace psdfile {

// No part reports an error. A failed stream turns all further output into no-ops, the walk over
// the tree still goes to its end, and the caller then reads the stream's state.
class PSDPart {
  public:
    PSDPart() = default;
    // alignment 0 is taken as 1.
    PSDPart(std::uint8_t alignment, bool writeInnerLength, bool writeOuterLength);
    PSDPart(const PSDPart&) = default;
    PSDPart& operator=(const PSDPart&) = default;

    virtual ~PSDPart() = default;

    // Deletes the object, which must have come from new. Lists free their items through it.
    virtual void Destroy();

    // Outer length, inner length, body, padding; each length only if its flag is set.
    virtual void Write(std::ostream& stream) final;

    // The content alone. Writing may change a part's own bookkeeping, hence not const.
    virtual void WriteBody(std::ostream& stream);

    // The body is padded with zero bytes to a multiple of this, counted from its first byte.
    std::uint8_t alignment = 1;
    // A length directly before the body that leaves out the padding.
    bool writeInnerLength = false;
    // A length before the inner one that counts the inner length field, the body and the padding.
    bool writeOuterLength = false;
    // Both lengths have 8 bytes on a stream in PSB mode. If false they have 4 bytes everywhere, and
    // a larger value is cut to its low 32 bits.
    bool wideLengthInPSB = false;
};

std::ostream& operator<<(std::ostream& stream, PSDPart& part);
std::ostream& operator<<(std::ostream& stream, PSDPart&& part);

}  // namespace psdfile

// The framing of all parts.

#include "psdfile/part.h"

#include "psdfile/length_field.h"
#include "psdfile/stream_state.h"

namespace psdfile {

PSDPart::PSDPart(std::uint8_t alignmentOrZero, bool innerLength, bool outerLength)
    : alignment(alignmentOrZero == 0 ? std::uint8_t{1} : alignmentOrZero),
      writeInnerLength(innerLength),
      writeOuterLength(outerLength) {}

void PSDPart::Destroy() {
    delete this;
}

void PSDPart::Write(std::ostream& stream) {
    if (!writeOuterLength && !writeInnerLength && alignment == 1) {
        WriteBody(stream);  // most parts have no frame; asking for positions costs system calls
        return;
    }
    const bool wide = wideLengthInPSB && PSBMode(stream) != 0;
    const std::streamoff width = wide ? 8 : 4;
    if (writeOuterLength) WriteLengthField(stream, 0, wide);
    const std::streampos afterOuterLength = stream.tellp();
    if (writeInnerLength) WriteLengthField(stream, 0, wide);
    const std::streampos body = stream.tellp();
    WriteBody(stream);
    const std::streampos bodyEnd = stream.tellp();
    if (alignment > 1) PadFrom(stream, body, alignment);
    if (!writeOuterLength && !writeInnerLength) return;

    const std::streampos end = stream.tellp();
    if (writeOuterLength) {
        PatchLengthField(stream, afterOuterLength - width,
                         static_cast<std::uint64_t>(end - afterOuterLength), wide);
    }
    if (writeInnerLength) {
        PatchLengthField(stream, body - width, static_cast<std::uint64_t>(bodyEnd - body), wide);
    }
    stream.seekp(end);
}

void PSDPart::WriteBody(std::ostream& /*stream*/) {}

std::ostream& operator<<(std::ostream& stream, PSDPart& part) {
    part.Write(stream);
    return stream;
}

std::ostream& operator<<(std::ostream& stream, PSDPart&& part) {
    return stream << part;
}

}  // namespace psdfile

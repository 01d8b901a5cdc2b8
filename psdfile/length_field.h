// Length fields and padding. No length is computed ahead: a zero stands in its place until the
// content is out, then the writer seeks back. The stream must therefore be seekable.
#pragma once

#include <cstddef>
#include <cstdint>
#include <ostream>

namespace psdfile {

void WriteBytes(std::ostream& stream, const std::uint8_t* bytes, std::size_t size);
void WriteZeros(std::ostream& stream, std::size_t count);

// 8 bytes if wide and 4, holding the low 32 bits, otherwise.
void WriteLengthField(std::ostream& stream, std::uint64_t length, bool wide);

// Overwrites the field at `position`; the stream is left behind the field.
void PatchLengthField(std::ostream& stream, std::streampos position, std::uint64_t length,
                      bool wide);

// Zero bytes until the distance from `start` is a multiple of `multiple`.
void PadFrom(std::ostream& stream, std::streampos start, std::uint8_t multiple);

}  // namespace psdfile

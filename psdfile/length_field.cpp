// Placeholder, patch and padding, shared by all parts that frame something.

#include "psdfile/length_field.h"

#include <array>

#include "psdfile/big_endian.h"

namespace psdfile {

void WriteBytes(std::ostream& stream, const std::uint8_t* bytes, std::size_t size) {
    stream.write(reinterpret_cast<const char*>(bytes), static_cast<std::streamsize>(size));
}

void WriteZeros(std::ostream& stream, std::size_t count) {
    for (; count > 0; --count) {
        stream.put('\0');
    }
}

void WriteLengthField(std::ostream& stream, std::uint64_t length, bool wide) {
    std::array<std::uint8_t, 8> bytes{};
    const std::size_t size = wide ? 8 : 4;
    StoreBigEndian(length, size, bytes.data());
    WriteBytes(stream, bytes.data(), size);
}

void PatchLengthField(std::ostream& stream, std::streampos position, std::uint64_t length,
                      bool wide) {
    stream.seekp(position);
    WriteLengthField(stream, length, wide);
}

void PadFrom(std::ostream& stream, std::streampos start, std::uint8_t multiple) {
    const std::streamoff rest = (stream.tellp() - start) % multiple;
    // A stream that failed in between tells -1, and the rest may be negative.
    WriteZeros(stream, static_cast<std::size_t>((multiple - rest) % multiple));
}

}  // namespace psdfile

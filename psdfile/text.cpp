// The two text parts.

#include "psdfile/text.h"

#include <algorithm>
#include <array>
#include <vector>

#include "psdfile/big_endian.h"
#include "psdfile/length_field.h"

namespace psdfile {

namespace {

std::size_t UnitsWritten(std::size_t length, std::uint8_t lengthFieldSize) {
    switch (lengthFieldSize) {
        case 1:
            return std::min<std::size_t>(length, 0xFF);
        case 2:
            return std::min<std::size_t>(length, 0xFFFF);
        default:
            return length & 0xFFFF;  // a 4-byte count is cut as well: readers know it so
    }
}

// True if the fill bytes are the whole body.
template <class Text>
bool WriteFillIfEmpty(std::ostream& stream, const Text& part, std::size_t units) {
    const int prefix = part.hasLength ? part.lengthFieldSize : 0;
    if (units != 0 || part.fillSize <= prefix) return false;
    WriteZeros(stream, part.fillSize);
    return true;
}

void WriteCount(std::ostream& stream, std::size_t count, std::uint8_t fieldSize) {
    std::array<std::uint8_t, 4> bytes{};
    const std::size_t size = std::min<std::size_t>(fieldSize, bytes.size());
    StoreBigEndian(count, size, bytes.data());
    WriteBytes(stream, bytes.data(), size);
}

}  // namespace

PSString::PSString(const char* textOrNull, std::uint8_t align, bool innerLength, bool outerLength,
                   bool withLength, std::uint8_t fieldSize, std::uint8_t fill)
    : PSDPart(align, innerLength, outerLength),
      text(textOrNull == nullptr ? "" : textOrNull),
      fillSize(fill),
      lengthFieldSize(fieldSize),
      hasLength(withLength) {}

void PSString::WriteBody(std::ostream& stream) {
    const std::size_t count = UnitsWritten(text.size(), lengthFieldSize);
    if (WriteFillIfEmpty(stream, *this, count)) return;
    if (hasLength) WriteCount(stream, count, lengthFieldSize);
    stream.write(text.data(), static_cast<std::streamsize>(count));
}

PSUString::PSUString(const char16_t* textOrNull, std::uint8_t align, bool innerLength,
                     bool outerLength, bool withLength, std::uint8_t fieldSize, std::uint8_t fill,
                     bool countNull)
    : PSDPart(align, innerLength, outerLength),
      text(textOrNull == nullptr ? u"" : textOrNull),
      fillSize(fill),
      lengthFieldSize(fieldSize),
      nullCounted(countNull),
      hasLength(withLength) {}

void PSUString::WriteBody(std::ostream& stream) {
    const std::size_t count = UnitsWritten(text.size(), lengthFieldSize);
    if (WriteFillIfEmpty(stream, *this, count)) return;
    const std::size_t terminator = hasLength && nullCounted ? 1 : 0;
    if (hasLength) WriteCount(stream, (count + terminator) & 0xFFFF, lengthFieldSize);
    std::vector<std::uint8_t> bytes(2 * (count + terminator));
    for (std::size_t i = 0; i < count; ++i) {
        StoreBigEndian(static_cast<std::uint16_t>(text[i]), &bytes[2 * i]);
    }
    WriteBytes(stream, bytes.data(), bytes.size());
}

}  // namespace psdfile

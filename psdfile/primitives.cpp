// Raw data as a part.

#include "psdfile/primitives.h"

namespace psdfile {

void PSdata::SetData(const void* data, std::size_t size) {
    const auto* first = static_cast<const std::uint8_t*>(data);
    bytes =
        size == 0 ? std::vector<std::uint8_t>() : std::vector<std::uint8_t>(first, first + size);
}

void PSdata::WriteBody(std::ostream& stream) {
    WriteBytes(stream, bytes.data(), bytes.size());
}

}  // namespace psdfile

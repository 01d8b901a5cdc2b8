// The two words a stream carries and the size limit of the small format.

#include "psdfile/stream_state.h"

namespace psdfile {

namespace {

// Readers of the format take its 32-bit offsets as signed.
constexpr std::streamoff psdSizeLimit = 2147483648;

}  // namespace

long& PSBMode(std::ios_base& stream) {
    static const int index = std::ios_base::xalloc();
    return stream.iword(index);
}

long& FileTooLarge(std::ios_base& stream) {
    static const int index = std::ios_base::xalloc();
    return stream.iword(index);
}

void CheckFileSize(std::ostream& stream) {
    if (PSBMode(stream) == 0 && std::streamoff(stream.tellp()) >= psdSizeLimit) {
        FileTooLarge(stream) = 1;
        stream.setstate(std::ios_base::failbit);
    }
}

}  // namespace psdfile

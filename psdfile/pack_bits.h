// The run length compression of 8-bit rows.
#pragma once

#include <cstddef>
#include <cstdint>

namespace psdfile {

// Packs the `count` bytes source[0], source[stride], source[2 * stride] ... and returns the number
// of bytes written. The destination must have room for 2 * count bytes and not overlap the source;
// bytes of it behind the result may be overwritten. A count below 1 gives 0.
//
// A control byte n of 0 to 127 stands before n + 1 literal bytes; one of 129 to 255 before a byte
// that is repeated 257 - n times; 128 never occurs. A pair of equal bytes within a literal stretch
// becomes part of the literal when a single byte follows it.
std::size_t PackBits(const std::uint8_t* source, std::ptrdiff_t stride, std::ptrdiff_t count,
                     std::uint8_t* destination);

}  // namespace psdfile

// False colours for IDs: three fixed permutations of 0 to 255, one for each of red, green and blue,
// through which an ID's bytes go.
#pragma once

#include <array>
#include <cstdint>

namespace sources {

// By component, then by byte.
using IDColorTable = std::array<std::array<std::uint8_t, 256>, 3>;

// For material and object IDs: byte 0 is 0 in all three, so that ID 0 stays black.
extern const IDColorTable idColorTable;
// For node render IDs: byte 255 is 0 in all three, so that 65535, which means no object, is black.
// Each of its permutations is the one above with three entries exchanged.
extern const IDColorTable renderIDColorTable;

}  // namespace sources

// Values in a profile file by name: on Windows through the system's own profile functions,
// elsewhere through plain_profile_file.h, which gives the same values and writes the same bytes.
#pragma once

#include <maxtypes.h>

#include <cstdint>
#include <span>

namespace plugin {

// All three NUL-terminated. The path is absolute; an empty one is that of no file.
struct ProfilePlace {
    const MCHAR* path;
    const MCHAR* section;
    const MCHAR* key;
};

// Nothing is thrown and no file is kept open. What profile_text.h takes for no profile reads as
// absent and is never written to.

// False, with `record` as it was, for an absent or damaged value.
bool ReadProfileRecord(const ProfilePlace& place, std::span<std::uint8_t> record);

// False, with the file as it was, when it can't be written. Makes the file, but not its folder.
bool WriteProfileRecord(const ProfilePlace& place, std::span<const std::uint8_t> record);

// Cut to what fits in `text` with a terminator; empty for an absent value. The number of units
// without the terminator.
std::size_t ReadProfileString(const ProfilePlace& place, std::span<MCHAR> text);

}  // namespace plugin

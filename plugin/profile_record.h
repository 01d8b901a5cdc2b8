// Records of bytes in a profile file, as the system's own profile functions write them on Windows:
// two hexadecimal digits a byte, then the checksum in two more, which is the sum of the record's
// bytes modulo 256.
#pragma once

#include <strclass.h>

#include <cstdint>
#include <span>
#include <string_view>

namespace plugin {

// False, with `record` as it was, when the value is absent, of another length, or fails its
// checksum. Names of sections and keys are found without regard to case.
bool ReadProfileRecord(const MSTR& path, const MSTR& section, const MSTR& key,
                       std::span<std::uint8_t> record);

// The same for a file's text. Lines end in LF or CRLF; a line that starts with ";" is a comment.
bool FindProfileRecord(std::string_view profile, std::string_view section, std::string_view key,
                       std::span<std::uint8_t> record);

}  // namespace plugin

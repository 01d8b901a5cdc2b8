// What stands in a profile file: sections in brackets, a key and its value a line, read and written
// as the system's own profile functions do it on Windows. A record of bytes is two hexadecimal
// digits a byte and then the checksum in two more, which is the sum of the record's bytes modulo
// 256.
//
// Everything here works on the file's bytes: ANSI text, or with a byte order mark UTF-8 or UTF-16.
// A line ends in CR, LF or both. Names are found without regard to the case of A to Z, the first
// section of a name and the first key of a name in it count, and keys before the first section
// belong to none. Whatever is no key and no section, comments among it, is kept and not understood.
#pragma once

#include <strclass.h>

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace plugin {

// Of bytes. Far above any settings file; a larger one is something else under its name.
constexpr std::size_t largestProfile = std::size_t{1} << 20;

// False for what no text editor writes: above the largest size, with a NUL, or with half a unit of
// UTF-16. Nothing is found in it, and it can't be changed.
bool IsProfile(std::string_view bytes);

// Whether a section or key can have the name: printable ASCII that reads back as it was written.
bool IsProfileName(std::string_view name);

// False, with `record` as it was, when the value is absent, of another length, or fails its
// checksum.
bool FindProfileRecord(std::string_view bytes, std::string_view section, std::string_view key,
                       std::span<std::uint8_t> record);

// Without blanks around it, and without one pair of quotes, single or double.
std::optional<MSTR> FindProfileString(std::string_view bytes, std::string_view section,
                                      std::string_view key);

// Only the value's own digits change, or a line is added at the end of its section, or that section
// at the end of the file. False, with `bytes` as they were, for what is no profile or would be none
// afterwards, and for a name that can't be.
bool SetProfileRecord(std::string& bytes, std::string_view section, std::string_view key,
                      std::span<const std::uint8_t> record);

}  // namespace plugin

// The functions of profile_file.h without the system's help.
#pragma once

#include <maxtypes.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "plugin/profile_file.h"

namespace plugin {

// All of the file: empty when there is none, nothing when there is something else than a profile
// that can be read.
std::optional<std::string> LoadProfile(const MCHAR* path);

// False for a file, and for a link to one, that its owner has made read-only.
bool IsWritable(const MCHAR* path);

// ASCII; empty for a name that can't stand in a profile, and for null.
std::string ProfileName(const MCHAR* name);

bool ReadPlainRecord(const ProfilePlace& place, std::span<std::uint8_t> record);
// A new file is put in the old one's place, so that there is always one or the other. A value that
// stays what it was leaves the file alone.
bool WritePlainRecord(const ProfilePlace& place, std::span<const std::uint8_t> record);
std::size_t ReadPlainString(const ProfilePlace& place, std::span<MCHAR> text);

}  // namespace plugin

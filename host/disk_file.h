// What the standard library can't do with files: be sure that they are new, and on the disk.
#pragma once

#include <filesystem>
#include <string_view>
#include <system_error>

namespace host {

// Codes are of the generic category where the system's own has its like. An error leaves what is
// written so far at the path.

// Makes a file, which must not be there yet, with these bytes, and waits until the disk has it.
std::error_code WriteNewFile(const std::filesystem::path& path, std::string_view bytes);
// Whether the user may write to a file that is there.
std::error_code MayWrite(const std::filesystem::path& path);
// Within one folder; takes the place of a file that is there, at once.
std::error_code MoveOver(const std::filesystem::path& from, const std::filesystem::path& to);

}  // namespace host

// Files that are replaced whole: a crash at any moment leaves the old one or the new one.
#pragma once

#include <string>
#include <string_view>

namespace host {

// Writes a file beside the one at `path` (UTF-8) and moves it into its place once it is on the
// disk. Throws InputError, with the old file as it was and nothing left beside it, when that can't
// be done. Only a crash can leave a file beside it; its name begins with "veltrane-" and ends in
// ".tmp".
//
// What a symbolic link at `path` points to is replaced, not the link. The new file has the old
// one's permissions where the system has such, but other hard links keep the old content. Files
// that are read-only are refused, and so is what is no file (folders, devices, pipes).
void ReplaceWholeFile(const std::string& path, std::string_view bytes);

}  // namespace host

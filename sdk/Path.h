// A path of the file system, absolute or relative to the current folder.
#pragma once

#include "strclass.h"

namespace MaxSDK::Util {

class Path {
  public:
    Path() = default;
    explicit Path(const MCHAR* path) : path_(path) {}

    bool IsEmpty() const { return path_.isNull(); }
    const MCHAR* GetCStr() const { return path_.data(); }

    // Makes the path absolute, with "." and ".." resolved by name alone. False for a path that
    // names no file of this system; the path is then as it was.
    bool ConvertToAbsolute();
    // Drops all but what follows the last separator.
    Path& StripToLeaf();
    // Drops the last separator and what follows it; the root keeps its separator.
    Path& RemoveLeaf();
    // Adds a separator unless the path ends in one.
    Path& AddTrailingBackslash();
    Path& Append(const MCHAR* leaf);

    // Compares by name, as the file system does: without regard to case on Windows.
    friend bool operator==(const Path& left, const Path& right);

  private:
    MSTR path_;
};

}  // namespace MaxSDK::Util

// Splits a path into folder (without a separator at its end), base name and extension (with its
// dot; empty when there is none). Null parts are left out.
void SplitFilename(const MSTR& path, MSTR* folder, MSTR* base, MSTR* extension);

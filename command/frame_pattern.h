// Where a path holds the frame number, and what the document's path becomes.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace command {

// `####` (any count of #), `%04d` or `%d`, `$F4` or `$F`.
struct FramePattern {
    std::string before;
    // Least number of characters, filled up with zeros behind the sign.
    int width = 1;
    std::string after;
    // As the user wrote it.
    std::string text;

    std::string PathOf(int frame) const;
};

// Of the path's last component; nothing when there is none. Throws UsageError when it holds more
// than one.
std::optional<FramePattern> FindFramePattern(const std::string& path);

// `path` without its pattern, so that the number which the host puts before the extension stands
// where the pattern did. A pattern in the middle of the name moves to its end with the mark that
// separates it: "a.####.beauty.exr" gives "a.beauty..exr".
std::string WithoutFramePattern(const FramePattern& pattern);

// The pattern stands right before the extension.
bool IsBeforeExtension(const FramePattern& pattern);

}  // namespace command

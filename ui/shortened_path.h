// A path cut to the width of a field: what the user looks for first is its file, then its drive.
#pragma once

#include <strclass.h>

#include <functional>

namespace ui {

// Pixels that a text takes in the field's font; more for a text that goes on.
using TextWidth = std::function<int(const MSTR&)>;

// The path itself where it fits. Otherwise as much of its beginning as fits, "..." and the last
// separator with the file's name; with no room even for these, "..." and as much of the end as
// fits. Never less than "...". No character is cut in two.
MSTR ShortenedPath(const MSTR& path, int width, const TextWidth& widthOf);

}  // namespace ui

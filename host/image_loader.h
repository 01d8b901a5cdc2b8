// Reads image files for the host, which knows no formats itself.
#pragma once

#include <functional>
#include <string>

#include "host/image_bitmap.h"

namespace host {

// `path` is UTF-8. Null for a file that can't be read.
using ImageLoader = std::function<Owned<ImageBitmap>(const std::string& path)>;

}  // namespace host

// OpenEXR render files.
#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "command/render_file.h"

namespace command {

// Whether the bytes begin an OpenEXR file. Four are looked at.
bool IsExr(const char* bytes, std::size_t size);

// Reads scanline and tiled files (the level of full size), of one part or several; the layers of
// deep parts are listed, but their pixels can't be read. Only the beauty's channels are converted,
// a block of scanlines at a time. Halfs stay halfs where all channels of the beauty are; otherwise
// the picture is of floats. An unsigned channel is taken as a fraction: 4294967295 is 1. Files
// of luminance and chroma become halfs. Without an alpha channel what the data window covers is
// opaque, and hasAlpha tells whether it covers the whole frame. Throw InputError.
std::unique_ptr<RenderFile> OpenExrFile(const std::string& path);
// From memory, which must outlive the result.
std::unique_ptr<RenderFile> OpenExrFile(const std::string& path, const char* bytes,
                                        std::size_t size);

}  // namespace command

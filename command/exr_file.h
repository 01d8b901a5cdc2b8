// OpenEXR render files.
#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "command/render_file.h"

namespace command {

// Whether the bytes begin an OpenEXR file. Four are looked at.
bool IsExr(const char* bytes, std::size_t size);

// Reads scanline and tiled files (the level of full size), flat and deep, of one part or several.
// Only the channels that are asked for are converted, a block of scanlines at a time.
//
// The picture: halfs stay halfs where all channels of the beauty are; otherwise it is of floats. An
// unsigned channel is taken as a fraction: 4294967295 is 1. Files of luminance and chroma become
// halfs. Deep samples are made tidy and laid over one another. Without an alpha channel what the
// data window covers is opaque, and hasAlpha tells whether it covers the whole frame. Throw
// InputError.
std::unique_ptr<RenderFile> OpenExrFile(const std::string& path);
// From memory, which must outlive the result.
std::unique_ptr<RenderFile> OpenExrFile(const std::string& path, const char* bytes,
                                        std::size_t size);

}  // namespace command

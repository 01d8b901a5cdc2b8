// Loads the reader of images that are not OpenEXR when the first of them is met. OpenImageIO brings
// some two hundred libraries along, which take a quarter of a second and 100 MB to load; renders
// are OpenEXR files nearly always, and need none of them.
#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "command/image_formats.h"
#include "command/render_file.h"

namespace command {

// What the module exports, under the name below. With `bytes` null the file is read from disk. The
// caller owns the result. Throws InputError.
using OpenImageFunction = RenderFile*(const std::string& path, const ImageFormat& format,
                                      const char* bytes, std::size_t size);
constexpr const char* openImageSymbol = "VeltraneOpenImage";

// The module stands beside the program, or in ../lib/veltrane from there. Throws InputError, also
// when it can't be loaded.
std::unique_ptr<RenderFile> OpenImage(const std::string& path, const ImageFormat& format,
                                      const char* bytes = nullptr, std::size_t size = 0);

}  // namespace command

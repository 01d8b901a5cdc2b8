// OpenImageIO's reader is a module that is loaded when the first image is met that is not OpenEXR.
// The library brings some two hundred others along, which take a quarter of a second and 100 MB to
// load; renders are OpenEXR files nearly always, and need none of them.
#pragma once

#include <cstddef>
#include <string>

#include "command/image_decoder.h"

namespace command {

// What the module exports, under the name below; as OpenImageDecoder, which finds it beside the
// program or in ../lib/veltrane from there. The caller owns the result.
using OpenDecoderFunction = ImageDecoder*(const std::string& path, const ImageFormat& format,
                                          const char* bytes, std::size_t size);
constexpr const char* openDecoderSymbol = "VeltraneOpenDecoder";

}  // namespace command

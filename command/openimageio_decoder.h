// Images read with OpenImageIO. This and what it needs of that library is the module that
// image_module.h loads.
#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "command/image_decoder.h"

namespace command {

// See OpenImageDecoder.
std::unique_ptr<ImageDecoder> OpenWithOpenImageIO(const std::string& path,
                                                  const ImageFormat& format, const char* bytes,
                                                  std::size_t size);

}  // namespace command

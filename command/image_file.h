// Render files that are not OpenEXR: what becomes of the pixels that image_decoder.h gives.
#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "command/image_formats.h"
#include "command/render_file.h"

namespace command {

// Values become linear: integers of 8 and 16 bits are taken as encoded with sRGB, others as linear,
// unless the file says otherwise (a PNG's gamma, a TGA's gamma). Straight alpha is multiplied in
// after that; colours that are premultiplied in the file's encoding are divided, decoded and
// multiplied again. The orientation that the file asks for is applied. The first picture of a file
// with several is read. The result is of floats. ReadRows gives channels in the same way: colours
// linear and multiplied by their layer's alpha, others as fractions of the largest integer, all as
// floats and from whole pictures in memory. `bytes`, which must outlive the result, may be null:
// the file is then read from disk. Throws InputError.
std::unique_ptr<RenderFile> OpenImageFile(const std::string& path, const ImageFormat& format,
                                          const char* bytes = nullptr, std::size_t size = 0);

}  // namespace command

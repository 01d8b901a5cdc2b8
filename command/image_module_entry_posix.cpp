// The one door into the module.
#include "command/image_module.h"
#include "command/openimageio_decoder.h"

namespace command {

extern "C" __attribute__((visibility("default"))) OpenDecoderFunction VeltraneOpenDecoder;

ImageDecoder* VeltraneOpenDecoder(const std::string& path, const ImageFormat& format,
                                  const char* bytes, std::size_t size) {
    return OpenWithOpenImageIO(path, format, bytes, size).release();
}

}  // namespace command

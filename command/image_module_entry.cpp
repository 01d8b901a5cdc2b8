// The one door into the module.
#include "command/image_file.h"
#include "command/image_module.h"

namespace command {

extern "C" __attribute__((visibility("default"))) OpenImageFunction VeltraneOpenImage;

RenderFile* VeltraneOpenImage(const std::string& path, const ImageFormat& format, const char* bytes,
                              std::size_t size) {
    return (bytes ? OpenImageFile(path, format, bytes, size) : OpenImageFile(path, format))
        .release();
}

}  // namespace command

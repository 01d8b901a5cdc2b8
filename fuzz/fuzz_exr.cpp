// OpenEXR render files.
#include "fuzz/read_render_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ReadRenderFile("fuzz.exr", data, size);
    return 0;
}

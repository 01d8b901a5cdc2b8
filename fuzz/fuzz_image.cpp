// Render files of the other formats; what has no format's signature is taken for a TGA.
#include "fuzz/read_render_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ReadRenderFile("fuzz.tga", data, size);
    return 0;
}

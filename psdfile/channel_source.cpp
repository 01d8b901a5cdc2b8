// What a source says that has only 8-bit rows of varying values.

#include "psdfile/channel_source.h"

namespace psdfile {

const std::uint16_t* PSDChannelImageDataSource::GetRow16(std::uint32_t /*row*/) {
    return nullptr;
}

const float* PSDChannelImageDataSource::GetRow32(std::uint32_t /*row*/) {
    return nullptr;
}

bool PSDChannelImageDataSource::IsSolid() {
    return false;
}

std::uint8_t PSDChannelImageDataSource::GetSolidValue8() {
    return 0;
}

std::uint16_t PSDChannelImageDataSource::GetSolidValue16() {
    return 0;
}

}  // namespace psdfile

#include "sources/dither.h"

namespace sources {
namespace {

std::uint32_t stateX = 0;
std::uint32_t stateY = 0;

}  // namespace

void SeedDither(const void* image) {
    const std::uint64_t address = reinterpret_cast<std::uintptr_t>(image);
    const auto seed = static_cast<std::uint32_t>(address ^ (address >> 32));
    stateY = seed ^ 0x1F123BB5U;
    stateX = seed ^ 0x159A55E5U;
}

std::uint32_t NextDither() {
    stateX = 36969U * (stateX & 0xFFFFU) + (stateX >> 16);
    stateY = 18000U * (stateY & 0xFFFFU) + (stateY >> 16);
    return ((stateX << 16) + stateY) & 0xFFU;
}

}  // namespace sources

// The noise that is added below the lowest bit of 8-bit rows: a multiply-with-carry generator whose
// two states are process-wide, so that no two writes may overlap.
#pragma once

#include <cstdint>

namespace sources {

// Every image with the same seed gets the same noise.
void SeedDither(const void* image);

// 0 to 255.
std::uint32_t NextDither();

}  // namespace sources

// The ids that a frame's pixels have, by how much they cover.
#pragma once

#include <cstddef>
#include <vector>

#include "command/cryptomatte.h"
#include "command/render_file.h"

namespace command {

// Those of most coverage first, under the manifest's names. Reads all of the Cryptomatte's pixels.
// Throws InputError.
std::vector<ManifestEntry> EntriesByCoverage(RenderFile& file, std::size_t framePart,
                                             const Cryptomatte& matte);

}  // namespace command

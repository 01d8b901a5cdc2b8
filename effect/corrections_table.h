// The colour corrections of V-Ray's frame buffer as a table, which the host gives as a file only.
#pragma once

#include <optional>

#include "psdfile/cube_lut.h"

namespace effect {

// Has the host write the file and reads it. Nothing when a step fails, or when no colour lookup
// layer can carry the table. The file is gone in any case.
std::optional<psdfile::CubeLUT> ReadCorrectionsTable();

// Whether a colour lookup layer can carry the table: it is 3D, has 2 to 255 points on an axis, and
// starts from colours of 0 to 1.
bool FitsColorLookup(const psdfile::CubeLUT& table);

}  // namespace effect

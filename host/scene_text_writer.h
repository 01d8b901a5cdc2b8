// Writes scene files (docs/scene-file.md).
#pragma once

#include <string>

#include "host/scene_description.h"

namespace host {

// JSON in UTF-8 of the newest version, the same for the same description, that ParseScene takes;
// ends with an end of line. Throws InputError for a scene that no file can hold, since it would be
// larger or nested deeper than files that are read.
std::string WriteScene(const SceneDescription& description);

}  // namespace host

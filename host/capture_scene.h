// Takes from the application what a scene file keeps of it.
#pragma once

#include "host/scene_description.h"

namespace host {

// Everything that a file keeps has a handle, so that names may repeat; the path is left empty. What
// the application has beyond the file's ranges (render IDs that two nodes have, mattes of numbers
// above 65535) is left out. Throws InputError, with a text that names no file, when an object's
// Save fails or its like can't be in a file.
SceneDescription CaptureScene();

}  // namespace host

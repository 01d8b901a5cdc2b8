// What "--all" means for a file.
#pragma once

#include "command/passes.h"
#include "command/scene_file.h"
#include "command/session.h"

namespace command {

// Turns on the outputs that the file and the scene, which may be null, have something for; what the
// user or the scene set stays as it is.
void TurnOnAll(Session& session, const PassPlan& plan, const SceneDescription* scene);

}  // namespace command

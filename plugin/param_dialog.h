// Opening the effect's rollups.
#pragma once

#include "effect/library_services.h"

namespace plugin {

// The rollups of `effect`, as the user left them open or closed; null where there are no windows,
// and for an effect without its block. From then on it is the current instance
// (scene_file_state.h).
SFXParamDlg* CreateParamDialog(effect::PSDOutput& effect, IRendParams* ip);

}  // namespace plugin

// Which boxes the user of this machine has silenced.
#pragma once

#include "effect/warning_switches.h"

namespace plugin {

// From the configuration file, read anew each time: a user may edit it between two renders.
effect::WarningSwitches ReadWarningSwitches();

}  // namespace plugin

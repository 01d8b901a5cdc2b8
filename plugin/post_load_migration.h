// Brings the parameter block of an older scene up to date.
#pragma once

#include <ioapi.h>

namespace effect {
class PSDOutput;
}

namespace plugin {

// To be registered while the effect is loaded; deletes itself.
PostLoadCallback* MakePostLoadCallback(effect::PSDOutput& effect);

}  // namespace plugin

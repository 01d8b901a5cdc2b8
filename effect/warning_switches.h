// Which boxes the user has silenced, from the configuration file of the user's machine.
#pragma once

namespace effect {

struct WarningSwitches {
    bool disableVrayFrameBufferWarnings = false;
    bool disableVrayProgressiveSamplerWarning = false;
};

// Reads them anew: a user may edit the file between two renders.
using ReadWarningSwitches = WarningSwitches (*)();

}  // namespace effect

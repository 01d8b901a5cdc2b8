// The scene's frame rate.
#include <algorithm>

#include <maxtypes.h>

#include "host/application.h"

int GetTicksPerFrame() {
    constexpr int TICKS_PER_SECOND = 4800;
    return TICKS_PER_SECOND / std::clamp(host::App().settings.frameRate, 1, TICKS_PER_SECOND);
}

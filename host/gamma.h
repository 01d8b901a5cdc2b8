// What the application's gamma is set to when it starts.
#pragma once

#include <gamma.h>

namespace host {

// On, 2.2 for files, no dither.
GammaMgr DefaultGamma();

}  // namespace host

// What the library gives its effect.
#pragma once

#include "effect/library_services.h"

namespace plugin {

const effect::LibraryServices& Services();

}  // namespace plugin

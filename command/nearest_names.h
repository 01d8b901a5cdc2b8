// What the user may have meant by a name that isn't there.
#pragma once

#include "host/nearest_names.h"

namespace command {

using host::Joined;
using host::NearestNames;

}  // namespace command

// Comparison without regard to the case of A to Z.
#pragma once

#include "host/ascii_case.h"

namespace command {

using host::AsciiLower;
using host::EqualIgnoringCase;

}  // namespace command

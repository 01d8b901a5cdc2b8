// Text from files and libraries, made safe to show on a terminal.
#pragma once

#include "host/printable.h"

namespace command {

using host::Printable;

}  // namespace command

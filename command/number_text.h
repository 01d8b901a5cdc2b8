// Numbers as text, the same under every locale.
#pragma once

#include "host/number_text.h"

namespace command {

using host::NumberText;

}  // namespace command

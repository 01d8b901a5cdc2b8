// The document that the last render made, which a right click opens.
#pragma once

#include <optional>

#include "effect/psd_output.h"

namespace ui {

// Of the frame at the host's present time; nothing when no name can be worked out. The file need
// not be there.
std::optional<MSTR> RenderedFile(effect::PSDOutput& effect);

}  // namespace ui

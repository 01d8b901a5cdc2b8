// Which of the scene's messages tell that a render element changed.
#pragma once

#include <ref.h>

namespace ui {

bool TellsElementChange(ReferenceTarget* target, RefMessage message);

}  // namespace ui

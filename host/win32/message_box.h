// The host's message boxes as the user sees them.
#pragma once

#include "host/message_boxes.h"

namespace host {

// Over the host's main window. The check "don't show again" is there where the box offers it and
// the system can show it.
BoxAnswer ShowMessageBox(const BoxRecord& box);

}  // namespace host

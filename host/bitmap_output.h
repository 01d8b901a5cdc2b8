// The file that a rendered frame itself goes to, written by the class that its extension stands
// for.
#pragma once

#include <memory>

#include <bitmap.h>

#include "host/class_directory.h"

namespace host {

// A new object of the first class that writes files with the extension of `name`, in letters of
// either case. Null when there is none.
std::unique_ptr<BitmapIO> MakeBitmapWriter(const ClassDirectory& classes, const MSTR& name);

// Writes the frame to the application's render output, under the frame's number unless a single
// frame is rendered. BMMRES_NODRIVER, and nothing said, when no class writes such files; other
// failures were told by the class.
BMMRES WriteRenderOutput(Bitmap& bitmap, int frame);

}  // namespace host

// Finds where in the frame each ID of the G-Buffer lies.
#pragma once

#include <bitmap.h>

namespace effect {

// Empties the three maps of sources/id_bounds.h and fills them from all fragments of `bitmap`'s
// G-Buffer, as far as it has the channels. Null, and a bitmap without G-Buffer, leave them empty.
void CollectIDBounds(Bitmap* bitmap);

}  // namespace effect

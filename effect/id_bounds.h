// Where in the frame each ID of the G-Buffer lies. Process-wide, and made anew for each frame.
#pragma once

#include <bitmap.h>
#include <box2.h>

#include <cstdint>
#include <map>

namespace effect {

using IDBounds = std::map<std::uint16_t, Box2>;

// Pixels; both ends included.
extern IDBounds nodeRenderIDBounds;
extern IDBounds mtlIDBounds;
extern IDBounds nodeIDBounds;

// Empties the three maps and fills them from the fragments of `bitmap`'s G-Buffer, as far as it has
// the channels. Null, and a bitmap without G-Buffer, leave them empty.
void CollectIDBounds(Bitmap* bitmap);

}  // namespace effect

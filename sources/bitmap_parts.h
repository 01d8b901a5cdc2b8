// What a source takes from a bitmap of the host, which may have no storage.
#pragma once

#include <bitmap.h>

namespace sources {

// Pixels; 0 for a bitmap that is null or has no storage.
inline int WidthOf(Bitmap* bitmap) {
    BitmapStorage* storage = bitmap ? bitmap->Storage() : nullptr;
    return storage ? storage->Width() : 0;
}

inline int HeightOf(Bitmap* bitmap) {
    BitmapStorage* storage = bitmap ? bitmap->Storage() : nullptr;
    return storage ? storage->Height() : 0;
}

// Null for a bitmap that is null or has no storage or no G-Buffer.
inline GBuffer* GBufferOf(Bitmap* bitmap) {
    BitmapStorage* storage = bitmap ? bitmap->Storage() : nullptr;
    return storage ? storage->GetGBuffer() : nullptr;
}

// BMM_CHAN_ bits; 0 without a G-Buffer.
inline DWORD ChannelsOf(GBuffer* gbuffer) {
    return gbuffer ? gbuffer->ChannelsPresent() : 0;
}

}  // namespace sources

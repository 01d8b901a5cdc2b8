// Which channels the frame's G-Buffer holds.
#pragma once

#include <bitmap.h>

namespace effect {

// Whether all of `channels` (BMM_CHAN_ bits) are there. False without a bitmap or a G-Buffer.
inline bool HasGBufferChannels(Bitmap* bitmap, DWORD channels) {
    BitmapStorage* storage = bitmap ? bitmap->Storage() : nullptr;
    GBuffer* gbuffer = storage ? storage->GetGBuffer() : nullptr;
    return gbuffer && (gbuffer->ChannelsPresent() & channels) == channels;
}

}  // namespace effect

#include "effect/id_bounds.h"

namespace effect {

IDBounds nodeRenderIDBounds;
IDBounds mtlIDBounds;
IDBounds nodeIDBounds;

namespace {

struct IDChannel {
    DWORD bit;
    int index;
    // Bytes of the fragment's value.
    int size;
    IDBounds& bounds;
};

const IDChannel idChannels[] = {
    {BMM_CHAN_NODE_RENDER_ID, GB_NODE_RENDER_ID, 2, nodeRenderIDBounds},
    {BMM_CHAN_MTL_ID, GB_MTL_ID, 1, mtlIDBounds},
    {BMM_CHAN_NODE_ID, GB_NODE_ID, 2, nodeIDBounds},
};

bool ReadID(GBufReader& reader, const IDChannel& channel, std::uint16_t& id) {
    if (channel.size == 2) return reader.ReadChannelData(channel.index, &id) != FALSE;
    UBYTE narrow = 0;
    if (!reader.ReadChannelData(channel.index, &narrow)) return false;
    id = narrow;
    return true;
}

void CollectPixel(GBufReader& reader, DWORD present, IPoint2 pixel) {
    while (reader.StartNextLayer()) {
        for (const IDChannel& channel : idChannels) {
            std::uint16_t id = 0;
            if ((present & channel.bit) && ReadID(reader, channel, id)) channel.bounds[id] += pixel;
        }
    }
}

}  // namespace

void CollectIDBounds(Bitmap* bitmap) {
    for (const IDChannel& channel : idChannels)
        channel.bounds.clear();
    BitmapStorage* storage = bitmap ? bitmap->Storage() : nullptr;
    GBuffer* gbuffer = storage ? storage->GetGBuffer() : nullptr;
    GBufReader* reader = gbuffer ? gbuffer->CreateReader() : nullptr;
    if (!reader) return;
    const DWORD present = storage->ChannelsPresent();
    for (int y = 0; y < storage->Height(); ++y) {
        if (!reader->StartLine(y)) continue;
        reader->StartPixel(0);
        for (int x = 0; x < storage->Width(); ++x) {
            CollectPixel(*reader, present, {x, y});
            reader->NextPixel();
        }
    }
    gbuffer->DestroyReader(reader);
}

}  // namespace effect

#include "effect/scene_layer_choice.h"

#include <maxheap.h>

#include <cstdint>
#include <cstring>

#include "effect/psd_output.h"

namespace effect {

bool IsSceneLayerOn(Animatable* layer, DWORD chunkID) {
    if (!layer) return true;
    const AppDataChunk* chunk =
        layer->GetAppDataChunk(psdOutputClassID, RENDER_EFFECT_CLASS_ID, chunkID);
    std::int32_t on = 1;
    if (chunk && chunk->data && chunk->length >= sizeof on) {
        std::memcpy(&on, chunk->data, sizeof on);
    }
    return on != 0;
}

void SetSceneLayerOn(Animatable* layer, DWORD chunkID, bool on) {
    if (!layer) return;
    const std::int32_t value = on ? 1 : 0;
    void* data = MAX_malloc(sizeof value);
    if (!data) return;
    std::memcpy(data, &value, sizeof value);
    layer->RemoveAppDataChunk(psdOutputClassID, RENDER_EFFECT_CLASS_ID, chunkID);
    layer->AddAppDataChunk(psdOutputClassID, RENDER_EFFECT_CLASS_ID, chunkID, sizeof value, data);
}

}  // namespace effect

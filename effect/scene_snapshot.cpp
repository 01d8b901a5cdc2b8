#include "effect/scene_snapshot.h"

namespace effect {

int FieldOf(const RenderGlobalContext& gc) {
    return gc.fieldRender && !gc.evenLines ? 1 : 0;
}

void TakeSnapshot(SceneSnapshots& snapshots, const RenderGlobalContext& gc) {
    snapshots[static_cast<std::size_t>(FieldOf(gc))] = {.isTaken = true,
                                                        .time = static_cast<float>(gc.time),
                                                        .camToWorld = gc.camToWorld,
                                                        .projType = gc.projType,
                                                        .xscale = gc.xscale,
                                                        .nearRange = gc.nearRange,
                                                        .farRange = gc.farRange,
                                                        .devWidth = gc.devWidth};
}

}  // namespace effect

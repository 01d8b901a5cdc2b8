// How the host saw the scene in a frame, kept from the frame's end until the document is made.
#pragma once

#include <render.h>

#include <array>

namespace effect {

struct SceneSnapshot {
    bool isTaken = false;
    // The frame's, in the host's ticks.
    float time = 0.0F;
    Matrix3 camToWorld;
    int projType = PROJ_PERSPECTIVE;
    float xscale = 0.0F;
    float nearRange = 0.0F;
    float farRange = 0.0F;
    int devWidth = 0;
};

// By field: 0 is the frame or its first field, 1 its second.
using SceneSnapshots = std::array<SceneSnapshot, 2>;

// A frame of fields whose lines are not the even ones is the second field.
int FieldOf(const RenderGlobalContext& gc);

void TakeSnapshot(SceneSnapshots& snapshots, const RenderGlobalContext& gc);

}  // namespace effect

// How a frame is seen, for a host whose frames come from files.
#pragma once

#include <render.h>

namespace host {

struct CameraView {
    // From the camera's space to the world's, which has z up. It looks along its negative z.
    Matrix3 camToWorld;
    // A PROJ_ value.
    int projection = PROJ_PERSPECTIVE;
    // Horizontal, in radians; of a perspective.
    float fieldOfView = 0.0F;
    // Of what the frame shows, in the world's units; of a parallel projection.
    float width = 0.0F;
    // Along the camera's axis; 0 when not known.
    float nearRange = 0.0F;
    float farRange = 0.0F;
};

}  // namespace host

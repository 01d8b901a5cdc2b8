// What of the world a frame shows through a camera, as files tell it.
#pragma once

namespace host {

// All of it is finite in 32 bits, and 0 when it isn't known.
struct CameraLens {
    // Horizontal, in degrees, below 180; of a perspective.
    double fieldOfView = 0.0;
    // Of what the frame shows, in the world's units; of a parallel projection. No lens has both.
    double width = 0.0;
    // Along the camera's axis, where the surroundings (fog) begin and end.
    double nearRange = 0.0;
    double farRange = 0.0;

    friend bool operator==(const CameraLens&, const CameraLens&) = default;
};

}  // namespace host

// How the frame in hand is seen: the host's view of it, and whether a camera goes into the
// document.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "command/render_file.h"
#include "command/scene_file.h"
#include "command/session.h"
#include "host/camera_view.h"

namespace command {

// The scene file's render camera; where it tells no transform or no lens, the render file's camera
// does. Nothing when nobody tells a transform. `scene` may be null.
std::optional<host::CameraView> ViewOf(const Description& file, std::size_t framePart,
                                       const SceneDescription* scene);

class FrameView {
  public:
    using Warn = std::function<void(const std::string& text)>;

    // Both outlive it; `scene` may be null.
    FrameView(Session& hostSession, const SceneDescription* sceneDescription);

    // Of each frame, before effects see it. While nobody knows the camera, the parameter
    // embedCameraInfo is off: a made-up camera is worse than none. Who asked for one is told so,
    // once.
    void Set(const Description& file, std::size_t framePart, const Warn& warn);

  private:
    Session& session;
    const SceneDescription* scene;
    // As before the first frame.
    bool wanted;
    bool told = false;
};

}  // namespace command

#include "command/frame_view.h"

#include <iparamb2.h>

#include <numbers>

#include "command/camera_axes.h"
#include "host/application.h"
#include "host/scene_transform.h"

namespace command {
namespace {

constexpr const char* parameter = "embedCameraInfo";

host::CameraView HostView(const CameraAxes& axes, const std::array<double, 16>& transform,
                          const CameraLens& lens) {
    const auto& [right, up, back] = axes.axes;
    // A camera that mirrors sees where its back axis says all the same.
    const float handedness = right[0] * (up[1] * back[2] - up[2] * back[1]) +
                             right[1] * (up[2] * back[0] - up[0] * back[2]) +
                             right[2] * (up[0] * back[1] - up[1] * back[0]);
    const float side = handedness < 0.0F ? -1.0F : 1.0F;
    host::CameraView view;
    view.camToWorld =
        Matrix3({side * right[0], side * right[1], side * right[2]}, {up[0], up[1], up[2]},
                {back[0], back[1], back[2]}, host::HostTransform(transform).GetTrans());
    view.projection = lens.width > 0.0 ? PROJ_PARALLEL : PROJ_PERSPECTIVE;
    view.fieldOfView = static_cast<float>(lens.fieldOfView * std::numbers::pi / 180.0);
    view.width = static_cast<float>(lens.width);
    view.nearRange = static_cast<float>(lens.nearRange);
    view.farRange = static_cast<float>(lens.farRange);
    return view;
}

}  // namespace

std::optional<host::CameraView> ViewOf(const Description& file, std::size_t framePart,
                                       const SceneDescription* scene) {
    const RenderCamera* rendered = CameraOf(file, framePart);
    const SceneNode* node =
        scene && scene->render.camera ? &scene->nodes[*scene->render.camera] : nullptr;
    CameraLens lens = rendered ? rendered->lens : CameraLens();
    if (node && node->view) lens = *node->view;
    const std::array<double, 16>* transform = rendered ? &rendered->transform : nullptr;
    if (node && node->transform && AxesOf(*node->transform)) transform = &*node->transform;
    const auto axes = transform ? AxesOf(*transform) : std::nullopt;
    return axes ? std::optional(HostView(*axes, *transform, lens)) : std::nullopt;
}

FrameView::FrameView(Session& hostSession, const SceneDescription* sceneDescription)
    : session(hostSession), scene(sceneDescription), wanted(hostSession.GetInt(parameter) != 0) {}

void FrameView::Set(const Description& file, std::size_t framePart, const Warn& warn) {
    const auto view = ViewOf(file, framePart, scene);
    host::App().settings.render.view = view;
    session.Block().SetValue(Session::IdOf(parameter), 0, wanted && view ? TRUE : FALSE);
    if (view || !wanted || told || !session.IsGiven(parameter)) return;
    told = true;
    warn(file.path + ": " + parameter +
         ": nothing tells how the frame was seen, so no camera goes into the document; give a "
         "scene file (--scene) with render.camera, and that camera's transform and view");
}

}  // namespace command

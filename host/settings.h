// What the user sets up in the application, as far as effects ask for it.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include <maxapi.h>
#include <strclass.h>

#include "host/camera_view.h"
#include "host/target_reference.h"

namespace host {

struct RenderSettings {
    // Pixels.
    int width = 640;
    int height = 480;
    // A REND_TIME value.
    int timeType = REND_TIMESINGLE;
    int fileNumberBase = 0;
    BitmapInfo output;
    BOOL saveFile = FALSE;
    // Nothing when nobody knows how the frame is seen: effects then find a camera at the world's
    // origin, and no field of view.
    std::optional<CameraView> view;
    // The node that the user renders through; null, or without its target, for none.
    std::shared_ptr<TargetReference> camera;
    // Whether render effects run at all.
    bool effects = true;
    // Hidden objects are rendered.
    bool hidden = false;
    // The set of settings that is rendered with: whose render elements are the current ones.
    RenderSettingID current = RS_Production;
    // The render is only a preview.
    bool preview = false;
    // Frames are refined in passes ("maxops.rendUseIterative").
    bool iterative = false;
    // Someone asked for the render in hand to stop.
    bool aborted = false;
};

struct Settings {
    RenderSettings render;
    // Nobody is there to answer a box.
    bool quiet = false;
    TimeValue time = 0;
    // Frames a second, 1 to 4800.
    int frameRate = 30;
    // Without its folder; empty for a scene that was never saved.
    MSTR sceneFileName;
    // For files of a moment; empty: the system's own.
    MSTR temporaryFolder;
    // The scene was changed and wants saving.
    bool saveRequired = false;
    // Null without windows.
    HWND mainWindow = nullptr;
    // Makes Random repeat itself from run to run: the n-th generator made gets the n-th seed from
    // this one on.
    std::optional<std::uint64_t> randomSeed;
};

}  // namespace host

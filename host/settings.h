// What the user sets up in the application, as far as effects ask for it.
#pragma once

#include <cstdint>
#include <optional>

#include <maxapi.h>
#include <strclass.h>

namespace host {

class OutputFile final : public BitmapInfo {
  public:
    const MCHAR* Name() override { return name.data(); }

    MSTR name;
};

struct RenderSettings {
    // Pixels.
    int width = 640;
    int height = 480;
    // A REND_TIME value.
    int timeType = REND_TIMESINGLE;
    int fileNumberBase = 0;
    OutputFile output;
    BOOL saveFile = FALSE;
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
    // The scene was changed and wants saving.
    bool saveRequired = false;
    // Null without windows.
    HWND mainWindow = nullptr;
    // Makes Random repeat itself from run to run: the n-th generator made gets the n-th seed from
    // this one on.
    std::optional<std::uint64_t> randomSeed;
};

}  // namespace host

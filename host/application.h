// All that the host knows, in one object: the SDK's free functions are about the process, and this
// is what they look at.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <vector>

#include <gamma.h>
#include <sfx.h>

#include "host/class_directory.h"
#include "host/file_dialogs.h"
#include "host/image_loader.h"
#include "host/log.h"
#include "host/message_boxes.h"
#include "host/node_selection.h"
#include "host/notifications.h"
#include "host/owned.h"
#include "host/path_config.h"
#include "host/pick_mode.h"
#include "host/render_element.h"
#include "host/scene.h"
#include "host/script_properties.h"
#include "host/settings.h"
#include "host/undo.h"
#include "host/window_tree.h"

namespace host {

class Application {
  public:
    Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    Settings settings;
    Log log;
    MessageBoxes boxes;
    // Empty: every dialog is cancelled.
    FileDialogResponder fileDialogs;
    Notifications notifications;
    ClassDirectory classes;
    PathConfig paths;
    ScriptProperties scripts;
#ifndef _WIN32
    WindowTree windows;
#endif
    Scene scene;
    NodeSelection selection;
    PickMode pickMode;
    // What TheManager reads files with; empty: it reads none.
    ImageLoader imageLoader;
    // By RenderSettingID.
    std::array<RenderElementManager, 2> elements;
    UndoStack undo;
    // What shows parameters to the user; empty: nothing does.
    std::function<void(ParamBlockDesc2& desc, ParamID id, int tabIndex)> invalidateUI;
    // Null when none is assigned.
    Owned<Renderer> renderer;
    // In the order in which they are applied.
    std::vector<Owned<Effect>> effects;
    // Random generators made so far from settings.randomSeed.
    std::uint64_t randomsMade = 0;
};

// Single-threaded, as all of the host's interfaces are.
Application& App();

// Destroys the undo steps, the effects, the renderer, the render elements and the scene, in this
// order, while the application still answers them, and starts a new one. Also sets gammaMgr to what
// an application starts with: on, gamma 2.2, no dither.
void ResetApplication();

}  // namespace host

// The panel program's window: the effect's rollups, the scene's nodes to pick from, and a menu for
// scenes and renders.
#pragma once

#include <maxapi.h>
#include <windows.h>

#include <memory>
#include <string>

#include "command/temporary_folder.h"
#include "command/win32/child_process.h"
#include "command/win32/panel_scene.h"
#include "host/win32/effect_rollups.h"

namespace command {

class PanelWindow {
  public:
    // The scene outlives the window. Throws InputError when the system refuses.
    explicit PanelWindow(PanelScene& scene);
    ~PanelWindow();
    PanelWindow(const PanelWindow&) = delete;
    PanelWindow& operator=(const PanelWindow&) = delete;

    HWND Window() const { return window; }
    HWND Rollups() const { return rollups; }

    // What the menu does, for a path that is known already. A fault is shown to the user.
    void OpenScene(const std::string& path);
    void UseRenderFile(const std::string& path);

    // Until the window is closed.
    int Run();

  private:
    friend struct PanelWindowProcedure;

    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void OnCommand(int command);
    void Layout();
    void ShowTitle();
    void Say(const std::string& text);
    void Fail(const std::string& text);

    void ShowEffect();
    void HideEffect();
    // False when the user wants to stay.
    bool MayLeaveScene();
    bool SaveScene(const std::string& path);
    void AskToSave();

    void StartRender();
    void FollowRender();
    void EndRender();

    PanelScene& scene;
    HWND window = nullptr;
    HWND rollups = nullptr;
    HWND nodes = nullptr;
    HWND status = nullptr;
    std::unique_ptr<host::EffectRollups> place;
    // Null while the effect isn't shown.
    SFXParamDlg* dialog = nullptr;

    // A render in hand: the command at work on a copy of the scene.
    struct Render {
        TemporaryFolder folder;
        std::unique_ptr<ChildProcess> command;
    };
    std::unique_ptr<Render> render;
};

}  // namespace command

// The panel program's window: the effect's rollups, the scene's nodes to pick from, and a menu for
// scenes and renders.
#pragma once

#include <maxapi.h>
#include <windows.h>

#include <shellapi.h>

#include <memory>
#include <string>

#include "command/win32/panel_render.h"
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

    // Null once it is closed.
    HWND Window() const { return window; }
    HWND Rollups() const { return rollups; }
    HWND Nodes() const { return nodes; }
    HWND Status() const { return status; }

    // What the menu does, for a path that is known already. A fault is shown to the user.
    void OpenScene(const std::string& path);
    void UseRenderFile(const std::string& path);
    // Asks before another file than the scene's own is replaced. False when nothing was saved.
    bool SaveSceneAs(const std::string& path);

    bool IsRendering() const { return render != nullptr; }

    // Shows the window until it is closed.
    int Run();

  private:
    friend struct PanelWindowProcedure;

    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void OnCommand(int command);
    void OnDrop(HDROP drop);
    void OnMenu();
    void Close();

    void SetFirstSize();
    void LimitSize(MINMAXINFO& limits) const;
    void Layout();
    // Pixels around the client area.
    SIZE Frame() const;
    // The control that had the focus last, or the first one, has it now.
    void FocusControl();
    // The text that is being typed is given to the scene, as when the user leaves the field.
    void GiveText();

    void ShowTitle();
    void ShowMark();
    void ShowStatus();
    void Say(const std::string& text);
    void Fail(const std::string& text);
    int Ask(const std::string& text, UINT buttons);

    void ShowEffect();
    void HideEffect();
    // False when the user wants to stay.
    bool MayLeaveScene();
    bool MayStopRender();
    bool SaveScene(const std::string& path);
    std::string NameForScene() const;
    bool AskToSave();
    void OpenInItsProgram(const std::string& path);
    void ShowHelp();

    void StartRender();
    void StopRender();
    void FollowRender();
    void EndRender();

    PanelScene& scene;
    HWND window = nullptr;
    HWND rollups = nullptr;
    HWND nodes = nullptr;
    HWND status = nullptr;
    HWND lastFocus = nullptr;
    std::unique_ptr<host::EffectRollups> place;
    // Null while the effect isn't shown.
    SFXParamDlg* dialog = nullptr;

    std::string said;
    bool picking = false;
    // The scene as the title shows it.
    bool marked = false;
    // When the mark is next looked at, in milliseconds of the system's clock.
    ULONGLONG nextMark = 0;

    // Null while none is in hand.
    std::unique_ptr<PanelRender> render;
    // What the last render made; empty before.
    std::string lastDocument;
};

}  // namespace command

// The effect's rollups outside of the host's own panel, in a window of theirs.
#pragma once

#include <IRendParams.h>

#include <functional>

namespace ui {

// The window of rollups, a child of `parent` over all of its client area; the owner moves it when
// the parent's size changes. It goes with its parent, or with this object.
class RollupTool final : public IRollupCallback {
  public:
    // Without a window where the system refuses one.
    explicit RollupTool(HWND parent);
    ~RollupTool() override;
    RollupTool(const RollupTool&) = delete;
    RollupTool& operator=(const RollupTool&) = delete;

    // Null without a window.
    HWND Window() const;
    IRollupWindow* Rollups() const { return Window() ? rollups : nullptr; }

    // The owner may fit its window to what is open now. May be empty.
    std::function<void(int index, bool open)> onOpenChange;
    void HandleOpenChange(int index, BOOL open) override;

  private:
    // Stays until it is released, also without its window.
    IRollupWindow* rollups = nullptr;
};

// The place of an effect's settings (PSDOutput::CreateParamDialog) where there is no dialog of the
// host's. It must outlive the dialogs that were made with it. Pages go to the window of rollups;
// what else the host's panel could say is neutral.
class RollupRendDialog final : public IRendParams {
  public:
    explicit RollupRendDialog(HWND parent) : tool(parent) {}

    RollupTool& Tool() { return tool; }

    // The scene's first instant.
    TimeValue GetTime() override { return 0; }
    HWND AddRollupPage(HINSTANCE module, const MCHAR* dlgTemplate, DLGPROC dlgProc,
                       const MCHAR* title, LPARAM param, DWORD flags, int category) override;
    // Nothing for a window that is no page.
    void DeleteRollupPage(HWND page) override;
    void RollupMouseMessage(HWND page, UINT message, WPARAM wParam, LPARAM lParam) override;
    IRollupWindow* GetRollupWindow() override { return tool.Rollups(); }

  private:
    RollupTool tool;
};

}  // namespace ui

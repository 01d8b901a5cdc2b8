// Where the host shows an effect's settings: a window of rollups.
#pragma once

#include <IRendParams.h>

namespace host {

class EffectRollups final : public IRendParams {
  public:
    // Of ROLLUPWINDOWCLASS; not owned. Once it is destroyed nothing can be shown any more.
    explicit EffectRollups(HWND rollupWindow) : window_(rollupWindow) {}

    TimeValue GetTime() override;
    HWND AddRollupPage(HINSTANCE module, const MCHAR* dlgTemplate, DLGPROC dlgProc,
                       const MCHAR* title, LPARAM param, DWORD flags, int category) override;
    void DeleteRollupPage(HWND page) override;
    void RollupMouseMessage(HWND page, UINT message, WPARAM wParam, LPARAM lParam) override;
    // Goes with its window.
    IRollupWindow* GetRollupWindow() override;

  private:
    HWND window_;
};

}  // namespace host

// Where the settings of a renderer or an effect are shown.
#pragma once

#include "custcont.h"

class IRendParams {
  public:
    virtual TimeValue GetTime() = 0;
    // The rollup's dialog, as IRollupWindow::AppendRollup makes it; null when it can't be made.
    virtual HWND AddRollupPage(HINSTANCE module, const MCHAR* dlgTemplate, DLGPROC dlgProc,
                               const MCHAR* title, LPARAM param = 0, DWORD flags = 0,
                               int category = ROLLUP_CAT_STANDARD) = 0;
    virtual void DeleteRollupPage(HWND page) = 0;
    // What a page does with the mouse where it has no control.
    virtual void RollupMouseMessage(HWND page, UINT message, WPARAM wParam, LPARAM lParam) = 0;
    // The window that all rollups are in; null when there is none.
    virtual IRollupWindow* GetRollupWindow() = 0;

  protected:
    ~IRendParams() = default;
};

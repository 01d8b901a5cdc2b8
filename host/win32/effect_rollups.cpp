#include "host/win32/effect_rollups.h"

#include <maxapi.h>

namespace host {

TimeValue EffectRollups::GetTime() {
    return GetCOREInterface()->GetTime();
}

IRollupWindow* EffectRollups::GetRollupWindow() {
    IRollupWindow* rollups = GetIRollup(window_);
    // The window holds it too.
    ReleaseIRollup(rollups);
    return rollups;
}

HWND EffectRollups::AddRollupPage(HINSTANCE module, const MCHAR* dlgTemplate, DLGPROC dlgProc,
                                  const MCHAR* title, LPARAM param, DWORD flags, int category) {
    IRollupWindow* rollups = GetRollupWindow();
    if (!rollups) return nullptr;
    return rollups->GetPanelDlg(
        rollups->AppendRollup(module, dlgTemplate, dlgProc, title, param, flags, category));
}

void EffectRollups::DeleteRollupPage(HWND page) {
    IRollupWindow* rollups = GetRollupWindow();
    const int index = rollups ? rollups->GetPanelIndex(page) : -1;
    if (index >= 0) rollups->DeleteRollup(index, 1);
}

void EffectRollups::RollupMouseMessage(HWND page, UINT message, WPARAM wParam, LPARAM lParam) {
    if (IRollupWindow* rollups = GetRollupWindow()) {
        rollups->DlgMouseMessage(page, message, wParam, lParam);
    }
}

}  // namespace host

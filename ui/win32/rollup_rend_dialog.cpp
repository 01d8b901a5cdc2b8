#include "ui/win32/rollup_rend_dialog.h"

#include "plugin/library.h"

namespace ui {
namespace {

HWND MakeRollupWindow(HWND parent) {
    RECT area{};
    GetClientRect(parent, &area);
    return CreateWindowExW(WS_EX_CONTROLPARENT, ROLLUPWINDOWCLASS, L"", WS_CHILD | WS_VISIBLE, 0, 0,
                           area.right, area.bottom, parent, nullptr, plugin::Module(), nullptr);
}

}  // namespace

RollupTool::RollupTool(HWND parent) : rollups(GetIRollup(MakeRollupWindow(parent))) {
    if (rollups) rollups->RegisterRollupCallback(this);
}

RollupTool::~RollupTool() {
    if (!rollups) return;
    rollups->UnRegisterRollupCallback(this);
    if (HWND window = rollups->GetHwnd()) DestroyWindow(window);
    ReleaseIRollup(rollups);
}

HWND RollupTool::Window() const {
    return rollups ? rollups->GetHwnd() : nullptr;
}

void RollupTool::HandleOpenChange(int index, BOOL open) {
    if (onOpenChange) onOpenChange(index, open != FALSE);
}

HWND RollupRendDialog::AddRollupPage(HINSTANCE module, const MCHAR* dlgTemplate, DLGPROC dlgProc,
                                     const MCHAR* title, LPARAM param, DWORD flags, int category) {
    IRollupWindow* rollups = tool.Rollups();
    if (!rollups) return nullptr;
    return rollups->GetPanelDlg(
        rollups->AppendRollup(module, dlgTemplate, dlgProc, title, param, flags, category));
}

void RollupRendDialog::DeleteRollupPage(HWND page) {
    IRollupWindow* rollups = tool.Rollups();
    const int index = rollups ? rollups->GetPanelIndex(page) : -1;
    if (index >= 0) rollups->DeleteRollup(index, 1);
}

void RollupRendDialog::RollupMouseMessage(HWND page, UINT message, WPARAM wParam, LPARAM lParam) {
    if (IRollupWindow* rollups = tool.Rollups()) {
        rollups->DlgMouseMessage(page, message, wParam, lParam);
    }
}

}  // namespace ui

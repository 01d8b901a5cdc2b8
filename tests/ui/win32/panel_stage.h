// The effect's panel in a window of its own, as a host shows it, and what a user's hands do there.
// Start with what the scene is to have, then Open.
#pragma once

#include <windows.h>

#include <commctrl.h>
#include <custcont.h>
#include <iparamm2.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "effect/psd_output_layer.h"
#include "host/render_element.h"
#include "host/win32/control_classes.h"
#include "host/win32/effect_rollups.h"
#include "plugin/overwrite_question.h"
#include "tests/effect/effect_fixture.h"
#include "tests/host/win32/message_queue.h"
#include "ui/win32/attach.h"

// Runs `act` while a modal loop (of a menu, a dialog) that is about to start runs: as soon as
// `ready` answers a window, with that window.
class InModalLoop {
  public:
    InModalLoop(std::function<HWND()> ready, std::function<void(HWND)> act)
        : ready_(std::move(ready)), act_(std::move(act)), outer_(std::exchange(current_, this)) {
        timer_ = SetTimer(nullptr, 0, 10, Tick);
    }
    InModalLoop(const InModalLoop&) = delete;
    InModalLoop& operator=(const InModalLoop&) = delete;
    ~InModalLoop() {
        KillTimer(nullptr, timer_);
        current_ = outer_;
    }
    bool HasActed() const { return acted_; }

  private:
    static void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD) {
        InModalLoop* self = current_;
        HWND window = self && !self->acted_ ? self->ready_() : nullptr;
        if (!window) return;
        self->acted_ = true;
        self->act_(window);
    }

    static inline InModalLoop* current_ = nullptr;
    std::function<HWND()> ready_;
    std::function<void(HWND)> act_;
    InModalLoop* outer_;
    UINT_PTR timer_ = 0;
    bool acted_ = false;
};

// An effect that was loaded, so that no file dialog opens by itself, and its panel.
class PanelTest : public EffectTest {
  protected:
    PanelTest() {
        host::RegisterControlClasses();
        ui::AttachPanel();
        for (int i = 0; i < LibNumberClasses(); ++i)
            Host().classes.Add(LibClassDesc(i));
        effect->dataVersion = 0;
    }
    ~PanelTest() override {
        Close();
        // Other tests answer the host's boxes.
        plugin::UseOverwriteDialog(nullptr);
    }

    // With all rollups unfolded.
    void Open() {
        // Without being activated: to hide a window that was takes a while where there is no window
        // manager.
        window =
            CreateWindowExW(WS_EX_CONTROLPARENT, L"STATIC", L"", WS_POPUP | WS_CLIPCHILDREN, 50, 20,
                            560, 700, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
        ShowWindow(window, SW_SHOWNOACTIVATE);
        Host().settings.mainWindow = window;
        rollupWindow =
            CreateWindowExW(WS_EX_CONTROLPARENT, ROLLUPWINDOWCLASS, L"", WS_CHILD | WS_VISIBLE, 0,
                            0, 560, 700, window, nullptr, GetModuleHandleW(nullptr), nullptr);
        place = std::make_unique<host::EffectRollups>(rollupWindow);
        dialogs = effect->CreateParamDialog(place.get());
        IRollupWindow* rollups = place->GetRollupWindow();
        for (int i = 0; i < rollups->GetNumPanels(); ++i)
            rollups->SetPanelOpen(i, TRUE);
    }
    // Nothing when it isn't open.
    void Close() {
        if (!window) return;
        if (SFXParamDlg* shown = std::exchange(dialogs, nullptr)) shown->DeleteThis();
        Host().settings.mainWindow = nullptr;
        DestroyWindow(std::exchange(window, nullptr));
        place.reset();
    }

    IParamBlock2& Block() { return *effect->pblock; }
    static std::string UndoName() { return host::ToUtf8(Host().undo.UndoName()); }

    // Null for a rollup that isn't there.
    IParamMap2* Map(MapID map) {
        const ParamBlockDesc2* desc = Block().GetDesc();
        return desc->cd->GetParamMap(desc, map);
    }
    HWND Dialog(MapID map) {
        IParamMap2* found = Map(map);
        return found ? found->GetHWnd() : nullptr;
    }
    HWND Control(MapID map, int id) { return GetDlgItem(Dialog(map), id); }

    // What a user sees of a control; false for one that isn't there.
    bool IsEnabled(MapID map, int id) {
        HWND control = Control(map, id);
        return control && IsWindowEnabled(control);
    }
    bool IsShown(MapID map, int id) {
        HWND control = Control(map, id);
        return control && (GetWindowLongW(control, GWL_STYLE) & WS_VISIBLE);
    }
    // Of the system's check boxes and radios, and of the host's check buttons.
    bool IsChecked(MapID map, int id) {
        HWND control = Control(map, id);
        if (ICustButton* button = GetICustButton(control)) {
            const bool checked = button->IsChecked();
            ReleaseICustButton(button);
            return checked;
        }
        return SendMessageW(control, BM_GETCHECK, 0, 0) == BST_CHECKED;
    }
    std::string TextOf(MapID map, int id) {
        HWND control = Control(map, id);
        if (ICustEdit* edit = GetICustEdit(control)) {
            std::vector<MCHAR> text(static_cast<std::size_t>(edit->GetTextLength()) + 1);
            edit->GetText(text.data(), static_cast<int>(text.size()));
            ReleaseICustEdit(edit);
            return host::ToUtf8(text.data());
        }
        std::vector<MCHAR> text(static_cast<std::size_t>(GetWindowTextLengthW(control)) + 1);
        GetWindowTextW(control, text.data(), static_cast<int>(text.size()));
        return host::ToUtf8(text.data());
    }

    // What a user does. Mouse messages stand in the queue, as the system's own do.
    static void Click(HWND control, int x = 5, int y = 5, bool isDouble = false) {
        const UINT down = isDouble ? WM_LBUTTONDBLCLK : WM_LBUTTONDOWN;
        PostMessageW(control, down, MK_LBUTTON, MAKELPARAM(x, y));
        PostMessageW(control, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
        PumpMessages();
    }
    static void RightClick(HWND control, int x = 5, int y = 5) {
        PostMessageW(control, WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(x, y));
        PostMessageW(control, WM_RBUTTONUP, 0, MAKELPARAM(x, y));
        PumpMessages();
    }
    void Press(MapID map, int id) { Click(Control(map, id)); }
    static void PressKey(HWND control, WPARAM key) {
        SendMessageW(control, WM_KEYDOWN, key, 1);
        SendMessageW(control, WM_KEYUP, key, 1);
    }
    static void WhileDown(BYTE key, const std::function<void()>& act) {
        BYTE keys[256] = {};
        GetKeyboardState(keys);
        const BYTE former = std::exchange(keys[key], BYTE{0x80});
        SetKeyboardState(keys);
        act();
        keys[key] = former;
        SetKeyboardState(keys);
    }
    // Into an edit field of the host's or the system's, over what is there; it has the focus then.
    static void Type(HWND edit, const std::string& text) {
        SetFocus(edit);
        HWND field = GetFocus();
        SendMessageW(field, EM_SETSEL, 0, -1);
        for (const MCHAR unit : std::basic_string<MCHAR>(host::FromUtf8(text).data()))
            SendMessageW(field, WM_CHAR, unit, 1);
        if (text.empty()) PressKey(field, VK_DELETE);
    }
    // The user opens a combo and takes an item.
    void Choose(MapID map, int id, int item) {
        HWND combo = Control(map, id);
        SendMessageW(combo, CB_SETCURSEL, static_cast<WPARAM>(item), 0);
        SendMessageW(Dialog(map), WM_COMMAND, static_cast<WPARAM>(MAKELONG(id, CBN_SELCHANGE)),
                     reinterpret_cast<LPARAM>(combo));
    }
    void Tick(MapID map, UINT_PTR timer) { SendMessageW(Dialog(map), WM_TIMER, timer, 0); }

    HWND window = nullptr;
    HWND rollupWindow = nullptr;
    std::unique_ptr<host::EffectRollups> place;
    SFXParamDlg* dialogs = nullptr;
};

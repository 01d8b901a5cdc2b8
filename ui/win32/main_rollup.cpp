#include "ui/win32/main_rollup.h"

#include <custcont.h>
#include <hold.h>
#include <winutil.h>

#include <utility>

#include "effect/psd_output.h"
#include "plugin/block_changes.h"
#include "plugin/library.h"
#include "plugin/parameters.h"
#include "ui/choose_file.h"
#include "ui/depth_controls.h"
#include "ui/file_name_field.h"
#include "ui/frame_buffer_prompts.h"
#include "ui/header_picture.h"
#include "ui/help_file.h"
#include "ui/rendered_file.h"
#include "ui/resolution_buttons.h"
#include "ui/resource.h"
#include "ui/rollup_notifications.h"
#include "ui/rollup_timers.h"
#include "ui/win32/about_box.h"
#include "ui/win32/advanced_dialog.h"
#include "ui/win32/library_file.h"
#include "ui/win32/open_file.h"
#include "ui/win32/rollup_controls.h"
#include "ui/win32/text_width.h"

namespace ui {
namespace {

ZoneRectangle ZoneOf(HWND dialog, int control) {
    RECT area{};
    GetWindowRect(GetDlgItem(dialog, control), &area);
    return {static_cast<int>(area.left), static_cast<int>(area.top), static_cast<int>(area.right),
            static_cast<int>(area.bottom)};
}

int InnerWidth(HWND control) {
    RECT area{};
    GetClientRect(control, &area);
    constexpr int margins = 6;
    return static_cast<int>(area.right) - margins;
}

}  // namespace

void MainRollup::Opened() {
    ListenToHeader();
    UpdateFileNameField();
    if (ICustButton* files = GetICustButton(Control(IDC_FILES))) {
        files->SetRightClickNotify(TRUE);
        ReleaseICustButton(files);
    }
    if (TakeNewMark(Effect())) {
        SetTimer(Dialog(), newEffectTimer.id, newEffectTimer.milliseconds, nullptr);
    }
    UpdateDepthControls();
    for (int code : RollupNotifications(fileNameTimer.map))
        RegisterNotification(Hear, this, code);
    SetTimer(Dialog(), fileNameTimer.id, fileNameTimer.milliseconds, nullptr);
    LoadHeader();
    SetUpButtons(Map());
    UpdateFormatEnabling();
}

void MainRollup::Closing() {
    DropHeader();
    for (int code : RollupNotifications(fileNameTimer.map))
        UnRegisterNotification(Hear, this, code);
    KillTimer(Dialog(), fileNameTimer.id);
    KillTimer(Dialog(), newEffectTimer.id);
    StopListeningToHeader();
    fileNameDirty = false;
    offerWaits = false;
}

void MainRollup::OtherEffect() {
    UpdateFileNameField();
    UpdateFormatEnabling();
    UpdateDepthControls();
}

void MainRollup::Hear(void* rollup, NotifyInfo* info) {
    auto& self = *static_cast<MainRollup*>(rollup);
    switch (UpdateFor(*info)) {
        case PanelUpdate::FileName:
            if (!self.IsNameTyped()) self.UpdateFileNameField();
            self.fileNameDirty = true;
            return;
        case PanelUpdate::LayerControls:
            if (plugin::EffectPanel* panel = plugin::OpenPanel()) panel->UpdateLayerControls();
            return;
        case PanelUpdate::DepthControls:
            self.UpdateDepthControls();
            return;
        default:
            return;
    }
}

void MainRollup::LoadHeader() {
    const int bitmap = HeaderBitmap(MaxSDK::GetUIScaleFactor());
    if (bitmap == 0) return;
    headerBitmap = LoadBitmapW(plugin::Module(), MAKEINTRESOURCEW(bitmap));
    SendDlgItemMessageW(Dialog(), IDC_HEADER, STM_SETIMAGE, IMAGE_BITMAP,
                        reinterpret_cast<LPARAM>(headerBitmap));
}

void MainRollup::DropHeader() {
    HBITMAP given = std::exchange(headerBitmap, nullptr);
    if (!given) return;
    auto* shown = reinterpret_cast<HBITMAP>(
        SendDlgItemMessageW(Dialog(), IDC_HEADER, STM_SETIMAGE, IMAGE_BITMAP, 0));
    // The control may have made a copy, which nobody else deletes.
    if (shown && shown != given) DeleteObject(shown);
    DeleteObject(given);
}

void MainRollup::UpdateFileNameField() {
    if (!IsOpen()) return;
    HWND field = Control(IDC_FILE_NAME);
    const auto widthOf = [field](const MSTR& text) { return TextWidthIn(field, text); };
    const FileNameField shown = ShowFileName(Effect(), InnerWidth(field), widthOf);
    EnableControl(field, shown.enabled);
    SetEditText(field, shown.text);
}

void MainRollup::UpdateFormatEnabling() {
    if (IsOpen()) Map().Enable("fileFormat"_param, IsFileFormatEnabled(Effect()));
}

void MainRollup::UpdateDepthControls() {
    if (!IsOpen()) return;
    const DepthControls shown = ShowDepth(*Effect().pblock);
    const std::pair<int, bool> radios[] = {{IDC_DEPTH_8, shown.is8Bits},
                                           {IDC_DEPTH_16, shown.is16Bits},
                                           {IDC_DEPTH_32, shown.is32Bits}};
    for (const auto& [control, on] : radios)
        CheckDlgButton(Dialog(), control, on ? BST_CHECKED : BST_UNCHECKED);
}

void MainRollup::OfferFrameBufferChange() {
    if (!IsOpen()) return;
    offerWaits = theHold.RestoreOrRedoing();
    if (!offerWaits) ui::OfferFrameBufferChange(Effect(), Dialog());
}

bool MainRollup::IsNameTyped() const {
    HWND field = Control(IDC_FILE_NAME);
    return HasKeyboard(field) && IsWindowEnabled(field);
}

void MainRollup::TakeFileName() {
    TakeTypedFileName(Effect(), EditText(Control(IDC_FILE_NAME)));
}

void MainRollup::Command(int control, int code) {
    switch (control) {
        case IDC_FILES:
            if (code == BN_CLICKED) ChooseFile(Effect(), Dialog());
            if (code == BN_RIGHTCLICK) {
                if (IsNameTyped()) TakeFileName();
                if (const std::optional<MSTR> file = RenderedFile(Effect())) OpenFile(*file);
            }
            return;
        case IDC_ADVANCED_OPTIONS:
            if (code == BN_CLICKED) OpenAdvancedOptions(Effect(), Dialog());
            return;
        case IDC_FILE_NAME:
            if (code == EN_SETFOCUS || code == EN_KILLFOCUS) TakeFileName();
            // What is kept may be another text than what was typed.
            if (code == EN_KILLFOCUS) UpdateFileNameField();
            return;
        default:
            if (code == BN_CLICKED) ClickResolution(*Effect().pblock, control);
    }
}

void MainRollup::Entered(int control) {
    if (control != IDC_FILE_NAME) return;
    TakeFileName();
    UpdateFileNameField();
}

void MainRollup::Tick(UINT_PTR timer) {
    if (timer == fileNameTimer.id) {
        if (FileNameTick(fileNameDirty, Effect())) UpdateFileNameField();
        if (offerWaits) OfferFrameBufferChange();
    }
    if (timer == newEffectTimer.id) {
        KillTimer(Dialog(), timer);
        PostMessageW(Dialog(), WM_COMMAND, MAKEWPARAM(IDC_FILES, BN_CLICKED),
                     reinterpret_cast<LPARAM>(Control(IDC_FILES)));
    }
}

HotZone MainRollup::ZoneUnderMouse() const {
    POINT mouse{};
    GetCursorPos(&mouse);
    return HotZoneAt({static_cast<int>(mouse.x), static_cast<int>(mouse.y)},
                     ZoneOf(Dialog(), IDC_ABOUT_ZONE), ZoneOf(Dialog(), IDC_HELP_ZONE));
}

void MainRollup::OpenZone(HotZone zone) const {
    if (zone == HotZone::About) OpenAboutBox(GetParent(Dialog()));
    if (zone == HotZone::Help) OpenFile(HelpFile(LibraryFile()));
}

// The system's way to listen to a window looks up a property for each message.
void MainRollup::ListenToHeader() {
    listening = this;
    dialogProcedure = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(Dialog(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(HeaderProcedure)));
}

void MainRollup::StopListeningToHeader() const {
    const auto present = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(Dialog(), GWLP_WNDPROC));
    if (present != HeaderProcedure) return;
    SetWindowLongPtrW(Dialog(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(dialogProcedure));
}

LRESULT CALLBACK MainRollup::HeaderProcedure(HWND dialog, UINT message, WPARAM wParam,
                                             LPARAM lParam) {
    return listening->OnHeaderMessage(dialog, message, wParam, lParam);
}

LRESULT MainRollup::OnHeaderMessage(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) const {
    const bool isPointing =
        message == WM_SETCURSOR || (message >= WM_MOUSEMOVE && message <= WM_LBUTTONUP);
    // A drag that only passes over a zone, or ends there, is the rollups' own.
    if (isPointing && HasDialog() && GetCapture() != dialog) {
        const HotZoneAnswer answer = OnHotZoneMessage(message, ZoneUnderMouse());
        if (answer.handled) {
            SetCursor(LoadCursorW(nullptr, IDC_HAND));
            OpenZone(answer.opens);
            return 1;
        }
    }
    return CallWindowProcW(dialogProcedure, dialog, message, wParam, lParam);
}

}  // namespace ui

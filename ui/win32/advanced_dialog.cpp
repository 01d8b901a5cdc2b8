#include "ui/win32/advanced_dialog.h"

#include <custcont.h>
#include <windowsx.h>
#include <winutil.h>

#include "effect/psd_output.h"
#include "plugin/block_changes.h"
#include "plugin/library.h"
#include "ui/advanced_options.h"
#include "ui/resource.h"

namespace ui {
namespace {

struct AdvancedDialog {
    AdvancedOptions options;
    TooltipExtender toolTips{};
};

void Fill(HWND combo, const std::vector<OptionItem>& items, int value) {
    for (const OptionItem& item : items)
        ComboBox_SetItemData(combo, ComboBox_AddString(combo, item.text.data()), item.value);
    ComboBox_SetCurSel(combo, ItemOf(items, value));
}

// The item data of the selection. A value that no item has selects none, and stays.
int ValueOf(HWND dialog, int control, int shown) {
    HWND combo = GetDlgItem(dialog, control);
    const int item = ComboBox_GetCurSel(combo);
    return item < 0 ? shown : static_cast<int>(ComboBox_GetItemData(combo, item));
}

void Check(HWND dialog, int control, std::int32_t on) {
    CheckDlgButton(dialog, control, on ? BST_CHECKED : BST_UNCHECKED);
}

bool IsChecked(HWND dialog, int control) {
    return IsDlgButtonChecked(dialog, control) == BST_CHECKED;
}

void Enable(HWND dialog, int control, bool on) {
    EnableWindow(GetDlgItem(dialog, control), on);
}

void Initialise(HWND dialog, AdvancedDialog& state) {
    const AdvancedOptions& options = state.options;
    const auto tip = [&](int control, const MSTR& text) {
        state.toolTips.SetToolTip(GetDlgItem(dialog, control), text);
    };
    const MSTR gammaTip = GammaToolTip(*options.effect->pblock);
    tip(IDC_GAMMA, gammaTip);
    tip(IDC_GAMMA_CONFIG, gammaTip);
    const AdvancedControls shown = ShowAdvancedOptions(options);
    Check(dialog, IDC_GAMMA, options.gammaCorrect);
    Fill(GetDlgItem(dialog, IDC_GAMMA_CONFIG), CorrectionItems(), options.gammaConfig);
    Enable(dialog, IDC_GAMMA_CONFIG, shown.gammaConfigEnabled);
    tip(IDC_COLOR, MSTR(colorToolTip));
    tip(IDC_COLOR_CONFIG, MSTR(colorToolTip));
    Check(dialog, IDC_COLOR, options.colorCorrect);
    Enable(dialog, IDC_COLOR, shown.colorCorrectEnabled);
    Fill(GetDlgItem(dialog, IDC_COLOR_CONFIG), CorrectionItems(), options.colorConfig);
    Enable(dialog, IDC_COLOR_CONFIG, shown.colorConfigEnabled);
    Check(dialog, IDC_HIDE_MATTE_LAYERS, options.hideMatteLayers);
    Check(dialog, IDC_DENOISER_CHANNELS, options.denoiserChannels);
    Enable(dialog, IDC_DENOISER_CHANNELS, shown.denoiserChannelsEnabled);
    Fill(GetDlgItem(dialog, IDC_COMPATIBILITY), CompatibilityItems(), options.compatibility);
    CenterWindow(dialog, GetParent(dialog));
}

void ReadControls(HWND dialog, AdvancedOptions& options) {
    options.gammaCorrect = IsChecked(dialog, IDC_GAMMA);
    options.gammaConfig = ValueOf(dialog, IDC_GAMMA_CONFIG, options.gammaConfig);
    options.colorCorrect = IsChecked(dialog, IDC_COLOR);
    options.colorConfig = ValueOf(dialog, IDC_COLOR_CONFIG, options.colorConfig);
    options.hideMatteLayers = IsChecked(dialog, IDC_HIDE_MATTE_LAYERS);
    options.denoiserChannels = IsChecked(dialog, IDC_DENOISER_CHANNELS);
    options.compatibility = ValueOf(dialog, IDC_COMPATIBILITY, options.compatibility);
}

void FollowChoice(HWND dialog, const AdvancedOptions& options,
                  CorrectionChoice (*after)(CorrectionChoice)) {
    const CorrectionChoice choice =
        after({.gamma = ValueOf(dialog, IDC_GAMMA_CONFIG, options.gammaConfig),
               .color = ValueOf(dialog, IDC_COLOR_CONFIG, options.colorConfig)});
    const std::vector<OptionItem> items = CorrectionItems();
    ComboBox_SetCurSel(GetDlgItem(dialog, IDC_GAMMA_CONFIG), ItemOf(items, choice.gamma));
    ComboBox_SetCurSel(GetDlgItem(dialog, IDC_COLOR_CONFIG), ItemOf(items, choice.color));
}

void OnAdvancedCommand(HWND dialog, AdvancedDialog& state, int control, int code) {
    switch (control) {
        case IDC_GAMMA:
            Enable(dialog, IDC_GAMMA_CONFIG, IsChecked(dialog, control));
            return;
        case IDC_COLOR:
            Enable(dialog, IDC_COLOR_CONFIG, IsChecked(dialog, control));
            return;
        case IDC_GAMMA_CONFIG:
            if (code == CBN_SELCHANGE) FollowChoice(dialog, state.options, AfterGammaChoice);
            return;
        case IDC_COLOR_CONFIG:
            if (code == CBN_SELCHANGE) FollowChoice(dialog, state.options, AfterColorChoice);
            return;
        case IDOK:
            ReadControls(dialog, state.options);
            EndDialog(dialog, 1);
            return;
        case IDCANCEL:
            EndDialog(dialog, 0);
            return;
        default:
            return;
    }
}

INT_PTR CALLBACK AdvancedProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(dialog, DWLP_USER, lParam);
        Initialise(dialog, *reinterpret_cast<AdvancedDialog*>(lParam));
        return TRUE;
    }
    auto* state = reinterpret_cast<AdvancedDialog*>(GetWindowLongPtrW(dialog, DWLP_USER));
    if (message == WM_COMMAND && state) {
        OnAdvancedCommand(dialog, *state, LOWORD(wParam), HIWORD(wParam));
        return TRUE;
    }
    if (message == WM_DESTROY && state) state->toolTips.RemoveToolTips();
    return FALSE;
}

}  // namespace

void OpenAdvancedOptions(effect::PSDOutput& effect, HWND parent) {
    AdvancedDialog state{ReadAdvancedOptions(effect)};
    const INT_PTR answer = DialogBoxParamW(plugin::Module(), MAKEINTRESOURCEW(IDD_ADVANCED), parent,
                                           AdvancedProcedure, reinterpret_cast<LPARAM>(&state));
    if (answer != 1) return;
    WriteAdvancedOptions(state.options);
    // Not each of these settings is told of, and the layers' settings depend on most of them.
    if (plugin::EffectPanel* panel = plugin::OpenPanel()) panel->UpdateLayerControls();
}

}  // namespace ui

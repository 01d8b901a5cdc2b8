#include "ui/win32/elements_rollup.h"

#include <commctrl.h>
#include <renderelements.h>
#include <windowsx.h>

#include <utility>

#include "effect/psd_output.h"
#include "effect/psd_output_layer.h"
#include "plugin/parameters.h"
#include "ui/blend_mode_combo.h"
#include "ui/element_cells.h"
#include "ui/layer_controls.h"
#include "ui/list_views.h"
#include "ui/move_layer.h"
#include "ui/resource.h"
#include "ui/rollup_timers.h"
#include "ui/scoped_mark.h"
#include "ui/sort_once.h"
#include "ui/win32/list_control.h"
#include "ui/win32/list_splitter.h"
#include "ui/win32/panel_pictures.h"
#include "ui/win32/rollup_controls.h"

namespace ui {
namespace {

constexpr UINT selectedAndFocused = LVIS_SELECTED | LVIS_FOCUSED;

bool IsSystemButton(HWND control) {
    WCHAR name[16] = {};
    GetClassNameW(control, name, static_cast<int>(std::size(name)));
    return _wcsicmp(name, L"Button") == 0;
}

void ShowLayerControl(HWND dialog, const LayerControl& state) {
    HWND control = GetDlgItem(dialog, state.id);
    if (!control) return;
    EnableControl(control, state.enabled);
    ShowControl(control, state.shown);
    if (state.checked && IsSystemButton(control)) {
        SendMessageW(control, BM_SETCHECK, *state.checked ? BST_CHECKED : BST_UNCHECKED, 0);
    }
}

}  // namespace

HWND ElementsRollup::List() const {
    return Control(IDC_ELEMENT_LIST);
}

int ElementsRollup::Selected() const {
    return SelectedRow(List());
}

int ElementsRollup::RowOf(const effect::PSDOutputLayer* layer) const {
    int row = layer ? RowCount(List()) - 1 : -1;
    while (row >= 0 && LayerOfRow(Effect(), row) != layer)
        --row;
    return row;
}

void ElementsRollup::SelectChosen() {
    if (LayerOfRow(Effect(), Selected()) == chosen) return;
    const int row = RowOf(chosen);
    if (row >= 0) {
        SelectRow(List(), row, selectedAndFocused);
        ListView_EnsureVisible(List(), row, FALSE);
    }
    chosen = LayerOfRow(Effect(), Selected());
}

void ElementsRollup::Opened() {
    SetUpButtons(Map());
    EnableLayerSetMaskControl();
    SetUpList(List(), elementList, CheckPictures());
    FillBlendingModes();
    UpdateRenderElements(Effect());
    RefreshRenderElementRows();
    UpdateLayerControls();
    elementsDirty = false;
    orderDirty = false;
    SetTimer(Dialog(), renderElementsTimer.id, renderElementsTimer.milliseconds, nullptr);
    SetUpSplitter(Map(), elementList);
}

void ElementsRollup::Choose(const effect::PSDOutputLayer* layer) {
    // The list may change its selection before it takes the keyboard.
    if (layer != chosen && HasKeyboard(Control(IDC_ELEMENT_NAME))) Rename();
    chosen = layer;
}

void ElementsRollup::Closing() {
    ListView_CancelEditLabel(List());
    KillTimer(Dialog(), renderElementsTimer.id);
    DropListPictures(List());
    chosen = nullptr;
    named = nullptr;
    renamed = nullptr;
    shownName = MSTR();
}

void ElementsRollup::OtherEffect() {
    EnableLayerSetMaskControl();
    FillBlendingModes();
    UpdateRenderElements(Effect());
    RefreshRenderElementRows();
    UpdateLayerControls();
    Redraw();
}

void ElementsRollup::ColorsChanged() {
    ColorList(List());
}

void ElementsRollup::Redraw() {
    if (IsOpen()) RedrawList(List());
}

// Not at once: the layer that moves is in no row for a moment.
void ElementsRollup::OrderChanged() {
    orderDirty = true;
    Redraw();
}

void ElementsRollup::RefreshRenderElementRows() {
    if (!IsOpen()) return;
    const ScopedMark mark(showing);
    FillList(List(), elementList, ElementRowCount(Effect()));
    // A new layer may come to lie where one lay that is gone.
    if (RowOf(chosen) < 0) chosen = nullptr;
}

void ElementsRollup::UpdateLayerControls() {
    if (!IsOpen() || showing) return;
    SaveTypedName();
    const ScopedMark mark(showing);
    SelectChosen();
    const LayerControls state = ui::UpdateLayerControls(Effect(), Selected(), RowCount(List()));
    for (const LayerControl& control : state.controls)
        ShowLayerControl(Dialog(), control);
    ShowName(state.name);
    ShowBlendMode(state.blendingMode);
}

// A name that is being typed stays, while its layer is the selected one.
void ElementsRollup::ShowName(const MSTR& name) {
    HWND field = Control(IDC_ELEMENT_NAME);
    const MSTR text = EditText(field);
    if (HasKeyboard(field) && named == chosen && text != shownName) return;
    named = chosen;
    shownName = name;
    // The caret stays where it is in a name that stays.
    if (text != name) SetEditText(field, name);
}

// A field that is about to be greyed loses the keyboard without a word.
void ElementsRollup::SaveTypedName() {
    HWND field = Control(IDC_ELEMENT_NAME);
    if (!HasKeyboard(field) || Effect().pblock->GetInt("createRenderElementLayers"_param)) return;
    const MSTR name = EditText(field);
    if (name != shownName) TakeTypedElementName(Effect(), ShownRow(), name);
}

void ElementsRollup::ShowBlendMode(int mode) {
    ComboBox_SetCurSel(Control(IDC_ELEMENT_BLENDING),
                       ItemOfBlendMode(OfferedBlendModes(Effect()), mode));
}

void ElementsRollup::FillBlendingModes() {
    if (!IsOpen()) return;
    HWND combo = Control(IDC_ELEMENT_BLENDING);
    ComboBox_ResetContent(combo);
    for (int mode : OfferedBlendModes(Effect())) {
        const int item = ComboBox_AddString(combo, BlendModeName(mode).data());
        ComboBox_SetItemData(combo, item, mode);
    }
    ShowBlendMode(BlendModeOfRow(Effect(), Selected()));
}

void ElementsRollup::EnableControls() {
    UpdateLayerControls();
    EnableLayerSetMaskControl();
}

void ElementsRollup::EnableLayerSetMaskControl() {
    if (!IsOpen()) return;
    Map().Enable("createRenderElementsLayerSetMaskFromAlpha"_param,
                 Effect().pblock->GetInt("createRenderElementsLayerSet"_param));
}

void ElementsRollup::Show(ListTick changed) {
    if (changed == ListTick::Rebuild) {
        RefreshRenderElementRows();
        UpdateLayerControls();
    }
    if (changed != ListTick::Nothing) Redraw();
}

void ElementsRollup::Tick(UINT_PTR timer) {
    if (timer != renderElementsTimer.id) return;
    Show(RenderElementsTick(elementsDirty, Effect()));
    if (!std::exchange(orderDirty, false)) return;
    if (ElementRowCount(Effect()) != RowCount(List())) RefreshRenderElementRows();
    UpdateLayerControls();
}

void ElementsRollup::Sort() {
    // A name that is being typed goes to the row that it was typed for.
    if (ListView_GetEditControl(List())) SetFocus(List());
    const int row = SortOnce(Effect(), Selected());
    if (row >= 0) {
        SelectRow(List(), row, LVIS_SELECTED);
        ListView_EnsureVisible(List(), row, FALSE);
    }
    Redraw();
}

void ElementsRollup::Move(int delta) {
    const int row = MoveLayer(Effect(), Selected(), delta);
    if (row >= 0 && SelectsMovedRow(delta, row)) {
        SelectRow(List(), row, selectedAndFocused);
        ListView_EnsureVisible(List(), row, FALSE);
    }
    Redraw();
}

void ElementsRollup::Rename() {
    const MSTR name = EditText(Control(IDC_ELEMENT_NAME));
    // What isn't taken doesn't stay there either.
    if (!TakeTypedElementName(Effect(), ShownRow(), name)) return UpdateLayerControls();
    shownName = name;
    Redraw();
}

// While the menu is up the rollup may close, and rows may change their order.
void ElementsRollup::TrackMenu(int row, POINT at) {
    if (!HasElementMenu(Effect(), row)) return;
    const effect::PSDOutputLayer* layer = LayerOfRow(Effect(), row);
    const IRenderElement* element = layer->Element();
    const int item = TrackRowMenu(Dialog(), ElementMenu(), at);
    if (item == 0 || !IsOpen()) return;
    // A new layer may lie where one lay that is gone.
    const int now = RowOf(layer);
    if (now < 0 || layer->Element() != element) return;
    if (!ChooseElementMenu(Effect(), now, item)) return;
    UpdateLayerControls();
    Redraw();
}

bool ElementsRollup::ContextMenu(HWND control) {
    if (control != List()) return false;
    if (const int row = Selected(); row >= 0) TrackMenu(row, RowPlace(List(), row));
    return true;
}

void ElementsRollup::Press(WORD key) {
    const int row = Selected();
    if (key == VK_APPS) {
        ContextMenu(List());
        return;
    }
    if (key == VK_F2 && row >= 0) ListView_EditLabel(List(), row);
    if (!IsSwitchKey(key) || !ClickElement(Effect(), CheckBoxOf(row))) return;
    UpdateLayerControls();
    Redraw();
}

void ElementsRollup::Entered(int control) {
    if (control == IDC_ELEMENT_NAME && !showing) Rename();
}

void ElementsRollup::Command(int control, int code) {
    if (showing) return;
    switch (control) {
        case IDC_AUTO_SORT:
            if (code == BN_CLICKED) Sort();
            return;
        case IDC_ELEMENT_UP:
            if (code == BN_CLICKED) Move(-1);
            return;
        case IDC_ELEMENT_DOWN:
            if (code == BN_CLICKED) Move(1);
            return;
        case IDC_UPDATE_ELEMENTS:
            if (code == BN_CLICKED) Show(UpdateRenderElements(Effect()));
            return;
        case IDC_ELEMENT_NAME:
            if (code == EN_KILLFOCUS) Rename();
            return;
        case IDC_ELEMENT_BLENDING: {
            HWND combo = Control(control);
            const int item = ComboBox_GetCurSel(combo);
            if (code != CBN_SELCHANGE || item < 0) return;
            const auto mode = static_cast<int>(ComboBox_GetItemData(combo, item));
            if (ChooseBlendMode(Effect(), ShownRow(), mode)) Redraw();
            return;
        }
        default: {
            if (code != BN_CLICKED) return;
            const bool checked = IsDlgButtonChecked(Dialog(), control) == BST_CHECKED;
            if (!ClickLayerControl(Effect(), ShownRow(), control, checked)) return;
            UpdateLayerControls();
            Redraw();
        }
    }
}

LRESULT ElementsRollup::Notify(NMHDR& notification) {
    if (notification.idFrom != IDC_ELEMENT_LIST) return 0;
    switch (notification.code) {
        case LVN_GETDISPINFOW:
            GiveRow(
                reinterpret_cast<NMLVDISPINFOW&>(notification),
                [this](int row, int column) { return ElementCell(Effect(), row, column); },
                [this](int row) { return ElementCheckImage(Effect(), row); });
            return 0;
        case NM_CLICK:
        case NM_DBLCLK:
            if (ClickElement(Effect(), HitOf(reinterpret_cast<NMITEMACTIVATE&>(notification)))) {
                Redraw();
            }
            UpdateLayerControls();
            return 0;
        case NM_RCLICK:
            TrackMenu(HitOf(reinterpret_cast<NMITEMACTIVATE&>(notification)).row, MousePlace());
            // There is no other menu.
            return 1;
        case LVN_BEGINLABELEDITW: {
            const LVITEMW& item = reinterpret_cast<NMLVDISPINFOW&>(notification).item;
            renamed = LayerOfRow(Effect(), item.iItem);
            return 0;
        }
        case LVN_ENDLABELEDITW: {
            if (showing) return 0;
            const LVITEMW& item = reinterpret_cast<NMLVDISPINFOW&>(notification).item;
            if (RenameElement(Effect(), RowOf(std::exchange(renamed, nullptr)), item.pszText)) {
                UpdateLayerControls();
            }
            return 0;
        }
        case LVN_ITEMCHANGED: {
            if (showing) return 0;
            Choose(LayerOfRow(Effect(), Selected()));
            // As a rule another row is selected next.
            if (!chosen) orderDirty = true;
            const auto& change = reinterpret_cast<const NMLISTVIEW&>(notification);
            if (IsSelectionChange(change.uChanged, change.uOldState, change.uNewState)) {
                UpdateLayerControls();
            }
            return 0;
        }
        case LVN_COLUMNCLICK:
            Sort();
            return 0;
        case LVN_KEYDOWN:
            Press(reinterpret_cast<const NMLVKEYDOWN&>(notification).wVKey);
            return 0;
        default:
            return 0;
    }
}

}  // namespace ui

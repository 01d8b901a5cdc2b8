#include "ui/win32/objects_rollup.h"

#include <windowsx.h>

#include "effect/psd_output.h"
#include "effect/scene_sync.h"
#include "plugin/parameters.h"
#include "ui/object_rows.h"
#include "ui/objects_group.h"
#include "ui/resource.h"
#include "ui/rollup_notifications.h"
#include "ui/scoped_mark.h"
#include "ui/win32/output_combo.h"
#include "ui/win32/panel_pictures.h"
#include "ui/win32/rollup_controls.h"

namespace ui {
namespace {

constexpr MapID objectsMap = 2;
constexpr int outputKindCombos[] = {IDC_OBJECTS_AS, IDC_MATERIAL_IDS_AS, IDC_NODE_IDS_AS};

}  // namespace

void ObjectsRollup::Opened() {
    NotifyOnEachKey(Control(IDC_NODE_ID_LIST));
    NotifyOnEachKey(Control(IDC_MATERIAL_ID_LIST));
    SetUpButtons(Map());
    MakeCheckButton(Control(IDC_ADD_OBJECTS));
    for (int combo : outputKindCombos)
        SetUpOutputCombo(Control(combo));
    pickCallback.Edit(&Effect());
    pickCallback.onPick = [this] { RefreshButtons(); };
    pickCallback.onModeChange = [this] { RefreshButtons(); };
    effect::CleanupDeletedObjects(*Effect().pblock);
    RefreshObjectIDControls();
    RefreshMaterialIDControls();
    RefreshObjectControls();
    for (int code : RollupNotifications(objectsMap))
        RegisterNotification(Hear, this, code);
}

void ObjectsRollup::Closing() {
    for (int code : RollupNotifications(objectsMap))
        UnRegisterNotification(Hear, this, code);
    pickCallback.onPick = nullptr;
    pickCallback.onModeChange = nullptr;
    pickCallback.Leave();
    pickCallback.Edit(nullptr);
}

void ObjectsRollup::OtherEffect() {
    pickCallback.Edit(&Effect());
    effect::CleanupDeletedObjects(*Effect().pblock);
    RefreshObjectIDControls();
    RefreshMaterialIDControls();
    RefreshObjectControls();
}

void ObjectsRollup::Hear(void* rollup, NotifyInfo* info) {
    auto& self = *static_cast<ObjectsRollup*>(rollup);
    if (UpdateFor(*info) == PanelUpdate::AddSelectedButton) self.RefreshButtons();
}

void ObjectsRollup::RefreshObjectIDControls() {
    if (IsOpen()) ShowOutputGroup(Map(), *OutputAsGroupOf("outputNodeIDs"_param));
}

void ObjectsRollup::RefreshMaterialIDControls() {
    if (IsOpen()) ShowOutputGroup(Map(), *OutputAsGroupOf("outputMtlIDs"_param));
}

void ObjectsRollup::RefreshObjectControls() {
    if (!IsOpen()) return;
    ShowOutputGroup(Map(), *OutputAsGroupOf("outputObjects"_param));
    RefreshButtons();
}

void ObjectsRollup::RefreshButtons() {
    if (!IsOpen() || working) return;
    const ObjectsGroup shown =
        RefreshObjectsGroup(*Effect().pblock, pickCallback.IsActive(), SelectedRows());
    EnableControl(Control(IDC_ADD_SELECTED), shown.addSelectedEnabled);
    EnableControl(Control(IDC_ADD_OBJECTS), shown.addObjectsEnabled);
    CheckButton(Control(IDC_ADD_OBJECTS), shown.addObjectsChecked);
    EnableControl(Control(IDC_REMOVE_OBJECTS), shown.removeEnabled);
    EnableControl(Control(IDC_OBJECTS_UP), shown.upEnabled);
    EnableControl(Control(IDC_OBJECTS_DOWN), shown.downEnabled);
}

std::vector<int> ObjectsRollup::SelectedRows() const {
    HWND list = Control(IDC_OBJECT_LIST);
    const int count = ListBox_GetSelCount(list);
    std::vector<int> rows(count > 0 ? static_cast<std::size_t>(count) : 0);
    if (!rows.empty()) ListBox_GetSelItems(list, count, rows.data());
    return rows;
}

void ObjectsRollup::SelectRows(std::span<const int> rows) {
    HWND list = Control(IDC_OBJECT_LIST);
    ListBox_SetSel(list, FALSE, -1);
    for (int row : rows)
        ListBox_SetSel(list, TRUE, row);
}

void ObjectsRollup::Move(int delta) {
    SelectRows(MoveObjects(*Effect().pblock, SelectedRows(), delta));
}

std::optional<MSTR> ObjectsRollup::TypedIDList(const effect::PSDOutput& effect,
                                               ParamID list) const {
    if (!IsOpen() || &effect != &Effect() || !IsWindowVisible(Dialog())) return std::nullopt;
    return EditText(Control(list == "nodeIDList"_param ? IDC_NODE_ID_LIST : IDC_MATERIAL_ID_LIST));
}

// False for another control. A button that is greyed loses the keyboard, so in between, when rows
// aren't selected yet, none is.
bool ObjectsRollup::Press(int button) {
    const ScopedMark mark(working);
    switch (button) {
        case IDC_ADD_SELECTED:
            AddSelectedObjects(*Effect().pblock);
            return true;
        case IDC_ADD_OBJECTS:
            pickCallback.Toggle();
            return true;
        case IDC_REMOVE_OBJECTS:
            RemoveObjects(*Effect().pblock, SelectedRows());
            // Of objects of one name the list box keeps the wrong one selected.
            SelectRows({});
            return true;
        case IDC_OBJECTS_UP:
            Move(-1);
            return true;
        case IDC_OBJECTS_DOWN:
            Move(1);
            return true;
        default:
            return false;
    }
}

void ObjectsRollup::Command(int control, int code) {
    if (control == IDC_OBJECT_LIST) {
        if (code == LBN_SELCHANGE) RefreshButtons();
        return;
    }
    if (code == BN_CLICKED && Press(control)) RefreshButtons();
}

void ObjectsRollup::Measure(MEASUREITEMSTRUCT& item) {
    MeasureOutputItem(item);
}

void ObjectsRollup::Draw(const DRAWITEMSTRUCT& item) {
    DrawOutputItem(item, OutputKindPictures());
}

}  // namespace ui

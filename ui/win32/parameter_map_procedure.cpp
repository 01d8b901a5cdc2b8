#include "ui/win32/parameter_map_procedure.h"

#include <commctrl.h>
#include <custcont.h>
#include <maxapi.h>
#include <windowsx.h>
#include <winutil.h>

#include <algorithm>
#include <array>
#include <utility>

#include "effect/psd_output.h"
#include "plugin/parameters.h"
#include "ui/element_changes.h"
#include "ui/win32/panel_pictures.h"

namespace ui {

Rollup* PSDOutputParamMapUserDlgProc::RollupOf(MapID map) {
    const std::pair<MapID, Rollup*> rollups[] = {
        {0, &main},        {1, &elements}, {2, &objects},       {4, &sceneData},
        {5, &sceneLayers}, {6, &gbuffer},  {7, &selectionSets},
    };
    for (const auto& [id, rollup] : rollups) {
        if (id == map) return rollup;
    }
    return nullptr;
}

bool PSDOutputParamMapUserDlgProc::IsAnyOpen() {
    for (const parameters::Rollup& each : parameters::rollups) {
        if (RollupOf(each.map)->HasDialog()) return true;
    }
    return false;
}

void PSDOutputParamMapUserDlgProc::Opened(IParamMap2& map, Rollup& rollup) {
    // The host shows the effect at another place too: this is the one from now on.
    if (rollup.HasDialog()) Closed(rollup);
    auto* effect = static_cast<effect::PSDOutput*>(map.GetParamBlock()->GetOwner());
    plugin::PanelOpened(*this);
    rollup.Open(map, *effect);
    if (&rollup == &elements) RegisterGlobalReference(this);
}

void PSDOutputParamMapUserDlgProc::Closed(Rollup& rollup) {
    if (&rollup == &elements) UnRegisterGlobalReference(this);
    if (&rollup == typing) EndTyping();
    rollup.Close();
    DropOutputKindPictures();
    if (IsAnyOpen()) return;
    DropCheckPictures();
    plugin::PanelClosed(*this);
}

void PSDOutputParamMapUserDlgProc::StartTyping(Rollup& rollup) {
    EndTyping();
    DisableAccelerators();
    typing = &rollup;
}

void PSDOutputParamMapUserDlgProc::EndTyping() {
    if (std::exchange(typing, nullptr)) EnableAccelerators();
}

INT_PTR PSDOutputParamMapUserDlgProc::DlgProc(TimeValue, IParamMap2* map, HWND, UINT msg,
                                              WPARAM wParam, LPARAM lParam) {
    Rollup* rollup = map ? RollupOf(map->GetMapID()) : nullptr;
    if (!rollup) return 0;
    switch (msg) {
        case WM_INITDIALOG:
            Opened(*map, *rollup);
            return 1;
        case WM_DESTROY:
            if (rollup->HasDialogOf(*map)) Closed(*rollup);
            return 1;
        case WM_MEASUREITEM:
            // Comes as the controls are made, before the rollup is set up.
            rollup->Measure(*reinterpret_cast<MEASUREITEMSTRUCT*>(lParam));
            return 1;
        case WM_DRAWITEM:
            // What is drawn here is of no effect.
            if (rollup->HasDialogOf(*map)) {
                rollup->Draw(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
            }
            return 1;
        case WM_COMMAND:
            // Also when the effect is gone: what was disabled is enabled again.
            if (HIWORD(wParam) == EN_SETFOCUS && rollup->HasDialogOf(*map)) StartTyping(*rollup);
            if (HIWORD(wParam) == EN_KILLFOCUS) EndTyping();
            break;
        case WM_NOTIFY: {
            // A list passes on what the field of a name tells only in part.
            const UINT code = reinterpret_cast<const NMHDR*>(lParam)->code;
            if (code == LVN_BEGINLABELEDITW && rollup->HasDialogOf(*map)) StartTyping(*rollup);
            if (code == LVN_ENDLABELEDITW) EndTyping();
            break;
        }
        default:
            break;
    }
    if (!rollup->HasDialogOf(*map) || !rollup->IsOpen()) return 0;
    switch (msg) {
        case WM_COMMAND:
            rollup->Command(LOWORD(wParam), HIWORD(wParam));
            return 1;
        case WM_CUSTEDIT_ENTER:
            rollup->Entered(LOWORD(wParam));
            return 1;
        case WM_NOTIFY:
            return rollup->Notify(*reinterpret_cast<NMHDR*>(lParam));
        case WM_CONTEXTMENU: {
            // With the mouse a list asks by a notification.
            const bool byKeyboard = GET_X_LPARAM(lParam) == -1 && GET_Y_LPARAM(lParam) == -1;
            return byKeyboard && rollup->ContextMenu(reinterpret_cast<HWND>(wParam));
        }
        case WM_TIMER:
            rollup->Tick(wParam);
            return 1;
        case WM_SYSCOLORCHANGE:
            // Others are to hear of it too.
            rollup->ColorsChanged();
            return 0;
        default:
            return 0;
    }
}

void PSDOutputParamMapUserDlgProc::SetThing(ReferenceTarget* thing) {
    if (!thing || thing->ClassID() != effect::psdOutputClassID) return;
    for (const parameters::Rollup& each : parameters::rollups)
        RollupOf(each.map)->Edit(*static_cast<effect::PSDOutput*>(thing));
}

Interval PSDOutputParamMapUserDlgProc::GetValidity() {
    const TimeValue now = GetCOREInterface()->GetTime();
    return {now, now};
}

RefResult PSDOutputParamMapUserDlgProc::NotifyRefChanged(const Interval&, RefTargetHandle hTarget,
                                                         PartID&, RefMessage message, BOOL) {
    if (TellsElementChange(hTarget, message)) elements.NoteElementChange();
    return REF_SUCCEED;
}

bool PSDOutputParamMapUserDlgProc::Shows(const effect::PSDOutput& effect) {
    return std::ranges::any_of(parameters::rollups, [&](const parameters::Rollup& each) {
        return RollupOf(each.map)->Shows(effect);
    });
}

void PSDOutputParamMapUserDlgProc::UpdateFileNameField() {
    main.UpdateFileNameField();
}
void PSDOutputParamMapUserDlgProc::UpdateFormatEnabling() {
    main.UpdateFormatEnabling();
}
void PSDOutputParamMapUserDlgProc::UpdateDepthControls() {
    main.UpdateDepthControls();
}
void PSDOutputParamMapUserDlgProc::EnableNonClampedColorControl() {
    gbuffer.EnableNonClampedColorControl();
}
void PSDOutputParamMapUserDlgProc::OfferFrameBufferChange() {
    main.OfferFrameBufferChange();
}
void PSDOutputParamMapUserDlgProc::RedrawRenderElements() {
    elements.OrderChanged();
}
void PSDOutputParamMapUserDlgProc::RefreshRenderElementRows() {
    elements.RefreshRenderElementRows();
    elements.UpdateLayerControls();
    elements.Redraw();
}
void PSDOutputParamMapUserDlgProc::NoteElementChange() {
    elements.NoteElementChange();
}
void PSDOutputParamMapUserDlgProc::UpdateLayerControls() {
    elements.UpdateLayerControls();
}
void PSDOutputParamMapUserDlgProc::FillBlendingModes() {
    elements.FillBlendingModes();
}
void PSDOutputParamMapUserDlgProc::EnableRenderElementControls() {
    elements.EnableControls();
}
void PSDOutputParamMapUserDlgProc::EnableLayerSetMaskControl() {
    elements.EnableLayerSetMaskControl();
}
void PSDOutputParamMapUserDlgProc::RefreshObjectIDControls() {
    objects.RefreshObjectIDControls();
}
void PSDOutputParamMapUserDlgProc::RefreshMaterialIDControls() {
    objects.RefreshMaterialIDControls();
}
void PSDOutputParamMapUserDlgProc::RefreshObjectControls() {
    objects.RefreshObjectControls();
}
std::optional<MSTR> PSDOutputParamMapUserDlgProc::TypedIDList(const effect::PSDOutput& effect,
                                                              ParamID list) {
    return objects.TypedIDList(effect, list);
}
void PSDOutputParamMapUserDlgProc::RefreshSceneLayerControls() {
    sceneLayers.RefreshControls();
}
void PSDOutputParamMapUserDlgProc::RedrawSceneLayers() {
    sceneLayers.Redraw();
}
void PSDOutputParamMapUserDlgProc::RefreshSelectionSetControls() {
    selectionSets.RefreshControls();
}
void PSDOutputParamMapUserDlgProc::RedrawSelectionSets() {
    selectionSets.Redraw();
}

PSDOutputParamMapUserDlgProc& DialogProcedure() {
    static PSDOutputParamMapUserDlgProc procedure;
    return procedure;
}

}  // namespace ui

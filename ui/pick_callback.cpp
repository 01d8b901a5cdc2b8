#include "ui/pick_callback.h"

#include <inode.h>

#include <new>

#include "effect/undo_step.h"
#include "plugin/parameters.h"
#include "ui/object_rows.h"

namespace ui {
namespace {

bool IsTarget(INode& node) {
    Object* object = node.EvalWorldState(GetCOREInterface()->GetTime()).obj;
    return object && object->SuperClassID() == GEOMOBJECT_CLASS_ID &&
           object->ClassID() == Class_ID(TARGET_CLASS_ID, 0);
}

}  // namespace

IParamBlock2* PSDOutputPickModeCallback::Block() const {
    return effect::PSDOutput::IsLiving(effect) ? effect->pblock : nullptr;
}

void PSDOutputPickModeCallback::Toggle() {
    if (active) {
        Leave();
    } else {
        GetCOREInterface()->SetPickMode(this);
    }
}

void PSDOutputPickModeCallback::Leave() {
    if (active) GetCOREInterface()->ClearPickMode();
}

BOOL PSDOutputPickModeCallback::HitTest(IObjParam* ip, HWND hWnd, ViewExp*, IPoint2 m, int) {
    return ip->PickNode(hWnd, m, this) != nullptr;
}

BOOL PSDOutputPickModeCallback::Pick(IObjParam*, ViewExp* vpt) {
    INode* node = vpt->GetClosestHit();
    if (!Filter(node)) return FALSE;
    try {
        ReferenceTarget* target = node;
        effect::UndoStep step;
        Block()->Append("objectList"_param, 1, &target);
        step.Accept(_M("Add Object"));
        if (onPick) onPick();
    } catch (const std::bad_alloc&) {
        // The object isn't added, or not shown yet.
    }
    return FALSE;
}

void PSDOutputPickModeCallback::EnterMode(IObjParam*) {
    SetActive(true);
}

void PSDOutputPickModeCallback::ExitMode(IObjParam*) {
    SetActive(false);
}

void PSDOutputPickModeCallback::SetActive(bool on) {
    active = on;
    try {
        if (onModeChange) onModeChange();
    } catch (const std::bad_alloc&) {
        // The button shows it with the next change.
    }
}

BOOL PSDOutputPickModeCallback::Filter(INode* node) {
    IParamBlock2* block = Block();
    return node && block && !IsTarget(*node) && !IsInObjectList(*block, node);
}

}  // namespace ui

// What the host broadcasts, brought to the effect that it is for.
#include <maxapi.h>

#include <new>

#include "effect/psd_output.h"
#include "effect/scene_sync.h"
#include "effect/selection_set_list.h"

namespace effect {

void OnEffectNotification(void* effect, NotifyInfo* info) {
    if (!info || !PSDOutput::IsLiving(effect)) return;
    auto& self = *static_cast<PSDOutput*>(effect);
    try {
        switch (info->intcode) {
            case NOTIFY_PRE_RENDER:
                self.BeforeRender();
                break;
            case NOTIFY_POST_RENDER:
                self.AfterRender();
                break;
            case NOTIFY_PRE_RENDERFRAME:
                self.BeforeFrame(static_cast<RenderGlobalContext*>(info->callParam));
                break;
            case NOTIFY_POST_RENDERFRAME:
                self.AfterFrame(static_cast<RenderGlobalContext*>(info->callParam));
                break;
            case NOTIFY_NAMED_SEL_SET_PRE_MODIFY:
                self.editingSelectionSet = true;
                break;
            case NOTIFY_NAMED_SEL_SET_POST_MODIFY:
                self.editingSelectionSet = false;
                break;
            default:
                self.AfterSelectionSetChange(*info);
                break;
        }
    } catch (const std::bad_alloc&) {
        // Without memory the frame isn't saved, and the list of selection sets stays as it is.
    }
}

void PSDOutput::AfterSelectionSetChange(const NotifyInfo& info) {
    if (!pblock) return;
    switch (info.intcode) {
        case NOTIFY_NAMED_SEL_SET_CREATED:
            if (editingSelectionSet) break;
            SelectionSetCreated(*pblock, MSTR(static_cast<const MCHAR*>(info.callParam)));
            if (!editingSelectionSet) SyncSelectionSets(*pblock);
            break;
        case NOTIFY_NAMED_SEL_SET_DELETED:
            if (!editingSelectionSet) SyncSelectionSets(*pblock);
            break;
        case NOTIFY_NAMED_SEL_SET_RENAMED:
            if (const auto* change = static_cast<const NameChange*>(info.callParam)) {
                SelectionSetRenamed(*pblock, MSTR(change->oldname), MSTR(change->newname));
            }
            break;
        default:
            break;
    }
}

}  // namespace effect

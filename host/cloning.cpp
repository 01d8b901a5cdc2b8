// Copies of objects with all that they refer to.
#include <ref.h>

#include "host/app_data_list.h"

RefTargetHandle DefaultRemapDir::FindMapping(RefTargetHandle from) {
    const auto entry = entries_.find(from);
    return entry == entries_.end() ? nullptr : entry->second;
}

void DefaultRemapDir::AddEntry(RefTargetHandle from, RefTargetHandle to) {
    entries_.emplace(from, to);
}

RefTargetHandle DefaultRemapDir::CloneRef(RefTargetHandle original) {
    if (!original) return nullptr;
    if (RefTargetHandle copy = FindMapping(original)) return copy;
    RefTargetHandle copy = original->Clone(*this);
    if (copy && !FindMapping(original)) AddEntry(original, copy);
    return copy;
}

void ReferenceTarget::BaseClone(ReferenceTarget* from, ReferenceTarget* to, RemapDir& remap) {
    if (!from || !to || from == to) return;
    AppDataList::Copy(*from, *to);
    to->ClearAFlag(~DWORD{0});
    to->SetAFlag(from->AllAFlags());
    to->livesByReferences_ = from->livesByReferences_;
    if (!remap.FindMapping(from)) remap.AddEntry(from, to);
}

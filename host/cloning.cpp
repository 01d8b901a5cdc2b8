// Copies of objects with all that they refer to.
#include <ref.h>

#include <algorithm>

#include "host/app_data_list.h"

RefTargetHandle DefaultRemapDir::FindMapping(RefTargetHandle from) {
    const auto entry = std::find_if(entries_.begin(), entries_.end(),
                                    [from](const auto& each) { return each.first == from; });
    return entry == entries_.end() ? nullptr : entry->second;
}

void DefaultRemapDir::AddEntry(RefTargetHandle from, RefTargetHandle to) {
    entries_.emplace_back(from, to);
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
    if (!remap.FindMapping(from)) remap.AddEntry(from, to);
}

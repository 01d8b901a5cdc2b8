// Data that classes keep on objects that aren't theirs.
#include <algorithm>
#include <cstring>

#include <maxheap.h>
#include <ref.h>

#include "host/app_data_list.h"

namespace {

auto HasIds(Class_ID cid, SClass_ID sid, DWORD sbid) {
    return [=](const auto& chunk) {
        return chunk->classID == cid && chunk->superClassID == sid && chunk->subID == sbid;
    };
}

}  // namespace

Animatable::~Animatable() {
    for (const auto& chunk : appData_) {
        MAX_free(chunk->data);
    }
}

void Animatable::AddAppDataChunk(Class_ID cid, SClass_ID sid, DWORD sbid, DWORD length,
                                 void* data) {
    RemoveAppDataChunk(cid, sid, sbid);
    appData_.push_back(std::make_unique<AppDataChunk>(AppDataChunk{cid, sid, sbid, length, data}));
}

AppDataChunk* Animatable::GetAppDataChunk(Class_ID cid, SClass_ID sid, DWORD sbid) {
    const auto found = std::find_if(appData_.begin(), appData_.end(), HasIds(cid, sid, sbid));
    return found == appData_.end() ? nullptr : found->get();
}

BOOL Animatable::RemoveAppDataChunk(Class_ID cid, SClass_ID sid, DWORD sbid) {
    const auto found = std::find_if(appData_.begin(), appData_.end(), HasIds(cid, sid, sbid));
    if (found == appData_.end()) {
        return FALSE;
    }
    MAX_free((*found)->data);
    appData_.erase(found);
    return TRUE;
}

void AppDataList::Copy(const Animatable& from, Animatable& to) {
    for (const auto& chunk : to.appData_) {
        MAX_free(chunk->data);
    }
    to.appData_.clear();
    for (const auto& chunk : from.appData_) {
        void* data = MAX_malloc(chunk->length);
        if (!data) return;
        std::memcpy(data, chunk->data, chunk->length);
        to.AddAppDataChunk(chunk->classID, chunk->superClassID, chunk->subID, chunk->length, data);
    }
}

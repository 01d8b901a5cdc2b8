// Data that classes keep on objects that aren't theirs.
#include <algorithm>

#include <maxheap.h>
#include <ref.h>

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

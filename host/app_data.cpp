// Data that classes keep on objects that aren't theirs.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <new>

#include <maxheap.h>
#include <ref.h>

#include "host/app_data_list.h"
#include "host/app_data_undo.h"
#include "host/saved_objects.h"

namespace {

auto HasIds(Class_ID cid, SClass_ID sid, DWORD sbid) {
    return [=](const auto& chunk) {
        return chunk->classID == cid && chunk->superClassID == sid && chunk->subID == sbid;
    };
}

// Null for no bytes.
void* HeapCopy(const void* bytes, std::size_t length) {
    if (!bytes || length == 0) return nullptr;
    void* copy = MAX_malloc(length);
    if (!copy) throw std::bad_alloc();
    return std::memcpy(copy, bytes, length);
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
    AppDataList::Append(*this, {cid, sid, sbid, length, data});
}

void AppDataList::Append(Animatable& object, const AppDataChunk& chunk) {
    host::PutAppDataUndo(object, chunk.classID, chunk.superClassID, chunk.subID);
    object.appData_.push_back(std::make_unique<AppDataChunk>(chunk));
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
    host::PutAppDataUndo(*this, cid, sid, sbid);
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
        Append(to, {chunk->classID, chunk->superClassID, chunk->subID, chunk->length,
                    HeapCopy(chunk->data, chunk->length)});
    }
}

namespace host {

std::vector<SavedAppData> SaveAppData(const Animatable& object) {
    std::vector<SavedAppData> saved;
    for (const auto& chunk : AppDataList::Of(object)) {
        const auto* bytes = static_cast<const std::uint8_t*>(chunk->data);
        const std::size_t length = bytes ? chunk->length : 0;
        saved.push_back({chunk->classID, chunk->superClassID, chunk->subID,
                         std::vector<std::uint8_t>(bytes, bytes + length)});
    }
    return saved;
}

void LoadAppData(const std::vector<SavedAppData>& saved, Animatable& object) {
    const bool hadNone = AppDataList::Of(object).empty();
    for (const SavedAppData& chunk : saved) {
        const auto length = static_cast<DWORD>(chunk.bytes.size());
        void* data = HeapCopy(chunk.bytes.data(), length);
        if (hadNone) {
            AppDataList::Append(object,
                                {chunk.owner, chunk.ownerSuperClass, chunk.subID, length, data});
        } else {
            object.AddAppDataChunk(chunk.owner, chunk.ownerSuperClass, chunk.subID, length, data);
        }
    }
}

}  // namespace host

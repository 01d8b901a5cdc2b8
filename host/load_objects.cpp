// Living objects of a file's plain values, all or none.
#include <deque>
#include <memory>
#include <stdexcept>
#include <string>
#include <unordered_set>
#include <utility>

#include "host/object_chunks.h"
#include "host/object_classes.h"
#include "host/param_block.h"
#include "host/saved_objects.h"
#include "host/target_lifetime.h"

namespace host {
namespace {

[[noreturn]] void FailObject(const SavedObject& object, const std::string& fault) {
    throw std::runtime_error("the object " + std::to_string(object.handle) + " of the class " +
                             ClassText(object.classID) + " " + fault);
}

class ObjectLoader {
  public:
    ObjectLoader(const Handles& known, const ClassDirectory& classes)
        : handles_(known), classes_(classes) {}
    ~ObjectLoader();
    ObjectLoader(const ObjectLoader&) = delete;
    ObjectLoader& operator=(const ObjectLoader&) = delete;

    void Make(const SavedObject& saved);
    // Once all are made.
    void Connect(const SavedObject& saved);
    void Load(const SavedObject& saved);
    // The objects stay.
    Handles Release();
    void TellLoaded();

  private:
    void ConnectBlock(const SavedObject& saved, int which, const SavedBlock& savedBlock);
    ParamBlock* FindBlock(ReferenceTarget& object, ParamBlockDesc2& desc, int which) const;

    Handles handles_;
    const ClassDirectory& classes_;
    // Keep the new objects until they are released.
    std::vector<std::unique_ptr<TargetReference>> made_;
    std::vector<std::unique_ptr<TargetReference>> blocks_;
    std::deque<ChunkReader> readers_;
    std::vector<PendingCallback> callbacks_;
};

// With what was made and not released. An object that others refer to goes after them.
ObjectLoader::~ObjectLoader() {
    for (const PendingCallback& pending : callbacks_) {
        delete pending.callback;
    }
    for (const auto& object : made_) {
        if (object->Get()) LiveByReferences(*object->Get());
    }
}

void ObjectLoader::Make(const SavedObject& saved) {
    ClassDesc* desc = classes_.Find(saved.superClass, saved.classID);
    ReferenceTarget* object = desc ? MakeToLoad(*desc) : nullptr;
    if (!object) FailObject(saved, "can't be made");
    // As Interface::CreateInstance makes them.
    if (saved.superClass == REF_TARGET_CLASS_ID) LiveByReferences(*object);
    made_.push_back(std::make_unique<TargetReference>(object));
    if (!handles_.Enter(saved.handle, object)) FailObject(saved, "has a handle that is taken");
}

void ObjectLoader::Connect(const SavedObject& saved) {
    ReferenceTarget& object = *handles_.Target(saved.handle);
    for (std::size_t index = 0; index < saved.references.size(); ++index) {
        const int which = static_cast<int>(index);
        if (const auto* block = std::get_if<SavedBlock>(&saved.references[index])) {
            ConnectBlock(saved, which, *block);
            continue;
        }
        // The constructor's blocks stay.
        if (which >= object.NumRefs() || dynamic_cast<IParamBlock2*>(object.GetReference(which))) {
            continue;
        }
        const Handle target = std::get<SavedReference>(saved.references[index]).target;
        if (object.ReplaceReference(which, handles_.Target(target)) != REF_SUCCEED) {
            FailObject(saved, "doesn't take the object " + std::to_string(target) +
                                  " as its reference " + std::to_string(which));
        }
    }
    LoadAppData(saved.appData, object);
}

void ObjectLoader::ConnectBlock(const SavedObject& saved, int which, const SavedBlock& savedBlock) {
    auto* classDesc = dynamic_cast<ClassDesc2*>(classes_.Find(saved.superClass, saved.classID));
    ParamBlockDesc2* desc = classDesc ? classDesc->GetParamBlockDescByID(savedBlock.id) : nullptr;
    ParamBlock* block = desc ? FindBlock(*handles_.Target(saved.handle), *desc, which) : nullptr;
    if (!block) return;
    blocks_.push_back(std::make_unique<TargetReference>(block));
    block->LoadValues(savedBlock, handles_);
}

// The block at the same place; for a place that the constructor left empty, a new block, if the
// object takes it for one of its blocks; otherwise the object's block of that id, wherever it is. A
// block that is loaded already isn't found.
ParamBlock* ObjectLoader::FindBlock(ReferenceTarget& object, ParamBlockDesc2& desc,
                                    int which) const {
    const auto fits = [&](ReferenceTarget* target) -> ParamBlock* {
        auto* block = dynamic_cast<ParamBlock*>(target);
        const bool own = block && block->GetOwner() == &object && block->GetDesc() == &desc;
        return own && !block->GetInterface(IPARAMBLOCK2POSTLOADINFO_ID) ? block : nullptr;
    };
    const bool hasPlace = which < object.NumRefs();
    ReferenceTarget* there = hasPlace ? object.GetReference(which) : nullptr;
    if (ParamBlock* block = fits(there)) return block;
    if (hasPlace && !there) {
        auto fresh = std::make_unique<ParamBlock>(desc, nullptr);
        if (object.ReplaceReference(which, fresh.get()) == REF_SUCCEED && fits(fresh.get())) {
            return fresh.release();
        }
    }
    return fits(object.GetParamBlockByID(desc.ID));
}

void ObjectLoader::Load(const SavedObject& saved) {
    ChunkReader& reader = readers_.emplace_back(saved.chunks, callbacks_);
    if (handles_.Target(saved.handle)->Load(&reader) != IO_OK)
        FailObject(saved, "couldn't load itself");
}

Handles ObjectLoader::Release() {
    const TargetLifetime::Pause pause;
    made_.clear();
    return std::move(handles_);
}

// A callback may register others.
void ObjectLoader::TellLoaded() {
    for (std::size_t next = 0; next < callbacks_.size(); ++next) {
        const PendingCallback pending = std::exchange(callbacks_[next], {});
        pending.callback->proc(pending.from);
    }
    for (const auto& block : blocks_) {
        if (block->Get()) static_cast<ParamBlock*>(block->Get())->LoadIsOver();
    }
}

}  // namespace

void LoadObjects(const std::vector<SavedObject>& objects, Handles& handles,
                 const ClassDirectory& classes) {
    ObjectLoader loader(handles, classes);
    for (const SavedObject& object : objects) {
        loader.Make(object);
    }
    for (const SavedObject& object : objects) {
        loader.Connect(object);
    }
    for (const SavedObject& object : objects) {
        loader.Load(object);
    }
    handles = loader.Release();
    loader.TellLoaded();
}

void DestroyUnreferred(const std::vector<SavedObject>& objects, const std::vector<Handle>& kept,
                       const Handles& handles) {
    const std::unordered_set<Handle> staying(kept.begin(), kept.end());
    std::vector<std::unique_ptr<TargetReference>> going;
    for (const SavedObject& object : objects) {
        ReferenceTarget* target = handles.Target(object.handle);
        if (!target || staying.contains(object.handle)) continue;
        LiveByReferences(*target);
        going.push_back(std::make_unique<TargetReference>(target));
    }
}

}  // namespace host

#include "host/app_data_undo.h"

#include <cstdint>
#include <cstring>
#include <optional>
#include <utility>
#include <vector>

#include <hold.h>
#include <maxheap.h>

#include "host/target_reference.h"

namespace host {
namespace {

class AppDataRestore final : public RestoreObj {
  public:
    AppDataRestore(ReferenceTarget& object, Class_ID owner, SClass_ID ownerSuperClass, DWORD subID)
        : object_(&object),
          owner_(owner),
          ownerSuperClass_(ownerSuperClass),
          subID_(subID),
          other_(Present(object)) {}

    void Restore(int /*isUndo*/) override { Exchange(); }
    void Redo() override { Exchange(); }

  private:
    // Nothing when there is no chunk.
    using Bytes = std::optional<std::vector<std::uint8_t>>;

    Bytes Present(ReferenceTarget& object) const {
        const AppDataChunk* chunk = object.GetAppDataChunk(owner_, ownerSuperClass_, subID_);
        if (!chunk) return std::nullopt;
        const auto* bytes = static_cast<const std::uint8_t*>(chunk->data);
        return std::vector<std::uint8_t>(bytes, bytes + (bytes ? chunk->length : 0));
    }

    void Exchange() {
        ReferenceTarget* object = object_.Get();
        if (!object) return;
        Bytes present = Present(*object);
        if (!other_) {
            object->RemoveAppDataChunk(owner_, ownerSuperClass_, subID_);
        } else {
            void* data = other_->empty() ? nullptr : MAX_malloc(other_->size());
            if (!data && !other_->empty()) return;
            if (data) std::memcpy(data, other_->data(), other_->size());
            object->AddAppDataChunk(owner_, ownerSuperClass_, subID_,
                                    static_cast<DWORD>(other_->size()), data);
        }
        other_ = std::move(present);
    }

    TargetReference object_;
    Class_ID owner_;
    SClass_ID ownerSuperClass_;
    DWORD subID_;
    Bytes other_;
};

}  // namespace

void PutAppDataUndo(Animatable& object, Class_ID owner, SClass_ID ownerSuperClass, DWORD subID) {
    if (!theHold.Holding()) return;
    if (auto* target = dynamic_cast<ReferenceTarget*>(&object)) {
        theHold.Put(new AppDataRestore(*target, owner, ownerSuperClass, subID));
    }
}

}  // namespace host

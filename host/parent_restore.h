// Takes back that a node or a layer came to hang from another one.
#pragma once

#include <cstddef>
#include <memory>

#include <hold.h>

#include "host/scene_tree.h"
#include "host/target_reference.h"

namespace host {

// `T` is a friend of this and has HangBelow.
template <class T>
class ParentRestore final : public RestoreObj {
  public:
    explicit ParentRestore(T& object) : object_(&object) { Note(object); }

    void Restore(int /*isUndo*/) override { Exchange(); }
    void Redo() override { Exchange(); }

  private:
    void Note(const T& object) {
        parent_ = std::make_unique<TargetReference>(object.parent_);
        index_ = object.parent_ ? IndexOf<T>(object.parent_->children_, &object) : 0;
    }
    void Exchange() {
        auto* object = static_cast<T*>(object_.Get());
        auto* parent = static_cast<T*>(parent_->Get());
        if (!object || !object->inScene_ || !object->MayHangBelow(parent)) return;
        const std::size_t index = index_;
        Note(*object);
        object->HangBelow(parent, index);
    }

    TargetReference object_;
    std::unique_ptr<TargetReference> parent_;
    std::size_t index_ = 0;
};

}  // namespace host

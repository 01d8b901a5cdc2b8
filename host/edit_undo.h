// What edits of the scene leave in the hold: a field that changed, or something that came or went.
#pragma once

#include <memory>
#include <utility>

#include <hold.h>

#include "host/target_reference.h"

namespace host {

// A field of a target that is put back by its setter, and so is told as any other change of it.
template <class Target, class Value, class Argument>
class FieldRestore final : public RestoreObj {
  public:
    using Setter = void (Target::*)(Argument);

    FieldRestore(Target& target, Value Target::*field, Setter setter)
        : target_(&target), field_(field), setter_(setter), other_(target.*field) {}

    void Restore(int /*isUndo*/) override { Exchange(); }
    void Redo() override { Exchange(); }

  private:
    void Exchange() {
        auto* target = static_cast<Target*>(target_.Get());
        if (!target) return;
        Value present = target->*field_;
        (target->*setter_)(other_);
        other_ = std::move(present);
    }

    TargetReference target_;
    Value Target::*field_;
    Setter setter_;
    Value other_;
};

// Before the field is set.
template <class Target, class Value, class Argument>
void PutFieldUndo(Target& target, Value Target::*field, void (Target::*setter)(Argument)) {
    if (theHold.Holding()) theHold.Put(new FieldRestore(target, field, setter));
}

// A target of the scene, which this owns while it is out of it.
class Presence {
  public:
    Presence() = default;
    virtual ~Presence() = default;
    Presence(const Presence&) = delete;
    Presence& operator=(const Presence&) = delete;

    // Out of the scene, or back to its place; those who refer to it aren't told yet. Both do
    // nothing for one that is out, or in, already.
    virtual void Leave() = 0;
    virtual void Enter() = 0;
    // After it left and those who referred to it have dropped it.
    virtual void Left() {}
    // Null when it was destroyed, which may happen while it is in the scene.
    virtual ReferenceTarget* Target() const = 0;
};

// After `what` came into the scene: an undo takes it out.
void PutComing(std::shared_ptr<Presence> what);

// Takes `what` out of the scene and detaches it. It is destroyed with `what`, which an undo step
// keeps when `recorded` is set and theHold holds.
void Go(const std::shared_ptr<Presence>& what, bool recorded);

}  // namespace host

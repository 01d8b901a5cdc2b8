// How long targets live: those that nobody owns live as long as someone refers to them, and those
// that leave the scene as long as an undo step can bring them back.
#pragma once

#include <ref.h>

class TargetLifetime {
  public:
    static void LiveByReferences(ReferenceTarget& target) { target.livesByReferences_ = true; }
    static void Detach(ReferenceTarget& target);

    // While one of these lives, targets stay though their last reference is dropped.
    class Pause {
      public:
        Pause() { ++pauses; }
        ~Pause() { --pauses; }
        Pause(const Pause&) = delete;
        Pause& operator=(const Pause&) = delete;
    };
    static bool IsPaused() { return pauses > 0; }

  private:
    static inline int pauses = 0;
};

namespace host {

// From now on the target is destroyed, with DeleteThis, when a reference to it is dropped that was
// the last one.
inline void LiveByReferences(ReferenceTarget& target) {
    TargetLifetime::LiveByReferences(target);
}

// Tells all who refer to the target that it goes (REFMSG_TARGET_DELETED), global references after
// them, and drops their references. The target, which must not live by references, stays its
// caller's, and so do the references of undo steps. While theHold holds, what is dropped comes back
// with an undo: parameter blocks look after their own, and for other makers that are targets the
// references are put back by their numbers.
inline void Detach(ReferenceTarget& target) {
    TargetLifetime::Detach(target);
}

}  // namespace host

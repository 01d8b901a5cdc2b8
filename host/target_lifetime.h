// Targets that nobody owns: they live as long as someone refers to them.
#pragma once

#include <ref.h>

class TargetLifetime {
  public:
    static void LiveByReferences(ReferenceTarget& target) { target.livesByReferences_ = true; }

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

}  // namespace host

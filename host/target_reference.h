// A reference to a target from something that is no object of the scene, such as an undo step.
#pragma once

#include <ref.h>

namespace host {

// Null once the target is destroyed. It stays when the target only leaves the scene (Detach), so
// that what comes back with an undo is found again.
class TargetReference final : public ReferenceMaker {
  public:
    explicit TargetReference(ReferenceTarget* target = nullptr) { ReplaceReference(0, target); }
    ~TargetReference() override { ReplaceReference(0, nullptr); }

    ReferenceTarget* Get() const { return target_; }

    int NumRefs() override { return 1; }
    RefTargetHandle GetReference(int) override { return target_; }
    RefResult NotifyRefChanged(const Interval&, RefTargetHandle, PartID&, RefMessage,
                               BOOL) override {
        return REF_SUCCEED;
    }

  private:
    void SetReference(int, RefTargetHandle target) override { target_ = target; }

    ReferenceTarget* target_ = nullptr;
};

}  // namespace host

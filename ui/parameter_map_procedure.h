// What the effect's rollups do beyond what the host binds by itself.
#pragma once

#include <ref.h>

namespace ui {

// While the rollup of the render elements is open this hears of every change in the scene, maybe
// deep inside the host, and so only notes that an element changed.
class PSDOutputParamMapUserDlgProc : public GlobalReferenceMaker {
  public:
    // One that isn't on the heap.
    void DeleteThis() override {}

    RefResult NotifyRefChanged(const Interval& changeInt, RefTargetHandle hTarget, PartID& partID,
                               RefMessage message, BOOL propagate) override;

    // The rollup of the render elements, map 1. It must be closed before this is destroyed.
    void ElementsOpened();
    void ElementsClosed();

    // Whether a render element changed since the last call.
    bool TakeElementsDirty();

  private:
    bool elementsDirty = false;
};

// The one instance.
PSDOutputParamMapUserDlgProc& DialogProcedure();

}  // namespace ui

// A step that the user can take back, in one scope: without an Accept, as when memory runs out in
// the middle, what was done in it is taken back at its end.
#pragma once

#include <hold.h>

namespace effect {

class UndoStep {
  public:
    UndoStep() { theHold.Begin(); }
    ~UndoStep() {
        if (open) theHold.Cancel();
    }
    UndoStep(const UndoStep&) = delete;
    UndoStep& operator=(const UndoStep&) = delete;

    void Accept(const MCHAR* name) {
        open = false;
        theHold.Accept(name);
    }

  private:
    bool open = true;
};

}  // namespace effect

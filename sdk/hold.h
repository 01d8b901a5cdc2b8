// Undo: between Begin and Accept every change leaves an object that can take it back.
#pragma once

#include "maxtypes.h"

class RestoreObj {
  public:
    virtual ~RestoreObj() = default;
    // Takes the change back. `isUndo` is 0 when the hold is cancelled.
    virtual void Restore(int isUndo) = 0;
    virtual void Redo() = 0;
};

class Hold {
  public:
    virtual void Begin() = 0;
    // Ends the hold under the name that the user sees; the changes become one step.
    virtual void Accept(const MCHAR* name) = 0;
    // Ends the hold and takes its changes back.
    virtual void Cancel() = 0;
    virtual int Holding() = 0;
    // Changes are being taken back or done again.
    virtual int RestoreOrRedoing() = 0;
    // Takes ownership. Only while holding.
    virtual void Put(RestoreObj* change) = 0;

  protected:
    ~Hold() = default;
};

extern Hold& theHold;

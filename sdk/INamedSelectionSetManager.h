// The scene's named selection sets.
#pragma once

#include "inode.h"
#include "strclass.h"

class INamedSelectionSetManager {
  public:
    // The host's own; lives as long as the process.
    static INamedSelectionSetManager* GetInstance();

    virtual int GetNumNamedSelSets() = 0;
    // False, with `name` as it was, for an index out of range.
    virtual bool GetNamedSelSetName(int setIndex, MSTR& name) = 0;
    virtual int GetNamedSelSetItemCount(int setIndex) = 0;
    // Null for an index out of range.
    virtual INode* GetNamedSelSetItem(int setIndex, int index) = 0;

  protected:
    ~INamedSelectionSetManager() = default;
};

// The scene's layers.
#pragma once

#include "ilayer.h"

class ILayerManager {
  public:
    // All layers, those inside others too, in a fixed order.
    virtual int GetLayerCount() = 0;
    // Null for an index out of range.
    virtual ILayer* GetLayer(int index) = 0;

  protected:
    ~ILayerManager() = default;
};

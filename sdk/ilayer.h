// A layer of the scene: sorts nodes, and other layers, for the user.
#pragma once

#include "ilayerproperties.h"
#include "ref.h"
#include "strclass.h"

// GetInterface of ILayer gives its ILayerProperties under LAYERPROPERTIES_INTERFACE.
class ILayer : public ReferenceTarget {
  public:
    virtual MSTR GetName() const = 0;
    // `checkParents`: hidden layers hide those in them.
    virtual bool IsHidden(bool checkParents = false) const = 0;
    // Null for a layer at the top.
    virtual ILayer* GetParentLayer() const = 0;
    virtual int GetNumOfChildLayers() const = 0;
    virtual ILayer* GetChildLayer(int index) const = 0;
};

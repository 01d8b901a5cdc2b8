// What a scene layer holds.
#pragma once

#include "plugapi.h"
#include "tab.h"

class INode;

class ILayerProperties : public BaseInterface {
  public:
    // Valid until the name changes.
    virtual const MCHAR* getName() = 0;
    // Null for a layer at the top.
    virtual ILayerProperties* getParent() = 0;
    virtual int getNumChildren() = 0;
    // Null for an index out of range.
    virtual ILayerProperties* getChild(int index) = 0;
    // Fills `nodes` with the nodes of this layer, without those of its child layers.
    virtual void Nodes(Tab<INode*>& nodes) = 0;
};

constexpr Interface_ID LAYERPROPERTIES_INTERFACE{0x7c0e3d25, 0x5a1f6b48};

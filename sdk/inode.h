// A node of the scene: an object, or the head of a group of objects.
#pragma once

#include "ref.h"

class INode : public ReferenceTarget {
  public:
    // Never null; valid until the name changes.
    virtual const MCHAR* GetName() = 0;
    // The node's number during a render; 65535 when it isn't in it.
    virtual USHORT GetRenderID() = 0;
    // Null for a node of the scene's root.
    virtual INode* GetParentNode() = 0;
    virtual int NumberOfChildren() = 0;
    // Null for an index out of range.
    virtual INode* GetChildNode(int index) = 0;
    virtual BOOL IsGroupHead() = 0;
    virtual BOOL IsGroupMember() = 0;
    // Hidden by itself or by its scene layer.
    virtual BOOL IsNodeHidden(BOOL hflagsOverride = FALSE) = 0;
};

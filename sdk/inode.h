// A node of the scene: an object, or the head of a group of objects.
#pragma once

#include "matrix3.h"
#include "object.h"
#include "strclass.h"

class INode : public ReferenceTarget {
  public:
    // Never null; valid until the name changes.
    virtual const MCHAR* GetName() = 0;
    // The node's number during a render; 65535 when it isn't in it.
    virtual USHORT GetRenderID() = 0;
    // Of a node that hangs from no other it is the scene's root, whose own is null.
    virtual INode* GetParentNode() = 0;
    // The node that all others hang from. It shows nothing.
    virtual BOOL IsRootNode() = 0;
    virtual int NumberOfChildren() = 0;
    // Null for an index out of range.
    virtual INode* GetChildNode(int index) = 0;
    virtual BOOL IsGroupHead() = 0;
    virtual BOOL IsGroupMember() = 0;
    // Hidden by itself or by its scene layer.
    virtual BOOL IsNodeHidden(BOOL hflagsOverride = FALSE) = 0;
    // What the node shows at a time; valid until the scene changes.
    virtual const ObjectState& EvalWorldState(TimeValue time, BOOL evalHidden = TRUE) = 0;
    // From the node's space to the world's, which has z up.
    virtual Matrix3 GetNodeTM(TimeValue t, Interval* valid = nullptr) = 0;
    // A user property, by its name without regard to case. "true", "yes", "on" and whole
    // numbers but 0 are true. False, with `b` as it was, when the node has none of that name.
    virtual BOOL GetUserPropBool(const MSTR& key, BOOL& b) = 0;
};

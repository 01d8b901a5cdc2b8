// Objects, and the references between them by which a change is told to all who depend on it.
#pragma once

#include <memory>
#include <vector>

#include "interval.h"
#include "plugapi.h"

class IParamBlock2;
class ReferenceMaker;
class ReferenceTarget;

using RefTargetHandle = ReferenceTarget*;
using RefMessage = UINT;
using PartID = std::uintptr_t;
using BlockID = short;

constexpr RefMessage REFMSG_CHANGE = 0x50;
// Sent by the host to the makers of references to a target that is about to be destroyed; the host
// then sets their references to null.
constexpr RefMessage REFMSG_TARGET_DELETED = 0x53;
constexpr PartID PART_ALL = 0xffffffff;

enum RefResult { REF_FAIL, REF_SUCCEED, REF_STOP };

// Data that a class other than the object's own keeps on the object; saved with it.
struct AppDataChunk {
    Class_ID classID;
    SClass_ID superClassID;
    DWORD subID;
    // Bytes.
    DWORD length;
    // Of the host's heap (maxheap.h).
    void* data;
};

class Animatable {
  public:
    Animatable() = default;
    Animatable(const Animatable&) = delete;
    Animatable& operator=(const Animatable&) = delete;

    virtual Class_ID ClassID() { return {}; }
    virtual SClass_ID SuperClassID() { return 0; }
    // The one way to destroy an object of the host's scene.
    virtual void DeleteThis() { delete this; }

    virtual int NumParamBlocks() { return 0; }
    // Null for a number out of range.
    virtual IParamBlock2* GetParamBlock(int) { return nullptr; }
    virtual IParamBlock2* GetParamBlockByID(BlockID) { return nullptr; }

    // Null for an interface that the object doesn't have.
    virtual void* GetInterface(ULONG) { return nullptr; }
    virtual BaseInterface* GetInterface(Interface_ID) { return nullptr; }

    // Chunks are told apart by the three ids. `data` (of the host's heap) then belongs to the
    // object. Takes the place of a chunk of the same ids.
    void AddAppDataChunk(Class_ID cid, SClass_ID sid, DWORD sbid, DWORD length, void* data);
    // Null when there is none. Valid until it is removed.
    AppDataChunk* GetAppDataChunk(Class_ID cid, SClass_ID sid, DWORD sbid);
    // FALSE when there is none.
    BOOL RemoveAppDataChunk(Class_ID cid, SClass_ID sid, DWORD sbid);

    void SetAFlag(DWORD mask) { flags_ |= mask; }
    void ClearAFlag(DWORD mask) { flags_ &= ~mask; }
    bool TestAFlag(DWORD mask) const { return (flags_ & mask) != 0; }

  protected:
    virtual ~Animatable();

  private:
    DWORD flags_ = 0;
    std::vector<std::unique_ptr<AppDataChunk>> appData_;
};

class ReferenceMaker : public Animatable {
  public:
    virtual int NumRefs() { return 0; }
    virtual RefTargetHandle GetReference(int) { return nullptr; }

    // A target that this object refers to has changed, or a target of its own targets has.
    virtual RefResult NotifyRefChanged(const Interval& changeInt, RefTargetHandle hTarget,
                                       PartID& partID, RefMessage message, BOOL propagate) = 0;

    // Makes reference number `which` point at `target` (null drops it), and keeps the target's
    // list of dependents. The target's life stays with its owner; one without an owner, as
    // Interface::CreateInstance makes them, is destroyed with its last dependent's reference. Undo
    // steps that may bring it back are dependents.
    RefResult ReplaceReference(int which, RefTargetHandle target);
    RefResult DeleteReference(int which) { return ReplaceReference(which, nullptr); }
    RefResult DeleteAllRefsFromMe();

  protected:
    // Only stores the pointer: called by ReplaceReference alone.
    virtual void SetReference(int, RefTargetHandle) {}
};

class ReferenceTarget : public ReferenceMaker {
  public:
    // Tells all who refer to this object, directly or through others, that it changed.
    void NotifyDependents(const Interval& changeInt, PartID partID, RefMessage message);
    // Tells the makers of references to this object that it goes, and clears those references.
    RefResult DeleteAllRefsToMe();

  protected:
    ~ReferenceTarget() override { DeleteAllRefsToMe(); }

  private:
    friend class ReferenceMaker;
    friend class TargetLifetime;
    // Nobody owns the target: it goes when the last reference to it is dropped.
    bool livesByReferences_ = false;
    // One entry a reference; a maker with two references to this target stands here twice.
    std::vector<ReferenceMaker*> dependents_;
};

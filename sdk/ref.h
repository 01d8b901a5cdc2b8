// Objects, and the references between them by which a change is told to all who depend on it.
#pragma once

#include <memory>
#include <unordered_map>
#include <vector>

#include "interval.h"
#include "ioapi.h"
#include "maxheap.h"
#include "plugapi.h"
#include "strclass.h"

class AssetEnumCallback;
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
// A render element's own list of properties changed.
constexpr RefMessage REFMSG_ELEMENT_PROPERTIES_CHANGED = 0x103;
constexpr PartID PART_ALL = 0xffffffff;

// Flag of a target: it stays though its last reference is dropped.
constexpr DWORD A_LOCK_TARGET = 0x08000000;

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

class Animatable : public MaxHeapOperators {
  public:
    Animatable() = default;
    Animatable(const Animatable&) = delete;
    Animatable& operator=(const Animatable&) = delete;

    virtual Class_ID ClassID() { return {}; }
    virtual SClass_ID SuperClassID() { return 0; }
    // The name of the class as the user reads it.
    virtual void GetClassName(MSTR& s) { s = MSTR(); }
    // The one way to destroy an object of the host's scene.
    virtual void DeleteThis() { delete this; }

    virtual int NumParamBlocks() { return 0; }
    // Null for a number out of range.
    virtual IParamBlock2* GetParamBlock(int) { return nullptr; }
    virtual IParamBlock2* GetParamBlockByID(BlockID) { return nullptr; }

    // What the object shows of itself in a tree of tracks. Null for a number out of range.
    virtual int NumSubs() { return 0; }
    virtual Animatable* SubAnim(int) { return nullptr; }
    virtual MSTR SubAnimName(int) { return {}; }

    // Tells the callback every file that the object needs or makes.
    virtual void EnumAuxFiles(AssetEnumCallback&, DWORD /*flags*/) {}

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
    DWORD AllAFlags() const { return flags_; }

  protected:
    virtual ~Animatable();

  private:
    friend class AppDataList;
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

    // What the object keeps in a scene file besides its references and AppData, which the host
    // saves by itself. Anything but IO_OK makes the host give up the file.
    virtual IOResult Save(ISave*) { return IO_OK; }
    // After the object was made and has its references. Whoever has to wait for the whole file
    // registers a callback.
    virtual IOResult Load(ILoad*) { return IO_OK; }

  protected:
    // Only stores the pointer: called by ReplaceReference alone.
    virtual void SetReference(int, RefTargetHandle) {}
};

// Whom a copy of objects, and of all that they refer to, has copied so far.
class RemapDir {
  public:
    // Null for what has no copy yet.
    virtual RefTargetHandle FindMapping(RefTargetHandle from) = 0;
    virtual void AddEntry(RefTargetHandle from, RefTargetHandle to) = 0;
    // The copy of `original`, made by its Clone when there is none yet; null for null.
    virtual RefTargetHandle CloneRef(RefTargetHandle original) = 0;

  protected:
    ~RemapDir() = default;
};

class DefaultRemapDir final : public RemapDir {
  public:
    RefTargetHandle FindMapping(RefTargetHandle from) override;
    void AddEntry(RefTargetHandle from, RefTargetHandle to) override;
    RefTargetHandle CloneRef(RefTargetHandle original) override;

  private:
    std::unordered_map<RefTargetHandle, RefTargetHandle> entries_;
};

class ReferenceTarget : public ReferenceMaker {
  public:
    // A copy of the object; null for what can't be copied. Objects of the scene itself (nodes,
    // scene layers, render elements) are their own copies, so that a copied effect stands for the
    // same ones. Overrides end with BaseClone.
    virtual RefTargetHandle Clone(RemapDir&) { return nullptr; }
    // Copies what the base classes hold: AppData and flags. The copy of a target that has no owner
    // (Interface::CreateInstance) has none either.
    void BaseClone(ReferenceTarget* from, ReferenceTarget* to, RemapDir& remap);

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

// A maker that hears of messages as if it referred to every target of the scene: from the target
// that sends one, dependents or not, then from each that the message comes through on its way up.
// Of a target that is about to be destroyed it hears REFMSG_TARGET_DELETED, when nothing but the
// base classes is left of it. Its handler may run deep inside the host, so it only takes a note.
class GlobalReferenceMaker : public ReferenceMaker {};

// FALSE for one that is registered already, or isn't. One that is destroyed must have been
// unregistered.
BOOL RegisterGlobalReference(GlobalReferenceMaker* maker);
BOOL UnRegisterGlobalReference(GlobalReferenceMaker* maker);

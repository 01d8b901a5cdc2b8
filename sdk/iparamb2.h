// Parameter blocks: the settings of an object, described once a class and stored once an object.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "AssetUser.h"
#include "inode.h"
#include "interval.h"
#include "iparamb2_types.h"
#include "plugapi.h"
#include "ref.h"
#include "strclass.h"

class ClassDesc2;
class IParamBlock2;
class IParamMap2;
class IRendParams;
class ParamBlockDesc2;
class ParamMap2UserDlgProc;
class SFXParamDlg;
class SpecialFX;
template <class T>
class Tab;

// One value on its way through an accessor. The parameter's type tells which field holds it.
struct PB2Value {
    union {
        int i = 0;
        float f;
        // NUL-terminated, of the host's heap (maxheap.h), owned by the value; may be null.
        MCHAR* s;
        ReferenceTarget* r;
    };
};

using CompareFnc = int (*)(const void*, const void*);

enum tab_changes : int {
    tab_insert = 0,
    tab_append = 1,
    tab_delete = 2,
    tab_ref_deleted = 3,
    tab_setcount = 4,
    tab_sort = 5,
};

// Sees a parameter's values on their way in and out of a block, and may change them.
class PBAccessor {
  public:
    virtual ~PBAccessor() = default;
    // `v` is a copy of the stored value.
    virtual void Get(PB2Value& /*v*/, ReferenceMaker* /*owner*/, ParamID /*id*/, int /*tabIndex*/,
                     TimeValue /*t*/, Interval& /*valid*/) {}
    // Before `v` is clamped and stored.
    virtual void Set(PB2Value& /*v*/, ReferenceMaker* /*owner*/, ParamID /*id*/, int /*tabIndex*/,
                     TimeValue /*t*/) {}
    // After `count` entries of a table changed from `tabIndex` on. With tab_ref_deleted the entry
    // is null already.
    virtual void TabChanged(tab_changes /*changeCode*/, Tab<PB2Value>* /*tab*/,
                            ReferenceMaker* /*owner*/, ParamID /*id*/, int /*tabIndex*/,
                            int /*count*/) {}
};

// The control that a map binds to a parameter.
struct ParamControl {
    MapID map = 0;
    ControlType2 type = TYPE_SINGLECHEKBOX;
    // Of the dialog: a radio has one a choice, a spinner its edit field, then its arrows, a list of
    // nodes itself, then its buttons (0 for none).
    std::vector<int> ids;
    // Of a radio and a combo: one a choice.
    std::vector<int> values;
    // Of a combo: the library's strings, one a choice.
    std::vector<StringResID> texts;
    // Of a spinner: what a click of an arrow adds.
    float step = 0.0F;
};

// One parameter's definition.
struct ParamDef {
    ParamID ID = 0;
    // Empty keeps the parameter out of scripts.
    MSTR int_name;
    ParamType2 type = TYPE_INT;
    int flags = 0;
    // Entries of a table at first.
    int tab_size = 0;
    PB2Value def{};
    // Text default; the definition owns it, `def.s` isn't used.
    MSTR def_text;
    bool has_range = false;
    PB2Value range_low{};
    PB2Value range_high{};
    PBAccessor* accessor = nullptr;
    int assetTypeID = 0;
    // Where a file dialog for this parameter starts; not owned, null for the host's own choice.
    const MCHAR* init_file = nullptr;
    // P_OWNERS_REF: the owner's reference number.
    int refno = -1;
    // Nothing for a parameter without a control.
    std::optional<ParamControl> control;
    // Parameters whose controls are disabled while this one is off. Some may not be there.
    std::vector<ParamID> enables;
};

class ParamBlockDesc2 {
  public:
    // After `flags`, in this order and only for the flags that are set:
    //   P_VERSION: int version; P_AUTO_CONSTRUCT: int, the owner's reference number;
    //   P_AUTO_UI with P_MULTIMAP: int count, and for each map int id, int dialog template,
    //   int title string, int test flags, int rollup flags (1 starts closed),
    //   ParamMap2UserDlgProc*; then p_end.
    // Adds itself to `cd`, which must outlive it.
    ParamBlockDesc2(BlockID id, const MCHAR* int_name, StringResID local_name, ClassDesc2* cd,
                    int flags, ...);

    // const MCHAR* internal name, int ParamType2, [int table size, for tables], int flags,
    // int local name string, then tags with their values up to p_end.
    void AddParam(int id, ...);
    // One tag with its values for a parameter that is there, then p_end.
    void ParamOption(int id, int option_tag, ...);

    USHORT Count() const { return static_cast<USHORT>(paramdefs_.size()); }
    // The version that a block of this descriptor is saved with.
    DWORD Version() const { return version_; }
    // -1 for an id that isn't there.
    int IDtoIndex(int id) const;
    ParamDef& GetParamDef(int id) { return paramdefs_[static_cast<std::size_t>(IDtoIndex(id))]; }
    const ParamDef& GetParamDefByIndex(int index) const {
        return paramdefs_[static_cast<std::size_t>(index)];
    }

    struct map_spec {
        MapID map_id = 0;
        int dlg_template = 0;
        StringResID title = 0;
        int test_flags = 0;
        int rollup_flags = 0;
        ParamMap2UserDlgProc* dlgProc = nullptr;
    };

    // What a map's dialog does beyond its bound controls; null for a map that isn't there. Not
    // owned.
    ParamMap2UserDlgProc* GetUserDlgProc(MapID map) const;
    bool SetUserDlgProc(MapID map, ParamMap2UserDlgProc* procedure);

    BlockID ID;
    MSTR int_name;
    ClassDesc2* cd;
    USHORT flags;
    int ref_no = -1;
    std::vector<map_spec> map_specs;

  private:
    std::vector<ParamDef> paramdefs_;
    DWORD version_ = 0;
};

// The values of one object. A reference target of its owner: a change is told to the owner through
// NotifyRefChanged with REFMSG_CHANGE. Calls for an id or table index that isn't there fail: reads
// give 0 or null, writes FALSE. Values out of a parameter's range are clamped to it. Targets are
// references of the block: one without an owner (Interface::CreateInstance) that leaves its last
// parameter is destroyed, unless undo can bring it back.
class IParamBlock2 : public ReferenceTarget {
  public:
    virtual ParamBlockDesc2* GetDesc() = 0;
    virtual ReferenceMaker* GetOwner() = 0;

    // Integers and booleans.
    virtual int GetInt(ParamID id, TimeValue t = 0, int tabIndex = 0) = 0;
    virtual float GetFloat(ParamID id, TimeValue t = 0, int tabIndex = 0) = 0;
    // Never null for a text parameter that is there; valid until the parameter is read or set
    // again.
    virtual const MCHAR* GetStr(ParamID id, TimeValue t = 0, int tabIndex = 0) = 0;
    virtual ReferenceTarget* GetReferenceTarget(ParamID id, TimeValue t = 0, int tabIndex = 0) = 0;
    virtual INode* GetINode(ParamID id, TimeValue t = 0, int tabIndex = 0) = 0;
    // The file that a FILENAME names, and its kind.
    virtual MaxSDK::AssetManagement::AssetUser GetAssetUser(ParamID id, TimeValue t = 0,
                                                            int tabIndex = 0) = 0;

    virtual BOOL SetValue(ParamID id, TimeValue t, int v, int tabIndex = 0) = 0;
    virtual BOOL SetValue(ParamID id, TimeValue t, float v, int tabIndex = 0) = 0;
    virtual BOOL SetValue(ParamID id, TimeValue t, const MCHAR* v, int tabIndex = 0) = 0;
    virtual BOOL SetValue(ParamID id, TimeValue t, ReferenceTarget* v, int tabIndex = 0) = 0;
    virtual BOOL SetValue(ParamID id, TimeValue t, const MaxSDK::AssetManagement::AssetUser& v,
                          int tabIndex = 0) = 0;

    // Tables. Entries that SetCount adds hold 0, the empty text or null.
    virtual int Count(ParamID id) = 0;
    virtual void SetCount(ParamID id, int count) = 0;
    // The index of the first new entry, or -1.
    virtual int Append(ParamID id, int count, ReferenceTarget** values, int allocN = 0) = 0;
    virtual int Append(ParamID id, int count, const MCHAR** values, int allocN = 0) = 0;
    // The number of entries left, or -1.
    virtual int Delete(ParamID id, int start, int num) = 0;
    // `compare` gets pointers to two entries of a table of targets (ReferenceTarget**) and answers
    // like strcmp. Stable.
    virtual void Sort(ParamID id, CompareFnc compare) = 0;

    // Inside NotifyRefChanged: the parameter that changed, and of a table the index of the entry
    // that did, or -1 when it wasn't one entry alone. -1 for both outside.
    virtual ParamID LastNotifyParamID(int& tabIndex) = 0;

    // While they are off a change is told to nobody. On at first; calls aren't counted.
    virtual void EnableNotifications(BOOL onOff) = 0;
};

// A block has it from when it was read from a scene file until the file's post-load callbacks are
// through.
class IParamBlock2PostLoadInfo : public BaseInterface {
  public:
    // The version of the descriptor that the file's block was saved with.
    virtual DWORD GetVersion() = 0;
};

constexpr Interface_ID IPARAMBLOCK2POSTLOADINFO_ID{0x6c7b290a, 0x7c56423c};

class ClassDesc2 : public ClassDesc {
  public:
    int NumParamBlockDescs() const { return static_cast<int>(descriptors_.size()); }
    // Null for a number or id that isn't there.
    ParamBlockDesc2* GetParamBlockDesc(int index) const;
    ParamBlockDesc2* GetParamBlockDescByID(BlockID id) const;
    void AddParamBlockDesc(ParamBlockDesc2* desc) { descriptors_.push_back(desc); }
    // Makes a block for every P_AUTO_CONSTRUCT descriptor, with its defaults, and sets it as the
    // owner's reference of the descriptor's number. The owner's references own the blocks.
    void MakeAutoParamBlocks(ReferenceMaker* owner);
    // The controls of a parameter show what they must show anew.
    void InvalidateUI(ParamBlockDesc2* desc, ParamID id, int tabIndex = -1);

    // The rollups of all P_AUTO_UI blocks of `effect`, in the order of their maps. Null where there
    // are no windows.
    SFXParamDlg* CreateParamDialogs(IRendParams* ip, SpecialFX* effect);
    // Rollups that the user left open or closed are so again.
    void RestoreRolloutState();
    // Of the rollups that are open; null for one that isn't.
    IParamMap2* GetParamMap(const ParamBlockDesc2* desc, MapID map) const;

  private:
    std::vector<ParamBlockDesc2*> descriptors_;
};

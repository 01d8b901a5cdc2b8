// The parameter block engine: the values of one object, described by its ParamBlockDesc2.
#pragma once

#include <memory>
#include <optional>
#include <variant>
#include <vector>

#include <iparamb2.h>

#include "host/target_reference.h"

namespace host {

class Handles;
struct SavedBlock;
struct SavedParameter;

// Made by ClassDesc2::MakeAutoParamBlocks, or by hand and then set as a reference of its owner.
// Lives as long as its owner refers to it: the block is destroyed when the owner's reference is
// dropped or replaced. A block that was made without an owner, as a copy is, gets the first maker
// of a reference to it that has it among its own blocks (GetParamBlock); until then it is its
// maker's. Values of P_OWNERS_REF parameters (no tables) are the owner's references;
// all other targets in it are references of the block, so that a message of theirs reaches the
// owner as one of the block, with LastNotifyParamID telling where the target stands.
//
// Numbers convert: a float to an integer parameter truncates (and stops at the ends of the range of
// int), any float but 0 is true. NaN is refused. A text isn't a number and the other way round.
// Tables without P_VARIABLE_SIZE keep their size. Accessors see every value that comes in or goes
// out, but neither defaults nor what undo, files and copies bring.
//
// A target without an owner (Interface::CreateInstance) that leaves its last parameter is
// destroyed, unless an undo step holds it.
//
// While theHold holds, each change of a parameter puts an object with the parameter's values. To
// take a change of a table's shape back calls TabChanged with tab_setcount (tab_sort for one that
// kept the size).
class ParamBlock final : public IParamBlock2 {
  public:
    // The descriptor must outlive the block. `owner` may be null.
    ParamBlock(ParamBlockDesc2& desc, ReferenceMaker* owner);
    ~ParamBlock() override;

    ParamBlockDesc2* GetDesc() override { return &desc_; }
    // Null before it has one.
    ReferenceMaker* GetOwner() override { return owner_; }
    // Called for every maker of a reference to the block, once the maker has it.
    void OfferOwner(ReferenceMaker& maker);

    // Reads of numbers convert as writes do.
    int GetInt(ParamID id, TimeValue t, int tabIndex) override;
    float GetFloat(ParamID id, TimeValue t, int tabIndex) override;
    const MCHAR* GetStr(ParamID id, TimeValue t, int tabIndex) override;
    ReferenceTarget* GetReferenceTarget(ParamID id, TimeValue t, int tabIndex) override;
    // Null for a target that is no node.
    INode* GetINode(ParamID id, TimeValue t, int tabIndex) override;

    MaxSDK::AssetManagement::AssetUser GetAssetUser(ParamID id, TimeValue t, int tabIndex) override;

    BOOL SetValue(ParamID id, TimeValue t, int v, int tabIndex) override;
    BOOL SetValue(ParamID id, TimeValue t, float v, int tabIndex) override;
    BOOL SetValue(ParamID id, TimeValue t, const MCHAR* v, int tabIndex) override;
    // An INODE parameter takes only nodes.
    BOOL SetValue(ParamID id, TimeValue t, ReferenceTarget* v, int tabIndex) override;
    // The kind of file stays the descriptor's.
    BOOL SetValue(ParamID id, TimeValue t, const MaxSDK::AssetManagement::AssetUser& v,
                  int tabIndex) override;

    int Count(ParamID id) override;
    void SetCount(ParamID id, int count) override;
    int Append(ParamID id, int count, ReferenceTarget** values, int allocN) override;
    int Append(ParamID id, int count, const MCHAR** values, int allocN) override;
    int Delete(ParamID id, int start, int num) override;
    // Before entry `at`, which may be the number of entries. The index of the first new entry, or
    // -1.
    int Insert(ParamID id, int at, int count, ReferenceTarget** values);
    int Insert(ParamID id, int at, int count, const MCHAR** values);
    // Does nothing for an id that is no table of targets.
    void Sort(ParamID id, CompareFnc compare) override;

    ParamID LastNotifyParamID(int& tabIndex) override;
    void EnableNotifications(BOOL onOff) override { notifies_ = onOff != FALSE; }

    int NumRefs() override;
    RefTargetHandle GetReference(int which) override;
    RefResult NotifyRefChanged(const Interval& changeInt, RefTargetHandle hTarget, PartID& partID,
                               RefMessage message, BOOL propagate) override;
    using IParamBlock2::GetInterface;
    BaseInterface* GetInterface(Interface_ID id) override;

    // The copy has no owner, nor values of P_OWNERS_REF parameters: those are the owner's to copy.
    // Its targets are the copies of this block's; one that can't be copied leaves null.
    RefTargetHandle Clone(RemapDir& remap) override;

    // The stored values, with targets by their handles; 0 for one that has none.
    SavedBlock SaveValues(const Handles& handles) const;
    // Takes what the file has and the descriptor knows; values go into their ranges. Nobody is
    // told. IParamBlock2PostLoadInfo is there until LoadIsOver.
    void LoadValues(const SavedBlock& saved, const Handles& handles);
    void LoadIsOver() { postLoadInfo_.reset(); }

    // What a parameter of the type holds, as files tell values apart.
    enum class ValueKind { Number, Text, Target };
    static ValueKind ValueKindOf(ParamType2 type);

  private:
    friend class ParameterRestore;

    class PostLoadInfo final : public IParamBlock2PostLoadInfo {
      public:
        explicit PostLoadInfo(DWORD version) : version_(version) {}
        DWORD GetVersion() override { return version_; }

      private:
        DWORD version_;
    };

    enum class Kind { Int, Bool, Float, Text, Target };
    using Value = std::variant<int, float, MSTR, ReferenceTarget*>;
    struct Parameter {
        ParamID id = 0;
        int index = 0;
        ParamType2 type = TYPE_INT;
        Kind kind = Kind::Int;
        bool ownersRef = false;
        // One for a parameter that is no table; null for an owner's reference.
        std::vector<Value> entries;
        // What GetStr gave last of the entries that went through an accessor.
        std::vector<MSTR> textRead;

        bool IsTable() const { return (type & TYPE_TAB) != 0; }
        bool Has(int tabIndex) const {
            return tabIndex >= 0 && static_cast<std::size_t>(tabIndex) < entries.size();
        }
    };
    // The values of a parameter apart from the block. A target that is destroyed becomes null; no
    // target is no reference.
    using HeldValue = std::variant<int, float, MSTR, std::unique_ptr<TargetReference>>;
    using HeldValues = std::vector<HeldValue>;
    struct Place {
        Parameter* parameter;
        int tabIndex;
    };
    enum class Shape { Kept, Changed };
    // In place of an entry's index: the change is one of the table's shape or order.
    static constexpr int WHOLE_TABLE = -1;

    void SetReference(int which, RefTargetHandle target) override;

    static Kind KindOf(ParamType2 type);
    static Value Empty(Kind kind);
    // Owns a copy of the text; null for null.
    static PB2Value TextValue(const MCHAR* text);
    static PB2Value TargetValue(ReferenceTarget* target);
    const ParamDef& Def(const Parameter& parameter) const;
    Parameter* Find(ParamID id);
    // Null unless the table's size may change.
    Parameter* FindVariableTable(ParamID id);
    // The block's reference of that number; its parameter is null when there is none.
    Place PlaceOf(int which);
    int ReferenceNumber(const Parameter& parameter, int tabIndex) const;
    std::optional<Place> FindTarget(const ReferenceTarget* target);

    ReferenceTarget* Target(const Parameter& parameter, int tabIndex) const;
    bool StoreTarget(Parameter& parameter, int tabIndex, ReferenceTarget* target);

    // What the accessor makes of the stored value. Text is the caller's to free.
    PB2Value Read(Parameter& parameter, TimeValue t, int tabIndex);
    // Passes `v` through the accessor and gives what is to be stored; nothing when it is refused.
    // Frees a text.
    std::optional<Value> Incoming(const Parameter& parameter, TimeValue t, int tabIndex,
                                  PB2Value v);
    // Not for NaN.
    static PB2Value NumberValue(Kind kind, double number);
    // A number within the definition's range, as it is stored; nothing for NaN.
    static std::optional<Value> Stored(const ParamDef& def, Kind kind, PB2Value number);
    static bool Fits(const Parameter& parameter, ReferenceTarget* target);
    void LoadTargets(Parameter& parameter, const SavedParameter& saved, const Handles& handles);
    void LoadPlain(Parameter& parameter, const SavedParameter& saved);
    BOOL Write(Parameter& parameter, TimeValue t, int tabIndex, const PB2Value& v);
    BOOL WriteNumber(ParamID id, TimeValue t, int tabIndex, double v);
    int InsertValues(Parameter& parameter, int at, const std::vector<PB2Value>& values,
                     tab_changes code);
    int InsertTargets(ParamID id, int at, int count, ReferenceTarget** values, tab_changes code);
    int InsertTexts(ParamID id, int at, int count, const MCHAR** values, tab_changes code);
    void RemoveEntries(Parameter& parameter, int start, int count);

    HeldValue Hold(const Parameter& parameter, int tabIndex) const;
    void StoreHeld(Parameter& parameter, int tabIndex, const HeldValue& held);
    HeldValues Snapshot(const Parameter& parameter) const;
    // While a hold is open, what PutUndo is to get: all values, of a table whose shape is about to
    // change, or the one of an entry. Nothing otherwise, and where the hold has the table already.
    std::optional<HeldValues> TableIfHolding(const Parameter& parameter) const;
    std::optional<HeldValues> EntryIfHolding(const Parameter& parameter, int tabIndex) const;
    std::shared_ptr<TargetReference> ForRestore();
    void PutUndo(const Parameter& parameter, int tabIndex, Shape shape,
                 std::optional<HeldValues> before);
    void Exchange(ParamID id, int tabIndex, Shape shape, HeldValues& values);
    void ExchangeEntry(Parameter& parameter, int tabIndex, HeldValue& held);
    void ExchangeTable(Parameter& parameter, HeldValues& values);

    void TellTableChanged(const Parameter& parameter, tab_changes code, int tabIndex, int count);
    void TellChanged(const Parameter& parameter, int tabIndex, const Interval& changeInt,
                     PartID partID, RefMessage message);
    void ForgetDeleted(ReferenceTarget* target);

    ParamBlockDesc2& desc_;
    ReferenceMaker* owner_;
    // In the descriptor's order.
    std::vector<Parameter> parameters_;
    ParamID notifyId_ = -1;
    int notifyTabIndex_ = -1;
    bool notifies_ = true;
    std::optional<PostLoadInfo> postLoadInfo_;
    // What the steps that name the block share, while there are any.
    std::weak_ptr<TargetReference> forRestore_;
};

}  // namespace host

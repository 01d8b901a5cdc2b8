// An object with a parameter block that has one parameter of each type.
#pragma once

#include <iparamb2.h>
#include <maxheap.h>

#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "host/param_block.h"

enum SampleParameter : ParamID {
    SAMPLE_INT,
    SAMPLE_RANGED_INT,
    SAMPLE_BOOL,
    SAMPLE_FLOAT,
    SAMPLE_RANGED_FLOAT,
    SAMPLE_FRACTION,
    SAMPLE_STRING,
    SAMPLE_FILENAME,
    SAMPLE_NODE,
    SAMPLE_TARGET,
    SAMPLE_OWNERS_TARGET,
    SAMPLE_TARGETS,
    SAMPLE_NODES,
    SAMPLE_STRINGS,
    SAMPLE_FIXED_STRINGS,
};

inline MCHAR* SampleHeapText(const MCHAR* text) {
    const std::size_t bytes = (std::char_traits<MCHAR>::length(text) + 1) * sizeof(MCHAR);
    return static_cast<MCHAR*>(std::memcpy(MAX_malloc(bytes), text, bytes));
}

struct TabChange {
    tab_changes code;
    ParamID id;
    int tabIndex;
    int count;
    bool operator==(const TabChange&) const = default;
};

class SampleAccessor : public PBAccessor {
  public:
    void Get(PB2Value& v, ReferenceMaker* owner, ParamID id, int tabIndex, TimeValue,
             Interval&) override {
        lastOwner = owner;
        if (onGet) {
            onGet(v, id, tabIndex);
        }
    }
    void Set(PB2Value& v, ReferenceMaker* owner, ParamID id, int tabIndex, TimeValue) override {
        lastOwner = owner;
        if (onSet) {
            onSet(v, id, tabIndex);
        }
    }
    void TabChanged(tab_changes code, Tab<PB2Value>*, ReferenceMaker* owner, ParamID id,
                    int tabIndex, int count) override {
        lastOwner = owner;
        changes.push_back({code, id, tabIndex, count});
        if (onTabChanged) {
            onTabChanged(code, id, tabIndex);
        }
    }

    std::function<void(PB2Value&, ParamID, int)> onGet;
    std::function<void(PB2Value&, ParamID, int)> onSet;
    std::function<void(tab_changes, ParamID, int)> onTabChanged;
    std::vector<TabChange> changes;
    ReferenceMaker* lastOwner = nullptr;
};

class SampleClassDesc : public ClassDesc2 {
  public:
    // `accessor` sees all parameters; may be null.
    explicit SampleClassDesc(PBAccessor* accessor)
        : block(3, _M("sample"), 0, this, P_AUTO_CONSTRUCT | P_VERSION, 2, 0, p_end) {
        block.AddParam(SAMPLE_INT, _M("int"), TYPE_INT, 0, 0, p_default, 5, p_accessor, accessor,
                       p_end);
        block.AddParam(SAMPLE_RANGED_INT, _M("rangedInt"), TYPE_INT, 0, 0, p_default, 5, p_range, 1,
                       10, p_accessor, accessor, p_end);
        block.AddParam(SAMPLE_BOOL, _M("bool"), TYPE_BOOL, 0, 0, p_default, TRUE, p_accessor,
                       accessor, p_end);
        block.AddParam(SAMPLE_FLOAT, _M("float"), TYPE_FLOAT, 0, 0, p_default, 1.5, p_accessor,
                       accessor, p_end);
        block.AddParam(SAMPLE_RANGED_FLOAT, _M("rangedFloat"), TYPE_FLOAT, 0, 0, p_default, 72.0,
                       p_range, 1.0, 10000.0, p_accessor, accessor, p_end);
        block.AddParam(SAMPLE_FRACTION, _M("fraction"), TYPE_PCNT_FRAC, 0, 0, p_default, 0.05,
                       p_accessor, accessor, p_end);
        block.AddParam(SAMPLE_STRING, _M("string"), TYPE_STRING, 0, 0, p_default, _M("text"),
                       p_accessor, accessor, p_end);
        block.AddParam(SAMPLE_FILENAME, _M("filename"), TYPE_FILENAME, 0, 0, p_assetTypeID, 8,
                       p_accessor, accessor, p_end);
        block.AddParam(SAMPLE_NODE, _M("node"), TYPE_INODE, 0, 0, p_accessor, accessor, p_end);
        block.AddParam(SAMPLE_TARGET, _M("target"), TYPE_REFTARG, 0, 0, p_accessor, accessor,
                       p_end);
        block.AddParam(SAMPLE_OWNERS_TARGET, _M("ownersTarget"), TYPE_REFTARG, P_OWNERS_REF, 0,
                       p_refno, 1, p_end);
        block.AddParam(SAMPLE_TARGETS, _M("targets"), TYPE_REFTARG_TAB, 0, P_VARIABLE_SIZE, 0,
                       p_accessor, accessor, p_end);
        block.AddParam(SAMPLE_NODES, _M("nodes"), TYPE_INODE_TAB, 0, P_VARIABLE_SIZE, 0, p_end);
        block.AddParam(SAMPLE_STRINGS, _M("strings"), TYPE_STRING_TAB, 0, P_VARIABLE_SIZE, 0,
                       p_accessor, accessor, p_end);
        block.AddParam(SAMPLE_FIXED_STRINGS, _M("fixedStrings"), TYPE_STRING_TAB, 2, 0, 0,
                       p_default, _M("x"), p_end);
    }

    int IsPublic() override { return 1; }
    void* Create(BOOL) override { return nullptr; }
    const MCHAR* ClassName() override { return _M("Sample"); }
    SClass_ID SuperClassID() override { return REF_TARGET_CLASS_ID; }
    Class_ID ClassID() override { return Class_ID(7, 8); }
    const MCHAR* Category() override { return _M(""); }

    ParamBlockDesc2 block;
};

struct ParameterChange {
    ParamID id;
    int tabIndex;
    bool operator==(const ParameterChange&) const = default;
};

class SampleOwner : public ReferenceTarget {
  public:
    explicit SampleOwner(ClassDesc2& desc) { desc.MakeAutoParamBlocks(this); }
    ~SampleOwner() override { DeleteAllRefsFromMe(); }

    int NumParamBlocks() override { return 1; }
    IParamBlock2* GetParamBlock(int number) override { return number == 0 ? block : nullptr; }
    IParamBlock2* GetParamBlockByID(BlockID id) override {
        return block && block->GetDesc()->ID == id ? block : nullptr;
    }
    int NumRefs() override { return 2; }
    RefTargetHandle GetReference(int which) override { return which == 0 ? block : target; }
    RefResult NotifyRefChanged(const Interval&, RefTargetHandle hTarget, PartID&,
                               RefMessage message, BOOL) override {
        messages.push_back(message);
        if (block && hTarget == block && message == REFMSG_CHANGE) {
            ParameterChange change{};
            change.id = block->LastNotifyParamID(change.tabIndex);
            changes.push_back(change);
        }
        if (onChange) {
            onChange();
        }
        return REF_SUCCEED;
    }
    host::ParamBlock& Block() { return *static_cast<host::ParamBlock*>(block); }

    IParamBlock2* block = nullptr;
    ReferenceTarget* target = nullptr;
    std::vector<ParameterChange> changes;
    std::vector<RefMessage> messages;
    std::function<void()> onChange;

  private:
    void SetReference(int which, RefTargetHandle t) override {
        if (which == 0) {
            block = dynamic_cast<IParamBlock2*>(t);
        } else {
            target = t;
        }
    }
};

class SampleNode : public INode {
  public:
    const MCHAR* GetName() override { return _M("Node"); }
    USHORT GetRenderID() override { return 65535; }
    INode* GetParentNode() override { return nullptr; }
    BOOL IsRootNode() override { return FALSE; }
    int NumberOfChildren() override { return 0; }
    INode* GetChildNode(int) override { return nullptr; }
    BOOL IsGroupHead() override { return FALSE; }
    BOOL IsGroupMember() override { return FALSE; }
    BOOL IsNodeHidden(BOOL) override { return FALSE; }
    const ObjectState& EvalWorldState(TimeValue, BOOL) override { return shown; }
    Matrix3 GetNodeTM(TimeValue, Interval*) override { return {}; }
    BOOL GetUserPropBool(const MSTR&, BOOL&) override { return FALSE; }
    RefResult NotifyRefChanged(const Interval&, RefTargetHandle, PartID&, RefMessage,
                               BOOL) override {
        return REF_SUCCEED;
    }

    ObjectState shown;
};

#include "host/param_block.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>
#include <utility>

#include <maxheap.h>

namespace host {
namespace {

// The copy of a text that an accessor may free; null when there is no memory.
MCHAR* HeapCopy(const MCHAR* text) {
    const std::size_t bytes = (std::char_traits<MCHAR>::length(text) + 1) * sizeof(MCHAR);
    auto* copy = static_cast<MCHAR*>(MAX_malloc(bytes));
    if (copy) {
        std::memcpy(copy, text, bytes);
    }
    return copy;
}

// The text that the value owns, which is freed.
MSTR TakeText(PB2Value& v) {
    MSTR text(v.s);
    MAX_free(v.s);
    v.s = nullptr;
    return text;
}

// Stops at the ends of the range. Not for NaN.
int TruncateToInt(double v) {
    return static_cast<int>(std::clamp(v, static_cast<double>(std::numeric_limits<int>::min()),
                                       static_cast<double>(std::numeric_limits<int>::max())));
}

}  // namespace

PB2Value ParamBlock::TextValue(const MCHAR* text) {
    PB2Value v{};
    v.s = text ? HeapCopy(text) : nullptr;
    return v;
}

PB2Value ParamBlock::TargetValue(ReferenceTarget* target) {
    PB2Value v{};
    v.r = target;
    return v;
}

ParamBlock::ParamBlock(ParamBlockDesc2& desc, ReferenceMaker* owner) : desc_(desc), owner_(owner) {
    for (int index = 0; index < desc.Count(); ++index) {
        const ParamDef& def = desc.GetParamDefByIndex(index);
        Parameter parameter;
        parameter.id = def.ID;
        parameter.index = index;
        parameter.type = def.type;
        parameter.kind = KindOf(def.type);
        parameter.ownersRef = (def.flags & P_OWNERS_REF) && !parameter.IsTable();
        Value value = Empty(parameter.kind);
        if (parameter.kind == Kind::Float) {
            value = def.def.f;
        } else if (parameter.kind == Kind::Text) {
            value = def.def_text;
        } else if (parameter.kind != Kind::Target) {
            value = def.def.i;
        }
        const int size = parameter.IsTable() ? std::max(def.tab_size, 0) : 1;
        parameter.entries.assign(static_cast<std::size_t>(size), value);
        parameters_.push_back(std::move(parameter));
    }
}

ParamBlock::~ParamBlock() {
    DeleteAllRefsFromMe();
}

ParamBlock::Kind ParamBlock::KindOf(ParamType2 type) {
    switch (type & ~TYPE_TAB) {
        case TYPE_FLOAT:
        case TYPE_PCNT_FRAC:
            return Kind::Float;
        case TYPE_BOOL:
            return Kind::Bool;
        case TYPE_STRING:
        case TYPE_FILENAME:
            return Kind::Text;
        case TYPE_INODE:
        case TYPE_REFTARG:
            return Kind::Target;
        default:
            return Kind::Int;
    }
}

ParamBlock::ValueKind ParamBlock::ValueKindOf(ParamType2 type) {
    switch (KindOf(type)) {
        case Kind::Text:
            return ValueKind::Text;
        case Kind::Target:
            return ValueKind::Target;
        default:
            return ValueKind::Number;
    }
}

ParamBlock::Value ParamBlock::Empty(Kind kind) {
    switch (kind) {
        case Kind::Float:
            return 0.0F;
        case Kind::Text:
            return MSTR();
        case Kind::Target:
            return static_cast<ReferenceTarget*>(nullptr);
        default:
            return 0;
    }
}

const ParamDef& ParamBlock::Def(const Parameter& parameter) const {
    return desc_.GetParamDefByIndex(parameter.index);
}

ParamBlock::Parameter* ParamBlock::Find(ParamID id) {
    const auto found = std::find_if(parameters_.begin(), parameters_.end(),
                                    [id](const Parameter& other) { return other.id == id; });
    return found == parameters_.end() ? nullptr : &*found;
}

ParamBlock::Parameter* ParamBlock::FindVariableTable(ParamID id) {
    Parameter* parameter = Find(id);
    const bool variable =
        parameter && parameter->IsTable() && (Def(*parameter).flags & P_VARIABLE_SIZE);
    return variable ? parameter : nullptr;
}

// References

int ParamBlock::NumRefs() {
    std::size_t count = 0;
    for (const Parameter& parameter : parameters_) {
        if (parameter.kind == Kind::Target && !parameter.ownersRef) {
            count += parameter.entries.size();
        }
    }
    return static_cast<int>(count);
}

ParamBlock::Place ParamBlock::PlaceOf(int which) {
    for (Parameter& parameter : parameters_) {
        if (parameter.kind != Kind::Target || parameter.ownersRef) {
            continue;
        }
        if (parameter.Has(which)) {
            return {&parameter, which};
        }
        which -= static_cast<int>(parameter.entries.size());
    }
    return {nullptr, 0};
}

int ParamBlock::ReferenceNumber(const Parameter& parameter, int tabIndex) const {
    int number = tabIndex;
    for (const Parameter& other : parameters_) {
        if (&other == &parameter) {
            break;
        }
        if (other.kind == Kind::Target && !other.ownersRef) {
            number += static_cast<int>(other.entries.size());
        }
    }
    return number;
}

RefTargetHandle ParamBlock::GetReference(int which) {
    const Place place = PlaceOf(which);
    return place.parameter ? Target(*place.parameter, place.tabIndex) : nullptr;
}

void ParamBlock::SetReference(int which, RefTargetHandle target) {
    const Place place = PlaceOf(which);
    if (place.parameter) {
        place.parameter->entries[static_cast<std::size_t>(place.tabIndex)] = target;
    }
}

ReferenceTarget* ParamBlock::Target(const Parameter& parameter, int tabIndex) const {
    if (parameter.ownersRef) {
        return owner_ ? owner_->GetReference(Def(parameter).refno) : nullptr;
    }
    return std::get<ReferenceTarget*>(parameter.entries[static_cast<std::size_t>(tabIndex)]);
}

bool ParamBlock::StoreTarget(Parameter& parameter, int tabIndex, ReferenceTarget* target) {
    if (parameter.ownersRef) {
        return owner_ && owner_->ReplaceReference(Def(parameter).refno, target) == REF_SUCCEED;
    }
    return ReplaceReference(ReferenceNumber(parameter, tabIndex), target) == REF_SUCCEED;
}

std::optional<ParamBlock::Place> ParamBlock::FindTarget(const ReferenceTarget* target) {
    for (Parameter& parameter : parameters_) {
        if (parameter.kind != Kind::Target || parameter.ownersRef) {
            continue;
        }
        for (int index = 0; parameter.Has(index); ++index) {
            if (Target(parameter, index) == target) {
                return Place{&parameter, index};
            }
        }
    }
    return std::nullopt;
}

RefResult ParamBlock::NotifyRefChanged(const Interval& changeInt, RefTargetHandle hTarget,
                                       PartID& partID, RefMessage message, BOOL propagate) {
    if (message == REFMSG_TARGET_DELETED) {
        ForgetDeleted(hTarget);
        return REF_SUCCEED;
    }
    if (!propagate) {
        return REF_SUCCEED;
    }
    if (const std::optional<Place> place = FindTarget(hTarget)) {
        TellChanged(*place->parameter, place->tabIndex, changeInt, partID, message);
    }
    // The block has told its dependents itself, while it knew the parameter.
    return REF_STOP;
}

// The accessor may delete entries, so the search starts again each time.
void ParamBlock::ForgetDeleted(ReferenceTarget* target) {
    while (const std::optional<Place> place = FindTarget(target)) {
        std::optional<HeldValues> before = EntryIfHolding(*place->parameter, place->tabIndex);
        StoreTarget(*place->parameter, place->tabIndex, nullptr);
        PutUndo(*place->parameter, place->tabIndex, Shape::Kept, std::move(before));
        TellTableChanged(*place->parameter, tab_ref_deleted, place->tabIndex, 1);
        TellChanged(*place->parameter, place->tabIndex, FOREVER, PART_ALL, REFMSG_CHANGE);
    }
}

void ParamBlock::TellTableChanged(const Parameter& parameter, tab_changes code, int tabIndex,
                                  int count) {
    PBAccessor* accessor = Def(parameter).accessor;
    if (accessor && parameter.IsTable()) {
        accessor->TabChanged(code, nullptr, owner_, parameter.id, tabIndex, count);
    }
}

void ParamBlock::TellChanged(const Parameter& parameter, int tabIndex, const Interval& changeInt,
                             PartID partID, RefMessage message) {
    if (!notifies_) return;
    const ParamID outerId = std::exchange(notifyId_, parameter.id);
    const int outerIndex = std::exchange(notifyTabIndex_, parameter.IsTable() ? tabIndex : -1);
    NotifyDependents(changeInt, partID, message);
    notifyId_ = outerId;
    notifyTabIndex_ = outerIndex;
}

ParamID ParamBlock::LastNotifyParamID(int& tabIndex) {
    tabIndex = notifyTabIndex_;
    return notifyId_;
}

// Reading

PB2Value ParamBlock::Read(Parameter& parameter, TimeValue t, int tabIndex) {
    PB2Value v{};
    const Value& value = parameter.entries[static_cast<std::size_t>(tabIndex)];
    switch (parameter.kind) {
        case Kind::Int:
        case Kind::Bool:
            v.i = std::get<int>(value);
            break;
        case Kind::Float:
            v.f = std::get<float>(value);
            break;
        case Kind::Text:
            v = TextValue(std::get<MSTR>(value).data());
            break;
        case Kind::Target:
            v.r = Target(parameter, tabIndex);
            break;
    }
    if (PBAccessor* accessor = Def(parameter).accessor) {
        Interval valid = FOREVER;
        accessor->Get(v, owner_, parameter.id, tabIndex, t, valid);
    }
    return v;
}

int ParamBlock::GetInt(ParamID id, TimeValue t, int tabIndex) {
    Parameter* parameter = Find(id);
    if (!parameter || !parameter->Has(tabIndex)) {
        return 0;
    }
    switch (parameter->kind) {
        case Kind::Int:
        case Kind::Bool:
            return Read(*parameter, t, tabIndex).i;
        case Kind::Float: {
            const float v = Read(*parameter, t, tabIndex).f;
            return std::isnan(v) ? 0 : TruncateToInt(static_cast<double>(v));
        }
        default:
            return 0;
    }
}

float ParamBlock::GetFloat(ParamID id, TimeValue t, int tabIndex) {
    Parameter* parameter = Find(id);
    if (!parameter || !parameter->Has(tabIndex)) {
        return 0.0F;
    }
    return parameter->kind == Kind::Float ? Read(*parameter, t, tabIndex).f
                                          : static_cast<float>(GetInt(id, t, tabIndex));
}

const MCHAR* ParamBlock::GetStr(ParamID id, TimeValue t, int tabIndex) {
    Parameter* parameter = Find(id);
    if (!parameter || !parameter->Has(tabIndex) || parameter->kind != Kind::Text) {
        return nullptr;
    }
    const auto index = static_cast<std::size_t>(tabIndex);
    if (!Def(*parameter).accessor) {
        return std::get<MSTR>(parameter->entries[index]).data();
    }
    PB2Value v = Read(*parameter, t, tabIndex);
    if (parameter->textRead.size() <= index) {
        parameter->textRead.resize(index + 1);
    }
    parameter->textRead[index] = TakeText(v);
    return parameter->textRead[index].data();
}

ReferenceTarget* ParamBlock::GetReferenceTarget(ParamID id, TimeValue t, int tabIndex) {
    Parameter* parameter = Find(id);
    return parameter && parameter->Has(tabIndex) && parameter->kind == Kind::Target
               ? Read(*parameter, t, tabIndex).r
               : nullptr;
}

INode* ParamBlock::GetINode(ParamID id, TimeValue t, int tabIndex) {
    return dynamic_cast<INode*>(GetReferenceTarget(id, t, tabIndex));
}

// Writing

std::optional<ParamBlock::Value> ParamBlock::Incoming(const Parameter& parameter, TimeValue t,
                                                      int tabIndex, PB2Value v) {
    const ParamDef& def = Def(parameter);
    if (def.accessor) {
        def.accessor->Set(v, owner_, parameter.id, tabIndex, t);
    }
    if (parameter.kind == Kind::Text) {
        return TakeText(v);
    }
    if (parameter.kind != Kind::Target) {
        return Stored(def, parameter.kind, v);
    }
    return Fits(parameter, v.r) ? std::optional<Value>(v.r) : std::nullopt;
}

std::optional<ParamBlock::Value> ParamBlock::Stored(const ParamDef& def, Kind kind,
                                                    PB2Value number) {
    if (kind == Kind::Bool) {
        return number.i != 0 ? 1 : 0;
    }
    if (kind == Kind::Int) {
        return def.has_range ? std::max(def.range_low.i, std::min(number.i, def.range_high.i))
                             : number.i;
    }
    if (std::isnan(number.f)) {
        return std::nullopt;
    }
    return def.has_range ? std::max(def.range_low.f, std::min(number.f, def.range_high.f))
                         : number.f;
}

bool ParamBlock::Fits(const Parameter& parameter, ReferenceTarget* target) {
    return !target || (parameter.type & ~TYPE_TAB) != TYPE_INODE || dynamic_cast<INode*>(target);
}

BOOL ParamBlock::Write(Parameter& parameter, TimeValue t, int tabIndex, const PB2Value& v) {
    std::optional<Value> value = Incoming(parameter, t, tabIndex, v);
    // The accessor may have made the table smaller.
    if (!value || !parameter.Has(tabIndex)) {
        return FALSE;
    }
    std::optional<HeldValues> before = EntryIfHolding(parameter, tabIndex);
    if (parameter.kind == Kind::Target) {
        if (!StoreTarget(parameter, tabIndex, std::get<ReferenceTarget*>(*value))) {
            return FALSE;
        }
    } else {
        parameter.entries[static_cast<std::size_t>(tabIndex)] = std::move(*value);
    }
    PutUndo(parameter, tabIndex, Shape::Kept, std::move(before));
    TellChanged(parameter, tabIndex, FOREVER, PART_ALL, REFMSG_CHANGE);
    return TRUE;
}

PB2Value ParamBlock::NumberValue(Kind kind, double number) {
    PB2Value v{};
    if (kind == Kind::Float) {
        v.f = static_cast<float>(number);
    } else {
        v.i = TruncateToInt(number);
        if (kind == Kind::Bool && number != 0.0 && v.i == 0) v.i = 1;
    }
    return v;
}

// Not for NaN.
BOOL ParamBlock::WriteNumber(ParamID id, TimeValue t, int tabIndex, double number) {
    Parameter* parameter = Find(id);
    if (!parameter || !parameter->Has(tabIndex) ||
        ValueKindOf(parameter->type) != ValueKind::Number) {
        return FALSE;
    }
    return Write(*parameter, t, tabIndex, NumberValue(parameter->kind, number));
}

BOOL ParamBlock::SetValue(ParamID id, TimeValue t, int v, int tabIndex) {
    return WriteNumber(id, t, tabIndex, v);
}

BOOL ParamBlock::SetValue(ParamID id, TimeValue t, float v, int tabIndex) {
    return std::isnan(v) ? FALSE : WriteNumber(id, t, tabIndex, static_cast<double>(v));
}

BOOL ParamBlock::SetValue(ParamID id, TimeValue t, const MCHAR* text, int tabIndex) {
    Parameter* parameter = Find(id);
    if (!parameter || !parameter->Has(tabIndex) || parameter->kind != Kind::Text) {
        return FALSE;
    }
    return Write(*parameter, t, tabIndex, TextValue(text));
}

BOOL ParamBlock::SetValue(ParamID id, TimeValue t, ReferenceTarget* target, int tabIndex) {
    Parameter* parameter = Find(id);
    if (!parameter || !parameter->Has(tabIndex) || parameter->kind != Kind::Target) {
        return FALSE;
    }
    return Write(*parameter, t, tabIndex, TargetValue(target));
}

MaxSDK::AssetManagement::AssetUser ParamBlock::GetAssetUser(ParamID id, TimeValue t, int tabIndex) {
    const Parameter* parameter = Find(id);
    if (!parameter || !parameter->Has(tabIndex) || parameter->type != TYPE_FILENAME) return {};
    const auto type = static_cast<MaxSDK::AssetManagement::AssetType>(Def(*parameter).assetTypeID);
    return {MSTR(GetStr(id, t, tabIndex)), type};
}

BOOL ParamBlock::SetValue(ParamID id, TimeValue t, const MaxSDK::AssetManagement::AssetUser& v,
                          int tabIndex) {
    const Parameter* parameter = Find(id);
    if (!parameter || parameter->type != TYPE_FILENAME) return FALSE;
    return SetValue(id, t, v.GetFileName().data(), tabIndex);
}

}  // namespace host

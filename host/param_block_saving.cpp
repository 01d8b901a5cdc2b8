// What of a parameter block goes into a scene file and into a copy, and how it comes back.
#include <algorithm>
#include <cmath>
#include <utility>

#include "host/param_block.h"
#include "host/saved_objects.h"

namespace host {

void ParamBlock::OfferOwner(ReferenceMaker& maker) {
    for (int number = 0; !owner_ && number < maker.NumParamBlocks(); ++number) {
        if (maker.GetParamBlock(number) == this) owner_ = &maker;
    }
}

BaseInterface* ParamBlock::GetInterface(Interface_ID id) {
    return id == IPARAMBLOCK2POSTLOADINFO_ID && postLoadInfo_ ? &*postLoadInfo_ : nullptr;
}

RefTargetHandle ParamBlock::Clone(RemapDir& remap) {
    auto* copy = new ParamBlock(desc_, nullptr);
    for (std::size_t index = 0; index < parameters_.size(); ++index) {
        const Parameter& from = parameters_[index];
        Parameter& to = copy->parameters_[index];
        if (from.ownersRef) continue;
        if (from.kind != Kind::Target) {
            to.entries = from.entries;
            continue;
        }
        to.entries.resize(from.entries.size(), Empty(Kind::Target));
        for (int entry = 0; from.Has(entry); ++entry) {
            copy->StoreTarget(to, entry, remap.CloneRef(Target(from, entry)));
        }
    }
    BaseClone(this, copy, remap);
    return copy;
}

SavedBlock ParamBlock::SaveValues(const Handles& handles) const {
    SavedBlock saved{desc_.ID, desc_.Version(), {}};
    for (const Parameter& parameter : parameters_) {
        if (parameter.ownersRef) continue;
        SavedParameter values{parameter.id, parameter.type, {}};
        for (const Value& value : parameter.entries) {
            if (const int* number = std::get_if<int>(&value)) {
                values.values.emplace_back(*number);
            } else if (const float* fraction = std::get_if<float>(&value)) {
                values.values.emplace_back(*fraction);
            } else if (const MSTR* text = std::get_if<MSTR>(&value)) {
                values.values.emplace_back(*text);
            } else {
                const ReferenceTarget* target = std::get<ReferenceTarget*>(value);
                values.values.emplace_back(SavedReference{handles.Find(target)});
            }
        }
        saved.parameters.push_back(std::move(values));
    }
    return saved;
}

void ParamBlock::LoadValues(const SavedBlock& saved, const Handles& handles) {
    postLoadInfo_.emplace(saved.version);
    for (const SavedParameter& values : saved.parameters) {
        Parameter* parameter = Find(values.id);
        if (!parameter || parameter->ownersRef) continue;
        parameter->textRead.clear();
        if (parameter->kind == Kind::Target) {
            LoadTargets(*parameter, values, handles);
        } else {
            LoadPlain(*parameter, values);
        }
    }
}

void ParamBlock::LoadTargets(Parameter& parameter, const SavedParameter& saved,
                             const Handles& handles) {
    if (FindVariableTable(parameter.id)) {
        RemoveEntries(parameter, 0, static_cast<int>(parameter.entries.size()));
        parameter.entries.resize(saved.values.size(), Empty(Kind::Target));
    }
    const std::size_t count = std::min(saved.values.size(), parameter.entries.size());
    for (std::size_t index = 0; index < count; ++index) {
        const auto* reference = std::get_if<SavedReference>(&saved.values[index]);
        ReferenceTarget* target = reference ? handles.Target(reference->target) : nullptr;
        if (Fits(parameter, target)) StoreTarget(parameter, static_cast<int>(index), target);
    }
}

void ParamBlock::LoadPlain(Parameter& parameter, const SavedParameter& saved) {
    if (FindVariableTable(parameter.id)) {
        parameter.entries.assign(saved.values.size(), Empty(parameter.kind));
    }
    const bool isText = parameter.kind == Kind::Text;
    const std::size_t count = std::min(saved.values.size(), parameter.entries.size());
    for (std::size_t index = 0; index < count; ++index) {
        const SavedValue& value = saved.values[index];
        Value& entry = parameter.entries[index];
        const int* number = std::get_if<int>(&value);
        const float* fraction = std::get_if<float>(&value);
        if (const MSTR* text = std::get_if<MSTR>(&value); text && isText) {
            entry = *text;
        } else if (!isText && (number || (fraction && !std::isnan(*fraction)))) {
            const double exact = number ? *number : static_cast<double>(*fraction);
            entry = Stored(Def(parameter), parameter.kind, NumberValue(parameter.kind, exact))
                        .value_or(entry);
        }
    }
}

}  // namespace host

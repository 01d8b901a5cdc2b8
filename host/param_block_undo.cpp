// What a parameter block leaves in the hold, and how its parameters get back what they were.
#include <algorithm>
#include <cstdlib>
#include <utility>

#include <hold.h>

#include "host/param_block.h"

namespace host {

// A parameter's other values: those before the change, or after it once it is taken back.
class ParameterRestore final : public RestoreObj {
  public:
    ParameterRestore(ParamBlock* block, ParamID id, int tabIndex, ParamBlock::Shape shape,
                     ParamBlock::HeldValues before)
        : block_(block), id_(id), tabIndex_(tabIndex), shape_(shape), other_(std::move(before)) {}

    void Restore(int /*isUndo*/) override { Exchange(); }
    void Redo() override { Exchange(); }

  private:
    void Exchange() {
        if (auto* block = static_cast<ParamBlock*>(block_.Get())) {
            block->Exchange(id_, tabIndex_, shape_, other_);
        }
    }

    TargetReference block_;
    ParamID id_;
    int tabIndex_;
    ParamBlock::Shape shape_;
    ParamBlock::HeldValues other_;
};

ParamBlock::HeldValues ParamBlock::Snapshot(const Parameter& parameter) const {
    HeldValues values;
    for (int index = 0; parameter.Has(index); ++index) {
        if (parameter.kind == Kind::Target) {
            values.emplace_back(std::make_unique<TargetReference>(Target(parameter, index)));
            continue;
        }
        const Value& value = parameter.entries[static_cast<std::size_t>(index)];
        if (const int* number = std::get_if<int>(&value)) {
            values.emplace_back(*number);
        } else if (const float* fraction = std::get_if<float>(&value)) {
            values.emplace_back(*fraction);
        } else {
            values.emplace_back(std::get<MSTR>(value));
        }
    }
    return values;
}

std::optional<ParamBlock::HeldValues> ParamBlock::SnapshotIfHolding(
    const Parameter& parameter) const {
    return theHold.Holding() ? std::optional(Snapshot(parameter)) : std::nullopt;
}

void ParamBlock::PutUndo(const Parameter& parameter, int tabIndex, Shape shape,
                         std::optional<HeldValues> before) {
    if (before) {
        theHold.Put(new ParameterRestore(this, parameter.id, tabIndex, shape, std::move(*before)));
    }
}

void ParamBlock::Exchange(ParamID id, int tabIndex, Shape shape, HeldValues& values) {
    Parameter& parameter = *Find(id);
    const int old = static_cast<int>(parameter.entries.size());
    const int count = static_cast<int>(values.size());
    HeldValues current = Snapshot(parameter);
    if (parameter.kind == Kind::Target) {
        for (int index = 0; index < old; ++index) {
            StoreTarget(parameter, index, nullptr);
        }
    }
    parameter.entries.resize(values.size(), Empty(parameter.kind));
    for (int index = 0; index < count; ++index) {
        HeldValue& held = values[static_cast<std::size_t>(index)];
        Value& entry = parameter.entries[static_cast<std::size_t>(index)];
        if (const auto* target = std::get_if<std::unique_ptr<TargetReference>>(&held)) {
            StoreTarget(parameter, index, (*target)->Get());
        } else if (const int* number = std::get_if<int>(&held)) {
            entry = *number;
        } else if (const float* fraction = std::get_if<float>(&held)) {
            entry = *fraction;
        } else {
            entry = std::get<MSTR>(held);
        }
    }
    values = std::move(current);
    if (shape == Shape::Changed) {
        if (count != old) {
            TellTableChanged(parameter, tab_setcount, std::min(count, old), std::abs(count - old));
        } else {
            TellTableChanged(parameter, tab_sort, 0, count);
        }
    }
    TellChanged(parameter, tabIndex, FOREVER, PART_ALL, REFMSG_CHANGE);
}

}  // namespace host

// What a parameter block leaves in the hold, and how its parameters get back what they were.
#include <algorithm>
#include <cstdlib>
#include <utility>

#include <hold.h>

#include "host/application.h"
#include "host/param_block.h"

namespace host {

// A parameter's other values: those before the change, or after it once it is taken back.
class ParameterRestore final : public RestoreObj {
  public:
    ParameterRestore(std::shared_ptr<TargetReference> block, ParamID id, int tabIndex,
                     ParamBlock::Shape shape, ParamBlock::HeldValues before)
        : block_(std::move(block)),
          id_(id),
          tabIndex_(tabIndex),
          shape_(shape),
          other_(std::move(before)) {}

    bool HasTableOf(const ParamBlock* block, ParamID id) const {
        return block_->Get() == block && id_ == id && shape_ == ParamBlock::Shape::Changed;
    }

    void Restore(int /*isUndo*/) override { Exchange(); }
    void Redo() override { Exchange(); }

  private:
    void Exchange() {
        if (auto* block = static_cast<ParamBlock*>(block_->Get())) {
            block->Exchange(id_, tabIndex_, shape_, other_);
        }
    }

    std::shared_ptr<TargetReference> block_;
    ParamID id_;
    int tabIndex_;
    ParamBlock::Shape shape_;
    ParamBlock::HeldValues other_;
};

ParamBlock::HeldValue ParamBlock::Hold(const Parameter& parameter, int tabIndex) const {
    if (parameter.kind == Kind::Target) {
        ReferenceTarget* target = Target(parameter, tabIndex);
        return target ? std::make_unique<TargetReference>(target) : nullptr;
    }
    const Value& value = parameter.entries[static_cast<std::size_t>(tabIndex)];
    if (const int* number = std::get_if<int>(&value)) return *number;
    if (const float* fraction = std::get_if<float>(&value)) return *fraction;
    return std::get<MSTR>(value);
}

void ParamBlock::StoreHeld(Parameter& parameter, int tabIndex, const HeldValue& held) {
    Value& entry = parameter.entries[static_cast<std::size_t>(tabIndex)];
    if (const auto* target = std::get_if<std::unique_ptr<TargetReference>>(&held)) {
        StoreTarget(parameter, tabIndex, *target ? (*target)->Get() : nullptr);
    } else if (const int* number = std::get_if<int>(&held)) {
        entry = *number;
    } else if (const float* fraction = std::get_if<float>(&held)) {
        entry = *fraction;
    } else {
        entry = std::get<MSTR>(held);
    }
}

ParamBlock::HeldValues ParamBlock::Snapshot(const Parameter& parameter) const {
    HeldValues values;
    values.reserve(parameter.entries.size());
    for (int index = 0; parameter.Has(index); ++index)
        values.push_back(Hold(parameter, index));
    return values;
}

std::optional<ParamBlock::HeldValues> ParamBlock::TableIfHolding(const Parameter& parameter) const {
    // Once is enough for changes that follow each other: a table may go entry by entry.
    const auto* last = dynamic_cast<const ParameterRestore*>(App().undo.LastChange());
    if (!theHold.Holding() || (last && last->HasTableOf(this, parameter.id))) return std::nullopt;
    return Snapshot(parameter);
}

std::optional<ParamBlock::HeldValues> ParamBlock::EntryIfHolding(const Parameter& parameter,
                                                                 int tabIndex) const {
    if (!theHold.Holding()) return std::nullopt;
    HeldValues values;
    values.push_back(Hold(parameter, tabIndex));
    return values;
}

// One for all steps: each change of the block is told to all who refer to it.
std::shared_ptr<TargetReference> ParamBlock::ForRestore() {
    std::shared_ptr<TargetReference> block = forRestore_.lock();
    if (!block) forRestore_ = block = std::make_shared<TargetReference>(this);
    return block;
}

void ParamBlock::PutUndo(const Parameter& parameter, int tabIndex, Shape shape,
                         std::optional<HeldValues> before) {
    if (before) {
        theHold.Put(
            new ParameterRestore(ForRestore(), parameter.id, tabIndex, shape, std::move(*before)));
    }
}

void ParamBlock::Exchange(ParamID id, int tabIndex, Shape shape, HeldValues& values) {
    Parameter& parameter = *Find(id);
    if (shape == Shape::Changed) {
        ExchangeTable(parameter, values);
    } else if (parameter.Has(tabIndex)) {
        ExchangeEntry(parameter, tabIndex, values.front());
    }
    TellChanged(parameter, tabIndex, FOREVER, PART_ALL, REFMSG_CHANGE);
}

void ParamBlock::ExchangeEntry(Parameter& parameter, int tabIndex, HeldValue& held) {
    HeldValue current = Hold(parameter, tabIndex);
    StoreHeld(parameter, tabIndex, held);
    held = std::move(current);
}

void ParamBlock::ExchangeTable(Parameter& parameter, HeldValues& values) {
    const int old = static_cast<int>(parameter.entries.size());
    const int count = static_cast<int>(values.size());
    HeldValues current = Snapshot(parameter);
    if (parameter.kind == Kind::Target) {
        for (int index = 0; index < old; ++index)
            StoreTarget(parameter, index, nullptr);
    }
    parameter.entries.resize(values.size(), Empty(parameter.kind));
    for (int index = 0; index < count; ++index)
        StoreHeld(parameter, index, values[static_cast<std::size_t>(index)]);
    values = std::move(current);
    if (count != old) {
        TellTableChanged(parameter, tab_setcount, std::min(count, old), std::abs(count - old));
    } else {
        TellTableChanged(parameter, tab_sort, 0, count);
    }
}

}  // namespace host

// Tables of a parameter block: how their entries come, go and change places.
#include <algorithm>
#include <cstdlib>
#include <utility>

#include "host/param_block.h"
#include "host/target_lifetime.h"

namespace host {

int ParamBlock::Count(ParamID id) {
    const Parameter* parameter = Find(id);
    return parameter && parameter->IsTable() ? static_cast<int>(parameter->entries.size()) : 0;
}

void ParamBlock::SetCount(ParamID id, int count) {
    Parameter* parameter = FindVariableTable(id);
    const int old = Count(id);
    if (!parameter || count < 0 || count == old) {
        return;
    }
    std::optional<HeldValues> before = TableIfHolding(*parameter);
    if (count < old) {
        RemoveEntries(*parameter, count, old - count);
    } else {
        parameter->entries.resize(static_cast<std::size_t>(count), Empty(parameter->kind));
    }
    const int first = std::min(old, count);
    PutUndo(*parameter, WHOLE_TABLE, Shape::Changed, std::move(before));
    TellTableChanged(*parameter, tab_setcount, first, std::abs(count - old));
    TellChanged(*parameter, WHOLE_TABLE, FOREVER, PART_ALL, REFMSG_CHANGE);
}

int ParamBlock::Append(ParamID id, int count, ReferenceTarget** values, int /*allocN*/) {
    return InsertTargets(id, Count(id), count, values, tab_append);
}

int ParamBlock::Append(ParamID id, int count, const MCHAR** values, int /*allocN*/) {
    return InsertTexts(id, Count(id), count, values, tab_append);
}

int ParamBlock::Insert(ParamID id, int at, int count, ReferenceTarget** values) {
    return InsertTargets(id, at, count, values, tab_insert);
}

int ParamBlock::Insert(ParamID id, int at, int count, const MCHAR** values) {
    return InsertTexts(id, at, count, values, tab_insert);
}

int ParamBlock::InsertTargets(ParamID id, int at, int count, ReferenceTarget** values,
                              tab_changes code) {
    Parameter* parameter = FindVariableTable(id);
    if (!parameter || parameter->kind != Kind::Target || at < 0 || at > Count(id) || count <= 0) {
        return -1;
    }
    std::vector<PB2Value> incoming(static_cast<std::size_t>(count), TargetValue(nullptr));
    if (values) {
        std::transform(values, values + count, incoming.begin(), TargetValue);
    }
    return InsertValues(*parameter, at, incoming, code);
}

int ParamBlock::InsertTexts(ParamID id, int at, int count, const MCHAR** values, tab_changes code) {
    Parameter* parameter = FindVariableTable(id);
    if (!parameter || parameter->kind != Kind::Text || at < 0 || at > Count(id) || count <= 0) {
        return -1;
    }
    std::vector<PB2Value> incoming(static_cast<std::size_t>(count), TextValue(nullptr));
    if (values) {
        std::transform(values, values + count, incoming.begin(), TextValue);
    }
    return InsertValues(*parameter, at, incoming, code);
}

int ParamBlock::InsertValues(Parameter& parameter, int at, const std::vector<PB2Value>& values,
                             tab_changes code) {
    const int count = static_cast<int>(values.size());
    std::vector<Value> stored;
    for (int index = 0; index < count; ++index) {
        std::optional<Value> value =
            Incoming(parameter, 0, at + index, values[static_cast<std::size_t>(index)]);
        if (!value) {
            return -1;
        }
        stored.push_back(std::move(*value));
    }
    if (at > static_cast<int>(parameter.entries.size())) {
        return -1;
    }
    std::optional<HeldValues> before = TableIfHolding(parameter);
    parameter.entries.insert(parameter.entries.begin() + at, stored.size(), Empty(parameter.kind));
    for (int index = 0; index < count; ++index) {
        Value& value = stored[static_cast<std::size_t>(index)];
        if (parameter.kind != Kind::Target) {
            parameter.entries[static_cast<std::size_t>(at) + static_cast<std::size_t>(index)] =
                std::move(value);
        } else if (!StoreTarget(parameter, at + index, std::get<ReferenceTarget*>(value))) {
            // Targets that couldn't come in stay the caller's.
            const TargetLifetime::Pause pause;
            RemoveEntries(parameter, at, count);
            return -1;
        }
    }
    PutUndo(parameter, WHOLE_TABLE, Shape::Changed, std::move(before));
    TellTableChanged(parameter, code, at, count);
    TellChanged(parameter, WHOLE_TABLE, FOREVER, PART_ALL, REFMSG_CHANGE);
    return at;
}

int ParamBlock::Delete(ParamID id, int start, int num) {
    Parameter* parameter = FindVariableTable(id);
    if (!parameter || !parameter->Has(start) || num <= 0) {
        return -1;
    }
    const int count = std::min(num, Count(id) - start);
    std::optional<HeldValues> before = TableIfHolding(*parameter);
    RemoveEntries(*parameter, start, count);
    PutUndo(*parameter, WHOLE_TABLE, Shape::Changed, std::move(before));
    TellTableChanged(*parameter, tab_delete, start, count);
    TellChanged(*parameter, WHOLE_TABLE, FOREVER, PART_ALL, REFMSG_CHANGE);
    return Count(id);
}

// References go one by one, so that the numbers of those behind them stay right.
void ParamBlock::RemoveEntries(Parameter& parameter, int start, int count) {
    if (parameter.kind == Kind::Target) {
        for (int index = start; index < start + count; ++index) {
            StoreTarget(parameter, index, nullptr);
        }
    }
    const auto first = parameter.entries.begin() + start;
    parameter.entries.erase(first, first + count);
}

void ParamBlock::Sort(ParamID id, CompareFnc compare) {
    Parameter* parameter = Find(id);
    if (!parameter || !parameter->IsTable() || parameter->kind != Kind::Target || !compare) {
        return;
    }
    std::vector<ReferenceTarget*> targets;
    for (const Value& entry : parameter->entries) {
        targets.push_back(std::get<ReferenceTarget*>(entry));
    }
    std::stable_sort(targets.begin(), targets.end(),
                     [compare](ReferenceTarget* const& left, ReferenceTarget* const& right) {
                         return compare(&left, &right) < 0;
                     });
    std::optional<HeldValues> unsorted = TableIfHolding(*parameter);
    // The same targets in another order: nobody's list of dependents changes.
    std::copy(targets.begin(), targets.end(), parameter->entries.begin());
    PutUndo(*parameter, WHOLE_TABLE, Shape::Changed, std::move(unsorted));
    TellTableChanged(*parameter, tab_sort, 0, Count(id));
    TellChanged(*parameter, WHOLE_TABLE, FOREVER, PART_ALL, REFMSG_CHANGE);
}

}  // namespace host

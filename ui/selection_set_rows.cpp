#include "ui/selection_set_rows.h"

#include <INamedSelectionSetManager.h>
#include <iparamb2.h>

#include <vector>

#include "effect/psd_output.h"
#include "effect/undo_step.h"
#include "plugin/parameters.h"
#include "plugin/string_table.h"
#include "ui/list_views.h"

namespace ui {
namespace {

constexpr ParamID setList = "namedSelectionSetsList"_param;

constexpr int enableAllText = 57;
constexpr int disableAllText = 58;

// Pixels.
constexpr int checkColumnWidth = 20;

using effect::SetName;
using effect::SetNames;

// In the scene's order, each once.
std::vector<SetName> NamesOfScene() {
    std::vector<SetName> names;
    SetNames met;
    for (const SetName& name : effect::SelectionSetsOfScene()) {
        if (met.insert(name).second) names.push_back(name);
    }
    return names;
}

// All at once: who listens is told once.
void AddNames(IParamBlock2& pblock, const std::vector<SetName>& names) {
    std::vector<const MCHAR*> texts;
    texts.reserve(names.size());
    for (const SetName& name : names)
        texts.push_back(name.c_str());
    pblock.Append(setList, static_cast<int>(texts.size()), texts.data());
}

// Entries that lie together go at once. From the last to the first, so that indices hold.
void RemoveNames(IParamBlock2& pblock, const SetNames& names, const std::function<void()>& wrote) {
    int end = pblock.Count(setList);
    while (end > 0) {
        int start = end;
        while (start > 0 && names.contains(pblock.GetStr(setList, 0, start - 1)))
            --start;
        if (start < end) {
            pblock.Delete(setList, start, end - start);
            wrote();
        }
        end = start - 1;
    }
}

}  // namespace

int SelectionSetRows::Count() const {
    INamedSelectionSetManager* sets = INamedSelectionSetManager::GetInstance();
    return sets ? sets->GetNumNamedSelSets() : 0;
}

MSTR SelectionSetRows::Text(int row) const {
    INamedSelectionSetManager* sets = INamedSelectionSetManager::GetInstance();
    MSTR name;
    if (sets) sets->GetNamedSelSetName(row, name);
    return name;
}

bool SelectionSetRows::IsOn(IParamBlock2& pblock, const MSTR& name) {
    const int count = pblock.Count(setList);
    if (listed_ != &pblock || count_ != count) {
        names_ = effect::ListedSelectionSets(pblock);
        listed_ = &pblock;
        count_ = count;
    }
    return effect::IsSelectionSetOn(names_, name);
}

int SelectionSetRows::CheckImage(const effect::PSDOutput& effect, int row) {
    const bool known = row >= 0 && row < Count();
    return ui::CheckImage(known && effect.pblock && IsOn(*effect.pblock, Text(row)));
}

bool SelectionSetRows::Click(const effect::PSDOutput& effect, int row, int column, int x) {
    const bool onCheckBox = column == 0 && x >= 0 && x < checkColumnWidth;
    if (!onCheckBox || row < 0 || row >= Count() || !effect.pblock) return false;
    IParamBlock2& pblock = *effect.pblock;
    const SetName name = Text(row).data();
    effect::UndoStep step;
    if (effect::ListedSelectionSets(pblock).contains(name)) {
        RemoveNames(pblock, {name}, [] {});
    } else {
        AddNames(pblock, {name});
    }
    step.Accept(_M("Parameter Change"));
    ListChanged();
    return true;
}

RowMenu SelectionSetRows::Menu() const {
    return {{{enableAllItem, plugin::GetString(enableAllText)},
             {disableAllItem, plugin::GetString(disableAllText)}}};
}

void SelectionSetRows::ChooseMenu(const effect::PSDOutput& effect, int item,
                                  const std::function<void()>& redraw) {
    if (!effect.pblock || (item != enableAllItem && item != disableAllItem)) return;
    IParamBlock2& pblock = *effect.pblock;
    const bool on = item == enableAllItem;
    std::vector<SetName> names = NamesOfScene();
    effect::UndoStep step;
    if (on) {
        const SetNames listed = effect::ListedSelectionSets(pblock);
        std::erase_if(names, [&](const SetName& name) { return listed.contains(name); });
        if (!names.empty()) {
            AddNames(pblock, names);
            ListChanged();
            redraw();
        }
    } else {
        RemoveNames(pblock, {names.begin(), names.end()}, [&] {
            ListChanged();
            redraw();
        });
    }
    step.Accept(on ? _M("Enable all layers") : _M("Disable all layers"));
    ListChanged();
}

}  // namespace ui

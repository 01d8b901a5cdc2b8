#include "ui/scene_layer_rows.h"

#include <ilayermanager.h>
#include <iparamb2.h>
#include <maxapi.h>

#include <algorithm>
#include <string>
#include <unordered_map>
#include <utility>

#include "effect/psd_output.h"
#include "effect/scene_layer_choice.h"
#include "effect/undo_step.h"
#include "plugin/block_changes.h"
#include "plugin/parameters.h"
#include "ui/list_views.h"

namespace ui {
namespace {

constexpr std::size_t blanksPerLevel = 4;

struct NamedLayer {
    ILayer* layer;
    MSTR name;
};
using Siblings = std::vector<NamedLayer>;

// Of each layer those in it, sorted; of null those at the top.
std::unordered_map<const ILayer*, Siblings> SortedSiblings(ILayerManager& manager) {
    std::unordered_map<const ILayer*, Siblings> siblings;
    const int count = manager.GetLayerCount();
    for (int i = 0; i < count; ++i) {
        ILayer* layer = manager.GetLayer(i);
        if (layer) siblings[layer->GetParentLayer()].push_back({layer, layer->GetName()});
    }
    for (auto& [parent, children] : siblings) {
        std::ranges::stable_sort(children, [](const NamedLayer& left, const NamedLayer& right) {
            return MaxAlphaNumCompI(left.name.data(), right.name.data()) < 0;
        });
    }
    return siblings;
}

// What a layer keeps for others changes without a message, so whoever takes a switch back, or does
// it again, has the list drawn anew.
class ListRedraw final : public RestoreObj {
  public:
    void Restore(int) override { Redraw(); }
    void Redo() override { Redraw(); }

  private:
    static void Redraw() {
        if (plugin::EffectPanel* panel = plugin::OpenPanel()) panel->RedrawSceneLayers();
    }
};

DWORD ChoiceNumber(const effect::PSDOutput& effect) {
    return static_cast<DWORD>(effect.pblock->GetInt("sceneLayerAppDataChunkId"_param));
}

}  // namespace

void SceneLayerRows::Refresh() {
    Clear();
    ILayerManager* manager = GetCOREInterface()->GetLayerManager();
    if (!manager) return;
    const auto siblings = SortedSiblings(*manager);
    // The next layer to be visited is the last.
    std::vector<Row> waiting;
    const auto wait = [&](const ILayer* parent, int depth) {
        const auto found = siblings.find(parent);
        if (found == siblings.end()) return;
        const Siblings& children = found->second;
        for (auto child = children.rbegin(); child != children.rend(); ++child)
            waiting.push_back({child->layer, depth});
    };
    wait(nullptr, 0);
    while (!waiting.empty()) {
        const Row row = waiting.back();
        waiting.pop_back();
        rows_.push_back({nullptr, row.depth});
        ReplaceReference(Count() - 1, row.layer);
        wait(row.layer, row.depth + 1);
    }
}

void SceneLayerRows::Clear() {
    for (int row = Count() - 1; row >= 0; --row)
        DeleteReference(row);
    rows_.clear();
}

ILayer* SceneLayerRows::Layer(int parameter) const {
    const bool known = parameter >= 0 && parameter < Count();
    return known ? rows_[static_cast<std::size_t>(parameter)].layer : nullptr;
}

MSTR SceneLayerRows::Text(int parameter) const {
    const ILayer* layer = Layer(parameter);
    if (!layer) return {};
    const int depth = rows_[static_cast<std::size_t>(parameter)].depth;
    const MSTR name = layer->GetName();
    std::basic_string<MCHAR> text(blanksPerLevel * static_cast<std::size_t>(depth), _M(' '));
    // The layer that every scene has.
    text += name == MSTR(_M("0")) ? _M("Default") : name.data();
    return MSTR(std::move(text));
}

int SceneLayerRows::CheckImage(const effect::PSDOutput& effect, int parameter) const {
    ILayer* layer = Layer(parameter);
    return ui::CheckImage(layer && effect.pblock &&
                          effect::IsSceneLayerOn(layer, ChoiceNumber(effect)));
}

int SceneLayerRows::Delete(const ILayer* layer) {
    for (int row = Count() - 1; row >= 0; --row) {
        if (!layer || Layer(row) != layer) continue;
        DeleteReference(row);
        rows_.erase(rows_.begin() + row);
        return row;
    }
    return -1;
}

bool SceneLayerRows::Toggle(const effect::PSDOutput& effect, int parameter) const {
    ILayer* layer = Layer(parameter);
    if (!layer || !effect.pblock) return false;
    const DWORD number = ChoiceNumber(effect);
    effect::UndoStep step;
    theHold.Put(new ListRedraw);
    effect::SetSceneLayerOn(layer, number, !effect::IsSceneLayerOn(layer, number));
    step.Accept(_M("Parameter Change"));
    return true;
}

RefTargetHandle SceneLayerRows::GetReference(int which) {
    return Layer(which);
}

void SceneLayerRows::SetReference(int which, RefTargetHandle target) {
    if (which < 0 || which >= Count()) return;
    rows_[static_cast<std::size_t>(which)].layer = static_cast<ILayer*>(target);
}

RowMenu SceneLayerMenu() {
    return {{{enableAllItem, _M("Enable output of all scene layers")},
             {disableAllItem, _M("Disable output of all scene layers")}}};
}

void ChooseSceneLayerMenu(const effect::PSDOutput& effect, int item,
                          const std::function<void()>& redraw) {
    ILayerManager* manager = GetCOREInterface()->GetLayerManager();
    if (!manager || !effect.pblock || (item != enableAllItem && item != disableAllItem)) return;
    const bool on = item == enableAllItem;
    const DWORD number = ChoiceNumber(effect);
    effect::UndoStep step;
    bool changed = false;
    const int count = manager->GetLayerCount();
    for (int i = 0; i < count; ++i) {
        ILayer* layer = manager->GetLayer(i);
        if (!layer || effect::IsSceneLayerOn(layer, number) == on) continue;
        if (!std::exchange(changed, true)) theHold.Put(new ListRedraw);
        effect::SetSceneLayerOn(layer, number, on);
        redraw();
    }
    step.Accept(on ? _M("Enable all layers") : _M("Disable all layers"));
}

}  // namespace ui

#include "ui/element_row_clicks.h"

#include <iparamb2.h>

#include "effect/psd_output.h"
#include "effect/psd_output_layer.h"
#include "effect/reset_layer.h"
#include "plugin/layer_presets.h"
#include "plugin/parameters.h"
#include "plugin/string_table.h"
#include "ui/element_cells.h"

namespace ui {
namespace {

constexpr std::uint32_t onCheckBox = 8;
constexpr std::uint32_t onItem = 14;

constexpr std::uint32_t changedState = 8;
constexpr std::uint32_t isFocused = 1;
constexpr std::uint32_t isSelected = 2;

constexpr int saveAsDefaultText = 17;
constexpr int resetToDefaultText = 32;

void ToggleSetting(IParamBlock2& settings, ParamID id) {
    settings.SetValue(id, 0, settings.GetInt(id) ? FALSE : TRUE);
}

}  // namespace

bool ClickElement(const effect::PSDOutput& effect, const RowHit& hit) {
    const effect::PSDOutputLayer* layer = LayerOfRow(effect, hit.row);
    if (!layer) return false;
    if (hit.column == elementNameColumn && hit.flags == onCheckBox) {
        ToggleSetting(*layer->pblock, "enabled"_layerParam);
        return true;
    }
    if (hit.column == elementVisibleColumn && (hit.flags & onItem)) {
        ToggleSetting(*layer->pblock, "visible"_layerParam);
        return true;
    }
    return false;
}

bool HasElementMenu(const effect::PSDOutput& effect, int row) {
    return LayerOfRow(effect, row) != nullptr;
}

RowMenu ElementMenu() {
    return {{{saveAsDefaultItem, plugin::GetString(saveAsDefaultText)},
             {resetToDefaultItem, plugin::GetString(resetToDefaultText)}}};
}

bool ChooseElementMenu(effect::PSDOutput& effect, int row, int item) {
    effect::PSDOutputLayer* layer = LayerOfRow(effect, row);
    if (!layer) return false;
    if (item == saveAsDefaultItem) plugin::SaveLayerPreset(layer);
    if (item != resetToDefaultItem) return false;
    effect::ResetLayer(effect, *layer);
    return true;
}

bool IsSelectionChange(std::uint32_t changed, std::uint32_t oldState, std::uint32_t newState) {
    return (changed & changedState) && (newState & isSelected) &&
           (!(oldState & isSelected) || ((oldState | newState) & isFocused));
}

}  // namespace ui

#include "ui/element_cells.h"

#include <iparamb2.h>

#include "effect/psd_output.h"
#include "effect/psd_output_layer.h"
#include "plugin/parameters.h"
#include "ui/blend_mode_combo.h"
#include "ui/list_views.h"

namespace ui {
namespace {

struct FlagLetter {
    ParamID id;
    const MCHAR* letter;
    bool ofChannels;
};
constexpr FlagLetter flagLetters[] = {
    {"premultiply"_layerParam, _M("P"), true}, {"transparency"_layerParam, _M("T"), false},
    {"mask"_layerParam, _M("M"), false},       {"groupWithPrevious"_layerParam, _M("C"), false},
    {"split"_layerParam, _M("S"), false},
};

MSTR MiscCell(IParamBlock2& settings, bool isChannel) {
    MSTR letters;
    for (const FlagLetter& flag : flagLetters) {
        if (isChannel && !flag.ofChannels) continue;
        if (settings.GetInt(flag.id)) letters += flag.letter;
    }
    return letters;
}

MSTR VisibleCell(IParamBlock2& settings) {
    if (!settings.GetInt("visible"_layerParam)) return _M("Off");
    return settings.GetInt("mergeDown"_layerParam) ? _M("vvv") : _M("On");
}

}  // namespace

effect::PSDOutputLayer* LayerOfRow(const effect::PSDOutput& effect, int row) {
    return effect.Layer(effect::PSDOutput::productionLayers, row);
}

int ElementRowCount(const effect::PSDOutput& effect) {
    int rows = 0;
    for (int i = effect.LayerCount(effect::PSDOutput::productionLayers) - 1; i >= 0; --i) {
        if (LayerOfRow(effect, i)) ++rows;
    }
    return rows;
}

MSTR ElementCell(const effect::PSDOutput& effect, int row, int column) {
    const effect::PSDOutputLayer* layer = LayerOfRow(effect, row);
    if (column == elementNameColumn) return layer ? layer->ElementName() : MSTR(_M("<deleted>"));
    if (!layer) return {};
    IParamBlock2& settings = *layer->pblock;
    const bool isChannel = settings.GetInt("outputAs"_layerParam) == 1;
    switch (column) {
        case elementVisibleColumn:
            return isChannel ? MSTR(_M("- - -")) : VisibleCell(settings);
        case elementModeColumn:
            return isChannel ? MSTR(_M("- - - - - - - - - - -"))
                             : BlendModeName(settings.GetInt("blendingMode"_layerParam));
        case elementMiscColumn:
            return MiscCell(settings, isChannel);
        default:
            return {};
    }
}

int ElementCheckImage(const effect::PSDOutput& effect, int row) {
    const effect::PSDOutputLayer* layer = LayerOfRow(effect, row);
    return CheckImage(layer && layer->pblock->GetInt("enabled"_layerParam));
}

}  // namespace ui

#include "ui/layer_controls.h"

#include <gamma.h>
#include <iparamb2.h>
#include <renderelements.h>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "effect/color_decisions.h"
#include "effect/psd_output.h"
#include "effect/psd_output_layer.h"
#include "plugin/parameters.h"
#include "ui/element_cells.h"

namespace ui {
namespace {

// What must be the case for a control to be enabled.
enum Need : std::size_t {
    needsOutput,            // render elements go out
    needsLayer,             // and one is selected
    needsLayerOutput,       // which becomes a layer, and not a channel
    needsGammaChoice,       // and has a say in the file gamma
    needsCorrectionChoice,  // or in V-Ray's colour corrections
    needsRowAbove,          // to change places with
    needsRowBelow,
    needCount,
};
using Fulfilled = std::array<bool, needCount>;

constexpr int moveUpButton = 1069;
constexpr int moveDownButton = 1068;
constexpr int enabledBox = 1048;

struct ControlNeed {
    int control;
    Need need;
};
constexpr ControlNeed controlNeeds[] = {
    {1043, needsOutput},
    {1091, needsOutput},
    {1079, needsOutput},
    {moveDownButton, needsRowBelow},
    {moveUpButton, needsRowAbove},
    {enabledBox, needsLayer},
    {1112, needsLayer},
    {1114, needsLayer},
    {1063, needsLayer},
    {1083, needsLayer},
    {1092, needsLayer},
    {1159, needsLayer},
    {1087, needsLayer},
    {1058, needsLayerOutput},
    {1056, needsLayerOutput},
    {1057, needsLayerOutput},
    {1045, needsLayerOutput},
    {1084, needsLayerOutput},
    {1085, needsLayerOutput},
    {1086, needsLayerOutput},
    {1059, needsLayerOutput},
    {1160, needsGammaChoice},
    {1060, needsCorrectionChoice},
};

constexpr std::size_t longestName = 255;

// What a check box or radio sets, and the value that a radio stands for.
struct Meaning {
    ParamID id;
    bool isRadio = false;
    int value = 0;
};

std::optional<Meaning> MeaningOf(int control) {
    // The check box beside the one that the list draws.
    if (control == enabledBox) return Meaning{"enabled"_layerParam};
    for (const parameters::Row& row : parameters::layerRows) {
        const parameters::Control& bound = row.control;
        if (bound.place != parameters::elementDetail) continue;
        if (bound.kind == parameters::ControlKind::CheckBox && bound.ids[0] == control) {
            return Meaning{row.id};
        }
        if (bound.kind != parameters::ControlKind::Radio) continue;
        for (std::size_t i = 0; i < row.choices.size(); ++i) {
            if (bound.ids.at(i) == control) return Meaning{row.id, true, row.choices[i].value};
        }
    }
    return std::nullopt;
}

// Nothing for a control that can't be checked. All are unchecked without a layer.
std::optional<bool> CheckedBy(const effect::PSDOutputLayer* layer, int control) {
    const std::optional<Meaning> meaning = MeaningOf(control);
    if (!meaning) return std::nullopt;
    if (!layer) return false;
    const int value = layer->pblock->GetInt(meaning->id);
    return meaning->isRadio ? value == meaning->value : value != 0;
}

// Whether the host's file gamma reaches documents of this depth, and the elements are to choose.
bool ElementsChooseGamma(IParamBlock2& settings) {
    return gammaMgr.enable && settings.GetInt("bitDepth"_param) != 32 &&
           settings.GetInt("gammaCorrectRender"_param) &&
           settings.GetInt("gammaCorrectConfig"_param) == effect::correctChosenElements;
}

bool ElementsChooseCorrections(IParamBlock2& settings) {
    return effect::DecideColors(settings).ccActive &&
           settings.GetInt("colorCorrectConfig"_param) == effect::correctChosenElements;
}

Fulfilled NeedsFulfilled(IParamBlock2& settings, const effect::PSDOutputLayer* layer, int row,
                         int rows) {
    Fulfilled is{};
    if (!settings.GetInt("createRenderElementLayers"_param)) return is;
    is[needsOutput] = true;
    const bool sorted = settings.GetInt("autoSort"_param) != 0;
    is[needsRowBelow] = !sorted && rows >= 1 && row >= 0 && row < rows - 1;
    is[needsRowAbove] = !sorted && rows >= 1 && row >= 1;
    is[needsLayer] = layer != nullptr;
    is[needsLayerOutput] = layer && layer->pblock->GetInt("outputAs"_layerParam) == 0;
    is[needsGammaChoice] = is[needsLayerOutput] && ElementsChooseGamma(settings);
    is[needsCorrectionChoice] = is[needsLayerOutput] && ElementsChooseCorrections(settings);
    return is;
}

}  // namespace

LayerControls UpdateLayerControls(const effect::PSDOutput& effect, int row, int rows) {
    LayerControls shown;
    const effect::PSDOutputLayer* layer = LayerOfRow(effect, row);
    Fulfilled is{};
    bool withArrows = true;
    if (effect.pblock) {
        is = NeedsFulfilled(*effect.pblock, layer, row, rows);
        withArrows = !effect.pblock->GetInt("autoSort"_param);
    }
    for (const ControlNeed& each : controlNeeds) {
        const bool isArrow = each.control == moveUpButton || each.control == moveDownButton;
        shown.controls.push_back(
            {each.control, is[each.need], withArrows || !isArrow, CheckedBy(layer, each.control)});
    }
    if (layer) shown.name = layer->ElementName();
    shown.blendingMode = BlendModeOfRow(effect, row);
    return shown;
}

int BlendModeOfRow(const effect::PSDOutput& effect, int row) {
    const effect::PSDOutputLayer* layer = LayerOfRow(effect, row);
    return layer ? layer->pblock->GetInt("blendingMode"_layerParam) : -1;
}

bool ClickLayerControl(const effect::PSDOutput& effect, int row, int control, bool checked) {
    const effect::PSDOutputLayer* layer = LayerOfRow(effect, row);
    const std::optional<Meaning> meaning = MeaningOf(control);
    if (!layer || !meaning) return false;
    const int value = meaning->isRadio ? meaning->value : static_cast<int>(checked);
    return layer->pblock->SetValue(meaning->id, 0, value) != FALSE;
}

bool ChooseBlendMode(const effect::PSDOutput& effect, int row, int mode) {
    const effect::PSDOutputLayer* layer = LayerOfRow(effect, row);
    if (!layer || mode < 0) return false;
    return layer->pblock->SetValue("blendingMode"_layerParam, 0, mode) != FALSE;
}

bool RenameElement(const effect::PSDOutput& effect, int row, const MCHAR* name) {
    const effect::PSDOutputLayer* layer = LayerOfRow(effect, row);
    IRenderElement* element = layer ? layer->Element() : nullptr;
    if (!element || !name) return false;
    if (std::basic_string_view<MCHAR>(element->ElementName()) == name) return false;
    element->SetElementName(name);
    return true;
}

bool TakeTypedElementName(const effect::PSDOutput& effect, int row, const MSTR& typed) {
    const effect::PSDOutputLayer* layer = LayerOfRow(effect, row);
    if (layer && layer->ElementName() == typed) return false;
    const std::basic_string<MCHAR> name(typed.data());
    return RenameElement(effect, row, name.substr(0, longestName).c_str());
}

}  // namespace ui

#include "effect/class_defaults.h"

#include <renderelements.h>

#include "effect/element_classes.h"
#include "effect/psd_output_layer.h"
#include "plugin/parameters.h"

namespace effect {
namespace {

LayerDefaults DefaultsOf(const Class_ID& id) {
    const int rank = ElementRank(id);
    return rank < 0 ? LayerDefaults() : ElementClasses()[static_cast<std::size_t>(rank)].defaults;
}

}  // namespace

int ApplyClassDefaults(PSDOutputLayer* layer) {
    IRenderElement* element = layer ? layer->Element() : nullptr;
    if (!element) return 0;
    const LayerDefaults defaults = DefaultsOf(element->ClassID());
    const auto set = [layer](ParamID id, int value) { layer->pblock->SetValue(id, 0, value); };
    set("enabled"_layerParam, TRUE);
    set("visible"_layerParam, defaults.visible);
    set("mask"_layerParam, FALSE);
    set("transparency"_layerParam, defaults.transparency);
    set("premultiply"_layerParam, defaults.premultiply);
    set("blendingMode"_layerParam, defaults.blendingMode);
    set("outputAs"_layerParam, defaults.outputAs);
    set("groupWithPrevious"_layerParam, defaults.groupWithPrevious);
    set("split"_layerParam, FALSE);
    set("gammaCorrect"_layerParam, defaults.gammaCorrect);
    set("mergeDown"_layerParam, FALSE);
    set("colorCorrect"_layerParam, defaults.colorCorrect);
    return 1;
}

}  // namespace effect

#include "command/layer_settings.h"

#include <iparamb2.h>
#include <renderelements.h>

#include <algorithm>

#include "command/session.h"
#include "plugin/entry.h"

namespace command {

ParamID LayerParameter(std::string_view name) {
    const auto rows = plugin::LayerParameters();
    return std::find_if(rows.begin(), rows.end(),
                        [&](const parameters::Row& row) { return row.name == name; })
        ->id;
}

IParamBlock2* LayerSettingsOf(IParamBlock2& effect, const IRenderElement* element) {
    const ParamID list = Session::IdOf("layersProduction");
    const ParamID renderElement = LayerParameter("renderElement");
    for (int i = 0; i < effect.Count(list); ++i) {
        ReferenceTarget* layer = effect.GetReferenceTarget(list, 0, i);
        IParamBlock2* block = layer ? layer->GetParamBlock(0) : nullptr;
        if (block && block->GetReferenceTarget(renderElement) == element) return block;
    }
    return nullptr;
}

void ApplyLayerSettings(const std::vector<ElementSetting>& settings, std::string_view elementName,
                        IParamBlock2& layer) {
    for (const ElementSetting& setting : settings) {
        if (IsFor(setting, elementName)) Apply(setting.setting, layer);
    }
}

}  // namespace command

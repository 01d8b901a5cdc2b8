// The effect's settings of one render element.
#pragma once

#include <string_view>
#include <vector>

#include "command/element_setting.h"

class IParamBlock2;
class IRenderElement;

namespace command {

// A parameter of such settings, by its name.
ParamID LayerParameter(std::string_view name);

// Null when the effect has none of the element. `effect` is the effect's own block.
IParamBlock2* LayerSettingsOf(IParamBlock2& effect, const IRenderElement* element);

// Those that are for the element, in their order.
void ApplyLayerSettings(const std::vector<ElementSetting>& settings, std::string_view elementName,
                        IParamBlock2& layer);

}  // namespace command

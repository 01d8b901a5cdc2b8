#include "plugin/layer_presets.h"

#include <renderelements.h>

#include <array>
#include <cstdint>
#include <span>
#include <string>

#include "effect/psd_output_layer.h"
#include "plugin/config_file.h"
#include "plugin/little_endian.h"
#include "plugin/parameters.h"

namespace plugin {
namespace {

// The order of the record: a little-endian integer of 32 bits each. It stands in users' files and
// never changes.
constexpr ParamID recordParams[] = {
    "visible"_layerParam,           "blendingMode"_layerParam, "mask"_layerParam,
    "transparency"_layerParam,      "premultiply"_layerParam,  "outputAs"_layerParam,
    "groupWithPrevious"_layerParam, "split"_layerParam,        "gammaCorrect"_layerParam,
    "colorCorrect"_layerParam,
};
using Record = std::array<std::uint8_t, integerBytes * std::size(recordParams)>;

std::span<std::uint8_t, integerBytes> Integer(Record& record, std::size_t index) {
    return std::span(record).subspan(index * integerBytes).first<integerBytes>();
}

ConfigFile Presets() {
    ConfigFile config;
    config.SetSection(_M("LayerPresets"));
    return config;
}

// Both words of the class's id in eight upper-case hexadecimal digits each, so that elements of one
// class share a preset.
MSTR KeyOf(IRenderElement& element) {
    const Class_ID id = element.ClassID();
    std::basic_string<MCHAR> key;
    for (const std::uint64_t word : {id.PartA(), id.PartB()}) {
        for (int shift = 28; shift >= 0; shift -= 4)
            key.push_back(_M("0123456789ABCDEF")[word >> shift & 15]);
    }
    return MSTR(key);
}

}  // namespace

void SaveLayerPreset(effect::PSDOutputLayer* layer) {
    IRenderElement* element = layer ? layer->Element() : nullptr;
    if (!element) return;
    Record record{};
    for (std::size_t i = 0; i < std::size(recordParams); ++i) {
        const auto value = static_cast<std::uint32_t>(layer->pblock->GetInt(recordParams[i]));
        PutInteger(value, Integer(record, i));
    }
    Presets().WriteRecord(KeyOf(*element), record);
}

int LoadLayerPreset(effect::PSDOutputLayer* layer) {
    IRenderElement* element = layer ? layer->Element() : nullptr;
    Record record{};
    if (!element || !Presets().ReadRecord(KeyOf(*element), record)) return 0;
    for (std::size_t i = 0; i < std::size(recordParams); ++i) {
        layer->pblock->SetValue(recordParams[i], 0,
                                static_cast<int>(GetInteger(Integer(record, i))));
    }
    return 1;
}

}  // namespace plugin

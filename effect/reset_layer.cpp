#include "effect/reset_layer.h"

#include "effect/class_defaults.h"
#include "effect/psd_output.h"
#include "effect/psd_output_layer.h"
#include "plugin/parameters.h"

namespace effect {

void ResetLayer(PSDOutput& effect, PSDOutputLayer& layer) {
    ApplyClassDefaults(&layer);
    effect.Services().loadLayerPreset(&layer);
    if (!effect.pblock->GetInt("usePS7Extensions"_param)) layer.ReplaceNewerModes();
    if (effect.pblock->GetInt("bitDepth"_param) == 32) layer.PrepareFor32Bits();
}

}  // namespace effect

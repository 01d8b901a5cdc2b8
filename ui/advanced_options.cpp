#include "ui/advanced_options.h"

#include <gamma.h>
#include <maxapi.h>

#include <charconv>
#include <iterator>
#include <span>
#include <string>
#include <utility>

#include "effect/color_decisions.h"
#include "effect/renderer_kinds.h"
#include "plugin/parameters.h"

namespace ui {
namespace {

std::vector<OptionItem> ItemsOf(std::span<const parameters::Choice> choices) {
    std::vector<OptionItem> items;
    for (const parameters::Choice& choice : choices) {
        const std::basic_string<MCHAR> text(choice.label.begin(), choice.label.end());
        items.push_back({MSTR(text), choice.value});
    }
    return items;
}

// With two digits behind the point, whatever the user's language.
MSTR GammaText(float gamma) {
    char digits[64];
    const auto [end, error] = std::to_chars(std::begin(digits), std::end(digits), double{gamma},
                                            std::chars_format::fixed, 2);
    if (error != std::errc()) return {};
    return MSTR(std::basic_string<MCHAR>(std::begin(digits), end));
}

}  // namespace

AdvancedOptions ReadAdvancedOptions(effect::PSDOutput& effect) {
    AdvancedOptions options;
    options.effect = &effect;
    if (!effect.pblock) return options;
    IParamBlock2& pblock = *effect.pblock;
    options.gammaCorrect = pblock.GetInt("gammaCorrectRender"_param);
    options.gammaConfig = pblock.GetInt("gammaCorrectConfig"_param);
    options.colorCorrect = pblock.GetInt("vrayColorCorrections"_param);
    options.colorConfig = pblock.GetInt("colorCorrectConfig"_param);
    options.hideMatteLayers = !pblock.GetInt("matteLayersVisible"_param);
    options.denoiserChannels = pblock.GetInt("saveDenoiserExtraChannels"_param);
    options.compatibility = pblock.GetInt("compatibility"_param);
    return options;
}

void WriteAdvancedOptions(const AdvancedOptions& options) {
    if (!effect::PSDOutput::IsLiving(options.effect) || !options.effect->pblock) return;
    IParamBlock2& pblock = *options.effect->pblock;
    const std::pair<ParamID, int> values[] = {
        {"gammaCorrectRender"_param, options.gammaCorrect},
        {"gammaCorrectConfig"_param, options.gammaConfig},
        {"vrayColorCorrections"_param, options.colorCorrect},
        {"colorCorrectConfig"_param, options.colorConfig},
        {"matteLayersVisible"_param, !options.hideMatteLayers},
        {"saveDenoiserExtraChannels"_param, options.denoiserChannels},
        {"compatibility"_param, options.compatibility},
    };
    for (const auto& [id, value] : values)
        pblock.SetValue(id, 0, value);
}

std::vector<OptionItem> CorrectionItems() {
    return ItemsOf(parameters::correctionChoices);
}

std::vector<OptionItem> CompatibilityItems() {
    return ItemsOf(parameters::compatibilityChoices);
}

int ItemOf(const std::vector<OptionItem>& items, int value) {
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (items[i].value == value) return static_cast<int>(i);
    }
    return -1;
}

MSTR GammaToolTip(IParamBlock2& pblock) {
    MSTR text(_M("Control if and how how 3ds max Gamma correction is applied.\n"));
    if (!gammaMgr.enable) {
        text +=
            _M("Note: 3ds Max gamma correction is currently disabled.\n"
               "veltrane gamma options will have no effect.\n");
        return text;
    }
    if (pblock.GetInt("bitDepth"_param) == 32) {
        text +=
            _M("Note: 32-bit PSD/PSB files are always saved linear.\n"
               " 3ds Max and veltrane Gamma options will have no effect.\n");
    } else {
        text += _M("veltrane respects 3ds max Gamma options (see 3sd max Preferences).\n");
    }
    text += _M("Current 3ds Max File Output Gamma: ");
    text += GammaText(gammaMgr.fileOutGamma);
    return text;
}

AdvancedControls ShowAdvancedOptions(const AdvancedOptions& options) {
    Renderer* renderer = GetCOREInterface()->GetCurrentRenderer();
    const bool hasCorrections = effect::UsesVRayFrameBuffer(renderer);
    return {
        .gammaConfigEnabled = options.gammaCorrect != 0,
        .colorCorrectEnabled = hasCorrections,
        .colorConfigEnabled = hasCorrections && options.colorCorrect != 0,
        // Only V-Ray's denoiser leaves channels of its own in a frame.
        .denoiserChannelsEnabled = effect::IsClass(renderer, VRAY_CLASS_ID),
    };
}

CorrectionChoice AfterGammaChoice(CorrectionChoice chosen) {
    constexpr int layer = effect::correctByAdjustmentLayer;
    if (chosen.gamma != layer && chosen.color == layer) chosen.color -= 2;
    return chosen;
}

CorrectionChoice AfterColorChoice(CorrectionChoice chosen) {
    if (chosen.color == effect::correctByAdjustmentLayer) chosen.gamma = chosen.color;
    return chosen;
}

}  // namespace ui

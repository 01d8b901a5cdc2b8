// The dialog of settings that most users never touch. It works on a record of its own, so that
// nothing has to be taken back when the user cancels.
#pragma once

#include <cstdint>
#include <vector>

#include "effect/psd_output.h"

namespace ui {

struct AdvancedOptions {
    effect::PSDOutput* effect = nullptr;
    std::int32_t gammaCorrect = 0;
    std::int32_t gammaConfig = 0;
    std::int32_t colorCorrect = 0;
    std::int32_t colorConfig = 0;
    // The opposite of what the block says.
    std::int32_t hideMatteLayers = 0;
    std::int32_t denoiserChannels = 0;
    std::int32_t compatibility = 0;
};

AdvancedOptions ReadAdvancedOptions(effect::PSDOutput& effect);
// What OK does. Nothing for an effect that is gone.
void WriteAdvancedOptions(const AdvancedOptions& options);

struct OptionItem {
    MSTR text;
    int value;
};
// Of both combos of corrections, and of that of the compatibility, from top to bottom.
std::vector<OptionItem> CorrectionItems();
std::vector<OptionItem> CompatibilityItems();
// The item's place; -1 for a value that no item has.
int ItemOf(const std::vector<OptionItem>& items, int value);

// Of the controls of the gamma, by the host's gamma settings, and of those of the colours.
MSTR GammaToolTip(IParamBlock2& pblock);
inline constexpr const MCHAR* colorToolTip =
    _M("Control if and how V-Ray color corrections made in the V-ray framebuffer are applied.");

struct AdvancedControls {
    bool gammaConfigEnabled = false;
    bool colorCorrectEnabled = false;
    bool colorConfigEnabled = false;
    bool denoiserChannelsEnabled = false;
};
// When the dialog opens, by the host's renderer. From then on each of the two combos of corrections
// is enabled as its check box is checked.
AdvancedControls ShowAdvancedOptions(const AdvancedOptions& options);

// What the two combos of corrections show.
struct CorrectionChoice {
    int gamma = 0;
    int color = 0;

    friend bool operator==(const CorrectionChoice&, const CorrectionChoice&) = default;
};
// After the user chose in the one combo or the other: with the colours the gamma goes to the
// adjustment layer, and with the gamma the colours leave it.
CorrectionChoice AfterGammaChoice(CorrectionChoice chosen);
CorrectionChoice AfterColorChoice(CorrectionChoice chosen);

}  // namespace ui

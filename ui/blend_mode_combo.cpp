#include "ui/blend_mode_combo.h"

#include <iparamb2.h>

#include <algorithm>
#include <array>
#include <iterator>

#include "effect/blend_modes.h"
#include "effect/psd_output.h"
#include "plugin/parameters.h"

namespace ui {
namespace {

// The menu of paint applications: modes of one purpose stand together.
constexpr int menuOrder[] = {0,  1,  2,  3,  4,  5,  23, 6,  7,  8,  9,  24, 10, 11,
                             12, 13, 14, 15, 22, 16, 17, 25, 26, 18, 19, 20, 21};
static_assert(std::size(menuOrder) == psdfile::blendModes.size());

using ModeNames = std::array<MSTR, psdfile::blendModes.size()>;

ModeNames MakeModeNames() {
    ModeNames names;
    std::ranges::transform(psdfile::blendModes, names.begin(), [](const psdfile::BlendMode& mode) {
        std::basic_string<MCHAR> name;
        for (const char* letter = mode.name; *letter; ++letter)
            name.push_back(static_cast<MCHAR>(*letter));
        return MSTR(std::move(name));
    });
    return names;
}

}  // namespace

MSTR BlendModeName(int mode) {
    static const ModeNames names = MakeModeNames();
    const bool known = mode >= 0 && mode < static_cast<int>(names.size());
    return known ? names[static_cast<std::size_t>(mode)] : MSTR(_M("<unknown>"));
}

std::vector<int> OfferedBlendModes(bool at32Bits, bool withNewer) {
    std::vector<int> offered;
    std::ranges::copy_if(menuOrder, std::back_inserter(offered), [=](int mode) {
        const bool missing = std::ranges::count(effect::modesMissingAt32Bits, mode) > 0;
        const bool newer = std::ranges::count(effect::newerModes, mode) > 0;
        return !(at32Bits && missing) && (withNewer || !newer);
    });
    return offered;
}

std::vector<int> OfferedBlendModes(const effect::PSDOutput& effect) {
    if (!effect.pblock) return {};
    return OfferedBlendModes(effect.pblock->GetInt("bitDepth"_param) == 32,
                             effect.pblock->GetInt("usePS7Extensions"_param) != 0);
}

int ItemOfBlendMode(const std::vector<int>& offered, int mode) {
    const auto found = std::ranges::find(offered, mode);
    return found == offered.end() ? -1 : static_cast<int>(found - offered.begin());
}

}  // namespace ui

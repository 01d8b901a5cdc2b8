// The blend modes by index: the names that users see and the keys that stand in the file.
#pragma once

#include <array>
#include <cstdint>

#include "psdfile/four_char_code.h"

namespace psdfile {

struct BlendMode {
    const char* name;
    std::uint32_t key;
};

// The position in the table is the blend index that settings store; it must never change.
inline constexpr std::array<BlendMode, 27> blendModes{{
    {"Normal", FourCharCode("norm")},        {"Dissolve", FourCharCode("diss")},
    {"Darken", FourCharCode("dark")},        {"Multiply", FourCharCode("mul ")},
    {"Color Burn", FourCharCode("idiv")},    {"Linear Burn", FourCharCode("lbrn")},
    {"Lighten", FourCharCode("lite")},       {"Screen", FourCharCode("scrn")},
    {"Color Dodge", FourCharCode("div ")},   {"Linear Dodge (Add)", FourCharCode("lddg")},
    {"Overlay", FourCharCode("over")},       {"Soft Light", FourCharCode("sLit")},
    {"Hard Light", FourCharCode("hLit")},    {"Vivid Light", FourCharCode("vLit")},
    {"Linear Light", FourCharCode("lLit")},  {"Pin Light", FourCharCode("pLit")},
    {"Difference", FourCharCode("diff")},    {"Exclusion", FourCharCode("smud")},
    {"Hue", FourCharCode("hue ")},           {"Saturation", FourCharCode("sat ")},
    {"Color", FourCharCode("colr")},         {"Luminosity", FourCharCode("lum ")},
    {"Hard Mix", FourCharCode("hMix")},      {"Darker Color", FourCharCode("dkCl")},
    {"Lighter Color", FourCharCode("lgCl")}, {"Subtract", FourCharCode("fsub")},
    {"Divide", FourCharCode("fdiv")},
}};

inline constexpr std::uint32_t blendKeyNormal = blendModes[0].key;

// Layer sets only: their layers blend with what is below the set, not among themselves.
inline constexpr std::uint32_t blendKeyPassThrough = FourCharCode("pass");

// "norm" for every index outside the table.
constexpr std::uint32_t BlendKey(int index) {
    const bool known = index >= 0 && index < static_cast<int>(blendModes.size());
    return known ? blendModes[static_cast<std::size_t>(index)].key : blendKeyNormal;
}

}  // namespace psdfile

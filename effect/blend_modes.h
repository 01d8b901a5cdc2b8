// The blend modes that rules name, by the number that settings store.
#pragma once

#include <string_view>

#include "psdfile/blend_keys.h"

namespace effect {

// A name that isn't in the table doesn't compile.
consteval int BlendModeOf(std::string_view name) {
    int index = 0;
    while (name != psdfile::blendModes.at(static_cast<std::size_t>(index)).name)
        ++index;
    return index;
}

constexpr int normalMode = BlendModeOf("Normal");
constexpr int multiplyMode = BlendModeOf("Multiply");
constexpr int screenMode = BlendModeOf("Screen");
constexpr int linearDodgeMode = BlendModeOf("Linear Dodge (Add)");

}  // namespace effect

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

// What a document of 32 bits a channel doesn't have.
inline constexpr int modesMissingAt32Bits[] = {4, 5, 7, 8, 10, 11, 12, 13, 14, 15, 17, 22};
// What the first paint applications with layers don't have.
inline constexpr int newerModes[] = {5, 9, 13, 14, 15, 22, 23, 24, 25, 26};

}  // namespace effect

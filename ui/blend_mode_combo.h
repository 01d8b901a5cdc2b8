// The combo of a layer's blend mode: which modes it offers, and in what order.
#pragma once

#include <strclass.h>

#include <vector>

namespace effect {
class PSDOutput;
}

namespace ui {

// "<unknown>" for a number that is no mode.
MSTR BlendModeName(int mode);

// The items in their order, each as its mode, which is its item data: without those that 32 bits
// don't have, and without those that came after the first paint applications with layers.
std::vector<int> OfferedBlendModes(bool at32Bits, bool withNewer);
// As the effect's settings ask for them.
std::vector<int> OfferedBlendModes(const effect::PSDOutput& effect);

// The item of a mode; -1 for one that isn't offered.
int ItemOfBlendMode(const std::vector<int>& offered, int mode);

}  // namespace ui

#include "effect/saved_corrections.h"

#include <algorithm>

namespace effect {
namespace {

// Indexes of the values that switch a correction on.
constexpr std::size_t switches[] = {3, 4, 5, 16, 17, 18};

}  // namespace

SavedCorrections::SavedCorrections(IVRayColorCorrections* frameBuffer) : corrections(frameBuffer) {
    if (!corrections) return;
    int index = 0;
    for (float& value : values)
        value = corrections->GetValue(index++);
}

SavedCorrections::~SavedCorrections() {
    if (!corrections) return;
    int index = 0;
    for (const float value : values)
        corrections->SetValue(index++, value);
}

bool SavedCorrections::AnyOn() const {
    return std::ranges::any_of(switches, [this](std::size_t i) { return values[i] >= 1.0F; });
}

void SavedCorrections::SwitchAllOff() {
    if (!corrections) return;
    for (int i = 0; i < VRAY_COLOR_CORRECTIONS; ++i)
        corrections->SetValue(i, 0.0F);
}

}  // namespace effect

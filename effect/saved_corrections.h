// The colour corrections of V-Ray's frame buffer as the user set them: whatever a save does to them
// is undone when it is over.
#pragma once

#include <vrayframebuffer.h>

#include <array>

namespace effect {

class SavedCorrections {
  public:
    // Takes all values. `frameBuffer` may be null: then nothing is on, and nothing is done.
    // Otherwise it must outlive this.
    explicit SavedCorrections(IVRayColorCorrections* frameBuffer);
    SavedCorrections(const SavedCorrections&) = delete;
    SavedCorrections& operator=(const SavedCorrections&) = delete;
    // Writes the values back, in order.
    ~SavedCorrections();

    // Whether some correction was switched on when the values were taken.
    bool AnyOn() const;
    // Sets all values of the frame buffer to 0.
    void SwitchAllOff();

  private:
    IVRayColorCorrections* corrections;
    std::array<float, VRAY_COLOR_CORRECTIONS> values{};
};

}  // namespace effect

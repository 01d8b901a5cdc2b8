// The rollup "G-Buffer Output".
#pragma once

#include "ui/win32/rollup.h"

namespace ui {

class GBufferRollup final : public Rollup {
  public:
    // Nothing while the rollup is closed.
    void EnableNonClampedColorControl();

  protected:
    void Opened() override;
    void OtherEffect() override;
};

}  // namespace ui

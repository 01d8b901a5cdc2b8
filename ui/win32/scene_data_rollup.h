// The rollup "Scene Data Output".
#pragma once

#include "ui/win32/rollup.h"

namespace ui {

class SceneDataRollup final : public Rollup {
  protected:
    void Opened() override;
};

}  // namespace ui

// A curve that lifts linear values to what a display shows: the same table in every document.
#pragma once

#include "psdfile/layer_blocks.h"

namespace psdfile {

// One sRGB-shaped curve on the composite channel, as a table of an output for each 8-bit input.
class PSDCurvesAdjustmentLayer : public PSDLREDRB_Base {
  public:
    PSDCurvesAdjustmentLayer();
};

}  // namespace psdfile

// A layer that is one colour wherever its mask lets it through.
#pragma once

#include "psdfile/layer_blocks.h"

namespace psdfile {

class PSDSolidColorAdjustmentLayer : public PSDLayerRecordExtraDataResourceBlock {
  public:
    PSDSolidColorAdjustmentLayer();

    void WriteData(std::ostream& stream) override;

    // 0 to 255 each; black by default.
    void SetColor(double redLevel, double greenLevel, double blueLevel);

    PSint32 version{16};
    PSdouble32 red;
    PSdouble32 green;
    PSdouble32 blue;
};

}  // namespace psdfile

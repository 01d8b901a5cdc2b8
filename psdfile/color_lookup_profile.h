// A 3D colour table as an ICC device link profile, which is how a colour lookup layer carries it.
#pragma once

#include <cstdint>

#include "psdfile/cube_lut.h"
#include "psdfile/part.h"

namespace psdfile {

// ICC.1:2010: a version 4 profile of class "link", with its tag "A2B0" of type lutAToBType. Between
// grid points the reader interpolates.
class PSDColorLookupAdjustmentLayerICCProfile : public PSDPart {
  public:
    PSDColorLookupAdjustmentLayerICCProfile();

    void WriteBody(std::ostream& stream) override;
    virtual void WriteProfile(std::ostream& stream);

    // Copies the table's 3D points. Without them, or with 256 on an axis, which a profile can't
    // hold, the profile has its output curve and no table.
    void SetTable(const CubeLUT& lut);

    // Points on each axis of `table`; below 2 no table is written.
    std::uint8_t gridSize = 0;
    // [red][green][blue]; samples below 0 and above 1 are clamped, and what isn't a number is 0.
    decltype(CubeLUT::lut3D) table;
    // Exponent of the output curve, in the profile as FixedPoint16 makes it.
    double gamma = 1.0;
    // The sRGB encoding curve in place of the exponent.
    bool sRGBCurve = false;
};

}  // namespace psdfile

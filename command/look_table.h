// A look from a .cube file: what it makes of linear colours, and the table that carries it into a
// document.
#pragma once

#include <bitmap.h>

#include <array>
#include <istream>
#include <memory>
#include <ostream>
#include <string>

#include "plugin/entry.h"

namespace command {

class LookTable {
  public:
    // Throws InputError.
    explicit LookTable(const std::string& path);
    // `path` is for messages.
    LookTable(const std::string& path, std::istream& stream);
    LookTable(const LookTable&) = delete;
    LookTable& operator=(const LookTable&) = delete;
    ~LookTable();

    // In place; the colours are straight, and alpha stays. Between its points the table is
    // interpolated, in three dimensions over tetrahedra; outside of its domain colours are taken
    // for those at its ends, NaN for the lower one.
    void Correct(BMM_Color_fl* pixels, int count) const;

    // The text of a 3D table of the domain 0 to 1 with at most 255 points on an axis, which is what
    // a layer holds. A table of this kind is written as it is. All others are sampled: with 64
    // points, or with 128 where the greys between 64 would be off by more than half of one of 8
    // bits. False when the stream fails.
    bool Write(std::ostream& stream) const;

  private:
    class Pipeline;

    LookTable(const std::string& path, plugin::CubeLUT read);

    bool WriteAsItIs(std::ostream& stream) const;
    bool WriteSampled(std::ostream& stream) const;
    int PointsToSample() const;

    // Without its points when a layer can't hold them.
    plugin::CubeLUT table;
    // Of each colour: 1 over the length of its domain.
    std::array<double, 3> scale{};
    std::unique_ptr<Pipeline> pipeline;
};

}  // namespace command

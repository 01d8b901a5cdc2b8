// How much of a frame each id covers, so that of more ids than the G-Buffer can tell apart those
// are kept that are seen most.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <unordered_map>
#include <vector>

#include "command/fragments.h"

namespace command {

class CoverageTally {
  public:
    struct Entry {
        std::uint32_t id = 0;
        // Pixels.
        double coverage = 0.0;

        friend bool operator==(const Entry&, const Entry&) = default;
    };

    // A row of one rank. Id 0, and coverage that isn't above 0, don't count; more than 1 counts
    // as 1.
    void AddRow(const RankRow& row);
    // A deep sample or a pixel.
    void Add(std::uint32_t id, float coverage);

    std::size_t Size() const { return coverageOf.size(); }
    // Largest first, and at most `count`; of equal coverage the smaller id.
    std::vector<Entry> Largest(std::size_t count = SIZE_MAX) const;

  private:
    std::unordered_map<std::uint32_t, double> coverageOf;
};

}  // namespace command

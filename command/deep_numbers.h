// From deep samples to fragments: which of a sample's ids is the number of its object, and which
// that of its material.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "command/fragments.h"
#include "command/passes.h"
#include "command/render_file.h"
#include "command/row_values.h"

namespace command {

class DeepNumbers {
  public:
    // Copies what it needs.
    DeepNumbers(const Description& file, std::size_t part, const DeepPass& deep);

    DeepFragment FragmentOf(const DeepSample& sample) const;

  private:
    struct Source {
        std::size_t place = 0;
        // The number stands as a float, and its bits were read.
        bool isFloat = false;
    };
    static std::uint32_t Number(const DeepSample& sample, const std::optional<Source>& source);

    std::optional<Source> object;
    std::optional<Source> material;
};

}  // namespace command

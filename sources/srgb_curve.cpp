#include "sources/srgb_curve.h"

#include <algorithm>
#include <cmath>

namespace sources {

double SRGB(double linear) {
    if (linear <= 0.0031308) return linear * 12.92;
    return 1.055 * std::pow(linear, 0.4166666666666667) - 0.055;
}

const std::array<std::uint16_t, 8192>& SRGBTable() {
    static const std::array<std::uint16_t, 8192> table = [] {
        std::array<std::uint16_t, 8192> entries{};
        for (std::size_t i = 0; i < entries.size(); ++i) {
            const double scaled = SRGB(static_cast<double>(i) / 8191.0) * 65536.0;
            entries[i] = static_cast<std::uint16_t>(std::min(65535.0, scaled));
        }
        return entries;
    }();
    return table;
}

}  // namespace sources

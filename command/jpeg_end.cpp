#include "command/jpeg_end.h"

#include <cstddef>
#include <cstdint>

namespace command {
namespace {

constexpr std::uint8_t endOfImage = 0xd9;
constexpr std::uint8_t startOfScan = 0xda;

// Marks that are no segments: they have no length behind them.
bool StandsAlone(std::uint8_t mark) {
    constexpr std::uint8_t temporary = 0x01;
    constexpr std::uint8_t firstRestart = 0xd0;
    constexpr std::uint8_t startOfImage = 0xd8;
    return mark == temporary || (mark >= firstRestart && mark <= startOfImage);
}

// In the pixels a 0xff of the data has a zero behind it, and restarts stand among them.
bool BelongsToScan(std::uint8_t mark) {
    constexpr std::uint8_t lastRestart = 0xd7;
    return mark == 0 || (mark >= 0xd0 && mark <= lastRestart);
}

}  // namespace

bool ReachesJpegEnd(std::string_view bytes) {
    const auto at = [&](std::size_t i) { return static_cast<std::uint8_t>(bytes[i]); };
    bool inScan = false;
    for (std::size_t i = 0; i + 1 < bytes.size();) {
        if (at(i) != 0xff) {
            if (!inScan) return false;
            ++i;
            continue;
        }
        const std::uint8_t mark = at(i + 1);
        // Any number of 0xff may stand before a mark.
        if (mark == 0xff) {
            ++i;
            continue;
        }
        if (mark == endOfImage) return true;
        if (StandsAlone(mark) || (inScan && BelongsToScan(mark))) {
            i += 2;
            continue;
        }
        if (i + 3 >= bytes.size()) return false;
        inScan = mark == startOfScan;
        i += 2 + (std::size_t{at(i + 2)} << 8 | at(i + 3));
    }
    return false;
}

}  // namespace command

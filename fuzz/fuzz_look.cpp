// Looks of any text: read, or refused with a message; and if read, any pixel can be corrected.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <sstream>
#include <string>

#include "command/failure.h"
#include "command/look_table.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::istringstream text(std::string(data, data + size));
    try {
        const command::LookTable look("a.cube", text);
        constexpr float inf = std::numeric_limits<float>::infinity();
        BMM_Color_fl pixels[] = {
            {0.0F, 0.5F, 1.0F, 1.0F}, {-1.0F, 2.0F, 1e30F, 0.0F}, {std::nanf(""), inf, -inf, 1.0F}};
        look.Correct(pixels, static_cast<int>(std::size(pixels)));
    } catch (const command::InputError&) {
        // Refused.
    }
    return 0;
}

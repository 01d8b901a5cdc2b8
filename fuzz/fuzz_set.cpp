// Values of --set.
#include <cmath>
#include <cstdint>
#include <string>

#include "command/failure.h"
#include "command/setting.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    try {
        const command::Setting setting = command::ParseSetting(text, plugin::EffectParameters());
        const parameters::Row& row = *setting.row;
        const float* number = std::get_if<float>(&setting.value);
        if (number && !std::isfinite(*number)) __builtin_trap();
        const int* whole = std::get_if<int>(&setting.value);
        if (whole && row.HasRange() && (*whole < row.low || *whole > row.high)) __builtin_trap();
    } catch (const command::UsageError&) {
        // As it should be: most inputs are broken.
    }
    return 0;
}

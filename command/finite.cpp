#include "command/finite.h"

#include <bit>

namespace command {
namespace {

struct HalfBits {
    using Bits = std::uint16_t;
    static constexpr Bits exponent = 0x7c00;
    static constexpr Bits mantissa = 0x03ff;
    static constexpr Bits sign = 0x8000;
    static constexpr Bits largest = 0x7bff;
};

struct FloatBits {
    using Bits = std::uint32_t;
    static constexpr Bits exponent = 0x7f800000;
    static constexpr Bits mantissa = 0x007fffff;
    static constexpr Bits sign = 0x80000000;
    static constexpr Bits largest = 0x7f7fffff;
};

// Both loops are for the vectoriser: nearly every row needs only the first.
template <class Format, class Value>
std::uint64_t MakeRowFinite(Value* values, std::size_t count) {
    using Bits = typename Format::Bits;
    const auto isFinite = [](Bits bits) { return (bits & Format::exponent) != Format::exponent; };
    Bits bad = 0;
    for (std::size_t i = 0; i < count; ++i) {
        bad = static_cast<Bits>(bad | (isFinite(std::bit_cast<Bits>(values[i])) ? 0 : 1));
    }
    if (bad == 0) return 0;
    std::uint64_t changed = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const auto bits = std::bit_cast<Bits>(values[i]);
        if (isFinite(bits)) continue;
        const bool isNaN = (bits & Format::mantissa) != 0;
        const auto sign = static_cast<Bits>(bits & Format::sign);
        values[i] =
            std::bit_cast<Value>(isNaN ? Bits{0} : static_cast<Bits>(sign | Format::largest));
        ++changed;
    }
    return changed;
}

}  // namespace

std::uint64_t MakeFinite(std::uint16_t* halfs, std::size_t count) {
    return MakeRowFinite<HalfBits>(halfs, count);
}

std::uint64_t MakeFinite(float* floats, std::size_t count) {
    return MakeRowFinite<FloatBits>(floats, count);
}

}  // namespace command

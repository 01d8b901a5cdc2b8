// Taking a component out of interleaved pixels, and dividing it by alpha, are compiled for each
// instruction set and chosen when first called; all of them give the same bits. What follows works
// on plain rows, which any compiler vectorises.
#include "sources/pixel_rows.h"

#include <gamma.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>

#include "sources/dither.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "sources/pixel_rows.cpp"
#include <hwy/foreach_target.h>
// After foreach_target, which chooses the instruction set for it.
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace sources::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

using FloatTag = hn::ScalableTag<float>;
using IntTag = hn::RebindToSigned<FloatTag>;
using IntVec = hn::Vec<IntTag>;
// As many 16-bit values as there are floats in a vector.
using HalfTag16 = hn::Rebind<std::uint16_t, FloatTag>;
using HalfVec16 = hn::Vec<HalfTag16>;

// Calls `value(r, g, b, a)` for vectors of pixels and stores what it gives. The last vector
// overlaps the one before it.
template <class Tag, class Sample, class Value>
HWY_INLINE void ForEachVector(Tag tag, const Sample* HWY_RESTRICT rgba, std::size_t count,
                              Sample* HWY_RESTRICT values, const Value& value) {
    const std::size_t lanes = hn::Lanes(tag);
    const auto convert = [&](const Sample* from, Sample* to) HWY_ATTR {
        hn::Vec<Tag> r;
        hn::Vec<Tag> g;
        hn::Vec<Tag> b;
        hn::Vec<Tag> a;
        hn::LoadInterleaved4(tag, from, r, g, b, a);
        hn::StoreU(value(r, g, b, a), tag, to);
    };
    if (count < lanes) {
        Sample from[4 * hn::MaxLanes(tag)] = {};
        Sample to[hn::MaxLanes(tag)];
        std::memcpy(from, rgba, 4 * count * sizeof(Sample));
        convert(from, to);
        std::memcpy(values, to, count * sizeof(Sample));
        return;
    }
    std::size_t at = 0;
    for (; at + lanes <= count; at += lanes)
        convert(rgba + 4 * at, values + at);
    if (at < count) convert(rgba + 4 * (count - lanes), values + count - lanes);
}

// Stores one component, made of the pixel's own and its alpha by `make(component, alpha)`.
template <class Tag, class Sample, class Make>
HWY_INLINE void StoreComponent(Tag tag, const Sample* rgba, std::size_t count, int selector,
                               Sample* values, const Make& make) {
    switch (selector) {
        case selectRed:
            ForEachVector(tag, rgba, count, values,
                          [&](auto r, auto, auto, auto a) HWY_ATTR { return make(r, a); });
            break;
        case selectGreen:
            ForEachVector(tag, rgba, count, values,
                          [&](auto, auto g, auto, auto a) HWY_ATTR { return make(g, a); });
            break;
        case selectBlue:
            ForEachVector(tag, rgba, count, values,
                          [&](auto, auto, auto b, auto a) HWY_ATTR { return make(b, a); });
            break;
        default:
            ForEachVector(tag, rgba, count, values,
                          [](auto, auto, auto, auto a) HWY_ATTR { return a; });
            break;
    }
}

// c * 8191 / alpha, truncated. The quotient in floats is off by less than one half, and what
// remains tells in which direction.
HWY_INLINE IntVec Quotient(IntVec color, IntVec alpha13) {
    const IntTag ints;
    const FloatTag floats;
    const auto one = hn::Set(ints, 1);
    const auto dividend = hn::Sub(hn::ShiftLeft<13>(color), color);
    const auto divisor = hn::Max(alpha13, one);
    auto quotient = hn::ConvertTo(
        ints, hn::Div(hn::ConvertTo(floats, dividend), hn::ConvertTo(floats, divisor)));
    // Anything above the cap serves as well, and its remainder doesn't matter.
    quotient = hn::Min(quotient, hn::Set(ints, 65537));
    const auto remainder = hn::Sub(dividend, hn::Mul(quotient, divisor));
    quotient = hn::Sub(quotient, hn::IfThenElseZero(hn::Lt(remainder, hn::Zero(ints)), one));
    quotient = hn::Add(quotient, hn::IfThenElseZero(hn::Gt(remainder, hn::Sub(divisor, one)), one));
    return hn::IfThenElse(hn::Eq(alpha13, hn::Zero(ints)), color, quotient);
}

HWY_INLINE IntVec ToInt(HalfVec16 v) {
    return hn::PromoteTo(IntTag(), v);
}

// Capped at 65535.
HWY_INLINE HalfVec16 ToUnsigned16(IntVec v) {
    return hn::DemoteTo(HalfTag16(), v);
}

HWY_INLINE HalfVec16 DividedByAlpha(HalfVec16 color, HalfVec16 alpha) {
    return ToUnsigned16(Quotient(ToInt(color), hn::ShiftRight<3>(ToInt(alpha))));
}

// A third of an integer is never so near to the next one that rounding could reach it.
HWY_INLINE HalfVec16 Mean(HalfVec16 r, HalfVec16 g, HalfVec16 b) {
    const FloatTag floats;
    const auto sum = hn::Add(hn::Add(ToInt(r), ToInt(g)), ToInt(b));
    const auto third = hn::Div(hn::ConvertTo(floats, sum), hn::Set(floats, 3.0F));
    return ToUnsigned16(hn::ConvertTo(IntTag(), third));
}

void Values16(const std::uint16_t* rgba, std::size_t count, PixelReading reading,
              std::uint16_t* values) {
    const auto divide = [](auto c, auto a) HWY_ATTR { return DividedByAlpha(c, a); };
    const HalfTag16 narrow;
    if (reading.selector == selectLuminance && reading.premultiplied) {
        ForEachVector(narrow, rgba, count, values,
                      [](auto r, auto g, auto b, auto) HWY_ATTR { return Mean(r, g, b); });
    } else if (reading.selector == selectLuminance) {
        ForEachVector(narrow, rgba, count, values, [&](auto r, auto g, auto b, auto a) HWY_ATTR {
            return Mean(divide(r, a), divide(g, a), divide(b, a));
        });
    } else if (reading.premultiplied) {
        StoreComponent(hn::ScalableTag<std::uint16_t>(), rgba, count, reading.selector, values,
                       [](auto c, auto) HWY_ATTR { return c; });
    } else {
        StoreComponent(narrow, rgba, count, reading.selector, values, divide);
    }
}

void ValuesFloat(const float* rgba, std::size_t count, PixelReading reading, float* values) {
    const FloatTag floats;
    const auto divide = [](auto c, auto a) HWY_ATTR {
        const FloatTag tag;
        const auto none = hn::Eq(a, hn::Zero(tag));
        return hn::IfThenElse(none, c, hn::Div(c, hn::IfThenElse(none, hn::Set(tag, 1.0F), a)));
    };
    const auto mean = [](auto r, auto g, auto b) HWY_ATTR {
        return hn::Div(hn::Add(hn::Add(r, g), b), hn::Set(FloatTag(), 3.0F));
    };
    if (reading.selector == selectLuminance && reading.premultiplied) {
        ForEachVector(floats, rgba, count, values,
                      [&](auto r, auto g, auto b, auto) HWY_ATTR { return mean(r, g, b); });
    } else if (reading.selector == selectLuminance) {
        ForEachVector(floats, rgba, count, values, [&](auto r, auto g, auto b, auto a) HWY_ATTR {
            return mean(divide(r, a), divide(g, a), divide(b, a));
        });
    } else if (reading.premultiplied) {
        StoreComponent(floats, rgba, count, reading.selector, values,
                       [](auto c, auto) HWY_ATTR { return c; });
    } else {
        StoreComponent(floats, rgba, count, reading.selector, values, divide);
    }
}

}  // namespace sources::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace sources {
namespace {

HWY_EXPORT(Values16);
HWY_EXPORT(ValuesFloat);

// Values are made in blocks that stay in the innermost cache.
constexpr int blockSize = 512;

// Calls `store(first, values, count)` with the 16-bit values of one block of pixels after the
// other, corrected by the table if there is one.
template <class Store>
void ForEachBlock(const BMM_Color_64* pixels, int width, PixelReading reading,
                  const std::uint16_t* table, Store store) {
    static_assert(sizeof(BMM_Color_64) == 4 * sizeof(std::uint16_t));
    std::array<std::uint16_t, blockSize> values;
    for (int first = 0; first < width; first += blockSize) {
        const int count = std::min(width - first, blockSize);
        HWY_DYNAMIC_DISPATCH(Values16)
        (&pixels[first].r, static_cast<std::size_t>(count), reading, values.data());
        if (table && reading.selector != selectAlpha) {
            for (int i = 0; i < count; ++i) {
                std::uint16_t& value = values[static_cast<std::size_t>(i)];
                value = table[value >> 3];
            }
        }
        store(first, values.data(), count);
    }
}

}  // namespace

void Convert8(const BMM_Color_64* pixels, int width, PixelReading reading,
              const std::uint16_t* table, bool dither, std::uint8_t* samples) {
    if (dither) {
        ForEachBlock(pixels, width, reading, table,
                     [samples](int first, const std::uint16_t* values, int count) {
                         for (int i = 0; i < count; ++i) {
                             const std::uint32_t noisy = (values[i] + NextDither()) >> 8;
                             samples[first + i] =
                                 static_cast<std::uint8_t>(std::min<std::uint32_t>(noisy, 255));
                         }
                     });
    } else {
        ForEachBlock(pixels, width, reading, table,
                     [samples](int first, const std::uint16_t* values, int count) {
                         for (int i = 0; i < count; ++i) {
                             samples[first + i] = static_cast<std::uint8_t>(values[i] >> 8);
                         }
                     });
    }
}

void Convert16(const BMM_Color_64* pixels, int width, PixelReading reading,
               const std::uint16_t* table, std::uint16_t* samples) {
    ForEachBlock(pixels, width, reading, table,
                 [samples](int first, const std::uint16_t* values, int count) {
                     std::copy_n(values, count, samples + first);
                 });
}

void Convert32(const BMM_Color_fl* pixels, int width, PixelReading reading, bool correct,
               float gamma, float* samples) {
    if (width <= 0) return;
    static_assert(sizeof(BMM_Color_fl) == 4 * sizeof(float));
    HWY_DYNAMIC_DISPATCH(ValuesFloat)
    (&pixels->r, static_cast<std::size_t>(width), reading, samples);
    if (correct && reading.selector != selectAlpha) {
        for (int i = 0; i < width; ++i)
            samples[i] = gammaCorrect(samples[i], gamma);
    }
}

}  // namespace sources
#endif  // HWY_ONCE

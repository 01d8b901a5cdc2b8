// One loop a conversion, compiled for each instruction set and chosen when first called. Apart from
// the conversion of halves, which some processors have in hardware, every instruction set runs the
// same exactly rounded operations, and the tests hold all of them to the same bits.
#include "host/pixel_rows.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "host/pixel_rows.cpp"
#include <hwy/foreach_target.h>
// After foreach_target, which chooses the instruction set for it.
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace host::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

using FloatTag = hn::ScalableTag<float>;
using FloatVec = hn::Vec<FloatTag>;
// As many 16-bit components as there are floats in a vector.
using Unsigned16Tag = hn::Rebind<std::uint16_t, FloatTag>;

// Calls convert(in, out) for vectors of components; the last one overlaps the one before it, which
// is harmless as input and output are apart.
template <class In, class Out, class Convert>
HWY_INLINE void ForEachVector(const In* HWY_RESTRICT in, Out* HWY_RESTRICT out,
                              std::size_t components, const Convert& convert) {
    const std::size_t lanes = hn::Lanes(FloatTag());
    if (components < lanes) {
        In from[hn::MaxLanes(FloatTag())] = {};
        Out to[hn::MaxLanes(FloatTag())];
        std::copy_n(in, components, from);
        convert(from, to);
        std::copy_n(to, components, out);
        return;
    }
    std::size_t at = 0;
    for (; at + lanes <= components; at += lanes) {
        convert(in + at, out + at);
    }
    if (at < components) {
        convert(in + components - lanes, out + components - lanes);
    }
}

HWY_INLINE FloatVec LoadHalf(const std::uint16_t* halfs) {
    const FloatTag floats;
#if HWY_TARGET <= HWY_AVX2 && HWY_ARCH_X86
    const hn::Rebind<hwy::float16_t, FloatTag> halfTag;
    return hn::PromoteTo(floats,
                         hn::LoadU(halfTag, reinterpret_cast<const hwy::float16_t*>(halfs)));
#else
    const hn::RebindToSigned<FloatTag> ints;
    const auto half = hn::PromoteTo(ints, hn::LoadU(Unsigned16Tag(), halfs));
    const auto magnitude = hn::And(half, hn::Set(ints, 0x7fff));
    const auto sign = hn::ShiftLeft<16>(hn::Xor(half, magnitude));
    const auto shifted = hn::ShiftLeft<13>(magnitude);
    // The exponent's bias grows from 15 to 127.
    const auto normal = hn::Add(shifted, hn::Set(ints, 112 << 23));
    // A denormal half is its fraction on top of 2^-14, less 2^-14.
    const auto base = hn::Set(ints, 113 << 23);
    const auto denormal = hn::BitCast(
        ints, hn::Sub(hn::BitCast(floats, hn::Or(shifted, base)), hn::BitCast(floats, base)));
    // An infinity keeps the largest exponent; a NaN is made quiet besides.
    const auto infinite = hn::Or(shifted, hn::Set(ints, 0xff << 23));
    const auto quiet = hn::Or(infinite, hn::Set(ints, 1 << 22));
    auto bits = hn::IfThenElse(hn::Lt(magnitude, hn::Set(ints, 0x0400)), denormal, normal);
    bits = hn::IfThenElse(hn::Gt(magnitude, hn::Set(ints, 0x7bff)), infinite, bits);
    bits = hn::IfThenElse(hn::Gt(magnitude, hn::Set(ints, 0x7c00)), quiet, bits);
    return hn::BitCast(floats, hn::Or(bits, sign));
#endif
}

// Rounds the exact product, which a multiplication in floats doesn't have. Where multiplying and
// adding is one operation with one rounding, adding 2^23 leaves the nearest integer in the low
// bits. Elsewhere x * 65535 is 65536 x - x: n is the integer nearest to 65536 x, which is exact,
// and the result is n, or n - 1 when 65536 x - x lies below n - 0.5. That comparison is exact too:
// the difference of 65536 x and n - 0.5 is a float, except for n = 0, where it is far above x.
HWY_INLINE void StoreUnsigned16(FloatVec value, std::uint16_t* out) {
    const FloatTag floats;
    const hn::RebindToSigned<FloatTag> ints;
    const auto positive = hn::IfThenElseZero(hn::Gt(value, hn::Zero(floats)), value);
    const auto x = hn::Min(positive, hn::Set(floats, 1.0F));
    constexpr float TWO_TO_23 = 8388608.0F;
    const auto integers = hn::Set(floats, TWO_TO_23);
#if HWY_NATIVE_FMA
    const auto sum = hn::MulAdd(x, hn::Set(floats, 65535.0F), integers);
    const auto rounded = hn::Sub(hn::BitCast(ints, sum), hn::BitCast(ints, integers));
#else
    const auto scaled = hn::Mul(x, hn::Set(floats, 65536.0F));
    const auto sum = hn::Add(scaled, integers);
    const auto lowerEnd = hn::Sub(hn::Sub(sum, integers), hn::Set(floats, 0.5F));
    const auto below = hn::VecFromMask(floats, hn::Lt(hn::Sub(scaled, lowerEnd), x));
    const auto nearest = hn::Sub(hn::BitCast(ints, sum), hn::BitCast(ints, integers));
    const auto rounded = hn::Add(nearest, hn::BitCast(ints, below));
#endif
    hn::StoreU(hn::DemoteTo(Unsigned16Tag(), rounded), Unsigned16Tag(), out);
}

void HalfToUnsigned16(const std::uint16_t* halfs, std::uint16_t* out, std::size_t components) {
    ForEachVector(halfs, out, components,
                  [](const std::uint16_t* from, std::uint16_t* to)
                      HWY_ATTR { StoreUnsigned16(LoadHalf(from), to); });
}

void FloatToUnsigned16(const float* in, std::uint16_t* out, std::size_t components) {
    ForEachVector(in, out, components, [](const float* from, std::uint16_t* to) HWY_ATTR {
        StoreUnsigned16(hn::LoadU(FloatTag(), from), to);
    });
}

void HalfToFloat(const std::uint16_t* halfs, float* out, std::size_t components) {
    ForEachVector(halfs, out, components, [](const std::uint16_t* from, float* to) HWY_ATTR {
        hn::StoreU(LoadHalf(from), FloatTag(), to);
    });
}

void Unsigned16ToFloat(const std::uint16_t* in, float* out, std::size_t components) {
    ForEachVector(in, out, components, [](const std::uint16_t* from, float* to) HWY_ATTR {
        const FloatTag floats;
        const hn::RebindToSigned<FloatTag> ints;
        const auto value =
            hn::ConvertTo(floats, hn::PromoteTo(ints, hn::LoadU(Unsigned16Tag(), from)));
        hn::StoreU(hn::Div(value, hn::Set(floats, 65535.0F)), floats, to);
    });
}

// The last pixels, which fill no vector, go one by one.
template <class Component>
HWY_INLINE void SpreadGrey(const Component* HWY_RESTRICT greys, Component* HWY_RESTRICT out,
                           std::size_t pixels, Component one) {
    const hn::ScalableTag<Component> tag;
    const std::size_t lanes = hn::Lanes(tag);
    std::size_t at = 0;
    for (; at + lanes <= pixels; at += lanes) {
        const auto grey = hn::LoadU(tag, greys + at);
        hn::StoreInterleaved4(grey, grey, grey, hn::Set(tag, one), tag, out + 4 * at);
    }
    for (; at < pixels; ++at) {
        std::fill_n(out + 4 * at, 3, greys[at]);
        out[4 * at + 3] = one;
    }
}

template <class Component>
HWY_INLINE void SpreadColors(const Component* HWY_RESTRICT colors, Component* HWY_RESTRICT out,
                             std::size_t pixels, Component one) {
    const hn::ScalableTag<Component> tag;
    const std::size_t lanes = hn::Lanes(tag);
    std::size_t at = 0;
    for (; at + lanes <= pixels; at += lanes) {
        hn::Vec<decltype(tag)> r;
        hn::Vec<decltype(tag)> g;
        hn::Vec<decltype(tag)> b;
        hn::LoadInterleaved3(tag, colors + 3 * at, r, g, b);
        hn::StoreInterleaved4(r, g, b, hn::Set(tag, one), tag, out + 4 * at);
    }
    for (; at < pixels; ++at) {
        std::copy_n(colors + 3 * at, 3, out + 4 * at);
        out[4 * at + 3] = one;
    }
}

void GreyToPixels16(const std::uint16_t* greys, std::uint16_t* out, std::size_t pixels) {
    SpreadGrey<std::uint16_t>(greys, out, pixels, 0xffff);
}
void GreyToPixelsFloat(const float* greys, float* out, std::size_t pixels) {
    SpreadGrey(greys, out, pixels, 1.0F);
}
void ColorsToPixels16(const std::uint16_t* colors, std::uint16_t* out, std::size_t pixels) {
    SpreadColors<std::uint16_t>(colors, out, pixels, 0xffff);
}
void ColorsToPixelsFloat(const float* colors, float* out, std::size_t pixels) {
    SpreadColors(colors, out, pixels, 1.0F);
}

}  // namespace host::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace host {

HWY_EXPORT(HalfToUnsigned16);
HWY_EXPORT(FloatToUnsigned16);
HWY_EXPORT(HalfToFloat);
HWY_EXPORT(Unsigned16ToFloat);
HWY_EXPORT(GreyToPixels16);
HWY_EXPORT(GreyToPixelsFloat);
HWY_EXPORT(ColorsToPixels16);
HWY_EXPORT(ColorsToPixelsFloat);

void HalfRowToUnsigned16(const std::uint16_t* halfs, std::uint16_t* out, std::size_t components) {
    HWY_DYNAMIC_DISPATCH(HalfToUnsigned16)(halfs, out, components);
}

void FloatRowToUnsigned16(const float* in, std::uint16_t* out, std::size_t components) {
    HWY_DYNAMIC_DISPATCH(FloatToUnsigned16)(in, out, components);
}

void HalfRowToFloat(const std::uint16_t* halfs, float* out, std::size_t components) {
    HWY_DYNAMIC_DISPATCH(HalfToFloat)(halfs, out, components);
}

void Unsigned16RowToFloat(const std::uint16_t* in, float* out, std::size_t components) {
    HWY_DYNAMIC_DISPATCH(Unsigned16ToFloat)(in, out, components);
}

void GreyToPixels(const std::uint16_t* greys, std::uint16_t* out, std::size_t pixels) {
    HWY_DYNAMIC_DISPATCH(GreyToPixels16)(greys, out, pixels);
}

void GreyToPixels(const float* greys, float* out, std::size_t pixels) {
    HWY_DYNAMIC_DISPATCH(GreyToPixelsFloat)(greys, out, pixels);
}

void ColorsToPixels(const std::uint16_t* colors, std::uint16_t* out, std::size_t pixels) {
    HWY_DYNAMIC_DISPATCH(ColorsToPixels16)(colors, out, pixels);
}

void ColorsToPixels(const float* colors, float* out, std::size_t pixels) {
    HWY_DYNAMIC_DISPATCH(ColorsToPixelsFloat)(colors, out, pixels);
}

}  // namespace host
#endif

// Values of the G-Buffer that are kept in fewer bits than they have, and the channels' names.
#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include <gbuf.h>

// RealPixel is Greg Ward's shared exponent format ("Real Pixels", Graphics Gems II, 1991): a
// component is mantissa * 2^(e - 136), and the largest of the three has its mantissa in 128..255.
// Mantissas are rounded here, so that small whole numbers and powers of two come back as they were.
namespace {

constexpr int EXPONENT_BIAS = 136;
constexpr int FLOAT_BIAS = 127;
constexpr int FLOAT_FRACTION_BITS = 23;

// 2 to the power of `exponent`, which is that of a normal float.
float PowerOfTwo(int exponent) {
    return std::bit_cast<float>(static_cast<std::uint32_t>(exponent + FLOAT_BIAS)
                                << FLOAT_FRACTION_BITS);
}

// NaN and what is below 0 count as 0; infinity as the largest float.
float Positive(float value) {
    return value > 0.0F ? std::min(value, std::numeric_limits<float>::max()) : 0.0F;
}

// Rounds, and stops at the end.
UBYTE Mantissa(float value) {
    return static_cast<UBYTE>(std::min(value + 0.5F, 255.0F));
}

}  // namespace

RealPixel MakeRealPixel(float r, float g, float b) {
    r = Positive(r);
    g = Positive(g);
    b = Positive(b);
    const float largest = std::max({r, g, b});
    const int exponent =
        static_cast<int>(std::bit_cast<std::uint32_t>(largest) >> FLOAT_FRACTION_BITS) - FLOAT_BIAS;
    // largest is in [2^exponent, 2^(exponent + 1)). What would round to a mantissa of 256 takes the
    // next exponent.
    constexpr int SMALLEST = 1 - EXPONENT_BIAS + 7;
    constexpr int LARGEST = 255 - EXPONENT_BIAS + 7;
    if (exponent < std::max(SMALLEST, -FLOAT_BIAS + 8)) {
        return {0, 0, 0, 0};
    }
    int e = std::min(exponent, LARGEST);
    if (e < LARGEST && largest * PowerOfTwo(7 - e) >= 255.5F) {
        ++e;
    }
    const float scale = PowerOfTwo(7 - e);
    return {Mantissa(r * scale), Mantissa(g * scale), Mantissa(b * scale),
            static_cast<UBYTE>(e - 7 + EXPONENT_BIAS)};
}

void ExpandRealPixel(const RealPixel& pixel, float& r, float& g, float& b) {
    if (pixel.e == 0) {
        r = g = b = 0.0F;
        return;
    }
    const float scale = std::ldexp(1.0F, pixel.e - EXPONENT_BIAS);
    r = static_cast<float>(pixel.r) * scale;
    g = static_cast<float>(pixel.g) * scale;
    b = static_cast<float>(pixel.b) * scale;
}

// A normal is the point of an octahedron that it goes through, unfolded to a square (Cigolle and
// others, "A Survey of Efficient Representations for Independent Unit Vectors", 2014). Each of the
// two coordinates -1..1 has 16 bits, 1 to 65535, so that the axes are exact and no normal is 0.
namespace {

constexpr float SQUARE_STEPS = 32767.0F;

float SignOf(float value) {
    return value < 0.0F ? -1.0F : 1.0F;
}

DWORD ToSteps(float coordinate) {
    return static_cast<DWORD>(std::lround(coordinate * SQUARE_STEPS) + 32768);
}

float FromSteps(DWORD steps) {
    return std::clamp((static_cast<float>(steps) - 32768.0F) / SQUARE_STEPS, -1.0F, 1.0F);
}

}  // namespace

DWORD CompressNormal(const Point3& normal) {
    const float length = std::abs(normal.x) + std::abs(normal.y) + std::abs(normal.z);
    // Without a direction: towards the camera.
    if (!(length > 0.0F) || !std::isfinite(length)) {
        return CompressNormal(Point3(0.0F, 0.0F, 1.0F));
    }
    float u = normal.x / length;
    float v = normal.y / length;
    if (normal.z < 0.0F) {
        const float foldedU = (1.0F - std::abs(v)) * SignOf(u);
        v = (1.0F - std::abs(u)) * SignOf(v);
        u = foldedU;
    }
    return ToSteps(u) | (ToSteps(v) << 16);
}

Point3 DeCompressNormal(DWORD normal) {
    float x = FromSteps(normal & 0xffffU);
    float y = FromSteps(normal >> 16);
    const float z = 1.0F - std::abs(x) - std::abs(y);
    if (z < 0.0F) {
        const float unfoldedX = (1.0F - std::abs(y)) * SignOf(x);
        y = (1.0F - std::abs(x)) * SignOf(y);
        x = unfoldedX;
    }
    const float length = std::sqrt(x * x + y * y + z * z);
    return {x / length, y / length, z / length};
}

const MCHAR* GBChannelName(int index) {
    static constexpr const MCHAR* NAMES[] = {_M("Z"),
                                             _M("Material ID"),
                                             _M("Object ID"),
                                             _M("UV Coordinates"),
                                             _M("Normal"),
                                             _M("Non-Clamped Color"),
                                             _M("Coverage"),
                                             _M("Background"),
                                             _M("Node Render ID"),
                                             _M("Color"),
                                             _M("Transparency"),
                                             _M("Velocity"),
                                             _M("Sub-Pixel Weight"),
                                             _M("Sub-Pixel Mask")};
    return index >= 0 && static_cast<std::size_t>(index) < std::size(NAMES)
               ? NAMES[static_cast<std::size_t>(index)]
               : _M("");
}

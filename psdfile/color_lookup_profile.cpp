// The device link profile, byte by byte: a head that is nearly the same in all of them, and the tag
// "A2B0", whose order of work is A curves, table, B curves. The B curves are the output curve.

#include "psdfile/color_lookup_profile.h"

#include <array>
#include <cmath>
#include <initializer_list>
#include <limits>
#include <string>
#include <vector>

#include "psdfile/fixed_point.h"
#include "psdfile/four_char_code.h"
#include "psdfile/length_field.h"
#include "psdfile/primitives.h"
#include "psdfile/sample_rows.h"
#include "psdfile/text.h"

namespace psdfile {

namespace {

using Numbers = std::initializer_list<std::uint32_t>;

// Sizes in bytes. Offsets in the tag table count from the profile's first byte, those of "mAB "
// from the tag's.
constexpr std::uint32_t headSize = 460;
constexpr std::uint32_t lutHeaderSize = 32;
constexpr std::uint32_t tableHeaderSize = 20;
constexpr std::uint32_t identityCurveSize = 12;

// The text has 41 units: the size of its tag stands in the fixed head.
constexpr const char16_t* copyright = u"Made by veltrane; no copyright is claimed";
static_assert(std::char_traits<char16_t>::length(copyright) == 41);

void WriteNumbers(std::ostream& stream, Numbers numbers) {
    for (const std::uint32_t number : numbers) {
        stream << PSint32(number);
    }
}

// Everything of "mluc" before the text: one record, whose text begins behind it.
void WriteTextHeader(std::ostream& stream, std::uint32_t textSize) {
    WriteNumbers(stream, {FourCharCode("mluc"), 0, 1, 12, FourCharCode("enUS"), textSize, 28});
}

void WriteHead(std::ostream& stream, std::uint32_t lutSize) {
    WriteNumbers(stream, {headSize + lutSize, FourCharCode("ADBE"), 0x04000000});
    WriteNumbers(stream, {FourCharCode("link"), FourCharCode("RGB "), FourCharCode("RGB ")});
    // A date of no meaning, so that equal tables make equal files: two bytes each, year to second.
    WriteNumbers(stream, {0x07E00003, 0x000E0005, 0x000C0019, FourCharCode("acsp")});
    WriteZeros(stream, 28);
    WriteNumbers(stream, {0x0000F6D6, 0x00010000, 0x0000D32D, FourCharCode("ADBE")});  // D50
    WriteZeros(stream, 16 + 28);

    WriteNumbers(stream, {4, FourCharCode("desc"), 180, 52, FourCharCode("cprt"), 232, 110,
                          FourCharCode("pseq"), 344, 116, FourCharCode("A2B0"), headSize, lutSize});

    WriteTextHeader(stream, 24);
    stream << PSUString(u"simple.cube") << PSint16(0);

    WriteTextHeader(stream, 82);
    stream << PSUString(copyright);
    WriteZeros(stream, 2);  // to the next multiple of 4

    WriteNumbers(stream, {FourCharCode("pseq"), 0, 2});
    for (int device = 0; device < 2; ++device) {
        WriteZeros(stream, 20);  // maker, model, attributes, technology
        WriteNumbers(stream, {FourCharCode("mluc"), 0, 0, 12, FourCharCode("mluc"), 0, 0, 12});
    }
}

// A parametric curve; parameters in the order of the profile format.
std::vector<std::uint32_t> OutputCurve(double gamma, bool sRGBCurve) {
    constexpr std::uint32_t type = FourCharCode("para");
    if (!sRGBCurve) {
        return {type, 0, 0U << 16, FixedPoint16(gamma)};
    }
    // (ax + b)^g + e from d on, and cx + f below.
    return {type,
            0,
            4U << 16,
            FixedPoint16(1.0 / 2.4),             // g
            FixedPoint16(std::pow(1.055, 2.4)),  // a
            FixedPoint16(0.0),                   // b
            FixedPoint16(12.92),                 // c
            FixedPoint16(0.0031308),             // d
            FixedPoint16(-0.055),                // e
            FixedPoint16(0.0)};                  // f
}

// Rounded to 16 bits; what is not a number becomes 0.
void ConvertSamples(const double* source, std::uint16_t* destination, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        const double scaled = source[i] * 65535.0 + 0.5;
        const double atLeast0 = scaled > 0.0 ? scaled : 0.0;
        const double clamped = atLeast0 < 65535.0 ? atLeast0 : 65535.0;
        destination[i] = static_cast<std::uint16_t>(static_cast<std::int32_t>(clamped));
    }
}

void WriteTable(std::ostream& stream, const decltype(CubeLUT::lut3D)& table) {
    static_assert(sizeof(CubeLUT::Row) == 3 * sizeof(double));
    std::vector<std::uint16_t> samples;
    std::vector<std::uint8_t> bytes;
    for (const auto& plane : table) {
        for (const auto& points : plane) {
            samples.resize(3 * points.size());
            bytes.resize(2 * samples.size());
            ConvertSamples(reinterpret_cast<const double*>(points.data()), samples.data(),
                           samples.size());
            SwapRow16(samples.data(), bytes.data(), samples.size());
            WriteBytes(stream, bytes.data(), bytes.size());
        }
    }
}

}  // namespace

PSDColorLookupAdjustmentLayerICCProfile::PSDColorLookupAdjustmentLayerICCProfile() {
    writeOuterLength = true;
}

void PSDColorLookupAdjustmentLayerICCProfile::WriteBody(std::ostream& stream) {
    WriteProfile(stream);
}

void PSDColorLookupAdjustmentLayerICCProfile::WriteProfile(std::ostream& stream) {
    const std::vector<std::uint32_t> curve = OutputCurve(gamma, sRGBCurve);
    const auto curvesSize = static_cast<std::uint32_t>(3 * sizeof(std::uint32_t) * curve.size());
    const std::uint32_t n = gridSize;
    const std::uint32_t tableSize = n * n * n * 6;

    std::uint32_t tableOffset = 0;
    std::uint32_t aCurvesOffset = 0;
    std::uint32_t lutSize = lutHeaderSize + curvesSize;
    if (n >= 2) {
        tableOffset = lutSize;
        aCurvesOffset = tableOffset + tableHeaderSize + tableSize;
        lutSize = aCurvesOffset + 3 * identityCurveSize;
    }

    WriteHead(stream, lutSize);
    // Three inputs, three outputs; neither matrix nor M curves.
    WriteNumbers(stream, {FourCharCode("mAB "), 0, 0x03030000, lutHeaderSize, 0, 0, tableOffset,
                          aCurvesOffset});
    for (int channel = 0; channel < 3; ++channel) {
        for (const std::uint32_t number : curve) {
            stream << PSint32(number);
        }
    }
    if (n < 2) return;

    for (int axis = 0; axis < 3; ++axis) {
        stream << PSint8(gridSize);
    }
    WriteZeros(stream, 13);
    stream << PSint8(2);  // bytes a sample
    WriteZeros(stream, 3);
    WriteTable(stream, table);
    // No padding between: with an odd number of points these curves stand two bytes off a multiple
    // of 4, and LittleCMS refuses the tag.
    for (int channel = 0; channel < 3; ++channel) {
        WriteNumbers(stream, {FourCharCode("curv"), 0, 0});
    }
}

void PSDColorLookupAdjustmentLayerICCProfile::SetTable(const CubeLUT& lut) {
    gridSize = 0;
    table.clear();
    if (lut.lut3D.size() > std::numeric_limits<std::uint8_t>::max()) return;
    table = lut.lut3D;
    gridSize = static_cast<std::uint8_t>(table.size());
}

}  // namespace psdfile

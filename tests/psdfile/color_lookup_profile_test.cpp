// Colour tables as profiles: the bytes, and what LittleCMS, which shares no code with this project,
// makes of them.

#include "psdfile/color_lookup_profile.h"

#include <gtest/gtest.h>
#include <lcms2.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "tests/documents/written_bytes.h"

namespace psdfile {
namespace {

using Color = CubeLUT::Row;
using Profile = PSDColorLookupAdjustmentLayerICCProfile;

// ---- Bytes --------------------------------------------------------------------------------------

// Up to tag A2B0. Both arguments are four bytes: the sizes of the profile and of that tag.
std::string ProfileHead(const std::string& sizeHex, const std::string& lutSizeHex) {
    const std::string noText = "mluc" + FromHex("00 00 00 00 00 00 00 00 00 00 00 0C");
    const std::string device = std::string(20, '\0') + noText + noText;
    return FromHex(sizeHex) + "ADBE" + FromHex("04 00 00 00") + "linkRGB RGB " +
           FromHex("07 E0 00 03 00 0E 00 05 00 0C 00 19") + "acsp" + std::string(28, '\0') +
           FromHex("00 00 F6 D6 00 01 00 00 00 00 D3 2D") + "ADBE" + std::string(44, '\0') +
           FromHex("00 00 00 04") +                                 //
           "desc" + FromHex("00 00 00 B4 00 00 00 34") +            // at 180
           "cprt" + FromHex("00 00 00 E8 00 00 00 6E") +            // at 232
           "pseq" + FromHex("00 00 01 58 00 00 00 74") +            // at 344
           "A2B0" + FromHex("00 00 01 CC") + FromHex(lutSizeHex) +  // at 460
           "mluc" + FromHex("00 00 00 00 00 00 00 01 00 00 00 0C") + "enUS" +
           FromHex("00 00 00 18 00 00 00 1C") +
           FromHex("00 73 00 69 00 6D 00 70 00 6C 00 65 00 2E 00 63 00 75 00 62 00 65 00 00") +
           "mluc" + FromHex("00 00 00 00 00 00 00 01 00 00 00 0C") + "enUS" +
           FromHex("00 00 00 52 00 00 00 1C") +
           FromHex("00 4D 00 61 00 64 00 65 00 20 00 62 00 79 00 20") +              // "Made by "
           FromHex("00 76 00 65 00 6C 00 74 00 72 00 61 00 6E 00 65 00 3B 00 20") +  // "veltrane; "
           FromHex("00 6E 00 6F 00 20") +                                            // "no "
           FromHex("00 63 00 6F 00 70 00 79 00 72 00 69 00 67 00 68 00 74 00 20") +  // "copyright "
           FromHex("00 69 00 73 00 20") +                                            // "is "
           FromHex("00 63 00 6C 00 61 00 69 00 6D 00 65 00 64 00 00") +              // "claimed"
           "pseq" + FromHex("00 00 00 00 00 00 00 02") + device + device;
}

// The curve's parameters three times, each time with its type.
std::string Curves(const std::string& typeAndParametersHex) {
    const std::string curve = "para" + FromHex("00 00 00 00") + FromHex(typeAndParametersHex);
    return curve + curve + curve;
}

// Header of "mAB " behind its type: three in, three out, B curves at 32.
const std::string lutHeader = "00 00 00 00 03 03 00 00 00 00 00 20 00 00 00 00 00 00 00 00 ";

std::string ProfileBytes(Profile& profile) {
    return WrittenBytes(profile).substr(4);
}

std::string ProfileHex(Profile& profile) {
    return Hex(ProfileBytes(profile));
}

// The four bytes of gamma in the first of the output curves.
std::string GammaHex(double gamma) {
    Profile profile;
    profile.gamma = gamma;
    return Hex(ProfileBytes(profile).substr(460 + 32 + 12, 4));
}

CubeLUT EmptyTable(std::size_t points) {
    CubeLUT lut;
    lut.lut3D.assign(points, std::vector<std::vector<Color>>(points, std::vector<Color>(points)));
    return lut;
}

TEST(ColorLookupProfile, WithoutATableIsItsCurveAlone) {
    Profile profile;
    EXPECT_EQ(ProfileHex(profile), Hex(ProfileHead("00 00 02 1C", "00 00 00 50") + "mAB " +
                                       FromHex(lutHeader + "00 00 00 00 00 00 00 00") +
                                       Curves("00 00 00 00 00 01 00 00")));
}

TEST(ColorLookupProfile, StandsBehindALengthOfFourBytes) {
    Profile profile;
    EXPECT_EQ(Hex(WrittenBytes(profile).substr(0, 8)), "00 00 02 1C 00 00 02 1C");
    EXPECT_EQ(WrittenHex(profile, true), WrittenHex(profile, false));
    std::stringstream stream;
    profile.WriteProfile(stream);
    EXPECT_EQ(Hex(stream.str()), ProfileHex(profile));
}

TEST(ColorLookupProfile, OfASubclassStandsBehindItsLengthToo) {
    class Other : public Profile {
      public:
        void WriteProfile(std::ostream& stream) override { stream << "icc"; }
    };
    Other profile;
    EXPECT_EQ(WrittenHex(profile), "00 00 00 03 69 63 63");
}

TEST(ColorLookupProfile, HoldsItsGammaInTruncatedFixedPoint) {
    EXPECT_EQ(GammaHex(1.0), "00 01 00 00");
    EXPECT_EQ(GammaHex(1.0 / 2.2), "00 00 74 5D");  // 29789.09
    EXPECT_EQ(GammaHex(1.8), "00 01 CC CC");        // 117964.8
    EXPECT_EQ(GammaHex(2.2), "00 02 33 33");        // 144179.2
}

TEST(ColorLookupProfile, OfAGammaThatIsNoNumberStaysAProfile) {
    EXPECT_EQ(GammaHex(std::numeric_limits<double>::infinity()), "00 00 00 00");
    EXPECT_EQ(GammaHex(std::numeric_limits<double>::quiet_NaN()), "00 00 00 00");
}

TEST(ColorLookupProfile, HasTheSRGBCurveInPlaceOfTheGamma) {
    Profile profile;
    profile.gamma = 1.8;
    profile.sRGBCurve = true;
    // g 27306.67, a 74522.23, b, c 846725.12, d 205.18, e -3604.48, f
    EXPECT_EQ(ProfileHex(profile),
              Hex(ProfileHead("00 00 02 64", "00 00 00 98") + "mAB " +
                  FromHex(lutHeader + "00 00 00 00 00 00 00 00") +
                  Curves("00 04 00 00 00 00 6A AA 00 01 23 1A 00 00 00 00 00 0C EB 85 "
                         "00 00 00 CD FF FF F1 EC 00 00 00 00")));
}

TEST(ColorLookupProfile, HoldsATableWithBlueFastest) {
    CubeLUT lut = EmptyTable(2);
    lut.lut3D[0][0][0] = {0, 0.5, 1};
    lut.lut3D[0][0][1] = {0.25, 0.125, 0.75};
    lut.lut3D[0][1][0] = {1.0001, -0.1, 1.0 / 65535};
    lut.lut3D[0][1][1] = {1, 0, 0};
    lut.lut3D[1][0][0] = {0, 1, 0};
    lut.lut3D[1][0][1] = {2.0 / 65535, 3.4 / 65535, 3.6 / 65535};
    lut.lut3D[1][1][0] = {0.5, 0.5, 0.5};
    lut.lut3D[1][1][1] = {1, 1, 0.25};
    Profile profile;
    profile.SetTable(lut);
    EXPECT_EQ(profile.gridSize, 2);
    const std::string points =
        "00 00 80 00 FF FF 40 00 20 00 BF FF FF FF 00 00 00 01 FF FF 00 00 00 00 "
        "00 00 FF FF 00 00 00 02 00 03 00 04 80 00 80 00 80 00 FF FF FF FF 40 00 ";
    const std::string noCurve = "curv" + std::string(8, '\0');
    EXPECT_EQ(
        ProfileHex(profile),
        Hex(ProfileHead("00 00 02 84", "00 00 00 B8") + "mAB " +
            FromHex(lutHeader + "00 00 00 50 00 00 00 94") + Curves("00 00 00 00 00 01 00 00") +
            FromHex("02 02 02 00 00 00 00 00 00 00 00 00 00 00 00 00 02 00 00 00") +
            FromHex(points) + noCurve + noCurve + noCurve));

    // The longer curve moves what stands behind it.
    profile.sRGBCurve = true;
    EXPECT_EQ(Hex(ProfileBytes(profile).substr(460 + 24, 8)), "00 00 00 98 00 00 00 DC");
    EXPECT_EQ(ProfileBytes(profile).size(), 460U + 3 * 40 + 88 + 48);
}

TEST(ColorLookupProfile, ClampsSamplesBelow0AndAbove1) {
    CubeLUT lut = EmptyTable(2);
    lut.lut3D[0][0][0] = {1.0001, -0.1, 1};
    lut.lut3D[0][0][1] = {-0.00001, 2, 0};
    Profile profile;
    profile.SetTable(lut);
    EXPECT_EQ(Hex(ProfileBytes(profile).substr(460 + 100, 12)),
              "FF FF 00 00 FF FF 00 00 FF FF 00 00");
}

TEST(ColorLookupProfile, ClampsSamplesThatAreFarAwayOrNoNumbers) {
    CubeLUT lut = EmptyTable(2);
    lut.lut3D[0][0][0] = {1e300, -1e300, std::numeric_limits<double>::quiet_NaN()};
    lut.lut3D[0][0][1] = {std::numeric_limits<double>::infinity(),
                          -std::numeric_limits<double>::infinity(), 40000};
    Profile profile;
    profile.SetTable(lut);
    EXPECT_EQ(Hex(ProfileBytes(profile).substr(460 + 100, 12)),
              "FF FF 00 00 00 00 FF FF 00 00 FF FF");
}

TEST(ColorLookupProfile, Of33PointsHasTheSizeOfItsTable) {
    Profile profile;
    profile.SetTable(EmptyTable(33));
    const std::string bytes = ProfileBytes(profile);
    EXPECT_EQ(bytes.size(), 460U + 215758U);
    EXPECT_EQ(Hex(bytes.substr(0, 4)), "00 03 4C 9A");    // 216218
    EXPECT_EQ(Hex(bytes.substr(176, 4)), "00 03 4A CE");  // 215758
    EXPECT_EQ(Hex(bytes.substr(484, 8)), "00 00 00 50 00 03 4A AA");
    EXPECT_EQ(Hex(bytes.substr(540, 3)), "21 21 21");
}

TEST(ColorLookupProfile, OfASinglePointOrOfTooManyHasNoTable) {
    Profile none;
    for (const std::size_t points : {0U, 1U, 256U}) {
        Profile profile;
        profile.SetTable(EmptyTable(2));
        // Only the count of the first axis matters here.
        CubeLUT lut;
        lut.lut3D.resize(points);
        profile.SetTable(lut);
        EXPECT_EQ(ProfileHex(profile), ProfileHex(none)) << points;
    }
}

TEST(ColorLookupProfile, KeepsItsOwnCopyOfTheTable) {
    CubeLUT lut = EmptyTable(2);
    Profile profile;
    profile.SetTable(lut);
    const std::string before = ProfileHex(profile);
    lut.lut3D[0][0][0] = {1, 1, 1};
    EXPECT_EQ(ProfileHex(profile), before);
}

// ---- As LittleCMS sees it -----------------------------------------------------------------------

using OpenProfile = std::unique_ptr<void, decltype(&cmsCloseProfile)>;
using OpenTransform = std::unique_ptr<void, decltype(&cmsDeleteTransform)>;

OpenProfile Open(const std::string& bytes) {
    return {cmsOpenProfileFromMem(bytes.data(), static_cast<cmsUInt32Number>(bytes.size())),
            &cmsCloseProfile};
}

// Colours that the device link makes of `inputs`; none if the library refuses it.
std::vector<Color> Transformed(const std::string& bytes, const std::vector<Color>& inputs) {
    const OpenProfile profile = Open(bytes);
    if (profile == nullptr) return {};
    // Left alone, the library resamples the whole chain into a coarser table. Doubles keep it from
    // rounding the result to 16 bits; what goes into a table of 16 bits it rounds all the same.
    const OpenTransform transform(
        cmsCreateTransform(profile.get(), TYPE_RGB_DBL, nullptr, TYPE_RGB_DBL, INTENT_PERCEPTUAL,
                           cmsFLAGS_NOOPTIMIZE | cmsFLAGS_NOCACHE),
        &cmsDeleteTransform);
    if (transform == nullptr) return {};
    std::vector<Color> outputs(inputs.size());
    cmsDoTransform(transform.get(), inputs.data(), outputs.data(),
                   static_cast<cmsUInt32Number>(inputs.size()));
    return outputs;
}

// Smooth, with no symmetry between the axes and no part that is a function of one axis alone. It
// keeps off black, where a gamma below 1 would magnify the last bit of a sample.
Color Warped(double red, double green, double blue) {
    return {0.3 + 0.3 * red + 0.2 * green * blue + 0.15 * red * red * blue,
            0.9 - 0.35 * green * green * (1 - 0.5 * red) - 0.2 * blue * red,
            0.4 + 0.4 * blue * (0.3 + 0.7 * green) + 0.1 * std::sin(3 * red + green)};
}

// From the cell's lower corner to its upper one, along the axes in the order of how far `color`
// lies along each.
Color Interpolated(const CubeLUT& lut, const Color& color) {
    const std::size_t last = lut.lut3D.size() - 1;
    std::array<std::size_t, 3> corner{};
    std::array<double, 3> fraction{};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const double position = color[axis] * static_cast<double>(last);
        corner[axis] = std::min(static_cast<std::size_t>(position), last - 1);
        fraction[axis] = position - static_cast<double>(corner[axis]);
    }
    std::array<std::size_t, 3> order{0, 1, 2};
    std::sort(order.begin(), order.end(),
              [&](std::size_t a, std::size_t b) { return fraction[a] > fraction[b]; });
    const auto at = [&] { return lut.lut3D[corner[0]][corner[1]][corner[2]]; };
    Color before = at();
    Color result = before;
    for (const std::size_t axis : order) {
        ++corner[axis];
        const Color after = at();
        for (std::size_t i = 0; i < 3; ++i) {
            result[i] += fraction[axis] * (after[i] - before[i]);
        }
        before = after;
    }
    return result;
}

std::vector<Color> GridPoints(std::size_t points) {
    std::vector<Color> colors;
    const auto last = static_cast<double>(points - 1);
    for (std::size_t red = 0; red < points; ++red) {
        for (std::size_t green = 0; green < points; ++green) {
            for (std::size_t blue = 0; blue < points; ++blue) {
                colors.push_back({static_cast<double>(red) / last,
                                  static_cast<double>(green) / last,
                                  static_cast<double>(blue) / last});
            }
        }
    }
    return colors;
}

CubeLUT WarpedTable(std::size_t points) {
    CubeLUT lut = EmptyTable(points);
    const std::vector<Color> positions = GridPoints(points);
    auto position = positions.begin();
    for (auto& plane : lut.lut3D) {
        for (auto& row : plane) {
            for (Color& sample : row) {
                const auto [red, green, blue] = *position++;
                sample = Warped(red, green, blue);
            }
        }
    }
    return lut;
}

// Anywhere in the cube, but on numbers of 16 bits, so that nothing is lost on the way in.
std::vector<Color> ScatteredColors(std::size_t count) {
    std::mt19937 random(20260);
    const auto component = [&] { return static_cast<double>(random() % 65536) / 65535; };
    std::vector<Color> colors(count);
    for (Color& color : colors) {
        for (double& value : color)
            value = component();
    }
    return colors;
}

double LargestDifference(const std::vector<Color>& actual, const std::vector<Color>& expected) {
    if (actual.size() != expected.size()) return std::numeric_limits<double>::infinity();
    double largest = 0;
    for (std::size_t i = 0; i < actual.size(); ++i) {
        for (std::size_t component = 0; component < 3; ++component) {
            largest = std::max(largest, std::abs(actual[i][component] - expected[i][component]));
        }
    }
    return largest;
}

void AddToNumber(std::string& bytes, std::size_t offset, std::size_t addend) {
    std::size_t number = addend;
    for (std::size_t i = 0; i < 4; ++i) {
        number += std::size_t{static_cast<unsigned char>(bytes.at(offset + i))} << (24 - 8 * i);
    }
    for (std::size_t i = 0; i < 4; ++i) {
        bytes[offset + i] = static_cast<char>(number >> (24 - 8 * i));
    }
}

// LittleCMS wants every curve on a multiple of 4. Behind a table with an odd number of points on
// an axis the A curves stand two bytes off, and it refuses the tag; here they are moved on by two.
std::string WithAlignedACurves(std::string bytes, std::size_t points) {
    if (points % 2 == 0) return bytes;
    bytes.insert(bytes.size() - 36, 2, '\0');
    for (const std::size_t offset : {0U, 176U, 488U}) {  // profile, tag, A curves
        AddToNumber(bytes, offset, 2);
    }
    return bytes;
}

TEST(ColorLookupProfileInLittleCMS, HasReadableTags) {
    for (const std::size_t points : {0U, 2U, 33U}) {
        Profile profile;
        profile.SetTable(EmptyTable(points));
        const std::string bytes = ProfileBytes(profile);
        const OpenProfile opened = Open(bytes);
        ASSERT_NE(opened, nullptr);
        EXPECT_EQ(cmsGetDeviceClass(opened.get()), cmsSigLinkClass);
        EXPECT_EQ(cmsGetColorSpace(opened.get()), cmsSigRgbData);
        EXPECT_EQ(cmsGetPCS(opened.get()), cmsSigRgbData);
        EXPECT_EQ(cmsGetProfileVersion(opened.get()), 4.0);
        EXPECT_EQ(cmsGetTagCount(opened.get()), 4);

        std::array<char, 64> text{};
        ASSERT_EQ(cmsGetProfileInfoASCII(opened.get(), cmsInfoDescription, "en", "US", text.data(),
                                         text.size()),
                  13U);  // the text's terminator and the buffer's
        EXPECT_STREQ(text.data(), "simple.cube");
        ASSERT_EQ(cmsGetProfileInfoASCII(opened.get(), cmsInfoCopyright, "en", "US", text.data(),
                                         text.size()),
                  42U);
        EXPECT_STREQ(text.data(), "Made by veltrane; no copyright is claimed");
        const auto* devices =
            static_cast<const cmsSEQ*>(cmsReadTag(opened.get(), cmsSigProfileSequenceDescTag));
        ASSERT_NE(devices, nullptr);
        EXPECT_EQ(devices->n, 2U);
    }
}

TEST(ColorLookupProfileInLittleCMS, WithoutATableIsItsGamma) {
    const std::vector<Color> inputs = ScatteredColors(5000);
    for (const double gamma : {1.0, 1 / 2.2, 1 / 1.8, 2.2}) {
        Profile profile;
        profile.gamma = gamma;
        std::vector<Color> expected = inputs;
        for (Color& color : expected) {
            for (double& value : color)
                value = std::pow(value, gamma);
        }
        EXPECT_LE(LargestDifference(Transformed(ProfileBytes(profile), inputs), expected),
                  2.0 / 65535)
            << gamma;
    }
}

TEST(ColorLookupProfileInLittleCMS, EncodesAsSRGB) {
    Profile profile;
    profile.sRGBCurve = true;
    std::vector<Color> inputs = ScatteredColors(5000);
    for (int i = 0; i < 500; ++i) {  // both sides of the curve's joint
        inputs.push_back({i / 65535.0, i / 65535.0, i / 65535.0});
    }
    std::vector<Color> expected = inputs;
    for (Color& color : expected) {
        for (double& value : color) {
            value = value <= 0.0031308 ? 12.92 * value : 1.055 * std::pow(value, 1 / 2.4) - 0.055;
        }
    }
    EXPECT_LE(LargestDifference(Transformed(ProfileBytes(profile), inputs), expected), 2.0 / 65535);
}

TEST(ColorLookupProfileInLittleCMS, EqualsTheTableAndInterpolatesBetweenItsPoints) {
    for (const std::size_t points : {2U, 16U, 17U, 33U, 65U}) {
        const CubeLUT lut = WarpedTable(points);
        std::vector<Color> inputs = GridPoints(points);
        const std::vector<Color> between = ScatteredColors(20000);
        inputs.insert(inputs.end(), between.begin(), between.end());
        for (const double gamma : {1.0, 1 / 2.2, 1 / 1.8, 2.2}) {
            Profile profile;
            profile.SetTable(lut);
            profile.gamma = gamma;
            std::vector<Color> expected;
            for (const Color& input : inputs) {
                Color color = Interpolated(lut, input);
                for (double& value : color)
                    value = std::pow(value, gamma);
                expected.push_back(color);
            }
            const std::string bytes = WithAlignedACurves(ProfileBytes(profile), points);
            // The curve may magnify the rounding of the samples, by up to its exponent.
            EXPECT_LE(LargestDifference(Transformed(bytes, inputs), expected),
                      2.0 / 65535 * std::max(1.0, gamma))
                << points << " points, gamma " << gamma;
        }
    }
}

}  // namespace
}  // namespace psdfile

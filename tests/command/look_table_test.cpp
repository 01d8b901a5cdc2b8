#include "command/look_table.h"

#include <gmock/gmock.h>
#include <lcms2.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <vector>

#include "command/failure.h"
#include "psdfile/color_lookup_profile.h"
#include "tests/command/fault_text.h"
#include "tests/command/null_device.h"
#include "tests/command/test_folder.h"

namespace command {
namespace {

using psdfile::CubeLUT;
using Color = std::array<float, 3>;

LookTable Table(const std::string& text) {
    std::istringstream stream(text);
    return {"a.cube", stream};
}

Color Corrected(const LookTable& look, const Color& color) {
    BMM_Color_fl pixel{color[0], color[1], color[2], 0.25F};
    look.Correct(&pixel, 1);
    EXPECT_EQ(pixel.a, 0.25F);
    return {pixel.r, pixel.g, pixel.b};
}

std::string LookTableComplaint(const std::string& text) {
    return FaultText<InputError>([&] { Table(text); });
}

// What the look writes, read back.
CubeLUT Written(const LookTable& look) {
    std::stringstream stream;
    EXPECT_TRUE(look.Write(stream));
    CubeLUT read;
    EXPECT_EQ(read.LoadCubeFile(stream), CubeLUT::OK);
    EXPECT_EQ(read.domainMin, CubeLUT::Row());
    EXPECT_EQ(read.domainMax, (CubeLUT::Row{1, 1, 1}));
    EXPECT_TRUE(read.lut1D.empty());
    return read;
}

// A table of `value(r, g, b)` at points from 0 to 1.
template <class Value>
std::string Cube(int points, Value&& value, const std::string& head = "") {
    std::ostringstream text;
    text.precision(9);
    text << head << "LUT_3D_SIZE " << points << '\n';
    const double last = points - 1;
    for (int b = 0; b < points; ++b) {
        for (int g = 0; g < points; ++g) {
            for (int r = 0; r < points; ++r) {
                const CubeLUT::Row row = value(r / last, g / last, b / last);
                text << row[0] << ' ' << row[1] << ' ' << row[2] << '\n';
            }
        }
    }
    return text.str();
}

// In the order of the file: red runs fastest.
constexpr const char* twoPoints =
    "LUT_3D_SIZE 2\n"
    "0 0 0\n"        // black
    "0.8 0.1 0\n"    // red
    "0 0.6 0.2\n"    // green
    "0.9 0.7 0.1\n"  // yellow
    "0.1 0 0.5\n"    // blue
    "0.7 0.2 0.6\n"  // magenta
    "0.2 0.8 0.9\n"  // cyan
    "1 1 1\n";       // white

void ExpectColor(const Color& color, const Color& wanted) {
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_NEAR(color[i], wanted[i], 1e-6F) << i;
}

TEST(LookTable, PointsAreMetExactly) {
    const LookTable look = Table(twoPoints);
    EXPECT_EQ(Corrected(look, {0, 0, 0}), (Color{0, 0, 0}));
    EXPECT_EQ(Corrected(look, {1, 0, 0}), (Color{0.8F, 0.1F, 0}));
    EXPECT_EQ(Corrected(look, {0, 1, 0}), (Color{0, 0.6F, 0.2F}));
    EXPECT_EQ(Corrected(look, {0, 0, 1}), (Color{0.1F, 0, 0.5F}));
    EXPECT_EQ(Corrected(look, {1, 1, 1}), (Color{1, 1, 1}));
}

TEST(LookTable, BetweenPointsIsATetrahedronsInside) {
    const LookTable look = Table(twoPoints);
    // From black over red and yellow to white, since red is above green and green above blue.
    ExpectColor(Corrected(look, {0.75F, 0.5F, 0.25F}),
                {0.75F * 0.8F + 0.5F * 0.1F + 0.25F * 0.1F,
                 0.75F * 0.1F + 0.5F * 0.6F + 0.25F * 0.3F, 0.5F * 0.1F + 0.25F * 0.9F});
    // From black over blue and cyan to white.
    ExpectColor(Corrected(look, {0.25F, 0.5F, 0.75F}),
                {0.75F * 0.1F + 0.5F * 0.1F + 0.25F * 0.8F, 0.5F * 0.8F + 0.25F * 0.2F,
                 0.75F * 0.5F + 0.5F * 0.4F + 0.25F * 0.1F});
}

TEST(LookTable, OutsideOfTheDomainItsEndsCount) {
    const LookTable look = Table(twoPoints);
    constexpr float infinity = std::numeric_limits<float>::infinity();
    EXPECT_EQ(Corrected(look, {4, -1, 0}), (Color{0.8F, 0.1F, 0}));
    EXPECT_EQ(Corrected(look, {infinity, -infinity, 0}), (Color{0.8F, 0.1F, 0}));
    EXPECT_EQ(Corrected(look, {0, 3e38F, NAN}), (Color{0, 0.6F, 0.2F})) << "NaN is the lower end";
}

TEST(LookTable, TheDomainIsWhereThePointsLie) {
    const LookTable look =
        Table(std::string("DOMAIN_MIN -1 0 0\nDOMAIN_MAX 3 1 0.5\n") + twoPoints);
    EXPECT_EQ(Corrected(look, {-1, 0, 0}), (Color{0, 0, 0}));
    EXPECT_EQ(Corrected(look, {3, 0, 0}), (Color{0.8F, 0.1F, 0}));
    EXPECT_EQ(Corrected(look, {-1, 0, 0.5F}), (Color{0.1F, 0, 0.5F}));
    ExpectColor(Corrected(look, {1, 0, 0}), {0.4F, 0.05F, 0});
}

TEST(LookTable, OneDimensionIsACurveForEachColor) {
    const LookTable look = Table("LUT_1D_SIZE 3\n0 1 0.2\n0.25 0.5 0.2\n1 0 0.4\n");
    EXPECT_EQ(Corrected(look, {0, 0, 0}), (Color{0, 1, 0.2F}));
    EXPECT_EQ(Corrected(look, {1, 1, 1}), (Color{1, 0, 0.4F}));
    ExpectColor(Corrected(look, {0.25F, 0.25F, 0.75F}), {0.125F, 0.75F, 0.3F});
    EXPECT_EQ(Corrected(look, {-3, 2, NAN}), (Color{0, 0, 0.2F}));
}

TEST(LookTable, OneDimensionMayHaveAllPointsOfItsFormat) {
    std::ostringstream text;
    text << "LUT_1D_SIZE 65536\nDOMAIN_MAX 2 2 2\n";
    for (int i = 0; i < 65536; ++i)
        text << i << ' ' << -i << " 7\n";
    const LookTable look = Table(text.str());
    EXPECT_EQ(Corrected(look, {2, 2, 2}), (Color{65535, -65535, 7}));
    const Color half = Corrected(look, {1, 1, 1});
    EXPECT_NEAR(half[0], 32767.5F, 0.01F);
    EXPECT_NEAR(half[1], -32767.5F, 0.01F);
}

TEST(LookTable, AllPixelsOfARowAreCorrected) {
    const LookTable look = Table(twoPoints);
    std::vector<BMM_Color_fl> row(5, {1, 0, 0, 0.5F});
    row[3] = {0, 1, 0, 2.0F};
    look.Correct(row.data(), 4);
    EXPECT_EQ(row[0].r, 0.8F);
    EXPECT_EQ(row[2].a, 0.5F);
    EXPECT_EQ(row[3].g, 0.6F);
    EXPECT_EQ(row[3].a, 2.0F);
    EXPECT_EQ(row[4].r, 1.0F) << "behind the end";
    look.Correct(row.data(), 0);
    EXPECT_EQ(row[0].r, 0.8F);
}

TEST(LookTable, A3DTableIsWrittenAsItIs) {
    std::stringstream stream;
    ASSERT_TRUE(Table("TITLE \"t\"\n# why\nLUT_3D_SIZE 2\n0,5 -1 2\n0.333333333 0 0\n0 0 0\n"
                      "0 0 0\n0 0 0\n0 0 0\n0 0 0\n1e-7 1 1\n")
                    .Write(stream));
    EXPECT_EQ(stream.str(),
              "LUT_3D_SIZE 2\n0.5 -1 2\n0.333333333 0 0\n0 0 0\n0 0 0\n0 0 0\n0 0 0\n0 0 0\n"
              "1e-07 1 1\n");
}

TEST(LookTable, ATableInAnotherDomainIsWrittenAsSamplesOfItsLook) {
    const LookTable look = Table(std::string("DOMAIN_MIN 0 0 0\nDOMAIN_MAX 2 2 2\n") + twoPoints);
    const CubeLUT written = Written(look);
    ASSERT_EQ(written.lut3D.size(), 64U) << "it is straight between its points";
    // 1 is the middle of the domain.
    EXPECT_NEAR(written.lut3D[63][0][0][0], 0.4, 1e-6);
    EXPECT_NEAR(written.lut3D[63][0][0][1], 0.05, 1e-6);
    // A third, and two thirds of a third.
    const Color inside = Corrected(look, {21.0F / 63.0F, 14.0F / 63.0F, 1});
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_NEAR(written.lut3D[21][14][63][i], double{inside[i]}, 1e-8);
}

TEST(LookTable, SteepCurvesAreSampledFiner) {
    const auto curve = [](double exponent) {
        std::ostringstream text;
        text << "LUT_1D_SIZE 1025\n";
        for (int i = 0; i < 1025; ++i) {
            const double value = std::pow(i / 1024.0, exponent);
            text << "0 0 " << value << '\n';
        }
        return text.str();
    };
    EXPECT_EQ(Written(Table(curve(2.0))).lut3D.size(), 64U);
    const CubeLUT written = Written(Table(curve(1 / 2.4)));
    ASSERT_EQ(written.lut3D.size(), 128U);
    EXPECT_NEAR(written.lut3D[0][0][64][2], std::pow(64 / 127.0, 1 / 2.4), 1e-5);
    EXPECT_EQ(written.lut3D[127][127][127][0], 0.0);
    EXPECT_EQ(written.lut3D[0][0][127][2], 1.0);
}

TEST(LookTable, WhatALayerCutsOffAsksForNoMorePoints) {
    // Straight up to 1 and far beyond it, and layers hold nothing above 1.
    EXPECT_EQ(Written(Table("LUT_1D_SIZE 3\n1 1 1\n1 1 1\n9 9 9\n")).lut3D.size(), 64U);
}

TEST(LookTable, AFailingStreamIsTold) {
    std::ostringstream stream;
    stream.setstate(std::ios::badbit);
    EXPECT_FALSE(Table(twoPoints).Write(stream));
    EXPECT_FALSE(Table("LUT_1D_SIZE 2\n0 0 0\n1 1 1\n").Write(stream));
}

// ---- What a layer makes of it ----

using Color16 = std::array<std::uint16_t, 3>;

// LittleCMS over the profile that the layer of the look holds.
Color16 InLayer(const LookTable& look, const Color16& color) {
    psdfile::PSDColorLookupAdjustmentLayerICCProfile profile;
    profile.SetTable(Written(look));
    std::ostringstream stream;
    profile.WriteProfile(stream);
    const std::string bytes = stream.str();
    const std::unique_ptr<void, decltype(&cmsCloseProfile)> link(
        cmsOpenProfileFromMem(bytes.data(), static_cast<cmsUInt32Number>(bytes.size())),
        &cmsCloseProfile);
    if (!link) throw std::logic_error("no profile");
    // Without resampling the profile to a table of its own.
    const std::unique_ptr<void, decltype(&cmsDeleteTransform)> transform(
        cmsCreateTransform(link.get(), TYPE_RGB_16, nullptr, TYPE_RGB_16, INTENT_PERCEPTUAL,
                           cmsFLAGS_NOCACHE | cmsFLAGS_NOOPTIMIZE),
        &cmsDeleteTransform);
    if (!transform) throw std::logic_error("no transform");
    Color16 result{};
    cmsDoTransform(transform.get(), color.data(), result.data(), 1);
    return result;
}

// The largest difference in steps of 16 bits between the look in the pixels and its layer.
double WorstOfLayer(const LookTable& look) {
    double worst = 0.0;
    constexpr Color16 colors[] = {
        {0, 0, 0},           {65535, 65535, 65535}, {300, 200, 100},
        {700, 60000, 30000}, {32768, 1000, 32767},  {12345, 23456, 34567},
        {65535, 0, 12000},   {5, 40000, 65530},     {21845, 21845, 21845}};
    for (const Color16& color : colors) {
        const Color16 layer = InLayer(look, color);
        const Color pixels = Corrected(
            look, {static_cast<float>(color[0]) / 65535.0F, static_cast<float>(color[1]) / 65535.0F,
                   static_cast<float>(color[2]) / 65535.0F});
        for (std::size_t i = 0; i < 3; ++i)
            worst = std::max(worst, std::abs(pixels[i] * 65535.0 - layer[i]));
    }
    return worst;
}

CubeLUT::Row Warm(double r, double g, double b) {
    const double luma = 0.2 * r + 0.7 * g + 0.1 * b;
    return {std::min(1.0, r * (1 + 0.2 * luma)), g * g * (3 - 2 * g), b * (1 - 0.3 * luma)};
}

TEST(LookTable, InThePixelsItIsAsInItsLayer) {
    // Both interpolate the same points in tetrahedra, the layer in whole steps of 16 bits. Of a
    // table with an odd number of points LittleCMS reads no profile.
    EXPECT_LT(WorstOfLayer(Table(Cube(32, Warm))), 2.0);
    EXPECT_LT(WorstOfLayer(Table(Cube(2, Warm))), 2.0);
}

TEST(LookTable, InThePixelsItIsNearlyAsInItsSampledLayer) {
    // The points are other ones, and half a step of 8 bits is what greys may be off.
    EXPECT_LT(WorstOfLayer(Table(Cube(33, Warm, "DOMAIN_MAX 1.5 1.5 1.5\n"))), 65535 * 0.5 / 255);
    EXPECT_LT(WorstOfLayer(Table("LUT_1D_SIZE 4\n0 0 0\n0.1 0.5 0.2\n0.4 0.8 0.5\n1 0.9 0.8\n")),
              65535 * 0.5 / 255);
}

// ---- What is no look ----

TEST(LookTable, AnInputRangeIsItsDomain) {
    const std::string rows = "0 0 0\n1 0 0\n0 1 0\n1 1 0\n0 0 1\n1 0 1\n0 1 1\n1 1 1\n";
    const auto read = Table("LUT_3D_SIZE 2\nLUT_3D_INPUT_RANGE 0 2\n" + rows);
    BMM_Color_fl pixel{1.0F, 0.5F, 4.0F, 1.0F};
    read.Correct(&pixel, 1);
    EXPECT_FLOAT_EQ(pixel.r, 0.5F);
    EXPECT_FLOAT_EQ(pixel.g, 0.25F);
    EXPECT_FLOAT_EQ(pixel.b, 1.0F);
}

TEST(LookTable, OfMoreRowsThanItTellsOfIsNone) {
    const std::string more = "a.cube: has more rows than its size tells of; export it again";
    EXPECT_EQ(LookTableComplaint("LUT_1D_SIZE 2\n0 0 0\n1 1 1\n2 2 2\n"), more);
    EXPECT_EQ(LookTableComplaint("LUT_1D_SIZE 2\r\n# 1\r\n 0 0 0\r\n1 1 1\r\n\r\n\t.5 1 1"), more);
    EXPECT_EQ(LookTableComplaint("LUT_1D_INPUT_RANGE 0 2\nLUT_1D_SIZE 2\n0 0 0\n1 1 1\n-2 2 2\n"),
              more);
    Table("TITLE \"1\"\nLUT_1D_SIZE 2\n0 0 0\n1 1 1\n\n# 2 2 2\n \n");
}

TEST(LookTable, FaultsOfTheTextAreToldWithWhatToDo) {
    EXPECT_EQ(LookTableComplaint("LUT_3D_SIZE 2\n0 0 0\n"),
              "a.cube: ends before its table is complete; export it again or copy it again");
    EXPECT_EQ(LookTableComplaint(std::string(300, 'x')),
              "a.cube: has lines that no .cube table has; give a .cube file");
    EXPECT_EQ(
        LookTableComplaint("LUT_IN_VIDEO_RANGE\nLUT_3D_SIZE 2\n"),
        "a.cube: has a keyword other than TITLE, DOMAIN_MIN, DOMAIN_MAX, LUT_1D_SIZE and "
        "LUT_3D_SIZE, or one twice, or both sizes; export it as a plain 1D or 3D .cube table");
    EXPECT_EQ(LookTableComplaint("TITLE look\n"),
              "a.cube: has a TITLE without quotation marks; put them around its text");
    EXPECT_EQ(LookTableComplaint("DOMAIN_MAX 0 0 0\nLUT_1D_SIZE 2\n0 0 0\n1 1 1\n"),
              "a.cube: has a DOMAIN_MIN that is not below its DOMAIN_MAX; correct these lines");
    EXPECT_EQ(LookTableComplaint("LUT_3D_SIZE 257\n"),
              "a.cube: has no size or one out of range; LUT_3D_SIZE is 2 to 256, LUT_1D_SIZE 2 to "
              "65536");
    const std::string noNumbers =
        "a.cube: has a domain or a row of its table that is not three numbers; export it again";
    EXPECT_EQ(LookTableComplaint("LUT_1D_SIZE 2\n0 0 0\n1 x 1\n"), noNumbers);
    EXPECT_EQ(LookTableComplaint("DOMAIN_MIN a b c\n"), noNumbers);
    std::istringstream failed("LUT_1D_SIZE 2\n0 0 0\n1 1 1\n");
    failed.setstate(std::ios::badbit);
    EXPECT_EQ(FaultText<InputError>([&] { const LookTable look("a.cube", failed); }),
              "a.cube: cannot be read to its end; check the disk, close other programs or give a "
              "table of fewer points");
    EXPECT_EQ(LookTableComplaint("LUT_1D_SIZE 2\n0 0 0\n1 1e39 1\n"),
              "a.cube: has a value beyond 3.4e38 in its table; export it again");
}

class LookTableFile : public FolderTest {
  protected:
    static std::string ComplaintOf(const std::string& path) {
        return FaultText<InputError>([&] { const LookTable look(path); });
    }
};

TEST_F(LookTableFile, IsReadFromDisk) {
    const LookTable look(Write("a.cube", twoPoints));
    EXPECT_EQ(Corrected(look, {1, 0, 0}), (Color{0.8F, 0.1F, 0}));
}

TEST_F(LookTableFile, LinesOfOldMacsAreReadWithoutAWordToTheOutput) {
    testing::internal::CaptureStdout();
    const LookTable look(Write("a.cube", "LUT_1D_SIZE 2\r0 0 0\r1 0.5 1\r"));
    std::cout << "after" << std::endl;
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "after\n");
    EXPECT_EQ(Corrected(look, {1, 1, 1}), (Color{1, 0.5F, 1}));
}

TEST_F(LookTableFile, WhatIsNoFileIsToldSo) {
    EXPECT_EQ(ComplaintOf(PathOf("b.cube")), PathOf("b.cube") + ": no such file; check the path");
    EXPECT_EQ(ComplaintOf(Utf8(folder)),
              Utf8(folder) + ": a folder, not a .cube file; give a file in it");
#ifndef _WIN32
    EXPECT_EQ(
        ComplaintOf(nullDevice),
        std::string(nullDevice) + ": a pipe or device, not a file; save the table to a file first");
#endif
}

TEST_F(LookTableFile, AnEmptyFileIsNoTable) {
    const std::string path = Write("a.cube", "");
    EXPECT_EQ(ComplaintOf(path),
              path + ": ends before its table is complete; export it again or copy it again");
}

}  // namespace
}  // namespace command

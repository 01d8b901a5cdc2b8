#include "sources/pixel_rows.h"

#include <gtest/gtest.h>
#include <hwy/targets.h>

#include <algorithm>
#include <random>
#include <vector>

namespace {

using sources::PixelReading;

// Runs `check` once for each instruction set that was compiled and that this machine has.
template <class Check>
void OnEveryInstructionSet(Check check) {
    for (std::int64_t target : hwy::SupportedAndGeneratedTargets()) {
        SCOPED_TRACE(hwy::TargetName(target));
        hwy::SetSupportedTargetsForTest(target);
        check();
    }
    hwy::SetSupportedTargetsForTest(0);
}

std::uint16_t Divided(std::uint32_t color, std::uint32_t alpha) {
    const std::uint32_t alpha13 = alpha >> 3;
    return static_cast<std::uint16_t>(
        alpha13 == 0 ? color : std::min<std::uint32_t>(color * 8191 / alpha13, 65535));
}

TEST(PixelRows, DividesByEveryAlphaAsIntegerDivisionDoes) {
    std::vector<BMM_Color_64> pixels;
    std::vector<std::uint16_t> samples;
    OnEveryInstructionSet([&] {
        for (std::uint32_t alpha13 = 0; alpha13 < 8192; ++alpha13) {
            const auto alpha = static_cast<std::uint16_t>(alpha13 * 8 + alpha13 % 8);
            pixels.clear();
            for (std::uint32_t color = alpha13 % 601; color < 65536; color += 601) {
                pixels.push_back({0, static_cast<std::uint16_t>(color), 0, alpha});
            }
            // Where the quotient steps from one integer to the next.
            for (std::uint32_t step = 1; step < 16; ++step) {
                const std::uint32_t color = step * alpha13 / 8191;
                for (std::uint32_t around : {color, color + 1}) {
                    pixels.push_back({0, static_cast<std::uint16_t>(around), 0, alpha});
                }
            }
            samples.resize(pixels.size());
            sources::Convert16(pixels.data(), static_cast<int>(pixels.size()),
                               {sources::selectGreen, false}, nullptr, samples.data());
            for (std::size_t i = 0; i < pixels.size(); ++i) {
                ASSERT_EQ(samples[i], Divided(pixels[i].g, alpha))
                    << pixels[i].g << " over " << alpha;
            }
        }
    });
}

TEST(PixelRows, TheMeanOfThreeTruncates) {
    std::vector<BMM_Color_64> pixels;
    for (std::uint32_t sum = 0; sum <= 3 * 65535; ++sum) {
        const std::uint32_t r = std::min<std::uint32_t>(sum, 65535);
        const std::uint32_t g = std::min<std::uint32_t>(sum - r, 65535);
        pixels.push_back(
            {static_cast<UWORD>(r), static_cast<UWORD>(g), static_cast<UWORD>(sum - r - g), 65535});
    }
    std::vector<std::uint16_t> samples(pixels.size());
    OnEveryInstructionSet([&] {
        sources::Convert16(pixels.data(), static_cast<int>(pixels.size()),
                           {sources::selectLuminance, true}, nullptr, samples.data());
        for (std::uint32_t sum = 0; sum < samples.size(); ++sum)
            ASSERT_EQ(samples[sum], sum / 3);
    });
}

// Every width up to some vectors and blocks, with every selector and both readings, against the
// definitions; nothing behind the row is touched.
TEST(PixelRows, RowsOfAnyWidthAreWholeAndStayInTheirBounds) {
    std::mt19937 random(7);
    std::vector<BMM_Color_64> pixels(1100);
    std::vector<BMM_Color_fl> floats(pixels.size());
    const auto word = [&random] { return static_cast<UWORD>(random()); };
    const auto real = [&random] { return static_cast<float>(random() % 1000) / 250.0F; };
    for (auto& pixel : pixels)
        pixel = {word(), word(), word(), word()};
    for (auto& pixel : floats)
        pixel = {real(), real(), real(), real()};
    floats[3].a = 0.0F;
    const auto component64 = [](const BMM_Color_64& p, int i) {
        return i == 0 ? p.r : i == 1 ? p.g : i == 2 ? p.b : p.a;
    };
    const auto componentFloat = [](const BMM_Color_fl& p, int i) {
        return i == 0 ? p.r : i == 1 ? p.g : i == 2 ? p.b : p.a;
    };
    const auto expected64 = [&](const BMM_Color_64& p, PixelReading reading) -> std::uint32_t {
        const auto color = [&](int i) -> std::uint32_t {
            return reading.premultiplied ? component64(p, i) : Divided(component64(p, i), p.a);
        };
        if (reading.selector == sources::selectAlpha) return p.a;
        if (reading.selector != sources::selectLuminance) return color(reading.selector);
        return (color(0) + color(1) + color(2)) / 3;
    };
    const auto expectedFloat = [&](const BMM_Color_fl& p, PixelReading reading) {
        const auto color = [&](int i) {
            const float c = componentFloat(p, i);
            return reading.premultiplied || p.a == 0.0F ? c : c / p.a;
        };
        if (reading.selector == sources::selectAlpha) return p.a;
        if (reading.selector != sources::selectLuminance) return color(reading.selector);
        return (color(0) + color(1) + color(2)) / 3.0F;
    };
    constexpr std::uint16_t untouched = 0xBEEF;
    OnEveryInstructionSet([&] {
        for (const std::size_t width : std::initializer_list<std::size_t>{
                 0, 1, 2, 3, 7, 8, 15, 16, 17, 31, 33, 65, 511, 512, 513, 1099}) {
            for (int selector = 0; selector <= 4; ++selector) {
                for (bool premultiplied : {true, false}) {
                    const PixelReading reading{selector, premultiplied};
                    const auto count = static_cast<int>(width);
                    std::vector<std::uint8_t> row8(width + 1, 0xEE);
                    std::vector<std::uint16_t> row16(width + 1, untouched);
                    std::vector<float> row32(width + 1, -7.0F);
                    sources::Convert8(pixels.data(), count, reading, nullptr, false, row8.data());
                    sources::Convert16(pixels.data(), count, reading, nullptr, row16.data());
                    sources::Convert32(floats.data(), count, reading, false, 1.0F, row32.data());
                    for (std::size_t i = 0; i < width; ++i) {
                        ASSERT_EQ(row16[i], expected64(pixels[i], reading)) << width << " " << i;
                        ASSERT_EQ(row8[i], expected64(pixels[i], reading) >> 8);
                        ASSERT_EQ(row32[i], expectedFloat(floats[i], reading)) << width << " " << i;
                    }
                    ASSERT_EQ(row8[width], 0xEE);
                    ASSERT_EQ(row16[width], untouched);
                    ASSERT_EQ(row32[width], -7.0F);
                }
            }
        }
    });
}

}  // namespace

#include "host/pixel_rows.h"

#include <gtest/gtest.h>
#include <hwy/targets.h>

#include <bit>
#include <cmath>
#include <limits>
#include <numeric>
#include <random>
#include <vector>

namespace {

// Runs `check` once for each instruction set that this machine has.
template <class Check>
void OnEveryInstructionSet(const Check& check) {
    const std::vector<std::int64_t> targets = hwy::SupportedAndGeneratedTargets();
    EXPECT_FALSE(targets.empty());
    for (const std::int64_t target : targets) {
        SCOPED_TRACE(hwy::TargetName(target));
        hwy::SetSupportedTargetsForTest(target);
        check();
    }
    hwy::SetSupportedTargetsForTest(0);
}

float HalfToFloat(std::uint16_t half) {
    const int exponent = (half >> 10) & 31;
    const int fraction = half & 1023;
    const std::uint32_t sign = half & 0x8000U ? 0x80000000U : 0U;
    if (exponent == 31) {
        const std::uint32_t quiet = fraction ? 0x00400000U : 0U;
        return std::bit_cast<float>(sign | 0x7f800000U | quiet |
                                    static_cast<std::uint32_t>(fraction) << 13);
    }
    const float magnitude = exponent == 0
                                ? std::ldexp(static_cast<float>(fraction), -24)
                                : std::ldexp(static_cast<float>(1024 + fraction), exponent - 25);
    return sign ? -magnitude : magnitude;
}

// Products of a float and 65535 are exact in double precision.
std::uint16_t ToUnsigned16(float value) {
    if (!(value > 0.0F)) {
        return 0;
    }
    return static_cast<std::uint16_t>(
        std::nearbyint(static_cast<double>(std::min(value, 1.0F)) * 65535.0));
}

std::vector<std::uint16_t> AllUnsigned16() {
    std::vector<std::uint16_t> all(65536);
    std::iota(all.begin(), all.end(), std::uint16_t{0});
    return all;
}

TEST(PixelRows, EveryHalfIsRoundedToTheNearest16BitValue) {
    const auto halfs = AllUnsigned16();
    OnEveryInstructionSet([&] {
        std::vector<std::uint16_t> out(halfs.size());
        host::HalfRowToUnsigned16(halfs.data(), out.data(), halfs.size());
        for (std::size_t i = 0; i < halfs.size(); ++i) {
            ASSERT_EQ(out[i], ToUnsigned16(HalfToFloat(halfs[i]))) << "half " << i;
        }
    });
}

TEST(PixelRows, EveryHalfIsExactAsAFloat) {
    const auto halfs = AllUnsigned16();
    OnEveryInstructionSet([&] {
        std::vector<float> out(halfs.size());
        host::HalfRowToFloat(halfs.data(), out.data(), halfs.size());
        for (std::size_t i = 0; i < halfs.size(); ++i) {
            ASSERT_EQ(std::bit_cast<std::uint32_t>(out[i]),
                      std::bit_cast<std::uint32_t>(HalfToFloat(halfs[i])))
                << "half " << i;
        }
    });
}

TEST(PixelRows, Every16BitValueIsTheNearestFloatAndComesBack) {
    const auto values = AllUnsigned16();
    OnEveryInstructionSet([&] {
        std::vector<float> floats(values.size());
        host::Unsigned16RowToFloat(values.data(), floats.data(), values.size());
        for (std::size_t i = 0; i < values.size(); ++i) {
            ASSERT_EQ(floats[i], static_cast<float>(static_cast<double>(i) / 65535.0));
        }
        std::vector<std::uint16_t> back(values.size());
        host::FloatRowToUnsigned16(floats.data(), back.data(), floats.size());
        EXPECT_EQ(back, values);
    });
}

// Where rounding is hardest: the floats about each value that lies midway between two results.
std::vector<float> HardFloats() {
    std::vector<float> floats;
    for (int i = 0; i < 65535; ++i) {
        float midway = static_cast<float>((i + 0.5) / 65535.0);
        midway = std::nextafter(std::nextafter(midway, -1.0F), -1.0F);
        for (int step = 0; step < 5; ++step) {
            floats.push_back(midway);
            midway = std::nextafter(midway, 2.0F);
        }
    }
    for (const float special :
         {0.0F, -0.0F, 0.5F, 1.0F, -1.0F, 2.0F, std::nextafter(1.0F, 0.0F),
          std::nextafter(1.0F, 2.0F), std::numeric_limits<float>::infinity(),
          -std::numeric_limits<float>::infinity(), std::numeric_limits<float>::quiet_NaN(),
          -std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::signaling_NaN(),
          std::numeric_limits<float>::max(), std::numeric_limits<float>::lowest(),
          std::numeric_limits<float>::min(), std::numeric_limits<float>::denorm_min()}) {
        floats.push_back(special);
    }
    return floats;
}

void ExpectRounded(const std::vector<float>& floats) {
    OnEveryInstructionSet([&] {
        std::vector<std::uint16_t> out(floats.size());
        host::FloatRowToUnsigned16(floats.data(), out.data(), floats.size());
        for (std::size_t i = 0; i < floats.size(); ++i) {
            ASSERT_EQ(out[i], ToUnsigned16(floats[i]))
                << testing::PrintToString(floats[i]) << ", bits "
                << std::bit_cast<std::uint32_t>(floats[i]);
        }
    });
}

TEST(PixelRows, FloatsAboutTheMiddleOfTwoResultsAreRoundedExactly) {
    ExpectRounded(HardFloats());
}

TEST(PixelRows, RandomFloatsAreRoundedExactly) {
    std::mt19937 random(1);
    std::vector<float> floats;
    for (int i = 0; i < 200000; ++i) {
        floats.push_back(static_cast<float>(random()) * 0x1p-32F);
        floats.push_back(std::bit_cast<float>(static_cast<std::uint32_t>(random())));
    }
    ExpectRounded(floats);
}

TEST(PixelRows, RowsOfEveryLengthAreWrittenToTheirEndAndNotBeyond) {
    OnEveryInstructionSet([] {
        for (std::size_t length = 0; length <= 70; ++length) {
            std::vector<std::uint16_t> halfs(length);
            std::vector<float> floats(length);
            for (std::size_t i = 0; i < length; ++i) {
                halfs[i] = static_cast<std::uint16_t>(0x2000 + 100 * i);
                floats[i] = HalfToFloat(halfs[i]);
            }
            std::vector<std::uint16_t> fromHalf(length + 1, 7);
            std::vector<std::uint16_t> fromFloat(length + 1, 7);
            std::vector<float> halfFloat(length + 1, 7.0F);
            std::vector<float> unitFloat(length + 1, 7.0F);
            host::HalfRowToUnsigned16(halfs.data(), fromHalf.data(), length);
            host::FloatRowToUnsigned16(floats.data(), fromFloat.data(), length);
            host::HalfRowToFloat(halfs.data(), halfFloat.data(), length);
            host::Unsigned16RowToFloat(halfs.data(), unitFloat.data(), length);
            for (std::size_t i = 0; i < length; ++i) {
                EXPECT_EQ(fromHalf[i], ToUnsigned16(floats[i]));
                EXPECT_EQ(fromFloat[i], ToUnsigned16(floats[i]));
                EXPECT_EQ(halfFloat[i], floats[i]);
                EXPECT_EQ(unitFloat[i], static_cast<float>(halfs[i] / 65535.0));
            }
            EXPECT_EQ(fromHalf[length], 7);
            EXPECT_EQ(fromFloat[length], 7);
            EXPECT_EQ(halfFloat[length], 7.0F);
            EXPECT_EQ(unitFloat[length], 7.0F);
        }
    });
}

TEST(PixelRows, GreysAndColoursBecomePixels) {
    OnEveryInstructionSet([] {
        for (std::size_t pixels = 0; pixels < 70; ++pixels) {
            std::vector<float> stored(3 * pixels);
            std::iota(stored.begin(), stored.end(), 2.0F);
            std::vector<float> grey(4 * pixels + 1, -1.0F);
            std::vector<float> colors(4 * pixels + 1, -1.0F);
            host::GreyToPixels(stored.data(), grey.data(), pixels);
            host::ColorsToPixels(stored.data(), colors.data(), pixels);
            const std::vector<std::uint16_t> stored16(stored.begin(), stored.end());
            std::vector<std::uint16_t> grey16(4 * pixels + 1, 9);
            std::vector<std::uint16_t> colors16(4 * pixels + 1, 9);
            host::GreyToPixels(stored16.data(), grey16.data(), pixels);
            host::ColorsToPixels(stored16.data(), colors16.data(), pixels);
            for (std::size_t at = 0; at < 4 * pixels; ++at) {
                const bool alpha = at % 4 == 3;
                ASSERT_EQ(grey[at], alpha ? 1.0F : stored[at / 4]);
                ASSERT_EQ(colors[at], alpha ? 1.0F : stored[at / 4 * 3 + at % 4]);
                ASSERT_EQ(grey16[at], alpha ? 65535 : stored16[at / 4]);
                ASSERT_EQ(colors16[at], alpha ? 65535 : stored16[at / 4 * 3 + at % 4]);
            }
            ASSERT_EQ(grey.back(), -1.0F);
            ASSERT_EQ(colors.back(), -1.0F);
            ASSERT_EQ(grey16.back(), 9);
            ASSERT_EQ(colors16.back(), 9);
        }
    });
}

}  // namespace

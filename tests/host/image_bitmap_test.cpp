#include "host/image_bitmap.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

namespace {

constexpr host::ImageFormat TWO_BY_TWO{2, 2};
constexpr float INF = std::numeric_limits<float>::infinity();
constexpr float NAN_VALUE = std::numeric_limits<float>::quiet_NaN();

host::Owned<host::ImageBitmap> Floats() {
    return host::ImageBitmap::FromFloat(TWO_BY_TWO,
                                        {0.0F, 0.25F, 0.5F, 1.0F,                              //
                                         -1.0F, 2.0F, NAN_VALUE, INF, 0.1F, 0.2F, 0.3F, 0.4F,  //
                                         5.0F, 6.0F, 7.0F, 8.0F});
}

std::array<int, 4> Units(const BMM_Color_64& pixel) {
    return {pixel.r, pixel.g, pixel.b, pixel.a};
}
std::array<float, 4> Units(const BMM_Color_fl& pixel) {
    return {pixel.r, pixel.g, pixel.b, pixel.a};
}

TEST(ImageBitmap, SixteenBitRowsAreClampedAndRounded) {
    const auto bitmap = Floats();
    std::array<BMM_Color_64, 2> row{};
    ASSERT_EQ(bitmap->Storage()->GetLinearPixels(0, 0, 2, row.data()), 1);
    EXPECT_EQ(Units(row[0]), (std::array{0, 16384, 32768, 65535}));
    EXPECT_EQ(Units(row[1]), (std::array{0, 65535, 0, 65535}));
}

TEST(ImageBitmap, FloatRowsAreAsTheyAre) {
    const auto bitmap = Floats();
    std::array<BMM_Color_fl, 2> row{};
    ASSERT_EQ(bitmap->Storage()->GetLinearPixels(0, 1, 2, row.data()), 1);
    EXPECT_EQ(Units(row[0]), (std::array{0.1F, 0.2F, 0.3F, 0.4F}));
    EXPECT_EQ(Units(row[1]), (std::array{5.0F, 6.0F, 7.0F, 8.0F}));
}

TEST(ImageBitmap, HalfsKeepTheirValues) {
    // 1.0, 0.5, 65504 (the largest), the smallest denormal
    const auto bitmap = host::ImageBitmap::FromHalf({1, 1}, {0x3c00, 0x3800, 0x7bff, 0x0001});
    BMM_Color_fl floats{};
    ASSERT_EQ(bitmap->Storage()->GetLinearPixels(0, 0, 1, &floats), 1);
    EXPECT_EQ(Units(floats), (std::array{1.0F, 0.5F, 65504.0F, 0x1p-24F}));
    BMM_Color_64 units{};
    ASSERT_EQ(bitmap->Storage()->GetLinearPixels(0, 0, 1, &units), 1);
    EXPECT_EQ(Units(units), (std::array{65535, 32768, 65535, 0}));
}

TEST(ImageBitmap, RoundedHalfsGiveTheSame16BitRowsAndRoundedFloats) {
    std::vector<std::uint16_t> halfs;
    for (int i = 0; i < 20000; ++i)
        halfs.push_back(static_cast<std::uint16_t>(i * 3 + 1));
    const auto rounded = host::ImageBitmap::FromHalf({50, 100}, halfs);
    const auto bitmap = host::ImageBitmap::FromHalf({50, 100}, halfs);
    rounded->Storage()->RoundHalfsTo16Bits();
    for (int y = 0; y < 100; ++y) {
        std::array<BMM_Color_64, 50> expected{};
        std::array<BMM_Color_64, 50> row{};
        std::array<BMM_Color_fl, 50> floats{};
        ASSERT_EQ(bitmap->Storage()->GetLinearPixels(0, y, 50, expected.data()), 1);
        ASSERT_EQ(rounded->Storage()->GetLinearPixels(0, y, 50, row.data()), 1);
        ASSERT_EQ(rounded->Storage()->GetLinearPixels(0, y, 50, floats.data()), 1);
        for (std::size_t x = 0; x < row.size(); ++x) {
            ASSERT_EQ(Units(row[x]), Units(expected[x]));
            ASSERT_EQ(floats[x].g, static_cast<float>(expected[x].g / 65535.0));
        }
    }
}

TEST(ImageBitmap, FloatsAreNotRoundedWithTheHalfs) {
    const auto bitmap = Floats();
    bitmap->Storage()->RoundHalfsTo16Bits();
    std::array<BMM_Color_fl, 2> row{};
    ASSERT_EQ(bitmap->Storage()->GetLinearPixels(0, 1, 2, row.data()), 1);
    EXPECT_EQ(Units(row[1]), (std::array{5.0F, 6.0F, 7.0F, 8.0F}));
}

TEST(ImageBitmap, SixteenBitPixelsAreKeptAndScaledToFloats) {
    const auto bitmap = host::ImageBitmap::FromUnsigned16({1, 1}, {0, 1, 32768, 65535});
    BMM_Color_64 units{};
    ASSERT_EQ(bitmap->Storage()->GetLinearPixels(0, 0, 1, &units), 1);
    EXPECT_EQ(Units(units), (std::array{0, 1, 32768, 65535}));
    BMM_Color_fl floats{};
    ASSERT_EQ(bitmap->Storage()->GetLinearPixels(0, 0, 1, &floats), 1);
    EXPECT_EQ(Units(floats), (std::array{0.0F, 1.0F / 65535.0F, 32768.0F / 65535.0F, 1.0F}));
}

TEST(ImageBitmap, APartOfARowStartsAtItsPixel) {
    const auto bitmap = Floats();
    BMM_Color_fl pixel{};
    ASSERT_EQ(bitmap->Storage()->GetLinearPixels(1, 1, 1, &pixel), 1);
    EXPECT_EQ(Units(pixel), (std::array{5.0F, 6.0F, 7.0F, 8.0F}));
}

struct Span {
    int x, y, pixels;
};

TEST(ImageBitmap, ASpanOutsideTheImageGivesNothingAndWritesNothing) {
    const auto bitmap = Floats();
    constexpr int LARGE = std::numeric_limits<int>::max();
    constexpr int SMALL = std::numeric_limits<int>::min();
    for (const Span& span :
         {Span{0, -1, 2}, Span{0, 2, 2}, Span{-1, 0, 2}, Span{1, 0, 2}, Span{2, 0, 1},
          Span{0, 0, 3}, Span{0, 0, 0}, Span{0, 0, -1}, Span{1, 0, LARGE}, Span{LARGE, 0, 1},
          Span{SMALL, 0, 1}, Span{0, SMALL, 1}, Span{0, 0, SMALL}}) {
        std::array<BMM_Color_64, 3> units{};
        units.fill({9, 9, 9, 9});
        std::array<BMM_Color_fl, 3> floats{};
        floats.fill({9, 9, 9, 9});
        EXPECT_EQ(bitmap->Storage()->GetLinearPixels(span.x, span.y, span.pixels, units.data()), 0);
        EXPECT_EQ(bitmap->Storage()->GetLinearPixels(span.x, span.y, span.pixels, floats.data()),
                  0);
        for (std::size_t i = 0; i < units.size(); ++i) {
            EXPECT_EQ(Units(units[i]), (std::array{9, 9, 9, 9}));
            EXPECT_EQ(Units(floats[i]), (std::array{9.0F, 9.0F, 9.0F, 9.0F}));
        }
    }
}

TEST(ImageBitmap, ARowWritesOnlyItsPixels) {
    const auto bitmap = Floats();
    std::array<BMM_Color_64, 2> units{};
    units[1] = {9, 9, 9, 9};
    bitmap->Storage()->GetLinearPixels(0, 0, 1, units.data());
    EXPECT_EQ(Units(units[1]), (std::array{9, 9, 9, 9}));
}

TEST(ImageBitmap, TheStorageTellsItsFormat) {
    const auto bitmap =
        host::ImageBitmap::FromUnsigned16({3, 1, false, 1.5F}, std::vector<std::uint16_t>(12));
    BitmapStorage* storage = bitmap->Storage();
    EXPECT_EQ(storage->Width(), 3);
    EXPECT_EQ(storage->Height(), 1);
    EXPECT_EQ(storage->Aspect(), 1.5F);
    EXPECT_FALSE(storage->HasAlpha());
    EXPECT_TRUE(Floats()->Storage()->HasAlpha());
    EXPECT_EQ(storage->ChannelsPresent(), 0U);
    EXPECT_EQ(storage->GetGBuffer(), nullptr);
}

TEST(ImageBitmap, TheBufferMustFitTheFormat) {
    EXPECT_TRUE(host::ImageBitmap::FromFloat({2, 1}, std::vector<float>(8)));
    EXPECT_FALSE(host::ImageBitmap::FromFloat({2, 1}, std::vector<float>(7)));
    EXPECT_FALSE(host::ImageBitmap::FromFloat({2, 1}, std::vector<float>(9)));
    EXPECT_FALSE(host::ImageBitmap::FromFloat({2, 1}, std::vector<float>(16)));
    EXPECT_FALSE(host::ImageBitmap::FromHalf({0, 1}, {}));
    EXPECT_FALSE(host::ImageBitmap::FromHalf({-1, -1}, std::vector<std::uint16_t>(4)));
    EXPECT_FALSE(
        host::ImageBitmap::FromUnsigned16({1, 1, true, 0.0F}, std::vector<std::uint16_t>(4)));
}

// `count` floats 1/64, 2/64, ...
std::vector<float> Counting(int count) {
    std::vector<float> values;
    for (int i = 1; i <= count; ++i)
        values.push_back(static_cast<float>(i) / 64);
    return values;
}

host::ImageFormat Format(int width, int height, int components) {
    host::ImageFormat format{width, height};
    format.components = components;
    return format;
}

TEST(ImageBitmap, AGreyIsGivenInAllColoursWithAlphaOne) {
    const auto bitmap = host::ImageBitmap::FromFloat(Format(2, 2, 1), Counting(4));
    ASSERT_TRUE(bitmap);
    EXPECT_FALSE(bitmap->Storage()->HasAlpha());
    BMM_Color_fl pixel{};
    ASSERT_EQ(bitmap->Storage()->GetLinearPixels(1, 1, 1, &pixel), 1);
    EXPECT_EQ(Units(pixel), (std::array{0.0625F, 0.0625F, 0.0625F, 1.0F}));
    BMM_Color_64 units{};
    ASSERT_EQ(bitmap->Storage()->GetLinearPixels(1, 1, 1, &units), 1);
    EXPECT_EQ(Units(units), (std::array{4096, 4096, 4096, 65535}));
}

TEST(ImageBitmap, ColoursWithoutAlphaAreGivenWithAlphaOne) {
    const auto bitmap = host::ImageBitmap::FromFloat(Format(2, 2, 3), Counting(12));
    ASSERT_TRUE(bitmap);
    EXPECT_FALSE(bitmap->Storage()->HasAlpha());
    BMM_Color_fl pixel{};
    ASSERT_EQ(bitmap->Storage()->GetLinearPixels(0, 1, 1, &pixel), 1);
    EXPECT_EQ(Units(pixel), (std::array{7.0F / 64, 8.0F / 64, 9.0F / 64, 1.0F}));
    BMM_Color_64 units{};
    ASSERT_EQ(bitmap->Storage()->GetLinearPixels(0, 1, 1, &units), 1);
    EXPECT_EQ(Units(units), (std::array{7168, 8192, 9216, 65535}));
}

TEST(ImageBitmap, ALongRowOfFewComponentsIsReadToItsEnd) {
    constexpr int WIDTH = 1301;
    for (const int components : {1, 3}) {
        std::vector<std::uint16_t> stored;
        for (int i = 0; i < WIDTH * components; ++i)
            stored.push_back(static_cast<std::uint16_t>(i * 7));
        const auto bitmap = host::ImageBitmap::FromUnsigned16(Format(WIDTH, 1, components), stored);
        ASSERT_TRUE(bitmap);
        std::vector<BMM_Color_64> row(WIDTH - 5);
        ASSERT_EQ(bitmap->Storage()->GetLinearPixels(5, 0, WIDTH - 5, row.data()), 1);
        for (std::size_t x = 0; x < row.size(); ++x) {
            const std::size_t first = (x + 5) * static_cast<std::size_t>(components);
            const std::size_t next = components == 3 ? 1 : 0;
            ASSERT_EQ(Units(row[x]), (std::array<int, 4>{stored[first], stored[first + next],
                                                         stored[first + 2 * next], 65535}));
        }
    }
}

TEST(ImageBitmap, HalfsOfFewComponentsCanBeRoundedTo16Bits) {
    const auto bitmap = host::ImageBitmap::FromHalf(Format(1, 1, 3), {0x3c00, 0x3800, 0x0001});
    bitmap->Storage()->RoundHalfsTo16Bits();
    BMM_Color_64 units{};
    ASSERT_EQ(bitmap->Storage()->GetLinearPixels(0, 0, 1, &units), 1);
    EXPECT_EQ(Units(units), (std::array{65535, 32768, 0, 65535}));
}

TEST(ImageBitmap, OtherNumbersOfComponentsAreNoImage) {
    for (const int components : {-1, 0, 2, 5}) {
        EXPECT_FALSE(host::ImageBitmap::FromFloat(Format(2, 2, components), Counting(20)));
    }
    EXPECT_FALSE(host::ImageBitmap::FromFloat(Format(2, 2, 1), Counting(16)));
    EXPECT_FALSE(host::ImageBitmap::FromFloat(Format(2, 2, 3), Counting(16)));
    EXPECT_FALSE(host::ImageBitmap::FromFloat(Format(2, 2, 3), Counting(11)));
}

TEST(ImageBitmap, AGBufferIsGivenToTheBitmap) {
    const auto bitmap = host::ImageBitmap::FromFloat(Format(2, 1, 1), Counting(2));
    ULONG type = 0;
    EXPECT_EQ(bitmap->Storage()->ChannelsPresent(), 0U);
    EXPECT_EQ(bitmap->Storage()->GetGBuffer(), nullptr);
    EXPECT_EQ(bitmap->Storage()->GetChannel(BMM_CHAN_MTL_ID, type), nullptr);

    auto gbuffer = std::make_unique<host::FragmentBuffer>(2, 1, BMM_CHAN_MTL_ID | BMM_CHAN_Z);
    host::Fragment fragment;
    fragment.mtlID = 9;
    gbuffer->AddPixel({});
    gbuffer->AddPixel({&fragment, 1});
    GBuffer* given = gbuffer.get();
    EXPECT_TRUE(bitmap->SetGBuffer(std::move(gbuffer)));
    BitmapStorage& storage = *static_cast<Bitmap&>(*bitmap).Storage();
    EXPECT_EQ(storage.ChannelsPresent(), BMM_CHAN_MTL_ID | BMM_CHAN_Z);
    EXPECT_EQ(storage.GetGBuffer(), given);
    const auto* plane = static_cast<UBYTE*>(storage.GetChannel(BMM_CHAN_MTL_ID, type));
    ASSERT_TRUE(plane);
    EXPECT_EQ(plane[0], 0);
    EXPECT_EQ(plane[1], 9);
    EXPECT_EQ(type, BMM_CHAN_MTL_ID);

    EXPECT_FALSE(bitmap->SetGBuffer(std::make_unique<host::FragmentBuffer>(1, 2, BMM_CHAN_Z)));
    EXPECT_EQ(storage.GetGBuffer(), given) << "one of another size isn't taken";
    EXPECT_TRUE(bitmap->SetGBuffer(nullptr));
    EXPECT_EQ(storage.GetGBuffer(), nullptr);
}

}  // namespace

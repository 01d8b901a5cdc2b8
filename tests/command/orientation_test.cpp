#include "command/orientation.h"

#include <gtest/gtest.h>

#include <numeric>

namespace command {
namespace {

// The first components of the pixels, row by row, of
//   1 2 3
//   4 5 6
// turned.
std::vector<float> Turned(int orientation, int width, int height) {
    Picture picture;
    picture.width = 3;
    picture.height = 2;
    picture.pixelAspect = 2.0F;
    std::vector<float> components;
    for (int pixel = 1; pixel <= 6; ++pixel) {
        for (int i = 0; i < 4; ++i)
            components.push_back(static_cast<float>(pixel * 10 + i));
    }
    picture.components = components;
    TurnUpright(picture, orientation);
    EXPECT_EQ(picture.width, width);
    EXPECT_EQ(picture.height, height);
    EXPECT_EQ(picture.pixelAspect, width == 3 ? 2.0F : 0.5F);
    std::vector<float> pixels;
    const auto& out = std::get<std::vector<float>>(picture.components);
    for (std::size_t i = 0; i < out.size(); i += 4) {
        EXPECT_EQ(out[i + 3], out[i] + 3) << "a pixel's components stay together";
        pixels.push_back(out[i] / 10);
    }
    return pixels;
}

using Pixels = std::vector<float>;

TEST(Orientation, OneAndUnknownNumbersChangeNothing) {
    for (const int orientation : {1, 0, 9, -1}) {
        EXPECT_EQ(Turned(orientation, 3, 2), (Pixels{1, 2, 3, 4, 5, 6}));
    }
}

TEST(Orientation, TwoMirrors) {
    EXPECT_EQ(Turned(2, 3, 2), (Pixels{3, 2, 1, 6, 5, 4}));
}

TEST(Orientation, ThreeTurnsByHalf) {
    EXPECT_EQ(Turned(3, 3, 2), (Pixels{6, 5, 4, 3, 2, 1}));
}

TEST(Orientation, FourFlips) {
    EXPECT_EQ(Turned(4, 3, 2), (Pixels{4, 5, 6, 1, 2, 3}));
}

TEST(Orientation, FiveTransposes) {
    EXPECT_EQ(Turned(5, 2, 3), (Pixels{1, 4, 2, 5, 3, 6}));
}

TEST(Orientation, SixTurnsClockwise) {
    EXPECT_EQ(Turned(6, 2, 3), (Pixels{4, 1, 5, 2, 6, 3}));
}

TEST(Orientation, SevenTransposesOverTheOtherDiagonal) {
    EXPECT_EQ(Turned(7, 2, 3), (Pixels{6, 3, 5, 2, 4, 1}));
}

TEST(Orientation, EightTurnsCounterclockwise) {
    EXPECT_EQ(Turned(8, 2, 3), (Pixels{3, 6, 2, 5, 1, 4}));
}

}  // namespace
}  // namespace command

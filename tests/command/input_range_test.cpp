#include "command/input_range.h"

#include <gtest/gtest.h>

namespace command {
namespace {

struct Taken {
    std::optional<InputRange> range;
    std::string text;
};

Taken Take(std::string text) {
    const auto range = TakeInputRange(text);
    return {range, std::move(text)};
}

TEST(InputRange, BecomesACommentBeforeTheTable) {
    const Taken taken = Take("TITLE \"x\"\nLUT_3D_SIZE 2\nLUT_3D_INPUT_RANGE 0.25 4.0\n0 0 0\n");
    ASSERT_TRUE(taken.range);
    EXPECT_EQ(taken.range->min, 0.25);
    EXPECT_EQ(taken.range->max, 4.0);
    EXPECT_EQ(taken.text, "TITLE \"x\"\nLUT_3D_SIZE 2\n#UT_3D_INPUT_RANGE 0.25 4.0\n0 0 0\n");
}

TEST(InputRange, IsTakenOf1DAndWithEveryLineEnd) {
    for (const std::string end : {"\n", "\r\n", "\r"}) {
        const Taken taken = Take("LUT_1D_INPUT_RANGE -0.5\t1e1 " + end + end + "LUT_1D_SIZE 2");
        ASSERT_TRUE(taken.range);
        EXPECT_EQ(taken.range->min, -0.5);
        EXPECT_EQ(taken.range->max, 10.0);
    }
    EXPECT_TRUE(Take("LUT_1D_INPUT_RANGE 0 1").range) << "no line end";
}

TEST(InputRange, LeavesATextAloneThatHasNone) {
    for (const std::string text :
         {"", "\n\n", "LUT_3D_SIZE 2\n0 0 0\n", "# LUT_3D_INPUT_RANGE 0 1\n",
          "0 0 0\nLUT_3D_INPUT_RANGE 0 1\n", "LUT_3D_INPUT_RANGE\n", "LUT_3D_INPUT_RANGE 0\n",
          "LUT_3D_INPUT_RANGE 0 1 2\n", "LUT_3D_INPUT_RANGE 1 0\n", "LUT_3D_INPUT_RANGE 1 1\n",
          "LUT_3D_INPUT_RANGE 0 inf\n", "LUT_3D_INPUT_RANGES 0 1\n", "LUT_2D_INPUT_RANGE 0 1\n"}) {
        const Taken taken = Take(text);
        EXPECT_FALSE(taken.range) << text;
        EXPECT_EQ(taken.text, text);
    }
}

}  // namespace
}  // namespace command

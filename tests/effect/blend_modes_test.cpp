#include "effect/blend_modes.h"

#include <gtest/gtest.h>

namespace {

TEST(BlendModes, HaveTheNumbersThatAreStored) {
    EXPECT_EQ(effect::normalMode, 0);
    EXPECT_EQ(effect::multiplyMode, 3);
    EXPECT_EQ(effect::screenMode, 7);
    EXPECT_EQ(effect::linearDodgeMode, 9);
}

}  // namespace

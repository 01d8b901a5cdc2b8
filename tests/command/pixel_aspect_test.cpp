#include "command/pixel_aspect.h"

#include <gtest/gtest.h>

#include <limits>

namespace command {
namespace {

TEST(PixelAspect, ASoundOneIsKept) {
    EXPECT_EQ(SoundAspect(1.0F), 1.0F);
    EXPECT_EQ(SoundAspect(1.0667F), 1.0667F);
    EXPECT_EQ(SoundAspect(0.5F), 0.5F);
}

TEST(PixelAspect, WhatADocumentCantHaveIsSquare) {
    using Limits = std::numeric_limits<float>;
    for (const float aspect : {0.0F, -0.0F, -2.0F, Limits::infinity(), Limits::quiet_NaN()})
        EXPECT_EQ(SoundAspect(aspect), 1.0F) << aspect;
}

}  // namespace
}  // namespace command

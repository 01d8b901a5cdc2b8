#include "host/gamma.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "host/application.h"

namespace {

class GammaTest : public testing::Test {
  protected:
    void SetUp() override { host::ResetApplication(); }
    void TearDown() override { host::ResetApplication(); }
};

TEST_F(GammaTest, AnApplicationStartsWithGammaOnAndWithoutDither) {
    gammaMgr.enable = FALSE;
    gammaMgr.dithTrue = TRUE;
    gammaMgr.SetFileOutGamma(1.0F);
    host::ResetApplication();
    EXPECT_TRUE(gammaMgr.enable);
    EXPECT_FALSE(gammaMgr.dithTrue);
    EXPECT_EQ(gammaMgr.fileOutGamma, 2.2F);
    EXPECT_EQ(gammaMgr.fileOutGammaTable[4096], 47826);  // 65535 * (4096 / 8191)^(1 / 2.2)
}

TEST_F(GammaTest, TheTableIsThePowerCurveOverItsIndices) {
    gammaMgr.SetFileOutGamma(2.0F);
    EXPECT_EQ(gammaMgr.fileOutGamma, 2.0F);
    EXPECT_EQ(gammaMgr.fileOutGammaTable[0], 0);
    EXPECT_EQ(gammaMgr.fileOutGammaTable[RCOLN - 1], 65535);
    for (int i = 0; i < RCOLN; ++i) {
        ASSERT_EQ(gammaMgr.fileOutGammaTable[i], std::lround(65535.0 * std::sqrt(i / 8191.0)));
    }
}

TEST_F(GammaTest, GammaOneIsTheStraightLine) {
    gammaMgr.SetFileOutGamma(1.0F);
    EXPECT_EQ(gammaMgr.fileOutGammaTable[1], 8);
    EXPECT_EQ(gammaMgr.fileOutGammaTable[4095], 32763);
}

TEST_F(GammaTest, AGammaThatIsNotAboveZeroChangesNothing) {
    for (const float gamma : {0.0F, -1.0F, std::numeric_limits<float>::quiet_NaN()}) {
        gammaMgr.SetFileOutGamma(gamma);
        EXPECT_EQ(gammaMgr.fileOutGamma, 2.2F);
        EXPECT_EQ(gammaMgr.fileOutGammaTable[4096], 47826);
    }
}

TEST_F(GammaTest, ValuesAreCorrectedByThePowerOfOneOverGamma) {
    EXPECT_EQ(gammaCorrect(0.25F, 2.0F), 0.5F);
    EXPECT_EQ(gammaCorrect(16.0F, 2.0F), 4.0F);
    EXPECT_EQ(gammaCorrect(0.0F, 2.2F), 0.0F);
    EXPECT_EQ(gammaCorrect(1.0F, 2.2F), 1.0F);
    EXPECT_EQ(gammaCorrect(-0.5F, 2.2F), -0.5F);
    EXPECT_TRUE(std::isnan(gammaCorrect(std::numeric_limits<float>::quiet_NaN(), 2.2F)));
}

}  // namespace

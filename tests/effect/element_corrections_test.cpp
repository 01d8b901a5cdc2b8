#include "effect/element_corrections.h"

#include "tests/effect/document_frame.h"

namespace {

class ElementCorrections : public DocumentFrameTest {
  protected:
    bool Gamma(int config, bool chosen) {
        Set("gammaCorrectConfig"_param, config);
        return effect::CorrectsGamma(FrameOf(image.get()), chosen);
    }
    bool Colors(int config, bool chosen) {
        Set("colorCorrectConfig"_param, config);
        return effect::CorrectsColors(FrameOf(image.get()), chosen);
    }
};

TEST_F(ElementCorrections, OfGammaReachChosenElementsOrAll) {
    colors.gammaToElements = true;
    EXPECT_FALSE(Gamma(0, true));
    EXPECT_TRUE(Gamma(1, true));
    EXPECT_FALSE(Gamma(1, false));
    EXPECT_TRUE(Gamma(2, true));
    EXPECT_TRUE(Gamma(2, false));
    EXPECT_FALSE(Gamma(3, true));
}

TEST_F(ElementCorrections, OfGammaStayOffWhereTheFrameHasNone) {
    colors.gammaActive = true;
    colors.ccToElements = true;
    for (const int config : {0, 1, 2, 3})
        EXPECT_FALSE(Gamma(config, true)) << config;
}

TEST_F(ElementCorrections, OfColoursReachChosenElementsOrAll) {
    colors.ccToElements = true;
    EXPECT_FALSE(Colors(0, true));
    EXPECT_TRUE(Colors(1, true));
    EXPECT_FALSE(Colors(1, false));
    EXPECT_TRUE(Colors(2, true));
    EXPECT_TRUE(Colors(2, false));
    EXPECT_FALSE(Colors(3, true));
}

TEST_F(ElementCorrections, OfColoursStayOffWhereTheFrameHasNone) {
    colors.ccActive = true;
    colors.gammaToElements = true;
    for (const int config : {0, 1, 2, 3})
        EXPECT_FALSE(Colors(config, true)) << config;
}

}  // namespace

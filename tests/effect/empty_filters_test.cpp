#include "effect/empty_filters.h"

#include "tests/effect/effect_fixture.h"

namespace {

constexpr ParamID filters[] = {79, 80, 81};

class EmptyFilters : public EffectTest {
  protected:
    bool IsOn(ParamID filter, int timeType) {
        return effect::IsFilterOn(*effect->pblock, filter, timeType);
    }
};

TEST_F(EmptyFilters, FollowTheTable) {
    for (const ParamID filter : filters) {
        for (const int timeType : {0, 1, 2, 3}) {
            for (const bool animations : {false, true}) {
                Set(78, animations);
                Set(filter, FALSE);
                EXPECT_FALSE(IsOn(filter, timeType));
                Set(filter, TRUE);
                EXPECT_EQ(IsOn(filter, timeType), timeType == 0 || animations)
                    << "parameter " << filter << ", time type " << timeType;
            }
        }
    }
}

TEST_F(EmptyFilters, AskTheHostWhatItRendersWhenNotTold) {
    for (const ParamID filter : filters) {
        Set(filter, TRUE);
        Render().timeType = REND_TIMESINGLE;
        EXPECT_TRUE(IsOn(filter, effect::timeTypeOfHost));
        Render().timeType = REND_TIMERANGE;
        EXPECT_FALSE(IsOn(filter, effect::timeTypeOfHost));
        EXPECT_TRUE(IsOn(filter, REND_TIMESINGLE)) << "being told comes first";
    }
}

TEST_F(EmptyFilters, OneFilterDoesntTurnOnAnother) {
    for (const ParamID filter : filters)
        Set(filter, FALSE);
    Set(79, TRUE);
    EXPECT_TRUE(IsOn(79, 0));
    EXPECT_FALSE(IsOn(80, 0));
    EXPECT_FALSE(IsOn(81, 0));
}

TEST_F(EmptyFilters, ByDefaultOnlyMattesAreFilteredAndOnlyInAStill) {
    EXPECT_TRUE(IsOn(79, 0));
    EXPECT_FALSE(IsOn(79, 1));
    EXPECT_FALSE(IsOn(80, 0));
    EXPECT_FALSE(IsOn(81, 0));
}

}  // namespace

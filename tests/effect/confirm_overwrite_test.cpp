#include "effect/confirm_overwrite.h"

#include "tests/effect/effect_fixture.h"

namespace {

using testing::ElementsAre;

class ConfirmOverwrite : public EffectTest {
  protected:
    bool Ask() { return effect::ConfirmOverwrite(MSTR(_M("/renders/a b.psd")), askAgain); }

    bool askAgain = true;
    const Box question = QuestionBoxWithTick("Confirm overwriting:\n\n/renders/a b.psd ?");
};

TEST_F(ConfirmOverwrite, YesGoesOnAndAsksAgain) {
    answer = IDYES;
    EXPECT_TRUE(Ask());
    EXPECT_TRUE(askAgain);
    EXPECT_THAT(TakeBoxes(), ElementsAre(question));
}

TEST_F(ConfirmOverwrite, YesWithTheTickGoesOnAndAsksNoMore) {
    answer = IDYES;
    tick = true;
    EXPECT_TRUE(Ask());
    EXPECT_FALSE(askAgain);
    EXPECT_THAT(TakeBoxes(), ElementsAre(question));
}

TEST_F(ConfirmOverwrite, NoStopsAndTheTickIsIgnored) {
    answer = IDNO;
    for (const bool ticked : {false, true}) {
        tick = ticked;
        EXPECT_FALSE(Ask());
        EXPECT_TRUE(askAgain);
    }
    EXPECT_THAT(TakeBoxes(), ElementsAre(question, question));
}

}  // namespace

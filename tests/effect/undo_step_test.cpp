#include "effect/undo_step.h"

#include "tests/effect/effect_fixture.h"

namespace {

class UndoStepTest : public EffectTest {
  protected:
    UndoStepTest() { Host().undo.Clear(); }
    int Depth() { return effect->pblock->GetInt("bitDepth"_param); }
};

TEST_F(UndoStepTest, AnAcceptedStepCanBeTakenBack) {
    {
        effect::UndoStep step;
        Set("bitDepth"_param, 8);
        step.Accept(_M("Depth"));
    }
    EXPECT_EQ(host::ToUtf8(Host().undo.UndoName()), "Depth");
    EXPECT_EQ(Depth(), 8);
    EXPECT_FALSE(theHold.Holding());
}

TEST_F(UndoStepTest, AStepThatIsLeftIsTakenBackAtOnce) {
    {
        const effect::UndoStep step;
        Set("bitDepth"_param, 8);
    }
    EXPECT_EQ(Depth(), 16);
    EXPECT_FALSE(Host().undo.CanUndo());
    EXPECT_FALSE(theHold.Holding());
}

}  // namespace

#include "ui/resolution_buttons.h"

#include "tests/effect/effect_fixture.h"

namespace {

class ResolutionButtons : public EffectTest {
  protected:
    float After(int control) {
        effect->pblock->SetValue("resolution"_param, 0, 99.0F);
        ui::ClickResolution(*effect->pblock, control);
        return effect->pblock->GetFloat("resolution"_param);
    }
};

TEST_F(ResolutionButtons, EachSetsItsOwn) {
    EXPECT_EQ(After(1146), 72.0F);
    EXPECT_EQ(After(1147), 150.0F);
    EXPECT_EQ(After(1148), 300.0F);
}

TEST_F(ResolutionButtons, AreTakenBackAsOtherChangesAre) {
    After(1148);
    EXPECT_EQ(host::App().undo.UndoName(), MSTR(_M("Parameter Change")));
    host::App().undo.Undo();
    EXPECT_EQ(effect->pblock->GetFloat("resolution"_param), 99.0F);
}

TEST_F(ResolutionButtons, OtherControlsSetNone) {
    for (const int control : {1145, 1149, 0})
        EXPECT_EQ(After(control), 99.0F) << control;
}

}  // namespace

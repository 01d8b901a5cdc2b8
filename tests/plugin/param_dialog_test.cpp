#include "plugin/param_dialog.h"

#include <new>

#include "plugin/library_services.h"
#include "plugin/scene_file_state.h"
#include "tests/effect/effect_fixture.h"

namespace {

class ParamDialog : public EffectTest {
  protected:
    ~ParamDialog() override { plugin::SetCurrentInstance(nullptr); }
};

TEST_F(ParamDialog, OpeningClearsTheOldSwitchAndMakesTheEffectTheCurrentOne) {
    Set("unnamed37"_param, TRUE);
    // There is no window to open rollups in.
    EXPECT_EQ(effect->CreateParamDialog(nullptr), nullptr);
    EXPECT_EQ(effect->pblock->GetInt("unnamed37"_param), FALSE);
    EXPECT_EQ(plugin::CurrentInstance(), effect);
}

TEST_F(ParamDialog, AnEffectWithoutItsBlockHasNone) {
    effect->DeleteReference(0);
    EXPECT_EQ(effect->CreateParamDialog(nullptr), nullptr);
    EXPECT_EQ(plugin::CurrentInstance(), nullptr);
}

TEST_F(ParamDialog, WithoutMemoryThereIsNone) {
    effect::LibraryServices services = plugin::Services();
    services.createParamDialog = [](effect::PSDOutput&, IRendParams*) -> SFXParamDlg* {
        throw std::bad_alloc();
    };
    auto* poor = new effect::PSDOutput(static_cast<ClassDesc2&>(*LibClassDesc(0)), services);
    Host().effects.emplace_back(poor);
    EXPECT_EQ(poor->CreateParamDialog(nullptr), nullptr);
    Host().effects.clear();
}

}  // namespace

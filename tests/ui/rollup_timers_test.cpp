#include "ui/rollup_timers.h"

#include <elementclasses.h>

#include "effect/psd_output_layer.h"
#include "host/documents.h"
#include "tests/effect/effect_fixture.h"

namespace {

class RollupTimers : public EffectTest {
  protected:
    RollupTimers() {
        for (int i = 0; i < LibNumberClasses(); ++i)
            Host().classes.Add(LibClassDesc(i));
    }
    int Layers() { return effect->LayerCount(effect::PSDOutput::productionLayers); }
    static void AddElement() {
        Host().elements[RS_Production].Add(SPECULAR_ELEMENT, _M("Specular"));
    }

    bool dirty = true;
};

void ExpectTimer(const ui::RollupTimer& timer, std::uintptr_t id, unsigned milliseconds, MapID map,
                 bool once) {
    EXPECT_EQ(timer.id, id);
    EXPECT_EQ(timer.milliseconds, milliseconds) << id;
    EXPECT_EQ(timer.map, map) << id;
    EXPECT_EQ(timer.once, once) << id;
}

TEST_F(RollupTimers, RunWithTheirRollups) {
    ExpectTimer(ui::fileNameTimer, 16685, 200, 0, false);
    ExpectTimer(ui::newEffectTimer, 564534, 10, 0, true);
    ExpectTimer(ui::renderElementsTimer, 2343, 50, 1, false);
    ExpectTimer(ui::sceneLayersTimer, 98918, 100, 5, false);
}

TEST_F(RollupTimers, ANewEffectIsNewOnce) {
    EXPECT_TRUE(ui::TakeNewMark(*effect));
    EXPECT_FALSE(ui::TakeNewMark(*effect));
}

TEST_F(RollupTimers, ALoadedEffectIsNotNew) {
    const std::string page = File("scene.json").string();
    host::SaveScene(page);
    host::OpenScene(page);
    ASSERT_EQ(Host().effects.size(), 1U);
    effect = static_cast<effect::PSDOutput*>(Host().effects[0].get());
    EXPECT_FALSE(ui::TakeNewMark(*effect));
}

TEST_F(RollupTimers, TheNameIsShownAnewWhenItIsDerivedAndMayHaveChanged) {
    EXPECT_TRUE(ui::FileNameTick(dirty, *effect));
    EXPECT_FALSE(dirty);
    EXPECT_FALSE(ui::FileNameTick(dirty, *effect)) << "once";
}

TEST_F(RollupTimers, ATypedNameIsNotShownAnewAndTheMarkGoesAllTheSame) {
    Set("matchRenderOutputFilename"_param, FALSE);
    EXPECT_FALSE(ui::FileNameTick(dirty, *effect));
    EXPECT_FALSE(dirty);
}

TEST_F(RollupTimers, ElementsThatChangedAreSynchronised) {
    AddElement();
    EXPECT_EQ(ui::RenderElementsTick(dirty, *effect), ui::ListTick::Rebuild);
    EXPECT_FALSE(dirty);
    EXPECT_EQ(Layers(), 1);
    AddElement();
    EXPECT_EQ(ui::RenderElementsTick(dirty, *effect), ui::ListTick::Nothing);
    EXPECT_EQ(Layers(), 1) << "without a mark nothing is done";
}

TEST_F(RollupTimers, AListThatIsTheSameIsOnlyRedrawn) {
    Set("autoSort"_param, FALSE);
    AddElement();
    ui::RenderElementsTick(dirty, *effect);
    dirty = true;
    EXPECT_EQ(ui::RenderElementsTick(dirty, *effect), ui::ListTick::Redraw);
    EXPECT_FALSE(dirty);
}

TEST_F(RollupTimers, TheUserMaySynchroniseWithoutAMark) {
    AddElement();
    EXPECT_EQ(ui::UpdateRenderElements(*effect), ui::ListTick::Rebuild);
    EXPECT_EQ(Layers(), 1);
    Set("autoSort"_param, FALSE);
    EXPECT_EQ(ui::UpdateRenderElements(*effect), ui::ListTick::Redraw);
}

TEST_F(RollupTimers, SceneLayersThatChangedAreListedAnewOnce) {
    EXPECT_TRUE(ui::SceneLayersTick(dirty));
    EXPECT_FALSE(ui::SceneLayersTick(dirty));
}

}  // namespace

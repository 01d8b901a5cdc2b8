#include "host/object_classes.h"

#include <gtest/gtest.h>

#include "tests/host/sample_effect.h"
#include "tests/host/sample_objects.h"
#include "tests/host/saved_sample.h"

namespace {

class OfSuperClass : public SavedSampleDesc {
  public:
    OfSuperClass(SClass_ID superClass, void* object) : superClass_(superClass), object_(object) {}
    SClass_ID SuperClassID() override { return superClass_; }
    void* Create(BOOL loading) override {
        lastLoading = loading;
        return object_;
    }

  private:
    SClass_ID superClass_;
    void* object_;
};

TEST(ObjectClasses, EffectsAndTheirTargetsStandInFiles) {
    EXPECT_TRUE(host::StandsInFiles(RENDER_EFFECT_CLASS_ID));
    EXPECT_TRUE(host::StandsInFiles(REF_TARGET_CLASS_ID));
    for (SClass_ID other : {SClass_ID{0}, BMM_IO_CLASS_ID, RENDERER_CLASS_ID,
                            RENDER_ELEMENT_CLASS_ID, GEOMOBJECT_CLASS_ID})
        EXPECT_FALSE(host::StandsInFiles(other)) << other;
}

TEST(ObjectClasses, AreMadeToBeLoaded) {
    SampleTarget target;
    OfSuperClass targets(REF_TARGET_CLASS_ID, static_cast<ReferenceTarget*>(&target));
    EXPECT_EQ(host::MakeToLoad(targets), &target);
    EXPECT_EQ(targets.lastLoading, TRUE);
    Journal journal;
    SampleEffect effect(journal, "a");
    OfSuperClass effects(RENDER_EFFECT_CLASS_ID, static_cast<Effect*>(&effect));
    EXPECT_EQ(host::MakeToLoad(effects), &effect);
    EXPECT_EQ(effects.lastLoading, TRUE);
}

TEST(ObjectClasses, OfAnotherKindAreNotEvenMade) {
    int noTarget = 0;
    OfSuperClass format(BMM_IO_CLASS_ID, &noTarget);
    format.lastLoading = 5;
    EXPECT_EQ(host::MakeToLoad(format), nullptr);
    EXPECT_EQ(format.lastLoading, 5);
}

TEST(ObjectClasses, NodesLayersAndElementsAreOfTheScene) {
    host::ResetApplication();
    EXPECT_TRUE(host::IsOfTheScene(host::App().scene.AddNode(_M("a"))));
    EXPECT_TRUE(host::IsOfTheScene(host::App().scene.AddLayer(_M("b"))));
    EXPECT_TRUE(
        host::IsOfTheScene(host::App().elements[RS_Production].Add(Class_ID(4, 0), _M("c"))));
    SampleTarget target;
    EXPECT_FALSE(host::IsOfTheScene(target));
    host::ResetApplication();
}

TEST(ObjectClasses, AreCalledByBothPartsOfTheirId) {
    EXPECT_EQ(host::ClassText(Class_ID(0x70068609, 0x01d5d297)), "(0x70068609, 0x01d5d297)");
    EXPECT_EQ(host::ClassText(Class_ID(0, 0xffffffff)), "(0x00000000, 0xffffffff)");
}

}  // namespace

#include "effect/scene_snapshot.h"

#include <gtest/gtest.h>

namespace {

RenderGlobalContext Context(BOOL fieldRender, BOOL evenLines) {
    RenderGlobalContext gc;
    gc.fieldRender = fieldRender;
    gc.evenLines = evenLines;
    gc.time = 480;
    gc.camToWorld =
        Matrix3({1.0F, 2.0F, 3.0F}, {4.0F, 5.0F, 6.0F}, {7.0F, 8.0F, 9.0F}, {10.0F, 11.0F, 12.0F});
    gc.projType = PROJ_PARALLEL;
    gc.xscale = -800.0F;
    gc.nearRange = 5.0F;
    gc.farRange = 50.0F;
    gc.devWidth = 640;
    gc.devHeight = 360;
    return gc;
}

TEST(SceneSnapshot, IsNotTakenAtFirst) {
    const effect::SceneSnapshots snapshots;
    EXPECT_FALSE(snapshots[0].isTaken);
    EXPECT_FALSE(snapshots[1].isTaken);
}

TEST(SceneSnapshot, OfTheLinesThatArentEvenIsTheSecondFields) {
    EXPECT_EQ(effect::FieldOf(Context(FALSE, FALSE)), 0);
    EXPECT_EQ(effect::FieldOf(Context(FALSE, TRUE)), 0);
    EXPECT_EQ(effect::FieldOf(Context(TRUE, TRUE)), 0);
    EXPECT_EQ(effect::FieldOf(Context(TRUE, FALSE)), 1);
}

TEST(SceneSnapshot, KeepsHowTheFrameWasSeen) {
    effect::SceneSnapshots snapshots;
    effect::TakeSnapshot(snapshots, Context(FALSE, FALSE));
    const effect::SceneSnapshot& taken = snapshots[0];
    EXPECT_TRUE(taken.isTaken);
    EXPECT_EQ(taken.time, 480.0F);
    EXPECT_EQ(taken.camToWorld.GetRow(0), Point3(1.0F, 2.0F, 3.0F));
    EXPECT_EQ(taken.camToWorld.GetRow(1), Point3(4.0F, 5.0F, 6.0F));
    EXPECT_EQ(taken.camToWorld.GetRow(2), Point3(7.0F, 8.0F, 9.0F));
    EXPECT_EQ(taken.camToWorld.GetRow(3), Point3(10.0F, 11.0F, 12.0F));
    EXPECT_EQ(taken.projType, PROJ_PARALLEL);
    EXPECT_EQ(taken.xscale, -800.0F);
    EXPECT_EQ(taken.nearRange, 5.0F);
    EXPECT_EQ(taken.farRange, 50.0F);
    EXPECT_EQ(taken.devWidth, 640);
    EXPECT_FALSE(snapshots[1].isTaken);
}

TEST(SceneSnapshot, OfAFieldLeavesTheOtherFieldsAlone) {
    effect::SceneSnapshots snapshots;
    effect::TakeSnapshot(snapshots, Context(TRUE, FALSE));
    EXPECT_FALSE(snapshots[0].isTaken);
    EXPECT_TRUE(snapshots[1].isTaken);
    RenderGlobalContext first = Context(TRUE, TRUE);
    first.time = 0;
    effect::TakeSnapshot(snapshots, first);
    EXPECT_EQ(snapshots[0].time, 0.0F);
    EXPECT_EQ(snapshots[1].time, 480.0F);
}

TEST(SceneSnapshot, TakesThePlaceOfTheOneBefore) {
    effect::SceneSnapshots snapshots;
    RenderGlobalContext gc = Context(FALSE, FALSE);
    effect::TakeSnapshot(snapshots, gc);
    gc.time = 960;
    gc.devWidth = 320;
    effect::TakeSnapshot(snapshots, gc);
    EXPECT_EQ(snapshots[0].time, 960.0F);
    EXPECT_EQ(snapshots[0].devWidth, 320);
}

}  // namespace

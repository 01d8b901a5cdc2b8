#include "effect/vray_pixels.h"

#include "tests/effect/vray_frame.h"

namespace {

class VRayState : public EffectTest {
  protected:
    static void ExpectNothing(const effect::VRayState& state) {
        EXPECT_EQ(state.buffer, nullptr);
        EXPECT_FALSE(state.isInUse);
        EXPECT_EQ(state.corrections, nullptr);
        EXPECT_EQ(effect::PreparePixels(state), nullptr);
    }
};

TEST_F(VRayState, IsTheFrameBufferInUse) {
    const auto frame = VRayFrame(3, 2);
    host::HostRenderer& vray = UseRenderer(VRAY_CLASS_ID);
    UseVRayFrameBuffer(vray, frame);
    const effect::VRayState state = effect::FindVRayState(&vray);
    EXPECT_EQ(effect::PreparePixels(state), frame.get());
    ASSERT_EQ(state.corrections, frame.get());
    frame->SetValue(5, 0.75F);
    EXPECT_EQ(state.corrections->GetValue(5), 0.75F);
}

TEST_F(VRayState, HasNoPixelsWhereTheFrameBufferIsOff) {
    const auto frame = VRayFrame(3, 2);
    host::HostRenderer& vray = UseRenderer(VRAY_CLASS_ID);
    UseVRayFrameBuffer(vray, frame);
    vray.GetParamBlock(15)->SetValue(170, 0, 0);
    EXPECT_EQ(effect::PreparePixels(effect::FindVRayState(&vray)), nullptr);
    EXPECT_EQ(effect::FindVRayState(&vray).corrections, frame.get());
}

TEST_F(VRayState, IsNothingWithoutAFrame) {
    host::HostRenderer& vray = UseRenderer(VRAY_CLASS_ID);
    UseVRayFrameBuffer(vray, std::make_shared<host::VRayFrameBuffer>());
    ExpectNothing(effect::FindVRayState(&vray));
    UseVRayFrameBuffer(vray, nullptr);
    ExpectNothing(effect::FindVRayState(&vray));
}

TEST_F(VRayState, IsNothingOfOtherRenderers) {
    ExpectNothing(effect::FindVRayState(nullptr));
    ExpectNothing(effect::FindVRayState(&UseRenderer(CORONA_CLASS_ID)));
}

TEST_F(VRayState, HasPixelsThatAreMadeReadyOnceWhetherTheyAreUsedOrNot) {
    PreparedFrame frame;
    const host::Owned<OtherVRay> vray(new OtherVRay(frame));
    const effect::VRayState state = effect::FindVRayState(vray.get());
    EXPECT_EQ(frame.prepared, 0) << "corrections may still change";
    EXPECT_EQ(effect::PreparePixels(state), nullptr) << "it has no settings";
    EXPECT_EQ(frame.prepared, 1);
    EXPECT_THAT(frame.asked, testing::UnorderedElementsAre(0x7783b785, 0x77c074c6));
    frame.offersPixels = false;
    EXPECT_EQ(effect::PreparePixels(effect::FindVRayState(vray.get())), nullptr);
    EXPECT_EQ(frame.prepared, 1);
}

TEST_F(VRayState, HasEachOfTheTwoWithoutTheOther) {
    PreparedFrame frame;
    const host::Owned<OtherVRay> vray(new OtherVRay(frame));
    frame.offersPixels = false;
    EXPECT_EQ(effect::FindVRayState(vray.get()).corrections, &frame);
    frame.offersPixels = true;
    frame.offersCorrections = false;
    const effect::VRayState state = effect::FindVRayState(vray.get());
    EXPECT_EQ(state.corrections, nullptr);
    EXPECT_EQ(state.buffer, &frame);
}

}  // namespace

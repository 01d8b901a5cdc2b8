#include "effect/renderer_kinds.h"

#include "tests/effect/effect_fixture.h"

namespace {

class RendererKinds : public EffectTest {};

TEST_F(RendererKinds, AreToldByTheirClass) {
    EXPECT_EQ(VRAY_CLASS_ID, Class_ID(0x73bab286, 0x77f8fd0c));
    EXPECT_EQ(CORONA_CLASS_ID, Class_ID(0x62a85dcc, 0x523c3604));
    EXPECT_EQ(RENDERER_A_CLASS_ID, Class_ID(0x58f67d6c, 0x4fcf3bc3));
    EXPECT_EQ(RENDERER_B_CLASS_ID, Class_ID(0x3e7d7eba, 0x14c036ab));
    EXPECT_EQ(RENDERER_C_CLASS_ID, Class_ID(0x0cf12ab7, 0x03762873));
    host::HostRenderer& renderer = UseRenderer(CORONA_CLASS_ID);
    EXPECT_TRUE(effect::IsClass(&renderer, CORONA_CLASS_ID));
    EXPECT_FALSE(effect::IsClass(&renderer, VRAY_CLASS_ID));
    EXPECT_FALSE(effect::IsClass(nullptr, VRAY_CLASS_ID));
}

TEST_F(RendererKinds, OnlyVRayHasFrameBufferSettings) {
    EXPECT_EQ(effect::VRayFrameBufferSettings(nullptr), nullptr);
    EXPECT_EQ(effect::VRayFrameBufferSettings(&UseRenderer(CORONA_CLASS_ID)), nullptr);
    host::HostRenderer& vray = UseRenderer(VRAY_CLASS_ID);
    EXPECT_EQ(effect::VRayFrameBufferSettings(&vray), vray.GetParamBlock(15));
    EXPECT_NE(effect::VRayFrameBufferSettings(&vray), nullptr);
}

TEST_F(RendererKinds, VRaysFrameBufferIsInUseAboveZero) {
    EXPECT_FALSE(effect::UsesVRayFrameBuffer(nullptr));
    host::HostRenderer& vray = UseRenderer(VRAY_CLASS_ID);
    EXPECT_FALSE(effect::UsesVRayFrameBuffer(&vray));
    vray.GetParamBlock(15)->SetValue(170, 0, 1);
    EXPECT_TRUE(effect::UsesVRayFrameBuffer(&vray));
}

// A V-Ray of a version without the block.
class BareVRay : public Renderer {
  public:
    Class_ID ClassID() override { return VRAY_CLASS_ID; }
    RefResult NotifyRefChanged(const Interval&, RefTargetHandle, PartID&, RefMessage,
                               BOOL) override {
        return REF_SUCCEED;
    }
};

TEST_F(RendererKinds, AVRayWithoutTheBlockUsesNoFrameBuffer) {
    const host::Owned<BareVRay> vray(new BareVRay);
    EXPECT_EQ(effect::VRayFrameBufferSettings(vray.get()), nullptr);
    EXPECT_FALSE(effect::UsesVRayFrameBuffer(vray.get()));
}

}  // namespace

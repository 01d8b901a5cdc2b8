#include "effect/renderer_kinds.h"

#include "tests/effect/effect_fixture.h"

namespace {

class RendererKinds : public EffectTest {};

TEST_F(RendererKinds, AreToldByTheirClass) {
    EXPECT_EQ(effect::vrayClassID, Class_ID(0x73bab286, 0x77f8fd0c));
    EXPECT_EQ(effect::coronaClassID, Class_ID(0x62a85dcc, 0x523c3604));
    EXPECT_EQ(effect::rendererClassA, Class_ID(0x58f67d6c, 0x4fcf3bc3));
    EXPECT_EQ(effect::rendererClassB, Class_ID(0x3e7d7eba, 0x14c036ab));
    EXPECT_EQ(effect::rendererClassC, Class_ID(0x0cf12ab7, 0x03762873));
    host::HostRenderer& renderer = UseRenderer(effect::coronaClassID);
    EXPECT_TRUE(effect::IsClass(&renderer, effect::coronaClassID));
    EXPECT_FALSE(effect::IsClass(&renderer, effect::vrayClassID));
    EXPECT_FALSE(effect::IsClass(nullptr, effect::vrayClassID));
}

TEST_F(RendererKinds, OnlyVRayHasFrameBufferSettings) {
    EXPECT_EQ(effect::VRayFrameBufferSettings(nullptr), nullptr);
    EXPECT_EQ(effect::VRayFrameBufferSettings(&UseRenderer(effect::coronaClassID)), nullptr);
    host::HostRenderer& vray = UseRenderer(effect::vrayClassID);
    EXPECT_EQ(effect::VRayFrameBufferSettings(&vray), vray.GetParamBlock(15));
    EXPECT_NE(effect::VRayFrameBufferSettings(&vray), nullptr);
}

TEST_F(RendererKinds, VRaysFrameBufferIsInUseAboveZero) {
    EXPECT_FALSE(effect::UsesVRayFrameBuffer(nullptr));
    host::HostRenderer& vray = UseRenderer(effect::vrayClassID);
    EXPECT_FALSE(effect::UsesVRayFrameBuffer(&vray));
    vray.GetParamBlock(15)->SetValue(170, 0, 1);
    EXPECT_TRUE(effect::UsesVRayFrameBuffer(&vray));
}

// A V-Ray of a version without the block.
class BareVRay : public Renderer {
  public:
    Class_ID ClassID() override { return effect::vrayClassID; }
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

#include "effect/vray_pixels.h"

#include "tests/effect/vray_frame.h"

namespace {

class VRayPixels : public EffectTest {};

TEST_F(VRayPixels, AreThoseOfTheFrameBufferInUse) {
    const auto frame = VRayFrame(3, 2);
    host::HostRenderer& vray = UseRenderer(VRAY_CLASS_ID);
    UseVRayFrameBuffer(vray, frame);
    IVRayPixelBuffer* pixels = effect::VRayPixels(&vray);
    ASSERT_EQ(pixels, frame.get());
    EXPECT_EQ(pixels->GetWidth(), 3);
}

TEST_F(VRayPixels, AreNoneWhereTheFrameBufferIsOff) {
    host::HostRenderer& vray = UseRenderer(VRAY_CLASS_ID);
    UseVRayFrameBuffer(vray, VRayFrame(3, 2));
    vray.GetParamBlock(15)->SetValue(170, 0, 0);
    EXPECT_EQ(effect::VRayPixels(&vray), nullptr);
}

TEST_F(VRayPixels, AreNoneWithoutAFrame) {
    host::HostRenderer& vray = UseRenderer(VRAY_CLASS_ID);
    UseVRayFrameBuffer(vray, std::make_shared<host::VRayFrameBuffer>());
    EXPECT_EQ(effect::VRayPixels(&vray), nullptr);
    UseVRayFrameBuffer(vray, nullptr);
    EXPECT_EQ(effect::VRayPixels(&vray), nullptr);
}

TEST_F(VRayPixels, AreNoneOfOtherRenderers) {
    EXPECT_EQ(effect::VRayPixels(nullptr), nullptr);
    EXPECT_EQ(effect::VRayPixels(&UseRenderer(CORONA_CLASS_ID)), nullptr);
}

// Counts how often a frame buffer is made ready.
struct PreparedFrame : IVRayFrameBuffer, IVRayImage, IVRayPixelBuffer {
    IVRayImage* GetImage() override { return this; }
    void* GetInterface(DWORD id) override {
        asked.push_back(id);
        return offersPixels ? static_cast<IVRayPixelBuffer*>(this) : nullptr;
    }
    void Prepare() override { ++prepared; }
    int GetWidth() override { return 1; }
    int GetHeight() override { return 1; }
    int GetNumChannels() override { return 0; }
    bool DescribeChannel(int, VRayChannelDescription&) override { return false; }
    int FindChannel(int) override { return -1; }
    DWORD GetProperty(int) override { return 0; }
    bool GetPixels(int, DWORD, const VRayRegion&, int, std::size_t, void*, int, int, int) override {
        return false;
    }

    bool offersPixels = true;
    int prepared = 0;
    std::vector<DWORD> asked;
};

class OtherVRay : public Renderer {
  public:
    explicit OtherVRay(PreparedFrame& frame) : frame_(frame) {}
    Class_ID ClassID() override { return VRAY_CLASS_ID; }
    using Renderer::GetInterface;
    BaseInterface* GetInterface(Interface_ID id) override {
        return id == Interface_ID(0x08c17f84, 0x1747358c) ? &frame_ : nullptr;
    }
    RefResult NotifyRefChanged(const Interval&, RefTargetHandle, PartID&, RefMessage,
                               BOOL) override {
        return REF_SUCCEED;
    }

  private:
    PreparedFrame& frame_;
};

TEST_F(VRayPixels, AreMadeReadyOnceWhetherTheyAreUsedOrNot) {
    PreparedFrame frame;
    const host::Owned<OtherVRay> vray(new OtherVRay(frame));
    EXPECT_EQ(effect::VRayPixels(vray.get()), nullptr) << "it has no settings";
    EXPECT_EQ(frame.prepared, 1);
    EXPECT_THAT(frame.asked, testing::ElementsAre(0x7783b785));
    frame.offersPixels = false;
    EXPECT_EQ(effect::VRayPixels(vray.get()), nullptr);
    EXPECT_EQ(frame.prepared, 1);
}

}  // namespace

// A V-Ray that keeps the frame in its own frame buffer.
#pragma once

#include <algorithm>
#include <array>
#include <memory>
#include <vector>

#include "host/vray_frame_buffer.h"
#include "tests/effect/effect_fixture.h"

// Samples that differ from those of Image, and from each other by channel.
constexpr std::uint16_t VRaySample(int x, int y, int component) {
    return static_cast<std::uint16_t>(20000 + ImageSample(x, y, component));
}
constexpr std::uint16_t VRayAlphaSample(int x, int y) {
    return static_cast<std::uint16_t>(40000 + ImageSample(x, y, 0));
}

// The picture with an alpha of its own, and behind it the channel of the alpha.
inline std::shared_ptr<host::VRayFrameBuffer> VRayFrame(int width, int height) {
    std::vector<std::uint16_t> picture;
    std::vector<std::uint16_t> alpha;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            for (int component = 0; component < 4; ++component)
                picture.push_back(VRaySample(x, y, component));
            alpha.push_back(VRayAlphaSample(x, y));
        }
    }
    const auto add = [](host::VRayFrameBuffer& frame, int alias, VRayChannelType type,
                        const host::ImageFormat& format, std::vector<std::uint16_t> samples) {
        std::shared_ptr<host::ImageBitmap> image =
            host::ImageBitmap::FromUnsigned16(format, std::move(samples));
        EXPECT_TRUE(frame.AddChannel({alias, type, "", std::move(image)}));
    };
    auto frame = std::make_shared<host::VRayFrameBuffer>();
    frame->BeginFrame(width, height);
    add(*frame, VRAY_CHANNEL_RGB, RDCT_3FLOAT, {.width = width, .height = height},
        std::move(picture));
    add(*frame, VRAY_CHANNEL_ALPHA, RDCT_FLOAT,
        {.width = width, .height = height, .hasAlpha = false, .components = 1}, std::move(alpha));
    return frame;
}

// A frame that reads as 1 with V-Ray's colour corrections and as 0 without; else as `frame`, which
// must live as long.
class CorrectingFrame final : public IVRayPixelBuffer {
  public:
    explicit CorrectingFrame(IVRayPixelBuffer& described) : frame(described) {}
    void Prepare() override {}
    int GetWidth() override { return frame.GetWidth(); }
    int GetHeight() override { return frame.GetHeight(); }
    int GetNumChannels() override { return frame.GetNumChannels(); }
    bool DescribeChannel(int index, VRayChannelDescription& description) override {
        return frame.DescribeChannel(index, description);
    }
    int FindChannel(int alias) override { return frame.FindChannel(alias); }
    DWORD GetProperty(int number) override { return frame.GetProperty(number); }
    bool GetPixels(int, DWORD, const VRayRegion&, int, std::size_t bytes, void* buffer, int,
                   int readFlag, int) override {
        auto* samples = static_cast<std::uint16_t*>(buffer);
        std::fill_n(samples, bytes / sizeof *samples,
                    static_cast<std::uint16_t>(readFlag == 0 ? 65535 : 0));
        return true;
    }

  private:
    IVRayPixelBuffer& frame;
};

// Counts how often a frame buffer is made ready, and keeps what its corrections were then.
struct PreparedFrame : IVRayFrameBuffer, IVRayImage, IVRayPixelBuffer, IVRayColorCorrections {
    IVRayImage* GetImage() override { return this; }
    void* GetInterface(DWORD id) override {
        asked.push_back(id);
        if (id == 0x7783b785) return offersPixels ? static_cast<IVRayPixelBuffer*>(this) : nullptr;
        return offersCorrections ? static_cast<IVRayColorCorrections*>(this) : nullptr;
    }
    void Prepare() override {
        ++prepared;
        valuesWhenPrepared = values;
    }
    int GetWidth() override { return 1; }
    int GetHeight() override { return 1; }
    int GetNumChannels() override { return 0; }
    bool DescribeChannel(int, VRayChannelDescription&) override { return false; }
    int FindChannel(int) override { return -1; }
    DWORD GetProperty(int) override { return 0; }
    bool GetPixels(int, DWORD, const VRayRegion&, int, std::size_t, void*, int, int, int) override {
        return false;
    }
    float GetValue(int index) override { return values.at(static_cast<std::size_t>(index)); }
    void SetValue(int index, float value) override {
        values.at(static_cast<std::size_t>(index)) = value;
    }

    bool offersPixels = true;
    bool offersCorrections = true;
    int prepared = 0;
    std::vector<DWORD> asked;
    std::array<float, VRAY_COLOR_CORRECTIONS> values{};
    std::array<float, VRAY_COLOR_CORRECTIONS> valuesWhenPrepared{};
};

// A V-Ray with such a frame buffer and without settings.
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

// Has `vray` keep its frames in `frame`.
inline void UseVRayFrameBuffer(host::HostRenderer& vray,
                               std::shared_ptr<host::VRayFrameBuffer> frame) {
    vray.GetParamBlock(host::VRAY_BLOCK)->SetValue(host::VRAY_FRAME_BUFFER_ON, 0, 1);
    vray.SetFrameBuffer(std::move(frame));
}

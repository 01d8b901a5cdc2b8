// V-Ray's frame buffer as effects see it, over bitmaps in memory.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <vrayframebuffer.h>

#include "host/image_bitmap.h"

namespace host {

struct VRayChannel {
    int alias = VRAY_CHANNEL_LAST_ALIAS;
    VRayChannelType type = RDCT_3FLOAT;
    // UTF-8.
    std::string name;
    // Of the frame buffer's size, linear and premultiplied; never null.
    std::shared_ptr<ImageBitmap> image;
};

// It corrects no colours, so both values of `readFlag` read the same.
class VRayFrameBuffer final : public IVRayFrameBuffer, public IVRayImage, public IVRayPixelBuffer {
  public:
    // A frame without channels; sizes in pixels, both above 0.
    void BeginFrame(int width, int height);
    // Behind those that are there. False, and not added, for a channel without an image or with one
    // of another size, and before the first frame.
    bool AddChannel(VRayChannel channel);
    // There is no frame any more.
    void EndFrame();
    // What VRAY_PROPERTY_COLOR_MAPPED answers.
    void SetColorMapped(DWORD value) { colorMapped_ = value; }

    IVRayImage* GetImage() override { return width_ > 0 ? this : nullptr; }
    void* GetInterface(DWORD id) override;

    void Prepare() override {}
    int GetWidth() override { return width_; }
    int GetHeight() override { return height_; }
    int GetNumChannels() override { return static_cast<int>(channels_.size()); }
    bool DescribeChannel(int index, VRayChannelDescription& description) override;
    int FindChannel(int alias) override;
    // 0 for a number that isn't known.
    DWORD GetProperty(int number) override;
    // Can't be had: a channel that isn't there, an empty region or one that is not wholly inside
    // the frame, a buffer of another size than the region's, and a format that isn't known.
    bool GetPixels(int channelIndex, DWORD colorMapped, const VRayRegion& region, int format,
                   std::size_t bytes, void* buffer, int reserved0, int readFlag,
                   int reserved1) override;

  private:
    // Where the picture's alpha is; the image is null for a picture without.
    struct Alpha {
        ImageBitmap* image = nullptr;
        // In the image's alpha; otherwise in its red.
        bool inAlpha = false;
    };
    Alpha PictureAlpha();
    template <class Pixel>
    bool Read(VRayChannel& channel, const VRayRegion& region, std::size_t bytes, void* buffer);

    int width_ = 0;
    int height_ = 0;
    DWORD colorMapped_ = 0;
    std::vector<VRayChannel> channels_;
};

}  // namespace host

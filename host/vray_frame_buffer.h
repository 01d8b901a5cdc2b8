// V-Ray's frame buffer as effects see it, over bitmaps in memory.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <ostream>
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
    // Without an alpha of its own: its colours are multiplied by the picture's, as V-Ray's are.
    bool sharesAlpha = true;
};

// Which of the colour corrections' values switches the look on.
constexpr int VRAY_LOOK_ON = 17;

// A look that lies over what the frame buffer shows.
struct VRayLook {
    // Corrects `count` linear pixels in place; their colours are not premultiplied.
    std::function<void(BMM_Color_fl* pixels, int count)> correct;
    // Writes what `correct` does as the text of a .cube table. False when it can't.
    std::function<bool(std::ostream& stream)> writeTable;
};

// With `readFlag` 0 channels of three values (RDCT_3FLOAT) are read with the look, while there is
// one and it is switched on. It is applied to straight colours, so that it does at the edges of
// objects what an adjustment layer does there.
class VRayFrameBuffer final : public IVRayFrameBuffer,
                              public IVRayImage,
                              public IVRayPixelBuffer,
                              public IVRayColorCorrections {
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
    // Both functions are there. Switches the look on; it stays from frame to frame.
    void SetLook(VRayLook look);
    // What "vfbControl #saveglobalccpreset" does, whether the look is switched on or not. False
    // without a look, which makes no file, and when the file can't be written, of which nothing
    // stays.
    bool SaveCorrections(const MCHAR* path) const;

    IVRayImage* GetImage() override { return width_ > 0 ? this : nullptr; }
    void* GetInterface(DWORD id) override;

    // 0, and nothing done, for an index out of range.
    float GetValue(int index) override;
    void SetValue(int index, float value) override;

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
    // `alpha` is for a channel that has none.
    template <class Pixel>
    static void ReadSpan(ImageBitmap& image, const Alpha& alpha, int x, int y, int count,
                         Pixel* out);
    template <class Pixel>
    bool Read(VRayChannel& channel, const VRayRegion& region, bool corrected, std::size_t bytes,
              void* buffer);
    bool Corrects(const VRayChannel& channel, int readFlag) const;
    void Correct(BMM_Color_fl* pixels, int count, bool multiplied) const;

    int width_ = 0;
    int height_ = 0;
    DWORD colorMapped_ = 0;
    std::vector<VRayChannel> channels_;
    VRayLook look_;
    std::array<float, VRAY_COLOR_CORRECTIONS> corrections_{};
};

}  // namespace host

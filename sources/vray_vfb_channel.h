// One channel of a render element in V-Ray's own frame buffer, fetched row by row while the
// document is written.
#pragma once

#include <vrayframebuffer.h>

#include "sources/pixel_channel.h"

namespace sources {

// The frame buffer isn't owned and must live until the document has been written; null gives rows
// without width. A row that it can't give is white and opaque.
class VRayVFBToPSDChannel : public PixelChannel {
  public:
    // `component` is a Selector; `premultiplied` and `gammaCorrect` as for a bitmap's channel.
    // With `applyColorMapping` the frame buffer's colour corrections are applied.
    VRayVFBToPSDChannel(IVRayPixelBuffer* frameBuffer, int channelIndex, int component,
                        bool premultiplied, bool gammaCorrect, int applyColorMapping);

    const std::uint16_t* GetRow16(std::uint32_t row) override;
    const float* GetRow32(std::uint32_t row) override;

  private:
    void Fetch(std::uint32_t row, BMM_Color_64* pixels) override;
    void Fetch(std::uint32_t row, BMM_Color_fl* pixels) override;

    void Describe();
    template <class Pixel>
    void FetchRow(std::uint32_t row, int format, Pixel* pixels, const Pixel& white);

    IVRayPixelBuffer* frameBuffer;
    int channelIndex;
    DWORD colorMapped;
    int readFlag;
};

// The same with the sRGB curve in 8 and 16 bits, whether or not the host's gamma is enabled. Float
// rows stay linear.
class VRayVFBToPSDChannel_SRGB : public VRayVFBToPSDChannel {
  public:
    VRayVFBToPSDChannel_SRGB(IVRayPixelBuffer* frameBuffer, int channelIndex, int component,
                             bool premultiplied, bool srgbCorrect, int applyColorMapping);
};

}  // namespace sources

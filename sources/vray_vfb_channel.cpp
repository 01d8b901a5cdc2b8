#include "sources/vray_vfb_channel.h"

#include <algorithm>

namespace sources {

VRayVFBToPSDChannel::VRayVFBToPSDChannel(IVRayPixelBuffer* buffer, int index, int selector,
                                         bool keepPremultiplied, bool gammaCorrect,
                                         int applyColorMapping)
    : PixelChannel(buffer, buffer ? buffer->GetWidth() : 0, selector, keepPremultiplied,
                   gammaCorrect),
      frameBuffer(buffer),
      channelIndex(index),
      colorMapped(buffer ? buffer->GetProperty(VRAY_PROPERTY_COLOR_MAPPED) : 0),
      readFlag(applyColorMapping ? 0 : -1) {}

// The renderer wants a channel described before it is read at more than 8 bits; the answer doesn't
// matter, since the read itself tells whether there is such a channel.
void VRayVFBToPSDChannel::Describe() {
    VRayChannelDescription description;
    if (frameBuffer) frameBuffer->DescribeChannel(channelIndex, description);
}

const std::uint16_t* VRayVFBToPSDChannel::GetRow16(std::uint32_t row) {
    Describe();
    return PixelChannel::GetRow16(row);
}

const float* VRayVFBToPSDChannel::GetRow32(std::uint32_t row) {
    Describe();
    return PixelChannel::GetRow32(row);
}

template <class Pixel>
void VRayVFBToPSDChannel::FetchRow(std::uint32_t row, int format, Pixel* pixels,
                                   const Pixel& white) {
    if (!frameBuffer) return;
    const int y = static_cast<int>(row);
    const VRayRegion region{0, y, Width(), y + 1, Width(), 1, 0, 0};
    const auto count = static_cast<std::size_t>(std::max(Width(), 0));
    if (!frameBuffer->GetPixels(channelIndex, colorMapped, region, format, count * sizeof(Pixel),
                                pixels, 0, readFlag, 0)) {
        std::fill_n(pixels, count, white);
    }
}

void VRayVFBToPSDChannel::Fetch(std::uint32_t row, BMM_Color_64* pixels) {
    FetchRow(row, VRAY_PIXELS_16, pixels, {0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF});
}

void VRayVFBToPSDChannel::Fetch(std::uint32_t row, BMM_Color_fl* pixels) {
    FetchRow(row, VRAY_PIXELS_FLOAT, pixels, {1.0F, 1.0F, 1.0F, 1.0F});
}

VRayVFBToPSDChannel_SRGB::VRayVFBToPSDChannel_SRGB(IVRayPixelBuffer* buffer, int index,
                                                   int selector, bool keepPremultiplied,
                                                   bool srgbCorrect, int applyColorMapping)
    : VRayVFBToPSDChannel(buffer, index, selector, keepPremultiplied, false, applyColorMapping) {
    if (srgbCorrect) UseSRGB();
}

}  // namespace sources

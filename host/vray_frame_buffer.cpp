#include "host/vray_frame_buffer.h"

#include <algorithm>
#include <limits>
#include <type_traits>
#include <utility>

namespace host {
namespace {

constexpr int PIXELS_AT_ONCE = 256;

bool HasOwnAlpha(ImageBitmap& image) {
    return image.Storage()->HasAlpha() != 0;
}

// What 1.0 is among the components of a pixel.
float One(const BMM_Color_fl&) {
    return 1.0F;
}
UWORD One(const BMM_Color_64&) {
    return std::numeric_limits<UWORD>::max();
}

template <class Pixel>
void SetAlpha(Pixel* pixels, const Pixel* alphas, int count, decltype(Pixel::a) Pixel::*component) {
    for (int x = 0; x < count; ++x) {
        pixels[x].a = alphas[x].*component;
    }
}

}  // namespace

void VRayFrameBuffer::BeginFrame(int width, int height) {
    channels_.clear();
    width_ = std::max(width, 0);
    height_ = std::max(height, 0);
}

void VRayFrameBuffer::EndFrame() {
    BeginFrame(0, 0);
}

bool VRayFrameBuffer::AddChannel(VRayChannel channel) {
    if (width_ == 0 || !channel.image || channel.image->Storage()->Width() != width_ ||
        channel.image->Storage()->Height() != height_) {
        return false;
    }
    channels_.push_back(std::move(channel));
    return true;
}

void* VRayFrameBuffer::GetInterface(DWORD id) {
    return id == VRAY_PIXEL_BUFFER_INTERFACE ? static_cast<IVRayPixelBuffer*>(this) : nullptr;
}

bool VRayFrameBuffer::DescribeChannel(int index, VRayChannelDescription& description) {
    if (index < 0 || index >= GetNumChannels()) {
        return false;
    }
    const VRayChannel& channel = channels_[static_cast<std::size_t>(index)];
    description = {channel.alias, channel.type, channel.name.c_str()};
    return true;
}

int VRayFrameBuffer::FindChannel(int alias) {
    const auto found = std::find_if(channels_.begin(), channels_.end(),
                                    [&](const auto& channel) { return channel.alias == alias; });
    return found == channels_.end() ? -1 : static_cast<int>(found - channels_.begin());
}

DWORD VRayFrameBuffer::GetProperty(int number) {
    return number == VRAY_PROPERTY_COLOR_MAPPED ? colorMapped_ : 0;
}

VRayFrameBuffer::Alpha VRayFrameBuffer::PictureAlpha() {
    const int alpha = FindChannel(VRAY_CHANNEL_ALPHA);
    if (alpha >= 0) {
        return {channels_[static_cast<std::size_t>(alpha)].image.get(), false};
    }
    const int rgb = FindChannel(VRAY_CHANNEL_RGB);
    ImageBitmap* image = rgb >= 0 ? channels_[static_cast<std::size_t>(rgb)].image.get() : nullptr;
    return image && HasOwnAlpha(*image) ? Alpha{image, true} : Alpha{};
}

template <class Pixel>
bool VRayFrameBuffer::Read(VRayChannel& channel, const VRayRegion& region, std::size_t bytes,
                           void* buffer) {
    const int width = region.right - region.x;
    const int height = region.bottom - region.y;
    if (bytes / sizeof(Pixel) / static_cast<std::size_t>(width) !=
            static_cast<std::size_t>(height) ||
        bytes % (sizeof(Pixel) * static_cast<std::size_t>(width)) != 0) {
        return false;
    }
    ImageStorage& pixels = *channel.image->Storage();
    const bool ownAlpha = HasOwnAlpha(*channel.image);
    const Alpha alpha = ownAlpha ? Alpha{} : PictureAlpha();
    auto* out = static_cast<Pixel*>(buffer);
    for (int y = region.y; y < region.bottom; ++y, out += width) {
        pixels.GetLinearPixels(region.x, y, width, out);
        if (ownAlpha) {
            continue;
        }
        Pixel alphas[PIXELS_AT_ONCE];
        for (int x = 0; x < width; x += PIXELS_AT_ONCE) {
            const int count = std::min(PIXELS_AT_ONCE, width - x);
            if (alpha.image) {
                alpha.image->Storage()->GetLinearPixels(region.x + x, y, count, alphas);
            } else {
                std::for_each_n(alphas, count, [](Pixel& pixel) { pixel.r = One(pixel); });
            }
            SetAlpha(out + x, alphas, count, alpha.inAlpha ? &Pixel::a : &Pixel::r);
        }
    }
    return true;
}

bool VRayFrameBuffer::GetPixels(int channelIndex, DWORD /*colorMapped*/, const VRayRegion& region,
                                int format, std::size_t bytes, void* buffer, int /*reserved0*/,
                                int /*readFlag*/, int /*reserved1*/) {
    const bool inside = region.x >= 0 && region.y >= 0 && region.x < region.right &&
                        region.y < region.bottom && region.right <= width_ &&
                        region.bottom <= height_;
    if (channelIndex < 0 || channelIndex >= GetNumChannels() || !buffer || !inside ||
        region.width != region.right - region.x || region.height != region.bottom - region.y) {
        return false;
    }
    VRayChannel& channel = channels_[static_cast<std::size_t>(channelIndex)];
    switch (format) {
        case VRAY_PIXELS_16:
            return Read<BMM_Color_64>(channel, region, bytes, buffer);
        case VRAY_PIXELS_FLOAT:
            return Read<BMM_Color_fl>(channel, region, bytes, buffer);
        default:
            return false;
    }
}

}  // namespace host

#include "host/vray_frame_buffer.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <limits>
#include <type_traits>
#include <utility>

#include "host/pixel_rows.h"
#include "host/text.h"

namespace host {
namespace {

constexpr int PIXELS_AT_ONCE = 256;

// From this on, a correction is switched on.
constexpr float ON = 1.0F;

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

void Store(const BMM_Color_fl* pixels, int count, BMM_Color_fl* out) {
    std::copy_n(pixels, count, out);
}
void Store(const BMM_Color_fl* pixels, int count, BMM_Color_64* out) {
    FloatRowToUnsigned16(&pixels->r, &out->r, static_cast<std::size_t>(count) * 4);
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
    switch (id) {
        case VRAY_PIXEL_BUFFER_INTERFACE:
            return static_cast<IVRayPixelBuffer*>(this);
        case VRAY_COLOR_CORRECTIONS_INTERFACE:
            return static_cast<IVRayColorCorrections*>(this);
        default:
            return nullptr;
    }
}

void VRayFrameBuffer::SetLook(VRayLook look) {
    look_ = std::move(look);
    SetValue(VRAY_LOOK_ON, ON);
}

bool VRayFrameBuffer::SaveCorrections(const MCHAR* path) const {
    if (!look_.writeTable) {
        return false;
    }
    const std::filesystem::path file = ToNativePath(path);
    std::ofstream stream(file, std::ios::binary);
    if (!stream) {
        return false;
    }
    bool saved = look_.writeTable(stream);
    stream.close();
    saved = saved && !stream.fail();
    std::error_code error;
    // Not a device or the like.
    if (!saved && std::filesystem::is_regular_file(file, error)) {
        std::filesystem::remove(file, error);
    }
    return saved;
}

float VRayFrameBuffer::GetValue(int index) {
    return index >= 0 && index < VRAY_COLOR_CORRECTIONS
               ? corrections_[static_cast<std::size_t>(index)]
               : 0.0F;
}

void VRayFrameBuffer::SetValue(int index, float value) {
    if (index >= 0 && index < VRAY_COLOR_CORRECTIONS) {
        corrections_[static_cast<std::size_t>(index)] = value;
    }
}

bool VRayFrameBuffer::Corrects(const VRayChannel& channel, int readFlag) const {
    return readFlag == 0 && channel.type == RDCT_3FLOAT && look_.correct &&
           corrections_[VRAY_LOOK_ON] >= ON;
}

void VRayFrameBuffer::Correct(BMM_Color_fl* pixels, int count, bool multiplied) const {
    // Each pixel's alpha, as what its components are divided by, and as it stays.
    float divisors[PIXELS_AT_ONCE * 4];
    float alphas[PIXELS_AT_ONCE];
    for (int i = 0; i < count; ++i) {
        const float alpha = pixels[i].a;
        alphas[i] = alpha;
        std::fill_n(divisors + i * 4, 3, multiplied && alpha > 0.0F ? alpha : 1.0F);
        divisors[i * 4 + 3] = 1.0F;
    }
    float* components = &pixels->r;
    for (int i = 0; i < count * 4; ++i) {
        components[i] /= divisors[i];
    }
    look_.correct(pixels, count);
    for (int i = 0; i < count * 4; ++i) {
        components[i] *= divisors[i];
    }
    for (int i = 0; i < count; ++i) {
        pixels[i].a = alphas[i];
    }
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
void VRayFrameBuffer::ReadSpan(ImageBitmap& image, const Alpha& alpha, int x, int y, int count,
                               Pixel* out) {
    image.Storage()->GetLinearPixels(x, y, count, out);
    if (HasOwnAlpha(image)) {
        return;
    }
    Pixel alphas[PIXELS_AT_ONCE];
    for (int done = 0; done < count; done += PIXELS_AT_ONCE) {
        const int now = std::min(PIXELS_AT_ONCE, count - done);
        if (alpha.image) {
            alpha.image->Storage()->GetLinearPixels(x + done, y, now, alphas);
        } else {
            std::for_each_n(alphas, now, [](Pixel& pixel) { pixel.r = One(pixel); });
        }
        SetAlpha(out + done, alphas, now, alpha.inAlpha ? &Pixel::a : &Pixel::r);
    }
}

template <class Pixel>
bool VRayFrameBuffer::Read(VRayChannel& channel, const VRayRegion& region, bool corrected,
                           std::size_t bytes, void* buffer) {
    const int width = region.right - region.x;
    const int height = region.bottom - region.y;
    if (bytes / sizeof(Pixel) / static_cast<std::size_t>(width) !=
            static_cast<std::size_t>(height) ||
        bytes % (sizeof(Pixel) * static_cast<std::size_t>(width)) != 0) {
        return false;
    }
    ImageBitmap& image = *channel.image;
    const Alpha alpha = HasOwnAlpha(image) ? Alpha{} : PictureAlpha();
    const bool multiplied = HasOwnAlpha(image) || channel.sharesAlpha;
    auto* out = static_cast<Pixel*>(buffer);
    for (int y = region.y; y < region.bottom; ++y, out += width) {
        if (!corrected) {
            ReadSpan(image, alpha, region.x, y, width, out);
            continue;
        }
        BMM_Color_fl pixels[PIXELS_AT_ONCE];
        for (int x = 0; x < width; x += PIXELS_AT_ONCE) {
            const int count = std::min(PIXELS_AT_ONCE, width - x);
            ReadSpan(image, alpha, region.x + x, y, count, pixels);
            Correct(pixels, count, multiplied);
            Store(pixels, count, out + x);
        }
    }
    return true;
}

bool VRayFrameBuffer::GetPixels(int channelIndex, DWORD /*colorMapped*/, const VRayRegion& region,
                                int format, std::size_t bytes, void* buffer, int /*reserved0*/,
                                int readFlag, int /*reserved1*/) {
    const bool inside = region.x >= 0 && region.y >= 0 && region.x < region.right &&
                        region.y < region.bottom && region.right <= width_ &&
                        region.bottom <= height_;
    if (channelIndex < 0 || channelIndex >= GetNumChannels() || !buffer || !inside ||
        region.width != region.right - region.x || region.height != region.bottom - region.y) {
        return false;
    }
    VRayChannel& channel = channels_[static_cast<std::size_t>(channelIndex)];
    const bool corrected = Corrects(channel, readFlag);
    switch (format) {
        case VRAY_PIXELS_16:
            return Read<BMM_Color_64>(channel, region, corrected, bytes, buffer);
        case VRAY_PIXELS_FLOAT:
            return Read<BMM_Color_fl>(channel, region, corrected, bytes, buffer);
        default:
            return false;
    }
}

}  // namespace host

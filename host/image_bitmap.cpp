#include "host/image_bitmap.h"

#include <algorithm>
#include <array>
#include <utility>

#include "host/pixel_rows.h"

namespace host {
namespace {

// Of the pixels that are read.
constexpr int COMPONENTS = 4;

// A row of pixels as the row of components that it is.
static_assert(sizeof(BMM_Color_64) == COMPONENTS * sizeof(std::uint16_t));
static_assert(sizeof(BMM_Color_fl) == COMPONENTS * sizeof(float));

// Pixels whose stored components are converted at once: few enough to stay in the first cache.
constexpr std::size_t PIXELS_AT_ONCE = 512;

void Convert(const HalfPixels& pixels, std::size_t first, std::size_t count, std::uint16_t* out) {
    HalfRowToUnsigned16(pixels.components.data() + first, out, count);
}
void Convert(const FloatPixels& pixels, std::size_t first, std::size_t count, std::uint16_t* out) {
    FloatRowToUnsigned16(pixels.components.data() + first, out, count);
}
void Convert(const Unsigned16Pixels& pixels, std::size_t first, std::size_t count,
             std::uint16_t* out) {
    std::copy_n(pixels.components.data() + first, count, out);
}
void Convert(const HalfPixels& pixels, std::size_t first, std::size_t count, float* out) {
    HalfRowToFloat(pixels.components.data() + first, out, count);
}
void Convert(const FloatPixels& pixels, std::size_t first, std::size_t count, float* out) {
    std::copy_n(pixels.components.data() + first, count, out);
}
void Convert(const Unsigned16Pixels& pixels, std::size_t first, std::size_t count, float* out) {
    Unsigned16RowToFloat(pixels.components.data() + first, out, count);
}

}  // namespace

bool ImageStorage::Contains(int x, int y, int pixels) const {
    return y >= 0 && y < format_.height && x >= 0 && x < format_.width && pixels > 0 &&
           pixels <= format_.width - x;
}

std::size_t ImageStorage::FirstComponent(int x, int y) const {
    return (static_cast<std::size_t>(y) * static_cast<std::size_t>(format_.width) +
            static_cast<std::size_t>(x)) *
           static_cast<std::size_t>(format_.components);
}

template <class Component>
int ImageStorage::Read(int x, int y, int pixels, Component* out) const {
    if (!Contains(x, y, pixels)) {
        return 0;
    }
    const auto components = static_cast<std::size_t>(format_.components);
    auto count = static_cast<std::size_t>(pixels);
    std::visit(
        [&](const auto& store) {
            std::size_t first = FirstComponent(x, y);
            if (components == COMPONENTS) {
                Convert(store, first, count * COMPONENTS, out);
                return;
            }
            Component stored[PIXELS_AT_ONCE * 3];
            for (; count > 0; out += PIXELS_AT_ONCE * COMPONENTS) {
                const std::size_t now = std::min(count, PIXELS_AT_ONCE);
                Convert(store, first, now * components, stored);
                if (components == 1) {
                    GreyToPixels(stored, out, now);
                } else {
                    ColorsToPixels(stored, out, now);
                }
                first += now * components;
                count -= now;
            }
        },
        pixels_);
    return 1;
}

int ImageStorage::GetLinearPixels(int x, int y, int pixels, BMM_Color_64* ptr) {
    return Read(x, y, pixels, &ptr->r);
}

int ImageStorage::GetLinearPixels(int x, int y, int pixels, BMM_Color_fl* ptr) {
    return Read(x, y, pixels, &ptr->r);
}

void* ImageStorage::GetChannel(ULONG channelID, ULONG& chanType) {
    chanType = channelID;
    return gbuffer_ ? gbuffer_->GetChannel(channelID, chanType) : nullptr;
}

bool ImageStorage::SetGBuffer(std::unique_ptr<FragmentBuffer> gbuffer) {
    if (gbuffer && (gbuffer->Width() != format_.width || gbuffer->Height() != format_.height)) {
        return false;
    }
    gbuffer_ = std::move(gbuffer);
    return true;
}

void ImageStorage::RoundHalfsTo16Bits() {
    auto* halfs = std::get_if<HalfPixels>(&pixels_);
    if (!halfs) {
        return;
    }
    std::vector<std::uint16_t> components = std::move(halfs->components);
    std::array<std::uint16_t, 4096> rounded;
    for (std::size_t first = 0; first < components.size(); first += rounded.size()) {
        const std::size_t count = std::min(rounded.size(), components.size() - first);
        HalfRowToUnsigned16(components.data() + first, rounded.data(), count);
        std::copy_n(rounded.data(), count, components.data() + first);
    }
    pixels_ = Unsigned16Pixels{std::move(components)};
}

Owned<ImageBitmap> ImageBitmap::Make(const ImageFormat& format, std::size_t components,
                                     Pixels pixels) {
    const bool known =
        format.components == 1 || format.components == 3 || format.components == COMPONENTS;
    if (!known || format.width <= 0 || format.height <= 0 || !(format.aspect > 0.0F)) {
        return nullptr;
    }
    const std::size_t row =
        static_cast<std::size_t>(format.width) * static_cast<std::size_t>(format.components);
    const bool valid =
        components / row == static_cast<std::size_t>(format.height) && components % row == 0;
    return Owned<ImageBitmap>(valid ? new ImageBitmap(format, std::move(pixels)) : nullptr);
}

Owned<ImageBitmap> ImageBitmap::FromHalf(const ImageFormat& format,
                                         std::vector<std::uint16_t> components) {
    const std::size_t count = components.size();
    return Make(format, count, HalfPixels{std::move(components)});
}

Owned<ImageBitmap> ImageBitmap::FromFloat(const ImageFormat& format,
                                          std::vector<float> components) {
    const std::size_t count = components.size();
    return Make(format, count, FloatPixels{std::move(components)});
}

Owned<ImageBitmap> ImageBitmap::FromUnsigned16(const ImageFormat& format,
                                               std::vector<std::uint16_t> components) {
    const std::size_t count = components.size();
    return Make(format, count, Unsigned16Pixels{std::move(components)});
}

}  // namespace host

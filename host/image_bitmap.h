// Bitmaps whose pixels stand in memory, in the form in which they were read.
#pragma once

#include <cstdint>
#include <memory>
#include <utility>
#include <variant>
#include <vector>

#include <bitmap.h>

#include "host/fragment_buffer.h"
#include "host/owned.h"

namespace host {

struct ImageFormat {
    // Pixels, both above 0.
    int width = 0;
    int height = 0;
    bool hasAlpha = true;
    // Width of a pixel over its height.
    float aspect = 1.0F;
    // Stored for each pixel. 1 is read as the same grey in all colours. Without an alpha (1, 3) it
    // is read as 1, and `hasAlpha` counts as off.
    int components = 4;
};

// Pixels are interleaved grey, or R, G, B, or R, G, B, A; rows from the top without gaps, linear
// and premultiplied. Of four components the alpha is always read; `hasAlpha` only tells whether it
// means anything.
struct HalfPixels {
    // IEEE half floats, by their bits.
    std::vector<std::uint16_t> components;
};
struct FloatPixels {
    std::vector<float> components;
};
struct Unsigned16Pixels {
    // 65535 is 1.0.
    std::vector<std::uint16_t> components;
};
using Pixels = std::variant<HalfPixels, FloatPixels, Unsigned16Pixels>;

class ImageStorage final : public BitmapStorage {
  public:
    ImageStorage(const ImageFormat& format, Pixels pixels)
        : format_(format), pixels_(std::move(pixels)) {}

    int Width() override { return format_.width; }
    int Height() override { return format_.height; }
    float Aspect() override { return format_.aspect; }
    DWORD Flags() override {
        return format_.hasAlpha && format_.components == 4 ? MAP_HAS_ALPHA : 0;
    }

    // Stored for each pixel: 1, 3 or 4.
    int Components() const { return format_.components; }

    // A span that isn't wholly inside the image, or is empty, can't be had.
    int GetLinearPixels(int x, int y, int pixels, BMM_Color_64* ptr) override;
    int GetLinearPixels(int x, int y, int pixels, BMM_Color_fl* ptr) override;

    // The G-Buffer's; none without one.
    DWORD ChannelsPresent() override { return gbuffer_ ? gbuffer_->ChannelsPresent() : 0; }
    GBuffer* GetGBuffer() override { return gbuffer_.get(); }
    void* GetChannel(ULONG channelID, ULONG& chanType) override;
    // Null for none; false, and not taken, when its size isn't the image's.
    bool SetGBuffer(std::unique_ptr<FragmentBuffer> gbuffer);

    // Of half floats, keeps what the 16-bit reads give, which then convert nothing; float reads
    // give the rounded values from then on. For a bitmap that is read in 16 bits only, and several
    // times. Needs no memory; other pixels stay as they are.
    void RoundHalfsTo16Bits();

  private:
    // `out` has room for four components a pixel.
    template <class Component>
    int Read(int x, int y, int pixels, Component* out) const;
    bool Contains(int x, int y, int pixels) const;
    std::size_t FirstComponent(int x, int y) const;

    ImageFormat format_;
    Pixels pixels_;
    std::unique_ptr<FragmentBuffer> gbuffer_;
};

class ImageBitmap final : public Bitmap {
  public:
    // Null when the format's size or aspect isn't above 0, its components aren't 1, 3 or 4, or the
    // buffer doesn't hold exactly width * height * components of them. The buffer is moved in, not
    // copied.
    static Owned<ImageBitmap> FromHalf(const ImageFormat& format,
                                       std::vector<std::uint16_t> components);
    static Owned<ImageBitmap> FromFloat(const ImageFormat& format, std::vector<float> components);
    static Owned<ImageBitmap> FromUnsigned16(const ImageFormat& format,
                                             std::vector<std::uint16_t> components);

    ImageStorage* Storage() override { return &storage_; }
    // As ImageStorage::SetGBuffer.
    bool SetGBuffer(std::unique_ptr<FragmentBuffer> gbuffer) {
        return storage_.SetGBuffer(std::move(gbuffer));
    }
    void DeleteThis() override { delete this; }

  private:
    ImageBitmap(const ImageFormat& format, Pixels pixels) : storage_(format, std::move(pixels)) {}
    ~ImageBitmap() override = default;
    static Owned<ImageBitmap> Make(const ImageFormat& format, std::size_t components,
                                   Pixels pixels);

    ImageStorage storage_;
};

}  // namespace host

// What all sources have in common that take one channel out of rows of RGBA pixels: buffers, gamma,
// dither, conversion. Only the fetch of a row is their own.
#pragma once

#include <bitmap.h>
#include "psdfile/channel_source.h"

#include "sources/pixel_rows.h"
#include "sources/row_buffer.h"

namespace sources {

// Holds a row of pixels and a row of samples of each depth that was asked for, never the image.
class PixelChannel : public psdfile::PSDChannelImageDataSource {
  public:
    const std::uint8_t* GetRow8(std::uint32_t row) override;
    const std::uint16_t* GetRow16(std::uint32_t row) override;
    const float* GetRow32(std::uint32_t row) override;

  protected:
    // `width` in pixels. `channel` is a Selector. With `premultiplied` false colours are divided by
    // alpha. With `gammaCorrect` the host's file gamma is applied, if the host has it enabled.
    // Every channel of one `image` gets the same noise, if the host dithers; only its address is
    // used.
    PixelChannel(const void* image, int width, int channel, bool premultiplied, bool gammaCorrect);

    // From now on the sRGB curve in 8 and 16 bits and none in floats, whatever the host's gamma.
    void UseSRGB();

    int Width() const { return width; }

  private:
    // Fills `pixels`, Width() of them: linear and premultiplied. What isn't filled stays from the
    // row before, and is 0 at first.
    virtual void Fetch(std::uint32_t row, BMM_Color_64* pixels) = 0;
    virtual void Fetch(std::uint32_t row, BMM_Color_fl* pixels) = 0;

    template <class Pixel>
    const Pixel* Fetched(std::uint32_t row, RowBuffer<Pixel>& pixels);

    const void* image;
    int width;
    RowBuffer<std::uint8_t> row8;
    RowBuffer<std::uint16_t> row16;
    RowBuffer<BMM_Color_64> pixels64;
    RowBuffer<BMM_Color_fl> pixelsFloat;
    RowBuffer<float> rowFloat;
    PixelReading reading;
    // 8192 entries; null for none. Not owned.
    const std::uint16_t* gammaTable = nullptr;
    float gamma = 1.0F;
    bool dither;
};

}  // namespace sources

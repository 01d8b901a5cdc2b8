// One channel of a bitmap of the host, fetched row by row while the document is written.
#pragma once

#include <bitmap.h>
#include "psdfile/channel_source.h"

#include "sources/pixel_rows.h"
#include "sources/row_buffer.h"

namespace sources {

// Holds a few rows, never the image. The bitmap isn't owned and must live until the document has
// been written. A bitmap without storage has width 0 and rows of what was there before (zeros).
class BitmapToPSDChannel : public psdfile::PSDChannelImageDataSource {
  public:
    // `channel` is a Selector. With `premultiplied` false colours are divided by alpha. With
    // `gammaCorrect` the host's file gamma is applied, if the host has it enabled.
    BitmapToPSDChannel(Bitmap* bitmap, int channel, bool premultiplied, bool gammaCorrect);

    const std::uint8_t* GetRow8(std::uint32_t row) override;
    const std::uint16_t* GetRow16(std::uint32_t row) override;
    const float* GetRow32(std::uint32_t row) override;

  protected:
    // 8192 entries; null for none. Not owned.
    const std::uint16_t* gammaTable = nullptr;
    float gamma = 1.0F;

  private:
    void Fetch64(std::uint32_t row);

    int width;
    Bitmap* bitmap;
    RowBuffer<std::uint8_t> row8;
    RowBuffer<std::uint16_t> row16;
    RowBuffer<BMM_Color_64> pixels64;
    RowBuffer<BMM_Color_fl> pixelsFloat;
    RowBuffer<float> rowFloat;
    PixelReading reading;
    bool dither;
};

// The same with the sRGB curve in 8 and 16 bits, whether or not the host's gamma is enabled. Float
// rows stay linear, as a 32-bit document expects.
class BitmapToPSDChannel_SRGB : public BitmapToPSDChannel {
  public:
    BitmapToPSDChannel_SRGB(Bitmap* bitmap, int channel, bool premultiplied, bool srgbCorrect);
};

}  // namespace sources

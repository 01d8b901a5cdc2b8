// One channel of a bitmap of the host, fetched row by row while the document is written.
#pragma once

#include <bitmap.h>

#include "sources/pixel_channel.h"

namespace sources {

// Holds a few rows, never the image. The bitmap isn't owned and must live until the document has
// been written. A bitmap without storage has width 0 and rows of what was there before (zeros).
class BitmapToPSDChannel : public PixelChannel {
  public:
    // `channel` is a Selector. With `premultiplied` false colours are divided by alpha. With
    // `gammaCorrect` the host's file gamma is applied, if the host has it enabled.
    BitmapToPSDChannel(Bitmap* bitmap, int channel, bool premultiplied, bool gammaCorrect);

  private:
    void Fetch(std::uint32_t row, BMM_Color_64* pixels) override;
    void Fetch(std::uint32_t row, BMM_Color_fl* pixels) override;

    Bitmap* bitmap;
};

// The same with the sRGB curve in 8 and 16 bits, whether or not the host's gamma is enabled. Float
// rows stay linear, as a 32-bit document expects.
class BitmapToPSDChannel_SRGB : public BitmapToPSDChannel {
  public:
    BitmapToPSDChannel_SRGB(Bitmap* bitmap, int channel, bool premultiplied, bool srgbCorrect);
};

}  // namespace sources

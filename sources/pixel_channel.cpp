#include "sources/pixel_channel.h"

#include <gamma.h>

#include "sources/dither.h"
#include "sources/srgb_curve.h"

namespace sources {

PixelChannel::PixelChannel(const void* source, int pixels, int selector, bool keepPremultiplied,
                           bool gammaCorrect)
    : image(source),
      width(pixels),
      reading{selector, keepPremultiplied},
      dither(gammaMgr.dithTrue != 0) {
    if (gammaMgr.enable && gammaCorrect) {
        gammaTable = gammaMgr.fileOutGammaTable;
        gamma = gammaMgr.fileOutGamma;
    }
}

// A gamma of 1 leaves floats linear.
void PixelChannel::UseSRGB() {
    gammaTable = SRGBTable().data();
    gamma = 1.0F;
}

template <class Pixel>
const Pixel* PixelChannel::Fetched(std::uint32_t row, RowBuffer<Pixel>& pixels) {
    Pixel* fetched = RowOf(pixels, width);
    Fetch(row, fetched);
    return fetched;
}

const std::uint8_t* PixelChannel::GetRow8(std::uint32_t row) {
    const BMM_Color_64* pixels = Fetched(row, pixels64);
    if (dither && row == 0) SeedDither(image);
    Convert8(pixels, width, reading, gammaTable, dither, RowOf(row8, width));
    return row8.get();
}

const std::uint16_t* PixelChannel::GetRow16(std::uint32_t row) {
    Convert16(Fetched(row, pixels64), width, reading, gammaTable, RowOf(row16, width));
    return row16.get();
}

const float* PixelChannel::GetRow32(std::uint32_t row) {
    const bool correct = gammaTable != nullptr && gamma != 1.0F;
    Convert32(Fetched(row, pixelsFloat), width, reading, correct, gamma, RowOf(rowFloat, width));
    return rowFloat.get();
}

}  // namespace sources

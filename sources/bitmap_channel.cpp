#include "sources/bitmap_channel.h"

#include "sources/bitmap_parts.h"

namespace sources {
namespace {

template <class Pixel>
void FetchRow(Bitmap* bitmap, std::uint32_t row, int width, Pixel* pixels) {
    if (BitmapStorage* storage = bitmap->Storage()) {
        storage->GetLinearPixels(0, static_cast<int>(row), width, pixels);
    }
}

}  // namespace

BitmapToPSDChannel::BitmapToPSDChannel(Bitmap* source, int selector, bool keepPremultiplied,
                                       bool gammaCorrect)
    : PixelChannel(source, WidthOf(source), selector, keepPremultiplied, gammaCorrect),
      bitmap(source) {}

void BitmapToPSDChannel::Fetch(std::uint32_t row, BMM_Color_64* pixels) {
    FetchRow(bitmap, row, Width(), pixels);
}

void BitmapToPSDChannel::Fetch(std::uint32_t row, BMM_Color_fl* pixels) {
    FetchRow(bitmap, row, Width(), pixels);
}

BitmapToPSDChannel_SRGB::BitmapToPSDChannel_SRGB(Bitmap* source, int selector,
                                                 bool keepPremultiplied, bool srgbCorrect)
    : BitmapToPSDChannel(source, selector, keepPremultiplied, false) {
    if (srgbCorrect) UseSRGB();
}

}  // namespace sources

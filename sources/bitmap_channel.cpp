#include "sources/bitmap_channel.h"

#include <gamma.h>

#include "sources/dither.h"
#include "sources/srgb_curve.h"

namespace sources {
namespace {

int WidthOf(Bitmap* bitmap) {
    BitmapStorage* storage = bitmap->Storage();
    return storage ? storage->Width() : 0;
}

}  // namespace

BitmapToPSDChannel::BitmapToPSDChannel(Bitmap* source, int selector, bool keepPremultiplied,
                                       bool gammaCorrect)
    : width(WidthOf(source)),
      bitmap(source),
      row8(MakeRow<std::uint8_t>(width)),
      row16(MakeRow<std::uint16_t>(width)),
      pixels64(MakeRow<BMM_Color_64>(width)),
      pixelsFloat(MakeRow<BMM_Color_fl>(width)),
      rowFloat(MakeRow<float>(width)),
      reading{selector, keepPremultiplied},
      dither(gammaMgr.dithTrue != 0) {
    if (gammaMgr.enable && gammaCorrect) {
        gammaTable = gammaMgr.fileOutGammaTable;
        gamma = gammaMgr.fileOutGamma;
    }
}

void BitmapToPSDChannel::Fetch64(std::uint32_t row) {
    if (BitmapStorage* storage = bitmap->Storage()) {
        storage->GetLinearPixels(0, static_cast<int>(row), width, pixels64.get());
    }
}

const std::uint8_t* BitmapToPSDChannel::GetRow8(std::uint32_t row) {
    Fetch64(row);
    if (dither && row == 0) SeedDither(bitmap);
    Convert8(pixels64.get(), width, reading, gammaTable, dither, row8.get());
    return row8.get();
}

const std::uint16_t* BitmapToPSDChannel::GetRow16(std::uint32_t row) {
    Fetch64(row);
    Convert16(pixels64.get(), width, reading, gammaTable, row16.get());
    return row16.get();
}

const float* BitmapToPSDChannel::GetRow32(std::uint32_t row) {
    if (BitmapStorage* storage = bitmap->Storage()) {
        storage->GetLinearPixels(0, static_cast<int>(row), width, pixelsFloat.get());
    }
    Convert32(pixelsFloat.get(), width, reading, gammaTable != nullptr, gamma, rowFloat.get());
    return rowFloat.get();
}

BitmapToPSDChannel_SRGB::BitmapToPSDChannel_SRGB(Bitmap* source, int selector,
                                                 bool keepPremultiplied, bool srgbCorrect)
    : BitmapToPSDChannel(source, selector, keepPremultiplied, false) {
    if (srgbCorrect) gammaTable = SRGBTable().data();
}

}  // namespace sources

// From rows of linear RGBA pixels to rows of one channel's samples: what the bitmap's source and
// any other source of such pixels have in common. No allocation; rows don't overlap.
#pragma once

#include <bitmap.h>

#include <cstdint>

namespace sources {

// Which sample of a pixel a source delivers.
enum Selector : int {
    selectRed = 0,
    selectGreen = 1,
    selectBlue = 2,
    selectAlpha = 3,      // never gamma corrected, never divided by alpha
    selectLuminance = 4,  // unweighted mean of red, green and blue
};

// How a selector's values come about. Colours are divided by alpha unless `premultiplied`; a pixel
// without alpha (16 bits: below 8 of 65535) keeps its colours. 16-bit quotients truncate, with 13
// bits of alpha, and are capped at 65535; floats aren't capped.
struct PixelReading {
    int selector = selectRed;
    bool premultiplied = true;
};

// `table` has 8192 entries (a 16-bit value >> 3 is the index) or is null for linear samples. Alpha
// takes no table. With `dither` the noise of NextDither is added, in the order of the pixels.
void Convert8(const BMM_Color_64* pixels, int width, PixelReading reading,
              const std::uint16_t* table, bool dither, std::uint8_t* samples);
void Convert16(const BMM_Color_64* pixels, int width, PixelReading reading,
               const std::uint16_t* table, std::uint16_t* samples);
// `correct` puts the host's power curve of `gamma` on all but alpha.
void Convert32(const BMM_Color_fl* pixels, int width, PixelReading reading, bool correct,
               float gamma, float* samples);

}  // namespace sources

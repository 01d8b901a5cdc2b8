// Pictures whose rows stand in another order than they are looked at.
#pragma once

#include "command/render_file.h"

namespace command {

// `orientation` is that of TIFF and Exif, 1 to 8: where the first row and column are. Another
// number counts as 1. Turns a picture of floats upright; only a turn by a quarter needs a second
// buffer.
void TurnUpright(Picture& picture, int orientation);

// Whether width and height change places.
constexpr bool IsQuarterTurn(int orientation) {
    return orientation >= 5 && orientation <= 8;
}

}  // namespace command

// A bitmap as an object's property.
#pragma once

#include "bitmap.h"

class PBBitmap {
  public:
    // Null when it isn't loaded or rendered. Owned by this.
    Bitmap* bm = nullptr;
};

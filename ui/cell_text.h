// How a text comes into the buffer that a list hands out for it.
#pragma once

#include <strclass.h>

#include <algorithm>

namespace ui {

// `size` in units. A text that doesn't fit with its terminator leaves the buffer empty.
inline void PutCellText(const MSTR& text, MCHAR* buffer, int size) {
    if (!buffer || size <= 0) return;
    const int length = text.Length() < size ? text.Length() : 0;
    *std::copy_n(text.data(), length, buffer) = 0;
}

}  // namespace ui

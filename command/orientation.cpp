#include "command/orientation.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace command {
namespace {

using Pixel = std::array<float, 4>;

Pixel* PixelsOf(std::vector<float>& components) {
    static_assert(sizeof(Pixel) == 4 * sizeof(float));
    return static_cast<Pixel*>(static_cast<void*>(components.data()));
}

void MirrorRows(Pixel* pixels, std::size_t width, std::size_t height) {
    for (std::size_t y = 0; y < height; ++y) {
        std::reverse(pixels + y * width, pixels + (y + 1) * width);
    }
}

void FlipRows(Pixel* pixels, std::size_t width, std::size_t height) {
    for (std::size_t y = 0; y < height / 2; ++y) {
        std::swap_ranges(pixels + y * width, pixels + (y + 1) * width,
                         pixels + (height - 1 - y) * width);
    }
}

// Rows become columns.
void Transpose(Picture& picture) {
    const auto width = static_cast<std::size_t>(picture.width);
    const auto height = static_cast<std::size_t>(picture.height);
    auto& components = std::get<std::vector<float>>(picture.components);
    std::vector<float> turned(components.size());
    const Pixel* from = PixelsOf(components);
    Pixel* to = PixelsOf(turned);
    for (std::size_t y = 0; y < height; ++y) {
        for (std::size_t x = 0; x < width; ++x)
            to[x * height + y] = from[y * width + x];
    }
    components = std::move(turned);
    std::swap(picture.width, picture.height);
    picture.pixelAspect = 1.0F / picture.pixelAspect;
}

}  // namespace

void TurnUpright(Picture& picture, int orientation) {
    if (orientation < 2 || orientation > 8) return;
    if (IsQuarterTurn(orientation)) Transpose(picture);
    const bool mirrors =
        orientation == 2 || orientation == 3 || orientation == 6 || orientation == 7;
    const bool flips = orientation == 3 || orientation == 4 || orientation == 7 || orientation == 8;
    Pixel* pixels = PixelsOf(std::get<std::vector<float>>(picture.components));
    const auto width = static_cast<std::size_t>(picture.width);
    const auto height = static_cast<std::size_t>(picture.height);
    if (mirrors) MirrorRows(pixels, width, height);
    if (flips) FlipRows(pixels, width, height);
}

}  // namespace command

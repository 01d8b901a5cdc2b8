// The formats of render files that are not OpenEXR.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace command {

struct ImageFormat {
    // The decoder's.
    std::string_view name;
    // The user's.
    std::string_view title;
    // Any one of them at the file's start; empty ones don't count.
    std::array<std::string_view, 4> signatures{};
    // For a format without a signature.
    std::string_view suffix{};
    // Windows has a decoder for it.
    bool isOnWindows = true;
};

// Told by the first bytes or, for TGA, by the path's suffix; null for none of the formats. Twelve
// bytes are looked at.
const ImageFormat* FindImageFormat(const std::string& path, const char* bytes, std::size_t size);

// Those that this system reads: "PNG, TIFF, JPEG, Radiance HDR or TGA".
std::string ImageFormatList();

}  // namespace command

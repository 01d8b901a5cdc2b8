#include "command/image_formats.h"

#include <algorithm>
#include <iterator>
#include <vector>

#include "command/ascii_case.h"

namespace command {
namespace {

using namespace std::string_view_literals;

constexpr ImageFormat formats[] = {
    {"png", "PNG", {"\x89PNG\r\n\x1a\n"sv}},
    {"tiff", "TIFF", {"II*\0"sv, "MM\0*"sv, "II+\0"sv, "MM\0+"sv}},
    {"jpeg", "JPEG", {"\xff\xd8\xff"sv}},
    {"hdr", "Radiance HDR", {"#?RADIANCE"sv, "#?RGBE"sv}, {}, false},
    {"targa", "TGA", {}, ".tga", false},
};

bool IsRead([[maybe_unused]] const ImageFormat& format) {
#ifdef _WIN32
    return format.isOnWindows;
#else
    return true;
#endif
}

bool IsSigned(const ImageFormat& format, std::string_view start) {
    return std::any_of(format.signatures.begin(), format.signatures.end(),
                       [&](std::string_view signature) {
                           return !signature.empty() && start.starts_with(signature);
                       });
}

bool IsNamed(const ImageFormat& format, std::string_view path) {
    return !format.suffix.empty() && AsciiLower(path).ends_with(format.suffix);
}

}  // namespace

const ImageFormat* FindImageFormat(const std::string& path, const char* bytes, std::size_t size) {
    const std::string_view start(bytes, size);
    const auto* found =
        std::find_if(std::begin(formats), std::end(formats), [&](const ImageFormat& format) {
            return IsSigned(format, start) || IsNamed(format, path);
        });
    return found == std::end(formats) ? nullptr : found;
}

std::string ImageFormatList() {
    std::vector<std::string_view> titles;
    for (const ImageFormat& format : formats) {
        if (IsRead(format)) titles.push_back(format.title);
    }
    std::string list;
    for (const std::string_view title : titles) {
        if (!list.empty()) list += title == titles.back() ? " or " : ", ";
        list += title;
    }
    return list;
}

}  // namespace command

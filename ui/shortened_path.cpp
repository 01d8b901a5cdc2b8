#include "ui/shortened_path.h"

#include <string>

namespace ui {
namespace {

using PathText = std::basic_string<MCHAR>;

constexpr const MCHAR* ellipsis = _M("...");

bool EndsPair(MCHAR unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

// The largest count up to `most` that `fits`, as all below it do; 0 when none does.
template <class Fits>
std::size_t Largest(std::size_t most, Fits fits) {
    std::size_t known = 0;
    while (known < most) {
        const std::size_t tried = known + (most - known + 1) / 2;
        if (fits(tried)) {
            known = tried;
        } else {
            most = tried - 1;
        }
    }
    return known;
}

}  // namespace

MSTR ShortenedPath(const MSTR& path, int width, const TextWidth& widthOf) {
    if (widthOf(path) <= width) return path;
    const PathText text = path.data();
    const std::size_t separator = text.find_last_of(_M("/\\"));
    const PathText folder = separator == PathText::npos ? PathText() : text.substr(0, separator);
    const PathText file = text.substr(folder.size());
    const auto fits = [&](const PathText& shown) { return widthOf(MSTR(shown)) <= width; };

    if (fits(ellipsis + file)) {
        const auto withHead = [&](std::size_t units) {
            return folder.substr(0, units) + ellipsis + file;
        };
        std::size_t units =
            Largest(folder.size(), [&](std::size_t tried) { return fits(withHead(tried)); });
        if (units > 0 && units < folder.size() && EndsPair(folder[units])) --units;
        return MSTR(withHead(units));
    }
    const auto withTail = [&](std::size_t units) {
        return ellipsis + file.substr(file.size() - units);
    };
    std::size_t units =
        Largest(file.size(), [&](std::size_t tried) { return fits(withTail(tried)); });
    if (units > 0 && EndsPair(file[file.size() - units])) --units;
    return MSTR(withTail(units));
}

}  // namespace ui

#include "host/win32/host_icons.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <string_view>
#include <utility>
#include <vector>

namespace host {
namespace {

// Pictures lie in a square of this side, with the origin at the left upper corner.
constexpr double ICON_GRID = 16.0;
// Pixels that a pixel is drawn with in each direction, for soft edges.
constexpr int ICON_SAMPLES = 4;

enum class IconTone { Line, Fill };

struct IconSpot {
    double x;
    double y;
};

// Where outlines of a shape overlap, there is a hole.
struct IconShape {
    IconTone tone;
    std::vector<std::vector<IconSpot>> outlines;
};

IconSpot IconSpotOnCircle(IconSpot centre, double radius, double degrees) {
    const double angle = degrees * std::numbers::pi / 180.0;
    return {centre.x + radius * std::cos(angle), centre.y + radius * std::sin(angle)};
}

// From one angle to another, both included.
std::vector<IconSpot> IconArc(IconSpot centre, double radius, double from, double to) {
    constexpr int STEPS = 24;
    std::vector<IconSpot> spots;
    for (int i = 0; i <= STEPS; ++i)
        spots.push_back(IconSpotOnCircle(centre, radius, from + (to - from) * i / STEPS));
    return spots;
}

std::vector<IconSpot> IconBox(double left, double top, double right, double bottom) {
    return {{left, top}, {right, top}, {right, bottom}, {left, bottom}};
}

// A wheel of eight teeth.
std::vector<IconShape> SettingsIcon() {
    constexpr IconSpot centre{8.0, 8.0};
    std::vector<IconSpot> rim;
    for (int tooth = 0; tooth < 8; ++tooth) {
        const double middle = tooth * 45.0;
        rim.push_back(IconSpotOnCircle(centre, 4.9, middle - 15.0));
        rim.push_back(IconSpotOnCircle(centre, 7.2, middle - 10.0));
        rim.push_back(IconSpotOnCircle(centre, 7.2, middle + 10.0));
        rim.push_back(IconSpotOnCircle(centre, 4.9, middle + 15.0));
    }
    return {{IconTone::Line, {rim, IconArc(centre, 2.4, 0.0, 360.0)}}};
}

std::vector<IconShape> FolderIcon() {
    const std::vector<IconSpot> outline{{1.0, 3.0},  {6.0, 3.0},   {7.5, 4.5},
                                        {15.0, 4.5}, {15.0, 13.5}, {1.0, 13.5}};
    return {{IconTone::Line, {outline}}, {IconTone::Fill, {IconBox(2.0, 6.5, 14.0, 12.5)}}};
}

// Up; the same upside down points down.
std::vector<IconSpot> ArrowOutline(bool up) {
    std::vector<IconSpot> spots{{8.0, 2.0},  {13.5, 8.0}, {10.0, 8.0}, {10.0, 14.0},
                                {6.0, 14.0}, {6.0, 8.0},  {2.5, 8.0}};
    if (!up) {
        for (IconSpot& spot : spots)
            spot.y = ICON_GRID - spot.y;
    }
    return spots;
}

std::vector<IconShape> ArrowUpIcon() {
    return {{IconTone::Line, {ArrowOutline(true)}}};
}
std::vector<IconShape> ArrowDownIcon() {
    return {{IconTone::Line, {ArrowOutline(false)}}};
}

// Two lines of a list, and an arrow that goes round.
std::vector<IconShape> UpdateListIcon() {
    constexpr IconSpot centre{10.5, 10.0};
    std::vector<IconSpot> ring = IconArc(centre, 4.8, -30.0, 240.0);
    const std::vector<IconSpot> inner = IconArc(centre, 3.2, 240.0, -30.0);
    ring.insert(ring.end(), inner.begin(), inner.end());
    const std::vector<IconSpot> head{{11.2, 9.2}, {16.0, 9.2}, {16.0, 4.2}};
    return {{IconTone::Line, {IconBox(1.0, 2.0, 12.0, 3.5)}},
            {IconTone::Line, {IconBox(1.0, 5.5, 5.5, 7.0)}},
            {IconTone::Line, {IconBox(1.0, 9.0, 4.5, 10.5)}},
            {IconTone::Line, {ring}},
            {IconTone::Line, {head}}};
}

struct HostIcon {
    std::wstring_view name;
    std::vector<IconShape> (*shapes)();
};

constexpr HostIcon hostIcons[] = {
    {L"Common/Folder", &FolderIcon},
    {L"Common/Settings", &SettingsIcon},
    {L"Common/UIComponents/ArrowDown", &ArrowDownIcon},
    {L"Common/UIComponents/ArrowUp", &ArrowUpIcon},
    {L"MergeAnimation/UpdateList", &UpdateListIcon},
};

const HostIcon* FindIcon(const wchar_t* name) {
    const auto* const found =
        std::ranges::find(hostIcons, std::wstring_view(name ? name : L""), &HostIcon::name);
    return found != std::end(hostIcons) ? found : nullptr;
}

// Memory that GDI draws into, its pixels in rows from the top.
class IconCanvas {
  public:
    IconCanvas(HDC dc, int width, int height) : dc_(CreateCompatibleDC(dc)) {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = width;
        info.bmiHeader.biHeight = -height;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        void* bits = nullptr;
        bitmap_ = CreateDIBSection(dc_, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
        pixels_ = static_cast<std::uint32_t*>(bits);
        former_ = SelectObject(dc_, bitmap_);
    }
    IconCanvas(const IconCanvas&) = delete;
    IconCanvas& operator=(const IconCanvas&) = delete;
    ~IconCanvas() {
        SelectObject(dc_, former_);
        DeleteObject(bitmap_);
        DeleteDC(dc_);
    }

    HDC Dc() const { return dc_; }
    // Null when the system had no memory for it.
    std::uint32_t* Pixels() const { return pixels_; }

  private:
    HDC dc_;
    HBITMAP bitmap_ = nullptr;
    HGDIOBJ former_ = nullptr;
    std::uint32_t* pixels_ = nullptr;
};

struct IconSize {
    int width;
    int height;
};

void DrawIconShape(HDC dc, const IconShape& shape, IconSize size) {
    std::vector<POINT> points;
    std::vector<INT> counts;
    for (const std::vector<IconSpot>& outline : shape.outlines) {
        for (IconSpot spot : outline) {
            points.push_back({std::lround(spot.x * size.width * ICON_SAMPLES / ICON_GRID),
                              std::lround(spot.y * size.height * ICON_SAMPLES / ICON_GRID)});
        }
        counts.push_back(static_cast<INT>(outline.size()));
    }
    SelectObject(dc, GetStockObject(NULL_PEN));
    SelectObject(dc, GetStockObject(WHITE_BRUSH));
    PolyPolygon(dc, points.data(), counts.data(), static_cast<int>(counts.size()));
    GdiFlush();
}

// How much of a pixel of the picture the shape covers: 0 to the number of its samples.
std::uint32_t IconCoverage(const std::uint32_t* samples, IconSize size, int x, int y) {
    std::uint32_t covered = 0;
    for (int row = 0; row < ICON_SAMPLES; ++row) {
        const std::uint32_t* line =
            samples + (y * ICON_SAMPLES + row) * size.width * ICON_SAMPLES + x * ICON_SAMPLES;
        for (int i = 0; i < ICON_SAMPLES; ++i)
            covered += line[i] & 1U;
    }
    return covered;
}

// Both of premultiplied blue, green, red and alpha, from the lowest byte on.
std::uint32_t OverPixel(std::uint32_t below, COLORREF color, std::uint32_t coverage) {
    constexpr std::uint32_t WHOLE = ICON_SAMPLES * ICON_SAMPLES;
    const std::uint32_t above[] = {GetBValue(color), GetGValue(color), GetRValue(color), 255};
    std::uint32_t result = 0;
    for (unsigned i = 0; i < 4; ++i) {
        const std::uint32_t under = below >> (8 * i) & 255U;
        const std::uint32_t part =
            (above[i] * coverage + under * (WHOLE - coverage) + WHOLE / 2) / WHOLE;
        result |= part << (8 * i);
    }
    return result;
}

}  // namespace

bool HasIcon(const wchar_t* name) {
    return FindIcon(name) != nullptr;
}

bool DrawIcon(HDC dc, const RECT& place, const wchar_t* name, const IconColors& colors) {
    const HostIcon* const icon = FindIcon(name);
    const IconSize size{place.right - place.left, place.bottom - place.top};
    if (!icon || size.width <= 0 || size.height <= 0) {
        return false;
    }
    const IconCanvas picture(dc, size.width, size.height);
    const IconCanvas samples(dc, size.width * ICON_SAMPLES, size.height * ICON_SAMPLES);
    if (!picture.Pixels() || !samples.Pixels()) {
        return false;
    }
    std::fill_n(picture.Pixels(), size.width * size.height, 0U);
    for (const IconShape& shape : icon->shapes()) {
        std::fill_n(samples.Pixels(), size.width * ICON_SAMPLES * (size.height * ICON_SAMPLES), 0U);
        DrawIconShape(samples.Dc(), shape, size);
        const COLORREF color = shape.tone == IconTone::Line ? colors.line : colors.fill;
        std::uint32_t* pixel = picture.Pixels();
        for (int y = 0; y < size.height; ++y) {
            for (int x = 0; x < size.width; ++x, ++pixel)
                *pixel = OverPixel(*pixel, color, IconCoverage(samples.Pixels(), size, x, y));
        }
    }
    constexpr BLENDFUNCTION OVER{AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
    GdiAlphaBlend(dc, place.left, place.top, size.width, size.height, picture.Dc(), 0, 0,
                  size.width, size.height, OVER);
    return true;
}

}  // namespace host

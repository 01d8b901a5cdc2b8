#include "host/win32/color_manager.h"

#include <icolorman.h>

#include <map>

namespace host {
namespace {

class ColorManager final : public IColorManager {
  public:
    COLORREF GetColor(ColorId id) override {
        switch (id) {
            case kWindow:
                return CustSysColor(COLOR_WINDOW);
            case kWindowText:
                return CustSysColor(COLOR_WINDOWTEXT);
            default:
                return RGB(0, 0, 0);
        }
    }
    COLORREF CustSysColor(int which) override {
        const auto theme = theme_.find(which);
        return theme != theme_.end() ? theme->second : GetSysColor(which);
    }
    HBRUSH CustSysColorBrush(int which) override {
        const auto theme = theme_.find(which);
        if (theme == theme_.end()) {
            return GetSysColorBrush(which);
        }
        // By colour and never deleted, so that a brush that was given stays good when the theme
        // changes, and a theme that comes back takes no new one.
        HBRUSH& brush = brushes_[theme->second];
        if (!brush) {
            brush = CreateSolidBrush(theme->second);
        }
        return brush;
    }
    void SetTheme(int which, std::optional<COLORREF> color) {
        if (color) {
            theme_[which] = *color;
        } else {
            theme_.erase(which);
        }
    }

  private:
    // By the system's number of a colour.
    std::map<int, COLORREF> theme_;
    std::map<COLORREF, HBRUSH> brushes_;
};

ColorManager& TheColorManager() {
    static ColorManager manager;
    return manager;
}

BYTE MixedPart(int first, int second, int percent) {
    return static_cast<BYTE>((first * (100 - percent) + second * percent + 50) / 100);
}

}  // namespace

void SetThemeColor(int which, std::optional<COLORREF> color) {
    TheColorManager().SetTheme(which, color);
}

COLORREF MixedColor(COLORREF first, COLORREF second, int percent) {
    return RGB(MixedPart(GetRValue(first), GetRValue(second), percent),
               MixedPart(GetGValue(first), GetGValue(second), percent),
               MixedPart(GetBValue(first), GetBValue(second), percent));
}

}  // namespace host

IColorManager* GetColorManager() {
    return &host::TheColorManager();
}

#include "host/win32/ui_scale.h"

#include <winutil.h>

#include <cmath>

namespace host {
namespace {

std::optional<float> scaleOverride;

}  // namespace

void SetUIScaleFactor(std::optional<float> scale) {
    scaleOverride = scale && *scale > 0.0F ? scale : std::nullopt;
}

int UIScaled(int pixels) {
    return static_cast<int>(std::lround(static_cast<float>(pixels) * MaxSDK::GetUIScaleFactor()));
}

}  // namespace host

float MaxSDK::GetUIScaleFactor() {
    if (host::scaleOverride) {
        return *host::scaleOverride;
    }
    return static_cast<float>(GetDpiForSystem()) / USER_DEFAULT_SCREEN_DPI;
}

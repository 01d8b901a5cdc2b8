// The picture across the top of the main rollup.
#pragma once

namespace ui {

// The bitmap for a scale of the host's windows (MaxSDK::GetUIScaleFactor), by its number in the
// resources (ui/resource.h); 0, and no picture, for a scale that there is none for.
constexpr int HeaderBitmap(float scale) {
    struct Picture {
        float scale;
        int bitmap;
    };
    constexpr Picture pictures[] = {{1.0F, 126}, {1.25F, 141}, {1.5F, 142}};
    if (scale >= 2.0F) return 139;
    for (const Picture& picture : pictures) {
        if (picture.scale == scale) return picture.bitmap;
    }
    return 0;
}

}  // namespace ui

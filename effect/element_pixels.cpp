#include "effect/element_pixels.h"

#include <boost/make_shared.hpp>

#include "sources/bitmap_channel.h"
#include "sources/vray_vfb_channel.h"

namespace effect {

bool ElementPixels::HasAlpha() const {
    // Each of V-Ray's channels has its own or the picture's.
    return !bitmap || (bitmap->Storage() && bitmap->Storage()->HasAlpha());
}

psdfile::PSDChannelImageDataSourcePtr ElementPixels::Channel(int selector) const {
    if (bitmap) {
        return boost::make_shared<sources::BitmapToPSDChannel>(bitmap, selector, premultiplied,
                                                               gammaCorrect);
    }
    return boost::make_shared<sources::VRayVFBToPSDChannel>(
        vfb, vfbChannel, selector, premultiplied, gammaCorrect, colorCorrect);
}

}  // namespace effect

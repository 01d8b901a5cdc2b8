#include "effect/render_channels.h"

#include <iparamb2.h>

#include <boost/make_shared.hpp>

#include "plugin/parameters.h"
#include "sources/bitmap_channel.h"

namespace effect {

bool UsesSRGBVariant(const Frame& frame) {
    return frame.pblock.GetInt("renderSRGBCorrect"_param) &&
           frame.pblock.GetInt("bitDepth"_param) != 32;
}

psdfile::PSDChannelImageDataSourcePtr RenderColor(const Frame& frame, int selector,
                                                  bool gammaCorrect) {
    Bitmap* bitmap = frame.sources.bitmap;
    if (!bitmap) return nullptr;
    if (UsesSRGBVariant(frame)) {
        return boost::make_shared<sources::BitmapToPSDChannel_SRGB>(bitmap, selector,
                                                                    frame.premultiply, true);
    }
    return boost::make_shared<sources::BitmapToPSDChannel>(bitmap, selector, frame.premultiply,
                                                           gammaCorrect);
}

psdfile::PSDChannelImageDataSourcePtr RenderAlpha(const Frame& frame) {
    Bitmap* bitmap = frame.sources.bitmap;
    if (!bitmap || !bitmap->Storage() || !bitmap->Storage()->HasAlpha()) return nullptr;
    return boost::make_shared<sources::BitmapToPSDChannel>(bitmap, sources::selectAlpha,
                                                           frame.premultiply, false);
}

}  // namespace effect

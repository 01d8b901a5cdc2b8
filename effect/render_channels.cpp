#include "effect/render_channels.h"

#include <iparamb2.h>

#include <boost/make_shared.hpp>

#include "plugin/parameters.h"
#include "sources/bitmap_channel.h"
#include "sources/vray_vfb_channel.h"

namespace effect {
namespace {

using Channel = psdfile::PSDChannelImageDataSourcePtr;

// Has V-Ray apply the colour corrections that are set in its frame buffer.
constexpr int applyColorMapping = 1;

template <class Source>
Channel FromFrameBuffer(const Frame& frame, int alias, int selector, bool premultiplied,
                        bool correct) {
    IVRayPixelBuffer* vfb = frame.sources.vfb;
    return boost::make_shared<Source>(vfb, vfb->FindChannel(alias), selector, premultiplied,
                                      correct, applyColorMapping);
}

Channel Alpha(const Frame& frame, int alias) {
    constexpr bool gammaCorrect = false;
    if (frame.sources.vfb) {
        return FromFrameBuffer<sources::VRayVFBToPSDChannel>(frame, alias, sources::selectAlpha,
                                                             frame.premultiply, gammaCorrect);
    }
    Bitmap* bitmap = frame.sources.bitmap;
    if (!bitmap || !bitmap->Storage() || !bitmap->Storage()->HasAlpha()) return nullptr;
    return boost::make_shared<sources::BitmapToPSDChannel>(bitmap, sources::selectAlpha,
                                                           frame.premultiply, gammaCorrect);
}

}  // namespace

bool UsesSRGBVariant(const Frame& frame) {
    return frame.pblock.GetInt("renderSRGBCorrect"_param) &&
           frame.pblock.GetInt("bitDepth"_param) != 32;
}

Channel RenderColor(const Frame& frame, int selector, bool gammaCorrect) {
    Bitmap* bitmap = frame.sources.bitmap;
    if (!bitmap && !frame.sources.vfb) return nullptr;
    if (!UsesSRGBVariant(frame)) {
        return PlainRenderColor(frame, selector, frame.premultiply, gammaCorrect);
    }
    constexpr bool srgbCorrect = true;
    if (frame.sources.vfb) {
        return FromFrameBuffer<sources::VRayVFBToPSDChannel_SRGB>(frame, VRAY_CHANNEL_RGB, selector,
                                                                  frame.premultiply, srgbCorrect);
    }
    return boost::make_shared<sources::BitmapToPSDChannel_SRGB>(bitmap, selector, frame.premultiply,
                                                                srgbCorrect);
}

Channel PlainRenderColor(const Frame& frame, int selector, bool premultiplied, bool gammaCorrect) {
    if (frame.sources.vfb) {
        return FromFrameBuffer<sources::VRayVFBToPSDChannel>(frame, VRAY_CHANNEL_RGB, selector,
                                                             premultiplied, gammaCorrect);
    }
    return boost::make_shared<sources::BitmapToPSDChannel>(frame.sources.bitmap, selector,
                                                           premultiplied, gammaCorrect);
}

Channel RenderAlpha(const Frame& frame) {
    return Alpha(frame, VRAY_CHANNEL_RGB);
}

Channel MergedAlpha(const Frame& frame) {
    return Alpha(frame, VRAY_CHANNEL_ALPHA);
}

}  // namespace effect

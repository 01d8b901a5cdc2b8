// A frame in the hands of the groups: their builder, and what they built.
#pragma once

#include <gamma.h>
#include <boost/make_shared.hpp>

#include "effect/frame.h"
#include "psdbuilder/psdbuilder.h"
#include "sources/bitmap_channel.h"
#include "sources/solid_color_channel.h"
#include "tests/effect/effect_fixture.h"

class DocumentFrameTest : public EffectTest {
  protected:
    static constexpr int width = 3;
    static constexpr int height = 2;

    DocumentFrameTest() { gammaMgr.enable = FALSE; }

    effect::Frame FrameOf(Bitmap* bitmap) {
        return FrameOf(effect::PSDFrameSources{bitmap, nullptr});
    }
    effect::Frame FrameOf(const effect::PSDFrameSources& sources) {
        context.renderer = Host().renderer.get();
        return {sources,     *effect, *effect->pblock, context, colors,
                premultiply, width,   height,          black,   white};
    }
    psdbuilder::PSDBuilderDoc& Document() { return *builder.doc; }
    const psdbuilder::PSDBuilderRGBLayer& Layer(std::size_t index) {
        return dynamic_cast<const psdbuilder::PSDBuilderRGBLayer&>(*Document().children.at(index));
    }

    // The 16-bit sample at (2, 1), which no other pixel of the image has.
    static int SampleOf(const psdfile::PSDChannelImageDataSourcePtr& source) {
        return source->GetRow16(1)[2];
    }
    static int ImageAt(int component) { return ImageSample(2, 1, component); }
    static bool IsCurved(const psdfile::PSDChannelImageDataSourcePtr& source) {
        return boost::dynamic_pointer_cast<sources::BitmapToPSDChannel_SRGB>(source) != nullptr;
    }

    effect::ColorDecisions colors;
    bool premultiply = true;
    psdfile::PSDChannelImageDataSourcePtr black =
        boost::make_shared<sources::SolidColorChannelImageSource>(std::uint8_t{0}, width);
    psdfile::PSDChannelImageDataSourcePtr white =
        boost::make_shared<sources::SolidColorChannelImageSource>(std::uint8_t{255}, width);
    host::Owned<host::ImageBitmap> image = Image(width, height);
    host::Owned<host::ImageBitmap> opaque = Image(width, height, false);
    psdbuilder::PSDBuilder builder{width, height, 16, 72.0, 1.0, 2, 1, false};
};

#include "effect/depth_range.h"

#include <cmath>

#include "sources/bitmap_parts.h"
#include "sources/depth_weight.h"
#include "sources/fragment_reader.h"

namespace effect {
namespace {

// From here on, a renderer's number for what is infinitely far.
constexpr float backgroundDepth = 1e29F;

bool IsDepth(float z) {
    return std::fabs(z) < backgroundDepth;
}

}  // namespace

DepthRange ScanDepthRange(Bitmap* bitmap, float coverageThreshold, UWORD opaqueRenderID) {
    DepthRange range;
    GBuffer* gbuffer = sources::GBufferOf(bitmap);
    if (!gbuffer) return range;
    const sources::DepthWeight weight(gbuffer->ChannelsPresent(), opaqueRenderID);
    // The float next to a fraction may be above it: the one below lets the very fraction count.
    const double least =
        static_cast<double>(std::nextafter(coverageThreshold, 0.0F)) * sources::fullWeight;
    sources::FragmentReader reader(gbuffer);
    const int right = sources::WidthOf(bitmap) - 1;
    const int height = sources::HeightOf(bitmap);
    for (int y = 0; y < height; ++y) {
        reader.ForEachPixel(y, 0, right, [&](int x, auto fragments) {
            fragments([&](GBufReader* fragment) {
                float z = 0.0F;
                if (!fragment->ReadChannelData(GB_Z, &z) || !IsDepth(z)) return;
                const bool isNearer = !range.isThere || z < range.min.z;
                const bool isFarther = !range.isThere || z > range.max.z;
                if (!isNearer && !isFarther) return;
                if (!(weight.Of(fragment) >= least)) return;
                if (isNearer) range.min = {z, x, y};
                if (isFarther) range.max = {z, x, y};
                range.isThere = true;
            });
        });
    }
    return range;
}

void ExtendToBack(DepthRange& range, float part) {
    range.max.z += part * (range.max.z - range.min.z);
}

}  // namespace effect

#include "sources/zdepth_gbuffer_channel.h"

#include <algorithm>

#include "sources/bitmap_parts.h"
#include "sources/depth_weight.h"
#include "sources/fragment_reader.h"
#include "sources/whole_sample.h"

namespace sources {
namespace {

// 0 near to 1 far, also for what lies outside; 0 in a range without extent at its own depth.
float FractionOf(float z, float min, float max) {
    const float fraction = (z - min) / (max - min);
    return fraction > 0.0F ? std::min(fraction, 1.0F) : 0.0F;
}

// The mean, where fragments overlap to more than a full pixel.
double LevelOf(float sum, WeightSum weight) {
    const auto exact = static_cast<double>(sum);
    if (weight > fullWeight) return exact / static_cast<double>(weight) * 255.0;
    return exact / weightPerLevel;
}

}  // namespace

ZDepthGBufferToPSDChannel::ZDepthGBufferToPSDChannel(Bitmap* source, int componentIndex,
                                                     bool keepPremultiplied, float minimum,
                                                     float maximum, UWORD opaque)
    : GBufferToPSDChannel(source, BMM_CHAN_Z, componentIndex, keepPremultiplied),
      customMin(minimum),
      customMax(maximum),
      opaqueRenderID(opaque) {}

const std::uint16_t* ZDepthGBufferToPSDChannel::GetRow16(std::uint32_t row) {
    std::uint16_t* samples = RowOf(row16, width);
    std::fill_n(samples, width, std::uint16_t{0xFFFF});
    GBuffer* gbuffer = GBufferOf(bitmap);
    if (!gbuffer) return samples;
    float min = 0.0F;
    float max = 0.0F;
    gbuffer->GetChannelMin(GB_Z, &min);
    gbuffer->GetChannelMax(GB_Z, &max);
    if (customMin != noMin) min = customMin;
    if (customMax != noMax) max = customMax;
    const DepthWeight depthWeight(gbuffer->ChannelsPresent(), opaqueRenderID);
    FragmentReader reader(gbuffer);
    reader.ForEachPixel(static_cast<int>(row), 0, width - 1, [&](int x, auto fragments) {
        float sum = 0.0F;
        WeightSum weight = 0;
        fragments([&](GBufReader* fragment) {
            float z = 0.0F;
            if (!fragment->ReadChannelData(GB_Z, &z)) return;
            const int part = depthWeight.Of(fragment);
            sum += static_cast<float>(part) * FractionOf(z, min, max);
            weight += part;
        });
        const auto depth = WholeSample<std::uint16_t>(LevelOf(sum, weight) * 257.0);
        samples[x] = static_cast<std::uint16_t>(~depth);
    });
    return samples;
}

const std::uint8_t* ZDepthGBufferToPSDChannel::GetRow8(std::uint32_t row) {
    const std::uint16_t* samples = GetRow16(row);
    std::uint8_t* narrow = RowOf(row8, width);
    for (int x = 0; x < width; ++x)
        narrow[x] = static_cast<std::uint8_t>(samples[x] / 257);
    return narrow;
}

}  // namespace sources

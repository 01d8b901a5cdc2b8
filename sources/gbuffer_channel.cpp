#include "sources/gbuffer_channel.h"

#include <algorithm>
#include <cstddef>
#include <limits>

#include "sources/bitmap_parts.h"
#include "sources/color_sum.h"
#include "sources/fragment_reader.h"
#include "sources/fragment_weight.h"
#include "sources/id_color_tables.h"
#include "sources/whole_sample.h"

namespace sources {
namespace {

// How an ID becomes a colour.
struct IDChannel {
    DWORD channel;
    int index;
    bool isWord;
    const IDColorTable& colors;
    // Both bytes of the ID of a pixel without fragments.
    std::uint8_t none;
};

const IDChannel idChannels[] = {
    {BMM_CHAN_MTL_ID, GB_MTL_ID, false, idColorTable, 0},
    {BMM_CHAN_NODE_ID, GB_NODE_ID, true, idColorTable, 0},
    {BMM_CHAN_NODE_RENDER_ID, GB_NODE_RENDER_ID, true, renderIDColorTable, 0xFF},
};

const IDChannel* FindIDChannel(DWORD channel) {
    const auto* found = std::ranges::find(idChannels, channel, &IDChannel::channel);
    return found != std::end(idChannels) ? found : nullptr;
}

// Which samples of a row are made, and of which component.
template <class Sample>
struct RowJob {
    int row;
    int width;
    int component;
    Sample* samples;
};

// IDs of 16 bits show their upper byte in blue, and the lower one in red and green.
template <class ID>
std::uint8_t ByteOf(ID id, int component) {
    return static_cast<std::uint8_t>(sizeof(ID) == 2 && component == 2 ? id >> 8 : id);
}

// Of the first fragment of each pixel: out of its plane if the storage keeps one, else by a reader.
template <class ID>
void FillIDColors(const IDChannel& channel, Bitmap* bitmap, const RowJob<std::uint8_t>& job) {
    const int component = std::clamp(job.component, 0, 2);
    const auto& colors = channel.colors[static_cast<std::size_t>(component)];
    BitmapStorage* storage = bitmap ? bitmap->Storage() : nullptr;
    ULONG type = 0;
    if (const void* plane = storage ? storage->GetChannel(channel.channel, type) : nullptr) {
        const ID* ids = static_cast<const ID*>(plane) + std::ptrdiff_t{job.row} * job.width;
        for (int x = 0; x < job.width; ++x)
            job.samples[x] = colors[ByteOf(ids[x], component)];
        return;
    }
    std::fill_n(job.samples, job.width, colors[channel.none]);
    FragmentReader reader(GBufferOf(bitmap));
    reader.ForEachPixel(job.row, 0, job.width - 1, [&](int x, auto fragments) {
        bool first = true;
        fragments([&](GBufReader* fragment) {
            ID id = 0;
            if (first && fragment->ReadChannelData(channel.index, &id)) {
                job.samples[x] = colors[ByteOf(id, component)];
            }
            first = false;
        });
    });
}

// Each sample is the sum over the pixel's fragments of weight times `part(GBufReader*, float&)`,
// which is false for a fragment that takes no part. A value of 1 that fills the pixel is full.
template <class Sample, class Part>
void FillWeightedSums(GBuffer* gbuffer, const RowJob<Sample>& job, Part part) {
    constexpr int stepsPerLevel = std::numeric_limits<Sample>::max() / 255;
    const WeightChannels channels = WeightChannelsOf(ChannelsOf(gbuffer));
    FragmentReader reader(gbuffer);
    std::fill_n(job.samples, job.width, Sample{0});
    reader.ForEachPixel(job.row, 0, job.width - 1, [&](int x, auto fragments) {
        float sum = 0.0F;
        fragments([&](GBufReader* fragment) {
            float value = 0.0F;
            if (!part(fragment, value)) return;
            sum += static_cast<float>(ReadFullOrFragmentWeight(fragment, channels)) * value;
        });
        job.samples[x] =
            WholeSample<Sample>(static_cast<double>(sum) / weightPerLevel * stepsPerLevel);
    });
}

// Within the G-Buffer's own range of depth.
template <class Sample>
void FillDepths(GBuffer* gbuffer, const RowJob<Sample>& job) {
    float min = 0.0F;
    float max = 0.0F;
    if (gbuffer) {
        gbuffer->GetChannelMin(GB_Z, &min);
        gbuffer->GetChannelMax(GB_Z, &max);
    }
    FillWeightedSums(gbuffer, job, [min, max](GBufReader* fragment, float& value) {
        float z = 0.0F;
        if (!fragment->ReadChannelData(GB_Z, &z)) return false;
        value = (z - min) / (max - min);
        return true;
    });
}

// From -1 to 1.
void FillNormals(GBuffer* gbuffer, const RowJob<std::uint8_t>& job) {
    FillWeightedSums(gbuffer, job, [&job](GBufReader* fragment, float& value) {
        DWORD normal = 0;
        if (!fragment->ReadChannelData(GB_NORMAL, &normal)) return false;
        value = (DeCompressNormal(normal)[job.component] + 1.0F) * 0.5F;
        return true;
    });
}

// The background's fragments don't count.
void FillColors(GBuffer* gbuffer, bool premultiplied, const RowJob<float>& job) {
    const WeightChannels channels = WeightChannelsOf(ChannelsOf(gbuffer));
    FragmentReader reader(gbuffer);
    std::fill_n(job.samples, job.width, 0.0F);
    reader.ForEachPixel(job.row, 0, job.width - 1, [&](int x, auto fragments) {
        ColorSum sum(job.component, premultiplied);
        fragments([&](GBufReader* fragment) {
            UWORD renderID = noRenderID;
            fragment->ReadChannelData(GB_NODE_RENDER_ID, &renderID);
            if (renderID != noRenderID) sum.Add(fragment, channels);
        });
        job.samples[x] = sum.Sample();
    });
}

}  // namespace

GBufferToPSDChannel::GBufferToPSDChannel(Bitmap* source, DWORD channelBit, int componentIndex,
                                         bool keepPremultiplied)
    : bitmap(source),
      width(WidthOf(source)),
      component(componentIndex),
      channel(channelBit),
      premultiplied(keepPremultiplied) {}

const std::uint8_t* GBufferToPSDChannel::GetRow8(std::uint32_t row) {
    const RowJob<std::uint8_t> job{static_cast<int>(row), width, component, RowOf(row8, width)};
    if (const IDChannel* ids = FindIDChannel(channel)) {
        if (ids->isWord) {
            FillIDColors<UWORD>(*ids, bitmap, job);
        } else {
            FillIDColors<UBYTE>(*ids, bitmap, job);
        }
    } else if (channel == BMM_CHAN_Z) {
        FillDepths(GBufferOf(bitmap), job);
    } else if (channel == BMM_CHAN_NORMAL) {
        FillNormals(GBufferOf(bitmap), job);
    }
    return row8.get();
}

const std::uint16_t* GBufferToPSDChannel::GetRow16(std::uint32_t row) {
    if (channel != BMM_CHAN_Z) return nullptr;
    const RowJob<std::uint16_t> job{static_cast<int>(row), width, component, RowOf(row16, width)};
    FillDepths(GBufferOf(bitmap), job);
    return row16.get();
}

const float* GBufferToPSDChannel::GetRow32(std::uint32_t row) {
    if (channel != BMM_CHAN_REALPIX) return nullptr;
    const RowJob<float> job{static_cast<int>(row), width, component, RowOf(rowFloat, width)};
    FillColors(GBufferOf(bitmap), premultiplied, job);
    return rowFloat.get();
}

}  // namespace sources

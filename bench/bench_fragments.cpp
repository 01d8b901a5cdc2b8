// Rows made of a G-Buffer's fragments, in pixels of the picture a second: mattes of objects small
// and large, depth, normals and false colours, and the searches for the boxes of all IDs and for
// the range of depth.
#include <benchmark/benchmark.h>
#include <gbuf.h>

#include <array>
#include <memory>
#include <utility>
#include <vector>

#include "effect/depth_range.h"
#include "effect/id_bounds.h"
#include "host/application.h"
#include "host/fragment_buffer.h"
#include "host/image_bitmap.h"
#include "sources/gbuffer_channel.h"
#include "sources/node_set_channels.h"
#include "sources/single_id_channels.h"
#include "sources/zdepth_gbuffer_channel.h"

namespace {

constexpr int width = 3840;
constexpr int height = 256;

constexpr DWORD ids = BMM_CHAN_NODE_RENDER_ID | BMM_CHAN_NODE_ID | BMM_CHAN_MTL_ID;
constexpr DWORD byCoverage =
    ids | BMM_CHAN_Z | BMM_CHAN_NORMAL | BMM_CHAN_REALPIX | BMM_CHAN_COLOR | BMM_CHAN_COVERAGE;
constexpr DWORD byWeight = byCoverage | BMM_CHAN_WEIGHT | BMM_CHAN_TRANSP;

// Object 1 with material 1 everywhere; object 2 with material 2 in a square of 64 pixels; every
// eighth pixel is shared with the next of objects 3 to 102.
host::Owned<host::ImageBitmap> Picture(DWORD channels) {
    auto bitmap = host::ImageBitmap::FromHalf(
        {width, height, true, 1.0F}, std::vector<std::uint16_t>(std::size_t{width} * height * 4));
    auto gbuffer = std::make_unique<host::FragmentBuffer>(width, height, channels);
    const Color24 full{255, 255, 255};
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const bool small = x >= 1000 && x < 1064 && y >= 100 && y < 164;
            const bool edge = x % 8 == 0;
            host::Fragment front{.z = 10.0F + static_cast<float>(x % 100),
                                 .normal = CompressNormal({0.0F, 0.6F, 0.8F}),
                                 .realPixel = MakeRealPixel(0.5F, 2.0F, 0.1F),
                                 .color = {10, 20, 30},
                                 .weight = full,
                                 .nodeID = static_cast<UWORD>(small ? 2 : 1),
                                 .renderID = static_cast<UWORD>(small ? 2 : 1),
                                 .mtlID = static_cast<UBYTE>(small ? 2 : 1)};
            host::Fragment behind = front;
            behind.z += 50.0F;
            behind.renderID = static_cast<UWORD>(3 + (x / 8 + y) % 100);
            behind.nodeID = behind.renderID;
            if (edge) {
                front.coverage = 100;
                behind.coverage = 155;
            }
            const std::array fragments{front, behind};
            gbuffer->AddPixel({fragments.data(), edge ? std::size_t{2} : std::size_t{1}});
        }
    }
    bitmap->SetGBuffer(std::move(gbuffer));
    effect::CollectIDBounds(bitmap.get());
    return bitmap;
}

const host::Owned<host::ImageBitmap>& PictureOf(DWORD channels) {
    static const auto coverage = Picture(byCoverage);
    static const auto weight = Picture(byWeight);
    return channels == byWeight ? weight : coverage;
}

void Count(benchmark::State& state) {
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * width * height);
}

void Rows8(benchmark::State& state, psdfile::PSDChannelImageDataSource& source) {
    for (auto unused : state) {
        for (std::uint32_t row = 0; row < height; ++row)
            benchmark::DoNotOptimize(source.GetRow8(row));
    }
    Count(state);
}

void ObjectMatte(benchmark::State& state, UWORD id, int component, DWORD channels) {
    sources::SpecificNodeIDToPSDChannel source(PictureOf(channels).get(), id, component, true);
    Rows8(state, source);
}

void SetMatte(benchmark::State& state, DWORD channels) {
    sources::NodesToPSDChannel source(PictureOf(channels).get(), 3, true);
    for (UWORD id = 1; id < 1000; id = static_cast<UWORD>(id + 2))
        source.renderIDs.Add(id);
    Rows8(state, source);
}

void MatteFloat(benchmark::State& state, int component) {
    sources::SpecificMtlIDToPSDChannel source(PictureOf(byCoverage).get(), 1, component, false);
    for (auto unused : state) {
        for (std::uint32_t row = 0; row < height; ++row)
            benchmark::DoNotOptimize(source.GetRow32(row));
    }
    Count(state);
}

void Channel(benchmark::State& state, DWORD channel) {
    sources::GBufferToPSDChannel source(PictureOf(byCoverage).get(), channel, 0, true);
    Rows8(state, source);
}

void Depth16(benchmark::State& state, DWORD channels, UWORD opaque) {
    using sources::ZDepthGBufferToPSDChannel;
    ZDepthGBufferToPSDChannel source(PictureOf(channels).get(), 0, true,
                                     ZDepthGBufferToPSDChannel::noMin,
                                     ZDepthGBufferToPSDChannel::noMax, opaque);
    for (auto unused : state) {
        for (std::uint32_t row = 0; row < height; ++row)
            benchmark::DoNotOptimize(source.GetRow16(row));
    }
    Count(state);
}

void Bounds(benchmark::State& state) {
    const auto& picture = PictureOf(byCoverage);
    for (auto unused : state)
        effect::CollectIDBounds(picture.get());
    Count(state);
}

void Range(benchmark::State& state, DWORD channels, UWORD opaque) {
    const auto& picture = PictureOf(channels);
    for (auto unused : state)
        benchmark::DoNotOptimize(effect::ScanDepthRange(picture.get(), 0.05F, opaque));
    Count(state);
}

BENCHMARK_CAPTURE(ObjectMatte, small_object, 2, 3, byCoverage);
BENCHMARK_CAPTURE(ObjectMatte, whole_frame, 1, 3, byCoverage);
BENCHMARK_CAPTURE(ObjectMatte, whole_frame_by_weight, 1, 3, byWeight);
BENCHMARK_CAPTURE(ObjectMatte, whole_frame_red, 1, 0, byCoverage);
BENCHMARK_CAPTURE(SetMatte, whole_frame, byCoverage);
BENCHMARK_CAPTURE(MatteFloat, matte, 3);
BENCHMARK_CAPTURE(MatteFloat, red, 0);
BENCHMARK_CAPTURE(Channel, material_id, BMM_CHAN_MTL_ID);
BENCHMARK_CAPTURE(Channel, render_id, BMM_CHAN_NODE_RENDER_ID);
BENCHMARK_CAPTURE(Channel, depth, BMM_CHAN_Z);
BENCHMARK_CAPTURE(Channel, normal, BMM_CHAN_NORMAL);
BENCHMARK_CAPTURE(Depth16, by_coverage, byCoverage, 65535);
BENCHMARK_CAPTURE(Depth16, by_weight_with_opaque, byWeight, 2);
BENCHMARK(Bounds);
BENCHMARK_CAPTURE(Range, by_coverage, byCoverage, 65535);
BENCHMARK_CAPTURE(Range, by_weight_with_opaque, byWeight, 2);

}  // namespace

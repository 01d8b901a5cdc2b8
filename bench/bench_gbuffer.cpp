// Fragments of a frame: taking them in as a file brings them, and walking them as a source does, in
// pixels a second.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <random>
#include <vector>

#include "host/fragment_buffer.h"

namespace {

constexpr int width = 3840;
constexpr int height = 270;
constexpr DWORD idChannels = BMM_CHAN_NODE_RENDER_ID | BMM_CHAN_COVERAGE;
constexpr DWORD allChannels = BMM_CHAN_Z | BMM_CHAN_MTL_ID | BMM_CHAN_NODE_ID | BMM_CHAN_NORMAL |
                              BMM_CHAN_REALPIX | BMM_CHAN_COVERAGE | BMM_CHAN_NODE_RENDER_ID |
                              BMM_CHAN_COLOR | BMM_CHAN_TRANSP | BMM_CHAN_WEIGHT;

// Most pixels have one fragment, edges two or three.
struct Frame {
    Frame() {
        std::mt19937 random(1);
        for (int pixel = 0; pixel < width * height; ++pixel) {
            const auto dice = random() % 16;
            counts.push_back(dice < 13 ? 1 : dice - 11);
        }
        for (int i = 0; i < 4096; ++i) {
            host::Fragment fragment;
            fragment.z = static_cast<float>(random() % 1000);
            fragment.renderID = static_cast<UWORD>(random() % 40);
            fragments.push_back(fragment);
        }
    }
    void FillInto(host::FragmentBuffer& buffer) const {
        std::size_t at = 0;
        for (const std::size_t count : counts) {
            buffer.AddPixel({fragments.data() + at % 4092, count});
            at += count;
        }
    }

    std::vector<std::size_t> counts;
    std::vector<host::Fragment> fragments;
};

const Frame& TheFrame() {
    static const Frame frame;
    return frame;
}

void Fill(benchmark::State& state, DWORD channels) {
    for (auto unused : state) {
        host::FragmentBuffer buffer(width, height, channels);
        TheFrame().FillInto(buffer);
        benchmark::DoNotOptimize(buffer.IsComplete());
    }
    state.SetItemsProcessed(state.iterations() * width * height);
}

// The coverage of one object, a reader a row.
void Walk(benchmark::State& state, DWORD channels) {
    host::FragmentBuffer buffer(width, height, channels);
    TheFrame().FillInto(buffer);
    GBuffer& gbuffer = buffer;
    for (auto unused : state) {
        int sum = 0;
        for (int y = 0; y < height; ++y) {
            GBufReader* reader = gbuffer.CreateReader();
            reader->StartLine(y);
            while (reader->NextPixel() >= 0) {
                while (reader->StartNextLayer()) {
                    UWORD id = 0;
                    UBYTE coverage = 0;
                    if (reader->ReadChannelData(GB_NODE_RENDER_ID, &id) && id == 7 &&
                        reader->ReadChannelData(GB_COVERAGE, &coverage)) {
                        sum += coverage;
                    }
                }
            }
            gbuffer.DestroyReader(reader);
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * width * height);
}

BENCHMARK_CAPTURE(Fill, ids, idChannels);
BENCHMARK_CAPTURE(Fill, all_channels, allChannels);
BENCHMARK_CAPTURE(Walk, ids, idChannels);
BENCHMARK_CAPTURE(Walk, all_channels, allChannels);

}  // namespace

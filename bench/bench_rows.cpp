// Rows of one channel out of a bitmap, as the writer asks for them: the fetch from the host's store
// and the conversion to samples, in bytes of samples a second.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <random>
#include <vector>

#include "host/application.h"
#include "host/image_bitmap.h"
#include "sources/bitmap_channel.h"

namespace {

constexpr int width = 1920;
constexpr int height = 256;

// Half floats of 0 to 1.
host::Owned<host::ImageBitmap> Noise() {
    std::mt19937 random(1);
    std::vector<std::uint16_t> components(std::size_t{width} * height * 4);
    for (auto& component : components)
        component = static_cast<std::uint16_t>(random() % 0x3C01);
    return host::ImageBitmap::FromHalf({width, height, true, 1.0F}, std::move(components));
}

template <class Sample>
const Sample* GetRow(sources::BitmapToPSDChannel& channel, std::uint32_t row);
template <>
const std::uint8_t* GetRow(sources::BitmapToPSDChannel& channel, std::uint32_t row) {
    return channel.GetRow8(row);
}
template <>
const std::uint16_t* GetRow(sources::BitmapToPSDChannel& channel, std::uint32_t row) {
    return channel.GetRow16(row);
}
template <>
const float* GetRow(sources::BitmapToPSDChannel& channel, std::uint32_t row) {
    return channel.GetRow32(row);
}

template <class Sample>
void Rows(benchmark::State& state, int selector, bool premultiplied, bool gamma) {
    const auto bitmap = Noise();
    sources::BitmapToPSDChannel channel(bitmap.get(), selector, premultiplied, gamma);
    for (auto unused : state) {
        for (std::uint32_t row = 0; row < height; ++row) {
            benchmark::DoNotOptimize(GetRow<Sample>(channel, row)[0]);
        }
    }
    state.SetBytesProcessed(state.iterations() * width * height *
                            static_cast<std::int64_t>(sizeof(Sample)));
}

void Rows8(benchmark::State& state, int selector, bool premultiplied, bool gamma) {
    Rows<std::uint8_t>(state, selector, premultiplied, gamma);
}
void Rows16(benchmark::State& state, int selector, bool premultiplied, bool gamma) {
    Rows<std::uint16_t>(state, selector, premultiplied, gamma);
}
void Rows32(benchmark::State& state, int selector, bool premultiplied, bool gamma) {
    Rows<float>(state, selector, premultiplied, gamma);
}

BENCHMARK_CAPTURE(Rows8, red, 0, true, false);
BENCHMARK_CAPTURE(Rows8, red_gamma, 0, true, true);
BENCHMARK_CAPTURE(Rows8, red_unpremultiplied, 0, false, false);
BENCHMARK_CAPTURE(Rows8, luminance, 4, true, false);
BENCHMARK_CAPTURE(Rows16, red, 0, true, false);
BENCHMARK_CAPTURE(Rows16, red_gamma, 0, true, true);
BENCHMARK_CAPTURE(Rows16, red_unpremultiplied, 0, false, false);
BENCHMARK_CAPTURE(Rows16, luminance, 4, true, false);
BENCHMARK_CAPTURE(Rows32, red, 0, true, false);
BENCHMARK_CAPTURE(Rows32, red_unpremultiplied, 0, false, false);
BENCHMARK_CAPTURE(Rows32, luminance, 4, true, false);

}  // namespace

// Rows of a bitmap on their way to an effect, in bytes per second of the pixels that come out.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <vector>

#include "host/image_bitmap.h"
#include "host/pixel_rows.h"

namespace {

constexpr int WIDTH = 1920;
constexpr int HEIGHT = 64;
constexpr std::size_t COMPONENTS = std::size_t{WIDTH} * HEIGHT * 4;
constexpr host::ImageFormat FORMAT{WIDTH, HEIGHT};

// Values from 0 to a little above 1, in no order that a branch predictor could learn.
std::vector<std::uint16_t> Halfs() {
    std::vector<std::uint16_t> halfs(COMPONENTS);
    for (std::size_t i = 0; i < halfs.size(); ++i) {
        halfs[i] = static_cast<std::uint16_t>(i * 40503 % 0x3d00);
    }
    return halfs;
}

std::vector<float> Floats() {
    std::vector<float> floats(COMPONENTS);
    host::HalfRowToFloat(Halfs().data(), floats.data(), floats.size());
    return floats;
}

template <class Pixel>
void ReadRows(benchmark::State& state, const host::Owned<host::ImageBitmap>& bitmap) {
    std::vector<Pixel> row(WIDTH);
    int y = 0;
    for ([[maybe_unused]] auto step : state) {
        bitmap->Storage()->GetLinearPixels(0, y, WIDTH, row.data());
        benchmark::DoNotOptimize(row.data());
        benchmark::ClobberMemory();
        y = (y + 1) % HEIGHT;
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(row.size() * sizeof(Pixel)));
}

void BM_HalfToUnsigned16(benchmark::State& state) {
    ReadRows<BMM_Color_64>(state, host::ImageBitmap::FromHalf(FORMAT, Halfs()));
}
void BM_HalfToFloat(benchmark::State& state) {
    ReadRows<BMM_Color_fl>(state, host::ImageBitmap::FromHalf(FORMAT, Halfs()));
}
void BM_FloatToUnsigned16(benchmark::State& state) {
    ReadRows<BMM_Color_64>(state, host::ImageBitmap::FromFloat(FORMAT, Floats()));
}
void BM_FloatToFloat(benchmark::State& state) {
    ReadRows<BMM_Color_fl>(state, host::ImageBitmap::FromFloat(FORMAT, Floats()));
}
void BM_Unsigned16ToUnsigned16(benchmark::State& state) {
    ReadRows<BMM_Color_64>(state, host::ImageBitmap::FromUnsigned16(FORMAT, Halfs()));
}
void BM_Unsigned16ToFloat(benchmark::State& state) {
    ReadRows<BMM_Color_fl>(state, host::ImageBitmap::FromUnsigned16(FORMAT, Halfs()));
}

BENCHMARK(BM_HalfToUnsigned16);
BENCHMARK(BM_HalfToFloat);
BENCHMARK(BM_FloatToUnsigned16);
BENCHMARK(BM_FloatToFloat);
BENCHMARK(BM_Unsigned16ToUnsigned16);
BENCHMARK(BM_Unsigned16ToFloat);

}  // namespace

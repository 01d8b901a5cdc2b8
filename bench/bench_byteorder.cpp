// The passes over a row that change its depth or byte order. Bytes per second are those of the
// result. The rows stay in the first or second cache, as they do between source and compressor.

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <vector>

#include "psdfile/sample_rows.h"

namespace {

constexpr std::size_t width = 4096;

template <class In, class Out, void (*convert)(const In*, Out*, std::size_t)>
void Pass(benchmark::State& state, std::size_t bytesPerSample) {
    std::vector<In> source(width);
    for (std::size_t i = 0; i < width; ++i) {
        source[i] = static_cast<In>(i * 7);
    }
    std::vector<Out> destination(width * bytesPerSample / sizeof(Out));
    while (state.KeepRunning()) {
        convert(source.data(), destination.data(), width);
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(width * bytesPerSample));
}

using Byte = std::uint8_t;

void SwapRow16(benchmark::State& state) {
    Pass<std::uint16_t, Byte, psdfile::SwapRow16>(state, 2);
}
void SwapRow32(benchmark::State& state) {
    Pass<float, Byte, psdfile::SwapRow32>(state, 4);
}
void WidenRow8To16(benchmark::State& state) {
    Pass<Byte, Byte, psdfile::WidenRow8To16>(state, 2);
}
void ConvertRow16To32(benchmark::State& state) {
    Pass<std::uint16_t, float, psdfile::ConvertRow16To32>(state, 4);
}
void ConvertRow8To32(benchmark::State& state) {
    Pass<Byte, float, psdfile::ConvertRow8To32>(state, 4);
}
void PredictFloatRow(benchmark::State& state) {
    Pass<float, Byte, psdfile::PredictFloatRow>(state, 4);
}

BENCHMARK(SwapRow16);
BENCHMARK(SwapRow32);
BENCHMARK(WidenRow8To16);
BENCHMARK(ConvertRow16To32);
BENCHMARK(ConvertRow8To32);
BENCHMARK(PredictFloatRow);

}  // namespace

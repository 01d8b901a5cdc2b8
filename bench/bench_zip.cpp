// Whole channels through deflate, at the two depths that use it. Bytes per second are those of the
// raw channel; the ratio is compressed over raw.

#include <benchmark/benchmark.h>

#include <boost/make_shared.hpp>
#include <cmath>
#include <cstdint>
#include <random>
#include <sstream>
#include <vector>

#include "psdfile/channel_image_data.h"

namespace {

constexpr std::uint32_t width = 1920;
constexpr std::uint32_t height = 270;

// Smooth shading with a little grain, as a renderer leaves it.
class Shading : public psdfile::PSDChannelImageDataSource {
  public:
    Shading() {
        std::mt19937 random(3);
        std::normal_distribution<double> grain(0, 0.002);
        for (std::uint32_t y = 0; y < height; ++y) {
            for (std::uint32_t x = 0; x < width; ++x) {
                const double shade = 0.5 + 0.4 * std::sin(x / 200.0) * std::cos(y / 90.0);
                const double value = x < width / 4 ? 0 : shade + grain(random);
                floats.push_back(static_cast<float>(value));
                words.push_back(static_cast<std::uint16_t>(value * 65535));
            }
        }
    }

    const std::uint8_t* GetRow8(std::uint32_t /*row*/) override { return nullptr; }
    const std::uint16_t* GetRow16(std::uint32_t row) override {
        return words.data() + std::size_t{row} * width;
    }
    const float* GetRow32(std::uint32_t row) override {
        return floats.data() + std::size_t{row} * width;
    }

  private:
    std::vector<float> floats;
    std::vector<std::uint16_t> words;
};

void WriteChannel(benchmark::State& state, std::uint8_t depth, std::uint16_t compression) {
    psdfile::PSDChannelImageData channel(width, height, depth, compression,
                                         boost::make_shared<Shading>(), true);
    std::stringstream stream;
    while (state.KeepRunning()) {
        stream.seekp(0);
        stream << channel;
    }
    const std::int64_t bytes = std::int64_t{width} * height * depth / 8;
    state.SetBytesProcessed(state.iterations() * bytes);
    state.counters["ratio"] = static_cast<double>(stream.tellp()) / static_cast<double>(bytes);
}

BENCHMARK_CAPTURE(WriteChannel, raw16, 16, psdfile::compressionRaw);
BENCHMARK_CAPTURE(WriteChannel, zip16, 16, psdfile::compressionZIP)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(WriteChannel, raw32, 32, psdfile::compressionRaw);
BENCHMARK_CAPTURE(WriteChannel, zip32, 32, psdfile::compressionZIPWithPrediction)
    ->Unit(benchmark::kMillisecond);

}  // namespace

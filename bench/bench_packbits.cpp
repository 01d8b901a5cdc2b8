// Packs rows of several kinds, with the encoder of the file model and with a plain one that goes
// through the row byte by byte. Bytes per second are those of the unpacked row.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

#include "psdfile/pack_bits.h"

namespace {

constexpr int rowSize = 4096;
constexpr int rowCount = 64;  // so many different rows that branches can't be learnt by heart

using Image = std::vector<std::uint8_t>;

std::uint8_t ToByte(double value) {
    return static_cast<std::uint8_t>(std::clamp(value, 0.0, 255.0));
}

template <class Function>
Image MakeImage(Function pixel) {
    Image image;
    for (int y = 0; y < rowCount; ++y) {
        for (int x = 0; x < rowSize; ++x) {
            image.push_back(pixel(x, y));
        }
    }
    return image;
}

Image Constant() {
    return MakeImage([](int, int) { return std::uint8_t{7}; });
}

Image Gradient() {
    return MakeImage([](int x, int y) { return static_cast<std::uint8_t>((x + y) / 16); });
}

Image Noise() {
    std::mt19937 random(1);
    return MakeImage([&](int, int) { return static_cast<std::uint8_t>(random()); });
}

// A picture: a flat background, smooth ramps and a noisy surface, in stretches.
Image Picture() {
    std::mt19937 random(2);
    std::normal_distribution<double> grain(0, 1.5);
    return MakeImage([&](int x, int y) {
        const int stretch = (x + 31 * y) / 512 % 4;
        const double ramp = 128 + 100 * std::sin((x + 3 * y) / 300.0);
        switch (stretch) {
            case 0:
                return std::uint8_t{18};
            case 1:
                return ToByte(ramp);
            default:
                return ToByte(ramp + grain(random));
        }
    });
}

// A matte: black and white with soft edges.
Image Matte() {
    return MakeImage([](int x, int y) {
        const double distance = std::sin((x + 5 * y) / 200.0) * 200;
        return ToByte(128 + distance * 8);
    });
}

std::size_t PackPlainly(const std::uint8_t* row, int count, std::uint8_t* destination) {
    std::uint8_t* out = destination;
    std::uint8_t* block = nullptr;
    bool pairBehindBlock = false;
    for (int i = 0; i < count;) {
        int length = 1;
        while (i + length < count && row[i + length] == row[i]) {
            ++length;
        }
        const std::uint8_t value = row[i];
        i += length;
        if (length > 128) {
            for (; length > 128; length -= 128) {
                *out++ = 129;
                *out++ = value;
            }
            block = nullptr;
            pairBehindBlock = false;
        }
        if (length == 1) {
            if (pairBehindBlock) {
                out[-2] = out[-1];
                *block = static_cast<std::uint8_t>(*block + 2);
                if (*block == 127) block = nullptr;
                pairBehindBlock = false;
            }
            if (block == nullptr) {
                block = out++;
                *block = 0;
            } else {
                ++*block;
            }
            *out++ = value;
            if (*block == 127) block = nullptr;
        } else {
            *out++ = static_cast<std::uint8_t>(1 - length);
            *out++ = value;
            pairBehindBlock = block != nullptr && !pairBehindBlock && length == 2 && *block < 126;
            if (!pairBehindBlock) block = nullptr;
        }
    }
    return static_cast<std::size_t>(out - destination);
}

template <class Encoder>
void PackRows(benchmark::State& state, const Image& image, Encoder encode) {
    std::vector<std::uint8_t> packed(2 * rowSize);
    std::size_t size = 0;
    while (state.KeepRunning()) {
        size = 0;
        for (int y = 0; y < rowCount; ++y) {
            size += encode(image.data() + std::size_t{rowSize} * static_cast<std::size_t>(y),
                           packed.data());
            benchmark::ClobberMemory();
        }
    }
    const auto bytes = static_cast<std::int64_t>(image.size());
    state.SetBytesProcessed(state.iterations() * bytes);
    state.counters["packed"] = static_cast<double>(size) / static_cast<double>(bytes);
}

void PackBits(benchmark::State& state, Image (*image)()) {
    PackRows(state, image(), [](const std::uint8_t* row, std::uint8_t* packed) {
        return psdfile::PackBits(row, 1, rowSize, packed);
    });
}

void Plain(benchmark::State& state, Image (*image)()) {
    PackRows(state, image(), [](const std::uint8_t* row, std::uint8_t* packed) {
        return PackPlainly(row, rowSize, packed);
    });
}

BENCHMARK_CAPTURE(PackBits, constant, Constant);
BENCHMARK_CAPTURE(Plain, constant, Constant);
BENCHMARK_CAPTURE(PackBits, gradient, Gradient);
BENCHMARK_CAPTURE(Plain, gradient, Gradient);
BENCHMARK_CAPTURE(PackBits, noise, Noise);
BENCHMARK_CAPTURE(Plain, noise, Noise);
BENCHMARK_CAPTURE(PackBits, picture, Picture);
BENCHMARK_CAPTURE(Plain, picture, Picture);
BENCHMARK_CAPTURE(PackBits, matte, Matte);
BENCHMARK_CAPTURE(Plain, matte, Matte);

}  // namespace

// Loads colour tables from .cube texts in memory, with as many digits as programs write. Bytes per
// second are those of the text.

#include <benchmark/benchmark.h>

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <istream>
#include <streambuf>
#include <string>

#include "psdfile/cube_lut.h"

namespace {

// A text as a stream, without a copy of it.
class TextBuffer : public std::streambuf {
  public:
    explicit TextBuffer(std::string& text) {
        setg(text.data(), text.data(), text.data() + text.size());
    }

  protected:
    pos_type seekpos(pos_type position, std::ios::openmode /*which*/) override {
        setg(eback(), eback() + off_type(position), egptr());
        return position;
    }
};

// A curve with some crosstalk, so that the numbers have all their digits.
std::string CubeText(int size) {
    constexpr int decimals = 6;
    std::string text = "LUT_3D_SIZE " + std::to_string(size) + "\n";
    const double step = 1.0 / (size - 1);
    const auto curve = [](double main, double other) {
        return std::pow(0.95 * main + 0.05 * other, 0.45);
    };
    std::array<char, 32> number{};
    for (int b = 0; b < size; ++b) {
        for (int g = 0; g < size; ++g) {
            for (int r = 0; r < size; ++r) {
                const double red = r * step;
                const double green = g * step;
                const double blue = b * step;
                char separator = ' ';
                for (const double value :
                     {curve(red, green), curve(green, blue), curve(blue, red)}) {
                    const auto written = std::to_chars(number.data(), number.data() + number.size(),
                                                       value, std::chars_format::fixed, decimals);
                    text.append(number.data(), written.ptr);
                    text.push_back(separator);
                }
                text.back() = '\n';
            }
        }
    }
    return text;
}

void LoadCube(benchmark::State& state) {
    std::string text = CubeText(static_cast<int>(state.range(0)));
    while (state.KeepRunning()) {
        TextBuffer buffer(text);
        std::istream stream(&buffer);
        psdfile::CubeLUT lut;
        if (lut.LoadCubeFile(stream) != psdfile::CubeLUT::OK) state.SkipWithError("not loaded");
        benchmark::DoNotOptimize(lut.lut3D.data());
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

BENCHMARK(LoadCube)->Arg(33)->Arg(65)->Arg(256)->Unit(benchmark::kMillisecond);

}  // namespace

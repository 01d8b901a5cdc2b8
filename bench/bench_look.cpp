// A look over the rows of a picture of 1920 by 1080, in pixels a second, and the writing of the
// table that a layer carries.
#include <benchmark/benchmark.h>

#include <ostream>
#include <random>
#include <sstream>
#include <streambuf>
#include <string>
#include <vector>

#include "command/look_table.h"

namespace {

constexpr int width = 1920;
constexpr int height = 1080;

std::string Rows(int count) {
    std::mt19937 random(1);
    std::string text;
    for (int i = 0; i < count; ++i) {
        for (int color = 0; color < 3; ++color)
            text += "0." + std::to_string(random() % 1'000'000) + (color < 2 ? " " : "\n");
    }
    return text;
}

command::LookTable Look(const std::string& text) {
    std::istringstream stream(text);
    return {"bench.cube", stream};
}

command::LookTable Cube(int points) {
    return Look("LUT_3D_SIZE " + std::to_string(points) + "\n" + Rows(points * points * points));
}

command::LookTable Curves() {
    constexpr int points = 4096;
    return Look("LUT_1D_SIZE " + std::to_string(points) + "\n" + Rows(points));
}

void Correct(benchmark::State& state, const command::LookTable& look) {
    std::mt19937 random(2);
    std::vector<BMM_Color_fl> source(width);
    for (BMM_Color_fl& pixel : source) {
        const auto next = [&] { return static_cast<float>(random() % 4096) / 4095.0F; };
        pixel = {next(), next(), next(), 1.0F};
    }
    std::vector<BMM_Color_fl> row(width);
    for (auto unused : state) {
        for (int y = 0; y < height; ++y) {
            row = source;
            look.Correct(row.data(), width);
            benchmark::DoNotOptimize(row.data());
        }
    }
    state.SetItemsProcessed(state.iterations() * width * height);
}

void CorrectByCube(benchmark::State& state) {
    Correct(state, Cube(static_cast<int>(state.range(0))));
}
void CorrectByCurves(benchmark::State& state) {
    Correct(state, Curves());
}

class Nowhere : public std::streambuf {
    std::streamsize xsputn(const char*, std::streamsize count) override { return count; }
};

void Write(benchmark::State& state, const command::LookTable& look) {
    Nowhere nowhere;
    std::ostream stream(&nowhere);
    for (auto unused : state)
        benchmark::DoNotOptimize(look.Write(stream));
}

void WriteCube(benchmark::State& state) {
    Write(state, Cube(static_cast<int>(state.range(0))));
}
// With 128 points, since noise is steeper than any look.
void WriteSamples(benchmark::State& state) {
    Write(state, Curves());
}

BENCHMARK(CorrectByCube)->Arg(33)->Arg(65)->Unit(benchmark::kMillisecond);
BENCHMARK(CorrectByCurves)->Unit(benchmark::kMillisecond);
BENCHMARK(WriteCube)->Arg(33)->Arg(65)->Unit(benchmark::kMillisecond);
BENCHMARK(WriteSamples)->Unit(benchmark::kMillisecond);

}  // namespace

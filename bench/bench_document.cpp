// Whole documents of 12 RGBA layers of 1920 x 1080 real render pixels, from bitmaps in memory to a
// closed file, in bytes of raw pixels a second; and how much memory that takes beside the bitmaps.
#include <ImfFrameBuffer.h>
#include <ImfHeader.h>
#include <ImfInputFile.h>
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <array>
#include <boost/make_shared.hpp>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "command/isal_deflate.h"
#include "effect/output_file.h"
#include "host/application.h"
#include "host/image_bitmap.h"
#include "psdbuilder/psdbuilder.h"
#include "psdfile/blend_keys.h"
#include "psdfile/deflate_functions.h"
#include "sources/bitmap_channel.h"

namespace {

constexpr int width = 1920;
constexpr int height = 1080;
constexpr int channelsALayer = 4;

// The passes of the sample render, each with the render's alpha.
constexpr std::array passes = {"Combined", "DiffDir",  "DiffInd",  "DiffCol",
                               "GlossDir", "GlossInd", "GlossCol", "TransDir",
                               "TransInd", "TransCol", "Emit",     "AO"};

struct Sample {
    int width = 0;
    int height = 0;
    std::vector<std::uint16_t> components;
};

Sample ReadPass(const std::string& pass) {
    const std::string file = std::string(VELTRANE_SOURCE_DIR) + "/examples/still.exr";
    Imf::InputFile input(file.c_str(), 0);
    const auto window = input.header().dataWindow();
    Sample sample{window.max.x - window.min.x + 1, window.max.y - window.min.y + 1, {}};
    const auto sampleWidth = static_cast<std::size_t>(sample.width);
    sample.components.resize(sampleWidth * static_cast<std::size_t>(sample.height) * 4);
    Imf::FrameBuffer pixels;
    const std::array<std::string, 4> names = {"ViewLayer." + pass + ".R",
                                              "ViewLayer." + pass + ".G",
                                              "ViewLayer." + pass + ".B", "ViewLayer.Combined.A"};
    for (std::size_t i = 0; i < names.size(); ++i) {
        auto* base = reinterpret_cast<char*>(sample.components.data() + i);
        pixels.insert(names[i], Imf::Slice(Imf::HALF, base, 8, 8 * sampleWidth));
    }
    input.setFrameBuffer(pixels);
    input.readPixels(window.min.y, window.max.y);
    return sample;
}

using BitmapList = std::vector<host::Owned<host::ImageBitmap>>;

// The sample is smaller than the document: passes are laid side by side until they fill it, a
// different one each time, so that nothing repeats within the window of the compression.
host::Owned<host::ImageBitmap> Mosaic(const std::vector<Sample>& samples, std::size_t firstPass) {
    std::vector<std::uint16_t> components;
    components.reserve(std::size_t{width} * height * 4);
    const int sampleWidth = samples.front().width;
    const int sampleHeight = samples.front().height;
    const int tilesAcross = (width + sampleWidth - 1) / sampleWidth;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const auto tile =
                static_cast<std::size_t>(y / sampleHeight * tilesAcross + x / sampleWidth);
            const int index = (y % sampleHeight) * sampleWidth + x % sampleWidth;
            const auto* pixel = samples[(firstPass + tile) % samples.size()].components.data() +
                                4 * static_cast<std::size_t>(index);
            components.insert(components.end(), pixel, pixel + 4);
        }
    }
    return host::ImageBitmap::FromHalf({width, height, true, 1.0F}, std::move(components));
}

BitmapList MakeBitmaps() {
    std::vector<Sample> samples;
    for (const char* pass : passes)
        samples.push_back(ReadPass(pass));
    BitmapList bitmaps;
    for (std::size_t i = 0; i < samples.size(); ++i)
        bitmaps.push_back(Mosaic(samples, i));
    return bitmaps;
}

// As the command holds them for a document of that depth.
const BitmapList& BitmapsFor(int depth) {
    static const BitmapList halfs = MakeBitmaps();
    static const BitmapList integers = [] {
        BitmapList bitmaps = MakeBitmaps();
        for (const auto& bitmap : bitmaps)
            bitmap->Storage()->RoundHalfsTo16Bits();
        return bitmaps;
    }();
    return depth == 32 ? halfs : integers;
}

psdfile::PSDChannelImageDataSourcePtr Channel(const BitmapList& bitmaps, int layer, int selector) {
    Bitmap* bitmap = bitmaps[static_cast<std::size_t>(layer) % bitmaps.size()].get();
    return boost::make_shared<sources::BitmapToPSDChannel>(bitmap, selector, true, false);
}

void WriteDocument(const std::filesystem::path& path, int layers, int depth, int compression) {
    psdbuilder::PSDBuilder builder(width, height, static_cast<std::uint8_t>(depth), 72.0, 1.0,
                                   static_cast<std::uint16_t>(compression), 1, false);
    const BitmapList& bitmaps = BitmapsFor(depth);
    for (int layer = 0; layer < layers; ++layer) {
        const std::string name = passes[static_cast<std::size_t>(layer) % passes.size()];
        builder.AddRGBLayer(name.c_str(), nullptr, psdfile::blendKeyNormal, 0,
                            Channel(bitmaps, layer, 0), Channel(bitmaps, layer, 1),
                            Channel(bitmaps, layer, 2), Channel(bitmaps, layer, 3), nullptr, true,
                            false);
    }
    effect::OutputFile stream;
    stream.Open(path.u16string().c_str());
    builder.Write(stream);
    stream.Close();
    if (!stream) std::abort();
}

std::filesystem::path OutputPath() {
    return std::filesystem::temp_directory_path() / "veltrane_bench_document.psd";
}

void Document(benchmark::State& state, int depth, int compression,
              const psdfile::DeflateFunctions& deflate) {
    constexpr int layers = static_cast<int>(passes.size());
    BitmapsFor(depth);
    const auto before = psdfile::SetDeflateFunctions(deflate);
    for (auto unused : state)
        WriteDocument(OutputPath(), layers, depth, compression);
    psdfile::SetDeflateFunctions(before);
    const double raw = double{layers} * channelsALayer * width * height * depth / 8;
    const auto size = static_cast<double>(std::filesystem::file_size(OutputPath()));
    state.SetBytesProcessed(
        static_cast<std::int64_t>(raw * static_cast<double>(state.iterations())));
    state.counters["file_of_raw"] = size / raw;
    std::filesystem::remove(OutputPath());
}

// In MB; the high-water mark of this process since the last reset.
double PeakMemory() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmHWM:")) return std::stod(line.substr(6)) / 1024;
    }
    return 0;
}

void PeakMemoryBesideBitmaps(benchmark::State& state) {
    BitmapsFor(16);
    double growth = 0;
    for (auto unused : state) {
        malloc_trim(0);
        std::ofstream("/proc/self/clear_refs") << "5";
        const double before = PeakMemory();
        WriteDocument(OutputPath(), static_cast<int>(state.range(0)), 16, 2);
        growth = PeakMemory() - before;
    }
    state.counters["peak_MB"] = growth;
    std::filesystem::remove(OutputPath());
}

const auto zlib = psdfile::ZlibDeflateFunctions();

BENCHMARK_CAPTURE(Document, rle8, 8, 1, zlib)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Document, zip16, 16, 2, zlib)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Document, zip32, 32, 3, zlib)->Unit(benchmark::kMillisecond);
#ifdef VELTRANE_ISAL
const psdfile::DeflateFunctions fast{command::IsalDeflateInit2, command::IsalDeflate,
                                     command::IsalDeflateEnd};
BENCHMARK_CAPTURE(Document, zip16_fast, 16, 2, fast)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Document, zip32_fast, 32, 3, fast)->Unit(benchmark::kMillisecond);
#endif
BENCHMARK(PeakMemoryBesideBitmaps)->Name("peak_memory")->Arg(12)->Arg(48)->Iterations(1);

}  // namespace

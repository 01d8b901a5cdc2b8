// zlib and ISA-L behind the three calls that the writer makes, on the beauty of a render at 16
// bits: each channel by itself, row by row, big-endian, at the writer's settings. Bytes per second
// are those of the raw pixels; the ratio is compressed over raw. VELTRANE_BENCH_IMAGE names another
// render file.
#include <benchmark/benchmark.h>
#include <zlib.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "command/beauty.h"
#include "command/isal_deflate.h"
#include "command/render_file.h"
#include "host/pixel_rows.h"

namespace {

constexpr int windowBits = 12;
constexpr int memLevel = 8;

struct Channels {
    std::size_t rowBytes = 0;
    // Channel after channel, row after row.
    std::vector<unsigned char> bytes;
};

Channels ReadChannels() {
    const char* other = std::getenv("VELTRANE_BENCH_IMAGE");
    const std::string path = other ? other : VELTRANE_SOURCE_DIR "/examples/still.exr";
    const auto file = command::OpenRenderFile(path);
    const command::Picture picture = file->Read(command::ChooseBeauty(file->GetDescription()));
    const auto pixels =
        static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height);
    std::vector<std::uint16_t> words(pixels * 4);
    if (const auto* halfs = std::get_if<std::vector<std::uint16_t>>(&picture.components)) {
        host::HalfRowToUnsigned16(halfs->data(), words.data(), words.size());
    } else {
        host::FloatRowToUnsigned16(std::get<std::vector<float>>(picture.components).data(),
                                   words.data(), words.size());
    }
    Channels channels;
    channels.rowBytes = static_cast<std::size_t>(picture.width) * 2;
    for (std::size_t channel = 0; channel < 4; ++channel) {
        for (std::size_t pixel = 0; pixel < pixels; ++pixel) {
            const std::uint16_t word = words[pixel * 4 + channel];
            channels.bytes.push_back(static_cast<unsigned char>(word >> 8));
            channels.bytes.push_back(static_cast<unsigned char>(word));
        }
    }
    return channels;
}

struct Functions {
    int (*init)(z_streamp, int, int, int, int, int, const char*, int);
    int (*compress)(z_streamp, int);
    int (*end)(z_streamp);
};

// Bytes out, or 0 when the stream didn't end well.
std::size_t Compress(const Functions& functions, unsigned char* rows, std::size_t size,
                     std::size_t rowBytes, std::vector<unsigned char>& piece) {
    z_stream stream{};
    functions.init(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, windowBits, memLevel,
                   Z_DEFAULT_STRATEGY, ZLIB_VERSION, sizeof stream);
    int result = Z_OK;
    for (std::size_t start = 0; start < size; start += rowBytes) {
        stream.next_in = rows + start;
        stream.avail_in = static_cast<uInt>(rowBytes);
        const bool last = start + rowBytes == size;
        do {
            stream.next_out = piece.data();
            stream.avail_out = static_cast<uInt>(piece.size());
            result = functions.compress(&stream, last ? Z_FINISH : Z_NO_FLUSH);
            benchmark::DoNotOptimize(piece.data());
        } while (stream.avail_out == 0);
    }
    const std::size_t bytes = result == Z_STREAM_END ? stream.total_out : 0;
    functions.end(&stream);
    return bytes;
}

void Deflate(benchmark::State& state, const Functions& functions) {
    Channels channels = ReadChannels();
    const std::size_t size = channels.bytes.size() / 4;
    std::vector<unsigned char> piece(std::size_t{64} * 1024);
    std::size_t out = 0;
    for ([[maybe_unused]] auto step : state) {
        out = 0;
        for (std::size_t channel = 0; channel < 4; ++channel) {
            const std::size_t bytes = Compress(functions, channels.bytes.data() + channel * size,
                                               size, channels.rowBytes, piece);
            if (bytes == 0) state.SkipWithError("the stream didn't end");
            out += bytes;
        }
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(channels.bytes.size()));
    state.counters["ratio"] = static_cast<double>(out) / static_cast<double>(channels.bytes.size());
}

BENCHMARK_CAPTURE(Deflate, zlib, Functions{deflateInit2_, deflate, deflateEnd})
    ->Unit(benchmark::kMillisecond);
#ifdef VELTRANE_ISAL
BENCHMARK_CAPTURE(Deflate, fast,
                  Functions{command::IsalDeflateInit2, command::IsalDeflate,
                            command::IsalDeflateEnd})
    ->Unit(benchmark::kMillisecond);
#endif

}  // namespace

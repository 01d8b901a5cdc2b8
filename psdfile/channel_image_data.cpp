// The four ways a channel's rows go into the file.

#include "psdfile/channel_image_data.h"

#include <algorithm>
#include <span>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "psdfile/big_endian.h"
#include "psdfile/deflate_functions.h"
#include "psdfile/length_field.h"
#include "psdfile/pack_bits.h"
#include "psdfile/sample_rows.h"
#include "psdfile/stream_state.h"

namespace psdfile {

namespace {

// One zlib stream into the file.
class Deflater {
  public:
    // `scratch` takes the output of each pass. It must not be empty: an output of no bytes would
    // count as filled completely for ever.
    Deflater(std::ostream& target, std::span<std::uint8_t> scratch)
        : stream(target), output(scratch) {
        // Readers of the format expect a window of 4 KB: it must not be raised.
        constexpr int windowBits = 12;
        constexpr int memoryLevel = 8;
        started = functions.deflateInit2_(&zlib, Z_DEFAULT_COMPRESSION, Z_DEFLATED, windowBits,
                                          memoryLevel, Z_DEFAULT_STRATEGY, ZLIB_VERSION,
                                          static_cast<int>(sizeof zlib)) == Z_OK;
    }
    Deflater(const Deflater&) = delete;
    Deflater& operator=(const Deflater&) = delete;
    ~Deflater() {
        if (started) functions.deflateEnd(&zlib);
    }

    [[nodiscard]] bool Started() const { return started; }

    // False if deflate broke off.
    bool Write(const std::uint8_t* row, std::size_t size, int flush) {
        zlib.next_in = const_cast<std::uint8_t*>(row);  // zlib only reads it
        zlib.avail_in = static_cast<uInt>(size);
        do {
            zlib.next_out = output.data();
            zlib.avail_out = static_cast<uInt>(output.size());
            const int status = functions.deflate(&zlib, flush);
            WriteBytes(stream, output.data(), output.size() - zlib.avail_out);
            // Z_BUF_ERROR only says that there was nothing to do.
            if (status < Z_OK && status != Z_BUF_ERROR) return false;
        } while (zlib.avail_out == 0);
        return true;
    }

  private:
    std::ostream& stream;
    std::span<std::uint8_t> output;
    DeflateFunctions functions = CurrentDeflateFunctions();
    z_stream zlib{};
    bool started = false;
};

std::span<std::uint8_t> BytesOf(std::vector<float>& row) {
    return {reinterpret_cast<std::uint8_t*>(row.data()), row.size() * sizeof(float)};
}

void WriteKept(std::ostream& stream, const std::string& bytes) {
    WriteBytes(stream, reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

}  // namespace

PSDChannelImageData::PSDChannelImageData(std::uint32_t channelWidth, std::uint32_t channelHeight,
                                         std::uint8_t channelDepth,
                                         std::uint16_t channelCompression,
                                         PSDChannelImageDataSourcePtr channelSource,
                                         bool withCompression, std::uint8_t* table)
    : source(std::move(channelSource)),
      width(channelWidth),
      height(channelHeight),
      depth(channelDepth),
      compression(channelCompression),
      writeCompression(withCompression),
      ownLengthTable(table == nullptr),
      lengthTable(table) {}

void PSDChannelImageData::WriteBody(std::ostream& stream) {
    if (writeCompression) stream << compression;
    if (!source) return;
    switch (compression.value) {
        case compressionRaw:
            WriteRaw(stream);
            break;
        case compressionRLE:
            WriteRLE(stream);
            break;
        case compressionZIP:
        case compressionZIPWithPrediction:
            WriteZIP(stream);
            break;
        default:
            break;
    }
}

// Leaves the destination as it was if the source has nothing.
void PSDChannelImageData::FetchRow16(std::uint32_t row, std::uint8_t* bigEndian) {
    if (const std::uint16_t* wide = source->GetRow16(row)) {
        SwapRow16(wide, bigEndian, width);
    } else if (const std::uint8_t* narrow = source->GetRow8(row)) {
        WidenRow8To16(narrow, bigEndian, width);
    }
}

// The source's own row, or `converted` filled from a shallower one; null if there is nothing.
const float* PSDChannelImageData::FetchRow32(std::uint32_t row, float* converted) {
    if (const float* samples = source->GetRow32(row)) return samples;
    if (const std::uint16_t* samples = source->GetRow16(row)) {
        ConvertRow16To32(samples, converted, width);
        return converted;
    }
    const std::uint8_t* samples = source->GetRow8(row);
    if (samples == nullptr) return nullptr;
    ConvertRow8To32(samples, converted, width);
    return converted;
}

void PSDChannelImageData::WriteRaw(std::ostream& stream) {
    if (depth == 8) {
        for (std::uint32_t row = 0; row < height; ++row) {
            WriteBytes(stream, source->GetRow8(row), width);
        }
    } else if (depth == 16) {
        std::vector<std::uint8_t> bigEndian(2 * std::size_t{width});
        for (std::uint32_t row = 0; row < height; ++row) {
            FetchRow16(row, bigEndian.data());
            WriteBytes(stream, bigEndian.data(), bigEndian.size());
        }
    } else {
        std::vector<float> scratch(width);
        const std::span<std::uint8_t> bigEndian = BytesOf(scratch);
        for (std::uint32_t row = 0; row < height; ++row) {
            const float* samples = FetchRow32(row, scratch.data());
            if (samples != nullptr) SwapRow32(samples, bigEndian.data(), width);
            WriteBytes(stream, bigEndian.data(), bigEndian.size());
        }
    }
}

void PSDChannelImageData::WriteRLE(std::ostream& stream) {
    const std::size_t entrySize = PSBMode(stream) != 0 ? 4 : 2;
    if (!ownLengthTable) {
        WriteRLERows(stream, lengthTable, entrySize);
        return;
    }
    std::vector<std::uint8_t> table(height * entrySize);
    const std::streampos start = stream.tellp();
    WriteBytes(stream, table.data(), table.size());
    WriteRLERows(stream, table.data(), entrySize);
    const std::streampos end = stream.tellp();
    stream.seekp(start);
    WriteBytes(stream, table.data(), table.size());
    stream.seekp(end);
}

void PSDChannelImageData::WriteRLERows(std::ostream& stream, std::uint8_t* table,
                                       std::size_t entrySize) {
    if (depth == 32) return;  // RLE is never chosen for floats
    const std::size_t rowBytes = depth / 8 * std::size_t{width};
    std::vector<std::uint8_t> bigEndian(depth == 16 ? rowBytes : 0);
    std::vector<std::uint8_t> packed(2 * rowBytes);
    for (std::uint32_t row = 0; row < height; ++row) {
        const std::uint8_t* samples = bigEndian.data();
        if (depth == 16) {
            FetchRow16(row, bigEndian.data());
        } else {
            samples = source->GetRow8(row);
        }
        const std::size_t size =
            PackBits(samples, 1, static_cast<std::ptrdiff_t>(rowBytes), packed.data());
        WriteBytes(stream, packed.data(), size);
        StoreBigEndian(size, entrySize, table + row * entrySize);
    }
}

void PSDChannelImageData::WriteZIP(std::ostream& stream) {
    if (depth != 16 && depth != 32) return;
    if (solids && height > 0 && source->IsSolid()) {
        WriteSolidZIP(stream);
    } else {
        DeflateRows(stream);
    }
}

void PSDChannelImageData::WriteSolidZIP(std::ostream& stream) {
    std::vector<std::uint8_t> sample(depth / 8);
    // The first sample of the first row stands for all.
    std::vector<float> row(width + std::size_t{1});
    if (depth == 16) {
        FetchRow16(0, BytesOf(row).data());
        std::copy_n(BytesOf(row).begin(), sample.size(), sample.begin());
    } else if (const float* samples = FetchRow32(0, row.data())) {
        std::copy_n(reinterpret_cast<const std::uint8_t*>(samples), width > 0 ? sample.size() : 0,
                    sample.begin());
    }
    SolidChannels::Key key{width, height, std::move(sample)};
    if (const std::string* known = solids->Find(key)) {
        WriteKept(stream, *known);
        return;
    }
    std::ostringstream made;
    const bool whole = DeflateRows(made);
    const std::string bytes = std::move(made).str();
    WriteKept(stream, bytes);
    if (whole) solids->Keep(std::move(key), bytes);
}

// False if zlib failed to start or broke off.
bool PSDChannelImageData::DeflateRows(std::ostream& stream) {
    const std::size_t sampleSize = depth / 8;
    std::vector<std::uint8_t> input(sampleSize * width);
    // Holds a converted row of floats until it is predicted, then what deflate makes of it. Never
    // empty.
    std::vector<float> scratch(input.size() / sizeof(float) + 1);
    const std::span<std::uint8_t> output =
        BytesOf(scratch).first(std::max<std::size_t>(input.size(), 1));
    Deflater deflater(stream, output);
    if (!deflater.Started()) return false;
    for (std::uint32_t row = 0; row < height; ++row) {
        if (depth == 16) {
            FetchRow16(row, input.data());
        } else if (const float* samples = FetchRow32(row, scratch.data())) {
            PredictFloatRow(samples, input.data(), width);
        }
        const int flush = row + 1 == height ? Z_FINISH : Z_NO_FLUSH;
        if (!deflater.Write(input.data(), input.size(), flush)) return false;
    }
    return true;
}

}  // namespace psdfile

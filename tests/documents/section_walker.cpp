// The reader of the tests.

#include "tests/documents/section_walker.h"

#include <zlib.h>

#include <cstddef>
#include <string_view>

namespace psdfile {

namespace {

// A stretch of the file that must be consumed to its last byte.
class Reader {
  public:
    Reader(std::string_view stretch, std::size_t offsetInFile)
        : bytes(stretch), origin(offsetInFile) {}

    [[noreturn]] void Fail(const std::string& what) const {
        throw std::runtime_error(what + " at offset " + std::to_string(origin + position));
    }
    [[nodiscard]] std::size_t Left() const { return bytes.size() - position; }
    [[nodiscard]] std::size_t Position() const { return position; }

    std::string_view Take(std::size_t count) {
        if (count > Left()) Fail("too short by " + std::to_string(count - Left()));
        position += count;
        return bytes.substr(position - count, count);
    }
    std::uint64_t Number(std::size_t size) {
        std::uint64_t number = 0;
        for (const char byte : Take(size)) {
            number = number << 8 | static_cast<unsigned char>(byte);
        }
        return number;
    }
    int Int8() { return static_cast<int>(Number(1)); }
    int Int16() { return static_cast<std::int16_t>(Number(2)); }
    int Int32() { return static_cast<std::int32_t>(Number(4)); }
    std::string Key() { return std::string(Take(4)); }

    // The part behind a length of `lengthSize` bytes.
    Reader Section(std::size_t lengthSize) {
        const std::uint64_t length = Number(lengthSize);
        const std::size_t start = origin + position;
        return {Take(length), start};
    }
    void Zeros(std::size_t count) {
        for (const char byte : Take(count)) {
            if (byte != 0) Fail("a filler that isn't zero");
        }
    }
    void ZerosToMultiple(std::size_t multiple, std::size_t start) {
        Zeros((multiple - (position - start) % multiple) % multiple);
    }
    void End(const std::string& what) const {
        if (Left() != 0) Fail(std::to_string(Left()) + " bytes too many in " + what);
    }

  private:
    std::string_view bytes;
    std::size_t origin;
    std::size_t position = 0;
};

std::string UnpackRow(Reader packed, std::size_t rowBytes) {
    std::string row;
    while (packed.Left() > 0) {
        const int control = packed.Int8();
        if (control < 128) {
            row += packed.Take(static_cast<std::size_t>(control) + 1);
        } else if (control > 128) {
            row.append(static_cast<std::size_t>(257 - control), packed.Take(1).front());
        } else {
            packed.Fail("control byte 128");
        }
    }
    if (row.size() != rowBytes) packed.Fail("a row of a wrong length");
    return row;
}

std::string Inflate(Reader& packed, std::size_t size) {
    const std::string_view input = packed.Take(packed.Left());
    std::string output(size, '\0');
    z_stream zlib{};
    inflateInit2(&zlib, 12);
    std::string copy(input);
    zlib.next_in = reinterpret_cast<Bytef*>(copy.data());
    zlib.avail_in = static_cast<uInt>(copy.size());
    zlib.next_out = reinterpret_cast<Bytef*>(output.data());
    zlib.avail_out = static_cast<uInt>(output.size());
    const int status = inflate(&zlib, Z_FINISH);
    const bool whole = status == Z_STREAM_END && zlib.avail_in == 0 && zlib.avail_out == 0;
    inflateEnd(&zlib);
    if (!whole) packed.Fail("a zlib stream that doesn't end with its channel");
    return output;
}

// Back from differences of byte planes to big-endian floats.
std::string Unpredict(const std::string& predicted, std::size_t width) {
    std::string pixels;
    for (std::size_t start = 0; start < predicted.size(); start += 4 * width) {
        std::string planes = predicted.substr(start, 4 * width);
        for (std::size_t i = 1; i < planes.size(); ++i) {
            planes[i] = static_cast<char>(planes[i] + planes[i - 1]);
        }
        for (std::size_t i = 0; i < width; ++i) {
            for (std::size_t plane = 0; plane < 4; ++plane) {
                pixels += planes[plane * width + i];
            }
        }
    }
    return pixels;
}

struct ChannelSize {
    std::size_t width;
    std::size_t height;
    int depth;

    [[nodiscard]] std::size_t RowBytes() const {
        return width * static_cast<std::size_t>(depth) / 8;
    }
};

// `tables` has the row lengths and `data` the rows.
std::string UnpackRows(Reader& tables, Reader& data, const ChannelSize& size, bool psb) {
    std::string pixels;
    for (std::size_t row = 0; row < size.height; ++row) {
        const std::uint64_t length = tables.Number(psb ? 4 : 2);
        pixels += UnpackRow(Reader(data.Take(length), 0), size.RowBytes());
    }
    return pixels;
}

std::string ChannelPixels(Reader& data, const ChannelSize& size, int compression, bool psb) {
    if (size.width == 0 || size.height == 0) return {};
    const std::size_t bytes = size.RowBytes() * size.height;
    switch (compression) {
        case 0:
            return std::string(data.Take(bytes));
        case 1: {
            Reader table(data.Take(size.height * (psb ? 4 : 2)), 0);
            return UnpackRows(table, data, size, psb);
        }
        case 2:
        case 3: {
            const std::string inflated = Inflate(data, bytes);
            return size.depth == 32 ? Unpredict(inflated, size.width) : inflated;
        }
        default:
            data.Fail("an unknown compression");
    }
}

void WalkExtraData(Reader extra, WalkedLayer& layer) {
    Reader mask = extra.Section(4);
    if (mask.Left() > 0) {
        layer.hasMask = true;
        layer.maskTop = mask.Int32();
        layer.maskLeft = mask.Int32();
        layer.maskBottom = mask.Int32();
        layer.maskRight = mask.Int32();
        layer.maskColor = mask.Int8();
        layer.maskFlags = mask.Int8();
        mask.Zeros(2);
        mask.End("the mask");
    }
    Reader ranges = extra.Section(4);
    while (ranges.Left() > 0) {
        if (ranges.Number(4) != 0xFFFF || ranges.Number(4) != 0xFFFF) ranges.Fail("a range");
    }
    const std::size_t nameStart = extra.Position();
    Reader name = extra.Section(1);
    layer.name = std::string(name.Take(name.Left()));
    extra.ZerosToMultiple(4, nameStart);
    while (extra.Left() > 0) {
        if (extra.Key() != "8BIM") extra.Fail("a wrong block signature");
        const std::string key = extra.Key();
        Reader block = extra.Section(4);
        if (block.Left() % 4 != 0) block.Fail("a block that isn't padded");
        layer.blockKeys.push_back(key);
        layer.blocks[key] = std::string(block.Take(block.Left()));
    }
}

void WalkLayers(Reader info, WalkedDocument& document, bool psb) {
    const int signedCount = info.Int16();
    document.mergedTransparency = signedCount < 0;
    std::vector<std::vector<std::uint64_t>> lengths;
    for (int i = 0; i < (signedCount < 0 ? -signedCount : signedCount); ++i) {
        WalkedLayer layer;
        layer.top = info.Int32();
        layer.left = info.Int32();
        layer.bottom = info.Int32();
        layer.right = info.Int32();
        std::vector<std::uint64_t> layerLengths;
        for (int channels = info.Int16(); channels > 0; --channels) {
            layer.channels.push_back({info.Int16(), 0, {}});
            layerLengths.push_back(info.Number(psb ? 8 : 4));
        }
        if (info.Key() != "8BIM") info.Fail("a wrong record signature");
        layer.blendKey = info.Key();
        layer.opacity = info.Int8();
        layer.clipping = info.Int8();
        layer.flags = info.Int8();
        info.Zeros(1);
        WalkExtraData(info.Section(4), layer);
        document.layers.push_back(layer);
        lengths.push_back(layerLengths);
    }
    for (std::size_t i = 0; i < document.layers.size(); ++i) {
        WalkedLayer& layer = document.layers[i];
        for (std::size_t c = 0; c < layer.channels.size(); ++c) {
            WalkedChannel& channel = layer.channels[c];
            const bool isMask = channel.id == -2;
            const int width = isMask ? layer.maskRight - layer.maskLeft : layer.right - layer.left;
            const int height = isMask ? layer.maskBottom - layer.maskTop : layer.bottom - layer.top;
            Reader data(info.Take(lengths[i][c]), 0);
            channel.compression = data.Int16();
            channel.pixels = ChannelPixels(
                data,
                {static_cast<std::size_t>(width), static_cast<std::size_t>(height), document.depth},
                channel.compression, psb);
            data.End("channel " + std::to_string(channel.id));
        }
    }
    if (info.Left() > 1) info.Fail("too much padding behind the channels");
    info.Zeros(info.Left());
}

void WalkGlobalMask(Reader mask) {
    if (mask.Take(mask.Left()) != std::string_view("\0\0\xFF\xFF\0\0\0\0\0\0\0\x32\x80\0", 14)) {
        mask.Fail("a wrong global mask");
    }
}

void WalkLayerSection(Reader section, WalkedDocument& document, bool psb) {
    if (section.Left() == 0) return;
    const std::size_t wide = psb ? 8 : 4;
    Reader info = section.Section(wide);
    if (info.Left() > 0) {
        WalkLayers(info, document, psb);
        WalkGlobalMask(section.Section(wide));
        section.End("the layer section");
        return;
    }
    document.layersInTaggedBlock = true;
    section.Zeros(4);
    if (section.Key() != (psb ? "8B64" : "8BIM")) section.Fail("a wrong tag signature");
    if (section.Key() != (document.depth == 16 ? "Lr16" : "Lr32")) section.Fail("a wrong tag");
    std::size_t start = section.Position();
    WalkLayers(section.Section(wide), document, psb);
    section.ZerosToMultiple(4, start);
    if (section.Take(8) != "8BIMLMsk") section.Fail("no mask tag");
    start = section.Position();
    WalkGlobalMask(section.Section(wide));
    section.ZerosToMultiple(4, start);
    section.End("the layer section");
}

}  // namespace

WalkedDocument WalkDocument(const std::string& file, bool psbLengths) {
    WalkedDocument document;
    Reader reader(file, 0);
    if (reader.Key() != "8BPS") reader.Fail("no document");
    document.psb = reader.Int16() == 2;
    reader.Zeros(6);
    document.channelCount = reader.Int16();
    document.height = reader.Int32();
    document.width = reader.Int32();
    document.depth = reader.Int16();
    if (reader.Int16() != 3) reader.Fail("not RGB");

    Reader colorMode = reader.Section(4);
    document.colorMode = std::string(colorMode.Take(colorMode.Left()));

    Reader resources = reader.Section(4);
    while (resources.Left() > 0) {
        WalkedResource resource;
        resource.signature = resources.Key();
        resource.id = static_cast<int>(resources.Number(2));
        const std::size_t nameStart = resources.Position();
        Reader name = resources.Section(1);
        resource.name = std::string(name.Take(name.Left()));
        resources.ZerosToMultiple(2, nameStart);
        Reader data = resources.Section(4);
        resource.data = std::string(data.Take(data.Left()));
        resources.Zeros(resource.data.size() % 2);
        document.resources.push_back(resource);
    }

    WalkLayerSection(reader.Section(psbLengths ? 8 : 4), document, psbLengths);

    document.imageCompression = reader.Int16();
    if (reader.Left() == 0) return document;
    const ChannelSize size{static_cast<std::size_t>(document.width),
                           static_cast<std::size_t>(document.height), document.depth};
    const auto count = static_cast<std::size_t>(document.channelCount);
    if (document.imageCompression == 1) {
        Reader tables(reader.Take(count * size.height * (psbLengths ? 4 : 2)), 0);
        for (std::size_t i = 0; i < count; ++i) {
            document.imageChannels.push_back(UnpackRows(tables, reader, size, psbLengths));
        }
    } else {
        for (std::size_t i = 0; i < count; ++i) {
            document.imageChannels.push_back(
                ChannelPixels(reader, size, document.imageCompression, psbLengths));
        }
    }
    reader.End("the file");
    return document;
}

}  // namespace psdfile

#include "tests/command/image_samples.h"

#include <zlib.h>

#include <cstddef>

namespace image_samples {
namespace {

std::string BigEndian(std::uint32_t value, int bytes) {
    std::string text;
    for (int i = bytes - 1; i >= 0; --i)
        text += static_cast<char>(value >> (8 * i));
    return text;
}

std::string LittleEndian(std::uint32_t value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i)
        text += static_cast<char>(value >> (8 * i));
    return text;
}

std::uint32_t SampleAt(const Image& image, int x, int y, int channel) {
    const int index = (y * image.width + x) * image.channels + channel;
    return image.samples.at(static_cast<std::size_t>(index));
}

std::string Compressed(const std::string& data) {
    uLongf size = compressBound(static_cast<uLong>(data.size()));
    std::string out(size, '\0');
    compress(reinterpret_cast<Bytef*>(out.data()), &size,
             reinterpret_cast<const Bytef*>(data.data()), static_cast<uLong>(data.size()));
    out.resize(size);
    return out;
}

}  // namespace

std::string PngChunk(const std::string& type, const std::string& data) {
    const std::string body = type + data;
    std::string checked = body;
    const uLong sum =
        crc32(0, reinterpret_cast<const Bytef*>(checked.data()), static_cast<uInt>(checked.size()));
    return BigEndian(static_cast<std::uint32_t>(data.size()), 4) + body +
           BigEndian(static_cast<std::uint32_t>(sum), 4);
}

std::string PngOfRows(int width, int height, int bits, char colorType, const std::string& rows,
                      const std::string& chunks) {
    const std::string header = BigEndian(static_cast<std::uint32_t>(width), 4) +
                               BigEndian(static_cast<std::uint32_t>(height), 4) +
                               static_cast<char>(bits) + colorType + std::string(3, '\0');
    return "\x89PNG\r\n\x1a\n" + PngChunk("IHDR", header) + chunks +
           PngChunk("IDAT", Compressed(rows)) + PngChunk("IEND", "");
}

std::string Png(const Image& image, std::uint32_t gamma) {
    constexpr char colorTypes[] = {0, 4, 2, 6};
    std::string rows;
    for (int y = 0; y < image.height; ++y) {
        rows += '\0';
        for (int x = 0; x < image.width; ++x) {
            for (int i = 0; i < image.channels; ++i) {
                rows += BigEndian(SampleAt(image, x, y, i), image.bits / 8);
            }
        }
    }
    return PngOfRows(image.width, image.height, image.bits, colorTypes[image.channels - 1], rows,
                     gamma > 0 ? PngChunk("gAMA", BigEndian(gamma, 4)) : "");
}

std::string Tiff(const Image& image, ExtraSample extra, int orientation) {
    std::string pixels;
    for (const std::uint32_t sample : image.samples)
        pixels += LittleEndian(sample, image.bits / 8);
    struct Entry {
        std::uint32_t tag, type, count, value;
    };
    constexpr std::uint32_t shortType = 3;
    constexpr std::uint32_t longType = 4;
    constexpr std::uint32_t headerSize = 8;
    const auto number = [](int value) { return static_cast<std::uint32_t>(value); };
    const auto bitsAt = headerSize + static_cast<std::uint32_t>(pixels.size());
    const auto formatsAt = bitsAt + 2 * number(image.channels);
    const bool several = image.channels > 1;
    const std::uint32_t format = image.bits == 32 ? 3 : 1;
    std::vector<Entry> entries{
        {256, longType, 1, number(image.width)},
        {257, longType, 1, number(image.height)},
        {258, shortType, number(image.channels), several ? bitsAt : number(image.bits)},
        {259, shortType, 1, 1},
        {262, shortType, 1, image.channels >= 3 ? 2U : 1U},
        {273, longType, 1, headerSize},
    };
    if (orientation > 0) entries.push_back({274, shortType, 1, number(orientation)});
    entries.push_back({277, shortType, 1, number(image.channels)});
    entries.push_back({278, longType, 1, number(image.height)});
    entries.push_back({279, longType, 1, static_cast<std::uint32_t>(pixels.size())});
    entries.push_back({284, shortType, 1, 1});
    if (image.channels == 2 || image.channels == 4) {
        entries.push_back({338, shortType, 1, static_cast<std::uint32_t>(extra)});
    }
    entries.push_back({339, shortType, number(image.channels), several ? formatsAt : format});

    std::string arrays;
    if (several) {
        for (int i = 0; i < image.channels; ++i)
            arrays += LittleEndian(number(image.bits), 2);
        for (int i = 0; i < image.channels; ++i)
            arrays += LittleEndian(format, 2);
    }
    std::string directory = LittleEndian(static_cast<std::uint32_t>(entries.size()), 2);
    for (const Entry& entry : entries) {
        directory += LittleEndian(entry.tag, 2) + LittleEndian(entry.type, 2) +
                     LittleEndian(entry.count, 4) + LittleEndian(entry.value, 4);
    }
    const auto directoryAt = bitsAt + static_cast<std::uint32_t>(arrays.size());
    return std::string("II*\0", 4) + LittleEndian(directoryAt, 4) + pixels + arrays + directory +
           LittleEndian(0, 4);
}

std::string Tga(const Image& image, int gammaTenths, int attributesType) {
    std::string header(18, '\0');
    header[2] = 2;
    header[12] = static_cast<char>(image.width);
    header[14] = static_cast<char>(image.height);
    header[16] = static_cast<char>(8 * image.channels);
    header[17] = static_cast<char>(0x20 | (image.channels == 4 ? 8 : 0));
    std::string file = header;
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) {
            for (const int i : {2, 1, 0, 3}) {
                if (i < image.channels) file += static_cast<char>(SampleAt(image, x, y, i));
            }
        }
    }
    const auto extensionAt = static_cast<std::uint32_t>(file.size());
    std::string extension(495, '\0');
    extension.replace(0, 2, LittleEndian(495, 2));
    if (gammaTenths > 0) {
        extension.replace(
            478, 4, LittleEndian(static_cast<std::uint32_t>(gammaTenths), 2) + LittleEndian(10, 2));
    }
    extension[494] = static_cast<char>(attributesType);
    return file + extension + LittleEndian(extensionAt, 4) + LittleEndian(0, 4) +
           std::string("TRUEVISION-XFILE.\0", 18);
}

std::string Hdr(const Image& rgbe) {
    std::string file = "#?RADIANCE\nFORMAT=32-bit_rle_rgbe\n\n-Y " + std::to_string(rgbe.height) +
                       " +X " + std::to_string(rgbe.width) + "\n";
    for (const std::uint32_t sample : rgbe.samples)
        file += static_cast<char>(sample);
    return file;
}

}  // namespace image_samples

#include "tests/command/exr_samples.h"

#include <Imath/half.h>
#include <OpenEXR/ImfChannelList.h>
#include <OpenEXR/ImfDeepFrameBuffer.h>
#include <OpenEXR/ImfDeepScanLineOutputPart.h>
#include <OpenEXR/ImfDeepTiledOutputPart.h>
#include <OpenEXR/ImfFloatAttribute.h>
#include <OpenEXR/ImfFrameBuffer.h>
#include <OpenEXR/ImfHeader.h>
#include <OpenEXR/ImfIO.h>
#include <OpenEXR/ImfMatrixAttribute.h>
#include <OpenEXR/ImfMultiPartOutputFile.h>
#include <OpenEXR/ImfOutputFile.h>
#include <OpenEXR/ImfOutputPart.h>
#include <OpenEXR/ImfPartType.h>
#include <OpenEXR/ImfRgbaFile.h>
#include <OpenEXR/ImfStringAttribute.h>
#include <OpenEXR/ImfTiledOutputPart.h>

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <string_view>

namespace exr_samples {
namespace {

class StringStream : public Imf::OStream {
  public:
    StringStream() : Imf::OStream("sample") {}

    void write(const char c[], int n) override {
        const auto count = static_cast<std::size_t>(n);
        if (bytes.size() < position + count) bytes.resize(position + count);
        std::memcpy(bytes.data() + position, c, count);
        position += count;
    }
    std::uint64_t tellp() override { return position; }
    void seekp(std::uint64_t pos) override { position = pos; }

    std::string bytes;

  private:
    std::size_t position = 0;
};

Imath::Box2i Box(const command::Window& window) {
    return {{window.left, window.top}, {window.right, window.bottom}};
}

Imf::Header HeaderOf(const Part& part) {
    Imf::Header header(Box(part.display), Box(part.data), part.pixelAspect);
    header.compression() = part.compression;
    for (const Channel& channel : part.channels) {
        header.channels().insert(channel.name,
                                 Imf::Channel(channel.type, channel.sampling, channel.sampling));
    }
    if (part.tileSide > 0) {
        const auto side = static_cast<unsigned>(part.tileSide);
        header.setTileDescription(
            Imf::TileDescription(side, side, part.mipmaps ? Imf::MIPMAP_LEVELS : Imf::ONE_LEVEL));
    }
    if (part.deep) {
        header.setType(part.tileSide > 0 ? Imf::DEEPTILE : Imf::DEEPSCANLINE);
        const bool possible =
            part.compression == Imf::NO_COMPRESSION || part.compression == Imf::RLE_COMPRESSION;
        if (!possible) header.compression() = Imf::ZIPS_COMPRESSION;
    } else {
        header.setType(part.tileSide > 0 ? Imf::TILEDIMAGE : Imf::SCANLINEIMAGE);
    }
    if (!part.name.empty()) header.setName(part.name);
    for (const auto& [name, text] : part.attributes)
        header.insert(name, Imf::StringAttribute(text));
    for (const auto& [name, values] : part.matrices) {
        Imath::M44f matrix;
        std::copy(values.begin(), values.end(), matrix.getValue());
        header.insert(name, Imf::M44fAttribute(matrix));
    }
    for (const auto& [name, value] : part.numbers)
        header.insert(name, Imf::FloatAttribute(value));
    return header;
}

void PutSample(char* at, Imf::PixelType type, double value) {
    if (type == Imf::HALF) {
        const Imath::half sample(static_cast<float>(value));
        std::memcpy(at, &sample, sizeof sample);
    } else if (type == Imf::FLOAT) {
        const auto sample = static_cast<float>(value);
        std::memcpy(at, &sample, sizeof sample);
    } else {
        const auto sample = static_cast<std::uint32_t>(value);
        std::memcpy(at, &sample, sizeof sample);
    }
}

// One channel's samples, in the file's own type.
struct Plane {
    std::vector<char> bytes;
    std::size_t sampleBytes = 0;
    int width = 0;
    int height = 0;

    void Put(int column, int row, Imf::PixelType type, double value) {
        PutSample(bytes.data() + static_cast<std::size_t>(row * width + column) * sampleBytes, type,
                  value);
    }
};

// The samples of a part; `level` halves a part's pixels that often.
class Planes {
  public:
    Planes(const Part& part, int level) {
        for (const Channel& channel : part.channels) {
            Plane plane;
            plane.sampleBytes = channel.type == Imf::HALF ? 2 : 4;
            const int step = channel.sampling << level;
            plane.width = std::max<int>(1, static_cast<int>(part.data.Width()) / step);
            plane.height = std::max<int>(1, static_cast<int>(part.data.Height()) / step);
            plane.bytes.resize(static_cast<std::size_t>(plane.width * plane.height) *
                               plane.sampleBytes);
            for (int row = 0; row < plane.height; ++row) {
                for (int column = 0; column < plane.width; ++column) {
                    // Lower levels hold -1: nobody may read them.
                    const double value =
                        level > 0
                            ? -1.0
                            : part.values(channel.name, part.data.left + column * channel.sampling,
                                          part.data.top + row * channel.sampling);
                    plane.Put(column, row, channel.type, value);
                }
            }
            planes.push_back(std::move(plane));
        }
    }

    Imf::FrameBuffer Slices(const Part& part) const {
        Imf::FrameBuffer slices;
        for (std::size_t i = 0; i < planes.size(); ++i) {
            const Plane& plane = planes[i];
            const Channel& channel = part.channels[i];
            slices.insert(
                channel.name,
                Imf::Slice::Make(channel.type, plane.bytes.data(), {part.data.left, part.data.top},
                                 part.data.Width(), part.data.Height(), plane.sampleBytes,
                                 plane.sampleBytes * static_cast<std::size_t>(plane.width),
                                 channel.sampling, channel.sampling));
        }
        return slices;
    }

  private:
    std::vector<Plane> planes;
};

void WriteTiles(Imf::TiledOutputPart&& output, const Part& part) {
    for (int level = 0; level < output.numLevels(); ++level) {
        const Planes planes(part, level);
        output.setFrameBuffer(planes.Slices(part));
        output.writeTiles(0, output.numXTiles(level) - 1, 0, output.numYTiles(level) - 1, level);
    }
}

// The samples of a deep part.
class DeepPlanes {
  public:
    explicit DeepPlanes(const Part& part) : width(static_cast<std::size_t>(part.data.Width())) {
        const auto forPixels = [&](const auto& call) {
            for (int y = part.data.top; y <= part.data.bottom; ++y) {
                for (int x = part.data.left; x <= part.data.right; ++x)
                    call(x, y);
            }
        };
        forPixels([&](int x, int y) {
            counts.push_back(part.sampleCount ? static_cast<unsigned>(part.sampleCount(x, y)) : 1);
        });
        for (const Channel& channel : part.channels) {
            const std::size_t sampleBytes = channel.type == Imf::HALF ? 2 : 4;
            std::vector<char>& bytes = samples.emplace_back();
            std::vector<std::size_t> starts;
            auto count = counts.begin();
            forPixels([&](int x, int y) {
                starts.push_back(bytes.size());
                for (unsigned i = 0; i < *count; ++i) {
                    const double value =
                        part.deepValues ? part.deepValues(channel.name, x, y, static_cast<int>(i))
                                        : part.values(channel.name, x, y);
                    bytes.resize(bytes.size() + sampleBytes);
                    PutSample(bytes.data() + bytes.size() - sampleBytes, channel.type, value);
                }
                ++count;
            });
            std::vector<char*>& pixels = places.emplace_back();
            for (const std::size_t start : starts)
                pixels.push_back(bytes.data() + start);
        }
    }

    Imf::DeepFrameBuffer Slices(const Part& part) {
        Imf::DeepFrameBuffer slices;
        const Imath::V2i origin(part.data.left, part.data.top);
        slices.insertSampleCountSlice(Imf::Slice::Make(Imf::UINT, counts.data(), origin,
                                                       part.data.Width(), part.data.Height(),
                                                       sizeof(unsigned), sizeof(unsigned) * width));
        for (std::size_t i = 0; i < places.size(); ++i) {
            const Channel& channel = part.channels[i];
            const Imf::Slice base =
                Imf::Slice::Make(channel.type, places[i].data(), origin, part.data.Width(),
                                 part.data.Height(), sizeof(char*), sizeof(char*) * width);
            slices.insert(channel.name,
                          Imf::DeepSlice(channel.type, base.base, sizeof(char*),
                                         sizeof(char*) * width, channel.type == Imf::HALF ? 2 : 4));
        }
        return slices;
    }

  private:
    std::size_t width;
    std::vector<unsigned> counts;
    std::vector<std::vector<char>> samples;
    std::vector<std::vector<char*>> places;
};

void WriteDeep(Imf::MultiPartOutputFile& file, int index, const Part& part) {
    DeepPlanes planes(part);
    if (part.tileSide > 0) {
        Imf::DeepTiledOutputPart output(file, index);
        output.setFrameBuffer(planes.Slices(part));
        output.writeTiles(0, output.numXTiles(0) - 1, 0, output.numYTiles(0) - 1);
        return;
    }
    Imf::DeepScanLineOutputPart output(file, index);
    output.setFrameBuffer(planes.Slices(part));
    output.writePixels(static_cast<int>(part.data.Height()));
}

// Name, type and size, before four numbers of 32 bits, little-endian.
std::string WindowAttribute(const std::string& name) {
    return name + '\0' + "box2i" + '\0' + std::string("\x10\0\0\0", 4);
}

void PutWindow(std::string& bytes, std::size_t at, const command::Window& window) {
    const int numbers[] = {window.left, window.top, window.right, window.bottom};
    std::memcpy(bytes.data() + at, numbers, sizeof numbers);
}

}  // namespace

double Distinct(const std::string& channel, int x, int y) {
    constexpr std::string_view letters = "RGBAYZ";
    const auto letter = static_cast<double>(letters.find(channel.back()) + 1);
    return letter + (x & 15) / 16.0 + (y & 7) / 128.0;
}

std::string Write(const std::vector<Part>& parts) {
    std::vector<Imf::Header> headers;
    headers.reserve(parts.size());
    for (const Part& part : parts)
        headers.push_back(HeaderOf(part));
    StringStream stream;
    {
        Imf::MultiPartOutputFile file(stream, headers.data(), static_cast<int>(headers.size()));
        for (int i = 0; i < static_cast<int>(parts.size()); ++i) {
            const Part& part = parts[static_cast<std::size_t>(i)];
            if (part.deep) {
                WriteDeep(file, i, part);
                continue;
            }
            if (part.tileSide > 0) {
                WriteTiles(Imf::TiledOutputPart(file, i), part);
                continue;
            }
            const Planes planes(part, 0);
            Imf::OutputPart output(file, i);
            output.setFrameBuffer(planes.Slices(part));
            output.writePixels(static_cast<int>(part.data.Height()));
        }
    }
    return stream.bytes;
}

std::string WriteLumaChroma(int width, int height, float red, float green, float blue) {
    StringStream stream;
    {
        Imf::RgbaOutputFile file(stream, Imf::Header(width, height), Imf::WRITE_YC);
        const std::vector<Imf::Rgba> pixels(static_cast<std::size_t>(width * height),
                                            Imf::Rgba(red, green, blue));
        file.setFrameBuffer(pixels.data(), 1, static_cast<std::size_t>(width));
        file.writePixels(height);
    }
    return stream.bytes;
}

std::string WithWindows(std::string bytes, const command::Window& window) {
    for (const std::string name : {"dataWindow", "displayWindow"}) {
        const std::string attribute = WindowAttribute(name);
        const std::size_t at = bytes.find(attribute);
        if (at == std::string::npos) throw std::logic_error("no " + name);
        PutWindow(bytes, at + attribute.size(), window);
    }
    return bytes;
}

std::string WithLastDisplayWindow(std::string bytes, const command::Window& window) {
    const std::string attribute = WindowAttribute("displayWindow");
    const std::size_t at = bytes.rfind(attribute);
    if (at == std::string::npos) throw std::logic_error("no display window");
    PutWindow(bytes, at + attribute.size(), window);
    return bytes;
}

}  // namespace exr_samples

// Small OpenEXR files, written with OpenEXR itself.
#pragma once

#include <OpenEXR/ImfCompression.h>
#include <OpenEXR/ImfPixelType.h>

#include <array>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "command/render_file.h"

namespace exr_samples {

struct Channel {
    std::string name{};
    Imf::PixelType type = Imf::HALF;
    int sampling = 1;
};

// The value of a channel at a pixel; unsigned channels round it down.
using Values = std::function<double(const std::string& channel, int x, int y)>;

// Of the channels R, G, B, A, Y and Z: tells every sample of a small file apart, and is exact as a
// half.
double Distinct(const std::string& channel, int x, int y);

struct Part {
    std::vector<Channel> channels{{"R"}, {"G"}, {"B"}, {"A"}};
    command::Window display{0, 0, 3, 2};
    command::Window data{0, 0, 3, 2};
    Imf::Compression compression = Imf::ZIP_COMPRESSION;
    // 0 for scanlines.
    int tileSide = 0;
    // Tiles of half the size, a quarter and so on too.
    bool mipmaps = false;
    bool deep = false;
    // A file with several parts needs them.
    std::string name{};
    float pixelAspect = 1.0F;
    Values values = Distinct;
    // Of a deep part: how many samples a pixel has, and their values. Without them it is one, with
    // the pixel's value.
    std::function<int(int x, int y)> sampleCount{};
    std::function<double(const std::string& channel, int x, int y, int sample)> deepValues{};
    // Names and texts.
    std::vector<std::pair<std::string, std::string>> attributes{};
    // Names and matrices of 4 by 4, row by row.
    std::vector<std::pair<std::string, std::array<float, 16>>> matrices{};
    std::vector<std::pair<std::string, float>> numbers{};
};

// The file's bytes. A deep part that asks for a compression that deep parts can't have gets ZIPS.
std::string Write(const std::vector<Part>& parts);
inline std::string Write(const Part& part) {
    return Write(std::vector<Part>{part});
}

// Luminance and chroma of a picture that is the same colour all over.
std::string WriteLumaChroma(int width, int height, float red, float green, float blue);

// The bytes with another display window in the last part's header.
std::string WithLastDisplayWindow(std::string bytes, const command::Window& window);

// The bytes of a scanline file whose header claims other windows than it has pixels for.
std::string WithWindows(std::string bytes, const command::Window& window);

}  // namespace exr_samples

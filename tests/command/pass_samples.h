// OpenEXR files of a few pixels, channel by channel, as renderers write their passes.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "tests/command/exr_samples.h"

namespace pass_samples {

// Of a channel at a pixel.
using Value = std::function<double(int x, int y)>;

inline Value Always(double value) {
    return [value](int, int) { return value; };
}

// Ids that no half float can hold.
constexpr std::uint32_t sphereID = 0x3f12345f;
constexpr std::uint32_t cubeID = 0x4056789b;
constexpr std::uint32_t floorID = 0xc1abcdef;

struct MatteRank {
    std::uint32_t id = 0;
    double coverage = 0.0;
};
// The two ranks of a pixel.
using Ranks = std::function<std::pair<MatteRank, MatteRank>(int x, int y)>;
// One rank that covers the pixel; 0 covers nothing.
Ranks Only(std::function<std::uint32_t(int x, int y)> id);

using Names = std::vector<std::pair<std::string, std::uint32_t>>;

class Sample {
  public:
    explicit Sample(int width = 4, int height = 2);

    // Any of its channels; each call gives the sample back.
    Sample& Half(const std::string& channel, Value value);
    Sample& Float(const std::string& channel, Value value);
    Sample& Unsigned(const std::string& channel, Value value);
    // R, G, B and A without a layer's name, all of one value.
    Sample& Picture(double value = 0.5);
    // LAYER.R, LAYER.G and LAYER.B.
    Sample& Color(const std::string& layer, double red, double green, double blue);
    // The layer LAYER00 with its metadata; no names: without a manifest.
    Sample& Matte(const std::string& layer, const Names& names, const Ranks& ranks);
    Sample& Attribute(const std::string& name, const std::string& text);

    // For what else a part has.
    exr_samples::Part& GetPart() { return part; }
    // With the values of all channels.
    exr_samples::Part ToPart() const;
    std::string Bytes() const { return exr_samples::Write(ToPart()); }

  private:
    Sample& Add(const std::string& channel, Imf::PixelType type, Value value);

    exr_samples::Part part;
    std::map<std::string, Value> values;
};

}  // namespace pass_samples

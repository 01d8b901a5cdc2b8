#include "sources/id_mask_channel.h"

#include <algorithm>

#include "sources/bitmap_parts.h"
#include "sources/color_sum.h"
#include "sources/fragment_reader.h"

namespace sources {
namespace {

Box2 WholeImage(Bitmap* bitmap) {
    Box2 box;
    box.left = 0;
    box.top = 0;
    box.right = WidthOf(bitmap) - 1;
    box.bottom = HeightOf(bitmap) - 1;
    return box;
}

// One component of the fragments' colours in 8 bits, or with component 3 their coverage.
class LevelSum {
  public:
    LevelSum(int colorComponent, bool keepPremultiplied)
        : component(colorComponent), premultiplied(keepPremultiplied) {}

    void Add(GBufReader* reader, WeightChannels channels) {
        const FragmentWeight weight = ReadFragmentWeight(reader, channels);
        coverage += weight.total;
        Color24 value{};
        if (component >= 3 || !reader->ReadChannelData(GB_COLOR, &value)) return;
        const UBYTE values[] = {value.r, value.g, value.b};
        const auto index = static_cast<std::size_t>(component);
        color += WeightSum{weight.component[index]} * values[index];
    }

    std::uint8_t Sample() const {
        const WeightSum level = coverage / weightPerLevel;
        if (component >= 3) return Capped(level);
        if (premultiplied) return Capped(color / 255);
        return Capped(level != 0 ? color / level : color);
    }

  private:
    static std::uint8_t Capped(WeightSum level) {
        return static_cast<std::uint8_t>(std::min(level, WeightSum{255}));
    }

    int component;
    bool premultiplied;
    WeightSum coverage = 0;
    WeightSum color = 0;
};

}  // namespace

SpecificGBufferIDToPSDChannel::SpecificGBufferIDToPSDChannel(Bitmap* source, int componentIndex,
                                                             bool keepPremultiplied)
    : bounds(WholeImage(source)),
      bitmap(source),
      width(WidthOf(source)),
      component(componentIndex),
      premultiplied(keepPremultiplied) {}

void SpecificGBufferIDToPSDChannel::ComputeBounds() {
    bounds = WholeImage(bitmap);
}

// Calls `pixel(x, fragments)` for the pixels of the bounds in this row; see FragmentReader.
template <class Pixel>
void SpecificGBufferIDToPSDChannel::ForEachPixel(std::uint32_t row, GBuffer* gbuffer, Pixel pixel) {
    const auto y = static_cast<int>(row);
    if (y < bounds.top || y > bounds.bottom) return;
    const int left = std::max(bounds.left, 0);
    const int right = std::min(bounds.right, width - 1);
    if (left > right) return;
    FragmentReader(gbuffer).ForEachPixel(y, left, right, pixel);
}

const std::uint8_t* SpecificGBufferIDToPSDChannel::ComputeRow(std::uint32_t row) {
    if (row == 0) ComputeBounds();
    std::uint8_t* samples = RowOf(row8, width);
    std::fill_n(samples, width, std::uint8_t{0});
    GBuffer* gbuffer = GBufferOf(bitmap);
    const WeightChannels channels = WeightChannelsOf(ChannelsOf(gbuffer));
    ForEachPixel(row, gbuffer, [&](int x, auto fragments) {
        LevelSum sum(component, premultiplied);
        fragments([&](GBufReader* reader) {
            if (FragmentMatches(reader)) sum.Add(reader, channels);
        });
        samples[x] = sum.Sample();
    });
    return samples;
}

const float* SpecificGBufferIDToPSDChannel::GetRow32(std::uint32_t row) {
    GBuffer* gbuffer = GBufferOf(bitmap);
    const DWORD present = ChannelsOf(gbuffer);
    if (!(present & BMM_CHAN_REALPIX)) return nullptr;
    if (row == 0) ComputeBounds();
    float* samples = RowOf(rowFloat, width);
    std::fill_n(samples, width, 0.0F);
    const WeightChannels channels = WeightChannelsOf(present);
    ForEachPixel(row, gbuffer, [&](int x, auto fragments) {
        ColorSum sum(component, premultiplied);
        fragments([&](GBufReader* reader) {
            if (FragmentMatches(reader)) sum.Add(reader, channels);
        });
        samples[x] = sum.Sample();
    });
    return samples;
}

}  // namespace sources

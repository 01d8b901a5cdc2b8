// The colours of high dynamic range of a pixel's fragments, gathered into one float sample.
#pragma once

#include <algorithm>

#include "sources/fragment_weight.h"

namespace sources {

// One component, 0 to 2, of the fragments' colours, or with component 3 their coverage.
class ColorSum {
  public:
    // With `premultiplied` false the colour is divided by the coverage, from 1/255 of it on.
    ColorSum(int colorComponent, bool keepPremultiplied)
        : component(colorComponent), premultiplied(keepPremultiplied) {}

    // The fragment at which `reader` stands. One without colour adds its coverage only.
    void Add(GBufReader* reader, WeightChannels channels) {
        const FragmentWeight weight = ReadFragmentWeight(reader, channels);
        coverage += weight.total;
        RealPixel pixel{};
        if (component >= 3 || !reader->ReadChannelData(GB_REALPIX, &pixel)) return;
        std::array<float, 3> value{};
        ExpandRealPixel(pixel, value[0], value[1], value[2]);
        const auto index = static_cast<std::size_t>(component);
        color += static_cast<float>(weight.component[index]) * value[index];
    }

    // Coverage is at most 1; colours aren't capped.
    float Sample() const {
        const double covered = static_cast<double>(coverage) / weightPerLevel / 255.0;
        if (component >= 3) return static_cast<float>(std::min(covered, 1.0));
        const bool divide = !premultiplied && coverage >= weightPerLevel;
        return static_cast<float>((divide ? color / covered : color) / 255.0);
    }

  private:
    int component;
    bool premultiplied;
    WeightSum coverage = 0;
    float color = 0.0F;
};

}  // namespace sources

// How much of its pixel a fragment covers, told by whichever channels the G-Buffer has. A fragment
// that covers its pixel and hides what is behind it weighs 3 * 255 * 255; divided by 765 that is
// 255.
#pragma once

#include <gbuf.h>

#include <array>
#include <cstdint>

namespace sources {

// The render ID of what is no object.
constexpr UWORD noRenderID = 65535;

constexpr int weightPerLevel = 765;  // of 255
constexpr int fullWeight = 195075;

// Sums of weights over a pixel: a pixel may have any number of fragments.
using WeightSum = std::int64_t;

enum class WeightChannels : std::uint8_t {
    weightAndTransparency,
    coverage,
    none,
};

// From BMM_CHAN_ bits.
constexpr WeightChannels WeightChannelsOf(DWORD present) {
    constexpr DWORD both = BMM_CHAN_WEIGHT | BMM_CHAN_TRANSP;
    if ((present & both) == both) return WeightChannels::weightAndTransparency;
    return present & BMM_CHAN_COVERAGE ? WeightChannels::coverage : WeightChannels::none;
}

// 0 to 255 for each of red, green and blue, and the fragment's weight as a whole, 0 to fullWeight.
struct FragmentWeight {
    std::array<int, 3> component{};
    int total = 0;
};

// Of the fragment at which `reader` stands. One that has no value in a channel that the buffer has
// weighs nothing, and so does every fragment of a buffer without weights and coverage. An `opaque`
// fragment's transparency counts as 0.
inline FragmentWeight ReadFragmentWeight(GBufReader* reader, WeightChannels channels,
                                         bool opaque = false) {
    if (channels == WeightChannels::weightAndTransparency) {
        Color24 w{};
        Color24 t{};
        if (!reader->ReadChannelData(GB_WEIGHT, &w)) return {};
        if (!opaque && !reader->ReadChannelData(GB_TRANSP, &t)) return {};
        return {{w.r, w.g, w.b}, (255 - t.r) * w.r + (255 - t.g) * w.g + (255 - t.b) * w.b};
    }
    if (channels == WeightChannels::coverage) {
        UBYTE c = 0;
        if (!reader->ReadChannelData(GB_COVERAGE, &c)) return {};
        return {{c, c, c}, c * weightPerLevel};
    }
    return {};
}

// The same, but in a buffer without weights and coverage every fragment weighs fullWeight.
inline int ReadFullOrFragmentWeight(GBufReader* reader, WeightChannels channels,
                                    bool opaque = false) {
    if (channels == WeightChannels::none) return fullWeight;
    return ReadFragmentWeight(reader, channels, opaque).total;
}

}  // namespace sources

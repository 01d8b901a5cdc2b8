#include "psdbuilder/compositor.h"

#include <algorithm>
#include <boost/make_shared.hpp>
#include <limits>
#include <type_traits>
#include <utility>

namespace psdbuilder {
namespace {

constexpr int alphaChannel = 3;

const psdfile::PSDChannelImageDataSourcePtr& SourceOf(const CompositorLayer& layer, int channel) {
    const psdfile::PSDChannelImageDataSourcePtr* sources[] = {&layer.red, &layer.green, &layer.blue,
                                                              &layer.alpha};
    return *sources[channel];
}

// Null if there is no source, or no row of that depth.
template <class Sample>
const Sample* RowOf(const CompositorLayer& layer, int channel, std::uint32_t row) {
    const psdfile::PSDChannelImageDataSourcePtr& source = SourceOf(layer, channel);
    if (!source) return nullptr;
    if constexpr (std::is_same_v<Sample, std::uint8_t>) {
        return source->GetRow8(row);
    } else if constexpr (std::is_same_v<Sample, std::uint16_t>) {
        return source->GetRow16(row);
    } else {
        return source->GetRow32(row);
    }
}

template <class Sample>
float Fraction(Sample sample) {
    if constexpr (std::is_integral_v<Sample>) {
        return static_cast<float>(sample) / static_cast<float>(std::numeric_limits<Sample>::max());
    } else {
        return sample;
    }
}

// The fraction cut down to a sample, with as many steps of the same size as there are samples. What
// is not a number is 0.
template <class Sample>
Sample SampleOf(float fraction) {
    if constexpr (std::is_integral_v<Sample>) {
        constexpr auto full = static_cast<float>(std::numeric_limits<Sample>::max());
        float scaled = fraction * (full + 1.0F);
        scaled = scaled > full ? full : scaled;
        scaled = scaled > 0.0F ? scaled : 0.0F;
        return static_cast<Sample>(static_cast<int>(scaled));
    } else {
        return fraction;
    }
}

float Union(float alpha1, float alpha2) {
    return alpha1 + alpha2 - alpha1 * alpha2;
}

// `color1` and `alpha1` are what was gathered so far.
template <class Sample>
void BlendColor(const Sample* color2, const Sample* alpha2, const Sample* alpha1, std::size_t width,
                Sample* color1) {
    for (std::size_t x = 0; x < width; ++x) {
        const float a1 = Fraction(alpha1[x]);
        const float a2 = Fraction(alpha2[x]);
        const float weighted = Fraction(color2[x]) * a2 + Fraction(color1[x]) * a1;
        color1[x] = SampleOf<Sample>(weighted / Union(a1, a2));
    }
}

template <class Sample>
void BlendAlpha(const Sample* alpha2, std::size_t width, Sample* alpha1) {
    for (std::size_t x = 0; x < width; ++x) {
        const float both = Union(Fraction(alpha1[x]), Fraction(alpha2[x]));
        if constexpr (std::is_integral_v<Sample>) {
            alpha1[x] = SampleOf<Sample>(both);
        } else {
            alpha1[x] = std::clamp(both, 0.0F, 1.0F);
        }
    }
}

// Zeros where there is no row to begin with.
template <class Sample>
void Begin(const Sample* row, std::size_t width, std::vector<Sample>& gathered) {
    if (row) {
        gathered.assign(row, row + width);
    } else {
        gathered.assign(width, Sample{});
    }
}

}  // namespace

void AddCompositorLayer(std::vector<boost::shared_ptr<CompositorLayer>>& layers,
                        psdfile::PSDChannelImageDataSourcePtr red,
                        psdfile::PSDChannelImageDataSourcePtr green,
                        psdfile::PSDChannelImageDataSourcePtr blue,
                        psdfile::PSDChannelImageDataSourcePtr alpha,
                        psdfile::PSDChannelImageDataSourcePtr mask) {
    layers.push_back(boost::make_shared<CompositorLayer>(CompositorLayer{
        std::move(red), std::move(green), std::move(blue), std::move(alpha), std::move(mask)}));
}

CompositorToPSDChannel::CompositorToPSDChannel(boost::shared_ptr<Compositor> stack, int selector,
                                               int samples)
    : width(static_cast<std::size_t>(std::max(samples, 0))), compositor(std::move(stack)) {
    constexpr int luminance = 4;
    if (selector >= 0 && selector <= luminance) channel = std::min(selector, alphaChannel);
}

// Every source is asked in the order of the stack, colour before alpha, also where its row isn't
// needed: the noise of dithered rows depends on who was asked before.
template <class Sample>
const Sample* CompositorToPSDChannel::ComposeRow(Rows<Sample>& rows, std::uint32_t row) const {
    // A buffer that is asked for has an address, also for a picture without width.
    rows.composed.reserve(std::max<std::size_t>(width, 1));
    const bool isColor = channel != alphaChannel;
    std::vector<Sample>& alpha = isColor ? rows.alpha : rows.composed;
    bool first = true;
    if (compositor) {
        for (const boost::shared_ptr<CompositorLayer>& layer : compositor->layers) {
            const Sample* layerColor = isColor ? RowOf<Sample>(*layer, channel, row) : nullptr;
            if (first && isColor) Begin(layerColor, width, rows.composed);
            const Sample* layerAlpha = RowOf<Sample>(*layer, alphaChannel, row);
            if (first) {
                Begin(layerAlpha, width, alpha);
            } else if (layerAlpha) {
                if (layerColor) {
                    BlendColor(layerColor, layerAlpha, alpha.data(), width, rows.composed.data());
                }
                BlendAlpha(layerAlpha, width, alpha.data());
            }
            first = false;
        }
    }
    if (first) rows.composed.assign(width, Sample{});
    return rows.composed.data();
}

const std::uint8_t* CompositorToPSDChannel::GetRow8(std::uint32_t row) {
    return ComposeRow(rows8, row);
}

const std::uint16_t* CompositorToPSDChannel::GetRow16(std::uint32_t row) {
    return ComposeRow(rows16, row);
}

const float* CompositorToPSDChannel::GetRow32(std::uint32_t row) {
    return ComposeRow(rowsFloat, row);
}

}  // namespace psdbuilder

#include "command/picture_builder.h"

#include <Imath/half.h>

#include <algorithm>
#include <utility>

#include "command/finite.h"

namespace command {
namespace {

constexpr std::uint16_t halfOne = 0x3c00;

// For the vectoriser.
template <class Value>
void Interleave(const std::array<const Value*, rgbaComponents>& from, std::size_t count,
                Value* to) {
    const Value* red = from[0];
    const Value* green = from[1];
    const Value* blue = from[2];
    const Value* alpha = from[3];
    for (std::size_t x = 0; x < count; ++x) {
        to[rgbaComponents * x] = red[x];
        to[rgbaComponents * x + 1] = green[x];
        to[rgbaComponents * x + 2] = blue[x];
        to[rgbaComponents * x + 3] = alpha[x];
    }
}

void Convert(const ChannelRow& row, std::size_t width, float* to) {
    if (row.type == SampleType::Half) {
        const auto* bits = static_cast<const std::uint16_t*>(row.samples);
        for (std::size_t x = 0; x < width; ++x)
            to[x] = imath_half_to_float(bits[x]);
        return;
    }
    constexpr double largest = 4294967295.0;
    const auto* numbers = static_cast<const std::uint32_t*>(row.samples);
    for (std::size_t x = 0; x < width; ++x)
        to[x] = static_cast<float>(numbers[x] / largest);
}

}  // namespace

PictureBuilder::PictureBuilder(Picture shape, bool halfs)
    : picture(std::move(shape)), width(static_cast<std::size_t>(picture.width)) {
    // Address space only: pages are taken as rows are appended.
    const std::size_t values = width * static_cast<std::size_t>(picture.height) * rgbaComponents;
    if (halfs) {
        halfZeros.resize(width);
        halfOnes.resize(width, halfOne);
        picture.components.emplace<std::vector<std::uint16_t>>().reserve(values);
    } else {
        zeros.resize(width);
        ones.resize(width, 1.0F);
        picture.components.emplace<std::vector<float>>().reserve(values);
    }
}

void PictureBuilder::Append(const std::array<ChannelRow, 4>& rows) {
    const ChannelRow& span = rows[0];
    if (picture.components.index() == 0) {
        std::array<const std::uint16_t*, rgbaComponents> samples{};
        for (std::size_t i = 0; i < rgbaComponents; ++i) {
            const auto& missing = i == rgbaComponents - 1 ? halfOnes : halfZeros;
            samples[i] = rows[i].samples ? static_cast<const std::uint16_t*>(rows[i].samples)
                                         : missing.data();
        }
        AppendChannels(samples, span.first, span.count);
        return;
    }
    std::array<const float*, rgbaComponents> samples{};
    for (std::size_t i = 0; i < rgbaComponents; ++i)
        samples[i] = Floats(rows[i], i);
    AppendChannels(samples, span.first, span.count);
}

const float* PictureBuilder::Floats(const ChannelRow& row, std::size_t component) {
    if (!row.samples) return component == rgbaComponents - 1 ? ones.data() : zeros.data();
    if (row.type == SampleType::Float) return static_cast<const float*>(row.samples);
    converted[component].resize(width);
    Convert(row, width, converted[component].data());
    return converted[component].data();
}

template <class Value>
Value* PictureBuilder::AppendEmptyRow() {
    auto& out = std::get<std::vector<Value>>(picture.components);
    out.resize(out.size() + width * rgbaComponents);
    return out.data() + out.size() - width * rgbaComponents;
}

template <class Value>
void PictureBuilder::AppendChannels(const std::array<const Value*, rgbaComponents>& samples,
                                    int first, int count) {
    std::array<const Value*, rgbaComponents> covered{};
    for (std::size_t i = 0; i < rgbaComponents; ++i)
        covered[i] = samples[i] + first;
    Value* to = AppendEmptyRow<Value>() + static_cast<std::size_t>(first) * rgbaComponents;
    Interleave(covered, static_cast<std::size_t>(count), to);
    picture.notFinite += MakeFinite(to, static_cast<std::size_t>(count) * rgbaComponents);
}

template <class Value>
void PictureBuilder::AppendPixels(std::span<const Value> values, int first) {
    Value* to = AppendEmptyRow<Value>() + static_cast<std::size_t>(first) * rgbaComponents;
    std::copy(values.begin(), values.end(), to);
    picture.notFinite += MakeFinite(to, values.size());
}

void PictureBuilder::Append(std::span<const std::uint16_t> halfs, int first) {
    AppendPixels(halfs, first);
}

void PictureBuilder::Append(std::span<const float> floats, int first) {
    AppendPixels(floats, first);
}

Picture PictureBuilder::Take() {
    return std::move(picture);
}

}  // namespace command

#include "command/row_values.h"

#include "host/pixel_rows.h"

namespace command {
namespace {

template <class Sample>
std::span<const Sample> SamplesOf(const ChannelRow& row, std::size_t width) {
    return {static_cast<const Sample*>(row.samples), width};
}

template <class Sample>
void Copy(const ChannelRow& row, std::vector<float>& floats) {
    const auto* samples = static_cast<const Sample*>(row.samples);
    for (std::size_t x = 0; x < floats.size(); ++x)
        floats[x] = static_cast<float>(samples[x]);
}

}  // namespace

std::uint32_t WholeNumber(float value) {
    constexpr float beyond = 4294967296.0F;
    if (!(value >= 1.0F && value < beyond)) return 0;
    const auto number = static_cast<std::uint32_t>(value);
    return static_cast<float>(number) == value ? number : 0;
}

std::span<const float> RowValues::AsFloats(const ChannelRow& row, std::size_t width) {
    if (row.type == SampleType::Float) return SamplesOf<float>(row, width);
    floats.resize(width);
    switch (row.type) {
        case SampleType::Half:
            host::HalfRowToFloat(static_cast<const std::uint16_t*>(row.samples), floats.data(),
                                 width);
            break;
        case SampleType::Unsigned32:
            Copy<std::uint32_t>(row, floats);
            break;
        case SampleType::Unsigned16:
            Copy<std::uint16_t>(row, floats);
            break;
        case SampleType::Unsigned8:
            Copy<std::uint8_t>(row, floats);
            break;
        case SampleType::Float:
            break;
    }
    return floats;
}

std::span<const std::uint32_t> RowValues::AsBits(const ChannelRow& row, std::size_t width) {
    return SamplesOf<std::uint32_t>(row, width);
}

std::span<const std::uint32_t> RowValues::AsNumbers(const ChannelRow& row, std::size_t width) {
    if (row.type == SampleType::Unsigned32) return SamplesOf<std::uint32_t>(row, width);
    const std::span<const float> values = AsFloats(row, width);
    numbers.resize(width);
    for (std::size_t x = 0; x < width; ++x)
        numbers[x] = WholeNumber(values[x]);
    return numbers;
}

}  // namespace command

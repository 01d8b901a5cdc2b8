// Integers as they stand in the configuration file's records: the lowest byte first.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace plugin {

constexpr std::size_t integerBytes = 4;

constexpr void PutInteger(std::uint32_t value, std::span<std::uint8_t, integerBytes> bytes) {
    for (std::size_t i = 0; i < integerBytes; ++i)
        bytes[i] = static_cast<std::uint8_t>(value >> (8 * i));
}

constexpr std::uint32_t GetInteger(std::span<const std::uint8_t, integerBytes> bytes) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < integerBytes; ++i)
        value |= std::uint32_t{bytes[i]} << (8 * i);
    return value;
}

}  // namespace plugin

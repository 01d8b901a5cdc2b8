// The one place that knows how a number becomes the file's bytes.
#pragma once

#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace psdfile {

// Writes the low `size` bytes of value, high byte first.
inline void StoreBigEndian(std::uint64_t value, std::size_t size, std::uint8_t* destination) {
    for (std::size_t i = 0; i < size; ++i) {
        destination[i] = static_cast<std::uint8_t>(value >> (8 * (size - 1 - i)));
    }
}

template <class T>
requires std::unsigned_integral<T> || std::floating_point<T>
void StoreBigEndian(T value, std::uint8_t* destination) {
    if constexpr (std::floating_point<T>) {
        using Bits = std::conditional_t<sizeof(T) == 4, std::uint32_t, std::uint64_t>;
        StoreBigEndian(std::bit_cast<Bits>(value), sizeof(T), destination);
    } else {
        StoreBigEndian(value, sizeof(T), destination);
    }
}

}  // namespace psdfile

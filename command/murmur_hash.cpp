#include "command/murmur_hash.h"

#include <bit>
#include <cstddef>

namespace command {
namespace {

std::uint32_t Scrambled(std::uint32_t block) {
    return std::rotl(block * 0xcc9e2d51U, 15) * 0x1b873593U;
}

// Up to four bytes, the first lowest.
std::uint32_t Block(std::string_view bytes) {
    std::uint32_t block = 0;
    for (std::size_t i = bytes.size(); i > 0; --i)
        block = block << 8 | static_cast<unsigned char>(bytes[i - 1]);
    return block;
}

}  // namespace

std::uint32_t MurmurHash3(std::string_view bytes, std::uint32_t seed) {
    std::uint32_t hash = seed;
    const std::size_t whole = bytes.size() / 4 * 4;
    for (std::size_t at = 0; at < whole; at += 4) {
        hash = std::rotl(hash ^ Scrambled(Block(bytes.substr(at, 4))), 13) * 5 + 0xe6546b64U;
    }
    hash ^= Scrambled(Block(bytes.substr(whole)));
    hash ^= static_cast<std::uint32_t>(bytes.size());
    hash = (hash ^ hash >> 16) * 0x85ebca6bU;
    hash = (hash ^ hash >> 13) * 0xc2b2ae35U;
    return hash ^ hash >> 16;
}

}  // namespace command

// What descriptors are made of, which some layer blocks hold: a class, then its items, each a key,
// a type and a value.
#pragma once

#include <cstdint>
#include <ostream>

namespace psdfile {

// With the number of items that follow. Its name for people is left empty.
void WriteClass(std::ostream& stream, std::uint32_t name, std::uint32_t items);

// A key or an enumerated value of any length: 4 bytes of length, the characters, no terminator.
void WriteKey(std::ostream& stream, const char* key);

// All of an item but its value. A key of four characters has a zero in place of the length.
void WriteItemHead(std::ostream& stream, std::uint32_t key, std::uint32_t type);
void WriteItemHead(std::ostream& stream, const char* key, std::uint32_t type);

}  // namespace psdfile

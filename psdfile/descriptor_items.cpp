// Keys, with and without a length.

#include "psdfile/descriptor_items.h"

#include "psdfile/primitives.h"
#include "psdfile/text.h"

namespace psdfile {

namespace {

void WriteShortKey(std::ostream& stream, std::uint32_t key) {
    stream << PSint32(0) << PSint32(key);
}

}  // namespace

void WriteClass(std::ostream& stream, std::uint32_t name, std::uint32_t items) {
    stream << PSint32(1) << PSint16(0);  // a name for people: a terminator alone
    WriteShortKey(stream, name);
    stream << PSint32(items);
}

void WriteKey(std::ostream& stream, const char* key) {
    constexpr std::uint8_t lengthFieldSize = 4;
    stream << PSString(key, 1, false, false, true, lengthFieldSize);
}

void WriteItemHead(std::ostream& stream, std::uint32_t key, std::uint32_t type) {
    WriteShortKey(stream, key);
    stream << PSint32(type);
}

void WriteItemHead(std::ostream& stream, const char* key, std::uint32_t type) {
    WriteKey(stream, key);
    stream << PSint32(type);
}

}  // namespace psdfile

#include "plugin/config_file.h"

#include <IPathConfigMgr.h>
#include <maxapi.h>

#include <algorithm>
#include <bit>
#include <string_view>

#include "plugin/little_endian.h"
#include "plugin/profile_file.h"

namespace plugin {
namespace {

using TextView = std::basic_string_view<MCHAR>;
using IntegerRecord = std::array<std::uint8_t, integerBytes>;

#ifdef _WIN32
constexpr TextView separator = L"\\";
constexpr TextView separators = L"\\/";
#else
// A backslash is a letter of a name like any other.
constexpr TextView separator = u"/";
constexpr TextView separators = u"/";
#endif

// Appends to the text in `field`; where that doesn't fit, the field becomes empty: a part of it
// would be the name of something else.
template <std::size_t size>
void Append(std::array<MCHAR, size>& field, TextView more) {
    const auto end = std::find(field.begin(), field.end(), MCHAR{0});
    if (more.size() < static_cast<std::size_t>(field.end() - end)) {
        std::copy(more.begin(), more.end(), end);
    } else {
        field.fill(0);
    }
}

}  // namespace

ConfigFile::ConfigFile() {
    const MCHAR* name = GetCOREInterface()->GetDir(APP_PLUGCFG_DIR);
    const TextView folder(name ? name : _M(""));
    // The current folder's file is somebody else's.
    if (folder.empty()) return;
    constexpr TextView fileName = _M("veltrane.cfg");
    const bool isClosed = separators.find(folder.back()) != TextView::npos;
    std::basic_string<MCHAR> file(folder);
    Append(path, file.append(isClosed ? TextView() : separator).append(fileName));
}

void ConfigFile::SetSection(const MCHAR* name) {
    section.fill(0);
    if (name) Append(section, name);
}

bool ConfigFile::ReadInt(const MCHAR* key, std::uint32_t& value) const {
    IntegerRecord record{};
    if (!ReadRecord(key, record)) return false;
    value = GetInteger(record);
    return true;
}

void ConfigFile::WriteInt(const MCHAR* key, std::uint32_t value) const {
    IntegerRecord record{};
    PutInteger(value, record);
    WriteRecord(key, record);
}

void ConfigFile::WriteFloat(const MCHAR* key, float value) const {
    WriteInt(key, std::bit_cast<std::uint32_t>(value));
}

bool ConfigFile::ReadRecord(const MCHAR* key, std::span<std::uint8_t> record) const {
    return ReadProfileRecord({path.data(), section.data(), key}, record);
}

void ConfigFile::WriteRecord(const MCHAR* key, std::span<const std::uint8_t> record) const {
    WriteProfileRecord({path.data(), section.data(), key}, record);
}

std::size_t ConfigFile::ReadString(const MCHAR* key, std::span<MCHAR> text) const {
    return ReadProfileString({path.data(), section.data(), key}, text);
}

}  // namespace plugin

// The small file of settings that belong to the user's machine and not to a scene, in the host's
// plug-in configuration folder. It has the shape of a profile file: sections in brackets, a key and
// a value a line.
#pragma once

#include <maxtypes.h>

#include <array>
#include <cstdint>
#include <span>

namespace plugin {

// Neither opens nor keeps the file: each read and each write goes to it by itself. A missing or
// unreadable file, a missing key and a damaged value all read as absent, and nobody is told of a
// write that fails. Without a folder for the file there are no settings.
class ConfigFile {
  public:
    // "veltrane.cfg" in the host's folder.
    ConfigFile();

    // Of up to 259 units; a longer name is that of no section.
    void SetSection(const MCHAR* name);

    // False, with `value` as it was, for an absent value.
    bool ReadInt(const MCHAR* key, std::uint32_t& value) const;
    void WriteInt(const MCHAR* key, std::uint32_t value) const;
    void WriteFloat(const MCHAR* key, float value) const;

    // False, with `record` as it was, for an absent value, and for one of another size.
    bool ReadRecord(const MCHAR* key, std::span<std::uint8_t> record) const;
    void WriteRecord(const MCHAR* key, std::span<const std::uint8_t> record) const;

    // Cut to what fits in `text` with a terminator; empty for an absent value. The number of units
    // without the terminator.
    std::size_t ReadString(const MCHAR* key, std::span<MCHAR> text) const;

  private:
    // As long as a path of the system's may be, with its terminator.
    using Field = std::array<MCHAR, 260>;

    Field path{};
    Field section{};
};

}  // namespace plugin

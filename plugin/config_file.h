// The small file of settings that belong to the user's machine and not to a scene, in the host's
// plug-in configuration folder. It has the shape of a profile file: sections in brackets, a key and
// a value a line.
#pragma once

#include <strclass.h>

#include <cstdint>

namespace plugin {

// Neither opens nor keeps the file: each read goes to it by itself. A missing or unreadable file, a
// missing key and a damaged value all read as absent.
class ConfigFile {
  public:
    // "veltrane.cfg" in the host's folder.
    ConfigFile();

    void SetSection(const MCHAR* name) { section = MSTR(name); }

    // False, with `value` as it was, for an absent value.
    bool ReadInt(const MCHAR* key, std::uint32_t& value) const;

  private:
    MSTR path;
    MSTR section;
};

}  // namespace plugin

#include "effect/corrections_table.h"

#include <maxscript/maxscript.h>
#include <strclass.h>
#include <tempfiles.h>

#include <filesystem>
#include <fstream>
#include <limits>
#include <utility>

namespace effect {
namespace {

// Units of a path, with its terminator, that the system's calls for short paths take.
constexpr DWORD longestPath = 260;

// Nothing when there is no folder for it.
std::optional<MSTR> TableFileName() {
    MCHAR folder[longestPath] = {};
    const DWORD length = GetTempPath(longestPath, folder);
    if (length == 0 || length > longestPath) return std::nullopt;
    return MSTR(folder) + _M("psd_tmp.cube");
}

// Whether the host says that it has written the file.
bool HasHostWrite(const MSTR& name) {
    MSTR script(_M("vfbControl #saveglobalccpreset \""));
    script += name;
    script += _M("\"");
    FPValue value;
    return ExecuteMAXScriptScript(script, TRUE, &value) && value.type == TYPE_BOOL && value.b != 0;
}

// A file that is deleted once it is open, and at the latest when this goes: some systems delete no
// file that is open.
class PassingFile {
  public:
    explicit PassingFile(MSTR path) : name(std::move(path)) {}
    PassingFile(const PassingFile&) = delete;
    PassingFile& operator=(const PassingFile&) = delete;
    ~PassingFile() {
        file.close();
        if (!deleted) DeleteFile(name);
    }

    // Others may read and write it meanwhile, as with all streams of the standard library.
    bool Open() {
        try {
            file.open(std::filesystem::path(name.data()), std::ios_base::binary);
        } catch (const std::filesystem::filesystem_error&) {
            // The name is no valid UTF-16.
            return false;
        }
        if (!file.is_open()) return false;
        deleted = DeleteFile(name) != FALSE;
        return true;
    }
    std::istream& Stream() { return file; }

  private:
    MSTR name;
    std::ifstream file;
    bool deleted = false;
};

}  // namespace

std::optional<psdfile::CubeLUT> ReadCorrectionsTable() {
    const std::optional<MSTR> name = TableFileName();
    if (!name) return std::nullopt;
    PassingFile file(*name);
    if (!HasHostWrite(*name) || !file.Open()) return std::nullopt;
    std::optional<psdfile::CubeLUT> table(std::in_place);
    if (table->LoadCubeFile(file.Stream()) != psdfile::CubeLUT::OK || !FitsColorLookup(*table)) {
        table.reset();
    }
    return table;
}

bool FitsColorLookup(const psdfile::CubeLUT& table) {
    // The profile counts the points in a byte.
    constexpr std::size_t mostPoints = std::numeric_limits<std::uint8_t>::max();
    constexpr psdfile::CubeLUT::Row black{0.0, 0.0, 0.0};
    constexpr psdfile::CubeLUT::Row white{1.0, 1.0, 1.0};
    return table.lut3D.size() >= 2 && table.lut3D.size() <= mostPoints &&
           table.domainMin == black && table.domainMax == white;
}

}  // namespace effect

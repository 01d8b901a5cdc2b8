#include "plugin/config_file.h"

#include <IPathConfigMgr.h>

#include <array>
#include <span>

#include "plugin/profile_record.h"

namespace plugin {

ConfigFile::ConfigFile() {
    IPathConfigMgr* paths = IPathConfigMgr::GetPathConfigMgr();
    MaxSDK::Util::Path file(paths ? paths->GetDir(APP_PLUGCFG_DIR) : nullptr);
    // Without a folder there are no settings; the current folder's file is somebody else's.
    if (file.IsEmpty()) return;
    file.AddTrailingBackslash();
    path = MSTR(file.GetCStr()) + _M("veltrane.cfg");
}

bool ConfigFile::ReadInt(const MCHAR* key, std::uint32_t& value) const {
    std::array<std::uint8_t, 4> record{};
    if (!ReadProfileRecord(path, section, key, record)) return false;
    value = 0;
    for (std::size_t i = 0; i < record.size(); ++i)
        value |= std::uint32_t{record[i]} << (8 * i);
    return true;
}

}  // namespace plugin

// Paths that tests spell with slashes from the root, as this system's host gives them.
#pragma once

#include <filesystem>
#include <string>

#include "host/text.h"

// "/renders/shot.psd" is "C:\renders\shot.psd" where folders hang from drives. UTF-8.
inline std::string NativePath(const std::string& path) {
#ifdef _WIN32
    const std::filesystem::path given(host::FromUtf8(path).data());
    return host::ToUtf8(std::filesystem::absolute(given).make_preferred().c_str());
#else
    return path;
#endif
}

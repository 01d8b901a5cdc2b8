// Windows has these calls itself.
#ifndef _WIN32

#include <algorithm>
#include <filesystem>
#include <system_error>

#include <tempfiles.h>
#include <unistd.h>

#include "host/application.h"
#include "host/text.h"

DWORD GetTempPath(DWORD size, MCHAR* buffer) {
    MSTR folder = host::App().settings.temporaryFolder;
    std::error_code error;
    if (folder.isNull()) {
        folder = host::FromNativePath(std::filesystem::temp_directory_path(error));
    }
    if (error || !std::filesystem::is_directory(host::ToNativePath(folder), error)) {
        return 0;
    }
    if (folder.data()[folder.Length() - 1] != _M('/')) {
        folder += _M("/");
    }
    const auto length = static_cast<DWORD>(folder.Length());
    if (length >= size) {
        return length + 1;
    }
    std::copy_n(folder.data(), length + 1, buffer);
    return length;
}

BOOL DeleteFile(const MCHAR* name) {
    return unlink(host::ToUtf8(name).c_str()) == 0;
}

#endif

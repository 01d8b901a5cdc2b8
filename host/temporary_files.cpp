#include "host/temporary_folder.h"

#include "host/application.h"

#ifdef _WIN32

#include <windows.h>

#include <optional>
#include <string>

namespace {

constexpr const wchar_t* folderVariable = L"TMP";

std::optional<std::wstring> SystemsFolder() {
    std::wstring folder(GetEnvironmentVariableW(folderVariable, nullptr, 0), L'\0');
    if (folder.empty()) {
        return std::nullopt;
    }
    folder.resize(
        GetEnvironmentVariableW(folderVariable, folder.data(), static_cast<DWORD>(folder.size())));
    return folder;
}

}  // namespace

void host::UseTemporaryFolder(const MSTR& folder) {
    // What the variable was before it was changed; nothing while it isn't.
    static std::optional<std::optional<std::wstring>> before;
    if (!folder.isNull()) {
        if (!before) {
            before = SystemsFolder();
        }
        SetEnvironmentVariableW(folderVariable, folder.data());
    } else if (before) {
        SetEnvironmentVariableW(folderVariable, *before ? (*before)->c_str() : nullptr);
        before.reset();
    }
}

#else

#include <algorithm>
#include <filesystem>
#include <system_error>

#include <tempfiles.h>
#include <unistd.h>

#include "host/text.h"

void host::UseTemporaryFolder(const MSTR& folder) {
    App().settings.temporaryFolder = folder;
}

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

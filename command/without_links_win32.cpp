// The compiler's library knows no links here.
#include <windows.h>

#include <memory>
#include <string>

#include "command/without_links.h"

namespace command {

std::filesystem::path WithoutLinks(const std::filesystem::path& path, std::error_code& fault) {
    fault.clear();
    const auto fail = [&] {
        const DWORD reason = GetLastError();
        fault = reason == ERROR_ACCESS_DENIED
                    ? std::make_error_code(std::errc::permission_denied)
                    : std::error_code(static_cast<int>(reason), std::system_category());
        return std::filesystem::path();
    };
    // This flag is what opens folders.
    HANDLE handle = CreateFileW(path.c_str(), FILE_READ_ATTRIBUTES,
                                FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (handle == INVALID_HANDLE_VALUE) return fail();
    const std::unique_ptr<void, decltype(&CloseHandle)> closed(handle, CloseHandle);
    const DWORD units = GetFinalPathNameByHandleW(handle, nullptr, 0, FILE_NAME_NORMALIZED);
    if (units == 0) return fail();
    std::wstring text(units, L'\0');
    const DWORD length = GetFinalPathNameByHandleW(handle, text.data(), units, 0);
    if (length == 0 || length >= units) return fail();
    text.resize(length);
    return text;
}

}  // namespace command

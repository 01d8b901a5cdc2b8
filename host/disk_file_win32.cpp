#include <windows.h>

#include <algorithm>
#include <iterator>

#include "host/disk_file.h"

namespace host {
namespace {

struct KnownError {
    DWORD system;
    std::errc generic;
};

constexpr KnownError knownErrors[] = {
    {ERROR_ACCESS_DENIED, std::errc::permission_denied},
    {ERROR_SHARING_VIOLATION, std::errc::device_or_resource_busy},
    {ERROR_LOCK_VIOLATION, std::errc::device_or_resource_busy},
    {ERROR_WRITE_PROTECT, std::errc::read_only_file_system},
    {ERROR_FILE_NOT_FOUND, std::errc::no_such_file_or_directory},
    {ERROR_PATH_NOT_FOUND, std::errc::no_such_file_or_directory},
    {ERROR_INVALID_NAME, std::errc::invalid_argument},
    {ERROR_FILENAME_EXCED_RANGE, std::errc::filename_too_long},
    {ERROR_FILE_EXISTS, std::errc::file_exists},
    {ERROR_ALREADY_EXISTS, std::errc::file_exists},
    {ERROR_DISK_FULL, std::errc::no_space_on_device},
    {ERROR_HANDLE_DISK_FULL, std::errc::no_space_on_device},
    {ERROR_DIRECTORY, std::errc::not_a_directory},
};

std::error_code LastError() {
    const DWORD error = GetLastError();
    const auto* found =
        std::find_if(std::begin(knownErrors), std::end(knownErrors),
                     [error](const KnownError& each) { return each.system == error; });
    return std::make_error_code(found == std::end(knownErrors) ? std::errc::io_error
                                                               : found->generic);
}

std::error_code WriteAll(HANDLE file, std::string_view bytes) {
    constexpr std::size_t most = std::size_t{1} << 24;
    while (!bytes.empty()) {
        DWORD written = 0;
        const auto wanted = static_cast<DWORD>(std::min(bytes.size(), most));
        if (!WriteFile(file, bytes.data(), wanted, &written, nullptr)) return LastError();
        if (written == 0) return std::make_error_code(std::errc::no_space_on_device);
        bytes.remove_prefix(written);
    }
    return {};
}

}  // namespace

std::error_code WriteNewFile(const std::filesystem::path& path, std::string_view bytes) {
    HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                              FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return LastError();
    std::error_code fault = WriteAll(file, bytes);
    if (!fault && !FlushFileBuffers(file)) fault = LastError();
    if (!CloseHandle(file) && !fault) fault = LastError();
    return fault;
}

std::error_code MayWrite(const std::filesystem::path& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) return LastError();
    const bool isReadOnly = (attributes & FILE_ATTRIBUTE_READONLY) != 0;
    return isReadOnly ? std::make_error_code(std::errc::permission_denied) : std::error_code();
}

std::error_code MoveOver(const std::filesystem::path& from, const std::filesystem::path& to) {
    const DWORD how = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    return MoveFileExW(from.c_str(), to.c_str(), how) ? std::error_code() : LastError();
}

}  // namespace host

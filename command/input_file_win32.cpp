#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <system_error>
#include <utility>

#include "command/input_file.h"
#include "command/native_path.h"

namespace command {
namespace {

// Paths of any length; the system's calls take one that is longer than this only in its own form.
std::filesystem::path OfAnyLength(const std::filesystem::path& path) {
    constexpr std::size_t longest = MAX_PATH - 1;
    std::error_code fault;
    const std::filesystem::path whole = std::filesystem::absolute(path, fault).lexically_normal();
    const std::wstring& text = whole.native();
    if (fault || text.size() <= longest || text.starts_with(L"\\\\?\\")) return path;
    if (text.starts_with(L"\\\\")) return L"\\\\?\\UNC" + text.substr(1);
    return L"\\\\?\\" + text;
}

bool IsMissing(DWORD fault) {
    return fault == ERROR_FILE_NOT_FOUND || fault == ERROR_PATH_NOT_FOUND ||
           fault == ERROR_INVALID_NAME || fault == ERROR_BAD_NETPATH ||
           fault == ERROR_BAD_NET_NAME || fault == ERROR_INVALID_DRIVE ||
           fault == ERROR_BAD_PATHNAME || fault == ERROR_DIRECTORY;
}

FoundInput Refused(DWORD fault) {
    if (IsMissing(fault)) return {InputKind::Missing};
    return {InputKind::Closed, {}, std::system_category().message(static_cast<int>(fault))};
}

}  // namespace

FoundInput FindInput(const std::string& path) {
    const std::filesystem::path native = OfAnyLength(Native(path));
    const DWORD attributes = GetFileAttributesW(native.c_str());
    const bool isThere = attributes != INVALID_FILE_ATTRIBUTES;
    if (isThere && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return {InputKind::Folder};
    HANDLE handle = CreateFileW(native.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) return Refused(GetLastError());
    if (GetFileType(handle) != FILE_TYPE_DISK) {
        CloseHandle(handle);
        return {InputKind::PipeOrDevice};
    }
    // From here on the descriptor owns the handle, and then the stream the descriptor.
    const int descriptor =
        _open_osfhandle(reinterpret_cast<std::intptr_t>(handle), _O_RDONLY | _O_BINARY);
    if (descriptor < 0) {
        CloseHandle(handle);
        return Refused(ERROR_TOO_MANY_OPEN_FILES);
    }
    InputFile file(_fdopen(descriptor, "rb"));
    if (file) return {InputKind::File, std::move(file)};
    _close(descriptor);
    return Refused(ERROR_TOO_MANY_OPEN_FILES);
}

void SeekInput(std::FILE* file, std::uint64_t position) {
    _fseeki64(file, static_cast<__int64>(position), SEEK_SET);
}

std::uint64_t SizeOfInput(std::FILE* file) {
    const __int64 size = _filelengthi64(_fileno(file));
    return size < 0 ? 0 : static_cast<std::uint64_t>(size);
}

}  // namespace command

#include "host/disk_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace host {
namespace {

std::error_code LastError() {
    return {errno, std::generic_category()};
}

std::error_code WriteAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(file, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return LastError();
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return {};
}

// Some file systems can't flush and say so.
std::error_code Flush(int file) {
    while (fsync(file) != 0) {
        if (errno == EINVAL || errno == ENOTSUP) return {};
        if (errno != EINTR) return LastError();
    }
    return {};
}

}  // namespace

std::error_code WriteNewFile(const std::filesystem::path& path, std::string_view bytes) {
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (file < 0) return LastError();
    std::error_code fault = WriteAll(file, bytes);
    if (!fault) fault = Flush(file);
    if (close(file) != 0 && !fault) fault = LastError();
    return fault;
}

std::error_code MayWrite(const std::filesystem::path& path) {
    return faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0 ? std::error_code()
                                                                    : LastError();
}

std::error_code MoveOver(const std::filesystem::path& from, const std::filesystem::path& to) {
    if (rename(from.c_str(), to.c_str()) != 0) return LastError();
    // The move has happened; the folder is flushed so that it also outlives a fall of the current.
    const std::filesystem::path folder = to.has_parent_path() ? to.parent_path() : ".";
    const int opened = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (opened >= 0) {
        fsync(opened);
        close(opened);
    }
    return {};
}

}  // namespace host

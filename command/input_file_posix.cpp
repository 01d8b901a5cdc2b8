#include <sys/stat.h>
#include <sys/types.h>

#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

#include "command/input_file.h"
#include "command/native_path.h"

namespace command {

FoundInput FindInput(const std::string& path) {
    namespace fs = std::filesystem;
    std::error_code fault;
    const auto kind = fs::status(Native(path), fault).type();
    if (kind == fs::file_type::directory) return {InputKind::Folder};
    if (!fault && kind != fs::file_type::regular && kind != fs::file_type::not_found)
        return {InputKind::PipeOrDevice};
    InputFile file(std::fopen(path.c_str(), "rb"));
    if (file) return {InputKind::File, std::move(file)};
    const int reason = errno;
    if (reason == ENOENT) return {InputKind::Missing};
    return {InputKind::Closed, {}, std::generic_category().message(reason)};
}

void SeekInput(std::FILE* file, std::uint64_t position) {
    ::fseeko(file, static_cast<off_t>(position), SEEK_SET);
}

std::uint64_t SizeOfInput(std::FILE* file) {
    struct stat status = {};
    return ::fstat(::fileno(file), &status) == 0 ? static_cast<std::uint64_t>(status.st_size) : 0;
}

}  // namespace command

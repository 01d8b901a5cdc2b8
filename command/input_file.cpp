#include "command/input_file.h"

#include <cerrno>
#include <system_error>
#include <utility>

#include "command/failure.h"

namespace command {

InputFile OpenInput(const std::string& path) {
    FoundInput found = FindInput(path);
    switch (found.kind) {
        case InputKind::File:
            return std::move(found.file);
        case InputKind::Folder:
            throw InputError(path + ": a folder, not an image; give a file in it");
        case InputKind::PipeOrDevice:
            throw InputError(path +
                             ": a pipe or device, not a file; save the image to a file first");
        case InputKind::Missing:
            throw InputError(path + ": no such file; check the path");
        case InputKind::Closed:
            break;
    }
    throw InputError(path + ": cannot be opened (" + found.reason + "); check its permissions");
}

std::size_t ReadInput(std::FILE* file, const std::string& path, void* bytes, std::size_t count) {
    const std::size_t read = std::fread(bytes, 1, count, file);
    if (std::ferror(file) == 0) return read;
    throw InputError(path + ": cannot be read (" + std::generic_category().message(errno) +
                     "); check the disk");
}

std::string ReadWholeInput(const std::string& path) {
    const InputFile file = OpenInput(path);
    std::string bytes(static_cast<std::size_t>(SizeOfInput(file.get())), '\0');
    bytes.resize(ReadInput(file.get(), path, bytes.data(), bytes.size()));
    return bytes;
}

}  // namespace command

// The door that images of the user come through: regular files, under any name and path that the
// system knows.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

namespace command {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using InputFile = std::unique_ptr<std::FILE, CloseFile>;

// To read bytes from. `path` is UTF-8. Throws InputError: nothing there, a folder, a pipe or a
// device, or not to be opened.
InputFile OpenInput(const std::string& path);

// Up to `count` bytes; fewer at the end of the file only. Throws InputError when the disk fails.
std::size_t ReadInput(std::FILE* file, const std::string& path, void* bytes, std::size_t count);

std::string ReadWholeInput(const std::string& path);

// In bytes from the start.
void SeekInput(std::FILE* file, std::uint64_t position);
std::uint64_t SizeOfInput(std::FILE* file);

// What the system's own part of OpenInput finds.
enum class InputKind { File, Folder, PipeOrDevice, Missing, Closed };
struct FoundInput {
    InputKind kind = InputKind::Closed;
    // Of a File alone.
    InputFile file{};
    // Why it is Closed.
    std::string reason{};
};
FoundInput FindInput(const std::string& path);

}  // namespace command

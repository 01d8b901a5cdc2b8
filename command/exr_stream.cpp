#include "command/exr_stream.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <utility>

#include "command/input_file.h"

namespace command {
namespace {

[[noreturn]] void FailAtEnd() {
    throw std::runtime_error("unexpected end of file");
}

// The library's own takes no paths beyond the system's code page on Windows.
class FileStream : public Imf::IStream {
  public:
    explicit FileStream(const std::string& path)
        : Imf::IStream(path.c_str()), file(OpenInput(path)), size(SizeOfInput(file.get())) {}

    std::uint64_t Size() const { return size; }

    bool read(char c[], int n) override {
        const auto count = static_cast<std::size_t>(std::max(n, 0));
        if (n < 0 || ReadInput(file.get(), fileName(), c, count) < count) FailAtEnd();
        position += count;
        return position < size;
    }
    std::uint64_t tellg() override { return position; }
    void seekg(std::uint64_t pos) override {
        SeekInput(file.get(), pos);
        position = pos;
    }
    void clear() override { std::clearerr(file.get()); }

  private:
    InputFile file;
    std::uint64_t size;
    std::uint64_t position = 0;
};

class MemoryStream : public Imf::IStream {
  public:
    MemoryStream(const std::string& path, const char* bytes, std::size_t count)
        : Imf::IStream(path.c_str()), data(bytes), size(count) {}

    bool read(char c[], int n) override {
        if (n < 0 || static_cast<std::size_t>(n) > size - position) FailAtEnd();
        std::memcpy(c, data + position, static_cast<std::size_t>(n));
        position += static_cast<std::size_t>(n);
        return position < size;
    }
    std::uint64_t tellg() override { return position; }
    void seekg(std::uint64_t pos) override {
        position = static_cast<std::size_t>(std::min<std::uint64_t>(pos, size));
    }

  private:
    const char* data;
    std::size_t size;
    std::size_t position = 0;
};

}  // namespace

ExrStream OpenExrStream(const std::string& path) {
    auto stream = std::make_unique<FileStream>(path);
    const std::uint64_t size = stream->Size();
    return {std::move(stream), size};
}

ExrStream OpenExrStream(const std::string& path, const char* bytes, std::size_t size) {
    return {std::make_unique<MemoryStream>(path, bytes, size), size};
}

}  // namespace command

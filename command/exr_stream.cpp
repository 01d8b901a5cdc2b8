#include "command/exr_stream.h"

#include <OpenEXR/ImfStdIO.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <stdexcept>

namespace command {
namespace {

class MemoryStream : public Imf::IStream {
  public:
    MemoryStream(const std::string& path, const char* bytes, std::size_t count)
        : Imf::IStream(path.c_str()), data(bytes), size(count) {}

    bool read(char c[], int n) override {
        if (n < 0 || static_cast<std::size_t>(n) > size - position) {
            throw std::runtime_error("unexpected end of file");
        }
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
    const std::filesystem::path native(std::u8string(path.begin(), path.end()));
    return {std::make_unique<Imf::StdIFStream>(path.c_str()), std::filesystem::file_size(native)};
}

ExrStream OpenExrStream(const std::string& path, const char* bytes, std::size_t size) {
    return {std::make_unique<MemoryStream>(path, bytes, size), size};
}

}  // namespace command

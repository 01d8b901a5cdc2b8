// Where the bytes of an OpenEXR file come from.
#pragma once

#include <OpenEXR/ImfIO.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace command {

struct ExrStream {
    std::unique_ptr<Imf::IStream> stream;
    std::uint64_t bytes = 0;
};

// Throw what the library does.
ExrStream OpenExrStream(const std::string& path);
// `bytes` must outlive the stream. `path` is for messages.
ExrStream OpenExrStream(const std::string& path, const char* bytes, std::size_t size);

}  // namespace command

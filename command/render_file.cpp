#include "command/render_file.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "command/exr_file.h"
#include "command/failure.h"
#include "command/image_formats.h"
#include "command/image_module.h"

namespace command {
namespace {

constexpr std::size_t signatureBytes = 12;

[[noreturn]] void Fail(const std::string& path, const std::string& fault) {
    throw InputError(path + ": " + fault);
}

[[noreturn]] void FailForeign(const std::string& path) {
    Fail(path, "not an image that can be read; give an OpenEXR, " + ImageFormatList() + " file");
}

using Signature = std::array<char, signatureBytes>;

// The file's first bytes; zeros behind its end.
Signature ReadSignature(const std::string& path) {
    std::error_code fault;
    const std::filesystem::path native(std::u8string(path.begin(), path.end()));
    if (std::filesystem::is_directory(native, fault)) {
        Fail(path, "a folder, not an image; give a file in it");
    }
    const auto kind = std::filesystem::status(native, fault).type();
    if (!fault && kind != std::filesystem::file_type::regular &&
        kind != std::filesystem::file_type::not_found) {
        Fail(path, "a pipe or device, not a file; save the image to a file first");
    }
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (!file) {
        const int reason = errno;
        if (reason == ENOENT) Fail(path, "no such file; check the path");
        Fail(path, "cannot be opened (" + std::generic_category().message(reason) +
                       "); check its permissions");
    }
    Signature bytes{};
    const std::size_t count = std::fread(bytes.data(), 1, bytes.size(), file);
    const int reason = std::ferror(file) != 0 ? errno : 0;
    std::fclose(file);
    if (reason != 0) {
        Fail(path,
             "cannot be read (" + std::generic_category().message(reason) + "); check the disk");
    }
    if (count == 0) Fail(path, "the file is empty; render or copy it again");
    return bytes;
}

}  // namespace

const RenderCamera* CameraOf(const Description& file, std::size_t framePart) {
    if (file.parts[framePart].camera) return &*file.parts[framePart].camera;
    const auto found = std::find_if(file.parts.begin(), file.parts.end(),
                                    [](const Part& each) { return each.camera.has_value(); });
    return found == file.parts.end() ? nullptr : &*found->camera;
}

void RenderFile::ReadDeepRows(std::size_t, const DeepChannels&, const DeepRowConsumer&) {
    Fail(GetDescription().path, "the file has no deep pixels; give a deep OpenEXR file");
}

std::unique_ptr<RenderFile> OpenRenderFile(const std::string& path) {
    const Signature start = ReadSignature(path);
    if (IsExr(start.data(), start.size())) return OpenExrFile(path);
    const ImageFormat* format = FindImageFormat(path, start.data(), start.size());
    if (!format) FailForeign(path);
    return OpenImage(path, *format);
}

std::unique_ptr<RenderFile> OpenRenderFile(const std::string& path, const char* bytes,
                                           std::size_t size) {
    if (IsExr(bytes, size)) return OpenExrFile(path, bytes, size);
    const ImageFormat* format = FindImageFormat(path, bytes, size);
    if (!format) FailForeign(path);
    return OpenImage(path, *format, bytes, size);
}

}  // namespace command

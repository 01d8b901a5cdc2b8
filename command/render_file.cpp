#include "command/render_file.h"

#include <algorithm>
#include <array>

#include "command/exr_file.h"
#include "command/failure.h"
#include "command/image_file.h"
#include "command/image_formats.h"
#include "command/input_file.h"

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
    const InputFile file = OpenInput(path);
    Signature bytes{};
    if (ReadInput(file.get(), path, bytes.data(), bytes.size()) == 0)
        Fail(path, "the file is empty; render or copy it again");
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
    return OpenImageFile(path, *format);
}

std::unique_ptr<RenderFile> OpenRenderFile(const std::string& path, const char* bytes,
                                           std::size_t size) {
    if (IsExr(bytes, size)) return OpenExrFile(path, bytes, size);
    const ImageFormat* format = FindImageFormat(path, bytes, size);
    if (!format) FailForeign(path);
    return OpenImageFile(path, *format, bytes, size);
}

}  // namespace command

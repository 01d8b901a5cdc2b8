#include "command/host_images.h"

#include <cstdint>
#include <memory>
#include <utility>
#include <variant>
#include <vector>

#include "command/beauty.h"
#include "command/failure.h"
#include "command/library_errors.h"

namespace command {
namespace {

std::string WithoutPath(const InputError& error, const std::string& path) {
    const std::string text = error.what();
    const std::string front = path + ": ";
    return text.starts_with(front) ? text.substr(front.size()) : text;
}

std::string Sides(int width, int height) {
    return std::to_string(width) + "x" + std::to_string(height);
}

}  // namespace

host::Owned<host::ImageBitmap> BitmapOf(Picture picture) {
    const host::ImageFormat format{picture.width, picture.height, picture.hasAlpha,
                                   picture.pixelAspect};
    if (auto* halfs = std::get_if<std::vector<std::uint16_t>>(&picture.components)) {
        return host::ImageBitmap::FromHalf(format, std::move(*halfs));
    }
    return host::ImageBitmap::FromFloat(
        format, std::move(std::get<std::vector<float>>(picture.components)));
}

HostImages::HostImages(std::function<void(const std::string& text)> warnUser)
    : warn(std::move(warnUser)) {}

host::Owned<host::ImageBitmap> HostImages::Load(const std::string& path) {
    last = {path, {}};
    try {
        Picture picture = Guarded(path, [&] {
            const std::unique_ptr<RenderFile> file = OpenRenderFile(path);
            return file->Read(ChooseBeauty(file->GetDescription()));
        });
        last.width = picture.width;
        last.height = picture.height;
        if (!picture.hasAlpha && !std::exchange(warnedOfAlpha, true)) {
            warn(path +
                 ": it has no alpha, so it counts as opaque everywhere; give an image with "
                 "the shadow in its alpha");
        }
        return BitmapOf(std::move(picture));
    } catch (const InputError& error) {
        last.fault = WithoutPath(error, path);
        return nullptr;
    }
}

std::string HostImages::FaultOf(const std::string& path, int width, int height) const {
    if (path != last.path) {
        // The host asks for files alone.
        try {
            OpenRenderFile(path);
        } catch (const InputError& error) {
            return WithoutPath(error, path);
        }
        return "cannot be loaded; check its path";
    }
    if (!last.fault.empty()) return last.fault;
    return "its size is " + Sides(last.width, last.height) + " and the frame's " +
           Sides(width, height) + "; render it in the frame's size";
}

}  // namespace command

#include "command/vray_frame.h"

#include <vrayelements.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <utility>
#include <vector>

namespace command {
namespace {

int AliasOf(const Class_ID& classID) {
    const auto* row =
        std::find_if(std::begin(VRAY_ELEMENT_CLASSES), std::end(VRAY_ELEMENT_CLASSES),
                     [&](const VRayElementClass& each) { return each.id == classID; });
    return row == std::end(VRAY_ELEMENT_CLASSES) ? VRAY_CHANNEL_OF_NAME : row->channel;
}

// The picture's alpha as a channel of its own, which is 1 for a picture without.
host::Owned<host::ImageBitmap> AlphaOf(host::ImageStorage& picture) {
    const host::ImageFormat format{.width = picture.Width(),
                                   .height = picture.Height(),
                                   .aspect = picture.Aspect(),
                                   .components = 1};
    std::vector<BMM_Color_fl> row(static_cast<std::size_t>(format.width));
    std::vector<float> alphas;
    alphas.reserve(row.size() * static_cast<std::size_t>(format.height));
    for (int y = 0; y < format.height; ++y) {
        picture.GetLinearPixels(0, y, format.width, row.data());
        std::transform(row.begin(), row.end(), std::back_inserter(alphas),
                       [](const BMM_Color_fl& pixel) { return pixel.a; });
    }
    return host::ImageBitmap::FromFloat(format, std::move(alphas));
}

}  // namespace

VRayFrame::VRayFrame(host::VRayFrameBuffer& frameBuffer, host::ImageBitmap& picture)
    : buffer(frameBuffer), frame(picture) {
    buffer.BeginFrame(frame.Storage()->Width(), frame.Storage()->Height());
}

void VRayFrame::AddPicture(host::Owned<host::ImageBitmap> alpha,
                           std::span<const std::string> taken) {
    const auto unlessTaken = [taken](const char* name) {
        return std::find(taken.begin(), taken.end(), name) == taken.end() ? name : "";
    };
    // The picture stays its owner's.
    const std::shared_ptr<host::ImageBitmap> picture(&frame, [](host::ImageBitmap*) {});
    buffer.AddChannel({VRAY_CHANNEL_RGB, RDCT_3FLOAT, unlessTaken("RGB color"), picture});
    if (!alpha) alpha = AlphaOf(*frame.Storage());
    buffer.AddChannel({VRAY_CHANNEL_ALPHA, RDCT_FLOAT, unlessTaken("Alpha"),
                       std::shared_ptr<host::ImageBitmap>(std::move(alpha))});
}

void VRayFrame::AddElement(const Class_ID& classID, const std::string& name,
                           host::Owned<host::ImageBitmap> image, bool sharesAlpha) {
    const bool oneValue = image->Storage()->Components() == 1;
    buffer.AddChannel({AliasOf(classID), oneValue ? RDCT_FLOAT : RDCT_3FLOAT, name,
                       std::shared_ptr<host::ImageBitmap>(std::move(image)), sharesAlpha});
}

}  // namespace command

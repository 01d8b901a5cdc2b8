#include "command/expectation.h"

#include <algorithm>

namespace command {
namespace {

std::uint64_t BytesOf(SampleType type) {
    return type == SampleType::Half ? 2 : 4;
}

// A picture in memory: grey, three colours, or four components, of one type.
std::uint64_t BytesAPixel(const Description& file, const PassChannels& channels) {
    std::uint64_t bytes = 2;
    for (const auto* channel : {&channels.red, &channels.green, &channels.blue, &channels.alpha}) {
        if (!*channel) continue;
        const Channel& found = file.layers[(*channel)->layer].channels[(*channel)->channel];
        bytes = std::max(bytes, BytesOf(found.type));
    }
    if (channels.alpha) return 4 * bytes;
    return channels.green ? 3 * bytes : bytes;
}

std::size_t Names(const PassPlan& plan, const std::optional<std::size_t>& matte) {
    return matte ? plan.cryptomattes[*matte].manifest.entries.size() : 0;
}

}  // namespace

Expectation Expect(const Description& file, const PassPlan& plan) {
    // Red, green, blue and transparency.
    constexpr std::uint64_t layerChannels = 4;
    const Layer& picture = file.layers[plan.beauty.layer];
    const Window& frame = file.parts[picture.part].displayWindow;
    Expectation expected;
    expected.pixels =
        static_cast<std::uint64_t>(frame.Width()) * static_cast<std::uint64_t>(frame.Height());
    expected.elements = plan.elements.size();
    expected.objects = Names(plan, plan.objectMatte);
    expected.materials = Names(plan, plan.materialMatte);

    const SampleType pictureType =
        std::any_of(picture.channels.begin(), picture.channels.end(),
                    [](const Channel& each) { return each.type != SampleType::Half; })
            ? SampleType::Float
            : SampleType::Half;
    std::uint64_t bytesAPixel = 4 * BytesOf(pictureType);
    for (const PassElement& element : plan.elements)
        bytesAPixel += BytesAPixel(file, element.channels);
    expected.depthImage = plan.HasDistances();
    const bool fragments = expected.depthImage || plan.objectMatte || plan.materialMatte ||
                           plan.objectID || plan.materialID || plan.normals;
    // The pixel's count, and of each fragment its ids, coverage, normal and depth.
    const std::uint64_t fragmentBytes = 2 + 2 + 1 + 1 + 4 + (expected.depthImage ? 4 : 0);
    if (fragments) bytesAPixel += 2 + fragmentBytes * 3 / 2;
    expected.memory = bytesAPixel * expected.pixels;

    const std::uint64_t idLayers = (plan.objectID ? 1 : 0) + (plan.objectMatte ? 1 : 0) +
                                   (plan.materialMatte || plan.materialID ? 1 : 0) +
                                   (plan.normals ? 1 : 0);
    // The picture's layer has a mask besides, and the merged image has no layer. Of the depth
    // layer's channels the mask alone has pixels.
    expected.channels =
        layerChannels * (2 + expected.elements + expected.objects + expected.materials + idLayers) +
        1 + (expected.depthImage ? 1 : 0);
    return expected;
}

}  // namespace command

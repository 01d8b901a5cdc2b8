// The two blocks differ from other image resources in their signature.

#include "psdfile/scene_data_blocks.h"

#include <algorithm>

#include "psdfile/four_char_code.h"

namespace {

std::uint16_t HelperID(std::uint16_t index, std::uint32_t frame) {
    constexpr std::uint64_t lastOffset = 1999;
    const std::uint64_t offset = std::uint64_t{index} * 2 + frame;
    return static_cast<std::uint16_t>(30000 + std::min(offset, lastOffset));
}

void BeginSceneData(psdfile::PSDImageResourceBlock& block) {
    constexpr std::uint32_t version = 1;
    block.signature.value = psdfile::FourCharCode("qzMk");
    block.data.Add<psdfile::PSint32>(version);
}

void AddValues(psdfile::PSDPartList& data, const SceneDataValues& values) {
    for (const double value : values) {
        data.Add<psdfile::PSdouble32>(value);
    }
}

}  // namespace

PSDIRB_Camera::PSDIRB_Camera(int index, std::uint32_t value, const SceneDataValues& values)
    : PSDImageResourceBlock(index == 0 ? 58151 : 58152) {
    BeginSceneData(*this);
    data.Add<psdfile::PSint32>(value);
    AddValues(data, values);
}

PSDIRB_Helper::PSDIRB_Helper(const char* helperName, std::uint16_t index, std::uint32_t frame,
                             const SceneDataValues& values)
    : PSDImageResourceBlock(HelperID(index, frame), helperName) {
    BeginSceneData(*this);
    AddValues(data, values);
}

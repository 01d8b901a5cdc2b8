#include "command/exr_luma_chroma.h"

#include <OpenEXR/ImfChannelList.h>
#include <OpenEXR/ImfFrameBuffer.h>
#include <OpenEXR/ImfRgbaFile.h>

#include <algorithm>
#include <cstring>
#include <span>

namespace command {
namespace {

// Bytes of rows that are read at a time.
constexpr std::size_t blockBytes = std::size_t{1} << 20;

}  // namespace

void ReadLumaChromaRows(Imf::IStream& stream, const std::string& layer, const Part& part,
                        PictureBuilder& picture) {
    static_assert(sizeof(Imf::Rgba) == rgbaComponents * sizeof(std::uint16_t));
    Imf::RgbaInputFile input(stream, layer, 0);
    const Window& data = part.dataWindow;
    const Window& frame = part.displayWindow;
    const int left = std::max(data.left, frame.left);
    const std::int64_t count = std::int64_t{std::min(data.right, frame.right)} - left + 1;
    const int lastRow = count > 0 ? std::min(data.bottom, frame.bottom) : frame.top - 1;
    const auto width = static_cast<std::size_t>(data.Width());
    const auto rowsAtOnce =
        static_cast<int>(std::max<std::size_t>(1, blockBytes / (width * sizeof(Imf::Rgba))));
    std::vector<Imf::Rgba> block(count > 0 ? static_cast<std::size_t>(rowsAtOnce) * width : 0);
    std::vector<std::uint16_t> line(static_cast<std::size_t>(std::max<std::int64_t>(0, count)) *
                                    rgbaComponents);
    int first = 0;
    int last = frame.top - 1;
    for (int row = frame.top; row <= frame.bottom; ++row) {
        if (row < data.top || row > lastRow) {
            picture.Append(std::span<const std::uint16_t>(), 0);
            continue;
        }
        if (row > last) {
            first = row;
            last = std::min(lastRow, row + rowsAtOnce - 1);
            // The slice's own rule: the address of pixel (0, 0), which may lie outside the block.
            const Imf::Slice origin = Imf::Slice::Make(
                Imf::HALF, block.data(), {data.left, first}, data.Width(),
                std::int64_t{last} - first + 1, sizeof(Imf::Rgba), sizeof(Imf::Rgba) * width);
            input.setFrameBuffer(static_cast<Imf::Rgba*>(static_cast<void*>(origin.base)), 1,
                                 width);
            input.readPixels(first, last);
        }
        const Imf::Rgba* pixels = block.data() + static_cast<std::size_t>(row - first) * width +
                                  static_cast<std::size_t>(left - data.left);
        std::memcpy(line.data(), pixels, line.size() * sizeof(std::uint16_t));
        picture.Append(line, left - frame.left);
    }
}

}  // namespace command

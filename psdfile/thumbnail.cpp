// The thumbnail resource.

#include "psdfile/thumbnail.h"

#include <utility>
#include <vector>

#include "psdfile/length_field.h"

namespace psdfile {

PSDThumbnailData::PSDThumbnailData(std::uint32_t widthInPixels, std::uint32_t heightInPixels,
                                   PSDChannelImageDataSourcePtr redSource,
                                   PSDChannelImageDataSourcePtr greenSource,
                                   PSDChannelImageDataSourcePtr blueSource)
    : width(widthInPixels),
      height(heightInPixels),
      red(std::move(redSource)),
      green(std::move(greenSource)),
      blue(std::move(blueSource)) {}

std::uint32_t PSDThumbnailData::RowBytes() const {
    return (width * 24 + 31) >> 5 << 2;
}

void PSDThumbnailData::WriteBody(std::ostream& stream) {
    std::vector<std::uint8_t> pixels(RowBytes());
    const std::vector<PSDChannelImageDataSource*> components{red.get(), green.get(), blue.get()};
    for (std::uint32_t row = 0; row < height; ++row) {
        for (std::size_t component = 0; component < components.size(); ++component) {
            const std::uint8_t* samples = components[component]->GetRow8(row);
            for (std::size_t column = 0; column < width; ++column) {
                pixels[3 * column + component] = samples[column];
            }
        }
        WriteBytes(stream, pixels.data(), pixels.size());
    }
}

PSDIRB_Thumbnail::PSDIRB_Thumbnail(std::uint32_t width, std::uint32_t height,
                                   const PSDChannelImageDataSourcePtr& red,
                                   const PSDChannelImageDataSourcePtr& green,
                                   const PSDChannelImageDataSourcePtr& blue)
    : PSDImageResourceBlock(1036) {
    constexpr std::uint32_t rawRGB = 0;
    constexpr std::uint16_t bitsPerPixel = 24;
    constexpr std::uint16_t planes = 1;
    const PSDThumbnailData pixels(width, height, red, green, blue);
    const std::uint32_t size = pixels.RowBytes() * height;
    for (const std::uint32_t number : {rawRGB, width, height, pixels.RowBytes(), size, size}) {
        data.Add<PSint32>(number);
    }
    data.Add<PSint16>(bitsPerPixel);
    data.Add<PSint16>(planes);
    data.Add<PSDThumbnailData>(pixels);
}

}  // namespace psdfile

// Makes a host bitmap of one layer's channels as their rows come by.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <variant>
#include <vector>

#include "command/render_file.h"
#include "host/image_bitmap.h"

namespace command {

// The samples keep the file's own type: halfs where all channels are halfs, floats otherwise
// (unsigned integers become floats of the same number).
class ImageBuilder {
  public:
    // 1 to 4 channels: grey, grey and alpha when `lastIsAlpha`, two or three colours, or four with
    // alpha; the types in that order. Room for the whole image is reserved, not touched.
    ImageBuilder(int width, int height, std::span<const SampleType> types, bool lastIsAlpha);

    // The next row from the top; one ChannelRow a channel, in the same order. What isn't finite is
    // made so.
    void AddRow(std::span<const ChannelRow> rows);

    bool HasAlpha() const { return hasAlpha; }
    // Values that weren't finite.
    std::uint64_t NotFinite() const { return notFinite; }

    // All rows are there. Leaves the builder empty. Never null.
    host::Owned<host::ImageBitmap> Finish(float pixelAspect);

  private:
    template <class Value>
    void Append(std::vector<Value>& image, std::span<const ChannelRow> rows);

    int width;
    int height;
    bool hasAlpha;
    std::size_t channels;
    // Stored a pixel: 1, 3 or 4.
    std::size_t components;
    std::variant<std::vector<std::uint16_t>, std::vector<float>> image;
    std::uint64_t notFinite = 0;
};

}  // namespace command

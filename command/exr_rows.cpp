#include "command/exr_rows.h"

#include <OpenEXR/ImfChannelList.h>
#include <OpenEXR/ImfFrameBuffer.h>
#include <OpenEXR/ImfHeader.h>

#include <algorithm>
#include <stdexcept>

#include "command/exr_description.h"

namespace command {
namespace {

// Bytes of rows that are held at a time: they stay in the processor's cache.
constexpr std::size_t rowBlockBytes = std::size_t{1} << 20;

}  // namespace

ExrRows::ExrRows(Imf::MultiPartInputFile& file, std::size_t part, const Window& frameWindow,
                 std::span<const std::string> names)
    : input(file, static_cast<int>(part)),
      frame(frameWindow),
      data(WindowOf(input.header().dataWindow())) {
    nothing.resize(static_cast<std::size_t>(frame.Width()) * sizeof(std::uint32_t));
    std::size_t pixelBytes = 0;
    for (const std::string& name : names) {
        const Imf::Channel* channel = input.header().channels().findChannel(name);
        if (!channel) throw std::invalid_argument("no channel " + name);
        const std::size_t bytes = channel->type == Imf::HALF ? 2 : 4;
        planes.push_back({name, channel->type, bytes, {}});
        pixelBytes += bytes;
    }
    const bool isSeen = data.left <= frame.right && data.right >= frame.left;
    if (!isSeen || pixelBytes == 0) {
        // As if there were no rows.
        data.bottom = data.top - 1;
        return;
    }
    left = std::min(frame.left, data.left);
    stride = static_cast<std::size_t>(std::int64_t{std::max(frame.right, data.right)} - left + 1);
    const auto rows = static_cast<std::size_t>(std::min(frame.Height(), data.Height()));
    const std::size_t fitting = std::max<std::size_t>(1, rowBlockBytes / (stride * pixelBytes));
    rowsAtOnce = static_cast<int>(std::min(rows, fitting));
    for (Plane& plane : planes) {
        plane.samples.resize(stride * plane.sampleBytes * static_cast<std::size_t>(rowsAtOnce));
    }
}

bool ExrRows::Covers(int row) const {
    return row >= data.top && row <= data.bottom;
}

void ExrRows::Load(int y) {
    current = frame.top + y;
    if (!Covers(current)) return;
    if (!loaded || current < firstLoaded || current > lastLoaded) ReadBlock(current);
}

void ExrRows::ReadBlock(int firstRow) {
    loaded = false;
    const int lastRow = static_cast<int>(std::min<std::int64_t>(
        std::int64_t{firstRow} + rowsAtOnce - 1, std::min(data.bottom, frame.bottom)));
    Imf::FrameBuffer slices;
    for (Plane& plane : planes) {
        const auto margin = static_cast<std::size_t>(std::int64_t{data.left} - left);
        slices.insert(plane.name,
                      Imf::Slice::Make(
                          plane.type, plane.samples.data() + margin * plane.sampleBytes,
                          {data.left, firstRow}, data.Width(), std::int64_t{lastRow} - firstRow + 1,
                          plane.sampleBytes, plane.sampleBytes * stride));
    }
    input.setFrameBuffer(slices);
    input.readPixels(firstRow, lastRow);
    firstLoaded = firstRow;
    lastLoaded = lastRow;
    loaded = true;
}

ChannelRow ExrRows::Row(std::size_t i) const {
    const Plane& plane = planes[i];
    if (!Covers(current)) return {SampleTypeOf(plane.type), nothing.data(), 0, 0};
    const auto margin = static_cast<std::size_t>(std::int64_t{frame.left} - left);
    const std::size_t row = stride * static_cast<std::size_t>(current - firstLoaded);
    const int first = std::max(frame.left, data.left);
    return {SampleTypeOf(plane.type), plane.samples.data() + (row + margin) * plane.sampleBytes,
            static_cast<int>(std::int64_t{first} - frame.left),
            static_cast<int>(std::int64_t{std::min(frame.right, data.right)} - first + 1)};
}

}  // namespace command

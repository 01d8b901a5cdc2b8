// The merged channels, with one compression field and one table of row lengths for all of them.

#include "psdfile/image_data.h"

#include <vector>

#include "psdfile/channel_image_data.h"
#include "psdfile/length_field.h"
#include "psdfile/stream_state.h"

namespace psdfile {

void PSDImageData::WriteBody(std::ostream& stream) {
    stream << compression;
    if (compression.value == compressionRLE) {
        const std::size_t entrySize = PSBMode(stream) != 0 ? 4 : 2;
        const std::size_t slice = height * entrySize;
        std::vector<std::uint8_t> table(channels.Count() * slice);
        const std::streampos tablePosition = stream.tellp();
        WriteBytes(stream, table.data(), table.size());
        for (std::size_t i = 0; i < channels.Count(); ++i) {
            auto& channel = channels.ItemAs<PSDChannelImageData>(i);
            channel.lengthTable = table.data() + i * slice;
            channel.ownLengthTable = false;
        }
        WriteChannels(stream);
        const std::streampos end = stream.tellp();
        stream.seekp(tablePosition);
        WriteBytes(stream, table.data(), table.size());
        stream.seekp(end);
        for (std::size_t i = 0; i < channels.Count(); ++i) {
            auto& channel = channels.ItemAs<PSDChannelImageData>(i);
            channel.lengthTable = nullptr;
            channel.ownLengthTable = true;
        }
    } else {
        WriteChannels(stream);
    }
    const int count = static_cast<int>(channels.Count());
    if (progress != nullptr) progress->ImageProgress(count, count);
}

void PSDImageData::WriteChannels(std::ostream& stream) {
    const int count = static_cast<int>(channels.Count());
    for (int i = 0; i < count; ++i) {
        if (progress != nullptr) progress->ImageProgress(i, count);
        stream << channels.Item(static_cast<std::size_t>(i));
        CheckFileSize(stream);
    }
}

}  // namespace psdfile

// The layer and mask section, which differs in shape between 8 bits and the deeper formats.

#include "psdfile/layer_section.h"

#include <array>

#include "psdfile/channel_image_data.h"
#include "psdfile/four_char_code.h"
#include "psdfile/layer_record.h"
#include "psdfile/length_field.h"
#include "psdfile/primitives.h"
#include "psdfile/stream_state.h"

namespace psdfile {

namespace {

void WriteTaggedBlock(std::ostream& stream, std::uint32_t signature, std::uint32_t key,
                      PSDPart& content) {
    stream << PSint32(signature) << PSint32(key);
    const std::streampos start = stream.tellp();
    stream << content;
    PadFrom(stream, start, 4);  // outside the length that the content brings along
}

}  // namespace

PSDLayersInfo::PSDLayersInfo() : PSDPart(2, false, true) {
    wideLengthInPSB = true;
}

void PSDLayersInfo::WriteBody(std::ostream& stream) {
    const std::size_t count = records.Count();
    stream << PSint16(static_cast<std::uint16_t>(hasMergedTransparency ? 0 - count : count));
    if (count > 0) records.ItemAs<PSDLayerRecord>(0).clipping.value = 0;
    stream << records;
    WriteChannels(stream);
}

void PSDLayersInfo::WriteChannels(std::ostream& stream) {
    const bool wide = PSBMode(stream) != 0;
    const int count = static_cast<int>(channels.Count());
    for (int i = 0; i < count; ++i) {
        if (progress != nullptr) progress->LayerProgress(i, count);
        auto& channel = channels.ItemAs<PSDChannelImageData>(static_cast<std::size_t>(i));
        const std::streampos start = stream.tellp();
        stream << channel;
        const std::streampos end = stream.tellp();
        PatchLengthField(stream, channel.lengthPosition, static_cast<std::uint64_t>(end - start),
                         wide);
        stream.seekp(end);
        CheckFileSize(stream);
    }
    if (progress != nullptr) progress->LayerProgress(count, count);
}

PSDGlobalLayerMaskInfo::PSDGlobalLayerMaskInfo() : PSDPart(1, false, true) {
    wideLengthInPSB = true;
}

void PSDGlobalLayerMaskInfo::WriteBody(std::ostream& stream) {
    // Overlay colour space and colour, opacity 50, kind 128, filler.
    constexpr std::array<std::uint8_t, 14> body{0x00, 0x00, 0xFF, 0xFF, 0x00, 0x00, 0x00,
                                                0x00, 0x00, 0x00, 0x00, 0x32, 0x80, 0x00};
    WriteBytes(stream, body.data(), body.size());
}

PSDLayerAndMaskInformation::PSDLayerAndMaskInformation() : PSDPart(1, false, true) {
    wideLengthInPSB = true;
}

void PSDLayerAndMaskInformation::WriteBody(std::ostream& stream) {
    if (layersInfo.records.Count() == 0) return;
    const int depth = layersInfo.channels.Count() == 0
                          ? 8
                          : layersInfo.channels.ItemAs<PSDChannelImageData>(0).depth;
    if (depth == 8) {
        stream << layersInfo << globalMask;
        return;
    }
    const bool large = PSBMode(stream) != 0;
    WriteLengthField(stream, 0, large);  // no layers info here
    WriteLengthField(stream, 0, false);  // no global mask here
    WriteTaggedBlock(stream, large ? FourCharCode("8B64") : FourCharCode("8BIM"),
                     depth == 16 ? FourCharCode("Lr16") : FourCharCode("Lr32"), layersInfo);
    WriteTaggedBlock(stream, FourCharCode("8BIM"), FourCharCode("LMsk"), globalMask);
}

}  // namespace psdfile

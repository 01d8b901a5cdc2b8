// The description of one layer.

#include "psdfile/layer_record.h"

#include "psdfile/length_field.h"
#include "psdfile/stream_state.h"

namespace psdfile {

void PSDChannelInfo::WriteBody(std::ostream& stream) {
    stream << id;
    if (data != nullptr) data->lengthPosition = stream.tellp();
    WriteLengthField(stream, length, PSBMode(stream) != 0);
}

void PSDLayerMaskData::WriteBody(std::ostream& stream) {
    if (!present) return;
    stream << top << left << bottom << right << defaultColor << flags << padding;
}

void PSDLayerBlendingRange::WriteBody(std::ostream& stream) {
    stream << sourceBlack << sourceWhite << destinationBlack << destinationWhite;
}

PSDLayerRecordExtraData::PSDLayerRecordExtraData()
    : ranges(1, false, true), name("", 4, false, false, true, 1, 4) {
    writeOuterLength = true;
    for (int i = 0; i < 5; ++i) {  // grey, then source and destination channels
        ranges.Add<PSDLayerBlendingRange>();
    }
}

void PSDLayerRecordExtraData::WriteBody(std::ostream& stream) {
    stream << mask << ranges << name << blocks;
}

void PSDLayerRecord::WriteBody(std::ostream& stream) {
    stream << top << left << bottom << right;
    stream << PSint16(static_cast<std::uint16_t>(channelInfos.Count())) << channelInfos;
    stream << signature << blendKey << opacity << clipping << flags << PSint8(0) << extraData;
}

}  // namespace psdfile

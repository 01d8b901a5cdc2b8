// The blocks at the end of a layer record that belong to all kinds of layers.

#include "psdfile/layer_blocks.h"

#include <utility>

#include "psdfile/length_field.h"

namespace psdfile {

void PSDLayerRecordExtraDataResourceBlock::WriteBody(std::ostream& stream) {
    stream << signature << key;
    WriteLengthField(stream, 0, false);
    const std::streampos start = stream.tellp();
    WriteData(stream);
    PadFrom(stream, start, 4);
    const std::streampos end = stream.tellp();
    PatchLengthField(stream, start - std::streamoff(4), static_cast<std::uint64_t>(end - start),
                     false);
    stream.seekp(end);
}

void PSDLREDRB_Base::WriteData(std::ostream& stream) {
    stream << list;
}

PSDSectionDivider::PSDSectionDivider(std::uint32_t dividerType, std::uint32_t blend)
    : PSDLayerRecordExtraDataResourceBlock(FourCharCode("lsct")),
      blendKey(blend),
      type(dividerType) {}

void PSDSectionDivider::WriteData(std::ostream& stream) {
    stream << type;
    if (type.value == sectionOpenFolder || type.value == sectionClosedFolder) {
        stream << blendSignature << blendKey;
    }
}

PSDUnicodeLayerName::PSDUnicodeLayerName(std::u16string layerName)
    : PSDLayerRecordExtraDataResourceBlock(FourCharCode("luni")), name(std::move(layerName)) {}

void PSDUnicodeLayerName::WriteData(std::ostream& stream) {
    stream << PSint32(static_cast<std::uint32_t>(name.size()));
    for (const char16_t unit : name) {
        stream << PSint16(unit);
    }
}

}  // namespace psdfile

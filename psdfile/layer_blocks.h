// Additional layer information: blocks of a signature, a key and data at the end of a layer record.
#pragma once

#include <cstdint>
#include <string>

#include "psdfile/blend_keys.h"
#include "psdfile/four_char_code.h"
#include "psdfile/part.h"
#include "psdfile/part_list.h"
#include "psdfile/primitives.h"

namespace psdfile {

// Signature, key, 4-byte length (in PSB too), data. The data is padded to a multiple of 4, and the
// length counts the padding.
class PSDLayerRecordExtraDataResourceBlock : public PSDPart {
  public:
    void WriteBody(std::ostream& stream) override;
    virtual void WriteData(std::ostream& stream) = 0;

    PSint32 signature{FourCharCode("8BIM")};
    PSint32 key;

  protected:
    PSDLayerRecordExtraDataResourceBlock() = default;
    explicit PSDLayerRecordExtraDataResourceBlock(std::uint32_t blockKey) : key(blockKey) {}
};

// A block whose data is a plain sequence of parts.
class PSDLREDRB_Base : public PSDLayerRecordExtraDataResourceBlock {
  public:
    PSDLREDRB_Base() = default;
    explicit PSDLREDRB_Base(std::uint32_t blockKey)
        : PSDLayerRecordExtraDataResourceBlock(blockKey) {}

    void WriteData(std::ostream& stream) override;

    PSDPartList list;
};

enum PSDSectionDividerType : std::uint32_t {
    sectionOpenFolder = 1,
    sectionClosedFolder = 2,
    sectionEnd = 3,
};

// Makes a layer record the opening or the closing record of a layer set.
class PSDSectionDivider : public PSDLayerRecordExtraDataResourceBlock {
  public:
    explicit PSDSectionDivider(std::uint32_t dividerType = sectionClosedFolder,
                               std::uint32_t blend = blendKeyPassThrough);

    void WriteData(std::ostream& stream) override;

    PSint32 blendSignature{FourCharCode("8BIM")};
    PSint32 blendKey;  // of the set; not written with sectionEnd
    PSint32 type;
};

// The layer's name in UTF-16.
class PSDUnicodeLayerName : public PSDLayerRecordExtraDataResourceBlock {
  public:
    explicit PSDUnicodeLayerName(std::u16string layerName);

    void WriteData(std::ostream& stream) override;

    std::u16string name;
};

}  // namespace psdfile

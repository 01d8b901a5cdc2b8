// A layer as the layer section describes it; its pixels follow later, in the section's channels.
#pragma once

#include <cstdint>

#include "psdfile/blend_keys.h"
#include "psdfile/channel_image_data.h"
#include "psdfile/layer_blocks.h"
#include "psdfile/part.h"
#include "psdfile/part_list.h"
#include "psdfile/primitives.h"
#include "psdfile/text.h"

namespace psdfile {

inline constexpr std::int16_t channelRed = 0;
inline constexpr std::int16_t channelGreen = 1;
inline constexpr std::int16_t channelBlue = 2;
inline constexpr std::int16_t channelTransparency = -1;
inline constexpr std::int16_t channelLayerMask = -2;

// Which channel, and how long its data is. The length is a zero that PSDLayersInfo patches.
class PSDChannelInfo : public PSDPart {
  public:
    PSDChannelInfo(std::int16_t channelID, PSDChannelImageData* channelData)
        : id(static_cast<std::uint16_t>(channelID)), data(channelData) {}

    // Leaves the place of the length in data->lengthPosition.
    void WriteBody(std::ostream& stream) override;

    PSint16 id;
    std::uint64_t length = 0;
    PSDChannelImageData* data;  // not owned, may be null
};

// 20 bytes if the layer has a mask, else none.
class PSDLayerMaskData : public PSDPart {
  public:
    PSDLayerMaskData() { writeOuterLength = true; }

    void WriteBody(std::ostream& stream) override;

    static constexpr std::uint8_t flagDisabled = 2;

    bool present = false;
    PSint32 top;
    PSint32 left;
    PSint32 bottom;
    PSint32 right;
    PSint8 defaultColor;  // of the pixels outside the rectangle
    PSint8 flags;
    PSint16 padding;
};

// Source and destination ranges that leave blending as it is.
class PSDLayerBlendingRange : public PSDPart {
  public:
    void WriteBody(std::ostream& stream) override;

    PSint16 sourceBlack{0};
    PSint16 sourceWhite{65535};
    PSint16 destinationBlack{0};
    PSint16 destinationWhite{65535};
};

class PSDLayerRecordExtraData : public PSDPart {
  public:
    PSDLayerRecordExtraData();

    void WriteBody(std::ostream& stream) override;

    PSDLayerMaskData mask;
    PSDPartList ranges;  // 5 PSDLayerBlendingRange
    PSString name;       // Pascal string padded to 4 bytes
    SharedPSDPartList blocks;
};

class PSDLayerRecord : public PSDPart {
  public:
    void WriteBody(std::ostream& stream) override;

    PSint32 top{0};
    PSint32 left{0};
    PSint32 bottom{1};
    PSint32 right{1};
    PSDPartList channelInfos;  // PSDChannelInfo, in the order of the channels' data
    PSint32 signature{FourCharCode("8BIM")};
    PSint32 blendKey{blendKeyNormal};
    PSint8 opacity{255};
    PSint8 clipping{0};  // 1: clipped to the layer below
    PSint8 flags{0};     // bit 1: hidden
    PSDLayerRecordExtraData extraData;
};

}  // namespace psdfile

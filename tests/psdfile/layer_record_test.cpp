// A layer record and its parts, down to the bytes.

#include "psdfile/layer_record.h"

#include <gtest/gtest.h>

#include <boost/make_shared.hpp>
#include <sstream>

#include "tests/documents/written_bytes.h"

namespace psdfile {
namespace {

std::string Ranges() {
    std::string text = "00 00 00 28";
    for (int i = 0; i < 10; ++i) {
        text += " 00 00 FF FF";
    }
    return text;
}

TEST(ChannelInfo, HasALengthOf4BytesAndOf8InPSBMode) {
    EXPECT_EQ(WrittenHex(PSDChannelInfo(channelLayerMask, nullptr)), "FF FE 00 00 00 00");
    EXPECT_EQ(WrittenHex(PSDChannelInfo(channelBlue, nullptr), true),
              "00 02 00 00 00 00 00 00 00 00");
}

TEST(ChannelInfo, LeavesThePlaceOfItsLengthInItsData) {
    PSDChannelImageData data(0, 0, 8, 0, nullptr, true);
    PSDChannelInfo info(channelTransparency, &data);
    std::stringstream stream;
    stream << "abc" << info;
    EXPECT_EQ(Hex(stream.str()), "61 62 63 FF FF 00 00 00 00");
    EXPECT_EQ(data.lengthPosition, 5);
}

TEST(LayerMaskData, IsAZeroLengthWithoutAMask) {
    EXPECT_EQ(WrittenHex(PSDLayerMaskData()), "00 00 00 00");
    EXPECT_EQ(WrittenHex(PSDLayerMaskData(), true), "00 00 00 00");
}

TEST(LayerMaskData, Has20BytesWithAMask) {
    PSDLayerMaskData mask;
    mask.present = true;
    mask.top.value = 1;
    mask.left.value = 2;
    mask.bottom.value = 3;
    mask.right.value = 4;
    mask.defaultColor.value = 255;
    mask.flags.value = PSDLayerMaskData::flagDisabled;
    EXPECT_EQ(WrittenHex(mask),
              "00 00 00 14 00 00 00 01 00 00 00 02 00 00 00 03 00 00 00 04 FF 02 00 00");
}

TEST(LayerBlendingRange, LeavesBlendingAsItIs) {
    EXPECT_EQ(WrittenHex(PSDLayerBlendingRange()), "00 00 FF FF 00 00 FF FF");
}

TEST(LayerExtraData, OfAnEmptyNameHasFourZeroBytesForIt) {
    EXPECT_EQ(WrittenHex(PSDLayerRecordExtraData()),
              "00 00 00 34 00 00 00 00 " + Ranges() + " 00 00 00 00");
}

TEST(LayerExtraData, PadsTheNameToFourBytes) {
    PSDLayerRecordExtraData extra;
    extra.name.text = "ab";
    EXPECT_EQ(WrittenHex(extra), "00 00 00 34 00 00 00 00 " + Ranges() + " 02 61 62 00");
    extra.name.text = "abcd";
    EXPECT_EQ(WrittenHex(extra),
              "00 00 00 38 00 00 00 00 " + Ranges() + " 04 61 62 63 64 00 00 00");
}

TEST(LayerExtraData, EndsWithItsBlocksAndKeepsAFourByteLengthInPSBMode) {
    PSDLayerRecordExtraData extra;
    extra.blocks.Add(boost::make_shared<PSDSectionDivider>(sectionEnd));
    EXPECT_EQ(WrittenHex(extra, true), "00 00 00 44 00 00 00 00 " + Ranges() +
                                           " 00 00 00 00 38 42 49 4D 6C 73 63 74 00 00 00 04 00 00 "
                                           "00 03");
}

TEST(LayerRecord, HasItsFieldsInOrderWithTheirDefaults) {
    EXPECT_EQ(WrittenHex(PSDLayerRecord()),
              "00 00 00 00 00 00 00 00 00 00 00 01 00 00 00 01 00 00 38 42 49 4D 6E 6F 72 6D FF 00 "
              "00 00 00 00 00 34 00 00 00 00 " +
                  Ranges() + " 00 00 00 00");
}

TEST(LayerRecord, CountsItsChannels) {
    PSDLayerRecord record;
    record.top.value = 1;
    record.left.value = 2;
    record.bottom.value = 3;
    record.right.value = 4;
    record.blendKey.value = FourCharCode("mul ");
    record.clipping.value = 1;
    record.flags.value = 2;
    record.channelInfos.Add<PSDChannelInfo>(channelRed, nullptr);
    record.channelInfos.AddFront<PSDChannelInfo>(channelTransparency, nullptr);
    EXPECT_EQ(WrittenHex(record),
              "00 00 00 01 00 00 00 02 00 00 00 03 00 00 00 04 00 02 FF FF 00 00 00 00 00 00 00 00 "
              "00 00 38 42 49 4D 6D 75 6C 20 FF 01 02 00 00 00 00 34 00 00 00 00 " +
                  Ranges() + " 00 00 00 00");
}

}  // namespace
}  // namespace psdfile

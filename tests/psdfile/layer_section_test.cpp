// The layer section at each depth, in both formats.

#include "psdfile/layer_section.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "psdfile/layer_record.h"
#include "tests/documents/test_sources.h"
#include "tests/documents/written_bytes.h"

namespace psdfile {
namespace {

// One record with one channel of 1 pixel, or none if width is 0.
void AddRecord(PSDLayersInfo& info, std::uint8_t depth, std::uint32_t width = 1) {
    auto& record = info.records.Add<PSDLayerRecord>();
    auto& channel = info.channels.Add<PSDChannelImageData>(
        width, width, depth, compressionRaw, width > 0 ? Flat(width, 5) : nullptr, true);
    record.channelInfos.Add<PSDChannelInfo>(channelRed, &channel);
}

// The record of AddRecord behind its channel's length.
std::string RecordTail(const std::string& clipping = "00") {
    std::string text =
        " 38 42 49 4D 6E 6F 72 6D FF " + clipping + " 00 00 00 00 00 34 00 00 00 00 00 00 00 28";
    for (int i = 0; i < 10; ++i) {
        text += " 00 00 FF FF";
    }
    return text + " 00 00 00 00";
}

const std::string recordHead = "00 00 00 00 00 00 00 00 00 00 00 01 00 00 00 01 00 01 00 00";

TEST(LayersInfo, PatchesTheLengthOfEachChannelIntoItsRecord) {
    PSDLayersInfo info;
    AddRecord(info, 8);
    AddRecord(info, 8, 0);
    // 2 bytes of count, twice 92 of a record, 3 and 2 of channels, 1 of padding.
    EXPECT_EQ(WrittenHex(info), "00 00 00 C0 00 02 " + recordHead + " 00 00 00 03" + RecordTail() +
                                    " " + recordHead + " 00 00 00 02" + RecordTail() +
                                    " 00 00 05 00 00 00");
}

TEST(LayersInfo, HasWideLengthsInPSBMode) {
    PSDLayersInfo info;
    AddRecord(info, 8);
    EXPECT_EQ(WrittenHex(info, true), "00 00 00 00 00 00 00 66 00 01 " + recordHead +
                                          " 00 00 00 00 00 00 00 03" + RecordTail() +
                                          " 00 00 05 00");
}

TEST(LayersInfo, NegatesItsCountWithMergedTransparency) {
    PSDLayersInfo info;
    info.hasMergedTransparency = true;
    AddRecord(info, 8);
    EXPECT_EQ(WrittenHex(info).substr(0, 17), "00 00 00 62 FF FF");
}

TEST(LayersInfo, TakesTheClippingOffTheBottomLayerOnly) {
    PSDLayersInfo info;
    AddRecord(info, 8);
    AddRecord(info, 8);
    info.records.ItemAs<PSDLayerRecord>(0).clipping.value = 1;
    info.records.ItemAs<PSDLayerRecord>(1).clipping.value = 1;
    EXPECT_EQ(WrittenHex(info), "00 00 00 C0 00 02 " + recordHead + " 00 00 00 03" + RecordTail() +
                                    " " + recordHead + " 00 00 00 03" + RecordTail("01") +
                                    " 00 00 05 00 00 05");
}

TEST(LayersInfo, TellsItsProgressBeforeEachChannelAndAtTheEnd) {
    class LayerCalls : public PSDWriteProgressCallback {
      public:
        void LayerProgress(int done, int total) override { calls.emplace_back(done, total); }
        void ImageProgress(int /*done*/, int /*total*/) override { FAIL() << "no image here"; }
        std::vector<std::pair<int, int>> calls;
    };
    LayerCalls progress;
    PSDLayersInfo info;
    info.progress = &progress;
    AddRecord(info, 8);
    AddRecord(info, 8);
    WrittenHex(info);
    EXPECT_THAT(progress.calls,
                testing::ElementsAre(std::pair(0, 2), std::pair(1, 2), std::pair(2, 2)));
}

TEST(GlobalLayerMaskInfo, IsFixedWithALengthThatIsWideInPSBMode) {
    const std::string body = " 00 00 FF FF 00 00 00 00 00 00 00 32 80 00";
    EXPECT_EQ(WrittenHex(PSDGlobalLayerMaskInfo()), "00 00 00 0E" + body);
    EXPECT_EQ(WrittenHex(PSDGlobalLayerMaskInfo(), true), "00 00 00 00 00 00 00 0E" + body);
}

TEST(LayerSection, WithoutLayersIsAZeroLength) {
    EXPECT_EQ(WrittenHex(PSDLayerAndMaskInformation()), "00 00 00 00");
    EXPECT_EQ(WrittenHex(PSDLayerAndMaskInformation(), true), "00 00 00 00 00 00 00 00");
}

TEST(LayerSection, At8BitsIsTheLayersAndTheGlobalMask) {
    PSDLayerAndMaskInformation section;
    AddRecord(section.layersInfo, 8);
    EXPECT_EQ(WrittenHex(section), "00 00 00 78 " + WrittenHex(section.layersInfo) + " " +
                                       WrittenHex(section.globalMask));
    EXPECT_EQ(WrittenHex(section, true), "00 00 00 00 00 00 00 84 " +
                                             WrittenHex(section.layersInfo, true) + " " +
                                             WrittenHex(section.globalMask, true));
}

TEST(LayerSection, At16BitsBeginsWithEightZerosAndATaggedBlock) {
    PSDLayerAndMaskInformation section;
    AddRecord(section.layersInfo, 16);
    // The layers, 2 + 92 + 4 bytes behind their length, need 2 of padding; so does the mask.
    EXPECT_EQ(WrittenHex(section), "00 00 00 94 00 00 00 00 00 00 00 00 38 42 49 4D 4C 72 31 36 " +
                                       WrittenHex(section.layersInfo) +
                                       " 00 00 38 42 49 4D 4C 4D 73 6B " +
                                       WrittenHex(section.globalMask) + " 00 00");
}

TEST(LayerSection, At32BitsInPSBModeBeginsWithTwelveZerosAndAWideTaggedBlock) {
    PSDLayerAndMaskInformation section;
    AddRecord(section.layersInfo, 32);
    // 8 + 2 + 96 + 6 bytes of layers need no padding.
    EXPECT_EQ(
        WrittenHex(section, true),
        "00 00 00 00 00 00 00 A4 00 00 00 00 00 00 00 00 00 00 00 00 38 42 36 34 4C 72 33 32 " +
            WrittenHex(section.layersInfo, true) + " 38 42 49 4D 4C 4D 73 6B " +
            WrittenHex(section.globalMask, true) + " 00 00");
}

TEST(LayerSection, TakesItsDepthFromTheFirstChannelInTheFile) {
    PSDLayerAndMaskInformation section;
    AddRecord(section.layersInfo, 8, 0);
    AddRecord(section.layersInfo, 16);
    EXPECT_EQ(WrittenHex(section).find("4C 72 31 36"), std::string::npos);
}

}  // namespace
}  // namespace psdfile

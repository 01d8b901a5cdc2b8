// The operations that fill a file, and whole documents read back by an independent walker.

#include "psdfile/file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <boost/make_shared.hpp>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include "psdfile/channel_image_data.h"
#include "psdfile/stream_state.h"
#include "tests/documents/counting_stream.h"
#include "tests/documents/section_walker.h"
#include "tests/documents/test_sources.h"
#include "tests/documents/written_bytes.h"

namespace psdfile {
namespace {

using testing::ElementsAre;

constexpr std::uint32_t normal = blendKeyNormal;

PSDFile SmallFile(std::uint8_t depth, std::uint16_t compression, std::uint16_t version = 1) {
    return PSDFile(5, 3, depth, 72, 1, compression, version, false);
}

PSDChannelImageDataSourcePtr Pixels(std::uint32_t seed) {
    return Pattern(5, 3, seed);
}

void AddOpaqueLayer(PSDFile& file, const char* name,
                    const PSDChannelImageDataSourcePtr& mask = {}) {
    file.AddLayer(name, nullptr, normal, 0, Pixels(1), Pixels(2), Pixels(3), {}, mask, true, false);
}

PSDLayerRecord& Record(PSDFile& file, std::size_t index) {
    return file.layers.layersInfo.records.ItemAs<PSDLayerRecord>(index);
}

std::vector<int> ChannelIDs(PSDLayerRecord& record) {
    std::vector<int> ids;
    for (std::size_t i = 0; i < record.channelInfos.Count(); ++i) {
        ids.push_back(
            static_cast<std::int16_t>(record.channelInfos.ItemAs<PSDChannelInfo>(i).id.value));
    }
    return ids;
}

WalkedDocument Walk(PSDFile& file, bool psb = false) {
    return WalkDocument(WrittenBytes(file, psb), psb);
}

std::vector<int> ResourceIDs(const WalkedDocument& document) {
    std::vector<int> ids;
    for (const WalkedResource& resource : document.resources) {
        ids.push_back(resource.id);
    }
    return ids;
}

// What the pixels of Pattern look like at a depth, big-endian.
std::string Expected(std::uint32_t seed, int depth) {
    std::string bytes;
    const auto source = Pattern(5, 3, seed);
    for (std::uint32_t y = 0; y < 3; ++y) {
        for (const std::uint8_t pixel : source->rows[y]) {
            if (depth == 32) {
                PSfloat16 sample(static_cast<float>(pixel) / 255.0F);
                bytes += WrittenBytes(sample);
            } else {
                bytes.append(static_cast<std::size_t>(depth) / 8, static_cast<char>(pixel));
            }
        }
    }
    return bytes;
}

TEST(File, WithASideAbove30000BecomesVersion2) {
    EXPECT_EQ(PSDFile(30000, 30000, 8, 72, 1, 0, 1, false).header.version, 1);
    EXPECT_EQ(PSDFile(30001, 30000, 8, 72, 1, 0, 1, false).header.version, 2);
    EXPECT_EQ(PSDFile(30000, 30001, 8, 72, 1, 0, 1, false).header.version, 2);
    EXPECT_EQ(PSDFile(10, 10, 8, 72, 1, 0, 2, false).header.version, 2);
}

TEST(File, ChoosesTheMergedCompressionByDepth) {
    const auto merged = [](std::uint8_t depth, std::uint16_t compression, bool noRle) {
        return PSDFile(1, 1, depth, 72, 1, compression, 1, noRle).image.compression.value;
    };
    for (const bool noRle : {false, true}) {
        EXPECT_EQ(merged(8, 0, noRle), 0);
        EXPECT_EQ(merged(8, 1, noRle), 1);
        EXPECT_EQ(merged(8, 2, noRle), 0);
        EXPECT_EQ(merged(8, 3, noRle), 0);
        EXPECT_EQ(merged(16, 0, noRle), 0);
        for (std::uint16_t compression = 0; compression <= 3; ++compression) {
            EXPECT_EQ(merged(32, compression, noRle), 0);
        }
    }
    for (std::uint16_t compression = 1; compression <= 3; ++compression) {
        EXPECT_EQ(merged(16, compression, false), 1);
        EXPECT_EQ(merged(16, compression, true), 0);
    }
}

TEST(File, ChoosesTheLayersCompressionByDepth) {
    const auto layer = [](std::uint8_t depth, std::uint16_t compression) {
        PSDFile file = SmallFile(depth, compression);
        AddOpaqueLayer(file, "a");
        return file.layers.layersInfo.channels.ItemAs<PSDChannelImageData>(0).compression.value;
    };
    EXPECT_EQ(layer(8, 0), 0);
    EXPECT_EQ(layer(8, 1), 1);
    EXPECT_EQ(layer(8, 2), 0);
    EXPECT_EQ(layer(8, 3), 0);
    for (const std::uint8_t depth : {std::uint8_t{16}, std::uint8_t{32}}) {
        EXPECT_EQ(layer(depth, 0), 0);
        EXPECT_EQ(layer(depth, 1), 0);
        EXPECT_EQ(layer(depth, 2), 2);
        EXPECT_EQ(layer(depth, 3), 3);
        EXPECT_EQ(layer(depth, 4), 0);
    }
}

TEST(File, WithoutLayersAndMergedImageHasFiveSectionsAll) {
    PSDFile file(2, 3, 8, 72, 1, 0, 1, false);
    EXPECT_EQ(WrittenHex(file),
              "38 42 50 53 00 01 00 00 00 00 00 00 00 03 00 00 00 03 00 00 00 02 00 08 00 03 "
              "00 00 00 00 "
              "00 00 00 42 38 42 49 4D 04 0A 00 00 00 00 00 01 00 00 "
              "38 42 49 4D 03 ED 00 00 00 00 00 10 00 48 00 00 00 01 00 02 00 48 00 00 00 01 00 02 "
              "38 42 49 4D 04 28 00 00 00 00 00 0C 00 00 00 01 3F F0 00 00 00 00 00 00 "
              "00 00 00 00 "
              "00 00");
}

TEST(File, OnAStreamInPSBModeBecomesVersion2) {
    PSDFile file(2, 3, 8, 72, 1, 0, 1, false);
    const std::string bytes = WrittenBytes(file, true);
    EXPECT_EQ(Hex(bytes.substr(0, 6)), "38 42 50 53 00 02");
    // The empty layer section has 8 bytes there, the resources' length 4 as ever.
    EXPECT_EQ(Hex(bytes.substr(30, 4)), "00 00 00 42");
    EXPECT_EQ(Hex(bytes.substr(100)), "00 00 00 00 00 00 00 00 00 00");
}

TEST(File, MayBeWrittenInBothFormatsOneAfterTheOther) {
    PSDFile file = SmallFile(8, 1);
    AddOpaqueLayer(file, "a");
    file.SetImageData(true, Pixels(1), Pixels(2), Pixels(3), {});
    const WalkedDocument small = Walk(file);
    const WalkedDocument large = Walk(file, true);
    EXPECT_FALSE(small.psb);
    EXPECT_TRUE(large.psb);
    EXPECT_EQ(small.imageChannels, large.imageChannels);
    EXPECT_EQ(small.layers.at(0).channels.at(0).pixels, large.layers.at(0).channels.at(0).pixels);
}

TEST(AddLayer, WithoutOneOfRedGreenAndBlueAddsNothing) {
    PSDFile file = SmallFile(8, 0);
    for (int missing = 0; missing < 3; ++missing) {
        file.AddLayer("a", u"a", normal, 0, missing == 0 ? nullptr : Pixels(1),
                      missing == 1 ? nullptr : Pixels(1), missing == 2 ? nullptr : Pixels(1),
                      Pixels(1), Pixels(1), true, false);
    }
    EXPECT_EQ(file.layers.layersInfo.records.Count(), 0U);
    EXPECT_EQ(file.layers.layersInfo.channels.Count(), 0U);
}

TEST(AddLayer, PutsTheLastLayerFirstIntoTheFile) {
    PSDFile file = SmallFile(8, 1);
    AddOpaqueLayer(file, "top");
    AddOpaqueLayer(file, "bottom");
    const WalkedDocument document = Walk(file);
    ASSERT_EQ(document.layers.size(), 2U);
    EXPECT_EQ(document.layers[0].name, "bottom");
    EXPECT_EQ(document.layers[1].name, "top");
}

TEST(AddLayer, OrdersTheChannelsAlphaRedGreenBlueMask) {
    PSDFile file = SmallFile(8, 1);
    file.AddLayer("a", u"wide", FourCharCode("mul "), 2, Pixels(1), Pixels(2), Pixels(3), Pixels(4),
                  Pixels(5), true, true);
    AddOpaqueLayer(file, "below");
    const WalkedDocument document = Walk(file);
    const WalkedLayer& layer = document.layers.at(1);
    ASSERT_EQ(layer.channels.size(), 5U);
    const int ids[] = {-1, 0, 1, 2, -2};
    const std::uint32_t seeds[] = {4, 1, 2, 3, 5};
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(layer.channels[i].id, ids[i]);
        EXPECT_EQ(Hex(layer.channels[i].pixels), Hex(Expected(seeds[i], 8))) << ids[i];
    }
    EXPECT_EQ(layer.blendKey, "mul ");
    EXPECT_EQ(layer.flags, 2);
    EXPECT_EQ(layer.opacity, 255);
    EXPECT_EQ(layer.clipping, 1);
    EXPECT_EQ(std::tie(layer.top, layer.left, layer.bottom, layer.right),
              std::make_tuple(0, 0, 3, 5));
    EXPECT_TRUE(layer.hasMask);
    EXPECT_EQ(std::tie(layer.maskTop, layer.maskLeft, layer.maskBottom, layer.maskRight),
              std::make_tuple(0, 0, 3, 5));
    EXPECT_EQ(layer.maskFlags, 0);
    EXPECT_EQ(layer.maskColor, 0);
    EXPECT_EQ(Hex(layer.blocks.at("luni")), "00 00 00 04 00 77 00 69 00 64 00 65");
}

TEST(AddLayer, WithoutAlphaReplacesTheFlagsBy1) {
    PSDFile file = SmallFile(8, 0);
    file.AddLayer("a", nullptr, normal, 2, Pixels(1), Pixels(2), Pixels(3), {}, {}, true, false);
    EXPECT_EQ(Record(file, 0).flags.value, 1);
    EXPECT_THAT(ChannelIDs(Record(file, 0)), ElementsAre(0, 1, 2));
}

TEST(AddLayer, WithoutAWideNameHasNoBlockForIt) {
    PSDFile file = SmallFile(8, 0);
    file.AddLayer("a", u"", normal, 0, Pixels(1), Pixels(2), Pixels(3), {}, {}, true, false);
    AddOpaqueLayer(file, "b");
    EXPECT_EQ(Record(file, 0).extraData.blocks.Count(), 0U);
    EXPECT_EQ(Record(file, 1).extraData.blocks.Count(), 0U);
}

TEST(AddLayer, AtTheBottomComesOutUnclipped) {
    PSDFile file = SmallFile(8, 0);
    for (const char* name : {"top", "bottom"}) {
        file.AddLayer(name, nullptr, normal, 0, Pixels(1), Pixels(2), Pixels(3), {}, {}, true,
                      true);
    }
    const WalkedDocument document = Walk(file);
    EXPECT_EQ(document.layers.at(0).name, "bottom");
    EXPECT_EQ(document.layers.at(0).clipping, 0);
    EXPECT_EQ(document.layers.at(1).clipping, 1);
}

TEST(AddLayer, WithASolidMaskHasItsValueAsColourAndNoMaskPixels) {
    for (const std::uint8_t depth : {std::uint8_t{8}, std::uint8_t{16}, std::uint8_t{32}}) {
        PSDFile file = SmallFile(depth, 3);
        AddOpaqueLayer(file, "a", Solid(5, 255));
        const WalkedDocument document = Walk(file);
        const WalkedLayer& layer = document.layers.at(0);
        EXPECT_EQ(layer.maskColor, 255);
        EXPECT_EQ(std::tie(layer.maskTop, layer.maskLeft, layer.maskBottom, layer.maskRight),
                  std::make_tuple(0, 0, 0, 0));
        // The walker took 2 bytes for it: the compression field.
        EXPECT_EQ(layer.channels.back().id, -2);
        EXPECT_EQ(layer.channels.back().compression, 0);
        EXPECT_EQ(layer.channels.back().pixels, "");
    }
}

TEST(AddLayer, WithADisabledMaskSaysSo) {
    PSDFile file = SmallFile(8, 0);
    file.AddLayer("a", nullptr, normal, 0, Pixels(1), Pixels(2), Pixels(3), {}, Pixels(4), false,
                  false);
    EXPECT_EQ(Walk(file).layers.at(0).maskFlags, 2);
}

TEST(AddAdjustmentLayer, HasItsBlockBeforeTheNameAndNoPixels) {
    PSDFile file = SmallFile(8, 1);
    auto block = boost::make_shared<PSDLREDRB_Base>(FourCharCode("curv"));
    block->list.Add<PSint32>(0x01020304U);
    file.AddAdjustmentLayer("a", u"wide", FourCharCode("scrn"), 2, block, {}, true, true);
    AddOpaqueLayer(file, "below");
    EXPECT_THAT(ChannelIDs(Record(file, 1)), ElementsAre(2, 1, 0, -1));
    const WalkedLayer layer = Walk(file).layers.at(1);
    EXPECT_THAT(layer.blockKeys, ElementsAre("curv", "luni"));
    EXPECT_EQ(Hex(layer.blocks.at("curv")), "01 02 03 04");
    EXPECT_EQ(layer.blendKey, "scrn");
    EXPECT_EQ(layer.flags, 2);
    EXPECT_EQ(layer.clipping, 1);
    EXPECT_EQ(std::tie(layer.top, layer.left, layer.bottom, layer.right),
              std::make_tuple(0, 0, 0, 0));
}

TEST(AddAdjustmentLayer, HasItsMaskLast) {
    PSDFile file = SmallFile(8, 1);
    file.AddAdjustmentLayer("a", nullptr, normal, 0,
                            boost::make_shared<PSDLREDRB_Base>(FourCharCode("curv")), Pixels(7),
                            true, false);
    EXPECT_THAT(ChannelIDs(Record(file, 0)), ElementsAre(2, 1, 0, -1, -2));
    EXPECT_EQ(Hex(Walk(file).layers.at(0).channels.at(4).pixels), Hex(Expected(7, 8)));
}

TEST(LayerSet, OfOneLayerIsThreeRecordsWithTheClosingOneFirst) {
    PSDFile file = SmallFile(8, 1);
    file.AddLayerSet("set", u"Set", FourCharCode("mul "), 2, true, {}, true);
    AddOpaqueLayer(file, "layer");
    file.EndLayerSet();
    const WalkedDocument document = Walk(file);
    ASSERT_EQ(document.layers.size(), 3U);
    const WalkedLayer& closing = document.layers[0];
    const WalkedLayer& opening = document.layers[2];
    EXPECT_EQ(closing.name, "</Layer set>");
    EXPECT_THAT(closing.blockKeys, ElementsAre("lsct", "luni"));
    EXPECT_EQ(Hex(closing.blocks.at("lsct")), "00 00 00 03");
    EXPECT_EQ(
        Hex(closing.blocks.at("luni")),
        "00 00 00 0C 00 3C 00 2F 00 4C 00 61 00 79 00 65 00 72 00 20 00 73 00 65 00 74 00 3E");
    EXPECT_EQ(closing.blendKey, "norm");
    EXPECT_EQ(closing.flags, 0);
    EXPECT_EQ(document.layers[1].name, "layer");
    EXPECT_EQ(opening.name, "set");
    EXPECT_THAT(opening.blockKeys, ElementsAre("lsct", "luni"));
    EXPECT_EQ(Hex(opening.blocks.at("lsct")), "00 00 00 01 38 42 49 4D 6D 75 6C 20");
    EXPECT_EQ(opening.blendKey, "norm");
    EXPECT_EQ(opening.flags, 2);
    for (const WalkedLayer* layer : {&closing, &opening}) {
        EXPECT_EQ(std::tie(layer->top, layer->left, layer->bottom, layer->right),
                  std::make_tuple(0, 0, 0, 0));
        ASSERT_EQ(layer->channels.size(), 4U);
        EXPECT_EQ(layer->channels[0].id, 2);
        EXPECT_EQ(layer->channels[3].id, -1);
    }
}

TEST(LayerSet, ThatIsClosedHasType2AndMayHaveAMask) {
    PSDFile file = SmallFile(8, 1);
    file.AddLayerSet("set", nullptr, blendKeyPassThrough, 0, false, Pixels(6), false);
    file.EndLayerSet();
    const WalkedLayer opening = Walk(file).layers.at(1);
    EXPECT_THAT(opening.blockKeys, ElementsAre("lsct"));
    EXPECT_EQ(Hex(opening.blocks.at("lsct")), "00 00 00 02 38 42 49 4D 70 61 73 73");
    ASSERT_EQ(opening.channels.size(), 5U);
    EXPECT_EQ(opening.channels[4].id, -2);
    EXPECT_EQ(Hex(opening.channels[4].pixels), Hex(Expected(6, 8)));
    EXPECT_EQ(opening.maskFlags, 2);
}

TEST(SetImageData, WithoutOneOfRedGreenAndBlueDoesNothing) {
    PSDFile file = SmallFile(8, 0);
    file.SetImageData(true, Pixels(1), {}, Pixels(3), Pixels(4));
    EXPECT_EQ(file.image.channels.Count(), 0U);
    EXPECT_EQ(file.header.channels, 3);
    EXPECT_THAT(ResourceIDs(Walk(file)), ElementsAre(1034, 1005, 1064));
}

TEST(SetImageData, PutsRedGreenBlueBeforeAlphaChannelsThatWereThereFirst) {
    PSDFile file = SmallFile(8, 1);
    file.AddAlphaChannel("extra", nullptr, Pixels(5));
    file.SetImageData(false, Pixels(1), Pixels(2), Pixels(3), Pixels(4));
    const WalkedDocument document = Walk(file);
    EXPECT_EQ(document.channelCount, 5);
    std::vector<std::string> expected;
    for (const std::uint32_t seed : {1U, 2U, 3U, 5U, 4U}) {
        expected.push_back(Expected(seed, 8));
    }
    EXPECT_EQ(document.imageChannels, expected);
}

TEST(SetImageData, WithAlphaMarksTheLayersAndNamesTheChannel) {
    PSDFile file = SmallFile(8, 1);
    AddOpaqueLayer(file, "a");
    file.SetImageData(true, Pixels(1), Pixels(2), Pixels(3), Pixels(4));
    const WalkedDocument document = Walk(file);
    EXPECT_TRUE(document.mergedTransparency);
    EXPECT_EQ(document.channelCount, 4);
    EXPECT_THAT(ResourceIDs(document), ElementsAre(1034, 1005, 1064, 1057, 1006, 1045));
    EXPECT_EQ(document.resources[4].data, "\x0CTransparency");
    EXPECT_EQ(Hex(document.resources[5].data),
              "00 00 00 0D 00 54 00 72 00 61 00 6E 00 73 00 70 00 61 00 72 00 65 00 6E 00 63 00 79 "
              "00 00");
}

TEST(SetImageData, WithoutAlphaLeavesTheLayersUnmarked) {
    PSDFile file = SmallFile(8, 1);
    AddOpaqueLayer(file, "a");
    file.SetImageData(true, Pixels(1), Pixels(2), Pixels(3), {});
    EXPECT_FALSE(Walk(file).mergedTransparency);
}

TEST(SetImageData, SaysWhoWroteTheFileAndWhetherThePictureIsReal) {
    const std::string names =
        "00 00 00 0B 00 4C 00 6F 00 6F 00 6D 00 66 00 69 00 6C 00 65 00 4B 00 69 00 74 "
        "00 00 00 0B 00 4C 00 6F 00 6F 00 6D 00 66 00 69 00 6C 00 65 00 4B 00 69 00 74 "
        "00 00 00 01";
    for (const bool real : {false, true}) {
        PSDFile file = SmallFile(8, 0);
        file.SetImageData(real, Pixels(1), Pixels(2), Pixels(3), {});
        const WalkedResource version = Walk(file).resources.at(3);
        EXPECT_EQ(version.id, 1057);
        EXPECT_EQ(Hex(version.data), (real ? "00 00 00 01 01 " : "00 00 00 01 00 ") + names);
    }
}

TEST(AddAlphaChannel, WithoutAWideNameLeavesAllWideNamesOut) {
    PSDFile file = SmallFile(8, 1);
    file.SetImageData(true, Pixels(1), Pixels(2), Pixels(3), {});
    file.AddAlphaChannel("one", u"one", Pixels(4));
    file.AddAlphaChannel("two", nullptr, Pixels(5));
    const WalkedDocument document = Walk(file);
    EXPECT_EQ(document.channelCount, 5);
    EXPECT_THAT(ResourceIDs(document), ElementsAre(1034, 1005, 1064, 1057, 1006));
    EXPECT_EQ(document.resources.back().data, "\x03one\x03two");
}

TEST(AddImageResource, PutsTheBlockBehindThoseBefore) {
    PSDFile file = SmallFile(8, 0);
    auto block = boost::make_shared<PSDImageResourceBlock>(std::uint16_t{30000}, "helper");
    block->signature.value = FourCharCode("abcd");
    file.AddImageResource(block);
    file.AddAlphaChannel("a", u"a", Pixels(1));
    file.SetImageData(true, Pixels(1), Pixels(2), Pixels(3), {});
    const WalkedDocument document = Walk(file);
    EXPECT_THAT(ResourceIDs(document), ElementsAre(1034, 1005, 1064, 30000, 1057, 1006, 1045));
    EXPECT_EQ(document.resources[3].signature, "abcd");
    EXPECT_EQ(document.resources[3].name, "helper");
}

TEST(AddThumbnail, AddsAnUncompressedThumbnail) {
    PSDFile file = SmallFile(8, 0);
    file.AddThumbnail(2, 1, Flat(2, 1), Flat(2, 2), Flat(2, 3));
    file.AddThumbnail(2, 1, Flat(2, 1), {}, Flat(2, 3));
    const WalkedDocument document = Walk(file);
    EXPECT_THAT(ResourceIDs(document), ElementsAre(1034, 1005, 1064, 1036));
    EXPECT_EQ(Hex(document.resources[3].data.substr(28)), "01 02 03 01 02 03 00 00");
}

TEST(File, TellsBothTotalsBeforeTheFirstChannel) {
    class Recorder : public PSDWriteTotalProgressCallback {
      public:
        void TotalProgress(int done, int total) override { calls.emplace_back(done, total); }
        std::vector<std::pair<int, int>> calls;
    };
    Recorder recorder;
    PSDFile file = SmallFile(8, 1);
    file.SetProgress(&recorder);
    AddOpaqueLayer(file, "a");
    file.SetImageData(true, Pixels(1), Pixels(2), Pixels(3), {});
    WrittenBytes(file);
    EXPECT_THAT(recorder.calls,
                ElementsAre(std::pair(0, 3), std::pair(0, 6), std::pair(0, 6), std::pair(1, 6),
                            std::pair(2, 6), std::pair(3, 6), std::pair(3, 6), std::pair(4, 6),
                            std::pair(5, 6), std::pair(6, 6)));
}

// A document with one of everything, walked at every depth, in both formats, with and without
// compression.
class WholeDocument : public testing::TestWithParam<std::tuple<int, bool, bool>> {};

TEST_P(WholeDocument, NestsAllItsLengthsExactlyAndKeepsEveryPixel) {
    const auto [depth, compressed, psb] = GetParam();
    const int depthCompression = depth == 8 ? 1 : depth == 16 ? 2 : 3;
    const auto compression = static_cast<std::uint16_t>(compressed ? depthCompression : 0);
    PSDFile file = SmallFile(static_cast<std::uint8_t>(depth), compression, psb ? 2 : 1);
    file.AddAdjustmentLayer("curves", u"curves", normal, 0,
                            boost::make_shared<PSDLREDRB_Base>(FourCharCode("curv")), Solid(5, 255),
                            true, false);
    file.AddLayerSet("set", u"set", blendKeyPassThrough, 0, false, {}, true);
    file.AddLayer("inner", u"inner", FourCharCode("scrn"), 0, Pixels(1), Pixels(2), Pixels(3),
                  Pixels(4), Pixels(5), true, true);
    file.EndLayerSet();
    AddOpaqueLayer(file, "");
    file.SetImageData(true, Pixels(6), Pixels(7), Pixels(8), Pixels(9));
    file.AddAlphaChannel("extra", u"extra", Pixels(10));

    const WalkedDocument document = Walk(file, psb);
    EXPECT_EQ(document.psb, psb);
    EXPECT_EQ(document.width, 5);
    EXPECT_EQ(document.height, 3);
    EXPECT_EQ(document.depth, depth);
    EXPECT_EQ(document.colorMode.size(), depth == 32 ? 74U : 0U);
    EXPECT_EQ(document.layersInTaggedBlock, depth != 8);
    EXPECT_TRUE(document.mergedTransparency);

    std::vector<std::string> names;
    for (const WalkedLayer& layer : document.layers) {
        names.push_back(layer.name);
    }
    EXPECT_THAT(names, ElementsAre("", "</Layer set>", "inner", "set", "curves"));
    const std::vector<WalkedChannel>& inner = document.layers.at(2).channels;
    const std::uint32_t seeds[] = {4, 1, 2, 3, 5};
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(inner.at(i).compression, compression);
        EXPECT_EQ(Hex(inner.at(i).pixels), Hex(Expected(seeds[i], depth)));
    }
    EXPECT_EQ(document.imageCompression, compressed && depth != 32 ? 1 : 0);
    std::vector<std::string> merged;
    for (const std::uint32_t seed : {6U, 7U, 8U, 9U, 10U}) {
        merged.push_back(Expected(seed, depth));
    }
    EXPECT_EQ(document.imageChannels, merged);
}

INSTANTIATE_TEST_SUITE_P(EveryFormat, WholeDocument,
                         testing::Combine(testing::Values(8, 16, 32), testing::Bool(),
                                          testing::Bool()),
                         [](const auto& test) {
                             return std::to_string(std::get<0>(test.param)) +
                                    (std::get<1>(test.param) ? "Compressed" : "Raw") +
                                    (std::get<2>(test.param) ? "PSB" : "PSD");
                         });

TEST(File, At16BitsHasItsLayersInTheTaggedBlockAlsoWithALayerSetAtTheBottom) {
    PSDFile file = SmallFile(16, 2);
    file.AddLayerSet("set", nullptr, blendKeyPassThrough, 0, false, {}, true);
    AddOpaqueLayer(file, "a");
    file.EndLayerSet();
    const WalkedDocument document = Walk(file);
    EXPECT_TRUE(document.layersInTaggedBlock);
    EXPECT_EQ(Hex(document.layers.at(1).channels.at(0).pixels), Hex(Expected(1, 16)));
}

TEST(File, OnAFailedStreamStillAsksForEveryRowOfEveryChannel) {
    PSDFile file = SmallFile(8, 1);
    std::vector<boost::shared_ptr<Rows8>> sources;
    for (std::uint32_t seed = 0; seed < 6; ++seed) {
        sources.push_back(Pattern(5, 3, seed));
    }
    file.AddLayer("a", nullptr, normal, 0, sources[0], sources[1], sources[2], {}, {}, true, false);
    file.SetImageData(true, sources[3], sources[4], sources[5], {});
    std::ostringstream stream;
    stream.setstate(std::ios_base::badbit);
    stream << file;
    for (const auto& source : sources) {
        EXPECT_THAT(source->asked, ElementsAre(0, 1, 2));
    }
    EXPECT_TRUE(stream.bad());
    EXPECT_EQ(stream.str(), "");
    EXPECT_EQ(FileTooLarge(stream), 0);
}

TEST(File, ThatPasses2GBAsAPSDStopsWithFailbitAndTheMark) {
    // 30000 x 30000 bytes a channel: the third of the layer passes the limit.
    PSDFile file(30000, 30000, 8, 72, 1, 0, 1, false);
    const auto channel = Flat(30000, 1);
    file.AddLayer("a", nullptr, normal, 0, channel, channel, channel, {}, {}, true, false);
    CountingBuffer buffer;
    std::ostream stream(&buffer);
    stream << file;
    EXPECT_EQ(stream.rdstate(), std::ios_base::failbit);
    EXPECT_EQ(FileTooLarge(stream), 1);
    EXPECT_GT(buffer.Size(), 2700000000);
    EXPECT_LT(buffer.Size(), 2700001000);
}

TEST(File, ThatPasses2GBWithTheMergedImageStopsToo) {
    PSDFile file(30000, 30000, 8, 72, 1, 0, 1, false);
    const auto channel = Flat(30000, 1);
    file.SetImageData(true, channel, channel, channel, {});
    file.AddAlphaChannel("extra", nullptr, channel);
    CountingBuffer buffer;
    std::ostream stream(&buffer);
    stream << file;
    EXPECT_EQ(stream.rdstate(), std::ios_base::failbit);
    EXPECT_EQ(FileTooLarge(stream), 1);
    EXPECT_LT(buffer.Size(), 2700001000);
}

TEST(File, ThatPasses2GBAsAPSBIsWrittenWhole) {
    PSDFile file(30000, 30000, 8, 72, 1, 0, 2, false);
    const auto channel = Flat(30000, 1);
    file.AddLayer("a", nullptr, normal, 0, channel, channel, channel, {}, {}, true, false);
    file.SetImageData(true, channel, channel, channel, {});
    CountingBuffer buffer;
    std::ostream stream(&buffer);
    PSBMode(stream) = 1;
    stream << file;
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(FileTooLarge(stream), 0);
    EXPECT_GT(buffer.Size(), 5400000000);
}

}  // namespace
}  // namespace psdfile

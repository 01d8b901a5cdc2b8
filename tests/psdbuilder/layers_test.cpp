// How single nodes come into a file.

#include "psdbuilder/layers.h"

#include <gtest/gtest.h>

#include <boost/make_shared.hpp>

#include "psdbuilder/psdbuilder.h"
#include "psdfile/four_char_code.h"
#include "tests/documents/section_walker.h"
#include "tests/documents/test_sources.h"
#include "tests/documents/written_bytes.h"

namespace psdbuilder {
namespace {

psdfile::PSDFile SmallFile() {
    return {4, 2, 8, 72, 1, 0, 1, false};
}

psdfile::WalkedDocument Walk(psdfile::PSDFile& file) {
    return psdfile::WalkDocument(psdfile::WrittenBytes(file), false);
}

TEST(Layer, OfNoKindAddsNothingToAFile) {
    PSDBuilderLayerGeneric layer;
    EXPECT_EQ(layer.blendKey, 0x6E6F726DU);
    EXPECT_EQ(layer.flags, 0);
    EXPECT_TRUE(layer.maskEnabled);
    EXPECT_FALSE(layer.clipping);
    psdfile::PSDFile file = SmallFile();
    layer.AddToFile(file);
    EXPECT_EQ(file.layers.layersInfo.records.Count(), 0U);
}

TEST(RGBLayer, HandsEverythingToTheFile) {
    PSDBuilderRGBLayer layer;
    layer.name = "a//b";
    layer.unicodeName = std::u16string(u"x");
    layer.blendKey = psdfile::FourCharCode("mul ");
    layer.flags = 2;
    layer.mask = psdfile::Flat(4, 5);
    layer.maskEnabled = false;
    layer.clipping = true;
    layer.red = psdfile::Flat(4, 1);
    layer.green = psdfile::Flat(4, 2);
    layer.blue = psdfile::Flat(4, 3);
    layer.alpha = psdfile::Flat(4, 4);
    psdfile::PSDFile file = SmallFile();
    layer.AddToFile(file);
    layer.AddToFile(file);
    const psdfile::WalkedLayer written = Walk(file).layers.at(1);
    EXPECT_EQ(written.name, "a//b");
    EXPECT_EQ(psdfile::Hex(written.blocks.at("luni")), "00 00 00 01 00 78 00 00");
    EXPECT_EQ(written.blendKey, "mul ");
    EXPECT_EQ(written.flags, 2);
    EXPECT_EQ(written.clipping, 1);
    EXPECT_EQ(written.maskFlags, 2);
    std::string pixels;
    for (const psdfile::WalkedChannel& channel : written.channels) {
        pixels += channel.pixels.substr(0, 1);
    }
    EXPECT_EQ(psdfile::Hex(pixels), "04 01 02 03 05");
}

TEST(RGBLayer, WithoutAColourChannelIsLeftOut) {
    PSDBuilderRGBLayer layer;
    layer.red = layer.green = psdfile::Flat(4, 1);
    psdfile::PSDFile file = SmallFile();
    layer.AddToFile(file);
    EXPECT_EQ(file.layers.layersInfo.records.Count(), 0U);
}

TEST(AdjustmentLayer, HandsEverythingToTheFile) {
    PSDBuilderAdjustmentLayer layer;
    layer.name = "curves";
    layer.adjustment = boost::make_shared<psdfile::PSDLREDRB_Base>(psdfile::FourCharCode("curv"));
    layer.mask = psdfile::Solid(4, 255);
    layer.clipping = true;
    layer.flags = 2;
    psdfile::PSDFile file = SmallFile();
    layer.AddToFile(file);
    layer.AddToFile(file);
    const psdfile::WalkedLayer written = Walk(file).layers.at(1);
    EXPECT_EQ(written.name, "curves");
    EXPECT_EQ(written.blockKeys, std::vector<std::string>{"curv"});
    EXPECT_EQ(written.maskColor, 255);
    EXPECT_EQ(written.clipping, 1);
    EXPECT_EQ(written.flags, 2);
}

TEST(LayerSet, IsItsChildrenBetweenTwoRecordsAndNeverClips) {
    PSDBuilderLayerSet set;
    set.name = "set";
    set.blendKey = psdfile::blendKeyPassThrough;
    set.open = true;
    set.clipping = true;
    set.mask = psdfile::Solid(4, 7);
    const auto child = boost::make_shared<PSDBuilderRGBLayer>();
    child->name = "child";
    child->red = child->green = child->blue = psdfile::Flat(4, 1);
    set.children.push_back(child);
    psdfile::PSDFile file = SmallFile();
    set.AddToFile(file);
    const psdfile::WalkedDocument document = Walk(file);
    ASSERT_EQ(document.layers.size(), 3U);
    EXPECT_EQ(document.layers[0].name, "</Layer set>");
    EXPECT_EQ(document.layers[1].name, "child");
    EXPECT_EQ(document.layers[2].name, "set");
    EXPECT_EQ(document.layers[2].clipping, 0);
    EXPECT_EQ(document.layers[2].maskColor, 7);
    EXPECT_EQ(psdfile::Hex(document.layers[2].blocks.at("lsct")),
              "00 00 00 01 38 42 49 4D 70 61 73 73");
}

}  // namespace
}  // namespace psdbuilder

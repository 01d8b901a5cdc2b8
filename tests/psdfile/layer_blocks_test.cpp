// The additional blocks of a layer, down to the bytes.

#include "psdfile/layer_blocks.h"

#include <gtest/gtest.h>

#include <sstream>

#include "tests/documents/written_bytes.h"

namespace psdfile {
namespace {

class TextBlock : public PSDLayerRecordExtraDataResourceBlock {
  public:
    explicit TextBlock(std::string blockText)
        : PSDLayerRecordExtraDataResourceBlock(FourCharCode("test")), text(std::move(blockText)) {}
    void WriteData(std::ostream& stream) override { stream << text; }

  private:
    std::string text;
};

TEST(LayerBlock, CountsThePaddingInItsLength) {
    const std::string head = "38 42 49 4D 74 65 73 74 ";
    EXPECT_EQ(WrittenHex(TextBlock("abcd")), head + "00 00 00 04 61 62 63 64");
    EXPECT_EQ(WrittenHex(TextBlock("abcde")), head + "00 00 00 08 61 62 63 64 65 00 00 00");
    EXPECT_EQ(WrittenHex(TextBlock("")), head + "00 00 00 00");
}

TEST(LayerBlock, KeepsAFourByteLengthInPSBMode) {
    EXPECT_EQ(WrittenHex(TextBlock("a"), true), "38 42 49 4D 74 65 73 74 00 00 00 04 61 00 00 00");
}

TEST(LayerBlock, CountsThePaddingFromItsDataAndGoesOnBehindIt) {
    std::stringstream stream;
    stream << "x" << TextBlock("a") << PSint8(0xEE);
    EXPECT_EQ(Hex(stream.str()), "78 38 42 49 4D 74 65 73 74 00 00 00 04 61 00 00 00 EE");
}

TEST(LayerBlock, OfASequenceWritesItsList) {
    PSDLREDRB_Base block(FourCharCode("list"));
    block.list.Add<PSint16>(std::uint16_t{1});
    block.list.Add<PSint8>(std::uint8_t{2});
    EXPECT_EQ(WrittenHex(block), "38 42 49 4D 6C 69 73 74 00 00 00 04 00 01 02 00");
    EXPECT_EQ(WrittenHex(PSDLREDRB_Base()), "38 42 49 4D 00 00 00 00 00 00 00 00");
}

TEST(SectionDivider, OfAFolderHasABlendKey) {
    EXPECT_EQ(WrittenHex(PSDSectionDivider()),
              "38 42 49 4D 6C 73 63 74 00 00 00 0C 00 00 00 02 38 42 49 4D 70 61 73 73");
    EXPECT_EQ(WrittenHex(PSDSectionDivider(sectionOpenFolder, blendKeyNormal)),
              "38 42 49 4D 6C 73 63 74 00 00 00 0C 00 00 00 01 38 42 49 4D 6E 6F 72 6D");
}

TEST(SectionDivider, OfAnEndHasItsTypeAlone) {
    EXPECT_EQ(WrittenHex(PSDSectionDivider(sectionEnd)),
              "38 42 49 4D 6C 73 63 74 00 00 00 04 00 00 00 03");
}

TEST(UnicodeLayerName, IsACountOfUnitsAndTheUnitsWithoutTerminator) {
    EXPECT_EQ(WrittenHex(PSDUnicodeLayerName(u"aä")),
              "38 42 49 4D 6C 75 6E 69 00 00 00 08 00 00 00 02 00 61 00 E4");
    EXPECT_EQ(WrittenHex(PSDUnicodeLayerName(u"a")),
              "38 42 49 4D 6C 75 6E 69 00 00 00 08 00 00 00 01 00 61 00 00");
}

}  // namespace
}  // namespace psdfile

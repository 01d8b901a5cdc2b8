// The descriptor of a colour lookup, down to the bytes.

#include "psdfile/color_lookup_adjustment_layer.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/documents/written_bytes.h"

namespace psdfile {
namespace {

// A text as keys and values of descriptors have it; its length is below 256.
std::string CountedText(const std::string& text) {
    return std::string(3, '\0') + static_cast<char>(text.size()) + text;
}

std::string Wide(const std::string& text) {
    std::string units;
    for (const char character : text) {
        units += '\0';
        units += character;
    }
    return units;
}

// Signature, key, length; the descriptor up to its items.
std::string Head(const std::string& lengthHex, const std::string& itemsHex) {
    return "8BIMclrL" + FromHex(lengthHex) +
           FromHex("00 01 00 00 00 10 00 00 00 01 00 00 00 00 00 00") + "null" + FromHex(itemsHex);
}

// The items of all kinds. The profile is that of an empty table, 540 bytes.
std::string CommonItems(const std::string& kind) {
    PSDColorLookupAdjustmentLayerICCProfile profile;
    const std::string profileBytes = WrittenBytes(profile);
    EXPECT_EQ(Hex(profileBytes.substr(0, 4)), "00 00 02 1C");
    EXPECT_EQ(profileBytes.size(), 4U + 540U);
    return CountedText("lookupType") + "enum" + CountedText("colorLookupType") + CountedText(kind) +
           FromHex("00 00 00 00") + "Nm  TEXT" + FromHex("00 00 00 09") + Wide("veltrane") +
           FromHex("00 00 00 00 00 00") + "Dthrbool" + FromHex("01") + CountedText("profile") +
           "tdta" + profileBytes;
}

// The further items of a table in text form.
std::string LUTItems(const std::string& dataWithLength) {
    return CountedText("LUTFormat") + "enum" + CountedText("LUTFormatType") +
           CountedText("LUTFormatCUBE") + CountedText("dataOrder") + "enum" +
           CountedText("colorLookupOrder") + CountedText("rgbOrder") + CountedText("tableOrder") +
           "enum" + CountedText("colorLookupOrder") + CountedText("bgrOrder") +
           CountedText("LUT3DFileData") + "tdta" + dataWithLength + CountedText("LUT3DFileName") +
           "TEXT" + FromHex("00 00 00 14") + Wide("M:\\Temp\\simple.cube") + FromHex("00 00");
}

TEST(ColorLookupLayer, IsADeviceLinkWithFourItems) {
    PSDColorLookupAdjustmentLayer layer;
    const std::string expected =
        Head("00 00 02 B0", "00 00 00 04") + CommonItems("deviceLinkProfile");
    EXPECT_EQ(WrittenHex(layer), Hex(expected));
    EXPECT_EQ(WrittenHex(layer, true), Hex(expected));
    EXPECT_EQ(WrittenHex(layer), Hex(expected)) << "a second time";
}

TEST(ColorLookupLayer, OfAnAbstractProfileDiffersInTheKindAlone) {
    PSDColorLookupAdjustmentLayer layer;
    layer.lookupKind = lookupAbstractProfile;
    EXPECT_EQ(WrittenHex(layer), Hex(Head("00 00 02 B0", "00 00 00 04") +
                                     CommonItems("abstractProfile") + FromHex("00 00")));
}

TEST(ColorLookupLayer, OfATableHasNineItemsAndABlankForItsText) {
    PSDColorLookupAdjustmentLayer layer;
    layer.lookupKind = lookup3DLUT;
    EXPECT_EQ(WrittenHex(layer), Hex(Head("00 00 03 98", "00 00 00 09") + CommonItems("3DLUT") +
                                     LUTItems(FromHex("00 00 00 01 20")) + FromHex("00 00 00")));
}

TEST(ColorLookupLayer, OfATableHoldsItsText) {
    PSDColorLookupAdjustmentLayer layer;
    layer.lookupKind = lookup3DLUT;
    layer.lut.data.SetData("LUT_3D_SIZE", 11);
    EXPECT_EQ(WrittenHex(layer), Hex(Head("00 00 03 A0", "00 00 00 09") + CommonItems("3DLUT") +
                                     LUTItems(CountedText("LUT_3D_SIZE")) + FromHex("00")));
}

TEST(ColorLookupLUT, OfASubclassStandsBehindItsLengthToo) {
    class Other : public PSDColorLookupAdjustmentLayerLUT {
      public:
        void WriteData(std::ostream& stream) override { stream << "cube"; }
    };
    Other lut;
    EXPECT_EQ(WrittenHex(lut), "00 00 00 04 63 75 62 65");
}

TEST(ColorLookupLayer, OfAnUnknownKindIsADeviceLink) {
    PSDColorLookupAdjustmentLayer layer;
    const std::string expected = WrittenHex(layer);
    layer.lookupKind = 3;
    EXPECT_EQ(WrittenHex(layer), expected);
}

TEST(ColorLookupLayer, WritesANameThatIsSetAnew) {
    PSDColorLookupAdjustmentLayer layer;
    layer.name = PSUString(u"ab");
    const std::string expected = FromHex("00 00 00 00") + "Nm  TEXT" +
                                 FromHex("00 00 00 03 00 61 00 62 00 00 00 00 00 00") + "Dthr";
    EXPECT_NE(WrittenBytes(layer).find(expected), std::string::npos) << WrittenHex(layer);
}

TEST(ColorLookupLayer, TakesTheProfileOfAnySubclass) {
    class Short : public PSDColorLookupAdjustmentLayer {
      public:
        void WriteProfile(std::ostream& stream) override { stream << PSint32(1) << PSint8(0xAA); }
    };
    Short layer;
    const std::string bytes = WrittenBytes(layer);
    // 540 + 4 bytes less, 5 more, and 3 of padding.
    EXPECT_EQ(Hex(bytes.substr(8, 4)), "00 00 00 98");
    EXPECT_EQ(Hex(bytes.substr(bytes.size() - 12)), "74 64 74 61 00 00 00 01 AA 00 00 00");
}

}  // namespace
}  // namespace psdfile

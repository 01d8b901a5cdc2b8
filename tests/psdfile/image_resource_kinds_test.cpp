// Each kind of image resource, down to the bytes.

#include "psdfile/image_resource_kinds.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/documents/written_bytes.h"

namespace psdfile {
namespace {

TEST(ResolutionInfo, Of72IsWrittenTwiceIn16Dot16FixedPoint) {
    EXPECT_EQ(
        WrittenHex(PSDIRB_ResolutionInfo(72)),
        "38 42 49 4D 03 ED 00 00 00 00 00 10 00 48 00 00 00 01 00 02 00 48 00 00 00 01 00 02");
}

TEST(ResolutionInfo, IsTruncatedNotRounded) {
    EXPECT_EQ(WrittenHex(PSDIRB_ResolutionInfo(1 + 1.9 / 65536)).substr(36, 11), "00 01 00 01");
}

TEST(ResolutionInfo, ThatDoesNotFitIsCut) {
    EXPECT_EQ(WrittenHex(PSDIRB_ResolutionInfo(65537)).substr(36, 11), "00 01 00 00");
    EXPECT_EQ(WrittenHex(PSDIRB_ResolutionInfo(-1)).substr(36, 11), "FF FF 00 00");
    EXPECT_EQ(WrittenHex(PSDIRB_ResolutionInfo(1e300)).substr(36, 11), "00 00 00 00");
    EXPECT_EQ(
        WrittenHex(PSDIRB_ResolutionInfo(std::numeric_limits<double>::quiet_NaN())).substr(36, 11),
        "00 00 00 00");
}

TEST(AlphaChannelNames, ArePascalStringsOneBehindTheOther) {
    PSDIRB_AlphaChannelNames names;
    names.AddName("ab");
    names.AddName("");
    names.AddName("c");
    EXPECT_EQ(WrittenHex(names), "38 42 49 4D 03 EE 00 00 00 00 00 06 02 61 62 00 01 63");
}

TEST(UnicodeAlphaChannelNames, CountTheirTerminators) {
    PSDIRB_UnicodeAlphaChannelNames names;
    names.AddName(u"a");
    names.AddName(u"");
    EXPECT_EQ(WrittenHex(names),
              "38 42 49 4D 04 15 00 00 00 00 00 0E 00 00 00 02 00 61 00 00 00 00 00 01 00 00");
}

TEST(CopyrightFlag, HasOneByteAndAPadByte) {
    EXPECT_EQ(WrittenHex(PSDIRB_CopyrightFlag()), "38 42 49 4D 04 0A 00 00 00 00 00 01 00 00");
}

TEST(ImageURL, IsTheBareText) {
    EXPECT_EQ(WrittenHex(PSDIRB_ImageURL("abc")),
              "38 42 49 4D 04 0B 00 00 00 00 00 03 61 62 63 00");
    PSDIRB_ImageURL ours;
    EXPECT_NE(WrittenBytes(ours).find("https://"), std::string::npos);
}

TEST(ICCProfile, HoldsACopyAndMayBeTakenOutAgain) {
    PSDIRB_ICCProfile profile;
    EXPECT_EQ(profile.data.Count(), 0U);
    std::string bytes = "abc";
    profile.SetProfile(bytes.data(), bytes.size());
    bytes = "xyz";
    EXPECT_EQ(WrittenHex(profile), "38 42 49 4D 04 0F 00 00 00 00 00 03 61 62 63 00");
    profile.SetProfile("de", 2);
    EXPECT_EQ(WrittenHex(profile), "38 42 49 4D 04 0F 00 00 00 00 00 02 64 65");
    profile.SetProfile("de", 0);
    EXPECT_EQ(profile.data.Count(), 0U);
    profile.SetProfile("de", 2);
    profile.SetProfile(nullptr, 2);
    EXPECT_EQ(profile.data.Count(), 0U);
}

TEST(VersionInfo, NamesWriterAndReader) {
    EXPECT_EQ(
        WrittenHex(PSDIRB_VersionInfo(1, false, u"a", u"bc", 2)),
        "38 42 49 4D 04 21 00 00 00 00 00 17 00 00 00 01 00 00 00 00 01 00 61 00 00 00 02 00 62 "
        "00 63 00 00 00 02 00");
}

TEST(VersionInfo, IsPhotoshopsByDefaultAndForNullNames) {
    const std::string name =
        "00 00 00 0F 00 41 00 64 00 6F 00 62 00 65 00 20 00 50 00 68 00 6F 00 74 00 6F 00 73 00 68 "
        "00 6F 00 70 ";
    const std::string expected =
        "38 42 49 4D 04 21 00 00 00 00 00 4D 00 00 00 01 01 " + name + name + "00 00 00 01 00";
    EXPECT_EQ(WrittenHex(PSDIRB_VersionInfo()), expected);
    EXPECT_EQ(WrittenHex(PSDIRB_VersionInfo(1, true, nullptr, nullptr, 1)), expected);
}

TEST(PixelAspectRatio, IsAVersionAndADouble) {
    EXPECT_EQ(WrittenHex(PSDIRB_PixelAspectRatio(1.5)),
              "38 42 49 4D 04 28 00 00 00 00 00 0C 00 00 00 01 3F F8 00 00 00 00 00 00");
}

}  // namespace
}  // namespace psdfile

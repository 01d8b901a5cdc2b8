// Which resources come into the file, and in what order.

#include "psdfile/image_resources.h"

#include <gtest/gtest.h>

#include <boost/make_shared.hpp>

#include "tests/documents/written_bytes.h"

namespace psdfile {
namespace {

const std::string copyright = "38 42 49 4D 04 0A 00 00 00 00 00 01 00 00";

TEST(ImageResources, BeginWithTheCopyrightFlag) {
    EXPECT_EQ(WrittenHex(PSDImageResources()), "00 00 00 0E " + copyright);
}

TEST(ImageResources, KeepAFourByteLengthInPSBMode) {
    EXPECT_EQ(WrittenHex(PSDImageResources(), true), "00 00 00 0E " + copyright);
}

TEST(ImageResources, HaveTheNamesAndTheProfileBehindTheBlocks) {
    PSDImageResources resources;
    resources.alphaNames.AddName("a");
    resources.unicodeAlphaNames.AddName(u"a");
    resources.iccProfile.SetProfile("p", 1);
    resources.blocks.Add(boost::make_shared<PSDImageResourceBlock>(std::uint16_t{7}));
    EXPECT_EQ(WrittenHex(resources),
              "00 00 00 4A " + copyright +
                  " 38 42 49 4D 00 07 00 00 00 00 00 00"
                  " 38 42 49 4D 03 EE 00 00 00 00 00 02 01 61"
                  " 38 42 49 4D 04 15 00 00 00 00 00 08 00 00 00 02 00 61 00 00"
                  " 38 42 49 4D 04 0F 00 00 00 00 00 01 70 00");
}

TEST(ImageResources, LeaveTheUnicodeNamesOutIfOneIsMissing) {
    PSDImageResources resources;
    resources.alphaNames.AddName("a");
    resources.alphaNames.AddName("b");
    resources.unicodeAlphaNames.AddName(u"a");
    EXPECT_EQ(WrittenHex(resources),
              "00 00 00 1E " + copyright + " 38 42 49 4D 03 EE 00 00 00 00 00 04 01 61 01 62");
}

TEST(ImageResources, LeaveUnicodeNamesOutThatHaveNoOthersBesideThem) {
    PSDImageResources resources;
    resources.unicodeAlphaNames.AddName(u"a");
    EXPECT_EQ(WrittenHex(resources), "00 00 00 0E " + copyright);
}

}  // namespace
}  // namespace psdfile

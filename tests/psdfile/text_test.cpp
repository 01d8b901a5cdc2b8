// Prefixes, limits and fill of 8-bit and UTF-16 text.

#include "psdfile/text.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/documents/written_bytes.h"

namespace psdfile {
namespace {

PSString Counted(const std::string& text, std::uint8_t fieldSize, std::uint8_t fill = 0) {
    return PSString(text.c_str(), 1, false, false, true, fieldSize, fill);
}

PSUString Counted(const std::u16string& text, std::uint8_t fieldSize, bool nullCounted = false,
                  std::uint8_t fill = 0) {
    return PSUString(text.c_str(), 1, false, false, true, fieldSize, fill, nullCounted);
}

TEST(String, HasNeitherLengthNorTerminatorByDefault) {
    EXPECT_EQ(WrittenHex(PSString("ab")), "61 62");
    EXPECT_EQ(WrittenHex(PSString()), "");
    EXPECT_EQ(WrittenHex(PSString(nullptr)), "");
}

TEST(String, WritesItsLengthInTheGivenWidth) {
    EXPECT_EQ(WrittenHex(Counted("ab", 1)), "02 61 62");
    EXPECT_EQ(WrittenHex(Counted("ab", 2)), "00 02 61 62");
    EXPECT_EQ(WrittenHex(Counted("ab", 4)), "00 00 00 02 61 62");
}

TEST(String, Of300CharactersWithAOneByteLengthIsCutTo255) {
    const std::string text(300, 'x');
    auto part = Counted(text, 1);
    EXPECT_EQ(WrittenBytes(part), FromHex("FF") + text.substr(0, 255));
}

TEST(String, Of70000CharactersWithATwoByteLengthIsCutTo65535) {
    const std::string text(70000, 'x');
    auto part = Counted(text, 2);
    EXPECT_EQ(WrittenBytes(part), FromHex("FF FF") + text.substr(0, 65535));
}

TEST(String, Of70000CharactersWithAFourByteLengthKeepsTheLow16BitsOfTheCount) {
    const std::string text(70000, 'x');
    auto part = Counted(text, 4);
    EXPECT_EQ(WrittenBytes(part), FromHex("00 00 11 70") + text.substr(0, 4464));
}

TEST(String, ThatIsEmptyIsFourFillBytesWithoutALength) {
    EXPECT_EQ(WrittenHex(Counted("", 1, 4)), "00 00 00 00");
}

TEST(String, ThatIsEmptyWithoutFillIsItsLengthAlone) {
    EXPECT_EQ(WrittenHex(Counted("", 1, 0)), "00");
}

TEST(String, ThatIsEmptyIgnoresAFillThatDoesNotExceedItsLengthField) {
    EXPECT_EQ(WrittenHex(Counted("", 4, 4)), "00 00 00 00");
    EXPECT_EQ(WrittenHex(Counted("", 4, 3)), "00 00 00 00");
    EXPECT_EQ(WrittenHex(PSString("", 1, false, false, false, 4, 1)), "00");
}

TEST(String, ThatIsNotEmptyIgnoresTheFill) {
    EXPECT_EQ(WrittenHex(Counted("a", 1, 4)), "01 61");
}

TEST(String, PadsItsLengthAndTextTogether) {
    PSString part("ab", 4, false, false, true, 1, 4);
    EXPECT_EQ(WrittenHex(part), "02 61 62 00");
}

TEST(UnicodeString, HasNeitherLengthNorTerminatorByDefault) {
    EXPECT_EQ(WrittenHex(PSUString(u"aä")), "00 61 00 E4");
    EXPECT_EQ(WrittenHex(PSUString()), "");
    EXPECT_EQ(WrittenHex(PSUString(nullptr)), "");
}

TEST(UnicodeString, CountsUnitsNotBytes) {
    EXPECT_EQ(WrittenHex(Counted(u"a\U0001F600", 4)), "00 00 00 03 00 61 D8 3D DE 00");
    EXPECT_EQ(WrittenHex(Counted(u"a", 2)), "00 01 00 61");
}

TEST(UnicodeString, CountsAndWritesTheTerminatorWhenAsked) {
    EXPECT_EQ(WrittenHex(Counted(u"a", 4, true)), "00 00 00 02 00 61 00 00");
}

TEST(UnicodeString, WithoutALengthHasNoTerminatorEither) {
    EXPECT_EQ(WrittenHex(PSUString(u"a", 1, false, false, false, 4, 0, true)), "00 61");
}

TEST(UnicodeString, ThatIsEmptyFollowsTheFillRule) {
    EXPECT_EQ(WrittenHex(Counted(u"", 4)), "00 00 00 00");
    EXPECT_EQ(WrittenHex(Counted(u"", 4, true)), "00 00 00 01 00 00");
    EXPECT_EQ(WrittenHex(Counted(u"", 1, true, 2)), "00 00");
}

TEST(UnicodeString, IsCutLikeTheNarrowOne) {
    const std::u16string text(70000, u'x');
    auto oneByte = Counted(text, 1);
    EXPECT_EQ(WrittenBytes(oneByte).size(), 1U + 2 * 255);
    auto twoBytes = Counted(text, 2);
    EXPECT_EQ(WrittenBytes(twoBytes).size(), 2U + 2 * 65535);
    auto fourBytes = Counted(text, 4);
    EXPECT_EQ(WrittenBytes(fourBytes).substr(0, 4), FromHex("00 00 11 70"));
    EXPECT_EQ(WrittenBytes(fourBytes).size(), 4U + 2 * 4464);
}

TEST(UnicodeString, CutsACountWithTerminatorTo16Bits) {
    const std::u16string text(65535, u'x');
    auto part = Counted(text, 4, true);
    EXPECT_EQ(WrittenBytes(part).substr(0, 4), FromHex("00 00 00 00"));
    EXPECT_EQ(WrittenBytes(part).size(), 4U + 2 * 65536);
}

}  // namespace
}  // namespace psdfile

// The frame of lengths and padding around every part.

#include "psdfile/part.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "psdfile/primitives.h"
#include "psdfile/stream_state.h"
#include "tests/documents/written_bytes.h"

namespace psdfile {
namespace {

class TextPart : public PSDPart {
  public:
    TextPart(std::string bodyText, std::uint8_t align, bool inner, bool outer, bool wide = false)
        : PSDPart(align, inner, outer), body(std::move(bodyText)) {
        wideLengthInPSB = wide;
    }
    void WriteBody(std::ostream& stream) override { stream << body; }

  private:
    std::string body;
};

TEST(Part, HasNoFrameByDefault) {
    const PSDPart part;
    EXPECT_EQ(part.alignment, 1);
    EXPECT_FALSE(part.writeInnerLength);
    EXPECT_FALSE(part.writeOuterLength);
    EXPECT_FALSE(part.wideLengthInPSB);
}

TEST(Part, TakesAnAlignmentOfZeroAsOne) {
    EXPECT_EQ(PSDPart(0, true, false).alignment, 1);
    EXPECT_EQ(WrittenHex(TextPart("abc", 0, false, false)), "61 62 63");
}

TEST(Part, WritesNothingOfItsOwn) {
    EXPECT_EQ(WrittenHex(PSDPart()), "");
}

TEST(Part, CountsThePaddingOfAnOddBodyInTheOuterLengthOnly) {
    EXPECT_EQ(WrittenHex(TextPart("abc", 2, true, false)), "00 00 00 03 61 62 63 00");
    EXPECT_EQ(WrittenHex(TextPart("abc", 2, false, true)), "00 00 00 04 61 62 63 00");
}

TEST(Part, WritesTheOuterLengthBeforeTheInnerAndCountsThatToo) {
    EXPECT_EQ(WrittenHex(TextPart("abc", 2, true, true)), "00 00 00 08 00 00 00 03 61 62 63 00");
}

TEST(Part, DoesNotPadAnEmptyBody) {
    EXPECT_EQ(WrittenHex(TextPart("", 2, true, false)), "00 00 00 00");
    EXPECT_EQ(WrittenHex(TextPart("", 2, false, true)), "00 00 00 00");
}

TEST(Part, PadsWithoutALengthToo) {
    EXPECT_EQ(WrittenHex(TextPart("abcde", 4, false, false)), "61 62 63 64 65 00 00 00");
}

TEST(Part, CountsTheAlignmentFromTheBodyNotFromTheStreamsStart) {
    std::stringstream stream;
    stream << "x";
    TextPart part("ab", 2, true, false);
    stream << part << PSint8(0xEE);
    EXPECT_EQ(Hex(stream.str()), "78 00 00 00 02 61 62 EE");
}

TEST(Part, WithWideLengthsWritesEightBytesOnlyWhenTheStreamIsInPSBMode) {
    TextPart part("a", 2, true, true, true);
    EXPECT_EQ(WrittenHex(part, true), "00 00 00 00 00 00 00 0A 00 00 00 00 00 00 00 01 61 00");
    EXPECT_EQ(WrittenHex(part, false), "00 00 00 06 00 00 00 01 61 00");
}

TEST(Part, WithoutWideLengthsWritesFourBytesInPSBModeToo) {
    EXPECT_EQ(WrittenHex(TextPart("a", 1, true, false), true), "00 00 00 01 61");
}

TEST(Part, FramesItsChildrenEachByItself) {
    class Parent : public PSDPart {
      public:
        Parent() : PSDPart(4, false, true) {}
        void WriteBody(std::ostream& stream) override {
            stream << TextPart("a", 2, true, false) << PSint8(7);
        }
    };
    EXPECT_EQ(WrittenHex(Parent()), "00 00 00 08 00 00 00 01 61 00 07 00");
}

TEST(Part, LeavesAFailedStreamAsItIs) {
    std::stringstream stream;
    stream << "ab";
    stream.setstate(std::ios_base::failbit);
    TextPart part("abc", 4, true, true);
    stream << part;
    EXPECT_EQ(stream.rdstate(), std::ios_base::failbit);
    stream.clear();
    EXPECT_EQ(stream.str(), "ab");
}

}  // namespace
}  // namespace psdfile

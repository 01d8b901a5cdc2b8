#include "host/printable.h"

#include <gtest/gtest.h>

namespace host {
namespace {

TEST(Printable, TextStaysAsItIs) {
    EXPECT_EQ(Printable("Größe  \"x\""), "Größe  \"x\"");
    EXPECT_EQ(Printable(""), "");
}

TEST(Printable, ControlCharactersBecomeOneBlank) {
    EXPECT_EQ(Printable("a\nb\r\n\tc"), "a b c");
    EXPECT_EQ(Printable("a \nb"), "a b");
    EXPECT_EQ(Printable("\x1b[31mred\x7f"), "[31mred");
}

TEST(Printable, NothingIsLeftAtTheEnds) {
    EXPECT_EQ(Printable("\n\na\n \n"), "a");
}

}  // namespace
}  // namespace host

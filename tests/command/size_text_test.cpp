#include "command/size_text.h"

#include <gtest/gtest.h>

namespace command {
namespace {

TEST(SizeText, IsInKilobytesWhileThatIsShort) {
    EXPECT_EQ(SizeText(0), "0.0 kB");
    EXPECT_EQ(SizeText(1'450), "1.4 kB");
    EXPECT_EQ(SizeText(99'999), "100.0 kB");
    EXPECT_EQ(SizeText(100'000), "0.1 MB");
    EXPECT_EQ(SizeText(12'345'678), "12.3 MB");
}

}  // namespace
}  // namespace command

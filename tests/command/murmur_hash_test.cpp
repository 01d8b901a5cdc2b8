#include "command/murmur_hash.h"

#include <gtest/gtest.h>

#include <string>

namespace command {
namespace {

TEST(MurmurHash3, GivesTheKnownValues) {
    EXPECT_EQ(MurmurHash3(""), 0U);
    EXPECT_EQ(MurmurHash3("bunny"), 0x13851a76U);
    EXPECT_EQ(MurmurHash3("default"), 0x42c9679fU);
}

TEST(MurmurHash3, TakesASeed) {
    EXPECT_EQ(MurmurHash3("", 1), 0x514e28b7U);
    EXPECT_EQ(MurmurHash3("", 0xffffffff), 0x81f16f39U);
    EXPECT_EQ(MurmurHash3("aaaa", 0x9747b28c), 0x5a97808aU);
    EXPECT_EQ(MurmurHash3("Hello, world!", 0x9747b28c), 0x24884cbaU);
}

TEST(MurmurHash3, MixesInWhatIsLessThanABlock) {
    EXPECT_EQ(MurmurHash3("\x21\x43\x65\x87"), 0xf55b516bU);
    EXPECT_EQ(MurmurHash3("\x21\x43\x65"), 0x7e4a8634U);
    EXPECT_EQ(MurmurHash3("\x21\x43"), 0xa0f7b07aU);
    EXPECT_EQ(MurmurHash3("\x21"), 0x72661cf4U);
}

TEST(MurmurHash3, TakesBytesAsUnsigned) {
    EXPECT_EQ(MurmurHash3("\xff\xff\xff\xff"), 0x76293b50U);
    EXPECT_EQ(MurmurHash3(std::string(4, '\0')), 0x2362f9deU);
}

}  // namespace
}  // namespace command

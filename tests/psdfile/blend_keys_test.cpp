// The table of blend modes, which files and settings rely on.

#include "psdfile/blend_keys.h"

#include <gtest/gtest.h>

#include <string>

#include "psdfile/primitives.h"
#include "tests/documents/written_bytes.h"

namespace psdfile {
namespace {

TEST(BlendKeys, StandAtTheIndexThatSettingsStore) {
    const std::string keys =
        "normdissdarkmul idivlbrnlitescrndiv lddgoversLithLitvLitlLitpLitdiffsmudhue sat colrlum "
        "hMixdkCllgClfsubfdiv";
    ASSERT_EQ(keys.size(), 4 * blendModes.size());
    for (int index = 0; index < 27; ++index) {
        PSint32 key(BlendKey(index));
        EXPECT_EQ(WrittenBytes(key), keys.substr(4 * static_cast<std::size_t>(index), 4)) << index;
    }
}

TEST(BlendKeys, HaveTheNamesThatUsersSee) {
    const char* const names[] = {
        "Normal",      "Dissolve",   "Darken",     "Multiply",     "Color Burn",
        "Linear Burn", "Lighten",    "Screen",     "Color Dodge",  "Linear Dodge (Add)",
        "Overlay",     "Soft Light", "Hard Light", "Vivid Light",  "Linear Light",
        "Pin Light",   "Difference", "Exclusion",  "Hue",          "Saturation",
        "Color",       "Luminosity", "Hard Mix",   "Darker Color", "Lighter Color",
        "Subtract",    "Divide"};
    ASSERT_EQ(std::size(names), blendModes.size());
    for (std::size_t index = 0; index < blendModes.size(); ++index) {
        EXPECT_STREQ(blendModes[index].name, names[index]);
    }
}

TEST(BlendKeys, AreNormalForEveryUnknownIndex) {
    EXPECT_EQ(BlendKey(-1), 0x6E6F726DU);
    EXPECT_EQ(BlendKey(27), 0x6E6F726DU);
    EXPECT_EQ(BlendKey(1000000), 0x6E6F726DU);
}

TEST(BlendKeys, OfPassThroughReadsPass) {
    EXPECT_EQ(blendKeyPassThrough, 0x70617373U);
}

}  // namespace
}  // namespace psdfile

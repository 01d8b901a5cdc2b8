#include "plugin/load_string.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using plugin::LoadTableString;
using plugin::StringRow;
using LoadedText = std::basic_string<MCHAR>;

constexpr StringRow sampleRows[] = {{3, _M("three")}, {7, _M("")}, {0xffff, _M("last")}};

struct Loaded {
    int length;
    LoadedText buffer;
};

// The buffer up to its NUL; what is behind must be untouched.
Loaded Load(std::span<const StringRow> table, int id, int size) {
    LoadedText buffer(static_cast<std::size_t>(size) + 1, MCHAR{0x7e});
    const int length = LoadTableString(table, id, buffer.data(), size);
    EXPECT_EQ(buffer.back(), MCHAR{0x7e});
    return {length, buffer.substr(0, buffer.find(MCHAR{}))};
}

TEST(LoadString, CopiesTheTextWithItsNul) {
    const Loaded text = Load(sampleRows, 3, 512);
    EXPECT_EQ(text.length, 5);
    EXPECT_EQ(text.buffer, _M("three"));
    EXPECT_EQ(Load(sampleRows, 3, 6).buffer, _M("three")) << "just fits";
}

TEST(LoadString, CutsWhatDoesntFit) {
    const Loaded cut = Load(sampleRows, 3, 5);
    EXPECT_EQ(cut.length, 4);
    EXPECT_EQ(cut.buffer, _M("thre"));
    const Loaded nothing = Load(sampleRows, 3, 1);
    EXPECT_EQ(nothing.length, 0);
    EXPECT_EQ(nothing.buffer, _M(""));

    const LoadedText text600(600, MCHAR{'x'});
    const StringRow longRow[] = {{1, text600.c_str()}};
    const Loaded longText = Load(longRow, 1, 512);
    EXPECT_EQ(longText.length, 511);
    EXPECT_EQ(longText.buffer, text600.substr(0, 511));
}

TEST(LoadString, GivesNothingForATextThatIsntThereOrIsEmpty) {
    for (const int id : {0, 2, 7}) {
        const Loaded text = Load(sampleRows, id, 512);
        EXPECT_EQ(text.length, 0) << id;
        EXPECT_EQ(text.buffer, _M("")) << id;
    }
}

TEST(LoadString, LooksAtTheLow16BitsOfTheNumber) {
    EXPECT_EQ(Load(sampleRows, 0x10003, 512).buffer, _M("three"));
    EXPECT_EQ(Load(sampleRows, -1, 512).buffer, _M("last"));
}

}  // namespace

#include "command/native_path.h"

#include <gtest/gtest.h>

namespace command {
namespace {

TEST(NativePath, GoesThereAndBackInUtf8) {
    for (const std::string text : {"a.exr", "", "/x y/b.psd", "K\xc3\xbchl/\xe6\xb0\xb4.exr"})
        EXPECT_EQ(Utf8(Native(text)), text);
    EXPECT_EQ(Utf8(Native("a/\xe6\xb0\xb4.exr").replace_extension(".psd")), "a/\xe6\xb0\xb4.psd");
}

}  // namespace
}  // namespace command

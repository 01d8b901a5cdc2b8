#include "ui/help_file.h"

#include <gtest/gtest.h>

#include "host/text.h"
#include "tests/host/native_path.h"

namespace {

std::string HelpBeside(const std::string& library) {
    return host::ToUtf8(ui::HelpFile(host::FromUtf8(NativePath(library))));
}

TEST(HelpFile, LiesBesideTheLibrary) {
    EXPECT_EQ(HelpBeside("/plug ins/veltrane.dlv"), NativePath("/plug ins/veltrane.chm"));
    EXPECT_EQ(HelpBeside("/veltrane.dlv"), NativePath("/veltrane.chm"));
}

}  // namespace

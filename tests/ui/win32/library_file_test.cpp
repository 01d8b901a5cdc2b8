#include "ui/win32/library_file.h"

#include <filesystem>

#include "tests/ui/win32/panel_stage.h"

namespace {

class LibraryFile : public EffectTest {};

TEST_F(LibraryFile, IsTheProgramsThatHasTheLibraryLinkedIn) {
    const std::filesystem::path file(ui::LibraryFile().data());
    EXPECT_TRUE(file.is_absolute());
    EXPECT_EQ(file.extension(), ".exe");
    EXPECT_TRUE(std::filesystem::exists(file));
    // What is shipped beside the library.
    EXPECT_TRUE(std::filesystem::exists(file.parent_path() / "veltrane-about.dll"));
}

}  // namespace

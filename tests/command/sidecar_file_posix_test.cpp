// Links, which the compiler's library can't make on Windows.
#include <gtest/gtest.h>

#include <filesystem>

#include "command/failure.h"
#include "command/sidecar_file.h"
#include "tests/command/fault_text.h"
#include "tests/command/test_folder.h"

namespace command {
namespace {

namespace fs = std::filesystem;

class SidecarLink : public FolderTest {
  protected:
    SidecarLink() {
        fs::create_directories(folder / "shot/names");
        Write("shot/names/b.json", "[]");
        Write("secret.json", "not to be read");
    }

    [[nodiscard]] std::string Image() const { return PathOf("shot/a.exr"); }
    [[nodiscard]] std::string Fault(const std::string& name) const {
        return FaultText<InputError>([&] { ReadSidecar(Image(), name); });
    }
};

TEST_F(SidecarLink, MayStayWithinTheFolder) {
    fs::create_symlink("names/b.json", folder / "shot/c.json");
    EXPECT_EQ(ReadSidecar(Image(), "c.json"), "[]");
}

TEST_F(SidecarLink, IsRefusedWhereItLeadsOutOfTheFolder) {
    fs::create_symlink("../secret.json", folder / "shot/link.json");
    fs::create_directory_symlink("..", folder / "shot/up");
    EXPECT_EQ(Fault("link.json"), "is a link that leads out of the image's folder");
    EXPECT_EQ(Fault("up/secret.json"), "is a link that leads out of the image's folder");
    // A folder whose name only begins alike.
    fs::create_directory(folder / "shot2");
    Write("shot2/d.json", "{}");
    fs::create_symlink("../shot2/d.json", folder / "shot/d.json");
    EXPECT_EQ(Fault("d.json"), "is a link that leads out of the image's folder");
}

}  // namespace
}  // namespace command

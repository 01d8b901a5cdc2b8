#include "command/sidecar_file.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "command/failure.h"
#include "tests/command/fault_text.h"

namespace command {
namespace {

namespace fs = std::filesystem;

class Sidecar : public testing::Test {
  protected:
    Sidecar() {
        fs::create_directories(root / "shot/names");
        Write("shot/a.exr", "");
        Write("shot/a.json", "{}");
        Write("shot/names/b.json", "[]");
        Write("secret.json", "not to be read");
    }
    ~Sidecar() override { fs::remove_all(root); }

    void Write(const std::string& name, const std::string& text) const {
        std::ofstream(root / name, std::ios::binary) << text;
    }
    [[nodiscard]] std::string Image() const { return (root / "shot/a.exr").string(); }
    [[nodiscard]] std::string Fault(const std::string& name) const {
        return FaultText<InputError>([&] { ReadSidecar(Image(), name); });
    }

    fs::path root =
        fs::temp_directory_path() / ("veltrane_sidecar_test_" + std::to_string(::getpid()));
};

TEST_F(Sidecar, IsReadFromTheFolderOfTheImage) {
    EXPECT_EQ(ReadSidecar(Image(), "a.json"), "{}");
    EXPECT_EQ(ReadSidecar(Image(), "names/b.json"), "[]");
    EXPECT_EQ(ReadSidecar(Image(), "./a.json"), "{}");
}

TEST_F(Sidecar, MayBeALinkWithinTheFolder) {
    fs::create_symlink("names/b.json", root / "shot/c.json");
    EXPECT_EQ(ReadSidecar(Image(), "c.json"), "[]");
}

TEST_F(Sidecar, IsRefusedOutsideOfTheFolder) {
    EXPECT_EQ(Fault("../secret.json"), "lies outside of the image's folder");
    EXPECT_EQ(Fault("names/../a.json"), "lies outside of the image's folder");
    EXPECT_EQ(Fault((root / "secret.json").string()),
              "is named by an absolute path; it must stand in the image's folder");
    EXPECT_EQ(Fault("C:/secret.json"),
              "is named by an absolute path; it must stand in the image's folder");
    EXPECT_EQ(Fault("names\\b.json"),
              "has a backslash in its name; the name must be a path with slashes");
    EXPECT_EQ(Fault(std::string("a.json\0b", 8)), "lies outside of the image's folder");
    EXPECT_EQ(Fault(""), "has no name");
}

TEST_F(Sidecar, IsRefusedWhereALinkLeadsOutOfTheFolder) {
    fs::create_symlink("../secret.json", root / "shot/link.json");
    fs::create_directory_symlink("..", root / "shot/up");
    EXPECT_EQ(Fault("link.json"), "is a link that leads out of the image's folder");
    EXPECT_EQ(Fault("up/secret.json"), "is a link that leads out of the image's folder");
    // A folder whose name only begins alike.
    fs::create_directory(root / "shot2");
    Write("shot2/d.json", "{}");
    fs::create_symlink("../shot2/d.json", root / "shot/d.json");
    EXPECT_EQ(Fault("d.json"), "is a link that leads out of the image's folder");
}

TEST_F(Sidecar, TellsWhatIsNoFile) {
    EXPECT_EQ(Fault("b.json"), "is missing");
    EXPECT_EQ(Fault("names"), "is no file");
    EXPECT_EQ(FaultText<InputError>([&] { ReadSidecar("/no/such/folder/a.exr", "a.json"); }),
              "is missing");
}

TEST_F(Sidecar, HasALimit) {
    Write("shot/large.json", "");
    fs::resize_file(root / "shot/large.json", largestSidecar + 1);
    EXPECT_EQ(Fault("large.json"), "has more than 64 MB");
    fs::resize_file(root / "shot/large.json", 5);
    EXPECT_EQ(ReadSidecar(Image(), "large.json"), std::string(5, '\0'));
}

}  // namespace
}  // namespace command

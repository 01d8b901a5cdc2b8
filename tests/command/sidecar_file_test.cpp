#include "command/sidecar_file.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "command/failure.h"
#include "tests/command/fault_text.h"
#include "tests/command/test_folder.h"

namespace command {
namespace {

namespace fs = std::filesystem;

class Sidecar : public FolderTest {
  protected:
    Sidecar() {
        fs::create_directories(folder / "shot/names");
        Write("shot/a.exr", "");
        Write("shot/a.json", "{}");
        Write("shot/names/b.json", "[]");
        Write("secret.json", "not to be read");
    }

    [[nodiscard]] std::string Image() const { return PathOf("shot/a.exr"); }
    [[nodiscard]] std::string Fault(const std::string& name) const {
        return FaultText<InputError>([&] { ReadSidecar(Image(), name); });
    }
};

TEST_F(Sidecar, IsReadFromTheFolderOfTheImage) {
    EXPECT_EQ(ReadSidecar(Image(), "a.json"), "{}");
    EXPECT_EQ(ReadSidecar(Image(), "names/b.json"), "[]");
    EXPECT_EQ(ReadSidecar(Image(), "./a.json"), "{}");
}

TEST_F(Sidecar, IsRefusedOutsideOfTheFolder) {
    EXPECT_EQ(Fault("../secret.json"), "lies outside of the image's folder");
    EXPECT_EQ(Fault("names/../a.json"), "lies outside of the image's folder");
    EXPECT_EQ(Fault((folder / "secret.json").generic_string()),
              "is named by an absolute path; it must stand in the image's folder");
    EXPECT_EQ(Fault("C:/secret.json"),
              "is named by an absolute path; it must stand in the image's folder");
    EXPECT_EQ(Fault("names\\b.json"),
              "has a backslash in its name; the name must be a path with slashes");
    EXPECT_EQ(Fault(std::string("a.json\0b", 8)), "lies outside of the image's folder");
    EXPECT_EQ(Fault(""), "has no name");
}

TEST_F(Sidecar, TellsWhatIsNoFile) {
    EXPECT_EQ(Fault("b.json"), "is missing");
    EXPECT_EQ(Fault("names"), "is no file");
    EXPECT_EQ(Fault("\xff.json"), "is missing") << "a name that is no text";
    EXPECT_EQ(FaultText<InputError>([&] { ReadSidecar("/no/such/folder/a.exr", "a.json"); }),
              "is missing");
}

TEST_F(Sidecar, HasALimit) {
    Write("shot/large.json", "");
    fs::resize_file(folder / "shot/large.json", largestSidecar + 1);
    EXPECT_EQ(Fault("large.json"), "has more than 64 MB");
    fs::resize_file(folder / "shot/large.json", 5);
    EXPECT_EQ(ReadSidecar(Image(), "large.json"), std::string(5, '\0'));
}

}  // namespace
}  // namespace command

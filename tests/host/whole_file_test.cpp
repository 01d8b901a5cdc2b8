#include "host/whole_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "host/input_error.h"
#include "tests/host/fault_text.h"
#include "tests/host/temporary_folder.h"

namespace {

namespace fs = std::filesystem;
using host::ReplaceWholeFile;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class WholeFile : public testing::Test {
  protected:
    static std::string Utf8(const fs::path& path) {
        const std::u8string text = path.u8string();
        return {text.begin(), text.end()};
    }
    std::string Path(const char8_t* name) const { return Utf8(folder.path / name); }
    static std::string Bytes(const fs::path& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    static void Write(const fs::path& path, const std::string& bytes) {
        std::ofstream(path, std::ios::binary) << bytes;
    }
    std::vector<std::string> Files() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder.path))
            names.push_back(Utf8(entry.path().filename()));
        return names;
    }
    static std::string FaultOf(const std::string& path) {
        return FaultText<host::InputError>([&] { ReplaceWholeFile(path, "new"); });
    }

    TemporaryFolder folder;
};

TEST_F(WholeFile, ANewFileHasTheBytesAndNothingIsLeftBesideIt) {
    const std::string bytes("a\0\r\n\x1a\xff", 6);
    ReplaceWholeFile(Path(u8"new.json"), bytes);
    EXPECT_EQ(Bytes(folder.path / "new.json"), bytes);
    EXPECT_THAT(Files(), UnorderedElementsAre("new.json"));
}

TEST_F(WholeFile, AnOldFileIsReplacedByALongerOrShorterOne) {
    for (const std::string& bytes :
         {std::string("old"), std::string(3 << 20, 'x'), std::string()}) {
        ReplaceWholeFile(Path(u8"a"), bytes);
        EXPECT_EQ(Bytes(folder.path / "a"), bytes);
    }
    EXPECT_THAT(Files(), UnorderedElementsAre("a"));
}

TEST_F(WholeFile, NamesAreUtf8) {
    ReplaceWholeFile(Path(u8"ü€\U0001F3AC.json"), "x");
    EXPECT_EQ(Bytes(folder.path / u8"ü€\U0001F3AC.json"), "x");
}

TEST_F(WholeFile, AFileNameWithoutAFolderIsInTheFolderOfTheProcess) {
    const fs::path before = fs::current_path();
    fs::current_path(folder.path);
    ReplaceWholeFile("plain", "x");
    fs::current_path(before);
    EXPECT_EQ(Bytes(folder.path / "plain"), "x");
}

TEST_F(WholeFile, AFolderThatIsNotThereIsToldAndNotMade) {
    const std::string path = Path(u8"no/a");
    EXPECT_EQ(FaultOf(path), path +
                                 ": cannot be written (No such file or directory); create its "
                                 "folder first or choose another");
    EXPECT_THAT(Files(), IsEmpty());
}

TEST_F(WholeFile, AFolderOfThatNameStays) {
    fs::create_directories(folder.path / "a" / "inner");
    const std::string path = Path(u8"a");
    const std::string fault = ": cannot be written (Is a directory); choose another name";
    EXPECT_EQ(FaultOf(path), path + fault);
    EXPECT_EQ(FaultOf(path + "/"), path + "/" + fault);
    EXPECT_TRUE(fs::is_directory(folder.path / "a" / "inner"));
    EXPECT_THAT(Files(), UnorderedElementsAre("a"));
}

TEST_F(WholeFile, NoNameIsToldAsSuch) {
    EXPECT_EQ(FaultOf(""), "the file has no name; give one");
}

}  // namespace

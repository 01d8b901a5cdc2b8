#include "command/input_file.h"

#include <gtest/gtest.h>

#include <array>

#include "command/failure.h"
#include "tests/command/fault_text.h"
#include "tests/command/null_device.h"
#include "tests/command/test_folder.h"

namespace command {
namespace {

class InputFileTest : public FolderTest {
  protected:
    static std::string InputFileComplaint(const std::string& path) {
        return FaultText<InputError>([&] { OpenInput(path); });
    }
};

TEST_F(InputFileTest, IsReadByteForByte) {
    std::string bytes;
    for (int i = 0; i < 100000; ++i)
        bytes += static_cast<char>(i * 7);
    EXPECT_EQ(ReadWholeInput(Write("a.bin", bytes)), bytes);
    EXPECT_EQ(ReadWholeInput(Write("b.bin",
                                   "a\r\nb\x1a"
                                   "c\n")),
              "a\r\nb\x1a"
              "c\n");
    EXPECT_EQ(ReadWholeInput(Write("c.bin", "")), "");
}

TEST_F(InputFileTest, IsReadFromAnyPlace) {
    const std::string path = Write("a.bin", "0123456789");
    const InputFile file = OpenInput(path);
    EXPECT_EQ(SizeOfInput(file.get()), 10U);
    std::array<char, 4> bytes{};
    SeekInput(file.get(), 5);
    EXPECT_EQ(ReadInput(file.get(), path, bytes.data(), 4), 4U);
    EXPECT_EQ(std::string(bytes.data(), 4), "5678");
    EXPECT_EQ(ReadInput(file.get(), path, bytes.data(), 4), 1U) << "all that is left";
    SeekInput(file.get(), 0);
    EXPECT_EQ(ReadInput(file.get(), path, bytes.data(), 2), 2U);
    EXPECT_EQ(std::string(bytes.data(), 2), "01");
}

TEST_F(InputFileTest, MayBeLargerThanFourGigabytes) {
    const std::string path = Write("a.bin", "0123456789");
    constexpr std::uint64_t size = (std::uint64_t{5} << 30) + 3;
    // Takes no room on the disk.
    std::filesystem::resize_file(folder / "a.bin", size);
    const InputFile file = OpenInput(path);
    EXPECT_EQ(SizeOfInput(file.get()), size);
    std::array<char, 4> bytes{'x', 'x', 'x', 'x'};
    SeekInput(file.get(), size - 2);
    EXPECT_EQ(ReadInput(file.get(), path, bytes.data(), 4), 2U);
    EXPECT_EQ(std::string(bytes.data(), 4), std::string("\0\0xx", 4));
}

TEST_F(InputFileTest, MayHaveAnyNameAndALongPath) {
    EXPECT_EQ(ReadWholeInput(Write("Gr\xc3\xb6\xc3\x9f"
                                   "e \xe6\x97\xa5\xe6\x9c\xac.bin",
                                   "a")),
              "a");
    std::filesystem::path deep = folder;
    for (int i = 0; i < 3; ++i)
        deep /= std::string(100, 'd');
    std::filesystem::create_directories(LongPath(deep));
    const auto file = deep / "a.bin";
    std::ofstream(LongPath(file), std::ios::binary) << "deep";
    EXPECT_GT(Utf8(file).size(), 300U);
    EXPECT_EQ(ReadWholeInput(Utf8(file)), "deep");
    EXPECT_EQ(InputFileComplaint(Utf8(deep)),
              Utf8(deep) + ": a folder, not an image; give a file in it");
    const std::string missing = Utf8(deep / "b.bin");
    EXPECT_EQ(InputFileComplaint(missing), missing + ": no such file; check the path");
}

TEST_F(InputFileTest, WhatIsNoFileIsToldSo) {
    EXPECT_EQ(InputFileComplaint(PathOf("b.bin")),
              PathOf("b.bin") + ": no such file; check the path");
    EXPECT_EQ(InputFileComplaint(PathOf("no/b.bin")),
              PathOf("no/b.bin") + ": no such file; check the path");
    EXPECT_EQ(InputFileComplaint(""), ": no such file; check the path");
    EXPECT_EQ(InputFileComplaint(Utf8(folder)),
              Utf8(folder) + ": a folder, not an image; give a file in it");
    EXPECT_EQ(
        InputFileComplaint(nullDevice),
        std::string(nullDevice) + ": a pipe or device, not a file; save the image to a file first");
}

}  // namespace
}  // namespace command

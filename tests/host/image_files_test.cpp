#include <bitmap.h>
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <limits>
#include <random>

#include "host/text.h"

namespace {

std::string Numbered(const MCHAR* name, int frame) {
    std::array<MCHAR, 260> out{};
    EXPECT_TRUE(BMMCreateNumberedFilename(name, frame, out.data(), out.size()));
    return host::ToUtf8(out.data());
}

TEST(NumberedFilename, TheNumberStandsBeforeTheExtensionWithFourDigits) {
    EXPECT_EQ(Numbered(_M("a.psd"), 7), "a0007.psd");
    EXPECT_EQ(Numbered(_M("a.psd"), 0), "a0000.psd");
    EXPECT_EQ(Numbered(_M("a.psd"), 12345), "a12345.psd");
    EXPECT_EQ(Numbered(_M("a.psd"), -7), "a-0007.psd");
    EXPECT_EQ(Numbered(_M("a.psd"), std::numeric_limits<int>::min()), "a-2147483648.psd");
}

TEST(NumberedFilename, OnlyTheLastNamesExtensionCounts) {
    EXPECT_EQ(Numbered(_M("/shot.v1/a"), 7), "/shot.v1/a0007");
    EXPECT_EQ(Numbered(_M("a.v1.psd"), 7), "a.v10007.psd");
    EXPECT_EQ(Numbered(_M(""), 7), "0007");
}

TEST(NumberedFilename, NoFrameNumberLeavesTheName) {
    EXPECT_EQ(Numbered(_M("a.psd"), BMM_FRAME_NUMBER_NONE), "a.psd");
}

TEST(NumberedFilename, ANameThatDoesNotFitWithItsTerminatorFails) {
    std::array<MCHAR, 10> out{};
    EXPECT_TRUE(BMMCreateNumberedFilename(_M("a.psd"), 7, out.data(), 10));
    EXPECT_EQ(host::ToUtf8(out.data()), "a0007.psd");
    EXPECT_FALSE(BMMCreateNumberedFilename(_M("a.psd"), 7, out.data(), 9));
    EXPECT_EQ(out[0], 0);
    out[0] = _M('x');
    EXPECT_FALSE(BMMCreateNumberedFilename(_M("a.psd"), 7, out.data(), 0));
    EXPECT_EQ(out[0], _M('x'));
}

TEST(IsFile, OnlyAFileThatIsThereIsOne) {
    const auto folder = std::filesystem::temp_directory_path() /
                        ("veltrane_is_file_" + std::to_string(std::random_device{}()));
    std::filesystem::create_directory(folder);
    const auto file = folder / host::ToNativePath(_M("\u00e9 \U0001f600.psd"));
    EXPECT_FALSE(BMMIsFile(host::FromNativePath(file)));
    std::ofstream(file) << "x";
    EXPECT_TRUE(BMMIsFile(host::FromNativePath(file)));
    EXPECT_FALSE(BMMIsFile(host::FromNativePath(folder)));
    EXPECT_FALSE(BMMIsFile(_M("")));
    std::filesystem::remove_all(folder);
}

}  // namespace

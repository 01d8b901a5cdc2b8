#include "command/render_file.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "command/failure.h"
#include "tests/command/exr_samples.h"
#include "tests/command/fault_text.h"
#include "tests/command/image_samples.h"

namespace command {
namespace {

struct RenderFileTest : testing::Test {
    RenderFileTest() { std::filesystem::create_directories(folder); }
    ~RenderFileTest() override { std::filesystem::remove_all(folder); }

    std::string Write(const std::string& name, const std::string& bytes) const {
        std::ofstream(folder / name, std::ios::binary) << bytes;
        return (folder / name).string();
    }
    static std::string Complaint(const std::string& path) {
        return FaultText<InputError>([&] { OpenRenderFile(path); });
    }

    std::filesystem::path folder = std::filesystem::temp_directory_path() /
                                   ("veltrane_render_file_test_" + std::to_string(::getpid()));
};

TEST_F(RenderFileTest, TheContentDecidesNotTheName) {
    const std::string exr = Write("a.png", exr_samples::Write(exr_samples::Part()));
    EXPECT_EQ(OpenRenderFile(exr)->GetDescription().format, "OpenEXR");
    const std::string png = Write("a.exr", image_samples::Png({.samples = {1, 2, 3}}));
    EXPECT_EQ(OpenRenderFile(png)->GetDescription().format, "PNG");
}

TEST_F(RenderFileTest, NamesMayHoldAnyLetters) {
    const std::string path = Write("Größe 日本.exr", exr_samples::Write(exr_samples::Part()));
    EXPECT_EQ(OpenRenderFile(path)->GetDescription().path, path);
    const std::string png = Write("Größe?x.png", image_samples::Png({.samples = {1, 2, 3}}));
    EXPECT_EQ(OpenRenderFile(png)->GetDescription().format, "PNG");
}

TEST_F(RenderFileTest, AMissingFileIsToldSo) {
    const std::string path = (folder / "nope.exr").string();
    EXPECT_EQ(Complaint(path), path + ": no such file; check the path");
}

TEST_F(RenderFileTest, AFolderIsToldSo) {
    EXPECT_EQ(Complaint(folder.string()),
              folder.string() + ": a folder, not an image; give a file in it");
}

TEST_F(RenderFileTest, AnEmptyFileIsToldSo) {
    const std::string path = Write("a.exr", "");
    EXPECT_EQ(Complaint(path), path + ": the file is empty; render or copy it again");
}

TEST_F(RenderFileTest, AForeignFileIsToldSo) {
    for (const char* bytes : {"8BPS", "x", "GIF89a......", "#!/bin/sh\nexit 1\n"}) {
        const std::string path = Write("a.exr", bytes);
        EXPECT_EQ(Complaint(path),
                  path +
                      ": not an image that can be read; give an OpenEXR, PNG, TIFF, JPEG, "
                      "Radiance HDR or TGA file");
    }
}

TEST_F(RenderFileTest, AFileThatMayNotBeReadIsToldSo) {
    if (::geteuid() == 0) GTEST_SKIP() << "root may read everything";
    const std::string path = Write("a.exr", "x");
    std::filesystem::permissions(path, std::filesystem::perms::none);
    EXPECT_EQ(Complaint(path),
              path + ": cannot be opened (Permission denied); check its permissions");
}

}  // namespace
}  // namespace command

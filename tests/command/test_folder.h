// A folder of its own for each test that reads and writes files.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

#include "command/native_path.h"

class FolderTest : public testing::Test {
  protected:
    FolderTest() { std::filesystem::create_directories(folder); }
    ~FolderTest() override {
        std::error_code left;
        std::filesystem::remove_all(LongPath(folder), left);
    }

    // The path in the form in which Windows takes one above 260 units, whoever asks.
    static std::filesystem::path LongPath(const std::filesystem::path& path) {
#ifdef _WIN32
        return LR"(\\?\)" + path.native();
#else
        return path;
#endif
    }

    std::string PathOf(const std::string& name) const {
        return command::Utf8(folder / command::Native(name));
    }
    // The file's path.
    std::string Write(const std::string& name, const std::string& bytes) const {
        std::ofstream(folder / command::Native(name), std::ios::binary) << bytes;
        return PathOf(name);
    }
    std::string Bytes(const std::string& name) const {
        std::ifstream file(folder / command::Native(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    bool Exists(const std::string& name) const {
        return std::filesystem::exists(folder / command::Native(name));
    }

    std::filesystem::path folder =
        std::filesystem::temp_directory_path() /
        ("veltrane_" +
         std::string(testing::UnitTest::GetInstance()->current_test_info()->test_suite_name()) +
         std::to_string(std::random_device()()));
};
